#pragma once

#include <QWheelEvent>

namespace nrv::ui {

/// Collects the small turns of a smooth wheel until they make whole steps.
class WheelSteps {
  public:
    /// Whole steps, upwards positive, that this turn completes.
    int Take(const QWheelEvent& event) {
        rest_ += event.angleDelta().y();
        const int steps = rest_ / OneStep;
        rest_ -= steps * OneStep;
        return steps;
    }
    void Reset() { rest_ = 0; }

  private:
    static constexpr int OneStep = 120; // eighths of a degree
    int rest_ = 0;
};

} // namespace nrv::ui
