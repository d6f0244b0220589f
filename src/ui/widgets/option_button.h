#pragma once

#include <QRadioButton>

namespace nrv::ui {

/// An option: the arrow keys choose the next or the one before among those of the same parent.
class OptionButton : public QRadioButton {
    Q_OBJECT
  public:
    using QRadioButton::QRadioButton;

  protected:
    void keyPressEvent(QKeyEvent* event) override;

  private:
    void ChooseBeside(int steps);
};

} // namespace nrv::ui
