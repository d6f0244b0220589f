#include "ui/widgets/marker_dot.h"

#include "model/graph_scale.h"
#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QApplication>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPainter>

#include <cmath>

namespace nrv::ui {
namespace {

constexpr double Radius = 6.5;
constexpr int CentrePixel = MarkerDot::Extent / 2;
constexpr QColor InHandColour(0x1B, 0x20, 0x26);
constexpr QColor FocusColour(0x25, 0x63, 0xD9); // on the light paper of either set

} // namespace

MarkerDot::MarkerDot(QWidget* parent, const QColor& colour, QPoint graph_origin)
    : QWidget(parent), Spoken(QAccessible::Indicator), colour_(colour), graph_origin_(graph_origin) {
    setCursor(Qt::OpenHandCursor);
    setMouseTracking(true);
    setFocusPolicy(Qt::TabFocus);
    PlaceAt(0.0, 0.0);
}

void MarkerDot::SetNumber(const QString& number) {
    number_ = number;
    update();
}

void MarkerDot::PlaceAt(double left, double top) {
    left_ = left;
    top_ = top;
    const QPoint centre(static_cast<int>(std::lround((left + model::MarkerHalf) / model::UnitsPerPixel)),
                        static_cast<int>(std::lround((top + model::MarkerHalf) / model::UnitsPerPixel)));
    move(graph_origin_ + centre - QPoint(CentrePixel, CentrePixel));
}

void MarkerDot::SetHighlighted(bool highlighted) {
    if (highlighted_ != highlighted) {
        highlighted_ = highlighted;
        if (highlighted) {
            raise();
        }
        update();
    }
}

void MarkerDot::SetInHand(bool in_hand) {
    in_hand_ = in_hand;
    setCursor(in_hand ? Qt::ClosedHandCursor : Qt::OpenHandCursor);
    qApp->removeEventFilter(this);
    if (in_hand) {
        qApp->installEventFilter(this);
    }
    update();
}

void MarkerDot::TakeAway() {
    if (in_hand_) {
        SetInHand(false);
        emit TakenAway();
    }
}

void MarkerDot::mousePressEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    setFocus(Qt::MouseFocusReason); // or the keys that follow would move another point
    SetInHand(true);
    moved_ = false;
    pressed_at_ = event->globalPosition().toPoint();
    raise();
    emit Pressed();
}

void MarkerDot::mouseMoveEvent(QMouseEvent* event) {
    // Nor does another button drag, and some window systems tell of a move to where the mouse was.
    moved_ = moved_ || event->globalPosition().toPoint() != pressed_at_;
    if (in_hand_ ? !moved_ : event->buttons() != Qt::NoButton) {
        return;
    }
    const QPointF on_graph = mapToParent(event->position()) - QPointF(graph_origin_);
    emit Dragged(on_graph.x() * model::UnitsPerPixel - left_, on_graph.y() * model::UnitsPerPixel - top_);
}

void MarkerDot::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() != Qt::LeftButton) {
        event->ignore();
        return;
    }
    SetInHand(false);
    emit Released();
}

bool MarkerDot::StepBy(int key) {
    using controls::PointStep;
    constexpr int large_step = 5;
    switch (key) {
    case Qt::Key_Left:
        emit Stepped(PointStep::Frequency, -1);
        return true;
    case Qt::Key_Right:
        emit Stepped(PointStep::Frequency, 1);
        return true;
    case Qt::Key_Up:
        emit Stepped(PointStep::Gain, 1);
        return true;
    case Qt::Key_Down:
        emit Stepped(PointStep::Gain, -1);
        return true;
    case Qt::Key_PageUp:
        emit Stepped(PointStep::Gain, large_step);
        return true;
    case Qt::Key_PageDown:
        emit Stepped(PointStep::Gain, -large_step);
        return true;
    case Qt::Key_Plus:
        emit Stepped(PointStep::Bandwidth, 1);
        return true;
    case Qt::Key_Minus:
        emit Stepped(PointStep::Bandwidth, -1);
        return true;
    default:
        return false;
    }
}

void MarkerDot::keyPressEvent(QKeyEvent* event) {
    const bool command = (event->modifiers() & (Qt::ControlModifier | Qt::AltModifier | Qt::MetaModifier)) != 0;
    if (in_hand_ || command || !StepBy(event->key())) {
        event->ignore();
    }
}

/// While it is in hand the keyboard may have gone elsewhere.
bool MarkerDot::eventFilter(QObject* watched, QEvent* event) {
    if (in_hand_ && event->type() == QEvent::KeyPress && static_cast<QKeyEvent*>(event)->key() == Qt::Key_Escape) {
        SetInHand(false);
        emit GivenUp();
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

void MarkerDot::focusInEvent(QFocusEvent* event) {
    QWidget::focusInEvent(event);
    raise();
}

void MarkerDot::focusOutEvent(QFocusEvent* event) {
    QWidget::focusOutEvent(event);
    emit FocusLeft();
}

void MarkerDot::enterEvent(QEnterEvent* event) {
    raise();
    QWidget::enterEvent(event);
    emit HoverChanged(true);
}

void MarkerDot::leaveEvent(QEvent* event) {
    QWidget::leaveEvent(event);
    emit HoverChanged(false);
}

void MarkerDot::hideEvent(QHideEvent* event) {
    TakeAway();
    QWidget::hideEvent(event);
    emit HoverChanged(false);
}

bool MarkerDot::event(QEvent* event) {
    if (event->type() == QEvent::UngrabMouse) {
        TakeAway();
    }
    return QWidget::event(event);
}

void MarkerDot::changeEvent(QEvent* event) {
    if (event->type() == QEvent::EnabledChange && !isEnabled()) {
        TakeAway();
    }
    QWidget::changeEvent(event);
}

void MarkerDot::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QPointF centre(Extent / 2.0, Extent / 2.0);
    QColor fill = in_hand_ ? InHandColour : colour_;
    if (!isEnabled()) {
        fill = Mixed(fill, GraphPaper().Ground, 0.55);
    }
    painter.setPen(Qt::NoPen);
    if (hasFocus() && !in_hand_) {
        painter.setBrush(FocusColour);
        painter.drawEllipse(centre, Radius + 1.0, Radius + 1.0);
        painter.setBrush(Qt::white);
        painter.drawEllipse(centre, Radius - 0.7, Radius - 0.7);
        painter.setBrush(fill);
        painter.drawEllipse(centre, Radius - 1.7, Radius - 1.7);
    } else {
        painter.setBrush(highlighted_ && !in_hand_ ? GraphPaper().Ink : QColor(Qt::white));
        painter.drawEllipse(centre, Radius + 1.0, Radius + 1.0);
        painter.setBrush(fill);
        painter.drawEllipse(centre, Radius, Radius);
    }
    QFont font = ScaleFont();
    font.setWeight(QFont::DemiBold);
    painter.setFont(font);
    painter.setPen(ReadableOn(fill));
    DrawFitted(painter, QRectF(2.0, 0.0, Extent - 4.0, Extent), Qt::AlignCenter, number_);
}

} // namespace nrv::ui
