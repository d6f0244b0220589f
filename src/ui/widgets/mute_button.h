#pragma once

#include <QAbstractButton>

namespace nrv::ui {

/// "MUTE", red while the channel is muted.
class MuteButton : public QAbstractButton {
    Q_OBJECT
  public:
    explicit MuteButton(QWidget* parent);
    QSize sizeHint() const override { return {60, 24}; }

  protected:
    void paintEvent(QPaintEvent*) override;
    bool event(QEvent* event) override;
};

} // namespace nrv::ui
