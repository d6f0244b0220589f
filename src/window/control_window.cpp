#include "window/control_window.h"

#include "ports/flag_guard.h"
#include "ports/runtime_error.h"
#include "presets/apply_image.h"
#include "presets/preset_titles.h"
#include "response/view_options.h"
#include "session/failure_text.h"
#include "session/unconnected.h"

#include <algorithm>
#include <string_view>
#include <type_traits>

namespace nrv::window {

ControlWindow::ControlWindow(const Parts& parts)
    : windows_(parts.Windows), list_(parts.List), link_(parts.Link), state_(parts.State), status_(parts.Status),
      boxes_(parts.Boxes), host_(parts.Host),
      response_(parts.Curves), context_{parts.Link, parts.Stores, parts.Windows},
      editing_(context_, parts.Curves, parts.Boxes), monitor_(context_, parts.State),
      apply_lock_state_(parts.ApplyLockState), tools_(parts.Tools), history_(parts.History), copies_(parts.Copies) {
    tools_[controls::UnconnectTool] = [this] { UnconnectDevice(); };
    link_.SetFailureHandler(*this);
}

void ControlWindow::Load() {
    const int before = windows_.CurrentWindow;
    const int slot = windows_.NewSlot;
    try {
        Fill(slot);
    } catch (const RuntimeError&) {
        windows_.CurrentWindow = before;
        throw;
    }
    windows_.Loaded[At(slot)] = true;
    link_.Current.BelongTo({slot, windows_.CurrentDevice()});
    host_.ShowControlWindow(slot);
}

void ControlWindow::Fill(int slot) {
    std::unique_ptr<controls::FrmCtrl>& record = windows_.ControlWindows[At(slot)];
    record = std::make_unique<controls::FrmCtrl>();
    controls::FrmCtrl& form = *record;
    WireEvents(form);
    form.SSTab1.SetTab(controls::OverviewTab);
    link_.ReportLinkFailure = true;
    windows_.CurrentWindow = slot;
    form.Window.SetSize(controls::FrmCtrl::WidthTwips, controls::FrmCtrl::HeightTwips);
    {
        const FlagGuard suppressed(link_.TxSuppressed);
        const FlagGuard unplotted(response_.PlotSuspended);
        presets::ApplyImage(context_, response_, presets::ImageCase::Opening);
    }
    for (int channel = 0; channel < ChannelCount; ++channel) {
        response_.RedrawChannel(channel);
    }
    apply_lock_state_();
    // Nobody asks it: a window is shown when it is filled, so that the first needs no hiding either.
    windows_.FirstWindowPending = false;
    monitor_.Start(form);
    link_.TransactionDone = true;
    presets::TitleAtOpening(context_);
    history_.WindowOpened();
    list_.LoadingNotice.SetVisible(false);
    list_.LoadingNotice.Refresh();
}

void ControlWindow::Activate(int slot) {
    if (!windows_.Loaded[At(slot)]) {
        return;
    }
    windows_.CurrentWindow = slot;
    list_.Timer2.Stop();
    response::ShowSharedViews(context_, response_);
    history_.ShowMenu();
}

void ControlWindow::Resize(int slot, int width, int height) {
    windows_.ControlWindows[At(slot)]->Window.SetSize(std::max(width, controls::FrmCtrl::WidthTwips),
                                                      std::max(height, controls::FrmCtrl::HeightTwips));
}

bool ControlWindow::QueryUnload(int slot) {
    if (!windows_.Loaded[At(slot)]) {
        return true;
    }
    windows_.CurrentWindow = slot;
    const int id = windows_.CurrentDevice();
    if (!state_.DeviceUnconnected[At(id)] && !boxes_.AreYouSure(IdText(id) + " - Close window", BoxAnswer::No)) {
        return false;
    }
    history_.EndComparison();
    // What was typed and never entered is not in the record when it is shown again.
    controls::ForEachControl(windows_.Current(), [](std::string_view, int, auto& control) {
        if constexpr (std::is_same_v<decltype(control), controls::TextBox&>) {
            control.TakeBack();
        }
    });
    Unload(slot);
    return true;
}

void ControlWindow::Unload(int slot) {
    const std::size_t index = At(slot);
    if (!windows_.Loaded[index]) {
        return;
    }
    copies_.Write(windows_.WindowSlots[index].DeviceId);
    history_.WindowGone(slot);
    windows_.Loaded[index] = false;
    --windows_.OpenWindowTop;
    windows_.WindowSlots[index].InUse = false;
    // The record stays: the event that led here may still be running on one of its controls.
    windows_.ControlWindows[index]->Timer1.Stop();
    host_.RemoveControlWindow(slot);
    host_.FocusDeviceList();
    list_.Devices.Refresh();
}

void ControlWindow::UnconnectDevice() {
    const int slot = windows_.CurrentWindow;
    const int id = windows_.CurrentDevice();
    if (boxes_.Show({"Do you want unconnect this device, are you sure ? ", "Unconnect device", BoxIcon::None,
                     BoxButtons::YesNo, BoxAnswer::No}) != BoxAnswer::Yes) {
        return;
    }
    history_.EndComparison();
    if (link_.SendFrame(id, {link::UnconnectCommand})) {
        return;
    }
    session::MarkUnconnected(state_, list_, id);
    Unload(slot);
    status_.Tell(IdText(id) + " is unconnected. Double-click its row to connect it again." + MetersRest());
}

int ControlWindow::CurrentDevice() {
    return windows_.CurrentDevice();
}

void ControlWindow::TellFailure() {
    failure_told_ = session::FailureText(link_.Current);
    status_.Tell(failure_told_);
}

void ControlWindow::OperationEnds() {
    // What went on in controls and stores has counted the frames that were left out; the operation's own word stays.
    if (link_.Current.Reported() && status_.Text() == failure_told_) {
        status_.Tell(session::FailureText(link_.Current) + MetersRest());
    }
}

void ControlWindow::GiveUpDevice() {
    const Operation::Subject subject =
        link_.Current.Of().value_or(Operation::Subject{windows_.CurrentWindow, windows_.CurrentDevice()});
    session::MarkUnconnected(state_, list_, subject.Device);
    if (subject.Slot != Operation::NoSlot) {
        Unload(subject.Slot);
    }
}

/// No window polls until an exchange has ended well again.
std::string ControlWindow::MetersRest() const {
    return std::ranges::find(windows_.Loaded, true) == windows_.Loaded.end()
               ? std::string()
               : " The meters rest until the next change.";
}

void ControlWindow::MarkUnchecked(int id) {
    session::MarkUnchecked(state_, list_, id);
}

} // namespace nrv::window
