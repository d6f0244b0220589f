#include "ui/tool_dialogs/lock_switch.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPainterPath>

namespace nrv::ui {
namespace {

constexpr double KnobWidth = 30.0;

/// A padlock around the origin, about 12 pixels high; an open one has its shackle lifted out on the right.
QPainterPath SwitchPadlock(bool closed) {
    QPainterPath path;
    path.addRoundedRect(QRectF(-5.0, -1.0, 10.0, 7.0), 1.2, 1.2);
    const double lift = closed ? 0.0 : -1.8;
    path.moveTo(-3.0, -1.0);
    path.lineTo(-3.0, -3.0 + lift);
    path.arcTo(QRectF(-3.0, -6.0 + lift, 6.0, 6.0), 180.0, -180.0);
    path.lineTo(3.0, closed ? -1.0 : -2.6);
    return path;
}

} // namespace

LockSwitch::LockSwitch(QWidget* parent) : QAbstractButton(parent) {
    setCheckable(true);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void LockSwitch::keyPressEvent(QKeyEvent* event) {
    const int key = event->key();
    if (key == Qt::Key_Left || key == Qt::Key_Right) {
        if (isChecked() != (key == Qt::Key_Right)) {
            click();
        }
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

bool LockSwitch::event(QEvent* event) {
    if (event->type() == QEvent::Enter || event->type() == QEvent::Leave) {
        update();
    }
    return QAbstractButton::event(event);
}

void LockSwitch::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    QPainter painter(this);
    DrawBox(painter, rect(), isChecked() ? Mixed(theme.Unlit, theme.Focus, 0.35) : theme.Unlit,
            hasFocus() ? theme.Focus : theme.Line, 4.0);
    QRectF knob(0.0, 0.0, KnobWidth, height());
    knob.moveRight(isChecked() ? width() : KnobWidth);
    knob.adjust(2.0, 2.0, -2.0, -2.0);
    QColor face = theme.Dark ? Mixed(theme.Groove, theme.Text, 0.10) : theme.Field;
    if (isDown()) {
        face = theme.Groove;
    } else if (underMouse() && isEnabled()) {
        face = Mixed(face, theme.Focus, 0.10);
    }
    DrawBox(painter, knob, face, Mixed(face, theme.Dim, 0.4), 3.0);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(knob.center());
    painter.setPen(QPen(isEnabled() ? theme.Text : theme.Disabled, 1.3, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPath(SwitchPadlock(isChecked()));
}

} // namespace nrv::ui
