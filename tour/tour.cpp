#include "tour.h"

#include "hands.h"

#include <QAbstractButton>
#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMdiSubWindow>
#include <QMenu>
#include <QTest>
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
constexpr int Out2Tab = 3;

} // namespace

Tour::Tour(ui::Application& application, std::filesystem::path pictures)
    : application_(application), pictures_(std::move(pictures)) {
    boxes_.OnBox = [this](QWidget& box) { Picture(box, "question"); };
}

bool Tour::Run() {
    const bool whole = Connect() && OpenDevice(ShownId, 0) && MoveGain() && MuteAndRoute() && ShapeResponse() &&
                       SetDelays() && TakeBack() && LookAtTabs() && EditNames() && SaveAndLoad() && StoreAndRead() &&
                       CopyOutput() && LockAndUnlock() && CloseWindow();
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
    Find(QStringLiteral("MDIFrmMain"))->resize(1120, 720);
    Picture(*Find(QStringLiteral("MDIFrmMain")), "list");
    return true;
}

void Tour::ChooseConnection(QWidget& dialog) {
    Picture(dialog, "connection");
    driver::ClickMark(Find(QStringLiteral("Link(1)"), &dialog));
    driver::ClickMark(Find(QStringLiteral("Connection(1)"), &dialog));
    Picture(dialog, "connection-twenty");
    driver::ClickMark(Find(QStringLiteral("Connection(2)"), &dialog));
    Picture(dialog, "connection-list");
    driver::ClickMark(Find(QStringLiteral("Connection(3)"), &dialog));
    driver::Choose(FindAs<QComboBox>(QStringLiteral("ComSelect"), &dialog), 1);
    Picture(dialog, "connection-chosen");
    driver::Click(Find(QStringLiteral("Proceed"), &dialog));
}

bool Tour::OpenDevice(int id, int slot) {
    const auto& found = application_.Logic().State.FoundDevices;
    const auto place = std::ranges::find(found, id);
    if (!Check(place != found.end(), "the device of ID " + std::to_string(id) + " is in the list")) {
        return false;
    }
    const auto row = static_cast<int>(place - found.begin());
    driver::DoubleClickRow(Find(QStringLiteral("Devices")), row);
    const QString name = QStringLiteral("FrmCtrl(%1)").arg(slot);
    if (!Check(WaitUntil([&] { return Find(name) != nullptr && Find(name)->isVisible(); }),
               "a double click opens the control window")) {
        return false;
    }
    Picture(*Find(QStringLiteral("MDIFrmMain")), "window");
    return true;
}

bool Tour::MoveGain() {
    ShowTab(controls::GainsTab);
    const int before = Form().Slider1[3].Position();
    for (int step = 0; step < 8; ++step) {
        driver::Press(Control("Slider1(3)"), Qt::Key_Up);
    }
    driver::Press(Control("Slider1(5)"), Qt::Key_PageDown);
    if (!Check(Form().Slider1[3].Position() == before - 8 && application_.Logic().Link.TransactionDone,
               "keys move a gain and the device answers")) {
        return false;
    }
    // The first poll of the meters comes two seconds after the window.
    const bool lit = WaitUntil(
        [this] { return std::ranges::any_of(Form().Shape1, [](const controls::Shape& lamp) { return lamp.Lit(); }); });
    if (!Check(lit, "the meters move")) {
        return false;
    }
    Picture(*ControlWindow(), "gains");
    return true;
}

bool Tour::MuteAndRoute() {
    driver::Click(Control("Check1(5)"));
    ShowTab(Out2Tab);
    driver::Choose(qobject_cast<QComboBox*>(Control("Combo3(1)")), 2);
    ShowTab(controls::OverviewTab);
    Picture(*ControlWindow(), "overview");
    return Check(Form().Line6[5].Visible() && Form().Line1000[1].Visible() && Form().Line1100[1].Visible(),
                 "a mute and a source show on the block diagram");
}

bool Tour::ShapeResponse() {
    ShowTab(Out2Tab);
    driver::Choose(qobject_cast<QComboBox*>(Control("Combo2(2)")), 9);
    driver::Choose(qobject_cast<QComboBox*>(Control("Combo2(3)")), 8);
    Type(Control("Text8(2)"), QStringLiteral("90"));
    driver::Press(Control("Text8(2)"), Qt::Key_Return);
    Type(Control("Text8(3)"), QStringLiteral("1250"));
    driver::Press(Control("Text8(3)"), Qt::Key_Return);
    driver::ClickMark(Control("Check3(3)"));
    driver::ClickMark(Control("Check5(1)"));
    QWidget* point = Control("Label5(26)");
    const QPoint graph = Control("Picture1(3)")->pos();
    driver::Drag(point, {graph + QPoint(280, 90), graph + QPoint(300, 80), graph + QPoint(320, 75)},
                 [this] { Picture(*ControlWindow(), "point-in-hand"); });
    Picture(*ControlWindow(), "output");
    const bool shaped = Form().Text8[2].Text() == "90" && application_.Logic().Stores.ParamValues[5].PeqGain[26] > 4.0;

    ShowTab(0);
    driver::ClickMark(Control("Check3(0)"));
    for (const auto& [name, steps] : {std::pair("Slider2(2)", 12), std::pair("Slider2(5)", 8)}) {
        for (int step = 0; step < steps; ++step) {
            driver::Press(Control(name), Qt::Key_Up);
        }
    }
    driver::Press(Control("Slider2(7)"), Qt::Key_PageDown);
    Picture(*ControlWindow(), "input");
    return Check(shaped, "filters and a dragged point shape the response");
}

bool Tour::SetDelays() {
    ShowTab(controls::DelaysTab);
    Type(Control("Text2(3)"), QStringLiteral("3.021"));
    driver::Press(Control("Text2(3)"), Qt::Key_Return);
    Picture(*ControlWindow(), "delays");
    return Check(Form().Text2[3].Text() == "3.021 ms", "a typed delay is taken over");
}

bool Tour::TakeBack() {
    QWidget* const main = Find(QStringLiteral("MDIFrmMain"));
    auto* const edit = main->findChild<QMenu*>(QStringLiteral("Edit"));
    edit->popup(main->mapToGlobal(QPoint(40, 20)));
    Picture(*edit, "edit-menu");
    edit->close();
    const auto choose = [main](const char* entry) { main->findChild<QAction*>(QLatin1String(entry))->trigger(); };
    choose("Undo");
    Picture(*main, "undone");
    const bool undone = Form().Text2[3].Text() == "0 ms";
    choose("Redo");
    const bool redone = Form().Text2[3].Text() == "3.021 ms";
    ShowTab(Out2Tab);
    choose("Compare");
    Picture(*ControlWindow(), "compared");
    const bool flat = Form().Slider2[26].Position() == 75;
    choose("Compare");
    return Check(undone && redone && flat && Form().Slider2[26].Position() != 75,
                 "a step is taken back and gone again, and the last preset compared with");
}

bool Tour::LookAtTabs() {
    for (int tab = 0; tab < controls::TabCount; ++tab) {
        ShowTab(tab);
        if (!Check(Form().SSTab1.Tab() == tab, "a click shows its tab")) {
            return false;
        }
        Picture(*ControlWindow(), "tab-" + std::to_string(tab));
    }
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

void Tour::Picture(QWidget& window, const std::string& name) {
    const std::string number = std::to_string(++number_);
    const std::filesystem::path file = pictures_ / ((number.size() < 2 ? "0" : "") + number + "-" + name + ".png");
    if (!window.grab().save(QString::fromStdString(file.string()))) {
        std::fprintf(stderr, "No picture could be saved as %s.\n", file.c_str());
    }
}

} // namespace nrv::tour
