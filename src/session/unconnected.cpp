#include "session/unconnected.h"

namespace nrv::session {

std::string RowText(const std::string& label, int id) {
    return label + "  " + IdText(id);
}

void MarkUnconnected(SessionState& state, controls::FrmSearchNet& list, int id) {
    const std::size_t entry = At(id);
    state.DeviceUnconnected[entry] = true;
    // A failure before the list has its rows has nowhere to write to.
    if (const int row = state.DeviceRow[entry]; row < list.Devices.Rows()) {
        list.Devices.SetCell(row, 0, RowText(" Unconnected    ", id));
    }
}

void MarkUnchecked(const SessionState& state, controls::FrmSearchNet& list, int id) {
    constexpr int FirstColumn = 1;
    constexpr int LastColumn = 6;
    for (int row = 0; row <= state.FoundLast; ++row) {
        if (FoundId(state, row) != id) {
            continue;
        }
        // The list has column 0 alone, so the first write fails and the error ends the opening; that is meant.
        for (int column = FirstColumn; column <= LastColumn; ++column) {
            list.Devices.SetCell(row, column, "---");
        }
    }
}

} // namespace nrv::session
