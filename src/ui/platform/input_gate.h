#pragma once

#include "ports/operation.h"

#include <QObject>
#include <QPointer>
#include <QWidget>

#include <chrono>

namespace nrv::ui {

/// Keeps the user's mouse and keys from a program that is at work: what comes while an operation serves events reaches
/// no widget, and what was pressed or clicked while one stood still for more than half a second is thrown away, not
/// carried out later on whatever lies there then. A press that is held ends when a box or a dialog comes over it, and
/// Enter held down counts once.
///
/// Watches the whole application for as long as it lives.
class InputGate : public QObject {
  public:
    explicit InputGate(const Operation& operation);
    static constexpr std::chrono::milliseconds StandstillLimit{500};

    void Began();
    void LoopBegins();
    void LoopEnds();
    void Ending();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    void EndPress();
    void ThrowAwayAfterStandstill();

    const Operation& operation_;
    QPointer<QWidget> pressed_; ///< the last that took a press
    std::chrono::steady_clock::time_point standing_since_;
    bool throwing_away_ = false;
};

} // namespace nrv::ui
