#include "ui/widgets/channel_picture.h"

#include "ui/look/theme.h"

#include <QPainter>
#include <QPainterPath>

namespace nrv::ui {

ChannelPicture::ChannelPicture(QWidget* parent, Kind kind) : QWidget(parent), kind_(kind) {}

void ChannelPicture::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QColor ink = CurrentTheme().Dim;
    painter.setPen(QPen(ink, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    if (kind_ == Kind::Socket) {
        painter.drawEllipse(QPointF(9.0, 9.0), 7.5, 7.5);
        painter.setBrush(ink);
        for (const QPointF pin : {QPointF(5.8, 7.8), QPointF(12.2, 7.8), QPointF(9.0, 12.4)}) {
            painter.drawEllipse(pin, 0.9, 0.9);
        }
        return;
    }
    QPainterPath speaker(QPointF(2.5, 6.5));
    for (const QPointF point :
         {QPointF(5.5, 6.5), QPointF(9.0, 3.0), QPointF(9.0, 15.0), QPointF(5.5, 11.5), QPointF(2.5, 11.5)}) {
        speaker.lineTo(point);
    }
    speaker.closeSubpath();
    painter.drawPath(speaker);
    painter.drawArc(QRectF(7.5, 5.5, 5.0, 7.0), -60 * 16, 120 * 16);
    painter.drawArc(QRectF(6.0, 3.0, 10.0, 12.0), -55 * 16, 110 * 16);
}

} // namespace nrv::ui
