#include "session/start_up.h"

#include "ports/runtime_error.h"

namespace nrv::session {
namespace {

constexpr int SplashMilliseconds = 2000;
constexpr int MinimumWidth = 800;
constexpr int MinimumHeight = 600;

} // namespace

StartUp::StartUp(const Parts& parts)
    : splash_(parts.Splash), main_(parts.Main), windows_(parts.Windows), link_(parts.Link), dialog_(parts.Dialog),
      discovery_(parts.Devices), list_(parts.List), state_(parts.State), boxes_(parts.Boxes), process_(parts.Run),
      host_(parts.Host), status_(parts.Status), leaving_(parts.Leaving) {
    splash_.Timer1.Tick = [this] { SplashTimeOver(); };
    main_.Exit.Clicked = [this] { Exit(); };
}

void StartUp::LoadSplash(const std::filesystem::path& current_folder) {
    splash_.Progress.SetVisible(false);
    splash_.Searching.SetVisible(false);
    const ScreenSize screen = host_.Screen();
    // Both, so that a screen that is short in one direction alone raises no warning; that is meant.
    if (screen.WidthPixels < MinimumWidth && screen.HeightPixels < MinimumHeight) {
        boxes_.Show({"Minimum display resolution is 800x600", "Warning"});
    }
    state_.AppFolder = current_folder;
    splash_.Timer1.Start(SplashMilliseconds);
}

void StartUp::SplashTimeOver() {
    splash_.Timer1.Stop();
    splash_.Window.SetMousePointer(controls::Pointer::ArrowAndHourglass);
    dialog_.Load();
    {
        const Operation::Standing standing(link_.Current, Operation::Loop::Dialog);
        host_.RunConnectionDialog();
    }
    splash_.Window.SetMousePointer(controls::Pointer::Default);
    LoadMainWindow();
    host_.ShowMainWindow();
    list_.Load();
    host_.ShowDeviceList();
    host_.UnloadSplash();
}

void StartUp::LoadMainWindow() {
    windows_.FirstWindowPending = true;
    link_.CheckSuppressed = false;
    state_.SkipExitPrompt = false;
    link_.TxSuppressed = false;
    link_.LinkReady = true;
    if (state_.MultiDevice) {
        ConnectSeveral();
    } else {
        ConnectOne();
    }
}

void StartUp::ConnectSeveral() {
    if (OpenLine() && discovery_.SearchDevices()) {
        return;
    }
    GoOnInDemoMode();
    discovery_.LoadDemoDevices();
}

void StartUp::ConnectOne() {
    if (OpenLine()) {
        link_.PortOpened = link_.ProbeDevice(state_.SingleId);
        if (!link_.PortOpened) {
            status_.Tell("No answer came from " + IdText(state_.SingleId) + ".");
        }
    }
    if (!link_.PortOpened) {
        GoOnInDemoMode();
        discovery_.LoadDemoDevice();
        return;
    }
    SpeakerRecord& record = state_.SpeakerRecords[At(state_.SingleId)];
    record.SetDeviceId(state_.SingleId);
    record.SetFound(true);
    state_.FoundLast = 0;
    state_.FoundDevices[0] = state_.SingleId;
}

/// Opens the chosen port and sets it up for frames; a port that goes away in between counts as one that cannot be
/// opened.
bool StartUp::OpenLine() {
    link_.OpenPort();
    if (link_.PortOpened) {
        try {
            link_.ReopenPort(link::FrameLength);
        } catch (const RuntimeError& error) {
            link_.PortOpened = false;
            link_.LinkReady = false;
            status_.Tell(error.what());
        }
    } else {
        status_.Tell(link_.PortRefusal());
    }
    return link_.PortOpened;
}

/// Asks whether to; No ends the process. The splash window says why: the status line is not on the screen yet.
void StartUp::GoOnInDemoMode() {
    splash_.Reason.SetCaption(status_.Text());
    splash_.Reason.Refresh();
    if (!WantsDemoMode()) {
        state_.SkipExitPrompt = true;
        host_.UnloadMainWindow();
        process_.End();
    }
    link_.DemoMode = true;
    status_.Stand("Demo mode: nothing is sent");
}

bool StartUp::WantsDemoMode() {
    return boxes_.Show({"COM not found or Devices unconnected, do you want continue in demo mode?", "Warning",
                        BoxIcon::None, BoxButtons::YesNo}) == BoxAnswer::Yes;
}

void StartUp::Exit() {
    LeaveProgram();
}

bool StartUp::MainQueryUnload() {
    if (state_.SkipExitPrompt) {
        process_.End();
    }
    return LeaveProgram();
}

/// False when the program stays. After a failed last frame the process does not end here.
bool StartUp::LeaveProgram() {
    if (!boxes_.AreYouSure("Exit", BoxAnswer::No)) {
        return false;
    }
    leaving_();
    if (link_.Current.Reported()) {
        return false; // a device died as its user's own settings came back, and the others' wait
    }
    link_.Current.Call("the leaving", Operation::Untold);
    if (!link_.SendFrame(0, {link::ExitNoticeCommand})) {
        process_.End();
    }
    return true;
}

} // namespace nrv::session
