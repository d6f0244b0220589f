#include "ui/widgets/lamp.h"

#include "ui/look/painting.h"

#include <QPainter>

namespace nrv::ui {

Lamp::Lamp(QWidget* parent, const QColor& unlit, double radius)
    : QWidget(parent), Spoken(QAccessible::Indicator), unlit_(unlit), radius_(radius) {
    InWords = [this] { return lit_ ? QStringLiteral("lit") : QStringLiteral("dark"); };
}

void Lamp::Light(const QColor& colour) {
    lit_ = true;
    colour_ = colour;
    update();
}

void Lamp::Extinguish() {
    lit_ = false;
    update();
}

void Lamp::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor fill = lit_ ? colour_ : unlit_;
    DrawBox(painter, rect(), fill, Mixed(fill, Qt::black, 0.14), radius_);
}

} // namespace nrv::ui
