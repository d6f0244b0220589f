#pragma once

#include "model/tables.h"
#include "ports/numbering.h"
#include "session/program_fixture.h"

namespace nrv::testing {

/// The window of device 14, opened on the line with the preset of a device that has no settings of its own.
class EqualiserWindow : public ProgramTest {
  protected:
    static constexpr int Id = 14;

    static Frame FrameOf(int command, int channel, int section, int p6, int p7, int p8, int p9) {
        const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
        return {0xF0, 0xC3,     Id,       byte(command), byte(channel), byte(section), 0,
                0,    byte(p6), byte(p7), byte(p8),      byte(p9),      0xF7};
    }
    static Frame PeqFrame(int channel, int section, int frequency, int bandwidth, int gain) {
        return FrameOf(0x05, channel, section, frequency, bandwidth, 0, gain);
    }
    static Frame ToneFrame(int channel, int section, int frequency, int type, int gain) {
        return FrameOf(0x06, channel, section, frequency, type, 0, gain);
    }
    static Frame CrossoverFrame(int channel, int side, int frequency, int slope) {
        return FrameOf(0x04, channel, side, 0, 0, frequency, slope);
    }
    /// Channel of a section and its number there, counted off.
    static std::pair<int, int> PlaceOfPeq(int section) {
        int channel = 0;
        int before = 0;
        while (section >= before + (channel < 2 ? 10 : 4)) {
            before += channel < 2 ? 10 : 4;
            ++channel;
        }
        return {channel, section - before};
    }
    /// First byte of a section's block, from the layout of the channels' blocks.
    static std::size_t BlockOfPeq(int section) {
        const auto [channel, number] = PlaceOfPeq(section);
        const int block = channel < 2 ? 72 * channel + 5 : 144 + 48 * (channel - 2) + 6;
        return At(block + 5 * number);
    }

    /// What the user's keys make of a box: each goes through the box's event and what comes back enters at the end.
    void Type(controls::TextBox& box, const std::string& keys) {
        for (const char key : keys) {
            const char entering = box.UserKey(key).Entering;
            if (entering == controls::BackspaceKey) {
                box.UserText(box.Text().substr(0, box.Text().size() - 1));
            } else if (entering != 0 && entering != controls::EnterKey) {
                box.UserText(box.Text() + entering);
            }
        }
    }
    /// Overwrites what a box holds and types Enter.
    void Enter(controls::TextBox& box, const std::string& text) {
        box.UserText(text);
        Type(box, "\r");
    }
    /// Moves the mouse to where the marker's corner would come to stand, if nothing held it.
    void Drag(std::size_t section, double left, double top) {
        controls::Marker& marker = form.Label5[section];
        marker.Moved(left - marker.Left() + 60.0, top - marker.Top() + 60.0);
    }
    /// Counts how often a box asks for the keyboard.
    static void CountAttention(controls::TextBox& box, int& count) {
        box.Observe([&count](controls::Aspect told) { count += told == controls::Aspect::Attention ? 1 : 0; });
    }
    void ExpectWarning(const std::string& text) {
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], "Warning", text, BoxIcon::None, BoxButtons::Ok);
        world.Boxes.Shown.clear();
    }

    controls::FrmCtrl& form = OpenFactoryDevice(Id);
    model::ParamRow& values = program.Stores.ParamValues[Id];
    model::PresetImageRow& image = program.Stores.PresetImage[Id];
};

} // namespace nrv::testing
