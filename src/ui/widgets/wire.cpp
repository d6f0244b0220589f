#include "ui/widgets/wire.h"

#include <QEvent>
#include <QPainter>

namespace nrv::ui {

Wire::Wire(QWidget* parent, Shape shape, const QColor& colour) : QWidget(parent), shape_(shape), colour_(colour) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
}

bool Wire::event(QEvent* event) {
    if (event->type() == QEvent::ShowToParent || event->type() == QEvent::HideToParent) {
        parentWidget()->update();
    }
    return QWidget::event(event);
}

void Wire::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    if (shape_ == Shape::Branch) {
        painter.fillRect(QRect(DotCentre, DotCentre - 1, width() - DotCentre, 2), colour_);
        painter.setPen(Qt::NoPen);
        painter.setBrush(colour_);
        painter.drawEllipse(QPointF(DotCentre, DotCentre), 3.6, 3.6);
        return;
    }
    painter.setPen(QPen(colour_, 2.6, Qt::SolidLine, Qt::RoundCap));
    const QRectF inside = QRectF(rect()).adjusted(2.0, 2.0, -2.0, -2.0);
    if (shape_ == Shape::Falling) {
        painter.drawLine(inside.topLeft(), inside.bottomRight());
    } else {
        painter.drawLine(inside.bottomLeft(), inside.topRight());
    }
}

} // namespace nrv::ui
