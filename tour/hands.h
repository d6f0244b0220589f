#pragma once

#include "driver/driver.h"

#include <QLineEdit>
#include <QTest>

/// What the steps of the tour take hold of.
namespace nrv::tour {

inline QWidget* ControlWindow() {
    return driver::Find(QStringLiteral("FrmCtrl(0)"));
}

inline QWidget* Control(const char* name) {
    return driver::Find(QLatin1String(name), ControlWindow());
}

inline void Type(QWidget* box, const QString& text) {
    auto* edit = qobject_cast<QLineEdit*>(box);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, text);
}

} // namespace nrv::tour
