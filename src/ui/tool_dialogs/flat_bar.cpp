#include "ui/tool_dialogs/flat_bar.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>

namespace nrv::ui {

FlatBar::FlatBar(QWidget* parent) : QProgressBar(parent) {
    setTextVisible(false);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
}

void FlatBar::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    const double radius = height() / 2.0;
    QPainter painter(this);
    DrawBox(painter, rect(), theme.Unlit, theme.Line, radius);
    const int steps = std::max(maximum() - minimum(), 1);
    const double share = std::clamp(static_cast<double>(value() - minimum()) / steps, 0.0, 1.0);
    if (share > 0.0) {
        QPainterPath outline;
        outline.addRoundedRect(QRectF(rect()), radius, radius);
        painter.setRenderHint(QPainter::Antialiasing);
        painter.setClipRect(QRectF(0.0, 0.0, width() * share, height()));
        painter.fillPath(outline, theme.Focus);
    }
}

} // namespace nrv::ui
