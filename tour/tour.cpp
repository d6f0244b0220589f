#include "tour.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QMdiSubWindow>
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
constexpr int ThirdRow = 2;
constexpr int Out2Tab = 3;

const QString Yes = QStringLiteral("Yes");

QWidget* ControlWindow() {
    return Find(QStringLiteral("FrmCtrl(0)"));
}

QWidget* Control(const char* name) {
    return Find(QLatin1String(name), ControlWindow());
}

void Type(QWidget* box, const QString& text) {
    auto* edit = qobject_cast<QLineEdit*>(box);
    edit->setFocus();
    edit->selectAll();
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClicks(edit, text);
}

} // namespace

Tour::Tour(ui::Application& application, std::filesystem::path pictures)
    : application_(application), pictures_(std::move(pictures)) {
    boxes_.OnBox = [this](QWidget& box) { Picture(box, "question"); };
}

bool Tour::Run() {
    const bool whole = Connect() && OpenDevice(ThirdRow, 0) && MoveGain() && MuteAndRoute() && ShapeResponse() &&
                       SetDelays() && LookAtTabs() && EditNames() && SaveAndLoad() && StoreAndRead() && CopyOutput() &&
                       LockAndUnlock() && CloseWindow();
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
            return application_.Logic().State.FoundLast >= ThirdRow && !list.Timer1.Running() &&
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

bool Tour::OpenDevice(int row, int slot) {
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

bool Tour::EditNames() {
    boxes_.Next(Yes);
    return WithTool(controls::EditNamesTool, QStringLiteral("FrmEditLabel"),
                    [this](QWidget& dialog) {
                        Type(Find(QStringLiteral("Text1(3)"), &dialog), QStringLiteral("Sub L"));
                        Picture(dialog, "names");
                        driver::Click(Find(QStringLiteral("Command1(0)"), &dialog));
                    }) &&
           Check(Form().Label300[3].Caption() == "Sub L", "a channel takes its new name");
}

bool Tour::SaveAndLoad() {
    const QString file = QStringLiteral("tour.n91");
    const auto choose = [&](const char* name) {
        return [this, file, name](QWidget& dialog) {
            dialog.findChild<QLineEdit*>()->setText(file);
            Picture(dialog, name);
            driver::Press(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
        };
    };
    const std::filesystem::path saved = application_.Logic().State.AppFolder / "preset" / file.toStdString();
    std::error_code ignored;
    std::filesystem::remove(saved, ignored);
    const auto image = application_.Logic().Stores.PresetImage[5].PresetBody;
    if (!WithTool(controls::SavePresetTool, QStringLiteral("FileDialog"), choose("save")) ||
        !Check(std::filesystem::file_size(saved, ignored) == sizeof(model::PresetImageRow), "a preset is saved")) {
        return false;
    }
    ShowTab(controls::GainsTab);
    driver::Press(Control("Slider1(0)"), Qt::Key_PageUp);
    return WithTool(controls::LoadPresetTool, QStringLiteral("FileDialog"), choose("load")) &&
           Check(application_.Logic().Stores.PresetImage[5].PresetBody[1] == image[1], "a load brings the gain back");
}

bool Tour::StoreAndRead() {
    boxes_.Next(Yes);
    const bool stored = WithTool(controls::StorePresetTool, QStringLiteral("FrmStore"), [this](QWidget& dialog) {
        driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1"), &dialog), 2);
        Type(Find(QStringLiteral("Text1"), &dialog), QStringLiteral("Tour"));
        Picture(dialog, "store");
        driver::Click(Find(QStringLiteral("Command1(1)"), &dialog));
    });
    if (!stored || !Check(application_.Logic().Stores.ParamValues[5].PresetUsed[2] == 85.0, "a preset is stored")) {
        return false;
    }
    boxes_.Next(Yes);
    return WithTool(controls::ReadPresetTool, QStringLiteral("FrmRead"),
                    [this](QWidget& dialog) {
                        QWidget* list = Find(QStringLiteral("List1"), &dialog);
                        driver::Press(list, Qt::Key_Down);
                        driver::Press(list, Qt::Key_Down);
                        Picture(dialog, "read");
                        driver::Click(Find(QStringLiteral("Command1(1)"), &dialog));
                    }) &&
           Check(Form().Window.Caption().ends_with("come from DEVICE - Tour            "), "a preset is read back");
}

bool Tour::CopyOutput() {
    boxes_.Next(Yes);
    const bool copied = WithTool(controls::CopyOutputTool, QStringLiteral("FrmCopyOut"), [this](QWidget& dialog) {
        driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1(0)"), &dialog), 1);
        driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1(1)"), &dialog), 4);
        Picture(dialog, "copy-output");
        driver::Click(Find(QStringLiteral("Command1"), &dialog));
    });
    const bool shown = WithTool(controls::CopyInputTool, QStringLiteral("FrmCopyIn"), [this](QWidget& dialog) {
        Picture(dialog, "copy-input");
        dialog.close();
    });
    return copied && shown &&
           Check(Form().Slider1[6].Position() == Form().Slider1[3].Position(), "an output is copied");
}

bool Tour::LockAndUnlock() {
    for (const bool lock : {true, false}) {
        const bool done =
            WithTool(controls::PasswordTool, QStringLiteral("FrmPassword"), [this, lock](QWidget& dialog) {
                QTest::keyClicks(Find(QStringLiteral("Text1"), &dialog), QStringLiteral("000000"));
                Picture(dialog, "password");
                driver::Click(Find(QStringLiteral("Command1(0)"), &dialog));
                driver::Click(Find(QStringLiteral("Check1"), &dialog));
                driver::Click(Find(QStringLiteral("Command1(3)"), &dialog));
                Picture(dialog, lock ? "locked" : "unlocked");
                dialog.close();
            });
        if (!done || !Check((application_.Logic().Stores.ParamValues[5].LockFlag == 1.0) == lock, "the lock changes")) {
            return false;
        }
        Picture(*ControlWindow(), lock ? "locked-window" : "unlocked-window");
    }
    return true;
}

bool Tour::CloseWindow() {
    boxes_.Next(Yes);
    qobject_cast<QMdiSubWindow*>(ControlWindow())->close();
    return Check(WaitUntil([] { return ControlWindow() == nullptr || !ControlWindow()->isVisible(); }),
                 "the control window closes");
}

void Tour::LeaveProgram() {
    std::printf("The pictures are in %s\n", std::filesystem::absolute(pictures_).c_str());
    std::fflush(stdout);
    boxes_.Next(Yes);
    Find(QStringLiteral("MDIFrmMain"))->close(); // ends the process
}

bool Tour::WithTool(int tool, const QString& dialog, const std::function<void(QWidget&)>& action) {
    const driver::WhenShown shown(dialog, action);
    driver::Click(Find(QStringLiteral("Command2(%1)").arg(tool), ControlWindow()));
    return Check(shown.Done(), "a tool button opens " + dialog.toStdString());
}

void Tour::ShowTab(int tab) {
    driver::ShowTab(Control("SSTab1"), tab);
}

bool Tour::Check(bool worked, const std::string& step) {
    if (!worked) {
        std::fprintf(stderr, "The tour stopped, this did not work: %s.\n", step.c_str());
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
