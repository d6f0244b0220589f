#include "fuzz/input.h"
#include "fuzz/watch.h"
#include "session/program_fixture.h"

#include <algorithm>
#include <memory>

// The configuration files of any bytes and any length, at start-up and in the connection dialog.

namespace nrv::fuzz {
namespace {

constexpr std::size_t InitSize = 14;
constexpr int PortCount = 33;

/// The program before its start-up, made anew for each run; its windows are worth it only when one opens.
class Start final : public testing::ProgramTest {
  public:
    explicit Start(Input& input) : input_(input), watch_(world) {
        watch_.Answer = [this](const testing::Frame& frame) { return line.Answer(frame); };
    }

    void Run() {
        const std::uint8_t options = input_.Byte();
        init_ = input_.Bytes(input_.Below(48));
        Write("init.cfg", init_, (options & 1) != 0);
        Write("TenDev.cfg", input_.Bytes(input_.Below(80)), (options & 2) != 0);
        if ((options & 4) != 0) {
            line.Add(1, "Label of dev 001");
            line.Add(7, "Label of dev 007");
        }
        world.Port.Present = (options & 8) != 0;
        const std::vector<std::uint8_t> choices = input_.Bytes(input_.Below(12));
        speakers_ = input_.Rest();
        Write("Speakers.cfg", speakers_, true);

        program.StartUp.LoadSplash(world.Folder.Path());
        world.Host.WhileDialogStands = [this, &choices] { InDialog(choices); };
        watch_.Run(testing::TimerTick(), [this] { program.Splash.Timer1.Tick(); });
        Look();
        if (!world.Process.Ended && (options & 16) != 0) {
            watch_.Run(testing::TimerTick(), [this] { program.List.Timer1.Tick(); });
            watch_.Run(testing::UserOutside(), [this] { program.List.Devices.UserDoubleClick(0); });
        }
    }

  private:
    void TestBody() override {}

    void Write(const std::string& name, const std::vector<std::uint8_t>& bytes, bool there) {
        if (there) {
            world.Folder.Write(name, bytes);
        }
        was_there_ = name == "init.cfg" ? there : was_there_;
    }

    void InDialog(const std::vector<std::uint8_t>& choices) {
        // As it was read, at first.
        LookAtInit();
        Input input(choices.data(), choices.size());
        controls::FrmSelect& form = program.Select;
        while (!input.Empty()) {
            const std::size_t what = input.Below(6);
            const std::size_t which = input.Byte();
            watch_.Run(testing::UserInDialog(), [&] {
                switch (what) {
                case 0:
                    form.Link[which % 2].Select();
                    break;
                case 1:
                    form.Connection[which % 4].Select();
                    break;
                case 2:
                    form.IdSelect.UserSelect(static_cast<int>(which % form.IdSelect.Items().size()));
                    break;
                case 3:
                    form.ComSelect.UserSelect(static_cast<int>(which % PortCount));
                    break;
                case 4:
                    form.DeviceIds[which % 20].UserSelect(static_cast<int>(which % form.DeviceIds[0].Items().size()));
                    break;
                default:
                    form.Exit.UserClick();
                    world.Boxes.Answers = {BoxAnswer::No};
                    program.Connection.QueryUnload();
                    break;
                }
            });
            LookAtInit();
        }
        watch_.Run(testing::UserInDialog(), [&form] { form.Proceed.UserClick(); });
        if (program.State.SelectExitPending) { // two devices of one ID
            world.Boxes.Answers = {BoxAnswer::Yes};
        }
        Require(program.Connection.QueryUnload(), "the dialog does not go");
    }

    /// The port that is chosen, then what was read, and behind it what was there.
    void LookAtInit() const {
        std::vector<std::uint8_t> expected = init_;
        if (!was_there_) {
            expected.clear();
        }
        expected.resize(std::max(expected.size(), InitSize));
        const int port = program.Select.ComSelect.Index();
        Require(port >= 0 && port < PortCount && port == program.Link.ComIndex, "there is no such port");
        expected[0] = static_cast<std::uint8_t>(port);
        expected[1] = 0;
        Require(world.Folder.Read("init.cfg") == expected, "init.cfg is not what it should be");
    }

    void Look() const {
        Require(world.Folder.Read("Speakers.cfg") == speakers_, "Speakers.cfg changed");
        const session::SessionState& state = program.State;
        if (world.Process.Ended) {
            return;
        }
        Require(state.FoundLast >= 0 && state.FoundLast < DeviceCount, "devices are counted wrong");
        Require(program.List.Devices.Rows() == state.FoundLast + 1, "the list has other rows than devices");
        for (int row = 0; row <= state.FoundLast; ++row) {
            Require(IsDeviceId(session::FoundId(state, row)), "a device has no ID");
        }
    }

    Input& input_;
    Watch watch_;
    std::vector<std::uint8_t> init_;
    std::vector<std::uint8_t> speakers_;
    bool was_there_ = true;
};

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    nrv::fuzz::UseMemoryForFiles();
    nrv::fuzz::Input input(bytes, count);
    std::make_unique<nrv::fuzz::Start>(input)->Run();
    return 0;
}
