#pragma once

#include <QComboBox>

namespace nrv::ui {

/// A drop-down list that a wheel turns only when it has the keyboard.
class ListBox : public QComboBox {
    Q_OBJECT
  public:
    explicit ListBox(QWidget* parent);
    void showPopup() override;

  protected:
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace nrv::ui
