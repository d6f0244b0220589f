#include "ui/platform/gesture_watch.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QMouseEvent>

namespace nrv::ui {
namespace {

/// Each press of these is a gesture of its own, however fast they follow.
bool StandsAlone(int key) {
    return key == Qt::Key_Return || key == Qt::Key_Enter || key == Qt::Key_Space;
}

constexpr int WheelAsKey = -1;

} // namespace

GestureWatch::GestureWatch() {
    QCoreApplication::instance()->installEventFilter(this);
    since_.start();
}

long GestureWatch::Serial() {
    if (!held_ && since_.elapsed() > LongestPause) {
        Next();
    }
    since_.start();
    return serial_;
}

bool GestureWatch::eventFilter(QObject* watched, QEvent* event) {
    if (!watched->isWidgetType()) {
        return QObject::eventFilter(watched, event);
    }
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        // One that travels up the widgets is one press.
        if (const quint64 when = static_cast<const QMouseEvent*>(event)->timestamp(); when != pressed_) {
            pressed_ = when;
            Next();
        }
        held_ = true;
        key_ = 0;
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::UngrabMouse: // a box or dialog came over what was pressed
        if (held_) {
            Next();
        }
        held_ = false;
        break;
    case QEvent::KeyPress:
    case QEvent::Wheel: {
        const int key = event->type() == QEvent::Wheel ? WheelAsKey : static_cast<const QKeyEvent*>(event)->key();
        if (key != key_ || watched != at_ || StandsAlone(key)) {
            Next();
        }
        key_ = key;
        at_ = watched;
        break;
    }
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

} // namespace nrv::ui
