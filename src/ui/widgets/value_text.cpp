#include "ui/widgets/value_text.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QPainter>

namespace nrv::ui {

ValueText::ValueText(QWidget* parent) : QLabel(parent), Spoken(QAccessible::StaticText) {
    InWords = [this] { return text(); };
    setTextFormat(Qt::PlainText);
    setAlignment(Qt::AlignCenter);
}

void ValueText::SetMarked(bool marked) {
    if (marked_ != marked) {
        marked_ = marked;
        update();
    }
}

void ValueText::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    QPainter painter(this);
    QColor ink = isEnabled() ? theme.Text : theme.Disabled;
    if (marked_) {
        DrawBox(painter, rect(), Qt::yellow, theme.Line, 3.0);
        ink = Qt::black;
    }
    painter.setPen(ink);
    DrawFitted(painter, rect(), Qt::AlignCenter, text());
}

} // namespace nrv::ui
