#pragma once

#include "model/tables.h"
#include "session/program_fixture.h"

#include <map>

namespace nrv::testing {

/// The window of device 9, opened on the line with the preset of a device that has no settings of its own.
class CommandWindow : public ProgramTest {
  protected:
    static constexpr int Id = 9;

    /// A frame from its payload, P1 first; what is not given is 0.
    static Frame FrameOf(std::array<int, 9> payload) {
        Frame frame{0xF0, 0xC3, Id};
        for (std::size_t n = 0; n < payload.size(); ++n) {
            frame[3 + n] = static_cast<std::uint8_t>(payload[n]);
        }
        frame[12] = 0xF7;
        return frame;
    }
    /// What the line saw since the last look.
    std::vector<Frame> TakeSent() {
        std::vector<Frame> sent;
        sent.swap(world.Port.Sent);
        return sent;
    }
    void ExpectSent(const std::vector<Frame>& frames) { EXPECT_THAT(TakeSent(), ::testing::ElementsAreArray(frames)); }
    /// Every byte of the image is as before but for these, by their place in the whole of it.
    void ExpectChanged(const model::PresetImageRow& before, const std::map<std::size_t, int>& changed) {
        const auto* old_bytes = reinterpret_cast<const std::uint8_t*>(&before);
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(&image);
        for (std::size_t n = 0; n < sizeof(before); ++n) {
            const auto found = changed.find(n);
            EXPECT_EQ(bytes[n], found == changed.end() ? old_bytes[n] : found->second) << "byte " << n;
        }
    }
    /// Opens a dialog by its tool button, which it has to, and does something in it.
    void InDialog(controls::ToolButton tool, const std::function<void()>& script) {
        bool stood = false;
        world.Host.WhileToolDialogStands = [&] {
            stood = true;
            script();
        };
        program.Events.Run(UserIn(0), [&] { form.Command2.at(At(tool)).UserClick(); });
        world.Host.WhileToolDialogStands = nullptr;
        EXPECT_TRUE(stood) << "the dialog did not open";
    }
    /// The far end goes silent for one command.
    void Silence(std::uint8_t command) {
        world.Port.Answer = [this, command](const Frame& frame) {
            return frame[3] == command ? Bytes{} : line.Answer(frame);
        };
    }

    static constexpr std::size_t SystemPage = 433; ///< where it begins in the whole image
    static constexpr std::size_t ViewState = 690;

    controls::FrmCtrl& form = OpenFactoryDevice(Id);
    model::ParamRow& values = program.Stores.ParamValues[Id];
    model::PresetImageRow& image = program.Stores.PresetImage[Id];
};

} // namespace nrv::testing
