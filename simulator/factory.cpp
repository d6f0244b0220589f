#include "simulator/factory.h"

#include <algorithm>
#include <cstdio>
#include <initializer_list>
#include <span>

namespace nrv::simulator {
namespace {

/// Writes bytes one behind the other.
class Writer {
  public:
    explicit Writer(std::span<Byte> target) : target_(target) {}

    void Put(std::initializer_list<int> bytes) {
        for (int value : bytes) {
            target_[next_++] = static_cast<Byte>(value);
        }
    }

  private:
    std::span<Byte> target_;
    std::size_t next_ = 0;
};

void PutText(DeviceMemory& memory, std::size_t address, std::size_t size, std::string_view text) {
    for (std::size_t i = 0; i < size; ++i) {
        memory[address + i] = i < text.size() ? static_cast<Byte>(text[i]) : Byte{' '};
    }
}

} // namespace

PresetBody FactoryPreset() {
    PresetBody body{};
    Writer writer(body);
    for (int input = 0; input < InputCount; ++input) {
        writer.Put({0, 60});
        writer.Put({0, input == 0 ? 20 : 0, 0}); // In A leaves the factory with 20 ms of delay, and it is meant
        for (int section = 0; section < 10; ++section) {
            writer.Put({0, 10 * (section + 1), 8, 0, 75});
        }
        writer.Put({0, 25, 0, 0, 24});
        writer.Put({0, 60, 0, 0, 24});
        writer.Put({0});
        if (input == 0) {
            writer.Put({' ', 'I', 'n', ' ', 'A', ' '});
        } else {
            writer.Put({' ', 'I', 'n', ' ', 0, 60}); // the last byte is the master gain, 0 dB
        }
    }
    for (int output = 1; output <= ChannelCount - InputCount; ++output) {
        if (output == 1) {
            writer.Put({0, 10, 0});
        } else {
            writer.Put({0, 20 * (output - 1), 2});
        }
        writer.Put({0, 20 * output, 2});
        for (int section = 0; section < 4; ++section) {
            writer.Put({0, 5 * (section + 1), 8, 0, 75});
        }
        writer.Put({0, 10, 0, 0, 24});
        writer.Put({0, 0, 0});
        writer.Put({5, 10, 0, 58});
        writer.Put({0});
        writer.Put({0, 60});
        writer.Put({1});
        writer.Put({' ', 'O', 'u', 't', ' ', '0' + output});
    }
    return body;
}

DeviceMemory FactoryMemory(std::string_view label) {
    DeviceMemory memory{};
    memory[OptionBitsAddress] = 32;
    std::fill_n(memory.begin() + PasswordAddress, PasswordSize, Byte{'0'});
    PutText(memory, LabelAddress, NameSize, label);
    PutText(memory, PresetNamesAddress, NameSize * 8,
            ""); // position 8 has no room for a name: it would be the active name's
    PutText(memory, ActiveNameAddress, NameSize, "Factory Preset");
    return memory;
}

std::string FactoryLabel(int id) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), " NRV-718  ID %02d ", id);
    return text.data();
}

} // namespace nrv::simulator
