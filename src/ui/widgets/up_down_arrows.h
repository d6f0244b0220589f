#pragma once

#include "ui/accessible/spoken.h"
#include "ui/widgets/auto_repeat.h"
#include "ui/widgets/wheel_steps.h"

#include <QWidget>

namespace nrv::ui {

/// Two arrows, one over the other, that repeat while they are held.
class UpDownArrows : public QWidget, public Spoken {
    Q_OBJECT
  public:
    explicit UpDownArrows(QWidget* parent);

    static constexpr int LargeStep = 10;

    /// Where the value stands that the arrows step.
    std::function<Scale()> Position;
    std::optional<Scale> SpokenScale() const override {
        return Position ? std::optional<Scale>(Position()) : std::nullopt;
    }
    void TakeSpoken(int number) override;

  signals:
    /// Steps of the user, upwards positive.
    void Stepped(int steps);

  protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void leaveEvent(QEvent*) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;
    void hideEvent(QHideEvent*) override;
    bool event(QEvent* event) override;

  private:
    /// +1 the upper half, -1 the lower.
    int HalfAt(QPointF place) const;
    void LetGo();

    WheelSteps wheel_;
    AutoRepeat repeat_;
    int pressed_ = 0;
    int hovered_ = 0;
};

} // namespace nrv::ui
