#pragma once

class QAccessibleInterface;

namespace nrv::ui {

class DeviceRows;

/// The device list as a screen reader has it: a list whose children are its rows, each with the action of its double
/// click.
QAccessibleInterface* MakeSpokenRows(DeviceRows& rows);

} // namespace nrv::ui
