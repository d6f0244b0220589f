#include "ui/tool_dialogs/password_dialog.h"

#include "ui/binding/binding.h"
#include "ui/binding/text.h"
#include "ui/look/flat_style.h"
#include "ui/tool_dialogs/lock_switch.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/text_field.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QVBoxLayout>

namespace nrv::ui {
namespace {

constexpr int FieldWidth = 120;
constexpr int NarrowButton = 40;

/// A page that takes the keyboard and the Enter key when it comes to the front.
class Page : public Panel {
  public:
    explicit Page(QWidget* parent = nullptr) : Panel(parent) {
        QSizePolicy policy = sizePolicy();
        policy.setRetainSizeWhenHidden(true); // the dialog is as large as its largest page
        setSizePolicy(policy);
    }
    void SetEntry(QWidget* first, QPushButton* default_button) {
        first_ = first;
        default_button_ = default_button;
    }

  protected:
    void showEvent(QShowEvent* event) override {
        Panel::showEvent(event);
        raise();
        first_->setFocus(Qt::OtherFocusReason);
        default_button_->setDefault(true);
    }

  private:
    QWidget* first_ = nullptr;
    QPushButton* default_button_ = nullptr;
};

/// Shows each character of what is typed unseen as a star.
class StarStyle : public FlatStyle {
  public:
    int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                  QStyleHintReturn* result) const override {
        return hint == SH_LineEdit_PasswordCharacter ? '*' : FlatStyle::styleHint(hint, option, widget, result);
    }
};

/// The column in which a page's content stands, from the top.
QVBoxLayout* ContentOf(Page& page, int margin) {
    auto* column = new QVBoxLayout(&page);
    column->setContentsMargins(margin, margin, margin, margin);
    column->setSpacing(3);
    return column;
}

} // namespace

PasswordDialog::PasswordDialog(controls::FrmPassword& record, const controls::EventEntry& entry, QWidget* parent)
    : ToolDialogBase(record.Window, QStringLiteral("FrmPassword"), entry, parent), record_(record) {
    auto* pages = new QGridLayout;
    for (QWidget* page : {MakeLoginPage(), MakeSettingsPage(), MakeNewPasswordPage()}) {
        pages->addWidget(page, 0, 0);
    }
    Column().addLayout(pages);
}

QPushButton* PasswordDialog::MakeCommand(std::size_t index) {
    return MakeButton(record_.Command1[index], Indexed("Command1", index));
}

TextField* PasswordDialog::MakePasswordField(controls::TextBox& box, const char* name, const controls::Label& caption) {
    TextField* field = MakeField(box, QLatin1String(name), Enter::TellsOwner);
    field->setFixedWidth(FieldWidth);
    field->setAccessibleName(FromBytes(caption.Caption()));
    field->setInputMethodHints(Qt::ImhSensitiveData | Qt::ImhNoPredictiveText | Qt::ImhNoAutoUppercase);
    return field;
}

QWidget* PasswordDialog::MakeLoginPage() {
    auto* page = new Page;
    page->setObjectName(QStringLiteral("Frame3"));
    QVBoxLayout* column = ContentOf(*page, Inner);
    column->addWidget(MakeCaption(record_.LoginCaption, QStringLiteral("LoginCaption")));
    TextField* password = MakePasswordField(record_.Text1, "Text1", record_.LoginCaption);
    password->setEchoMode(QLineEdit::Password);
    auto* stars = new StarStyle;
    stars->setParent(password);
    password->setStyle(stars);
    column->addWidget(password);
    column->addSpacing(Inner);
    column->addWidget(MakeLabel(record_.Label2, QStringLiteral("Label2")));
    column->addStretch(1);
    QPushButton* ok = MakeCommand(0);
    QPushButton* exit = MakeCommand(1);
    column->addLayout(ButtonRow({exit, ok}));
    page->SetEntry(password, ok);
    Bind(record_.Frame3, *page);
    return page;
}

QWidget* PasswordDialog::MakeSettingsPage() {
    auto* page = new Page;
    page->setObjectName(QStringLiteral("Frame1"));
    QVBoxLayout* column = ContentOf(*page, Inner);
    column->addStretch(1);
    auto* row = new QHBoxLayout;
    row->setSpacing(Inner);
    row->addStretch(1);
    row->addWidget(MakeLabel(record_.SwitchEnds[0], Indexed("SwitchEnds", 0)));
    auto* lock = new LockSwitch;
    lock->setObjectName(QStringLiteral("Check1"));
    lock->setAccessibleName(FromBytes(record_.SwitchEnds[1].Caption()));
    Bind(record_.Check1, *lock, Entry());
    row->addWidget(lock);
    row->addWidget(MakeLabel(record_.SwitchEnds[1], Indexed("SwitchEnds", 1)));
    row->addStretch(1);
    column->addLayout(row);
    column->addStretch(1);

    QPushButton* back = MakeCommand(6);
    back->setFixedWidth(NarrowButton);
    QPushButton* new_password = MakeCommand(2);
    QPushButton* confirm = MakeCommand(3);
    auto* buttons = new QHBoxLayout;
    buttons->setSpacing(Gap);
    buttons->addWidget(back);
    buttons->addSpacing(2 * Inner);
    buttons->addStretch(1);
    buttons->addWidget(new_password);
    buttons->addWidget(confirm);
    column->addLayout(buttons);
    page->SetEntry(lock, confirm);
    Bind(record_.Frame1, *page);
    return page;
}

QWidget* PasswordDialog::MakeNewPasswordPage() {
    auto* page = new Page;
    page->setObjectName(QStringLiteral("Frame4"));
    QVBoxLayout* column = ContentOf(*page, Inner);
    column->addWidget(MakeCaption(record_.NewCaption, QStringLiteral("NewCaption")));
    TextField* first = MakePasswordField(record_.Text2, "Text2", record_.NewCaption);
    column->addWidget(first);
    column->addSpacing(Gap);
    column->addWidget(MakeCaption(record_.ConfirmCaption, QStringLiteral("ConfirmCaption")));
    column->addWidget(MakePasswordField(record_.Text3, "Text3", record_.ConfirmCaption));
    column->addStretch(1);
    column->addSpacing(Inner);
    QPushButton* ok = MakeCommand(5);
    QPushButton* cancel = MakeCommand(4);
    column->addLayout(ButtonRow({cancel, ok}));
    page->SetEntry(first, ok);
    Bind(record_.Frame4, *page);
    return page;
}

} // namespace nrv::ui
