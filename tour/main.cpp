#include "tour.h"
#include "ui/look/theme.h"

#include <QApplication>
#include <QDir>
#include <QPalette>
#include <QTimer>

#include <cstdio>
#include <string_view>

int main(int argc, char** argv) {
    const bool dark = argc == 3 && argv[2] == std::string_view("--dark");
    if (argc != 2 && !dark) {
        std::fputs("usage: nrv718-tour FOLDER-FOR-THE-PICTURES [--dark], or --try-display\n", stderr);
        return 2;
    }
    const bool trial = argv[1] == std::string_view("--try-display");
    QApplication toolkit(argc, argv);
    if (trial) {
        return 0; // a display that does not answer has ended the process
    }
    if (dark) {
        QApplication::setPalette(QPalette(Qt::black)); // as a dark desktop has it
    }
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
