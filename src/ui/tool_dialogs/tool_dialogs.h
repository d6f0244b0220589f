#pragma once

#include "controls/event_boundary.h"
#include "ports/window_host.h"
#include "program/program.h"

class QDialog;
class QWidget;

namespace nrv::ui {

/// Makes the widgets of a tool dialog from its record, which must outlive them. One dialog at a time for each record.
QDialog* MakeToolDialog(ToolDialog dialog, program::Forms& forms, const controls::EventEntry& entry, QWidget* parent);

} // namespace nrv::ui
