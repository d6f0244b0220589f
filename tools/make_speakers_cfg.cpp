// Makes Speakers.cfg from the list that a person can read: 33 records of 128 bytes, integers of 16 bits, low byte
// first.

#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>
#include <string>
#include <vector>

namespace {

constexpr std::size_t RecordSize = 128;
constexpr std::size_t RecordCount = 33;
constexpr std::size_t FoundFlagOffset = 20;

std::vector<char> MakeRecords(std::istream& list) {
    std::vector<char> bytes(RecordSize * RecordCount, '\0');
    std::size_t record = 0;
    std::string line;
    for (int number = 1; std::getline(list, line); ++number) {
        if (line.empty() || line.front() == '#') {
            continue;
        }
        std::istringstream words(line);
        int id = -1;
        std::string mark;
        if (!(words >> id) || id < 0 || id > 32 || ((words >> mark) && mark != "demo")) {
            throw std::runtime_error("line " + std::to_string(number) + R"( is no "ID" or "ID demo": )" + line);
        }
        if (record == RecordCount) {
            throw std::runtime_error("more than 33 devices");
        }
        bytes[RecordSize * record] = static_cast<char>(id);
        bytes[RecordSize * record + FoundFlagOffset] = mark.empty() ? '\0' : '\1';
        ++record;
    }
    if (record != RecordCount) {
        throw std::runtime_error(std::to_string(record) + " devices in place of 33");
    }
    return bytes;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: make_speakers_cfg LIST SPEAKERS.CFG\n";
        return 2;
    }
    try {
        std::ifstream list(argv[1]);
        if (!list) {
            throw std::runtime_error("cannot be read");
        }
        const std::vector<char> bytes = MakeRecords(list);
        std::ofstream file(argv[2], std::ios::binary | std::ios::trunc);
        file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
        file.flush();
        if (!file) {
            throw std::runtime_error(std::string("cannot write ") + argv[2]);
        }
    } catch (const std::exception& error) {
        std::cerr << "make_speakers_cfg: " << argv[1] << ": " << error.what() << '\n';
        return 1;
    }
    return 0;
}
