#include "ui/platform/input_gate.h"

#include "ports/flag_guard.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEvent>
#include <QGuiApplication>
#include <QKeyEvent>

namespace nrv::ui {

namespace {

/// What a user starts something with. Releases and moves pass, so that what was pressed before is let go.
bool StartsSomething(const QEvent& event) {
    switch (event.type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
    case QEvent::NonClientAreaMouseButtonPress:
    case QEvent::NonClientAreaMouseButtonDblClick:
    case QEvent::Wheel:
    case QEvent::KeyPress:
    case QEvent::Shortcut:
    case QEvent::ShortcutOverride:
    case QEvent::ContextMenu:
    case QEvent::InputMethod:
    case QEvent::TouchBegin:
    case QEvent::TabletPress:
    case QEvent::Drop:
        return true;
    default:
        return false;
    }
}

/// Enter held down: by its first repetition something else may have come under it.
bool RepeatsEnter(const QEvent& event) {
    if (event.type() != QEvent::KeyPress) {
        return false;
    }
    const auto& key = static_cast<const QKeyEvent&>(event);
    return key.isAutoRepeat() && (key.key() == Qt::Key_Return || key.key() == Qt::Key_Enter);
}

} // namespace

InputGate::InputGate(const Operation& operation) : operation_(operation) {
    QCoreApplication::instance()->installEventFilter(this);
}

bool InputGate::eventFilter(QObject* watched, QEvent* event) {
    if ((operation_.Busy() && StartsSomething(*event)) || RepeatsEnter(*event)) {
        event->accept(); // an override that is accepted keeps the key from being a shortcut
        return true;
    }
    if (throwing_away_ && event->type() == QEvent::Close) {
        event->ignore();
        return true;
    }
    // Of a press that travels up the widgets the last one took it.
    const bool pressed = event->type() == QEvent::MouseButtonPress || event->type() == QEvent::MouseButtonDblClick;
    if (pressed && watched->isWidgetType()) {
        pressed_ = static_cast<QWidget*>(watched);
    }
    return QObject::eventFilter(watched, event);
}

void InputGate::Began() {
    standing_since_ = std::chrono::steady_clock::now();
}

void InputGate::LoopBegins() {
    ThrowAwayAfterStandstill();
    EndPress();
}

void InputGate::LoopEnds() {
    if (operation_.Busy()) {
        // The box or dialog is off the screen, and what it covered is painted, before the work begins.
        QGuiApplication::sync();
    }
    standing_since_ = std::chrono::steady_clock::now();
}

void InputGate::Ending() {
    ThrowAwayAfterStandstill();
}

void InputGate::ThrowAwayAfterStandstill() {
    if (operation_.Busy() && std::chrono::steady_clock::now() - standing_since_ > StandstillLimit) {
        EndPress();
        const FlagGuard closings_too(throwing_away_);
        QGuiApplication::sync(); // serves what waits, with this gate closed
    }
}

void InputGate::EndPress() {
    const QPointer<QWidget> widget = pressed_.data();
    pressed_.clear();
    if (widget == nullptr) {
        return;
    }
    QEvent over(QEvent::UngrabMouse);
    QCoreApplication::sendEvent(widget, &over);
    if (auto* button = qobject_cast<QAbstractButton*>(widget.data())) {
        button->setDown(false);
    }
}

} // namespace nrv::ui
