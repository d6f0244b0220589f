#pragma once

#include <QIcon>
#include <QString>

namespace nrv::ui {

inline constexpr int ToolIconSize = 18; ///< pixels

/// The line icon of a tool button by its index (`controls::ToolButton`); the padlock is shut while the lock is in
/// force.
QIcon ToolIcon(int tool, bool in_force = false);

/// The name of the padlock's picture.
QString Padlock(bool shut);

} // namespace nrv::ui
