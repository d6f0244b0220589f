#include "tool/text_file.h"

#include "ports/record_file.h"
#include "ports/runtime_error.h"
#include "tool/preset_file.h"
#include "tool/trouble.h"

#include <array>
#include <cerrno>
#include <fstream>
#include <ostream>
#include <sstream>
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
    std::string text;
    for (std::array<char, 16384> part{}; stream;) { // a pipe has no size to ask for
        stream.read(part.data(), part.size());
        text.append(part.data(), static_cast<std::size_t>(stream.gcount()));
        if (text.size() > Longest) {
            Refuse(file, "longer than 4 MiB, and no text that is read here");
        }
    }
    return text;
}

void WriteText(const fs::path& file, const std::function<void(std::ostream&)>& write) {
    std::error_code ignored;
    if (fs::exists(file, ignored) && !fs::is_regular_file(file, ignored) && !fs::is_directory(file, ignored)) {
        std::ofstream device(file, std::ios::binary);
        write(device);
        device.close();
        if (!device) {
            Refuse(file, "could not be written: " + ErrorNow());
        }
        return;
    }
    std::ostringstream text;
    write(text);
    const std::string bytes = std::move(text).str();
    try {
        WriteAtStart(file, {reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()});
    } catch (const RuntimeError& refused) {
        throw TroubleWith(file, refused);
    }
    std::error_code error;
    fs::resize_file(file, bytes.size(), error); // what was longer is not a part of it
    if (error) {
        Refuse(file, "could not be written: " + error.message());
    }
}

void WriteText(const fs::path& file, std::ostream& standard_output, const std::function<void(std::ostream&)>& write) {
    if (file == "-") {
        write(standard_output);
    } else {
        WriteText(file, write);
    }
}

void RequireOther(const fs::path& written, const fs::path& read) {
    std::error_code ignored;
    if (fs::equivalent(written, read, ignored)) {
        Refuse(written, "is what is read; give another name to write to");
    }
}

} // namespace nrv::tool
