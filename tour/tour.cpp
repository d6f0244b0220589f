#include "tour.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QMdiSubWindow>
#include <QTimer>

#include <cstdio>

namespace nrv::tour {
namespace {

using driver::Find;
using driver::FindAs;
using driver::WaitUntil;

constexpr int RowOfFirstChoice = 2; ///< the third device of the list
constexpr int ListTime = 60'000;    ///< ms: a search of 33 IDs and the reading of every device found

QWidget* ControlWindow() {
    return Find(QStringLiteral("FrmCtrl(0)"));
}

} // namespace

Tour::Tour(ui::Application& application, std::filesystem::path pictures)
    : application_(application), pictures_(std::move(pictures)) {
    boxes_.OnBox = [this](QWidget& box) { Picture(box, "question"); };
}

bool Tour::Run() {
    application_.Start();
    QWidget* splash = Find(QStringLiteral("frmSplash"));
    if (!Check(splash != nullptr && WaitUntil([&] { return splash->isVisible(); }), "the splash window shows")) {
        return false;
    }
    Picture(*splash, "splash");

    // The dialog is modal and the search runs behind it, inside the splash timer's event: both are met from timers.
    bool chosen = false;
    QTimer dialog_watch;
    QObject::connect(&dialog_watch, &QTimer::timeout, &dialog_watch, [&] {
        if (QWidget* dialog = Find(QStringLiteral("FrmSelect")); dialog != nullptr && dialog->isVisible()) {
            dialog_watch.stop();
            chosen = ChooseConnection();
        }
    });
    dialog_watch.start(50);
    bool search_seen = false;
    QTimer search_watch;
    QObject::connect(&search_watch, &QTimer::timeout, &search_watch, [&] {
        controls::Label& progress = application_.Logic().Splash.Progress;
        if (chosen && !search_seen && progress.Visible() && progress.Caption().size() > 4) {
            search_seen = true;
            Picture(*Find(QStringLiteral("frmSplash")), "search");
        }
    });
    search_watch.start(20);

    const bool listed = WaitForList();
    search_watch.stop();
    const bool whole = listed && OpenDevice() && LookAtTabs() && MoveGain() && CloseWindow();
    if (whole) {
        LeaveProgram();
    }
    return whole;
}

bool Tour::ChooseConnection() {
    QWidget* dialog = Find(QStringLiteral("FrmSelect"));
    Picture(*dialog, "connection");
    driver::ClickMark(Find(QStringLiteral("Link(1)"), dialog));
    driver::ClickMark(Find(QStringLiteral("Connection(2)"), dialog));
    Picture(*dialog, "connection-list");
    driver::ClickMark(Find(QStringLiteral("Connection(3)"), dialog));
    driver::Choose(FindAs<QComboBox>(QStringLiteral("ComSelect"), dialog), 1);
    Picture(*dialog, "connection-chosen");
    driver::Click(Find(QStringLiteral("Proceed"), dialog));
    return true;
}

bool Tour::WaitForList() {
    const controls::FrmSearchNet& list = application_.Logic().List;
    const bool listed = WaitUntil(
        [&] {
            return application_.Logic().State.FoundLast >= 0 && !list.Timer1.Running() &&
                   !list.SearchingNotice.Visible();
        },
        ListTime);
    if (!Check(listed, "the devices are found and listed")) {
        return false;
    }
    Picture(*Find(QStringLiteral("MDIFrmMain")), "list");
    return true;
}

bool Tour::OpenDevice() {
    const int row = std::min(RowOfFirstChoice, application_.Logic().State.FoundLast);
    driver::DoubleClickRow(Find(QStringLiteral("Devices")), row);
    if (!Check(WaitUntil([] { return ControlWindow() != nullptr && ControlWindow()->isVisible(); }),
               "a double click opens the control window")) {
        return false;
    }
    Picture(*Find(QStringLiteral("MDIFrmMain")), "window");
    return true;
}

bool Tour::LookAtTabs() {
    QWidget* tabs = Find(QStringLiteral("SSTab1"), ControlWindow());
    for (int tab = 0; tab < controls::TabCount; ++tab) {
        driver::ShowTab(tabs, tab);
        if (!Check(application_.Logic().Windows.Current().SSTab1.Tab() == tab, "a click shows its tab")) {
            return false;
        }
        Picture(*ControlWindow(), "tab-" + std::to_string(tab));
    }
    return true;
}

bool Tour::MoveGain() {
    controls::FrmCtrl& form = application_.Logic().Windows.Current();
    driver::ShowTab(Find(QStringLiteral("SSTab1"), ControlWindow()), controls::GainsTab);
    const int before = form.Slider1[3].Position();
    driver::Press(Find(QStringLiteral("Slider1(3)"), ControlWindow()), Qt::Key_Up);
    if (!Check(form.Slider1[3].Position() == before - 1 && application_.Logic().Link.TransactionDone,
               "a key moves a gain and the device answers")) {
        return false;
    }
    Picture(*ControlWindow(), "gain-moved");
    return true;
}

bool Tour::CloseWindow() {
    boxes_.Next(QStringLiteral("Yes"));
    qobject_cast<QMdiSubWindow*>(ControlWindow())->close();
    return Check(WaitUntil([] { return ControlWindow() == nullptr || !ControlWindow()->isVisible(); }),
                 "the control window closes");
}

void Tour::LeaveProgram() {
    std::printf("The pictures are in %s\n", std::filesystem::absolute(pictures_).c_str());
    std::fflush(stdout);
    boxes_.Next(QStringLiteral("Yes"));
    Find(QStringLiteral("MDIFrmMain"))->close(); // ends the process
}

bool Tour::Check(bool worked, const std::string& step) {
    if (!worked) {
        std::fprintf(stderr, "The tour stopped: not so: %s.\n", step.c_str());
    }
    return worked;
}

void Tour::Picture(QWidget& window, const std::string& name) {
    const std::string number = std::to_string(++number_);
    const std::filesystem::path file = pictures_ / ((number.size() < 2 ? "0" : "") + number + "-" + name + ".png");
    if (!window.grab().save(QString::fromStdString(file.string()))) {
        std::fprintf(stderr, "No picture could be saved as %s.\n", file.c_str());
    }
}

} // namespace nrv::tour
