#pragma once

#include "controls/forms.h"
#include "session/session_state.h"

#include <string>

namespace nrv::session {

/// The text of a device's row: its label, or the mark of one that is not connected.
std::string RowText(const std::string& label, int id);

/// Writes the unconnected text into the row that `DeviceRow` gives for a device and flags the device.
void MarkUnconnected(SessionState& state, controls::FrmSearchNet& list, int id);

/// Marks a device that did not pass its check, by its place among the devices found. Throws RuntimeError of kind
/// IndexOutOfRange: the list has no columns for the mark, which is meant.
void MarkUnchecked(const SessionState& state, controls::FrmSearchNet& list, int id);

} // namespace nrv::session
