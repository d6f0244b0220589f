#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <random>
#include <string>
#include <system_error>
#include <vector>

namespace nrv::testing {

/// A folder of a test's own, gone with it.
class TestFolder {
  public:
    TestFolder() {
        std::random_device chance;
        do {
            path_ = std::filesystem::temp_directory_path() / ("nrv718-test-" + std::to_string(chance()));
        } while (!std::filesystem::create_directory(path_));
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all);
    }
    ~TestFolder() {
        std::error_code ignored;
        std::filesystem::permissions(path_, std::filesystem::perms::owner_all, ignored);
        std::filesystem::remove_all(path_, ignored);
    }
    TestFolder(const TestFolder&) = delete;
    TestFolder& operator=(const TestFolder&) = delete;

    const std::filesystem::path& Path() const { return path_; }
    std::filesystem::path operator/(const std::string& name) const { return path_ / name; }
    std::size_t Entries() const {
        return static_cast<std::size_t>(
            std::distance(std::filesystem::directory_iterator(path_), std::filesystem::directory_iterator()));
    }

    void Write(const std::string& name, const std::vector<std::uint8_t>& bytes) const {
        std::ofstream stream(path_ / name, std::ios::binary | std::ios::trunc);
        stream.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    }
    std::vector<std::uint8_t> Read(const std::string& name) const {
        std::ifstream stream(path_ / name, std::ios::binary);
        return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
    }
    void WriteText(const std::string& name, const std::string& text) const { Write(name, {text.begin(), text.end()}); }
    std::string ReadText(const std::string& name) const {
        const std::vector<std::uint8_t> bytes = Read(name);
        return {bytes.begin(), bytes.end()};
    }
    bool Has(const std::string& name) const { return std::filesystem::exists(path_ / name); }

  private:
    std::filesystem::path path_;
};

} // namespace nrv::testing
