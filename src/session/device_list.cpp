#include "session/device_list.h"

#include "controls/busy_pointer.h"
#include "model/preset_image.h"
#include "ports/runtime_error.h"
#include "session/failure_text.h"
#include "session/unconnected.h"

#include <algorithm>

namespace nrv::session {
namespace {

constexpr int ListDelayMilliseconds = 1000;
constexpr int PauseBetweenDevices = 50;
constexpr const char* DemoLabel = "  Device Demo   ";

} // namespace

DeviceList::DeviceList(const Parts& parts)
    : form_(parts.Form), windows_(parts.Windows), link_(parts.Link), discovery_(parts.Devices), state_(parts.State),
      boxes_(parts.Boxes), process_(parts.Run), host_(parts.Host), status_(parts.Status),
      load_control_window_(parts.LoadControlWindow), unload_control_window_(parts.UnloadControlWindow) {
    form_.Timer1.Tick = [this] { ListDevices(); };
    form_.Devices.DoubleClicked = [this](int row) { OpenDevice(row); };
}

void DeviceList::Load() {
    windows_.OpenWindowTop = -1;
    form_.LoadingNotice.SetVisible(false);
    form_.Timer1.Start(ListDelayMilliseconds);
    form_.Devices.SetSize(state_.FoundLast + 1, 1, controls::FrmSearchNet::ColumnWidth);
    form_.Devices.Refresh();
}

void DeviceList::QueryUnload() {
    host_.MinimiseDeviceList(!host_.DeviceListMinimised());
}

void DeviceList::ListDevices() {
    try {
        for (int row = 0; row <= state_.FoundLast; ++row) {
            if (!ListDevice(row)) {
                form_.Timer1.Start(ListDelayMilliseconds); // the work starts over, a second after it ended
                return;
            }
        }
    } catch (const RuntimeError&) {
        // A port that went away is told once, not at every further tick.
        form_.Timer1.Stop();
        form_.SearchingNotice.SetVisible(false);
        throw;
    }
    form_.Timer1.Stop();
    form_.SearchingNotice.SetVisible(false);
}

bool DeviceList::ListDevice(int row) {
    const int id = FoundId(state_, row);
    Concern(id);
    link_.Current.Call("the reading of its label", Operation::Untold);
    state_.DeviceRow[At(id)] = row;
    if (ReadLabel(id)) {
        return false;
    }
    WriteRow(row, id);
    state_.DeviceUnconnected[At(id)] = false;
    if (!link_.DemoMode) {
        discovery_.ReadDeviceImage(id);
    }
    form_.Devices.Refresh();
    process_.Sleep(PauseBetweenDevices);
    return true;
}

/// What happens from here on is about this device and its window, if it has one.
void DeviceList::Concern(int id) {
    link_.Current.BelongTo({windows_.SlotOf(id), id});
}

/// True when the link failed for good.
bool DeviceList::ReadLabel(int id) {
    std::string& label = state_.DeviceNames[At(id)];
    label.clear();
    for (std::size_t j = 0; j < MemoryNameLength; ++j) {
        link_.Current.At("byte " + std::to_string(j + 1) + " of " + std::to_string(MemoryNameLength));
        if (link_.MemoryRead(id, static_cast<int>(model::LabelAddress + j))) {
            return true;
        }
        label += static_cast<char>(link_.MemoryValue());
    }
    if (link_.DemoMode) {
        label = DemoLabel;
    }
    return false;
}

void DeviceList::WriteRow(int row, int id) {
    form_.Devices.SetCell(row, 0, RowText(state_.DeviceNames[At(id)], id));
}

void DeviceList::OpenDevice(int row) {
    try {
        Open(row);
    } catch (const RuntimeError& error) {
        if (!link_.Current.Reported()) {
            status_.Tell(std::string("The device was not opened. ") + error.what());
        }
    }
}

void DeviceList::Open(int row) {
    if (row < 0 || row > state_.FoundLast) {
        throw RuntimeError(ErrorKind::IndexOutOfRange, "There is no device in this row.");
    }
    const int id = state_.SpeakerRecords[static_cast<std::size_t>(FoundId(state_, row))].DeviceId();
    if (!IsDeviceId(id)) {
        throw RuntimeError(ErrorKind::IndexOutOfRange,
                           "Its record gives the ID " + std::to_string(id) + ", and IDs are 0 to 32.");
    }
    Concern(id);
    link_.Current.Call("its opening", Operation::Untold);
    // A port that went away is opened anew on the same road as a device that did.
    const bool port_gone = !link_.DemoMode && link_.LinkReady && !link_.PortIsOpen();
    if ((state_.DeviceUnconnected[At(id)] || port_gone) && !Reconnect(row, id)) {
        return;
    }
    if (!PassesCheck(id)) {
        return;
    }
    if (const std::optional<int> slot = TakeSlot(id)) {
        ShowInSlot(*slot, id);
    }
}

bool DeviceList::Reconnect(int row, int id) {
    const std::size_t entry = At(id);
    if (boxes_.Show({"Do you want connect this device, are you sure ? ", "Connect device", BoxIcon::None,
                     BoxButtons::YesNo}) != BoxAnswer::Yes) {
        return false;
    }
    link_.ConnectPort();
    const bool answered = link_.ProbeDevice(id);
    state_.SpeakerRecords[entry].SetFound(answered);
    if (!answered) {
        boxes_.Show({"Device unconnected", "Communication problem", BoxIcon::Exclamation});
        return false;
    }
    state_.DeviceRow[entry] = 0; // and not the row; a later mark of this device goes to row 0, which is meant
    if (ReadLabel(id)) {
        return false;
    }
    WriteRow(row, id);
    state_.DeviceUnconnected[entry] = false;
    if (!link_.DemoMode) {
        discovery_.ReadDeviceImage(id);
    }
    form_.Devices.Refresh();
    process_.Sleep(PauseBetweenDevices);
    CloseWindowOf(id);
    return true;
}

/// A window that still stands shows what was before the device went: it opens anew.
void DeviceList::CloseWindowOf(int id) {
    if (const int slot = windows_.SlotOf(id); slot != Operation::NoSlot) {
        unload_control_window_(slot);
        Concern(id);
    }
}

bool DeviceList::PassesCheck(int id) {
    const std::size_t entry = At(id);
    if (link_.DeviceChecked[entry]) {
        return true;
    }
    form_.LoadingNotice.SetVisible(true);
    form_.LoadingNotice.Refresh(); // the program stands still from here on
    link_.DeviceChecked[entry] = true;
    const auto tell = [&] {
        status_.Tell(IdText(id) + " does not answer; its window was not opened. Double-click its row to try again.");
    };
    try {
        link_.CheckDevice(id);
    } catch (const RuntimeError& error) {
        if (error.Kind() != ErrorKind::IndexOutOfRange) {
            throw;
        }
        // The mark that cannot be written ends the opening here, and the notice stays on the screen; that is meant.
        tell();
        return false;
    }
    if (!link_.DeviceChecked[entry]) {
        form_.LoadingNotice.SetVisible(false);
        tell();
        return false;
    }
    return true;
}

void DeviceList::TellEdits(int id, std::size_t count) {
    const std::string note =
        count == 0   ? std::string()
        : count == 1 ? "One setting differs from what was last loaded, stored or saved."
                     : std::to_string(count) + " settings differ from what was last loaded, stored or saved.";
    for (int row = 0; row < form_.Devices.Rows(); ++row) {
        if (FoundId(state_, row) == id) {
            form_.Devices.SetRowNote(row, note);
        }
    }
}

void DeviceList::MarkFront(int slot) {
    int marked = controls::Grid::NoRow;
    for (int row = 0; row <= state_.FoundLast && slot != Operation::NoSlot; ++row) {
        const session::SpeakerRecord& record = state_.SpeakerRecords[At(FoundId(state_, row))];
        if (record.DeviceId() == windows_.WindowSlots[At(slot)].DeviceId) {
            marked = row;
        }
    }
    form_.Devices.MarkRow(marked);
}

std::optional<int> DeviceList::TakeSlot(int id) {
    ++windows_.OpenWindowTop;
    if (windows_.OpenWindowTop >= controls::SlotCount) {
        windows_.OpenWindowTop = controls::SlotCount - 1;
        // The limit is eleven windows, whatever the text says.
        boxes_.Show({"Out of memory: max number of window open is 32", "Out of memory", BoxIcon::Exclamation});
        return std::nullopt;
    }
    const auto uses_it = [id](const controls::WindowSlot& slot) { return slot.InUse && slot.DeviceId == id; };
    if (const auto open = std::ranges::find_if(windows_.WindowSlots, uses_it); open != windows_.WindowSlots.end()) {
        status_.Tell("The window is already open; Ctrl+Tab walks the windows");
        boxes_.Show({"The window is already open", "Speakers Edit", BoxIcon::Exclamation});
        --windows_.OpenWindowTop;
        host_.FocusControlWindow(static_cast<int>(open - windows_.WindowSlots.begin()));
        return std::nullopt;
    }
    const auto free = std::ranges::find(windows_.WindowSlots, false, &controls::WindowSlot::InUse);
    if (free == windows_.WindowSlots.end()) {
        --windows_.OpenWindowTop;
        throw RuntimeError(ErrorKind::IndexOutOfRange, "No window is free.");
    }
    const int index = static_cast<int>(free - windows_.WindowSlots.begin());
    *free = {true, id, index};
    windows_.NewSlot = index;
    return index;
}

void DeviceList::ShowInSlot(int slot, int id) {
    try {
        const controls::BusyPointer busy(form_.Window, controls::Pointer::ArrowAndHourglass);
        form_.LoadingNotice.SetVisible(true);
        form_.LoadingNotice.Refresh();
        const bool read = discovery_.ReadDeviceState(id);
        load_control_window_();
        if (!read) {
            status_.Tell("Device " + IdText(id) + " could not be read; what its window shows is not what it holds.");
        }
    } catch (const RuntimeError&) {
        windows_.WindowSlots[At(slot)].InUse = false;
        --windows_.OpenWindowTop;
        form_.LoadingNotice.SetVisible(false);
        throw;
    }
}

} // namespace nrv::session
