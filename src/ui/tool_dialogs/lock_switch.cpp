#include "ui/tool_dialogs/lock_switch.h"

#include "ui/look/painting.h"
#include "ui/look/picture.h"
#include "ui/look/theme.h"
#include "ui/look/tool_icons.h"

#include <QEvent>
#include <QKeyEvent>
#include <QPainter>

namespace nrv::ui {
namespace {

constexpr double KnobWidth = 30.0;

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
    QRectF padlock(0.0, 0.0, ToolIconSize, ToolIconSize);
    padlock.moveCenter(knob.center());
    DrawPicture(painter, padlock, Padlock(isChecked()), isEnabled() ? theme.Text : theme.Disabled);
}

} // namespace nrv::ui
