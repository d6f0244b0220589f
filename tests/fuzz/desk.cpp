#include "fuzz/desk.h"

#include "fuzz/frames.h"
#include "ports/flag_guard.h"
#include "program/fault_world.h"

#include <algorithm>
#include <filesystem>

namespace nrv::fuzz {
namespace {

using testing::Bytes;
using testing::FaultWorld;
using testing::Frame;

constexpr std::array<int, 4> Listed{FaultWorld::FirstListed, FaultWorld::Front, FaultWorld::Closed, FaultWorld::Behind};

// Every control of a window as that of another, with no event that works on anything.

void CopyCommon(const controls::Control& from, controls::Control& to) {
    to.SetCaption(from.Caption());
    to.SetToolTip(from.ToolTip());
    to.SetVisible(from.Visible());
    to.SetEnabled(from.Enabled());
}

void CopyOwn(const controls::Control&, controls::Control&) {}
void CopyOwn(const controls::Form& from, controls::Form& to) {
    to.SetMousePointer(from.MousePointer());
    to.SetSize(from.Width(), from.Height());
}
void CopyOwn(const controls::Fader& from, controls::Fader& to) {
    to.SetPosition(from.Position());
}
void CopyOwn(const controls::UpDown& from, controls::UpDown& to) {
    to.SetPosition(from.Position());
}
void CopyOwn(const controls::List& from, controls::List& to) {
    to.Select(from.Index());
}
void CopyOwn(const controls::CheckBox& from, controls::CheckBox& to) {
    to.ShowValue(from.Value());
}
void CopyOwn(const controls::Option& from, controls::Option& to) {
    if (from.Selected()) {
        to.ShowSelected();
    }
}
void CopyOwn(const controls::TabControl& from, controls::TabControl& to) {
    to.SetTabCaptions(from.TabCaptions());
    to.SetTab(from.Tab());
}
void CopyOwn(const controls::Timer& from, controls::Timer& to) {
    from.Running() ? to.Start(from.Interval()) : to.Stop();
}
void CopyOwn(const controls::Shape& from, controls::Shape& to) {
    from.Lit() ? to.Light(from.Fill()) : to.Extinguish();
}
void CopyOwn(const controls::Marker& from, controls::Marker& to) {
    to.MoveTo(from.Left(), from.Top());
}
void CopyOwn(const controls::TextBox& from, controls::TextBox& to) {
    to.SetText(from.Text());
    to.SetMaxLength(from.MaxLength());
    to.SetLocked(from.Locked());
    to.SetMarked(from.Marked());
}

void CopyWindow(controls::FrmCtrl& from, controls::FrmCtrl& to) {
    const auto copy = [](auto& one, auto& other) {
        CopyCommon(one, other);
        CopyOwn(one, other);
    };
    copy(from.Window, to.Window);
    std::vector<controls::Control*> targets;
    controls::ForEachControl(to,
                             [&](std::string_view, int, controls::Control& control) { targets.push_back(&control); });
    auto target = targets.begin();
    controls::ForEachControl(from, [&](std::string_view, int, auto& control) {
        copy(control, static_cast<std::remove_reference_t<decltype(control)>&>(**target));
        ++target;
    });
    to.MarkerDragging = from.MarkerDragging;
    to.MarkerMoved = from.MarkerMoved;
}

} // namespace

struct Desk::Snapshot {
    std::array<model::ParamRow, DeviceCount> Values;
    std::array<model::PresetImageRow, DeviceCount> Images;
    std::array<std::array<std::string, ChannelCount>, DeviceCount> Names;
    double LastInputType = 0.0;
    session::SessionState State;
    std::array<bool, DeviceCount> Checked{};
    decltype(link::Link::RxFrame) RxFrame{};
    std::array<controls::WindowSlot, controls::SlotCount> Slots;
    std::array<bool, controls::SlotCount> Loaded{};
    int CurrentWindow = 0;
    int OpenWindowTop = 0;
    decltype(response::Response::ViewMode) ViewMode{};
    decltype(response::Response::OverlayMatrix) OverlayMatrix{};
    std::array<controls::FrmCtrl, 2> Windows; ///< of the slots 0 and 1
    std::vector<std::string> Rows;
    long Seconds = 0;
};

Desk::Desk() {
    UseMemoryForFiles();
    world_ = std::make_unique<FaultWorld>();
    watch_ = std::make_unique<Watch>(World());
    watch_->Answer = [this](const Frame& frame) { return Answer(frame); };
    watch_->Poll = [this] { Poll(); };
    World().Port.OnOutput = [this] {
        if (trouble_.Of == Trouble::Kind::GoneBefore && frames_ == trouble_.At) {
            World().Port.GoAway();
        }
    };
    std::filesystem::create_directory(World().Folder / "preset");

    before_ = std::make_unique<Snapshot>();
    Snapshot& s = *before_;
    program::Program& p = Program();
    s.Values = p.Stores.ParamValues;
    s.Images = p.Stores.PresetImage;
    s.Names = p.Stores.ChannelNames;
    s.LastInputType = p.Stores.LastInputType;
    s.State = p.State;
    s.Checked = p.Link.DeviceChecked;
    s.RxFrame = p.Link.RxFrame;
    s.Slots = p.Windows.WindowSlots;
    s.Loaded = p.Windows.Loaded;
    s.CurrentWindow = p.Windows.CurrentWindow;
    s.OpenWindowTop = p.Windows.OpenWindowTop;
    s.ViewMode = p.Response.ViewMode;
    s.OverlayMatrix = p.Response.OverlayMatrix;
    for (std::size_t slot = 0; slot < s.Windows.size(); ++slot) {
        CopyWindow(*p.Windows.ControlWindows[slot], s.Windows[slot]);
    }
    for (int row = 0; row < p.List.Devices.Rows(); ++row) {
        s.Rows.push_back(p.List.Devices.Cell(row, 0));
    }
    s.Seconds = World().Clock.Seconds;
}

Desk::~Desk() = default;

testing::TestProgram& Desk::World() {
    return world_->world;
}

void Desk::Reset() {
    Snapshot& s = *before_;
    program::Program& p = Program();
    testing::ScriptedPort& port = World().Port;
    trouble_ = {};
    late_.clear();
    RenewWindows();
    {
        const FlagGuard events_off(p.Windows.ControlEventsOff);
        const FlagGuard suppressed(p.Link.TxSuppressed);
        const FlagGuard unplotted(p.Response.PlotSuspended);
        p.Windows.WindowSlots = s.Slots;
        for (std::size_t slot = 0; slot < s.Windows.size(); ++slot) {
            p.Windows.CurrentWindow = static_cast<int>(slot);
            CopyWindow(s.Windows[slot], *p.Windows.ControlWindows[slot]);
        }
    }
    // After the controls: the lists of sources work on the stores whoever changes them.
    ResetStores();
    p.State = s.State;
    p.Link.DeviceChecked = s.Checked;
    p.Link.RxFrame = s.RxFrame;
    p.Link.DemoMode = false;
    p.Link.LinkReady = true;
    p.Link.PortOpened = true;
    p.Link.TransactionDone = true;
    p.Link.ReportLinkFailure = true;
    p.Windows.Loaded = s.Loaded;
    for (int slot = 0; slot < controls::SlotCount; ++slot) {
        p.History.WindowGone(slot);
        if (s.Loaded[At(slot)]) {
            p.Windows.CurrentWindow = slot;
            p.History.WindowOpened();
        }
    }
    p.Windows.CurrentWindow = s.CurrentWindow;
    p.Windows.OpenWindowTop = s.OpenWindowTop;
    p.Response.ViewMode = s.ViewMode;
    p.Response.OverlayMatrix = s.OverlayMatrix;
    for (std::size_t row = 0; row < s.Rows.size(); ++row) {
        p.List.Devices.SetCell(static_cast<int>(row), 0, s.Rows[row]);
    }
    p.List.LoadingNotice.SetVisible(false);
    p.List.Timer1.Stop();
    p.Status.Clear();

    World().Process.Ended = false;
    World().Clock.Seconds = s.Seconds;
    World().Host.ListMinimised = false;
    World().Host.WhileToolDialogStands = nullptr;
    World().Files.File.reset();
    port.Present = true;
    port.SecondsPerPoll = 1;
    port.SetInBufferSize(link::FrameLength);
    port.SetInputLen(link::FrameLength);
    if (port.Gone) {
        port.SetPortOpen(false);
    }
    port.SetPortOpen(true);
    port.Waiting.clear();
    watch_->Forget();
}

void Desk::ResetStores() {
    model::DeviceStores& stores = Program().Stores;
    for (const int id : Listed) {
        stores.ParamValues[At(id)] = before_->Values[At(id)];
        stores.PresetImage[At(id)] = before_->Images[At(id)];
        stores.ChannelNames[At(id)] = before_->Names[At(id)];
    }
    stores.ParamValues[0] = before_->Values[0];
    stores.LastInputType = before_->LastInputType;
}

/// A window that was opened on codes without an entry stopped half-way.
void Desk::RenewWindows() {
    controls::Windows& windows = Program().Windows;
    for (const int slot : {BackSlot, FrontSlot}) {
        if (!Window(slot).Timer1.Tick) {
            ResetStores();
            windows.WindowSlots = before_->Slots;
            windows.NewSlot = slot;
            Program().Control.Load();
        }
    }
}

void Desk::Meet(const Trouble& trouble) {
    trouble_ = trouble;
    frames_ = 0;
}

Bytes Desk::Answer(const Frame& frame) {
    const int number = frames_++;
    Bytes answer = world_->line.Answer(frame);
    const auto size = static_cast<std::size_t>(std::max(trouble_.Size, 0));
    if (number < trouble_.At) {
        return answer;
    }
    if (trouble_.Of == Trouble::Kind::Silent) {
        return {};
    }
    if (number > trouble_.At) {
        return answer;
    }
    switch (trouble_.Of) {
    case Trouble::Kind::GoneWaiting:
        return {};
    case Trouble::Kind::Other:
        answer.insert(answer.begin(), testing::WrongAnswer.begin(), testing::WrongAnswer.end());
        return answer;
    case Trouble::Kind::Late:
        late_ = std::move(answer);
        late_at_ = World().Clock.Seconds + trouble_.Size;
        return {};
    case Trouble::Kind::Short:
        answer.resize(answer.size() - std::min(size, answer.size()));
        return answer;
    case Trouble::Kind::Long:
        answer.insert(answer.end(), size, 0xC3);
        return answer;
    default:
        return answer;
    }
}

void Desk::Poll() {
    if (trouble_.Of == Trouble::Kind::GoneWaiting && frames_ == trouble_.At + 1) {
        World().Port.GoAway();
    }
    if (!late_.empty() && World().Clock.Seconds >= late_at_) {
        Bytes& waiting = World().Port.Waiting;
        waiting.insert(waiting.end(), late_.begin(), late_.end());
        late_.clear();
    }
}

void Desk::AnswerBoxes(std::uint8_t bits) {
    World().Boxes.Answers.clear();
    for (; bits != 0; bits = static_cast<std::uint8_t>(bits >> 1)) {
        World().Boxes.Answers.push_back((bits & 1) == 0 ? BoxAnswer::Yes : BoxAnswer::No);
    }
}

bool Desk::CodesFit() {
    return std::ranges::all_of(Listed, [this](int id) { return fuzz::CodesFit(Program().Stores.PresetImage[At(id)]); });
}

bool Desk::Run(const controls::EventSource& source, const std::function<void()>& event) {
    if (Ended()) {
        return false;
    }
    if (!Program().Events.Current().Running()) {
        watch_->CodesFit = trouble_.Of == Trouble::Kind::None && !World().Files.File && CodesFit();
    }
    return watch_->Run(source, event);
}

bool Desk::UseTool(int slot, controls::ToolButton tool, std::function<void()> in_dialog) {
    controls::Button& button = Window(slot).Command2[At(tool)];
    if (!button.Enabled() || !button.Visible()) {
        return false;
    }
    World().Host.WhileToolDialogStands = std::move(in_dialog);
    const bool ran = InWindow(slot, [&button] { button.UserClick(); });
    World().Host.WhileToolDialogStands = nullptr;
    return ran;
}

bool Desk::Key(const controls::EventSource& source, controls::TextBox& box, char key) {
    if (!box.Enabled() || box.Locked()) {
        return false;
    }
    controls::KeyEntry entry = 0;
    Run(source, [&] { entry = box.UserKey(key); });
    if (!box.Enabled() || box.Locked() || (entry.Entering == controls::EnterKey && key == controls::EnterKey)) {
        return !entry.Refused;
    }
    std::string text = box.Text();
    if (entry.Entering == controls::BackspaceKey && key == controls::BackspaceKey) {
        text = text.substr(0, text.size() - std::min<std::size_t>(text.size(), 1));
    } else if (entry.Entering != 0 &&
               (box.MaxLength() == controls::TextBox::NoLimit || text.size() < box.MaxLength())) {
        text += entry.Entering;
    }
    box.UserText(text);
    return !entry.Refused;
}

void Desk::Paste(const controls::EventSource& source, controls::TextBox& box, const std::string& text) {
    for (const char key : text.substr(0, text.find_first_of("\r\n"))) {
        if (!Key(source, box, key)) {
            return;
        }
    }
}

} // namespace nrv::fuzz
