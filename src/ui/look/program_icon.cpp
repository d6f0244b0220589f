#include "ui/look/program_icon.h"

#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

namespace nrv::ui {
namespace {

QPixmap PaintIcon(int side) {
    QPixmap pixmap(side, side);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(side / 32.0, side / 32.0);
    painter.setPen(Qt::NoPen);
    painter.setBrush(QColor(0x1B, 0x24, 0x30));
    painter.drawRoundedRect(QRectF(1, 1, 30, 30), 6, 6);
    const auto slope = [&painter](QPointF from, QPointF bend, QPointF to, const QColor& colour) {
        QPainterPath path(from);
        path.quadTo(bend, to);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(colour, 3.0, Qt::SolidLine, Qt::RoundCap));
        painter.drawPath(path);
    };
    slope({5, 11}, {16, 11}, {21, 25}, QColor(0x4F, 0xA8, 0xFF));
    slope({11, 25}, {16, 11}, {27, 11}, QColor(0xFF, 0x6B, 0x5A));
    return pixmap;
}

} // namespace

QIcon ProgramIcon() {
    QIcon icon;
    for (const int side : {16, 32, 48, 64, 128, 256}) {
        icon.addPixmap(PaintIcon(side));
    }
    return icon;
}

} // namespace nrv::ui
