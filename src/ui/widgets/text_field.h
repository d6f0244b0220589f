#pragma once

#include "controls/text_box.h"
#include "ui/accessible/spoken.h"

#include <QLineEdit>

#include <functional>

namespace nrv::ui {

/// A box to type in. Every character, typed or pasted, is first shown to the owner, who says what enters in its place.
/// The first click into it and an Enter that is taken select its text, so that typing replaces it.
class TextField : public QLineEdit, public Spoken {
    Q_OBJECT
  public:
    /// What becomes of a character, told as one byte of Latin-1. Enter is 13, Backspace 8.
    using KeyFilter = std::function<controls::KeyEntry(char)>;

    explicit TextField(QWidget* parent);

    void SetKeyFilter(KeyFilter filter) { filter_ = std::move(filter); }
    /// Types over what stands from one character to another, as the user does.
    void TypeOver(qsizetype from, qsizetype to, const QString& text);
    /// Presses Enter.
    void Enter();
    QString SpokenAction() const override { return isReadOnly() ? QString() : QStringLiteral("Enter"); }
    void DoSpokenAction() override { Enter(); }

    /// Shows a text that is not the user's doing.
    void ShowText(const QString& shown);
    /// A locked field is shaded, and shows its text only.
    void SetLocked(bool locked);
    /// The yellow mark of a limit reached.
    void SetMarked(bool marked);
    /// The mark of a text that is typed and not entered; Escape gives it up.
    void SetTyped(bool typed);
    /// Gives it the keyboard with its text selected; a click that comes next selects it as well.
    void Offer();

  signals:
    void GivenUp();

  protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void inputMethodEvent(QInputMethodEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;

  private:
    bool CanTake() const;
    /// Takes one key that is no text through the filter.
    void Take(char key, const std::function<void()>& let_through);
    /// Ends at the first character that is refused: a pasted page would raise a box for each of its letters.
    void TypeText(const QString& text);
    void PasteFrom(int clipboard_mode);

    KeyFilter filter_;
    bool marked_ = false;
    bool typed_ = false;
    bool offered_ = false; ///< nobody has worked it since
    bool fresh_ = false;   ///< the next click to end selects the text
};

} // namespace nrv::ui
