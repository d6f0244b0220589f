#include "simulator/link_file.h"

#include <stdexcept>
#include <system_error>

namespace nrv::simulator {

namespace fs = std::filesystem;

LinkFile::LinkFile(const fs::path& path, fs::path target) : path_(fs::absolute(path)), target_(std::move(target)) {
    std::error_code error;
    const fs::file_status status = fs::symlink_status(path_, error);
    if (status.type() == fs::file_type::symlink) {
        const bool own = fs::read_symlink(path_, error) == target_;
        if (!own && fs::exists(path_, error)) {
            throw std::runtime_error("link " + path.string() + " leads to something else that is in use");
        }
        if (!fs::remove(path_, error)) {
            throw std::runtime_error("link " + path.string() + " cannot be replaced: " + error.message());
        }
    } else if (fs::exists(status)) {
        throw std::runtime_error(path.string() + " is there already and is no link");
    }
    fs::create_symlink(target_, path_, error);
    if (error) {
        throw std::runtime_error("link " + path.string() + " cannot be made: " + error.message());
    }
}

LinkFile::~LinkFile() {
    std::error_code error;
    if (fs::is_symlink(fs::symlink_status(path_, error)) && fs::read_symlink(path_, error) == target_) {
        fs::remove(path_, error);
    }
}

} // namespace nrv::simulator
