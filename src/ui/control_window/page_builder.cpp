#include "ui/control_window/page_builder.h"

#include "ui/look/theme.h"

namespace nrv::ui {

QString ControlName(std::string_view name, int index) {
    const QString text = QString::fromLatin1(name.data(), static_cast<qsizetype>(name.size()));
    return index == controls::NoIndex ? text : text + u'(' + QString::number(index) + u')';
}

void PageBuilder::Enter(QWidget& widget, std::string_view name, int index) {
    const QString object_name = ControlName(name, index);
    widget.setObjectName(object_name);
    widgets_.insert(object_name, &widget);
}

void PageBuilder::AddCaption(QWidget& parent, std::string_view name, int index, const QRect& place) {
    captions_.insert(ControlName(name, index), &AddText(parent, place, {}, TextRole::Caption));
}

QLabel& PageBuilder::AddText(QWidget& parent, const QRect& place, const QString& text, TextRole role,
                             Qt::Alignment alignment) {
    auto* label = new QLabel(&parent);
    label->setTextFormat(Qt::PlainText);
    label->setText(text);
    label->setAlignment(alignment);
    label->setGeometry(place);
    if (role != TextRole::Plain) {
        label->setFont(role == TextRole::Caption ? CaptionFont() : ScaleFont());
        label->setForegroundRole(QPalette::PlaceholderText);
    }
    return *label;
}

} // namespace nrv::ui
