#include "session/connection_dialog.h"

#include "ports/runtime_error.h"

#include <algorithm>

namespace nrv::session {
namespace {

using controls::FrmSelect;

constexpr std::size_t Usb = 0;
constexpr std::size_t Rs485 = 1;

/// The nearest value that a list can hold; a file may hold anything.
int Nearest(const controls::List& list, int value) {
    return std::clamp(value, 0, static_cast<int>(list.Items().size()) - 1);
}

} // namespace

ConnectionDialog::ConnectionDialog(const Parts& parts)
    : form_(parts.Form), link_(parts.Link), state_(parts.State), boxes_(parts.Boxes), process_(parts.Run),
      host_(parts.Host), status_(parts.Status) {
    for (std::size_t link = 0; link < form_.Link.size(); ++link) {
        form_.Link[link].Clicked = [this, link] { ChooseLink(link); };
    }
    for (std::size_t mode = 0; mode < form_.Connection.size(); ++mode) {
        form_.Connection[mode].Clicked = [this, mode] { ChooseMode(mode); };
    }
    for (std::size_t line = 0; line < form_.DeviceIds.size(); ++line) {
        form_.DeviceIds[line].Chosen = [this, line] { ChooseDeviceId(line); };
    }
    form_.IdSelect.Chosen = [this] { ChooseId(); };
    form_.ComSelect.Chosen = [this] { ChoosePort(); };
    form_.Proceed.Clicked = [this] { Proceed(); };
    form_.Exit.Clicked = [this] {
        state_.SelectExitPending = true;
        host_.CloseConnectionDialog();
    };
}

void ConnectionDialog::Load() {
    link_.ReportLinkFailure = false;
    try {
        state_.ConfiguredIds = ReadConfiguredIds(state_.AppFolder);
    } catch (const RuntimeError& error) {
        status_.Tell(std::string("The list of IDs was not read. ") + error.what());
    }
    for (std::size_t line = 0; line < form_.DeviceIds.size(); ++line) {
        form_.DeviceIds[line].Select(Nearest(form_.DeviceIds[line], state_.ConfiguredIds[line]));
    }
    form_.IdSelect.Select(0);
    state_.SingleId = 0;
    form_.Connection[controls::OneDevice].Select();
    state_.MultiDevice = false;
    try {
        init_ = InitFile::Read(state_.AppFolder);
    } catch (const RuntimeError& error) {
        status_.Tell(std::string("The choice of port was not read. ") + error.what());
    }
    form_.ComSelect.Select(Nearest(form_.ComSelect, init_.ComIndex()));
    form_.Link[Usb].Select();
    EnableFrames(false);
    form_.Connection[controls::OneDevice].Select();
    state_.SelectExitPending = true;
}

bool ConnectionDialog::QueryUnload() {
    if (!state_.SelectExitPending) {
        state_.SelectExitPending = true;
        return true;
    }
    if (boxes_.AreYouSure("Exit")) {
        process_.End();
    }
    return false;
}

void ConnectionDialog::ChooseLink(std::size_t link) {
    if (link == Usb) {
        form_.Connection[controls::OneDevice].Select();
        form_.IdSelect.Select(0);
    } else if (form_.Connection[controls::OneDevice].Selected() && form_.IdSelect.Index() == 0) {
        form_.IdSelect.Select(1);
    }
    // Last, for choosing the mode of one device enables the ID list, and a USB link has ID 0 alone.
    EnableFrames(link == Rs485);
}

void ConnectionDialog::ChooseMode(std::size_t mode) {
    form_.EqualIds.SetCaption({});
    form_.IdFrame.SetEnabled(mode == controls::OneDevice);
    state_.ListOfTen = mode == controls::UpToTenDevices;
    state_.ListOfTwenty = mode == controls::UpToTwentyDevices;
    state_.MultiDevice = mode != controls::OneDevice;
    const int width = state_.ListOfTwenty ? FrmSelect::TwentyWidth
                      : state_.ListOfTen  ? FrmSelect::TenWidth
                                          : FrmSelect::NarrowWidth;
    form_.Window.SetSize(width, FrmSelect::Height);
}

void ConnectionDialog::ChooseId() {
    if (form_.Connection[controls::OneDevice].Selected() && form_.Link[Rs485].Selected() &&
        form_.IdSelect.Index() == 0) {
        form_.IdSelect.Select(1);
    }
    state_.SingleId = form_.IdSelect.Index();
}

void ConnectionDialog::ChooseDeviceId(std::size_t line) {
    controls::List& list = form_.DeviceIds[line];
    if (list.Index() == 0) {
        list.Select(1);
    }
    state_.ConfiguredIds[line] = list.Index();
    form_.EqualIds.SetCaption({});
}

void ConnectionDialog::ChoosePort() {
    link_.ComIndex = form_.ComSelect.Index();
    init_.SetComIndex(link_.ComIndex);
    Keep([this] { init_.Write(state_.AppFolder); });
}

void ConnectionDialog::Proceed() {
    if (const auto lines = EqualIds()) {
        form_.EqualIds.SetCaption("Device" + std::to_string(lines->first + 1) + " and Device" +
                                  std::to_string(lines->second + 1) + " both have ID " +
                                  std::to_string(state_.ConfiguredIds[lines->first]) + ".");
        boxes_.Show({"All ID must be different!", "", BoxIcon::Critical});
        return;
    }
    state_.SelectExitPending = false;
    Keep([this] { WriteConfiguredIds(state_.AppFolder, state_.ConfiguredIds); });
    host_.CloseConnectionDialog();
}

void ConnectionDialog::EnableFrames(bool enabled) {
    form_.IdFrame.SetEnabled(enabled);
    form_.ConnectionFrame.SetEnabled(enabled);
}

std::optional<std::pair<std::size_t, std::size_t>> ConnectionDialog::EqualIds() const {
    const std::size_t compared = state_.ListOfTen ? 10 : state_.ListOfTwenty ? 20 : 0;
    for (std::size_t line = 0; line < compared; ++line) {
        for (std::size_t later = line + 1; later < compared; ++later) {
            if (form_.DeviceIds[line].Index() == form_.DeviceIds[later].Index()) {
                return std::pair(line, later);
            }
        }
    }
    return std::nullopt;
}

/// A folder that cannot be written lets the dialog work on; the status line says later that the choice was not kept.
template <class Write>
void ConnectionDialog::Keep(Write&& write) {
    try {
        write();
    } catch (const RuntimeError& error) {
        status_.Tell(std::string("The choice was not kept. ") + error.what());
    }
}

} // namespace nrv::session
