#pragma once

#include <QObject>
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

} // namespace nrv::test
