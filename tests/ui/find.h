#pragma once

#include <QAbstractButton>
#include <QLabel>
#include <QObject>
#include <QPushButton>
#include <QString>
#include <QWidget>

namespace nrv::test {

inline QString Name(const char* text) {
    return QString::fromLatin1(text);
}

/// The one of a name below a parent; a test without it cannot go on.
template <class Widget>
Widget* Find(const QObject& parent, const char* name) {
    auto* found = parent.findChild<Widget*>(Name(name));
    if (found == nullptr) {
        qFatal("there is no %s", name);
    }
    return found;
}

/// True when a widget lies inside the window with all of its parents.
inline bool LiesInside(const QWidget& widget) {
    for (const QWidget* inner = &widget; !inner->isWindow(); inner = inner->parentWidget()) {
        if (!inner->parentWidget()->rect().contains(inner->geometry())) {
            return false;
        }
    }
    return true;
}

/// True when the whole of a button's or label's text has room in it.
inline bool TextFits(const QWidget& widget) {
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return label->fontMetrics().horizontalAdvance(label->text()) <= label->contentsRect().width() &&
               label->fontMetrics().height() <= label->height();
    }
    if (const auto* plain = qobject_cast<const QPushButton*>(&widget)) {
        return plain->fontMetrics().horizontalAdvance(plain->text()) + 12 <= plain->width();
    }
    const auto* button = qobject_cast<const QAbstractButton*>(&widget);
    return button == nullptr || button->sizeHint().width() <= button->width();
}

} // namespace nrv::test
