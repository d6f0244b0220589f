#include "session/unconnected.h"

namespace nrv::session {

std::string RowText(const std::string& label, int id) {
    return label + "  ID:" + std::to_string(id);
}

void MarkUnconnected(SessionState& state, controls::FrmSearchNet& list, int id) {
    const std::size_t entry = At(id);
    state.DeviceUnconnected[entry] = true;
    // A failure before the list has its rows has nowhere to write to.
    if (const int row = state.DeviceRow[entry]; row < list.Devices.Rows()) {
        list.Devices.SetCell(row, 0, RowText(" Unconnected    ", id));
    }
}

} // namespace nrv::session
