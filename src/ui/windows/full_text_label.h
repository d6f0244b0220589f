#pragma once

#include <QLabel>

namespace nrv::ui {

/// One line of text that may be longer than its place: shown with an ellipsis then, and whole in the tool tip.
class FullTextLabel : public QLabel {
  public:
    using QLabel::QLabel;

    QSize minimumSizeHint() const override;

  protected:
    void paintEvent(QPaintEvent* event) override;
    bool event(QEvent* event) override;

  private:
    bool Fits() const;
};

} // namespace nrv::ui
