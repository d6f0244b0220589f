#include "hands.h"
#include "tour.h"

#include <QAction>
#include <QComboBox>
#include <QLineEdit>
#include <QMenu>
#include <QTest>

#include <algorithm>

namespace nrv::tour {
namespace {

using driver::Find;
using driver::WaitUntil;

constexpr int Out2Tab = 3;

} // namespace

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
    Picture(*ControlWindow(), "gains",
            {{"Slider1(0)", Qt::AlignLeft},
             {"Shape1(10)", Qt::AlignRight | Qt::AlignTop},
             {"Shape1(16)", Qt::AlignRight | Qt::AlignTop},
             {"Check1(2)", Qt::AlignLeft | Qt::AlignTop},
             {"Check2(3)", Qt::AlignRight},
             {"Slider100", Qt::AlignLeft},
             {"Combo4", Qt::AlignBottom}});
    return true;
}

bool Tour::MuteAndRoute() {
    driver::Click(Control("Check1(5)"));
    ShowTab(Out2Tab);
    driver::Choose(qobject_cast<QComboBox*>(Control("Combo3(1)")), 2);
    ShowTab(controls::OverviewTab);
    Picture(*ControlWindow(), "overview",
            {{"Label400(0)", Qt::AlignTop},
             {"Label100(2)", Qt::AlignTop},
             {"Label300(1)", Qt::AlignRight | Qt::AlignTop},
             {"Line1000(1)", Qt::AlignLeft | Qt::AlignTop},
             {"Label200(3)", Qt::AlignLeft | Qt::AlignTop},
             {"Label100(27)", Qt::AlignTop},
             {"Image1(5)", Qt::AlignTop}});
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
                 [this] { Picture(*ControlWindow(), "point"); });
    Picture(*ControlWindow(), "output",
            {{"Frame7(2)", Qt::AlignRight | Qt::AlignTop},
             {"Frame7(3)", Qt::AlignRight | Qt::AlignTop},
             {"Frame9(1)", Qt::AlignRight | Qt::AlignTop},
             {"Slider2(26)", Qt::AlignLeft},
             {"Frame6(5)", Qt::AlignRight | Qt::AlignTop},
             {"Frame8(3)", Qt::AlignRight | Qt::AlignTop},
             {"Option2(3)", Qt::AlignRight | Qt::AlignVCenter},
             {"Check5(1)", Qt::AlignRight | Qt::AlignVCenter},
             {"Check3(3)", Qt::AlignRight | Qt::AlignVCenter}});
    const bool shaped = Form().Text8[2].Text() == "90" && application_.Logic().Stores.ParamValues[5].PeqGain[26] > 4.0;

    ShowTab(0);
    driver::ClickMark(Control("Check3(0)"));
    for (const auto& [name, steps] : {std::pair("Slider2(2)", 12), std::pair("Slider2(5)", 8)}) {
        for (int step = 0; step < steps; ++step) {
            driver::Press(Control(name), Qt::Key_Up);
        }
    }
    driver::Press(Control("Slider2(7)"), Qt::Key_PageDown);
    Picture(*ControlWindow(), "input",
            {{"Picture1(0)", Qt::AlignRight | Qt::AlignTop},
             {"Check3(0)", Qt::AlignRight | Qt::AlignVCenter},
             {"Slider2(2)", Qt::AlignLeft},
             {"Text4(3)", Qt::AlignTop},
             {"Text5(4)", Qt::AlignBottom},
             {"Command1(0)", Qt::AlignLeft},
             {"Frame6(0)", Qt::AlignRight | Qt::AlignTop},
             {"Frame6(1)", Qt::AlignRight | Qt::AlignTop},
             {"Frame8(0)", Qt::AlignRight | Qt::AlignTop},
             {"Frame1(8)", Qt::AlignRight | Qt::AlignBottom},
             {"Frame3(8)", Qt::AlignRight | Qt::AlignBottom}});
    return Check(shaped, "filters and a dragged point shape the response");
}

bool Tour::SetDelays() {
    ShowTab(controls::DelaysTab);
    Type(Control("Text2(3)"), QStringLiteral("3.021"));
    driver::Press(Control("Text2(3)"), Qt::Key_Return);
    Picture(*ControlWindow(), "delays",
            {{"Text2(3)", Qt::AlignLeft},
             {"UpDown2(3)", Qt::AlignLeft},
             {"UpDown1(3)", Qt::AlignRight},
             {"Option1(0)", Qt::AlignRight | Qt::AlignVCenter},
             {"Line1(1)", Qt::AlignLeft | Qt::AlignTop}});
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

} // namespace nrv::tour
