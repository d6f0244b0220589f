#include "ui/accessible/spoken.h"

#include "ui/accessible/rows.h"
#include "ui/widgets/device_rows.h"
#include "ui/widgets/text_field.h"

#include <QAbstractButton>
#include <QAccessibleWidget>
#include <QPointer>
#include <QRadioButton>

#include <algorithm>

namespace nrv::ui {
namespace {

class SpokenInterface : public QAccessibleWidget, public QAccessibleValueInterface {
  public:
    SpokenInterface(QWidget& widget, Spoken& spoken) : QAccessibleWidget(&widget, spoken.Role), spoken_(spoken) {}

    QString text(QAccessible::Text kind) const override {
        QString words = spoken_.InWords ? spoken_.InWords() : QString();
        if (kind == QAccessible::Value || (kind == QAccessible::Description && !words.isEmpty())) {
            return words;
        }
        return QAccessibleWidget::text(kind);
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::ValueInterface && spoken_.SpokenScale()) {
            return static_cast<QAccessibleValueInterface*>(this);
        }
        return QAccessibleWidget::interface_cast(type);
    }

    QVariant currentValue() const override {
        return Of([](const Spoken::Scale& scale) { return scale.Now; });
    }
    QVariant minimumValue() const override {
        return Of([](const Spoken::Scale& scale) { return scale.Minimum; });
    }
    QVariant maximumValue() const override {
        return Of([](const Spoken::Scale& scale) { return scale.Maximum; });
    }
    QVariant minimumStepSize() const override { return 1; }
    void setCurrentValue(const QVariant& value) override {
        const auto scale = spoken_.SpokenScale();
        bool is_number = false;
        const double number = value.toDouble(&is_number);
        if (scale && is_number && widget()->isEnabled()) {
            spoken_.TakeSpoken(qRound(std::clamp<double>(number, scale->Minimum, scale->Maximum)));
        }
    }

    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (widget()->isEnabled() && !spoken_.SpokenAction().isEmpty()) {
            names.prepend(spoken_.SpokenAction());
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (widget()->isEnabled() && !name.isEmpty() && name == spoken_.SpokenAction()) {
            spoken_.DoSpokenAction();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

  private:
    template <class Part>
    QVariant Of(Part part) const {
        const auto scale = spoken_.SpokenScale();
        return scale ? QVariant(part(*scale)) : QVariant();
    }

    Spoken& spoken_;
};

/// A box to type in: what a reader puts into it is typed, and goes through the box's filter of keys.
class FieldInterface : public SpokenInterface,
                       public QAccessibleTextInterface,
                       public QAccessibleEditableTextInterface {
  public:
    explicit FieldInterface(TextField& field) : SpokenInterface(field, field), field_(field) {}

    QString text(QAccessible::Text kind) const override {
        return kind == QAccessible::Value ? field_.displayText() : SpokenInterface::text(kind);
    }
    /// A whole value, which is entered too.
    void setText(QAccessible::Text kind, const QString& text) override {
        if (kind == QAccessible::Value) {
            const QPointer<TextField> field(&field_);
            field_.TypeOver(0, field_.text().size(), text);
            if (!field.isNull()) {
                field->Enter();
            }
        } else {
            SpokenInterface::setText(kind, text);
        }
    }

    QAccessible::State state() const override {
        QAccessible::State state = SpokenInterface::state();
        state.editable = true;
        state.readOnly = field_.isReadOnly();
        state.passwordEdit = field_.echoMode() != QLineEdit::Normal;
        state.selectableText = true;
        return state;
    }

    void* interface_cast(QAccessible::InterfaceType type) override {
        if (type == QAccessible::TextInterface) {
            return static_cast<QAccessibleTextInterface*>(this);
        }
        if (type == QAccessible::EditableTextInterface) {
            return static_cast<QAccessibleEditableTextInterface*>(this);
        }
        return SpokenInterface::interface_cast(type);
    }

    void selection(int index, int* start, int* end) const override {
        const bool there = index == 0 && field_.hasSelectedText();
        *start = there ? field_.selectionStart() : 0;
        *end = there ? field_.selectionEnd() : 0;
    }
    int selectionCount() const override { return field_.hasSelectedText() ? 1 : 0; }
    void addSelection(int start, int end) override { setSelection(0, start, end); }
    void removeSelection(int index) override {
        if (index == 0) {
            field_.deselect();
        }
    }
    void setSelection(int index, int start, int end) override {
        if (index == 0) {
            field_.setSelection(start, end - start);
        }
    }
    int cursorPosition() const override { return field_.cursorPosition(); }
    void setCursorPosition(int position) override { field_.setCursorPosition(position); }
    QString text(int start, int end) const override {
        return field_.displayText().mid(start, end < 0 ? -1 : end - start);
    }
    int characterCount() const override { return static_cast<int>(field_.displayText().size()); }
    QRect characterRect(int offset) const override {
        return offset >= 0 && offset < characterCount() ? rect() : QRect();
    }
    int offsetAtPoint(const QPoint& point) const override {
        return rect().contains(point) ? field_.cursorPositionAt(field_.mapFromGlobal(point)) : -1;
    }
    void scrollToSubstring(int start, int /*end*/) override { field_.setCursorPosition(start); }
    QString attributes(int /*offset*/, int* start, int* end) const override {
        *start = 0;
        *end = characterCount();
        return {};
    }

    void deleteText(int start, int end) override { field_.TypeOver(start, end, {}); }
    void insertText(int offset, const QString& text) override { field_.TypeOver(offset, offset, text); }
    void replaceText(int start, int end, const QString& text) override { field_.TypeOver(start, end, text); }

  private:
    TextField& field_;
};

/// A button with two states, or one that the toolkit does not know. The toolkit's own would toggle it with no click,
/// and nothing would be sent.
class ButtonInterface : public QAccessibleWidget {
  public:
    explicit ButtonInterface(QAbstractButton& button) : QAccessibleWidget(&button, RoleOf(button)), button_(button) {}

    QString text(QAccessible::Text kind) const override {
        const QString text = QAccessibleWidget::text(kind);
        return kind == QAccessible::Name && text.isEmpty() ? button_.text().remove(u'&') : text;
    }
    QAccessible::State state() const override {
        QAccessible::State state = QAccessibleWidget::state();
        state.checkable = button_.isCheckable();
        state.checked = button_.isChecked();
        state.pressed = button_.isDown();
        return state;
    }
    QStringList actionNames() const override {
        QStringList names = QAccessibleWidget::actionNames();
        if (button_.isEnabled()) {
            names.prepend(button_.isCheckable() ? toggleAction() : pressAction());
        }
        return names;
    }
    void doAction(const QString& name) override {
        if (name == toggleAction() || name == pressAction()) {
            button_.click();
        } else {
            QAccessibleWidget::doAction(name);
        }
    }

  private:
    static QAccessible::Role RoleOf(const QAbstractButton& button) {
        return qobject_cast<const QRadioButton*>(&button) != nullptr ? QAccessible::RadioButton
               : button.isCheckable()                                ? QAccessible::CheckBox
                                                                     : QAccessible::Button;
    }

    QAbstractButton& button_;
};

QAccessibleInterface* MakeSpoken(const QString& class_name, QObject* object) {
    if (auto* field = qobject_cast<TextField*>(object)) {
        return new FieldInterface(*field);
    }
    if (auto* rows = qobject_cast<DeviceRows*>(object)) {
        return MakeSpokenRows(*rows);
    }
    if (auto* button = qobject_cast<QAbstractButton*>(object);
        button != nullptr && (button->isCheckable() || class_name.startsWith(QLatin1String("nrv::")))) {
        return new ButtonInterface(*button);
    }
    auto* widget = qobject_cast<QWidget*>(object);
    auto* spoken = widget != nullptr ? dynamic_cast<Spoken*>(widget) : nullptr;
    return spoken != nullptr ? new SpokenInterface(*widget, *spoken) : nullptr;
}

} // namespace

void InstallSpoken() {
    [[maybe_unused]] static const bool once = [] {
        QAccessible::installFactory(MakeSpoken);
        return true;
    }();
}

} // namespace nrv::ui
