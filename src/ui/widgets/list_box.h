#pragma once

#include "ui/accessible/spoken.h"

#include <QComboBox>

namespace nrv::ui {

/// A drop-down list that a wheel turns only when it has the keyboard.
class ListBox : public QComboBox, public Spoken {
    Q_OBJECT
  public:
    explicit ListBox(QWidget* parent);
    void showPopup() override;
    /// Words for a value that is held and that no entry stands for; empty while one does.
    std::function<QString()> HeldOutside;

    std::optional<Scale> SpokenScale() const override { return Scale{0, count() - 1, currentIndex()}; }
    void TakeSpoken(int number) override;
    QString SpokenAction() const override { return QStringLiteral("ShowMenu"); }
    void DoSpokenAction() override { showPopup(); }

  protected:
    bool event(QEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace nrv::ui
