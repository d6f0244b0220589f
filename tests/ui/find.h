#pragma once

#include <QObject>
#include <QString>

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

} // namespace nrv::test
