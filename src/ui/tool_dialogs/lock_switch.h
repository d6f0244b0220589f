#pragma once

#include <QAbstractButton>

namespace nrv::ui {

/// A switch with two ends: open at the left while it is off, locked at the right while it is on. The arrow keys move it
/// to an end, a click or the space bar to the other one.
class LockSwitch : public QAbstractButton {
    Q_OBJECT
  public:
    explicit LockSwitch(QWidget* parent = nullptr);
    QSize sizeHint() const override { return {64, 28}; }

  protected:
    void paintEvent(QPaintEvent*) override;
    void keyPressEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
};

} // namespace nrv::ui
