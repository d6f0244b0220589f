#include "tour.h"
#include "ui/look/theme.h"

#include <QApplication>
#include <QDir>
#include <QTimer>

#include <cstdio>

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fputs("usage: nrv718-tour FOLDER-FOR-THE-PICTURES\n", stderr);
        return 2;
    }
    QApplication toolkit(argc, argv);
    nrv::ui::ApplyTheme(toolkit);
    nrv::ui::Application application(QDir::currentPath().toStdString());
    nrv::tour::Tour tour(application, argv[1]);
    // A tour that goes well ends with the program's own end.
    QTimer::singleShot(0, &toolkit, [&] {
        if (!tour.Run()) {
            QCoreApplication::exit(1);
        }
    });
    return QApplication::exec();
}
