#pragma once

#include "ui/accessible/spoken.h"
#include "ui/widgets/auto_repeat.h"
#include "ui/widgets/wheel_steps.h"

#include <QColor>
#include <QSlider>

namespace nrv::ui {

/// A vertical fader with position 0 at the top: ticks, a longer one at zero, a bar in its colour from zero to the cap.
class Fader : public QSlider, public Spoken {
    Q_OBJECT
  public:
    explicit Fader(QWidget* parent);

    static constexpr int NoZero = -1;

    void SetColour(const QColor& colour);
    void SetTicks(int spacing, int zero_position);
    /// Without it Home and End do nothing: a level must not jump to its loudest by one key.
    void SetReachesEndsByKey(bool reaches) { reaches_ends_ = reaches; }
    /// Shows a position that is not the user's doing; emits nothing of ours.
    void ShowPosition(int position) { setValue(position); }
    /// The value that is held lies outside the scale: a move to the place that shows is a move.
    void SetOutside(bool outside) { outside_ = outside; }
    /// The height in the widget, in pixels, at which the cap of a position has its middle.
    double PlaceOf(int position) const;
    QSize sizeHint() const override { return {28, 120}; }

    /// Upwards is more.
    std::optional<Scale> SpokenScale() const override { return Scale{0, maximum() - minimum(), maximum() - value()}; }
    void TakeSpoken(int number) override { MoveTo(maximum() - number); }

  signals:
    /// Once for each change of position that the user makes.
    void UserMoved(int position);

  protected:
    void paintEvent(QPaintEvent*) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
    void timerEvent(QTimerEvent* event) override;
    void changeEvent(QEvent* event) override;
    bool event(QEvent* event) override;

  private:
    void MoveTo(int position);
    void LetGo();
    void StepTowards(double y);
    int PositionAt(double y) const;
    void PaintTicks(QPainter& painter) const;
    void PaintCap(QPainter& painter) const;

    QColor colour_;
    int tick_spacing_ = 1;
    int zero_position_ = NoZero;
    WheelSteps wheel_;
    AutoRepeat repeat_; ///< of a press on the groove
    bool reaches_ends_ = true;
    bool dragging_ = false;
    bool outside_ = false;
    double grip_ = 0.0;      // from the cap's middle to the finger
    double paging_to_ = 0.0; // where the groove is pressed
};

} // namespace nrv::ui
