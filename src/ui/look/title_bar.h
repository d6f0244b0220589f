#pragma once

class QPainter;
class QStyle;
class QStyleOptionTitleBar;
class QWidget;

namespace nrv::ui {

/// The height of an inner window's title; with no frame around it a control window is then 728 by 548 pixels outside
/// and 728 by 522 inside.
inline constexpr int TitleBarHeight = 26;

/// The property of an inner window that holds the word beside its title.
inline constexpr const char* TitleMark = "TitleMark";

/// The title of a window inside the main window: its icon, its text, and buttons that are drawn as thin signs.
void DrawTitleBar(QPainter& painter, const QStyleOptionTitleBar& option, const QStyle& style, const QWidget* widget);

} // namespace nrv::ui
