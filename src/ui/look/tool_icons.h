#pragma once

#include <QIcon>

namespace nrv::ui {

inline constexpr int ToolIconSize = 18; ///< pixels

/// The line icon of a tool button by its index (`controls::ToolButton`), drawn afresh for every size and pixel ratio.
QIcon ToolIcon(int tool);

} // namespace nrv::ui
