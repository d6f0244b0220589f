#include "ui/widgets/up_down_arrows.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>
#include <QPainterPath>

namespace nrv::ui {
namespace {

constexpr int ArrowRepeatMilliseconds = 60;

} // namespace

UpDownArrows::UpDownArrows(QWidget* parent)
    : QWidget(parent), Spoken(QAccessible::SpinBox), repeat_(*this, ArrowRepeatMilliseconds) {
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(true);
}

void UpDownArrows::TakeSpoken(int number) {
    if (const int steps = number - Position().Now; steps != 0) {
        emit Stepped(steps);
    }
}

int UpDownArrows::HalfAt(QPointF place) const {
    return place.y() < height() / 2.0 ? 1 : -1;
}

void UpDownArrows::LetGo() {
    pressed_ = 0;
    repeat_.End();
    update();
}

void UpDownArrows::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    pressed_ = HalfAt(event->position());
    update();
    repeat_.Press([this] { emit Stepped(pressed_); });
}

void UpDownArrows::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::LeftButton) {
        LetGo();
    }
}

void UpDownArrows::mouseMoveEvent(QMouseEvent* event) {
    const int half = HalfAt(event->position());
    if (half != hovered_) {
        hovered_ = half;
        update();
    }
}

void UpDownArrows::leaveEvent(QEvent*) {
    hovered_ = 0;
    update();
}

void UpDownArrows::timerEvent(QTimerEvent* event) {
    if (!repeat_.Tick(*event, [this] { emit Stepped(pressed_); })) {
        QWidget::timerEvent(event);
    }
}

void UpDownArrows::keyPressEvent(QKeyEvent* event) {
    switch (event->key()) {
    case Qt::Key_Up:
        emit Stepped(1);
        break;
    case Qt::Key_Down:
        emit Stepped(-1);
        break;
    case Qt::Key_PageUp:
        emit Stepped(LargeStep);
        break;
    case Qt::Key_PageDown:
        emit Stepped(-LargeStep);
        break;
    default:
        event->ignore();
    }
}

void UpDownArrows::wheelEvent(QWheelEvent* event) {
    event->accept(); // what lies behind would scroll
    if (!hasFocus()) {
        return;
    }
    if (const int steps = wheel_.Take(*event); steps != 0) {
        emit Stepped(steps);
    }
}

void UpDownArrows::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange) {
        LetGo();
    }
    QWidget::changeEvent(event);
}

void UpDownArrows::hideEvent(QHideEvent*) {
    LetGo();
}

bool UpDownArrows::event(QEvent* event) {
    if (event->type() == QEvent::UngrabMouse) {
        LetGo();
    }
    return QWidget::event(event);
}

void UpDownArrows::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    QPainter painter(this);
    DrawBox(painter, rect(), isEnabled() ? theme.Field : theme.Panel, hasFocus() ? theme.Focus : theme.Line, 3.0);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    for (const int half : {1, -1}) {
        const QRectF area(1.0, half > 0 ? 1.0 : height() / 2.0, width() - 2.0, height() / 2.0 - 1.0);
        if (isEnabled() && (pressed_ == half || (pressed_ == 0 && hovered_ == half))) {
            painter.setBrush(pressed_ == half ? theme.Unlit : Mixed(theme.Field, theme.Focus, 0.10));
            painter.drawRoundedRect(area, 2.0, 2.0);
        }
        const QPointF centre(width() / 2.0, area.center().y());
        QPainterPath arrow(centre + QPointF(-3.0, 1.6 * half));
        arrow.lineTo(centre + QPointF(3.0, 1.6 * half));
        arrow.lineTo(centre + QPointF(0.0, -1.6 * half));
        painter.setBrush(isEnabled() ? theme.Text : theme.Disabled);
        painter.drawPath(arrow);
    }
}

} // namespace nrv::ui
