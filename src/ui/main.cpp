#include "ui/application.h"
#include "ui/look/theme.h"

#include <QApplication>

#include <clocale>
#include <filesystem>

int main(int argc, char** argv) {
    QApplication toolkit(argc, argv);
    // The system's reasons stand within sentences of ours, which are English and of single bytes.
    std::setlocale(LC_MESSAGES, "C");
    QCoreApplication::setApplicationName(QStringLiteral("nrv718"));
    QGuiApplication::setApplicationDisplayName(QString());
    nrv::ui::ApplyTheme(toolkit);
    nrv::ui::Application application(std::filesystem::current_path());
    application.Start();
    return QApplication::exec();
}
