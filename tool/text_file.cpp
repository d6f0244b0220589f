#include "tool/text_file.h"

#include "tool/trouble.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <ostream>
#include <system_error>

namespace nrv::tool {
namespace {

namespace fs = std::filesystem;

constexpr std::size_t Longest = std::size_t{4} * 1024 * 1024;

[[noreturn]] void Refuse(const fs::path& file, const std::string& what) {
    throw Trouble(file.string() + ": " + what + ".");
}

std::string ErrorNow() {
    return std::generic_category().message(errno);
}

} // namespace

std::string ReadText(const fs::path& file) {
    std::error_code ignored;
    if (fs::is_directory(file, ignored)) {
        Refuse(file, "is a folder");
    }
    std::ifstream stream(file, std::ios::binary);
    if (!stream) {
        Refuse(file, ErrorNow());
    }
    std::string text(Longest + 1, '\0');
    stream.read(text.data(), static_cast<std::streamsize>(text.size()));
    text.resize(static_cast<std::size_t>(stream.gcount()));
    if (text.size() > Longest) {
        Refuse(file, "longer than 4 MiB, which is no text of filters");
    }
    return text;
}

void WriteText(const fs::path& file, std::ostream& standard_output, const std::function<void(std::ostream&)>& write) {
    if (file == "-") {
        write(standard_output);
        return;
    }
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    if (!stream) {
        Refuse(file, ErrorNow());
    }
    write(stream);
    stream.close();
    if (!stream) {
        Refuse(file, "could not be written: " + ErrorNow());
    }
}

} // namespace nrv::tool
