#pragma once

#include <QComboBox>

namespace nrv::ui {

/// A drop-down list that a wheel turns only when it has the keyboard. Closed, it tells the tool tip of its entry, and
/// shows the note that stands beside an entry.
class ListBox : public QComboBox {
    Q_OBJECT
  public:
    /// What stands dim beside an entry and is no part of its text.
    static constexpr int NoteRole = Qt::UserRole;

    explicit ListBox(QWidget* parent);
    void showPopup() override;

  signals:
    /// The user is about to see the entries, or what is told of the chosen one.
    void Looked();

  protected:
    bool event(QEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;
};

} // namespace nrv::ui
