#pragma once

#include "controls/containers.h"
#include "controls/dialog_forms.h"
#include "controls/event_boundary.h"

#include <QDialog>
#include <QString>

#include <cstddef>
#include <initializer_list>
#include <vector>

class QComboBox;
class QHBoxLayout;
class QLabel;
class QListWidget;
class QProgressBar;
class QPushButton;
class QVBoxLayout;

namespace nrv::ui {

class TextField;

/// "Text1(3)": the name of a control and its index.
QString Indexed(const char* name, std::size_t index);

/// What the tool dialogs have in common: a fixed size, and widgets bound to the record for as long as the dialog lives.
class ToolDialogBase : public QDialog {
  protected:
    static constexpr int Margin = 8;
    static constexpr int Gap = 6;
    static constexpr int Inner = 10;       ///< from a panel's border to what lies in it
    static constexpr int CaptionGap = 3;   ///< from a caption to what it stands over
    static constexpr int ButtonWidth = 76; ///< at least
    static constexpr int RowHeight = 24;   ///< of buttons, fields and lists

    /// What Enter in a field does: presses the dialog's default button, or tells the field's owner alone.
    enum class Enter { PressesDefault, TellsOwner };

    ToolDialogBase(controls::Form& form, const QString& name, const controls::EventEntry& entry, QWidget* parent);

    /// The dialog's own column, into which panels and button rows go.
    QVBoxLayout& Column() const { return *column_; }
    /// Buttons at the right end of a row, the one that does the work last.
    static QHBoxLayout* ButtonRow(std::initializer_list<QWidget*> buttons);

    // Each makes the widget of a control, without a parent as yet, and binds it.
    QLabel* MakeLabel(controls::Label& label, const QString& name);
    /// A label in the caption's font, over what it names.
    QLabel* MakeCaption(controls::Label& label, const QString& name);
    QPushButton* MakeButton(controls::Button& button, const QString& name);
    /// As wide as its longest text.
    TextField* MakeField(controls::TextBox& box, const QString& name, Enter enter);
    QComboBox* MakeChoice(controls::List& list, const QString& name);
    /// As large as `rows` lines of `characters` characters.
    QListWidget* MakeLines(controls::LineList& list, const QString& name, int rows, int characters);
    QProgressBar* MakeBar(controls::ProgressBar& bar, const QString& name);

    const controls::EventEntry& Entry() const { return entry_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    controls::EventEntry entry_;
    QVBoxLayout* column_;
    std::vector<const QObject*> tell_owner_;
    QString mnemonics_; ///< keys of the buttons made so far
};

} // namespace nrv::ui
