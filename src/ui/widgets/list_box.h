#pragma once

#include "ui/accessible/spoken.h"

#include <QComboBox>

namespace nrv::ui {

/// A drop-down list that a wheel turns only when it has the keyboard. Closed, it tells the tool tip of its entry, and
/// shows the note that stands beside an entry.
class ListBox : public QComboBox, public Spoken {
    Q_OBJECT
  public:
    /// What stands dim beside an entry and is no part of its text.
    static constexpr int NoteRole = Qt::UserRole;

    explicit ListBox(QWidget* parent);
    void showPopup() override;
    /// Words for a value that is held and that no entry stands for; empty while one does.
    std::function<QString()> HeldOutside;

    std::optional<Scale> SpokenScale() const override { return Scale{0, count() - 1, currentIndex()}; }
    void TakeSpoken(int number) override;
    QString SpokenAction() const override { return QStringLiteral("ShowMenu"); }
    void DoSpokenAction() override { showPopup(); }

  signals:
    /// The user is about to see the entries, or what is told of the chosen one.
    void Looked();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace nrv::ui
