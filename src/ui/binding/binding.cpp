#include "ui/binding/binding.h"

#include "ui/binding/follow.h"
#include "ui/binding/subscription.h"
#include "ui/binding/text.h"
#include "ui/look/painting.h"
#include "ui/look/theme.h"
#include "ui/widgets/list_box.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/text_field.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLabel>
#include <QListWidget>
#include <QProgressBar>
#include <QSignalBlocker>
#include <QTextDocument>
#include <QTimer>

namespace nrv::ui {

using controls::Aspect;

namespace {

/// A tool tip has no format of its own to be told: what the toolkit would take for markup is marked up to be literal.
QString ToolTipText(const std::string& bytes) {
    const QString text = FromBytes(bytes);
    return Qt::mightBeRichText(text) ? Qt::convertFromPlainText(text, Qt::WhiteSpacePre) : text;
}

/// What is told of a list's entries beside their texts; `set` takes an entry, a role and what it holds there.
template <class Set>
void TellOfItems(const controls::List& list, Set set) {
    const auto text_at = [](const std::vector<std::string>& texts, std::size_t item) {
        return item < texts.size() ? texts[item] : std::string();
    };
    for (std::size_t item = 0; item < list.Items().size(); ++item) {
        const bool dim = item < list.DimItems().size() && list.DimItems()[item];
        const std::string note = text_at(list.ItemNotes(), item);
        const std::string tip = text_at(list.ItemToolTips(), item);
        set(static_cast<int>(item), Qt::ToolTipRole, ToolTipText(tip.empty() ? note : tip));
        set(static_cast<int>(item), ListBox::NoteRole, FromBytes(note));
        set(static_cast<int>(item), Qt::ForegroundRole, dim ? QVariant(QBrush(CurrentTheme().Dim)) : QVariant());
    }
}

} // namespace

bool ShowCommon(const controls::Control& control, QWidget& widget, Aspect aspect) {
    switch (aspect) {
    case Aspect::Visible:
        widget.setVisible(control.Visible());
        return true;
    case Aspect::Enabled:
        widget.setEnabled(control.Enabled());
        return true;
    case Aspect::ToolTip:
        widget.setToolTip(ToolTipText(control.ToolTip()));
        return true;
    case Aspect::Repaint:
        widget.repaint();
        return true;
    default:
        return false;
    }
}

void ShowAllCommon(const controls::Control& control, QWidget& widget) {
    if (!control.Visible()) {
        widget.setVisible(false);
    }
    widget.setEnabled(control.Enabled());
    ShowCommon(control, widget, Aspect::ToolTip);
}

void Bind(controls::Label& label, QLabel& widget) {
    widget.setTextFormat(Qt::PlainText);
    Follow(label, widget, [&] { widget.setText(FromBytes(label.Caption())); });
}

void Bind(controls::Frame& frame, Panel& panel) {
    Follow(frame, panel, [&] { panel.SetCaption(FromBytes(frame.Caption())); });
}

void Bind(controls::Button& button, QAbstractButton& widget, const controls::EventEntry& entry) {
    Follow(button, widget, [&] { widget.setText(WithoutMnemonic(button.Caption())); });
    BindClick(button, widget, entry);
}

void BindClick(controls::Button& button, QAbstractButton& widget, const controls::EventEntry& entry) {
    QObject::connect(&widget, &QAbstractButton::clicked, &widget,
                     [entry, &button] { entry.Run([&] { button.UserClick(); }); });
}

void Bind(controls::Option& option, QAbstractButton& widget, const controls::EventEntry& entry) {
    // The group's rule lives in the controls; the toolkit would deselect its own idea of the siblings.
    widget.setAutoExclusive(false);
    widget.setCheckable(true);
    const auto show = [&] {
        widget.setText(WithoutMnemonic(option.Caption()));
        widget.setChecked(option.Selected());
    };
    Follow(option, widget, show);
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, [entry, &option, show] {
        entry.Run([&] { option.Select(); });
        show();
    });
}

void Bind(controls::CheckBox& box, QAbstractButton& widget, const controls::EventEntry& entry) {
    widget.setCheckable(true);
    const auto show = [&] {
        widget.setText(WithoutMnemonic(box.Caption()));
        widget.setChecked(box.Checked());
    };
    Follow(box, widget, show);
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, [entry, &box, show] {
        entry.Run([&] { box.UserToggle(); });
        show();
    });
}

void Bind(controls::List& list, QComboBox& widget, const controls::EventEntry& entry) {
    const auto fill = [&] {
        widget.clear();
        for (const std::string& item : list.Items()) {
            widget.addItem(FromBytes(item));
        }
        TellOfItems(list,
                    [&widget](int item, int role, const QVariant& value) { widget.setItemData(item, value, role); });
        widget.setCurrentIndex(list.Shown());
    };
    const auto show = [&] { widget.setCurrentIndex(list.Shown()); };
    ShowAllCommon(list, widget);
    fill();
    Subscribe(widget, list, [&list, &widget, fill, show](Aspect aspect) {
        if (aspect == Aspect::Items) {
            fill();
        } else if (!ShowCommon(list, widget, aspect)) {
            show();
        }
    });
    QObject::connect(&widget, &QComboBox::activated, &widget, [entry, &list, show](int index) {
        entry.Run([&] { list.UserSelect(index); });
        show();
    });
    if (auto* box = qobject_cast<ListBox*>(&widget)) {
        QObject::connect(box, &ListBox::Looked, box, [&list] { controls::Run(list.Looked); });
    }
}

void Bind(controls::TextBox& box, TextField& field, const controls::EventEntry& entry, Typing typing) {
    const auto show_typed = [&box, &field, typing] {
        const bool typed = typing == Typing::WaitsForEnter && box.Typed();
        field.SetTyped(typed);
        field.setToolTip(typed ? QStringLiteral("Enter sends it") : ToolTipText(box.ToolTip()));
    };
    const auto show = [&box, &field, show_typed] {
        constexpr int no_limit = 32767;
        const int limit = box.MaxLength() == controls::TextBox::NoLimit ? no_limit : static_cast<int>(box.MaxLength());
        if (field.maxLength() != limit) { // setting it puts the text in anew
            field.setMaxLength(limit);
        }
        // What cannot be edited is never read back, so that its unseen characters may be shown as marks.
        const QString text = FromBytes(box.Text());
        field.ShowText(box.Locked() ? Printable(text) : text);
        field.SetLocked(box.Locked());
        field.SetMarked(box.Marked());
        show_typed();
    };
    ShowAllCommon(box, field);
    show();
    Subscribe(field, box, [&box, &field, show](Aspect aspect) {
        if (aspect == Aspect::Attention) {
            field.Offer();
        } else if (aspect == Aspect::ToolTip || !ShowCommon(box, field, aspect)) {
            show();
        }
    });
    field.SetKeyFilter([&box, entry](char key) {
        controls::KeyEntry entering = 0;
        entry.Run([&] { entering = box.UserKey(key); });
        return entering;
    });
    QObject::connect(&field, &QLineEdit::textEdited, &field, [&box, show_typed](const QString& text) {
        box.UserText(ToBytes(text));
        show_typed();
    });
    QObject::connect(&field, &TextField::GivenUp, &field, [&box, entry] { entry.Run([&] { box.TakeBack(); }); });
}

void Bind(controls::LineList& list, QListWidget& widget, const controls::EventEntry& entry) {
    const auto select = [&] {
        const QSignalBlocker not_the_user(widget);
        widget.setCurrentRow(list.Shown());
    };
    const auto fill = [&list, &widget, select] {
        const QSignalBlocker not_the_user(widget);
        widget.clear();
        for (const std::string& line : list.Items()) {
            widget.addItem(Printable(FromBytes(line)));
        }
        TellOfItems(list,
                    [&widget](int line, int role, const QVariant& value) { widget.item(line)->setData(role, value); });
        select();
    };
    ShowAllCommon(list, widget);
    fill();
    Subscribe(widget, list, [&list, &widget, fill, select](Aspect aspect) {
        if (aspect == Aspect::Items) {
            fill();
        } else if (aspect == Aspect::Repaint) {
            widget.viewport()->repaint();
        } else if (!ShowCommon(list, widget, aspect)) {
            select();
        }
    });
    QObject::connect(&widget, &QListWidget::currentRowChanged, &widget, [entry, &list, select](int row) {
        entry.Run([&] { list.UserSelect(row); });
        select();
    });
    QObject::connect(&widget, &QListWidget::doubleClicked, &widget,
                     [entry, &list](const QModelIndex& line) { entry.Run([&] { list.UserDoubleClick(line.row()); }); });
}

void Bind(controls::ProgressBar& bar, QProgressBar& widget) {
    Follow(bar, widget, [&] {
        widget.setMaximum(bar.Maximum());
        widget.setValue(bar.Value());
    });
}

void Bind(controls::Timer& timer, QTimer& toolkit_timer, const controls::EventEntry& entry) {
    toolkit_timer.setTimerType(Qt::PreciseTimer);
    const auto follow = [&] {
        if (!timer.Running()) {
            toolkit_timer.stop();
        } else if (!toolkit_timer.isActive() || toolkit_timer.interval() != timer.Interval()) {
            toolkit_timer.start(timer.Interval());
        }
    };
    follow();
    Subscribe(toolkit_timer, timer, [follow](Aspect) { follow(); });
    QObject::connect(&toolkit_timer, &QTimer::timeout, &toolkit_timer,
                     [entry, &timer] { entry.Run([&] { controls::Run(timer.Tick); }); });
}

} // namespace nrv::ui
