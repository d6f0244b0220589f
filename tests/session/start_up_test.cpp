#include "session/program_fixture.h"
#include "session/start_up.h"

#include <memory>

namespace nrv::testing {
namespace {

using controls::MoreDevices;
using controls::UpToTenDevices;

const Frame ExitFrame = {0xF0, 0xC3, 0, 0x8F, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7};

class StartUpTest : public ProgramTest {
  protected:
    void ExpectDemoQuestion(const MessageBox& box) {
        ExpectBox(box, "Warning", "COM not found or Devices unconnected, do you want continue in demo mode?",
                  BoxIcon::None, BoxButtons::YesNo);
    }
    void FlagDemoDevices() { world.Folder.Write("Speakers.cfg", SpeakersFile({{3, 3}, {8, 8}})); }
    /// Runs until the process ends because the user wants no demo mode.
    void ExpectNoEnds(std::function<void()> in_dialog) {
        world.Boxes.Answers = {BoxAnswer::No};
        EXPECT_THROW(Start(std::move(in_dialog)), ProcessEnded);
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectDemoQuestion(world.Boxes.Shown[0]);
        EXPECT_TRUE(program.State.SkipExitPrompt);
        EXPECT_FALSE(program.Link.DemoMode);
        EXPECT_EQ(world.Host.Log.back(), "unload main");
        EXPECT_EQ(world.Port.CountSent(0x8F), 0);
    }
    /// What the splash window says while the demo question stands.
    std::string ReasonAtTheQuestion(std::function<void()> in_dialog) {
        std::string reason;
        program.Splash.Reason.Observe([&](controls::Aspect aspect) {
            if (aspect == controls::Aspect::Repaint && world.Boxes.Shown.empty()) {
                reason = program.Splash.Reason.Caption();
            }
        });
        world.Boxes.Answers = {BoxAnswer::No};
        EXPECT_THROW(Start(std::move(in_dialog)), ProcessEnded);
        return reason;
    }
};

TEST_F(StartUpTest, SplashStandsTwoSecondsWithItsLabelsHidden) {
    program.StartUp.LoadSplash(world.Folder.Path());
    EXPECT_FALSE(program.Splash.Progress.Visible());
    EXPECT_FALSE(program.Splash.Searching.Visible());
    EXPECT_EQ(program.Splash.Progress.Caption(), "0");
    EXPECT_EQ(program.Splash.Timer1.Interval(), 2000);
    EXPECT_TRUE(program.Splash.Timer1.Running());
    EXPECT_EQ(program.State.AppFolder, world.Folder.Path());
    EXPECT_TRUE(world.Host.Log.empty());
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(StartUpTest, ScreenShortInBothDirectionsIsWarnedOf) {
    world.Host.ScreenIs = {640, 480};
    program.StartUp.LoadSplash(world.Folder.Path());
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Warning", "Minimum display resolution is 800x600", BoxIcon::None, BoxButtons::Ok);
    EXPECT_TRUE(program.Splash.Timer1.Running());
}

TEST_F(StartUpTest, ScreenShortInOneDirectionIsNot) {
    for (const ScreenSize size : {ScreenSize{1024, 480}, ScreenSize{640, 1024}, ScreenSize{800, 600},
                                  ScreenSize{799, 600}, ScreenSize{800, 599}}) {
        world.Host.ScreenIs = size;
        program.StartUp.LoadSplash(world.Folder.Path());
    }
    EXPECT_TRUE(world.Boxes.Shown.empty());
    world.Host.ScreenIs = {799, 599};
    program.StartUp.LoadSplash(world.Folder.Path());
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
}

TEST_F(StartUpTest, StepsComeInTheOrderTold) {
    line.Add(7, "seventh");
    bool dialog_seen = false;
    program.Windows.FirstWindowPending = false;
    program.Link.CheckSuppressed = program.Link.TxSuppressed = program.State.SkipExitPrompt = true;
    long probes = 0;
    world.Port.OnOutput = [&] {
        ++probes;
        EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run dialog", "close dialog")); // no other window yet
        EXPECT_EQ(program.Splash.Window.MousePointer(), controls::Pointer::Default);
        EXPECT_FALSE(program.Splash.Searching.Visible());
    };
    Start([&] {
        dialog_seen = true;
        EXPECT_FALSE(program.Splash.Timer1.Running());
        EXPECT_EQ(program.Splash.Window.MousePointer(), controls::Pointer::ArrowAndHourglass);
        EXPECT_TRUE(program.Select.Link[0].Selected()); // the dialog is loaded
        EXPECT_TRUE(world.Port.Log.empty());            // and nothing is connected yet
        ProceedWith(MoreDevices, 4);
    });
    EXPECT_TRUE(dialog_seen);
    EXPECT_EQ(probes, 33);
    EXPECT_EQ(program.Splash.Window.MousePointer(), controls::Pointer::Default);
    EXPECT_TRUE(program.Windows.FirstWindowPending);
    EXPECT_FALSE(program.Link.CheckSuppressed);
    EXPECT_FALSE(program.Link.TxSuppressed);
    EXPECT_FALSE(program.State.SkipExitPrompt);
    EXPECT_TRUE(program.Link.LinkReady);
    EXPECT_FALSE(program.Link.DemoMode);
    EXPECT_THAT(world.Host.Log,
                ::testing::ElementsAre("run dialog", "close dialog", "show main", "show list", "unload splash"));
    EXPECT_THAT(world.Port.Log,
                ::testing::ElementsAre("port 4", "19200,N,8,1", "open", "close", "buffer 13", "input 13", "open"));
    EXPECT_EQ(program.List.Timer1.Interval(), 1000);
    EXPECT_TRUE(program.List.Timer1.Running());
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

TEST_F(StartUpTest, OneDeviceIsProbedAndEntered) {
    line.Add(9, "ninth");
    Start([this] {
        program.Select.Link[1].Select();
        program.Select.IdSelect.UserSelect(9);
        program.Select.ComSelect.UserSelect(2);
        Proceed();
    });
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(ProbeFrame(9)));
    EXPECT_THAT(world.Port.Log,
                ::testing::ElementsAre("port 2", "19200,N,8,1", "open", "close", "buffer 13", "input 13", "open"));
    EXPECT_EQ(program.State.FoundLast, 0);
    EXPECT_EQ(program.State.FoundDevices[0], 9);
    EXPECT_EQ(program.State.SpeakerRecords[9].DeviceId(), 9);
    EXPECT_EQ(program.State.SpeakerRecords[9].Words[10], 1);
    EXPECT_TRUE(program.Link.PortOpened);
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_EQ(program.List.Devices.Rows(), 1);
}

TEST_F(StartUpTest, UsbProbesIdZero) {
    line.Add(0, "usb");
    Start([this] {
        program.Select.ComSelect.UserSelect(1);
        Proceed();
    });
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(ProbeFrame(0)));
    EXPECT_EQ(program.State.FoundDevices[0], 0);
    EXPECT_EQ(program.State.FoundLast, 0);
}

TEST_F(StartUpTest, NoneLeadsToTheDemoQuestionRightAfterTheDialog) {
    FlagDemoDevices();
    Start([this] { Proceed(); });
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectDemoQuestion(world.Boxes.Shown[0]);
    EXPECT_TRUE(program.Link.DemoMode);
    EXPECT_FALSE(program.Link.PortOpened);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(program.State.FoundLast, 0); // one demo device, under the ID chosen
    EXPECT_EQ(program.State.FoundDevices[0], 0);
}

TEST_F(StartUpTest, TheSplashWindowSaysWhyItAsksForDemoMode) {
    world.Port.Present = false;
    EXPECT_EQ(ReasonAtTheQuestion([this] { ProceedWith(MoreDevices, 6); }), "The port is absent.");
    EXPECT_EQ(program.Main.StatusLine.Caption(), "The port is absent.");
}

TEST_F(StartUpTest, TheSplashWindowNamesTheSilentDevice) {
    EXPECT_EQ(ReasonAtTheQuestion([this] {
                  program.Select.Link[1].Select();
                  program.Select.IdSelect.UserSelect(5);
                  program.Select.ComSelect.UserSelect(1);
                  Proceed();
              }),
              "No answer came from ID:5.");
}

TEST_F(StartUpTest, TheSplashWindowSaysThatTheLineIsEmpty) {
    EXPECT_EQ(ReasonAtTheQuestion([this] { ProceedWith(MoreDevices, 6); }), "No answer came from any ID.");
}

TEST_F(StartUpTest, TheSplashWindowSaysThatNoIdOfTheListAnswers) {
    world.Folder.Write("TenDev.cfg", Words(Range(1, 20)));
    EXPECT_EQ(ReasonAtTheQuestion([this] { ProceedWith(UpToTenDevices, 6); }),
              "No answer came from any ID of the list.");
}

TEST_F(StartUpTest, DemoModeStandsInTheStatusLineForGood) {
    FlagDemoDevices();
    Start([this] { Proceed(); });
    const auto user_does = [this](const std::function<void()>& what) { program.Events.Run(UserOutside(), what); };
    user_does([] {});
    EXPECT_EQ(program.Status.Text(), "Demo mode: nothing is sent");
    user_does([this] { program.Status.Tell("The preset was not saved."); });
    EXPECT_EQ(program.Status.Text(), "The preset was not saved.");
    user_does([] {});
    EXPECT_EQ(program.Status.Text(), "Demo mode: nothing is sent");
    program.Status.TellForNow("It does not answer, waiting.");
    EXPECT_EQ(program.Status.Text(), "It does not answer, waiting.");
    program.Status.NoLonger();
    EXPECT_EQ(program.Status.Text(), "Demo mode: nothing is sent");
}

TEST_F(StartUpTest, OneSilentDeviceLeadsToTheDemoQuestion) {
    FlagDemoDevices();
    Start([this] {
        program.Select.Link[1].Select();
        program.Select.IdSelect.UserSelect(5);
        program.Select.ComSelect.UserSelect(1);
        Proceed();
    });
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectDemoQuestion(world.Boxes.Shown[0]);
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(ProbeFrame(5)));
    EXPECT_FALSE(program.Link.PortOpened);
    EXPECT_TRUE(program.Link.DemoMode);
    EXPECT_EQ(program.State.FoundDevices[0], 5);
}

TEST_F(StartUpTest, SeveralDevicesWithoutAPortLeadToTheDemoQuestionAndAllDemoDevices) {
    FlagDemoDevices();
    world.Port.Present = false;
    Start([this] { ProceedWith(MoreDevices, 6); });
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectDemoQuestion(world.Boxes.Shown[0]);
    EXPECT_TRUE(program.Link.DemoMode);
    EXPECT_EQ(program.State.FoundLast, 1);
    EXPECT_EQ(program.State.FoundDevices[0], 3);
    EXPECT_EQ(program.State.FoundDevices[1], 8);
    EXPECT_EQ(program.Main.StatusLine.Caption(), "The port is absent.");
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(StartUpTest, SearchOfTenThatFindsNothingAsksTheSameAsAMissingPort) {
    FlagDemoDevices();
    world.Folder.Write("TenDev.cfg", Words(Range(1, 20)));
    Start([this] { ProceedWith(UpToTenDevices, 6); });
    EXPECT_EQ(world.Port.Sent.size(), 10U);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectDemoQuestion(world.Boxes.Shown[0]);
}

TEST_F(StartUpTest, EmptyLineAsksTheSameAsAMissingPort) {
    FlagDemoDevices();
    Start([this] { ProceedWith(MoreDevices, 6); });
    EXPECT_EQ(world.Port.Sent.size(), 33U);
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectDemoQuestion(world.Boxes.Shown[0]);
    EXPECT_TRUE(program.Link.DemoMode);
    EXPECT_EQ(program.State.FoundLast, 1);
}

TEST_F(StartUpTest, NoAfterAMissingPortEndsTheProcess) {
    ExpectNoEnds([this] { Proceed(); });
}

TEST_F(StartUpTest, NoAfterASilentDeviceEndsTheProcess) {
    ExpectNoEnds([this] {
        program.Select.ComSelect.UserSelect(1);
        Proceed();
    });
}

TEST_F(StartUpTest, NoAfterAMissingPortOfSeveralEndsTheProcess) {
    ExpectNoEnds([this] { ProceedWith(MoreDevices, 0); });
}

TEST_F(StartUpTest, NoAfterAnEmptySearchEndsTheProcess) {
    ExpectNoEnds([this] { ProceedWith(MoreDevices, 1); });
}

TEST_F(StartUpTest, NoToTheDemoQuestionEndsWithoutTheExitQuestion) {
    world.Host.OnMainWindowCloses = [this] { program.StartUp.MainQueryUnload(); };
    ExpectNoEnds([this] { Proceed(); });
    EXPECT_THROW(program.StartUp.MainQueryUnload(), ProcessEnded);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
}

/// A port that cannot be opened again, as it is after the receive lengths were set.
class VanishingPort final : public link::SerialPort {
  public:
    explicit VanishingPort(link::SerialPort& inner) : inner_(inner) {}
    void SetCommPort(int number) override { inner_.SetCommPort(number); }
    void SetSettings(const link::LineSettings& settings) override { inner_.SetSettings(settings); }
    bool PortOpen() override { return inner_.PortOpen(); }
    void SetPortOpen(bool open) override {
        if (open && ++openings_ > 1) {
            throw RuntimeError(ErrorKind::PortUnavailable, "The port is absent.");
        }
        inner_.SetPortOpen(open);
    }
    void SetInBufferSize(int bytes) override { inner_.SetInBufferSize(bytes); }
    void SetInputLen(int bytes) override { inner_.SetInputLen(bytes); }
    void Output(std::span<const std::uint8_t> bytes) override { inner_.Output(bytes); }
    int InBufferCount() override { return inner_.InBufferCount(); }
    void ClearInBuffer() override { inner_.ClearInBuffer(); }
    Bytes Input() override { return inner_.Input(); }

  private:
    link::SerialPort& inner_;
    int openings_ = 0;
};

class VanishingPortTest : public StartUpTest {
  protected:
    /// The line is chosen in the dialog, with one device or a list of them.
    void StartAndExpectDemoMode(controls::ConnectionMode mode) {
        FlagDemoDevices();
        world.Host.WhileDialogStands = [this, mode] {
            other->Select.Link[1].Select();
            other->Select.Connection[mode].Select();
            other->Select.ComSelect.UserSelect(1);
            other->Select.Proceed.UserClick();
        };
        other->StartUp.LoadSplash(world.Folder.Path());
        other->Splash.Timer1.Tick();
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectDemoQuestion(world.Boxes.Shown[0]);
        EXPECT_TRUE(other->Link.DemoMode);
        EXPECT_FALSE(other->Link.PortOpened);
        EXPECT_FALSE(other->Link.LinkReady);
        EXPECT_EQ(other->Main.StatusLine.Caption(), "The port is absent.");
        EXPECT_TRUE(world.Port.Sent.empty());
    }

    VanishingPort vanishing{world.Port};
    std::unique_ptr<program::Forms> forms = std::make_unique<program::Forms>();
    controls::EventBoundary events{forms->Windows};
    std::unique_ptr<program::Program> other = std::make_unique<program::Program>(
        program::Ports{vanishing, world.Clock, world.Process, world.Boxes, world.Files, world.Host, events}, *forms);
};

TEST_F(VanishingPortTest, CountsAsMissing) {
    StartAndExpectDemoMode(controls::OneDevice);
}

TEST_F(VanishingPortTest, LeavesNoDeviceOfAListToBeCalledSilent) {
    world.Folder.Write("TenDev.cfg", Words(Range(1, 20)));
    StartAndExpectDemoMode(UpToTenDevices);
}

class LeavingTest : public StartUpTest {
  protected:
    LeavingTest() { StartOnLine({4}); }
    void ExpectExitQuestion() {
        ASSERT_FALSE(world.Boxes.Shown.empty());
        ExpectBox(world.Boxes.Shown[0], "Exit", "               Are you sure ? ", BoxIcon::None, BoxButtons::YesNo);
        EXPECT_EQ(world.Boxes.Shown[0].Default, BoxAnswer::No);
    }
};

TEST_F(LeavingTest, MenuExitSendsTheNoticeAndEnds) {
    EXPECT_THROW(program.Main.Exit.UserClick(), ProcessEnded);
    ExpectExitQuestion();
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(ExitFrame));
}

TEST_F(LeavingTest, MenuExitAnsweredNoDoesNothing) {
    world.Boxes.Answers = {BoxAnswer::No};
    program.Main.Exit.UserClick();
    ExpectExitQuestion();
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_FALSE(world.Process.Ended);
}

TEST_F(LeavingTest, ClosingTheMainWindowSendsTheNoticeAndEnds) {
    EXPECT_THROW(program.StartUp.MainQueryUnload(), ProcessEnded);
    ExpectExitQuestion();
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(ExitFrame));
}

TEST_F(LeavingTest, ClosingTheMainWindowAnsweredNoIsCancelled) {
    world.Boxes.Answers = {BoxAnswer::No};
    EXPECT_FALSE(program.StartUp.MainQueryUnload());
    ExpectExitQuestion();
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(LeavingTest, ClosingWithThePromptSkippedEndsAtOnce) {
    program.State.SkipExitPrompt = true;
    EXPECT_THROW(program.StartUp.MainQueryUnload(), ProcessEnded);
    EXPECT_TRUE(world.Boxes.Shown.empty());
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(LeavingTest, ProcessDoesNotEndAfterAReportedFailureOfTheNotice) {
    program.Link.ReportLinkFailure = true;
    world.Port.Gone = true;
    EXPECT_TRUE(program.StartUp.MainQueryUnload());
    program.Main.Exit.UserClick();
    EXPECT_FALSE(world.Process.Ended);
    EXPECT_EQ(world.Boxes.Shown[1].Title, "Communication problem");
}

TEST_F(LeavingTest, SilentFailureOfTheNoticeEndsTheProcessAllTheSame) {
    world.Port.Gone = true;
    EXPECT_THROW(program.StartUp.MainQueryUnload(), ProcessEnded);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
}

TEST_F(StartUpTest, DemoModeEndsWithoutTheNotice) {
    StartDemo(1);
    EXPECT_THROW(program.Main.Exit.UserClick(), ProcessEnded);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_TRUE(world.Port.Sent.empty());
}

} // namespace
} // namespace nrv::testing
