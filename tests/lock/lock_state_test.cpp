#include "lock/lock_state.h"
#include "model/command_window.h"

#include <set>

namespace nrv::testing {
namespace {

class LockState : public CommandWindow {
  protected:
    void Apply() { lock::ApplyLockState(Context(), world.Forms.EditNames); }
    /// The names and indices of every disabled control of a window.
    static std::set<std::string> Disabled(controls::FrmCtrl& window) {
        std::set<std::string> disabled;
        controls::ForEachControl(
            window, [&disabled](std::string_view name, int index, const controls::Control& control) {
                if (!control.Enabled()) {
                    disabled.insert(std::string(name) +
                                    (index == controls::NoIndex ? "" : "(" + std::to_string(index) + ")"));
                }
            });
        return disabled;
    }
    /// What a locked system disables, as it is listed.
    static std::set<std::string> Listed() {
        std::set<std::string> listed{"Combo4"};
        const auto add = [&listed](const std::string& name, int first, int last) {
            for (int index = first; index <= last; ++index) {
                listed.insert(name + "(" + std::to_string(index) + ")");
            }
        };
        add("Frame5", 0, 7);
        add("Frame10", 0, 7);
        add("Command1", 0, 7);
        add("Frame6", 0, 9);
        add("Frame1", 0, 16);
        add("Frame3", 0, 15);
        add("Frame7", 0, 11);
        add("Frame8", 0, 5);
        add("Frame9", 0, 5);
        add("Command2", 0, 3);
        add("Command2", 7, 9);
        return listed;
    }
    void ExpectNames(bool enabled) {
        for (const controls::TextBox& box : world.Forms.EditNames.Text1) {
            EXPECT_EQ(box.Enabled(), enabled);
        }
        EXPECT_EQ(world.Forms.EditNames.Command1[0].Enabled(), enabled);
        EXPECT_TRUE(world.Forms.EditNames.Command1[1].Enabled());
    }
};

TEST_F(LockState, LockedDisablesWhatIsListedAndNothingElse) {
    values.LockFlag = 1.0;
    Apply();
    EXPECT_EQ(Disabled(form), Listed());
    ExpectNames(false);
    EXPECT_TRUE(form.Window.Enabled());
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(LockState, WhatStaysOpenIsThePasswordTheUnconnectTheTabsAndTwoLimiters) {
    values.LockFlag = 1.0;
    Apply();
    EXPECT_TRUE(form.Command2[4].Enabled());
    EXPECT_TRUE(form.Command2[5].Enabled());
    EXPECT_TRUE(form.SSTab1.Enabled());
    // Of the noise gates and limiters those of Out 5 and Out 6.
    for (std::size_t channel = 0; channel < 8; ++channel) {
        EXPECT_EQ(form.Frame8[channel].Enabled(), channel >= 6) << channel;
        EXPECT_TRUE(form.Slider4[channel].Enabled()) << channel; // each but for the frame that it lies in
    }
}

TEST_F(LockState, UnlockedEnablesItAll) {
    values.LockFlag = 1.0;
    Apply();
    values.LockFlag = 0.0;
    Apply();
    EXPECT_TRUE(Disabled(form).empty());
    ExpectNames(true);
}

TEST_F(LockState, OnlyExactlyOneIsLocked) {
    for (const double flag : {0.0, 0.5, 2.0, -1.0}) {
        values.LockFlag = flag;
        Apply();
        EXPECT_TRUE(Disabled(form).empty()) << flag;
    }
}

class LockedDevice : public LockState {};

TEST_F(LockedDevice, OpensDisabledAndAnUnlockedOneEnabled) {
    for (const int bits : {0x80, 0x7F}) {
        program.Control.QueryUnload(0);
        line.Devices.at(Id).Memory[16] = static_cast<std::uint8_t>(bits);
        program.Devices.ReadDeviceState(Id);
        program.Windows.WindowSlots[0] = {true, Id, 0};
        program.Windows.NewSlot = 0;
        program.Control.Load();
        EXPECT_EQ(Disabled(Window(0)), bits == 0x80 ? Listed() : std::set<std::string>{});
    }
}

TEST_F(LockedDevice, PresetFromAFileNeitherSetsNorClearsTheLock) {
    world.Files.File = world.Folder.Path() / "a.n91";
    for (const double option : {0.0, 1.0}) {
        for (const double lock : {0.0, 1.0}) {
            const int lock_bit = lock == 1.0 ? 0x80 : 0x00;
            values.LockFlag = lock;
            values.MuteWithPreset = option;
            values.DelayUnit = 0.0;
            form.Option1[0].Select();
            Bytes file(771, 0);
            std::ranges::copy(model::FactoryImage, file.begin());
            // The lock the other way round; and another unit, with which the whole byte goes to the device.
            file[433 + 16] = static_cast<std::uint8_t>(0x40 | (0x80 - lock_bit));
            world.Folder.Write("a.n91", file);
            world.Port.Sent.clear();
            program.PresetFiles.LoadPresetFile();
            EXPECT_EQ(values.LockFlag, lock);
            EXPECT_EQ(image.SystemPage[16] & 0x80, lock_bit);
            std::vector<int> lock_bits_sent;
            for (const Frame& frame : world.Port.Sent) {
                if (frame[3] == 0x11 && frame[4] == 0 && frame[5] == 16) {
                    lock_bits_sent.push_back(frame[8] & 0x80);
                }
            }
            EXPECT_EQ(lock_bits_sent, option == 1.0 ? std::vector<int>{lock_bit} : std::vector<int>{});
        }
    }
}

TEST_F(LockState, WindowsOfOtherDevicesAreLeft) {
    program.Windows.WindowSlots[1] = {true, 3, 1};
    program.Windows.NewSlot = 1;
    program.Control.Load();
    program.Control.Activate(0);
    values.LockFlag = 1.0;
    Apply();
    EXPECT_TRUE(Disabled(Window(1)).empty());
    EXPECT_EQ(Disabled(form), Listed());
}

} // namespace
} // namespace nrv::testing
