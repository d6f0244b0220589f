#pragma once

#include "model/tables.h"
#include "support/test_program.h"

#include <array>
#include <cstdint>
#include <filesystem>
#include <functional>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <string>
#include <utility>
#include <vector>

namespace nrv::testing {

/// Devices at the far end of the line, by ID, each answering as a device does while it is alive.
class DevicesOnLine {
  public:
    struct Device {
        std::map<int, std::uint8_t> Memory; ///< 0 where nothing was put
        Bytes Preset = Bytes(432, 0);
        bool Alive = true;
    };
    std::map<int, Device> Devices;

    Device& Add(int id, const std::string& label) {
        Device& device = Devices[id];
        PutText(device, 32, label);
        for (std::size_t n = 0; n < device.Preset.size(); ++n) {
            // Every byte is a code that a frequency may have, so that a window opens on it.
            device.Preset[n] = static_cast<std::uint8_t>((n * 7 + static_cast<std::size_t>(id)) % 121);
        }
        return device;
    }
    static void PutText(Device& device, int address, const std::string& text) {
        for (const char character : text) {
            device.Memory[address++] = static_cast<std::uint8_t>(character);
        }
    }
    Bytes Answer(const Frame& frame) {
        const auto found = Devices.find(frame[2]);
        if (found == Devices.end() || !found->second.Alive || frame[3] == 0x0F || frame[3] == 0x8F) {
            return {};
        }
        if (frame[3] == 0x0B) {
            return found->second.Preset;
        }
        Bytes reply(13, 0);
        reply[4] = 0xC3;
        if (frame[3] == 0x10) {
            reply[8] = found->second.Memory[frame[4] * 256 + frame[5]];
        }
        return reply;
    }
};

/// Little-endian words, as the configuration files hold them.
inline Bytes Words(const std::vector<int>& words) {
    Bytes bytes;
    for (const int word : words) {
        bytes.push_back(static_cast<std::uint8_t>(word & 0xFF));
        bytes.push_back(static_cast<std::uint8_t>((word >> 8) & 0xFF));
    }
    return bytes;
}

/// Speakers.cfg of 33 records: the ID of each record that is flagged, by the record's number.
inline Bytes SpeakersFile(const std::map<int, int>& flagged) {
    Bytes bytes(4224, 0);
    for (int record = 0; record < 33; ++record) {
        const std::size_t start = 128 * static_cast<std::size_t>(record);
        bytes[start] = static_cast<std::uint8_t>(record);
        if (const auto entry = flagged.find(record); entry != flagged.end()) {
            bytes[start] = static_cast<std::uint8_t>(entry->second & 0xFF);
            bytes[start + 1] = static_cast<std::uint8_t>((entry->second >> 8) & 0xFF);
            bytes[start + 20] = 1;
        }
    }
    return bytes;
}

/// The memory addresses that were asked for, in their order.
inline std::vector<int> AddressesRead(const std::vector<Frame>& frames) {
    std::vector<int> addresses;
    for (const Frame& frame : frames) {
        if (frame[3] == 0x10) {
            addresses.push_back(frame[4] * 256 + frame[5]);
        }
    }
    return addresses;
}

inline std::vector<int> Range(int first, int last) {
    std::vector<int> numbers;
    for (int number = first; number <= last; ++number) {
        numbers.push_back(number);
    }
    return numbers;
}

inline void Append(std::vector<int>& numbers, const std::vector<int>& more) {
    numbers.insert(numbers.end(), more.begin(), more.end());
}

/// The question whether a device is there.
inline Frame ProbeFrame(int id) {
    return {0xF0, 0xC3, static_cast<std::uint8_t>(id), 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7};
}

/// The program between its folder, its user and a line of devices.
class ProgramTest : public ::testing::Test {
  protected:
    ProgramTest() {
        world.Port.Answer = [this](const Frame& frame) { return line.Answer(frame); };
        // The 200 ms of a probe are over as soon as nothing has come.
        world.Process.OnPendingEvents = [this] {
            if (world.Port.Waiting.size() < 13) {
                program.Main.SerialTimer.Tick();
            }
        };
    }

    /// Start-up as far as the device list's load; the script is what the user does in the dialog.
    void Start(std::function<void()> in_dialog) {
        program.StartUp.LoadSplash(world.Folder.Path());
        world.Host.WhileDialogStands = std::move(in_dialog);
        program.Splash.Timer1.Tick();
    }
    void Proceed() {
        program.Select.Proceed.UserClick();
        EXPECT_TRUE(program.Connection.QueryUnload());
    }
    void ProceedWith(controls::ConnectionMode mode, int port) {
        program.Select.Link[1].Select();
        program.Select.Connection[mode].Select();
        program.Select.ComSelect.UserSelect(port);
        Proceed();
    }
    /// The program on COM 1 with these devices listed; what was sent, shown and slept so far is forgotten.
    void StartOnLine(const std::vector<int>& ids) {
        for (const int id : ids) {
            line.Add(id, "Label of dev " + std::string(id < 10 ? "00" : "0") + std::to_string(id));
        }
        Start([this] { ProceedWith(controls::MoreDevices, 1); });
        program.List.Timer1.Tick();
        Forget();
    }
    /// Demo mode with devices 0 to count - 1 listed.
    void StartDemo(int count) {
        std::map<int, int> flagged;
        for (int id = 0; id < count; ++id) {
            flagged[id] = id;
        }
        world.Folder.Write("Speakers.cfg", SpeakersFile(flagged));
        Start([this] { ProceedWith(controls::MoreDevices, 0); });
        program.List.Timer1.Tick();
        Forget();
    }
    void Forget() {
        world.Boxes.Shown.clear();
        world.Port.Sent.clear();
        world.Port.Log.clear();
        world.Host.Log.clear();
        world.Process.Slept = 0;
        program.Main.StatusLine.SetCaption("");
    }
    void DoubleClick(int row) {
        program.Events.Run(UserOutside(), [this, row] { program.List.Devices.UserDoubleClick(row); });
    }
    void TickList() {
        program.Events.Run(TimerTick(), [this] { program.List.Timer1.Tick(); });
    }
    /// The window of a device, opened on the line with the preset of a device that has no settings of its own.
    controls::FrmCtrl& OpenFactoryDevice(int id) {
        line.Add(id, "Label of the dev").Preset.assign(model::FactoryImage.begin(), model::FactoryImage.end());
        Start([this] { ProceedWith(controls::MoreDevices, 1); });
        program.List.Timer1.Tick();
        DoubleClick(0);
        Forget();
        return Window(0);
    }
    model::CommandContext Context() { return {program.Link, program.Stores, program.Windows}; }
    controls::FrmCtrl& Window(int slot) { return *program.Windows.ControlWindows[static_cast<std::size_t>(slot)]; }
    bool Loaded(int slot) const { return program.Windows.Loaded[static_cast<std::size_t>(slot)]; }
    std::string Row(int row) const { return program.List.Devices.Cell(row, 0); }

    TestProgram world;
    program::Program& program = world.Program;
    DevicesOnLine line;
};

inline void ExpectBox(const MessageBox& box, const std::string& title, const std::string& text, BoxIcon icon,
                      BoxButtons buttons) {
    EXPECT_EQ(box.Title, title);
    EXPECT_EQ(box.Text, text);
    EXPECT_EQ(box.Icon, icon);
    EXPECT_EQ(box.Buttons, buttons);
}

} // namespace nrv::testing
