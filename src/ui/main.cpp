#include "ui/application.h"
#include "ui/look/theme.h"

#include <QApplication>
#include <QDir>

int main(int argc, char** argv) {
    QApplication toolkit(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("nrv718"));
    QGuiApplication::setApplicationDisplayName(QString());
    nrv::ui::ApplyTheme(toolkit);
    nrv::ui::Application application(QDir::currentPath().toStdString());
    application.Start();
    return QApplication::exec();
}
