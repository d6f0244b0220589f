#include "ui/widgets/text_field.h"

#include "controls/text_box.h"
#include "ui/look/flat_style.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFocusEvent>
#include <QGuiApplication>
#include <QInputMethodEvent>
#include <QKeyEvent>
#include <QMenu>
#include <QPointer>
#include <QRegularExpression>

#include <utility>

namespace nrv::ui {
namespace {

bool IsTyped(const QKeyEvent& event) {
    const QString text = event.text();
    const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
    return !text.isEmpty() && text.front().isPrint() && modifiers != Qt::ControlModifier &&
           modifiers != (Qt::ControlModifier | Qt::ShiftModifier) && !modifiers.testFlag(Qt::MetaModifier);
}

bool IsUndoOrRedo(const QKeyEvent& event) {
    const Qt::KeyboardModifiers modifiers = event.modifiers();
    return (event.key() == Qt::Key_Z && (modifiers & ~Qt::ShiftModifier) == Qt::ControlModifier) ||
           (event.key() == Qt::Key_Y && modifiers == Qt::ControlModifier);
}

} // namespace

TextField::TextField(QWidget* parent) : QLineEdit(parent), Spoken(QAccessible::EditableText) {
    setAlignment(Qt::AlignCenter);
    setTextMargins(-2, 0, -2, 0); // the toolkit's own margins are wide for boxes of four figures
    setAcceptDrops(false);        // a drop would go round the key filter
}

void TextField::ShowText(const QString& shown) {
    if (text() != shown) {
        setText(shown);
    }
}

void TextField::TypeOver(qsizetype from, qsizetype to, const QString& text) {
    if (!CanTake()) {
        return;
    }
    setSelection(static_cast<int>(from), static_cast<int>(to - from));
    if (text.isEmpty()) {
        del();
    } else {
        TypeText(text);
    }
}

void TextField::Enter() {
    if (CanTake()) {
        Take(controls::EnterKey, [this] { selectAll(); });
    }
}

void TextField::SetLocked(bool locked) {
    setReadOnly(locked);
    update();
}

void TextField::SetMarked(bool marked) {
    if (marked_ == marked) {
        return;
    }
    marked_ = marked;
    QPalette palette;
    if (marked) {
        palette.setColor(QPalette::Base, Qt::yellow);
        palette.setColor(QPalette::Text, Qt::black);
    }
    setPalette(palette);
}

void TextField::SetTyped(bool typed) {
    if (typed_ == typed) {
        return;
    }
    typed_ = typed;
    setProperty(TypedProperty, typed);
    QFont slanted = font();
    slanted.setItalic(typed);
    setFont(slanted);
    update();
}

void TextField::Offer() {
    setFocus(Qt::OtherFocusReason);
    selectAll();
    fresh_ = true;
    offered_ = true;
}

bool TextField::CanTake() const {
    return isEnabled() && !isReadOnly();
}

void TextField::Take(char key, const std::function<void()>& let_through) {
    const QPointer<TextField> self(this);
    const controls::KeyEntry entering = filter_ ? filter_(key) : key;
    // The key may have closed this window or locked its device.
    if (self.isNull() || !CanTake()) {
        return;
    }
    if (entering.Entering == key) {
        let_through();
    } else if (entering.Entering != 0) {
        insert(QString(QLatin1Char(entering.Entering)));
    }
}

void TextField::TypeText(const QString& text) {
    const QPointer<TextField> self(this);
    QString entered; // put in at once: laying out a long line anew for each character would take seconds
    for (const char key : text.toLatin1()) {
        const controls::KeyEntry entering = filter_ ? filter_(key) : key;
        if (self.isNull() || !CanTake()) {
            return;
        }
        if (entering.Entering != 0) {
            entered += QLatin1Char(entering.Entering);
        }
        if (entering.Refused) {
            break;
        }
    }
    if (!entered.isEmpty()) {
        insert(entered);
    }
}

void TextField::PasteFrom(int clipboard_mode) {
    QString text = QGuiApplication::clipboard()->text(static_cast<QClipboard::Mode>(clipboard_mode));
    // A line ends here: an Enter that nobody pressed would send a half-pasted value.
    const qsizetype end = text.indexOf(QRegularExpression(QStringLiteral("[\r\n]")));
    TypeText(end < 0 ? text : text.left(end));
}

/// Without anything typed the keys of undo and redo are not the field's.
bool TextField::event(QEvent* event) {
    const bool key = event->type() == QEvent::ShortcutOverride || event->type() == QEvent::KeyPress;
    if (key && !typed_ && IsUndoOrRedo(*static_cast<QKeyEvent*>(event))) {
        event->ignore();
        return event->type() == QEvent::KeyPress;
    }
    return QLineEdit::event(event);
}

void TextField::keyPressEvent(QKeyEvent* event) {
    fresh_ = false;
    offered_ = false;
    if (isReadOnly()) {
        QLineEdit::keyPressEvent(event);
        return;
    }
    if (event->matches(QKeySequence::Paste)) {
        PasteFrom(QClipboard::Clipboard);
    } else if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) {
        event->accept();
        Enter();
    } else if (event->key() == Qt::Key_Escape && typed_) {
        event->accept();
        const QPointer<TextField> self(this);
        emit GivenUp();
        if (self != nullptr) {
            selectAll();
        }
    } else if (event->key() == Qt::Key_Backspace) {
        Take(controls::BackspaceKey, [this, event] { QLineEdit::keyPressEvent(event); });
    } else if (IsTyped(*event)) {
        event->accept();
        TypeText(event->text());
    } else {
        QLineEdit::keyPressEvent(event);
    }
}

void TextField::inputMethodEvent(QInputMethodEvent* event) {
    const QString commit = event->commitString();
    if (isReadOnly() || commit.isEmpty()) {
        QLineEdit::inputMethodEvent(event);
        return;
    }
    QInputMethodEvent without_text;
    QLineEdit::inputMethodEvent(&without_text);
    TypeText(commit);
    event->accept();
}

void TextField::focusInEvent(QFocusEvent* event) {
    fresh_ = fresh_ || event->reason() == Qt::MouseFocusReason;
    QLineEdit::focusInEvent(event);
    if (offered_) {
        selectAll(); // a message may have stood over it meanwhile
    }
}

void TextField::focusOutEvent(QFocusEvent* event) {
    offered_ = offered_ && event->reason() != Qt::MouseFocusReason && event->reason() != Qt::TabFocusReason &&
               event->reason() != Qt::BacktabFocusReason;
    // The window may be activated by the same click.
    fresh_ = fresh_ && event->reason() == Qt::ActiveWindowFocusReason;
    QLineEdit::focusOutEvent(event);
}

void TextField::mouseReleaseEvent(QMouseEvent* event) {
    if (event->button() == Qt::MiddleButton) {
        if (!isReadOnly() && QGuiApplication::clipboard()->supportsSelection()) {
            PasteFrom(QClipboard::Selection);
        }
        return;
    }
    QLineEdit::mouseReleaseEvent(event);
    if (std::exchange(fresh_, false) && !hasSelectedText()) {
        selectAll();
    }
}

void TextField::contextMenuEvent(QContextMenuEvent* event) {
    auto* menu = new QMenu(this);
    menu->setAttribute(Qt::WA_DeleteOnClose);
    menu->addAction(QStringLiteral("Cut"), this, &QLineEdit::cut)->setEnabled(hasSelectedText() && !isReadOnly());
    menu->addAction(QStringLiteral("Copy"), this, &QLineEdit::copy)->setEnabled(hasSelectedText());
    menu->addAction(QStringLiteral("Paste"), this, [this] { PasteFrom(QClipboard::Clipboard); })
        ->setEnabled(!isReadOnly());
    menu->addSeparator();
    menu->addAction(QStringLiteral("Select all"), this, &QLineEdit::selectAll)->setEnabled(!text().isEmpty());
    menu->popup(event->globalPos());
}

} // namespace nrv::ui
