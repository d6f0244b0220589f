#pragma once

#include <QIcon>

namespace nrv::ui {

inline constexpr int ToolIconSize = 18; ///< pixels

/// The line icon of a tool button by its index (`controls::ToolButton`), drawn afresh for every size and pixel ratio;
/// the padlock is shut while the lock is in force.
QIcon ToolIcon(int tool, bool in_force = false);

} // namespace nrv::ui
