#include "ui/application.h"
#include "ui/look/theme.h"

#include <QApplication>

#include <filesystem>

int main(int argc, char** argv) {
    QApplication toolkit(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("nrv718"));
    QGuiApplication::setApplicationDisplayName(QString());
    QGuiApplication::setDesktopFileName(QStringLiteral("nrv718")); // whose icon a desktop shows
    nrv::ui::ApplyTheme(toolkit);
    nrv::ui::Application application(std::filesystem::current_path());
    application.Start();
    return QApplication::exec();
}
