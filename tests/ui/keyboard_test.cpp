// The keyboard in control windows: where it is, where the Tab key takes it, and what may turn or jump without it.

#include "rack_test.h"
#include "ui/widgets/fader.h"
#include "ui/widgets/marker_dot.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QSlider>
#include <QTabBar>
#include <QWheelEvent>

#include <set>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using driver::Press;

class KeyboardTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId})));
        StandReady();
        QVERIFY(TakeKeyboard());
    }
    void cleanup() { TakeDown(); }

    void AWindowOpensWithItsTabsInHand();
    void AClickOnATabTakesTheKeyboardThere();
    void ABlockThatLeadsToATabGivesTheKeyboardToTheTabs();
    void KeysShowTheTabsOfTheWindowInFront();
    void KeysOfTabsTypeNothingAndAreNothingInTheListOfDevices();
    void EveryControlIsReachedOnce_data();
    void EveryControlIsReachedOnce();
    void TheOrderOfAnInputIsTheOneOfItsPanels();
    void ArrowsChooseAmongOptions();
    void FocusShowsOnEveryKindOfControl();
    void HomeAndEndMoveNoGain();
    void HomeAndEndStillMoveTheOtherFaders();
    void AWheelWithoutTheKeyboardScrollsNothing();
    void AWheelTurnsNoListOfAFileDialog();
    void ButtonsOfADialogHaveKeysOfTheirOwn_data();
    void ButtonsOfADialogHaveKeysOfTheirOwn();
    void AKeyOfAButtonPressesIt();
    void AChannelsNameMakesNoKey();

  private:
    QTabBar* Tabs(int slot = 0) { return qobject_cast<QTabBar*>(desk_->Control("SSTab1", controls::NoIndex, slot)); }
    /// Turns a wheel over a widget both ways; false when something behind would see it.
    static bool TurnWheel(QWidget& widget) {
        bool taken = true;
        for (const int turn : {120, -120}) {
            const QPointF middle(widget.rect().center());
            QWheelEvent wheel(middle, widget.mapToGlobal(middle), {}, QPoint(0, turn), Qt::NoButton, {},
                              Qt::NoScrollPhase, false);
            QCoreApplication::sendEvent(&widget, &wheel);
            taken = taken && wheel.isAccepted();
        }
        return taken;
    }
    /// The names of what the Tab key reaches from the tabs on until it comes back to them.
    QStringList Walk() {
        QStringList names;
        Tabs()->setFocus();
        do {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            names << QApplication::focusWidget()->objectName();
        } while (names.back() != QStringLiteral("SSTab1") && names.size() < 200);
        return names;
    }
};

void KeyboardTest::AWindowOpensWithItsTabsInHand() {
    QVERIFY(Tabs(0)->hasFocus());
    desk_->BringForward(1);
    QVERIFY(Tabs(1)->hasFocus());
}

void KeyboardTest::AClickOnATabTakesTheKeyboardThere() {
    desk_->ShowTab(0);
    desk_->Control("Slider2", 3)->setFocus();
    desk_->ShowTab(controls::GainsTab);
    QVERIFY(Tabs()->hasFocus());
    desk_->TakeFrames();
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_PageDown);
    QVERIFY(desk_->TakeFrames().empty());
}

void KeyboardTest::ABlockThatLeadsToATabGivesTheKeyboardToTheTabs() {
    desk_->ShowTab(controls::OverviewTab);
    desk_->Control("Label100", 3)->setFocus();
    Press(desk_->Control("Label100", 3), Qt::Key_Return); // the delay of In A
    QCOMPARE(Tabs()->currentIndex(), int(controls::DelaysTab));
    QVERIFY(Tabs()->hasFocus());
}

void KeyboardTest::KeysShowTheTabsOfTheWindowInFront() {
    constexpr std::array keys{Qt::Key_1, Qt::Key_2, Qt::Key_3, Qt::Key_4, Qt::Key_5,    Qt::Key_6,
                              Qt::Key_7, Qt::Key_8, Qt::Key_9, Qt::Key_0, Qt::Key_Minus};
    const int other = Tabs(1)->currentIndex();
    for (int tab = 0; tab < int(keys.size()); ++tab) {
        QTest::keyClick(QApplication::focusWidget(), keys[static_cast<std::size_t>(tab)], Qt::ControlModifier);
        QCOMPARE(Tabs(0)->currentIndex(), tab);
        QCOMPARE(desk_->Form(0).SSTab1.Tab(), tab);
        QVERIFY(Tabs(0)->hasFocus());
        QCOMPARE(Tabs(1)->currentIndex(), other);
    }
    desk_->BringForward(1);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_2, Qt::ControlModifier);
    QCOMPARE(Tabs(1)->currentIndex(), 1);
    QCOMPARE(Tabs(0)->currentIndex(), 10);
    desk_->Form(0).Timer1.Stop();
    desk_->Form(1).Timer1.Stop();
}

void KeyboardTest::KeysOfTabsTypeNothingAndAreNothingInTheListOfDevices() {
    desk_->ShowTab(0);
    for (const auto& [name, index] : {std::pair{"Text4", 3}, {"Label5", 3}, {"Slider2", 3}, {"UpDown3", 3}}) {
        desk_->ShowTab(0);
        desk_->TakeFrames();
        desk_->Control(name, index)->setFocus();
        const std::string text = desk_->Form().Text4[3].Text() + desk_->Form().Text5[3].Text();
        Press(desk_->Control(name, index), Qt::Key_Minus, Qt::ControlModifier);
        QCOMPARE(Tabs()->currentIndex(), int(controls::OverviewTab));
        QCOMPARE(desk_->Form().Text4[3].Text() + desk_->Form().Text5[3].Text(), text);
        QVERIFY(desk_->TakeFrames().empty());
    }
    driver::Find(QStringLiteral("Devices"))->setFocus();
    const int before = Tabs()->currentIndex();
    QTest::keyClick(driver::Find(QStringLiteral("Devices")), Qt::Key_3, Qt::ControlModifier);
    QCOMPARE(Tabs()->currentIndex(), before);
}

void KeyboardTest::EveryControlIsReachedOnce_data() {
    QTest::addColumn<int>("tab");
    for (const int tab : {0, 1, 2, 5, 7, 8, 9, 10}) {
        QTest::addRow("tab %d", tab) << tab;
    }
}

void KeyboardTest::EveryControlIsReachedOnce() {
    QFETCH(const int, tab);
    desk_->ShowTab(tab);
    desk_->Form().Timer1.Stop();
    const QStringList walked = Walk();
    QCOMPARE(walked.back(), QStringLiteral("SSTab1"));
    QCOMPARE(std::set<QString>(walked.begin(), walked.end()).size(), std::size_t(walked.size()));
    // All that a user could work on this tab, by the inventory.
    std::set<QString> expected{QStringLiteral("SSTab1")};
    const std::set<QString> worked{
        QStringLiteral("Command2"), QStringLiteral("Slider1"),  QStringLiteral("Check1"),   QStringLiteral("Check2"),
        QStringLiteral("Text2"),    QStringLiteral("UpDown1"),  QStringLiteral("UpDown2"),  QStringLiteral("Slider100"),
        QStringLiteral("Combo4"),   QStringLiteral("Option1"),  QStringLiteral("Slider2"),  QStringLiteral("Text4"),
        QStringLiteral("UpDown3"),  QStringLiteral("Text5"),    QStringLiteral("Command1"), QStringLiteral("Slider3"),
        QStringLiteral("Text7"),    QStringLiteral("Combo1"),   QStringLiteral("Text8"),    QStringLiteral("Combo2"),
        QStringLiteral("Slider4"),  QStringLiteral("Slider5"),  QStringLiteral("Slider6"),  QStringLiteral("Combo3"),
        QStringLiteral("Label5"),   QStringLiteral("Check3"),   QStringLiteral("Option2"),  QStringLiteral("Check4"),
        QStringLiteral("Check5"),   QStringLiteral("Check6"),   QStringLiteral("Check7"),   QStringLiteral("Check8"),
        QStringLiteral("Label100"), QStringLiteral("Label200"), QStringLiteral("Label300"), QStringLiteral("Label400")};
    for (const QWidget* widget : desk_->Window()->findChildren<QWidget*>()) {
        if (widget->isVisible() && worked.contains(widget->objectName().section(QLatin1Char('('), 0, 0))) {
            expected.insert(widget->objectName());
        }
    }
    QVERIFY(expected.size() > 20);
    const std::set<QString> seen(walked.begin(), walked.end());
    for (const QString& name : expected) {
        QVERIFY2(seen.contains(name), qPrintable(name));
    }
    QCOMPARE(seen.size(), expected.size());
}

void KeyboardTest::TheOrderOfAnInputIsTheOneOfItsPanels() {
    desk_->ShowTab(0);
    driver::ClickMark(desk_->Control("Check3", 0)); // the points
    QStringList expected;
    const auto add = [&expected](const char* name, std::initializer_list<int> indices) {
        for (const int index : indices) {
            expected << QStringLiteral("%1(%2)").arg(QLatin1String(name)).arg(index);
        }
    };
    add("Label5", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    add("Check3", {0});
    add("Slider1", {8});
    add("Check1", {8});
    add("Check2", {8});
    add("Text2", {8});
    add("UpDown2", {8});
    add("UpDown1", {8});
    add("Command1", {0});
    add("Slider2", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    add("Text4", {0, 1, 2, 3, 4, 5, 6, 7, 8, 9});
    for (int section = 0; section < 10; ++section) {
        add("Text5", {section});
        add("UpDown3", {section});
    }
    for (const int filter : {0, 1}) {
        add("Slider3", {filter});
        add("Text7", {filter});
        add("Combo1", {filter});
    }
    add("Slider4", {0});
    add("Slider5", {0});
    add("Slider6", {0});
    add("Command2", {0, 1, 2, 3, 4, 5, 7, 8, 9});
    expected << QStringLiteral("SSTab1");
    QCOMPARE(Walk(), expected);
    // And back the same way.
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Backtab, Qt::ShiftModifier);
    QCOMPARE(QApplication::focusWidget()->objectName(), QStringLiteral("Command2(9)"));
}

void KeyboardTest::ArrowsChooseAmongOptions() {
    desk_->ShowTab(controls::DelaysTab);
    driver::ClickMark(desk_->Control("Option1", 0));
    desk_->TakeFrames();
    Press(desk_->Control("Option1", 0), Qt::Key_Down);
    QVERIFY(desk_->Form().Option1[1].Selected());
    QVERIFY(desk_->Control("Option1", 1)->hasFocus());
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
    QTest::keyClick(desk_->Control("Option1", 1), Qt::Key_Right); // there is no next one
    QVERIFY(desk_->Control("Option1", 1)->hasFocus());
    QTest::keyClick(desk_->Control("Option1", 1), Qt::Key_Left);
    QVERIFY(desk_->Form().Option1[0].Selected());
    QVERIFY(desk_->Control("Option1", 0)->hasFocus());
    desk_->ShowTab(3);
    for (const int option : {3, 4, 5}) {
        option == 3 ? driver::ClickMark(desk_->Control("Option2", 3))
                    : QTest::keyClick(QApplication::focusWidget(), Qt::Key_Right);
        QVERIFY(desk_->Form().Option2[static_cast<std::size_t>(option)].Selected());
        QVERIFY(desk_->Control("Option2", option)->hasFocus());
    }
}

void KeyboardTest::FocusShowsOnEveryKindOfControl() {
    desk_->ShowTab(2);
    driver::ClickMark(desk_->Control("Check3", 2)); // the points
    driver::Click(desk_->Control("Check1", 10));    // red
    for (const auto& [name, index] : {std::pair{"Command2", 0},
                                      {"Slider2", 20},
                                      {"Text4", 20},
                                      {"UpDown3", 20},
                                      {"Combo1", 4},
                                      {"Combo2", 0},
                                      {"Combo3", 0},
                                      {"Check1", 10},
                                      {"Check2", 10},
                                      {"Check3", 2},
                                      {"Option2", 0},
                                      {"Check4", 0},
                                      {"Command1", 2},
                                      {"Label5", 20},
                                      {"Text2", 10},
                                      {"UpDown1", 10},
                                      {"Slider1", 10},
                                      {"Slider3", 4},
                                      {"Slider4", 2},
                                      {"Slider5", 2},
                                      {"Text5", 20},
                                      {"Text7", 4},
                                      {"Text8", 0},
                                      {"Check8", 0},
                                      {"Slider100", controls::NoIndex},
                                      {"Combo4", controls::NoIndex},
                                      {"Option1", 1},
                                      {"Label100", 3},
                                      {"Label200", 1},
                                      {"Label300", 2},
                                      {"Label400", 0},
                                      {"SSTab1", controls::NoIndex}}) {
        QWidget* const widget = desk_->Control(name, index);
        for (const int tab : {2, int(controls::GainsTab), int(controls::DelaysTab), int(controls::OverviewTab)}) {
            if (!widget->isVisible()) {
                desk_->ShowTab(tab);
            }
        }
        desk_->Control("Command2", 1)->setFocus();
        const QImage without = widget->grab().toImage();
        widget->setFocus(Qt::TabFocusReason);
        QVERIFY2(widget->hasFocus(), name);
        const QImage with = widget->grab().toImage();
        int changed = 0;
        for (int y = 0; y < with.height(); ++y) {
            for (int x = 0; x < with.width(); ++x) {
                changed += with.pixel(x, y) != without.pixel(x, y) ? 1 : 0;
            }
        }
        // At least something like the frame of a small control.
        QVERIFY2(changed >= 24, qPrintable(QStringLiteral("%1: %2 pixels").arg(QLatin1String(name)).arg(changed)));
    }
}

void KeyboardTest::HomeAndEndMoveNoGain() {
    for (const auto& [name, index, tab] :
         {std::tuple{"Slider1", 0, 8}, {"Slider1", 7, 8}, {"Slider1", 8, 0}, {"Slider100", controls::NoIndex, 8}}) {
        desk_->ShowTab(tab);
        desk_->Form().Timer1.Stop();
        desk_->TakeFrames();
        auto* fader = qobject_cast<QSlider*>(desk_->Control(name, index));
        const int before = fader->value();
        Press(fader, Qt::Key_Home);
        Press(fader, Qt::Key_End);
        QCOMPARE(fader->value(), before);
        QVERIFY(desk_->TakeFrames().empty());
        Press(fader, Qt::Key_Down);
        QCOMPARE(fader->value(), before + 1);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
    }
}

void KeyboardTest::HomeAndEndStillMoveTheOtherFaders() {
    desk_->ShowTab(2);
    for (const auto& [name, index, last] : {std::tuple{"Slider2", 20, 150}, {"Slider3", 4, 36}, {"Slider4", 2, 60}}) {
        auto* fader = qobject_cast<QSlider*>(desk_->Control(name, index));
        Press(fader, Qt::Key_End);
        QCOMPARE(fader->value(), last);
        Press(fader, Qt::Key_Home);
        QCOMPARE(fader->value(), 0);
    }
}

void KeyboardTest::AWheelWithoutTheKeyboardScrollsNothing() {
    desk_->ShowTab(2);
    desk_->Control("Text4", 20)->setFocus();
    desk_->TakeFrames();
    for (const auto& [name, index] :
         {std::pair{"Slider2", 21}, {"Combo1", 4}, {"UpDown3", 21}, {"Combo3", 0}, {"SSTab1", controls::NoIndex}}) {
        QWidget* const widget = desk_->Control(name, index);
        QVERIFY2(TurnWheel(*widget), name);
        QVERIFY2(!widget->hasFocus(), name);
    }
    QVERIFY(desk_->TakeFrames().empty());
}

void KeyboardTest::AWheelTurnsNoListOfAFileDialog() {
    QVERIFY(desk_->WithTool(controls::LoadPresetTool, "FileDialog", [](QWidget& dialog) {
        dialog.findChild<QLineEdit*>()->setFocus();
        const auto lists = dialog.findChildren<QComboBox*>();
        QVERIFY(!lists.isEmpty());
        for (QComboBox* const list : lists) {
            const int before = list->currentIndex();
            QVERIFY(TurnWheel(*list));
            QCOMPARE(list->currentIndex(), before);
            QVERIFY(!list->hasFocus());
        }
    }));
}

void KeyboardTest::ButtonsOfADialogHaveKeysOfTheirOwn_data() {
    QTest::addColumn<int>("tool");
    QTest::addColumn<QString>("dialog");
    QTest::addColumn<QString>("keys");
    // In the order in which the buttons are made; that of the password dialog goes over its three pages.
    QTest::newRow("store") << int(controls::StorePresetTool) << "FrmStore"
                           << "CS";
    QTest::newRow("read") << int(controls::ReadPresetTool) << "FrmRead"
                          << "CR";
    QTest::newRow("password") << int(controls::PasswordTool) << "FrmPassword"
                              << "ACEKNO";
    QTest::newRow("names") << int(controls::EditNamesTool) << "FrmEditLabel"
                           << "CO";
    QTest::newRow("copy input") << int(controls::CopyInputTool) << "FrmCopyIn"
                                << "CO";
    QTest::newRow("copy output") << int(controls::CopyOutputTool) << "FrmCopyOut"
                                 << "C";
}

void KeyboardTest::ButtonsOfADialogHaveKeysOfTheirOwn() {
    QFETCH(const int, tool);
    QFETCH(const QString, dialog);
    QFETCH(const QString, keys);
    QVERIFY(desk_->WithTool(tool, qPrintable(dialog), [&keys](QWidget& window) {
        QStringList seen;
        for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
            const QString key = button->shortcut().toString();
            if (!key.isEmpty()) {
                QVERIFY(key.startsWith(QStringLiteral("Alt+")));
                seen << key.mid(4);
            }
        }
        QStringList expected = keys.split(QString(), Qt::SkipEmptyParts);
        seen.sort();
        expected.sort();
        QCOMPARE(seen, expected);
    }));
}

void KeyboardTest::AKeyOfAButtonPressesIt() {
    bool closed = false;
    QVERIFY(desk_->WithTool(controls::EditNamesTool, "FrmEditLabel", [&closed](QWidget& dialog) {
        dialog.activateWindow();
        // QTest's wait for an active window is over while the window under the dialog is active.
        QVERIFY(driver::WaitUntil([&dialog] { return QApplication::activeWindow() == &dialog; }));
        QTest::keyClick(dialog.focusWidget(), Qt::Key_C, Qt::AltModifier);
        closed = driver::WaitUntil([&dialog] { return !dialog.isVisible(); });
    }));
    QVERIFY(closed);
    QVERIFY(desk_->TakeFrames().empty());
}

void KeyboardTest::AChannelsNameMakesNoKey() {
    QVERIFY(desk_->WithTool(controls::EditNamesTool, "FrmEditLabel", [](QWidget& dialog) {
        Type(In(dialog, "Text1(2)"), QStringLiteral("&Sub"));
        BoxAnswers boxes({QStringLiteral("Yes")});
        driver::Click(In(dialog, "Command1(0)"));
    }));
    QCOMPARE(desk_->Form().Label300[2].Caption(), std::string("&Sub"));
    for (const QAbstractButton* button : desk_->Window()->findChildren<QAbstractButton*>()) {
        QVERIFY2(button->shortcut().isEmpty(), qPrintable(button->objectName()));
    }
    for (const QString& dialog : {QStringLiteral("FrmCopyOut"), QStringLiteral("FrmEditLabel")}) {
        const int tool = dialog == QStringLiteral("FrmCopyOut") ? controls::CopyOutputTool : controls::EditNamesTool;
        QVERIFY(desk_->WithTool(tool, qPrintable(dialog), [](QWidget& window) {
            for (const QAbstractButton* button : window.findChildren<QAbstractButton*>()) {
                QVERIFY(button->shortcut() != QKeySequence(Qt::ALT | Qt::Key_S));
            }
        }));
    }
}

NRV_UI_TEST(KeyboardTest);
#include "keyboard_test.moc"
