#pragma once

#include <QColor>
#include <QFont>

class QApplication;

namespace nrv::ui {

/// The colours of the windows; one set for light desktops and one for dark ones.
struct Theme {
    bool Dark = false;
    QColor Window;
    QColor Panel;
    QColor Line;
    QColor Text;
    QColor Dim;
    QColor Disabled; ///< text that cannot be worked on now, and is still to be read: 4.5 to 1 on a shaded field
    QColor Field;
    QColor Groove;
    QColor Unlit;
    QColor Focus;
    QColor Typed; ///< around a text that is not entered yet
    QColor Muted;
    QColor Accent; ///< what belongs to no channel: the master level
};

/// The graph's paper: near white, or near black, where the darkest of the curves' colours stands out as well as the
/// lightest does from white.
struct Paper {
    QColor Ground;
    QColor FineLevels;
    QColor FineFrequencies;
    QColor TenDecibels;
    QColor Decades;
    QColor Zero;
    QColor Ink; ///< the ring of a point that is attended to
};

/// The set in use; the light one before ApplyTheme.
const Theme& CurrentTheme();
const Paper& GraphPaper();

/// Chooses the set by the lightness of the application's window colour, and sets style, palette, font and tool tips.
void ApplyTheme(QApplication& application);

QFont TextFont();    ///< 11 px
QFont CaptionFont(); ///< 10 px semibold, drawn in the dim colour
QFont ScaleFont();   ///< 9 px, drawn in the dim colour
QFont StrongFont();  ///< 11 px semibold

/// The colour of a channel's curve, 0 In A to 7 Out 6.
QColor ChannelColour(int channel);

} // namespace nrv::ui
