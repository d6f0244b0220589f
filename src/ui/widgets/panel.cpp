#include "ui/widgets/panel.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QPainter>
#include <QPainterPath>

namespace nrv::ui {

Panel::Panel(QWidget* parent, Kind kind) : QWidget(parent), kind_(kind) {
    setFont(TextFont());
}

void Panel::SetCaption(const QString& caption) {
    if (caption_ != caption) {
        caption_ = caption;
        update();
    }
}

void Panel::SetAccent(const QColor& colour) {
    accent_ = colour;
    update();
}

void Panel::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    QPainter painter(this);
    const bool framed = kind_ == Kind::Framed;
    if (framed) {
        DrawBox(painter, rect(), theme.Panel, theme.Line, 4.0);
        if (accent_.isValid()) {
            // The line follows the border's round corners.
            QPainterPath outline;
            outline.addRoundedRect(rect(), 4.0, 4.0);
            painter.save();
            painter.setRenderHint(QPainter::Antialiasing);
            painter.setClipRect(QRect(0, 0, width(), 2));
            painter.fillPath(outline, accent_);
            painter.restore();
        }
    }
    if (!caption_.isEmpty()) {
        const int margin = framed ? 7 : 0;
        painter.setFont(CaptionFont());
        painter.setPen(isEnabled() ? theme.Dim : theme.Disabled);
        DrawFitted(painter, QRectF(margin, framed ? 3 : 0, width() - 2 * margin, 14), Qt::AlignLeft | Qt::AlignVCenter,
                   caption_);
    }
}

} // namespace nrv::ui
