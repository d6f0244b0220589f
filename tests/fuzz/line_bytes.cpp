#include "fuzz/desk.h"
#include "model/preset_image.h"

#include <algorithm>

// Whatever a line answers, in any chunks and at any time, into every exchange there is.

namespace nrv::fuzz {
namespace {

/// A line on which, at each look at it, the next piece of the input arrives: how many ticks it takes, how many bytes,
/// and the bytes.
class Noise {
  public:
    Noise(Desk& desk, Input& input) : desk_(desk), input_(input) {
        desk_.Eyes().Answer = [this](const testing::Frame& frame) { return Transmitted(frame); };
        desk_.Eyes().Poll = [this] { Poll(); };
        testing::TestProgram& world = desk_.World();
        world.Process.OnPendingEvents = [this, &world] {
            Poll();
            // 200 ms are over at last, however much comes.
            if (input_.Empty() || ++rounds_ % RoundsOfAProbe == 0) {
                world.Program.Main.SerialTimer.Tick();
            }
        };
    }

  private:
    static constexpr int RoundsOfAProbe = 5;
    static constexpr std::uint8_t Whole = 0xF0; ///< from here on a head tells of a reply as it should be

    testing::Bytes Transmitted(const testing::Frame& frame) {
        last_ = frame;
        return Piece();
    }
    void Poll() {
        if (wait_ > 0) {
            --wait_;
            return;
        }
        const testing::Bytes piece = Piece();
        testing::Bytes& waiting = desk_.World().Port.Waiting;
        waiting.insert(waiting.end(), piece.begin(), piece.end());
    }
    testing::Bytes Piece() {
        if (input_.Empty()) {
            return {};
        }
        const std::uint8_t head = input_.Byte();
        if (head >= Whole) {
            const bool bulk = last_[3] == link::PresetReadCommand;
            testing::Bytes reply(bulk ? link::BulkLength : link::FrameLength, input_.Byte());
            reply[4] = bulk ? reply[4] : 0xC3;
            return reply;
        }
        wait_ = head >> 5;
        return (head & 31) == 31 ? input_.Bytes(std::size_t{8} * input_.Byte()) : input_.Bytes(head & 31);
    }

    Desk& desk_;
    Input& input_;
    testing::Frame last_{};
    int wait_ = 0;
    int rounds_ = 0;
};

void Exchange(Desk& desk, std::size_t which) {
    program::Program& program = desk.Program();
    const auto double_click = [&desk, &program](int row) {
        desk.Run(testing::UserOutside(), [&program, row] { program.List.Devices.UserDoubleClick(row); });
    };
    switch (which) {
    case 0: // a frame
        if (program.Windows.Loaded[Desk::FrontSlot]) {
            controls::Fader& fader = desk.Window(Desk::FrontSlot).Slider1[3];
            desk.InWindow(Desk::FrontSlot, [&fader] { fader.UserMove(fader.Shown() == 50 ? 51 : 50); });
        }
        break;
    case 1: // a long reply
        if (program.Windows.Loaded[Desk::FrontSlot]) {
            program.Stores.ParamValues[Desk::FrontDevice].PresetUsed[0] = model::PresetUsedMark;
            controls::FrmRead& form = desk.World().Forms.Read;
            desk.UseTool(Desk::FrontSlot, controls::ReadPresetTool,
                         [&] { desk.InDialog([&form] { form.Command1[1].UserClick(); }); });
        }
        break;
    case 2: // a probe, the label, the live settings and the page
        program.State.DeviceUnconnected[Desk::FrontDevice] = true;
        double_click(1);
        break;
    case 3: // a check and the page
        double_click(2);
        break;
    case 4: // the list's pass
        program.List.Timer1.Start(1000);
        desk.Run(testing::TimerTick(), [&program] { program.List.Timer1.Tick(); });
        program.List.Timer1.Stop();
        break;
    default: // the meters
        if (program.Windows.Loaded[Desk::FrontSlot]) {
            controls::FrmCtrl& form = desk.Window(Desk::FrontSlot);
            form.SSTab1.SetTab(controls::GainsTab);
            desk.Run(testing::MeterTick(Desk::FrontSlot), [&form] { form.Timer1.Tick(); });
        }
        break;
    }
}

void Answer(Desk& desk, Input& input) {
    desk.Reset();
    const Noise noise(desk, input);
    const std::uint8_t options = input.Byte();
    desk.Program().Link.ReportLinkFailure = (options & 1) == 0;
    desk.World().Port.SecondsPerPoll = (options & 2) == 0 ? 1 : 3;
    for (int n = 0; n < 4 && !input.Empty() && !desk.Ended(); ++n) {
        Exchange(desk, input.Below(6));
    }
}

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static nrv::fuzz::Desk desk;
    nrv::fuzz::Input input(bytes, count);
    nrv::fuzz::Answer(desk, input);
    return 0;
}
