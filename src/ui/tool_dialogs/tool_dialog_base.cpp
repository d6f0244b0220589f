#include "ui/tool_dialogs/tool_dialog_base.h"

#include "ui/binding/binding.h"
#include "ui/binding/text.h"
#include "ui/look/painting.h"
#include "ui/look/theme.h"
#include "ui/tool_dialogs/flat_bar.h"
#include "ui/widgets/list_box.h"
#include "ui/widgets/text_field.h"
#include "ui/windows/form_binding.h"

#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPainter>
#include <QPushButton>
#include <QStyledItemDelegate>
#include <QVBoxLayout>

#include <algorithm>

namespace nrv::ui {
namespace {

constexpr int LineHeight = 20;
constexpr int FieldMargins = 14;
constexpr int ButtonMargins = 28;
constexpr int LineMargins = 16;

/// Lines of one height, with dots for what cannot be seen, and an entry's note at its right.
class LineDelegate : public QStyledItemDelegate {
  public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QString displayText(const QVariant& value, const QLocale&) const override { return Printable(value.toString()); }
    QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        return {QStyledItemDelegate::sizeHint(option, index).width() + NoteWidth(option, index), LineHeight};
    }
    void paint(QPainter* painter, const QStyleOptionViewItem& option, const QModelIndex& index) const override {
        QStyledItemDelegate::paint(painter, option, index);
        const bool selected = option.state.testFlag(QStyle::State_Selected);
        painter->save();
        painter->setFont(option.font);
        painter->setPen(selected ? option.palette.color(QPalette::HighlightedText) : CurrentTheme().Dim);
        painter->drawText(option.rect.adjusted(0, 0, -NoteGap / 2, 0), Qt::AlignRight | Qt::AlignVCenter,
                          index.data(ListBox::NoteRole).toString());
        painter->restore();
    }

  private:
    static constexpr int NoteGap = 12;

    static int NoteWidth(const QStyleOptionViewItem& option, const QModelIndex& index) {
        const QString note = index.data(ListBox::NoteRole).toString();
        return note.isEmpty() ? 0 : option.fontMetrics.horizontalAdvance(note) + NoteGap;
    }
};

/// A list in which one line is always chosen: the toolkit would let Ctrl and a click take the choice off.
class Lines : public QListWidget {
  protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex& index, const QEvent* event) const override {
        const auto command = QListWidget::selectionCommand(index, event);
        return command.testFlag(QItemSelectionModel::Deselect) ? QItemSelectionModel::NoUpdate : command;
    }
};

int WidestText(const QWidget& widget, int characters) {
    return widget.fontMetrics().horizontalAdvance(QString(characters, QLatin1Char('W')));
}

bool IsEnter(const QEvent& event) {
    const int key = event.type() == QEvent::KeyPress ? static_cast<const QKeyEvent&>(event).key() : 0;
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

QString Indexed(const char* name, std::size_t index) {
    return QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
}

ToolDialogBase::ToolDialogBase(controls::Form& form, const QString& name, const controls::EventEntry& entry,
                               QWidget* parent)
    : QDialog(parent), entry_(entry), column_(new QVBoxLayout(this)) {
    setObjectName(name);
    setModal(true);
    column_->setContentsMargins(Margin, Margin, Margin, Margin);
    column_->setSpacing(Margin);
    column_->setSizeConstraint(QLayout::SetFixedSize);
    BindForm(form, *this, *this);
}

QHBoxLayout* ToolDialogBase::ButtonRow(std::initializer_list<QWidget*> buttons) {
    auto* row = new QHBoxLayout;
    row->setSpacing(Gap);
    row->addStretch(1);
    for (QWidget* button : buttons) {
        row->addWidget(button);
    }
    return row;
}

QLabel* ToolDialogBase::MakeLabel(controls::Label& label, const QString& name) {
    auto* text = new QLabel;
    text->setObjectName(name);
    Bind(label, *text);
    return text;
}

QLabel* ToolDialogBase::MakeCaption(controls::Label& label, const QString& name) {
    QLabel* caption = MakeLabel(label, name);
    caption->setFont(CaptionFont());
    caption->setForegroundRole(QPalette::PlaceholderText);
    return caption;
}

QPushButton* ToolDialogBase::MakeButton(controls::Button& button, const QString& name) {
    auto* widget = new QPushButton;
    widget->setObjectName(name);
    Bind(button, *widget, entry_);
    widget->setFixedWidth(
        std::max(ButtonWidth, widget->fontMetrics().horizontalAdvance(widget->text()) + ButtonMargins));
    widget->setFixedHeight(RowHeight);
    widget->setText(WithMnemonic(button.Caption(), mnemonics_));
    return widget;
}

TextField* ToolDialogBase::MakeField(controls::TextBox& box, const QString& name, Enter enter) {
    auto* field = new TextField(nullptr);
    field->setObjectName(name);
    Bind(box, *field, entry_);
    field->setFixedWidth(WidestText(*field, static_cast<int>(box.MaxLength())) + FieldMargins);
    field->setFixedHeight(RowHeight);
    field->installEventFilter(this);
    if (enter == Enter::TellsOwner) {
        tell_owner_.push_back(field);
    }
    return field;
}

QComboBox* ToolDialogBase::MakeChoice(controls::List& list, const QString& name) {
    auto* choice = new ListBox(nullptr);
    choice->setObjectName(name);
    choice->setItemDelegate(new LineDelegate(choice));
    Bind(list, *choice, entry_);
    choice->setFixedHeight(RowHeight);
    return choice;
}

QListWidget* ToolDialogBase::MakeLines(controls::LineList& list, const QString& name, int rows, int characters) {
    auto* lines = new Lines;
    lines->setObjectName(name);
    lines->setItemDelegate(new LineDelegate(lines));
    lines->setEditTriggers(QAbstractItemView::NoEditTriggers);
    lines->setSelectionMode(QAbstractItemView::SingleSelection);
    lines->setTextElideMode(Qt::ElideNone);
    lines->setUniformItemSizes(true);
    Bind(list, *lines, entry_);
    const int frame = 2 * lines->frameWidth();
    lines->setFixedSize(WidestText(*lines, characters) + LineMargins + frame, rows * LineHeight + frame);
    return lines;
}

QProgressBar* ToolDialogBase::MakeBar(controls::ProgressBar& bar, const QString& name) {
    auto* widget = new FlatBar;
    widget->setObjectName(name);
    // Its place is kept while it is hidden: it must be there at once when it is shown in the middle of an exchange.
    QSizePolicy policy = widget->sizePolicy();
    policy.setRetainSizeWhenHidden(true);
    widget->setSizePolicy(policy);
    Bind(bar, *widget);
    return widget;
}

bool ToolDialogBase::eventFilter(QObject* watched, QEvent* event) {
    auto* const field = qobject_cast<TextField*>(watched);
    if (field != nullptr && IsEnter(*event) &&
        std::find(tell_owner_.begin(), tell_owner_.end(), field) == tell_owner_.end()) {
        keyPressEvent(static_cast<QKeyEvent*>(event));
        return true;
    }
    return QDialog::eventFilter(watched, event);
}

} // namespace nrv::ui
