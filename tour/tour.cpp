#include "tour.h"

#include "hands.h"

#include <QComboBox>
#include <QMdiSubWindow>
#include <QTimer>

#include <algorithm>
#include <cstdio>

namespace nrv::tour {
namespace {

using driver::Find;
using driver::FindAs;
using driver::WaitUntil;

constexpr int ListTime = 60'000; ///< ms: a search of 33 IDs and the reading of every device found
constexpr int ShownId = 5;       ///< of the device that the tour works on
constexpr int LeastFound = 3;
constexpr QSize DeskSize(970, 640); ///< pixels: the list beside a control window
constexpr int ToolsHeight = 84;     ///< pixels: a control window's title, tool buttons and tabs

} // namespace

Tour::Tour(ui::Application& application, std::filesystem::path pictures)
    : application_(application), pictures_(std::move(pictures)) {
    boxes_.OnBox = [this](QWidget& box) { Picture(box, "question"); };
}

bool Tour::Run() {
    const bool whole = Connect() && OpenDevice(ShownId, "window") && MoveGain() && MuteAndRoute() && ShapeResponse() &&
                       SetDelays() && TakeBack() && LookAtTabs() && EditNames() && SaveAndLoad() && StoreAndRead() &&
                       CopyOutput() && LockAndUnlock() && CloseWindow() && WorkExample() &&
                       Check(pictures_whole_, "every picture shows what its numbers stand for");
    if (whole) {
        LeaveProgram();
    }
    return whole;
}

bool Tour::Connect() {
    application_.Start();
    QWidget* splash = Find(QStringLiteral("frmSplash"));
    if (!Check(splash != nullptr && WaitUntil([&] { return splash->isVisible(); }), "the splash window shows")) {
        return false;
    }
    Picture(*splash, "splash");
    // The search runs inside the splash timer's event, so it is met from a timer.
    bool search_seen = false;
    QTimer search_watch;
    QObject::connect(&search_watch, &QTimer::timeout, &search_watch, [&] {
        const controls::Label& progress = application_.Logic().Splash.Progress;
        if (!search_seen && progress.Visible() && progress.Caption().size() > 5) {
            search_seen = true;
            Picture(*Find(QStringLiteral("frmSplash")), "search");
        }
    });
    search_watch.start(20);
    const driver::WhenShown dialog(QStringLiteral("FrmSelect"), [this](QWidget& window) { ChooseConnection(window); });
    const controls::FrmSearchNet& list = application_.Logic().List;
    const bool listed = WaitUntil(
        [&] {
            return application_.Logic().State.FoundLast >= LeastFound - 1 && !list.Timer1.Running() &&
                   !list.SearchingNotice.Visible();
        },
        ListTime);
    search_watch.stop();
    if (!Check(listed, "at least three devices are found and listed")) {
        return false;
    }
    // A headless screen is small; the pictures show the window as a desk has it.
    Find(QStringLiteral("MDIFrmMain"))->resize(DeskSize);
    Picture(*Find(QStringLiteral("MDIFrmMain")), "list");
    return true;
}

void Tour::ChooseConnection(QWidget& dialog) {
    Picture(dialog, "connection");
    driver::ClickMark(Find(QStringLiteral("Link(1)"), &dialog));
    driver::ClickMark(Find(QStringLiteral("Connection(1)"), &dialog));
    Picture(dialog, "connection-twenty");
    driver::ClickMark(Find(QStringLiteral("Connection(2)"), &dialog));
    Picture(dialog, "connection-list",
            {{"PortFrame", Qt::AlignRight | Qt::AlignTop},
             {"ConnectionFrame", Qt::AlignRight | Qt::AlignTop},
             {"IdFrame", Qt::AlignRight | Qt::AlignTop},
             {"ComFrame", Qt::AlignRight | Qt::AlignTop},
             {"DeviceIds(0)", Qt::AlignRight | Qt::AlignTop},
             {"Proceed", Qt::AlignRight}});
    driver::ClickMark(Find(QStringLiteral("Connection(3)"), &dialog));
    driver::Choose(FindAs<QComboBox>(QStringLiteral("ComSelect"), &dialog), 1);
    Picture(dialog, "connection-chosen");
    driver::Click(Find(QStringLiteral("Proceed"), &dialog));
}

bool Tour::OpenDevice(int id, const std::string& picture) {
    const auto& found = application_.Logic().State.FoundDevices;
    const auto place = std::ranges::find(found, id);
    if (!Check(place != found.end(), "the device of ID " + std::to_string(id) + " is in the list")) {
        return false;
    }
    const auto row = static_cast<int>(place - found.begin());
    driver::DoubleClickRow(Find(QStringLiteral("Devices")), row);
    if (!Check(WaitUntil([] { return ControlWindow() != nullptr && ControlWindow()->isVisible(); }),
               "a double click opens the control window")) {
        return false;
    }
    Picture(*Find(QStringLiteral("MDIFrmMain")), picture,
            {{"Devices", Qt::AlignCenter},
             {"Command2(9)", Qt::AlignRight},
             {"SSTab1", Qt::AlignBottom},
             {"StatusLine", Qt::AlignLeft}});
    Picture(*ControlWindow(), "tools",
            {{"Command2(0)", Qt::AlignBottom},
             {"Command2(1)", Qt::AlignBottom},
             {"Command2(2)", Qt::AlignBottom},
             {"Command2(3)", Qt::AlignBottom},
             {"Command2(4)", Qt::AlignBottom},
             {"Command2(5)", Qt::AlignBottom},
             {"Command2(7)", Qt::AlignBottom},
             {"Command2(8)", Qt::AlignBottom},
             {"Command2(9)", Qt::AlignBottom}},
            ToolsHeight);
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

void Tour::ShowTab(int tab) {
    driver::ShowTab(Control("SSTab1"), tab);
}

bool Tour::Check(bool worked, const std::string& step) {
    if (!worked) {
        std::fprintf(stderr, "The tour stopped, this did not work: %s.\n", step.c_str());
    } else if (step != told_) {
        std::printf("  %s (picture %d)\n", step.c_str(), number_);
        std::fflush(stdout);
        told_ = step;
    }
    return worked;
}

} // namespace nrv::tour
