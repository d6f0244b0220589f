#include "driver/driver.h"
#include "tour.h"

#include <QFont>
#include <QPainter>
#include <QPixmap>

#include <algorithm>
#include <cstdio>

namespace nrv::tour {
namespace {

constexpr double Radius = 8.5;
constexpr double Room = Radius + 1.5; // from a number's middle to the picture's edge

/// The middle of a number, inside the picture.
QPointF PlaceOf(const QRectF& widget, Qt::Alignment where, const QRectF& picture) {
    const bool corner = (where & Qt::AlignHorizontal_Mask) != 0 && (where & Qt::AlignVertical_Mask) != 0;
    const double away = where.testFlag(Qt::AlignVCenter) ? -Radius : corner ? 0.0 : Radius;
    const double x = where.testFlag(Qt::AlignLeft)    ? widget.left() - away
                     : where.testFlag(Qt::AlignRight) ? widget.right() + away
                                                      : widget.center().x();
    const double y = where.testFlag(Qt::AlignTop)      ? widget.top() - away
                     : where.testFlag(Qt::AlignBottom) ? widget.bottom() + away
                                                       : widget.center().y();
    const QRectF room = picture.adjusted(Room, Room, -Room, -Room);
    return {std::clamp(x, room.left(), room.right()), std::clamp(y, room.top(), room.bottom())};
}

/// Amber, which no channel and no lamp is.
void PaintNumber(QPainter& painter, QPointF middle, int number) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(QPen(Qt::black, 1.2));
    painter.setBrush(QColor(0xFF, 0xB3, 0x00));
    painter.drawEllipse(middle, Radius, Radius);
    QFont font = painter.font();
    font.setPixelSize(number < 10 ? 12 : 10);
    font.setBold(true);
    painter.setFont(font);
    painter.drawText(QRectF(middle - QPointF(Radius, Radius), QSizeF(2 * Radius, 2 * Radius)), Qt::AlignCenter,
                     QString::number(number));
}

} // namespace

void Tour::Picture(QWidget& window, const std::string& name, const std::vector<Mark>& marks, int height) {
    const QRect seen(0, 0, window.width(), height > 0 ? height : window.height());
    QPixmap picture = window.grab(seen);
    QPainter painter(&picture);
    int number = 0;
    for (const Mark& mark : marks) {
        const QWidget* const widget = driver::Find(QLatin1String(mark.Widget), &window);
        if (widget == nullptr || !widget->isVisible()) {
            std::fprintf(stderr, "The picture \"%s\" does not show what its number %d stands for.\n", name.c_str(),
                         number + 1);
            pictures_whole_ = false;
            return;
        }
        const QRect place(widget->mapTo(&window, QPoint()), widget->size());
        PaintNumber(painter, PlaceOf(place, mark.Where, seen), ++number);
    }
    painter.end();
    const std::string prefix = std::to_string(++number_);
    const std::filesystem::path file = pictures_ / ((prefix.size() < 2 ? "0" : "") + prefix + "-" + name + ".png");
    if (!picture.save(QString::fromStdString(file.string()))) {
        std::fprintf(stderr, "No picture could be saved as %s.\n", file.c_str());
        pictures_whole_ = false;
    }
}

} // namespace nrv::tour
