#pragma once

#include <QProgressBar>

namespace nrv::ui {

/// A progress bar without words: how far the work has come, in the colour of what has the keyboard.
class FlatBar : public QProgressBar {
  public:
    explicit FlatBar(QWidget* parent = nullptr);

    QSize sizeHint() const override { return {120, 8}; }
    QSize minimumSizeHint() const override { return {40, 8}; }

  protected:
    void paintEvent(QPaintEvent*) override;
};

} // namespace nrv::ui
