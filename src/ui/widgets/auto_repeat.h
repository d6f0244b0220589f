#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QTimerEvent>

namespace nrv::ui {

/// What a press repeats while it is held: the step first, then, if the press still holds, the timer. The step may end
/// the press: with a box over the window no release comes.
class AutoRepeat {
  public:
    /// The timer's events go to `owner`, which hands them to Tick.
    AutoRepeat(QObject& owner, int interval_milliseconds) : owner_(owner), interval_(interval_milliseconds) {}

    template <class Step>
    void Press(Step step) {
        held_ = true;
        StepThenWait(step, FirstDelay);
    }

    void End() {
        held_ = false;
        timer_.stop();
    }

    /// False for an event of another timer.
    template <class Step>
    bool Tick(const QTimerEvent& event, Step step) {
        if (event.timerId() != timer_.timerId()) {
            return false;
        }
        timer_.stop();
        StepThenWait(step, interval_);
        return true;
    }

  private:
    static constexpr int FirstDelay = 350; ///< milliseconds

    template <class Step>
    void StepThenWait(Step step, int milliseconds) {
        step();
        if (held_) {
            timer_.start(milliseconds, &owner_);
        }
    }

    QObject& owner_;
    int interval_;
    QBasicTimer timer_;
    bool held_ = false;
};

} // namespace nrv::ui
