// The lock, the names and the meters of control windows on a virtual rack, by real events.

#include "rack_test.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/value_text.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QLabel>
#include <QTabBar>

#include <algorithm>
#include <string_view>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using simulator::Levels;
using testing::ImageLayout;

namespace {

constexpr int LockedId = ThirdId;
constexpr int LockedOptions = PlainOptions + 128;

simulator::Rack ThreeDevices() {
    simulator::Rack rack = FactoryRack({Id, OtherId, LockedId});
    rack.At(LockedId).SetLocked(true);
    return rack;
}

/// What a locked window leaves open, control by control: the way to the password, the way to disconnect, the tabs, the
/// delay units, the block diagram, and the limiters of Out 5 and Out 6.
bool StaysOpen(std::string_view name, int index) {
    if (name == "Command2") {
        return index == controls::PasswordTool || index == controls::UnconnectTool;
    }
    constexpr std::array<std::string_view, 7> dynamics{"Frame8", "Slider4", "Slider5", "Slider6",
                                                       "Text9",  "Text10",  "Text11"};
    if (std::ranges::find(dynamics, name) != dynamics.end()) {
        return index >= 6;
    }
    if (name == "Frame1") {
        return index == 17;
    }
    constexpr std::array<std::string_view, 18> open{"Toolbar1", "SSTab1",   "Shape2",   "Label6",   "Frame4", "Option1",
                                                    "Label100", "Label200", "Label300", "Label400", "Image1", "Line6",
                                                    "Line7",    "Line1000", "Line1100", "Line1",    "Line2",  "Timer1"};
    return std::ranges::find(open, name) != open.end();
}

} // namespace

class WindowOnTheRackTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() { Connect(ThreeDevices()); }
    void cleanup() { TakeDown(); }

    void ALockDisablesTheToldControlsAndAnUnlockEnablesThem();
    void AWrongPasswordSaysSoAndLocksNothing();
    void ANewPasswordGoesToTheDeviceAndIsTheOneAskedForFromThenOn();
    void TwoNewPasswordsThatDifferOrAreShortSendNothing();
    void ADeviceFoundLockedOpensDisabledAndTwoLimitersStayOpen();
    void NamesGoToTheDeviceInSixFramesAndToEveryCaption();
    void MetersMoveOnTheGainsTabAndOnlyThere();
    void AMutedOutputFallsDark();
    void ALevelOf7LeavesTheLamps();
    void EveryWindowsTimerPollsTheActiveDevice();
    void ABoxTickedInOneWindowIsTickedInTheOtherThatComesForward();

  private:
    controls::FrmCtrl& Form(int slot = 0) { return desk_->Form(slot); }
    model::ParamRow& Values(int id) { return desk_->Logic().Stores.ParamValues[static_cast<std::size_t>(id)]; }
    bool WithPassword(const QString& password, const std::function<void(QWidget&)>& then) {
        return desk_->WithTool(controls::PasswordTool, "FrmPassword", [&](QWidget& dialog) {
            Type(In(dialog, "Text1"), password);
            driver::Click(In(dialog, "Command1(0)"));
            then(dialog);
        });
    }
    /// Logs in, moves the switch and confirms; the dialog stays on its page of settings.
    bool TurnSwitch(const QString& password = QStringLiteral("000000")) {
        return WithPassword(password, [](QWidget& dialog) {
            QVERIFY(In(dialog, "Check1")->isVisible());
            driver::Click(In(dialog, "Check1"));
            driver::Click(In(dialog, "Command1(3)"));
            QVERIFY(In(dialog, "Check1")->isVisible());
        });
    }
    /// The first control that is enabled or disabled against what the lock says; empty when all are as they should.
    QString LockFault(bool locked) {
        QString fault;
        int seen = 0;
        controls::ForEachControl(Form(), [&](std::string_view name, int index, controls::Control&) {
            const QWidget* widget = desk_->Control(std::string(name).c_str(), index);
            if (widget == nullptr || !fault.isEmpty()) {
                return;
            }
            ++seen;
            const bool enabled = !locked || StaysOpen(name, index);
            if (widget->isEnabled() != enabled) {
                fault = widget->objectName() + (enabled ? QStringLiteral(" is disabled") : QStringLiteral(" is open"));
            }
        });
        return seen > 600 || !fault.isEmpty() ? fault : QStringLiteral("only %1 widgets were seen").arg(seen);
    }

    void SetLevels(int id, const Levels& levels) {
        desk_->Line().WithRack([&](simulator::Rack& rack) { rack.At(id).SetLevels(levels); });
    }
    /// The lamps of a channel, lowest first, "1" for one that is lit.
    QString Lamps(int channel, int slot = 0) {
        QString lamps;
        for (int lamp = 0; lamp < controls::LampsPerChannel; ++lamp) {
            const auto* widget =
                qobject_cast<ui::Lamp*>(desk_->Control("Shape1", controls::LampsPerChannel * channel + lamp, slot));
            lamps += widget->Lit() ? QLatin1Char('1') : QLatin1Char('0');
        }
        return lamps;
    }
    QStringList AllLamps(int slot = 0) {
        QStringList all;
        for (int channel = 0; channel < ChannelCount; ++channel) {
            all.append(Lamps(channel, slot));
        }
        return all;
    }
    QList<int> MarkedBoxes() {
        QList<int> marked;
        for (int box = 0; box < ChannelCount; ++box) {
            if (qobject_cast<ui::ValueText*>(desk_->Control("Text9", box))->Marked()) {
                marked.append(box);
            }
        }
        return marked;
    }
    /// Lets polls run whose levels are surely those of now; false when none comes.
    bool WaitForPolls(int polls = 3) {
        desk_->TakeFrames();
        return driver::WaitUntil([&] { return desk_->Line().Frames().size() >= static_cast<std::size_t>(polls); });
    }
    std::size_t FramesIn(int milliseconds) {
        desk_->TakeFrames();
        QTest::qWait(milliseconds);
        return desk_->Line().Frames().size();
    }
};

void WindowOnTheRackTest::ALockDisablesTheToldControlsAndAnUnlockEnablesThem() {
    QVERIFY(desk_->Open(0));
    QCOMPARE(LockFault(false), QString());
    QVERIFY(TurnSwitch());
    QCOMPARE(Difference(desk_->TakeFrames(), {WriteRequest(Id, 16, LockedOptions)}), QString());
    QVERIFY(desk_->Line().WithRack([](simulator::Rack& rack) { return rack.At(Id).Locked(); }));
    QCOMPARE(Values(Id).LockFlag, 1.0);
    QCOMPARE(LockFault(true), QString());

    // The names can be looked at by their blocks, and no more.
    desk_->ShowTab(controls::OverviewTab);
    QVERIFY(desk_->WithDialog(desk_->Control("Label300", 2), "FrmEditLabel", [](QWidget& dialog) {
        for (int channel = 0; channel < ChannelCount; ++channel) {
            QVERIFY(!driver::Find(QStringLiteral("Text1(%1)").arg(channel), &dialog)->isEnabled());
        }
        QVERIFY(!In(dialog, "Command1(0)")->isEnabled());
        QVERIFY(In(dialog, "Command1(1)")->isEnabled());
    }));
    // A disabled fader takes no key.
    desk_->ShowTab(controls::GainsTab);
    driver::Press(desk_->Control("Slider1", 3), Qt::Key_Up);
    driver::Click(desk_->Control("Check1", 3));
    QVERIFY(desk_->TakeFrames().empty());

    QVERIFY(TurnSwitch());
    QCOMPARE(Difference(desk_->TakeFrames(), {WriteRequest(Id, 16, PlainOptions)}), QString());
    QVERIFY(!desk_->Line().WithRack([](simulator::Rack& rack) { return rack.At(Id).Locked(); }));
    QCOMPARE(LockFault(false), QString());
    driver::Press(desk_->Control("Slider1", 3), Qt::Key_Up);
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
}

void WindowOnTheRackTest::AWrongPasswordSaysSoAndLocksNothing() {
    QVERIFY(desk_->Open(0));
    BoxAnswers boxes({QStringLiteral("OK"), QStringLiteral("OK")});
    bool stays = false;
    bool passes = false;
    QVERIFY(WithPassword(QStringLiteral("00000"), [&](QWidget& dialog) {
        const auto* box = qobject_cast<QLineEdit*>(In(dialog, "Text1"));
        stays = In(dialog, "Frame3")->isVisible() && !In(dialog, "Frame1")->isVisible() &&
                box->text() == QStringLiteral("00000");
        Type(In(dialog, "Text1"), QStringLiteral("00000O"));
        driver::Press(In(dialog, "Text1"), Qt::Key_Return);
        stays = stays && In(dialog, "Frame3")->isVisible();
        // There is no limit to the attempts; Enter does what the button does.
        Type(In(dialog, "Text1"), QStringLiteral("000000"));
        driver::Press(In(dialog, "Text1"), Qt::Key_Return);
        passes = In(dialog, "Frame1")->isVisible() && !In(dialog, "Frame3")->isVisible();
    }));
    QVERIFY(stays);
    QVERIFY(passes);
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Insert Password"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("Password incorrect"));
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(LockFault(false), QString());
}

void WindowOnTheRackTest::ANewPasswordGoesToTheDeviceAndIsTheOneAskedForFromThenOn() {
    QVERIFY(desk_->Open(0));
    const auto page = desk_->Image(Id).SystemPage;
    bool back = false;
    QVERIFY(WithPassword(QStringLiteral("000000"), [&](QWidget& dialog) {
        driver::Click(In(dialog, "Command1(2)"));
        Type(In(dialog, "Text2"), QStringLiteral("Ab9 !z"));
        Type(In(dialog, "Text3"), QStringLiteral("Ab9 !z"));
        driver::Click(In(dialog, "Command1(5)"));
        back = In(dialog, "Frame3")->isVisible() && qobject_cast<QLineEdit*>(In(dialog, "Text1"))->text().isEmpty();
    }));
    QVERIFY(back);
    std::vector<simulator::Frame> expected;
    const std::string password = "Ab9 !z";
    for (std::size_t i = 0; i < password.size(); ++i) {
        expected.push_back(WriteRequest(Id, 26 + int(i), password[i]));
    }
    QCOMPARE(Difference(desk_->TakeFrames(), expected), QString());
    for (std::size_t i = 0; i < password.size(); ++i) {
        QCOMPARE(char(desk_->Memory(Id, 26 + i)), password[i]);
    }
    QCOMPARE(desk_->Line().WithRack([](simulator::Rack& rack) { return rack.At(Id).Password(); }), password);
    // The program's mirror of the memory keeps what it held; that is meant.
    QVERIFY(desk_->Image(Id).SystemPage == page);

    BoxAnswers boxes({QStringLiteral("OK")});
    QVERIFY(
        WithPassword(QStringLiteral("000000"), [](QWidget& dialog) { QVERIFY(In(dialog, "Frame3")->isVisible()); }));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QVERIFY(TurnSwitch(QStringLiteral("Ab9 !z")));
    QCOMPARE(LockFault(true), QString());
}

void WindowOnTheRackTest::TwoNewPasswordsThatDifferOrAreShortSendNothing() {
    QVERIFY(desk_->Open(0));
    BoxAnswers boxes({QStringLiteral("OK"), QStringLiteral("OK")});
    bool stays = false;
    QVERIFY(WithPassword(QStringLiteral("000000"), [&](QWidget& dialog) {
        driver::Click(In(dialog, "Command1(2)"));
        Type(In(dialog, "Text2"), QStringLiteral("abcdef"));
        Type(In(dialog, "Text3"), QStringLiteral("abcde"));
        driver::Press(In(dialog, "Text3"), Qt::Key_Return);
        Type(In(dialog, "Text3"), QStringLiteral("abcdeF"));
        driver::Press(In(dialog, "Text3"), Qt::Key_Return);
        stays = In(dialog, "Frame4")->isVisible();
    }));
    QVERIFY(stays);
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Password incorrect"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("Insert 6 character"));
    QCOMPARE(boxes.Seen()[1].Title, QStringLiteral("New Password"));
    QCOMPARE(boxes.Seen()[1].Text, QStringLiteral("Passwords don't match "));
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(desk_->Line().WithRack([](simulator::Rack& rack) { return rack.At(Id).Password(); }),
             std::string("000000"));
}

void WindowOnTheRackTest::ADeviceFoundLockedOpensDisabledAndTwoLimitersStayOpen() {
    QVERIFY(desk_->Open(2));
    QCOMPARE(LockFault(true), QString());
    for (const int channel : {5, 6, 7}) {
        desk_->ShowTab(channel);
        for (const char* fader : {"Slider4", "Slider5", "Slider6"}) {
            driver::Press(desk_->Control(fader, channel), Qt::Key_PageDown);
        }
    }
    // Out 4 takes none. A limiter leaves the factory with attack 5, release 10 and threshold 58.
    std::vector<simulator::Frame> expected;
    for (const int channel : {6, 7}) {
        expected.push_back(Request(LockedId, {7, channel, 0, 0, 0, 5, 10, 0, 53}));
        expected.push_back(Request(LockedId, {7, channel, 0, 0, 0, 5, 5, 0, 53}));
        expected.push_back(Request(LockedId, {7, channel, 0, 0, 0, 0, 5, 0, 53}));
    }
    QCOMPARE(Difference(desk_->TakeFrames(), expected), QString());
    // The status says so of a locked system at first, which is meant.
    QString status;
    QVERIFY(desk_->WithTool(controls::PasswordTool, "FrmPassword",
                            [&](QWidget& dialog) { status = qobject_cast<QLabel*>(In(dialog, "Label2"))->text(); }));
    QCOMPARE(status, QStringLiteral("System Unlock"));
    QVERIFY(TurnSwitch());
    QCOMPARE(Difference(desk_->TakeFrames(), {WriteRequest(LockedId, 16, PlainOptions)}), QString());
    QCOMPARE(LockFault(false), QString());
}

void WindowOnTheRackTest::NamesGoToTheDeviceInSixFramesAndToEveryCaption() {
    QVERIFY(desk_->Open(0));
    simulator::PresetBody expected_image = desk_->Live(Id);
    const std::string in_b = Form().Label300[1].Caption();
    BoxAnswers boxes({QStringLiteral("Yes")});
    QVERIFY(desk_->WithTool(controls::EditNamesTool, "FrmEditLabel", [](QWidget& dialog) {
        Type(In(dialog, "Text1(2)"), QStringLiteral("Sub L"));
        Type(In(dialog, "Text1(3)"), QString());
        Type(In(dialog, "Text1(4)"), QStringLiteral("X"));
        Type(In(dialog, "Text1(7)"), QStringLiteral("Tops"));
        driver::Click(In(dialog, "Command1(0)"));
        QVERIFY(!dialog.isVisible());
    }));
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Edit Names"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("               Are you sure ? "));

    const std::array<std::string, 6> sent{" Sub L", "      ", "   X  ", " Out 4", " Out 5", " Tops "};
    std::vector<simulator::Frame> expected;
    for (int output = 0; output < 6; ++output) {
        const std::string& name = sent[static_cast<std::size_t>(output)];
        expected.push_back(Request(Id, {0x0E, output + 2, 0, name[0], name[1], name[2], name[3], name[4], name[5]}));
        std::copy(name.begin(), name.end(),
                  expected_image.begin() + static_cast<std::ptrdiff_t>(ImageLayout::Name(output + 2)));
    }
    QCOMPARE(Difference(desk_->TakeFrames(), expected), QString());
    QCOMPARE(ImageDifference(desk_->Live(Id), expected_image), QString());
    QCOMPARE(ImageDifference(desk_->Image(Id).PresetBody, expected_image), QString());

    // The captions show the texts as typed.
    const std::array<std::string, 6> typed{"Sub L", "", "X", " Out 4", " Out 5", "Tops"};
    const auto* tabs = qobject_cast<QTabBar*>(desk_->Control("SSTab1"));
    for (int output = 0; output < 6; ++output) {
        const std::size_t channel = static_cast<std::size_t>(output) + 2;
        const std::string& name = typed[static_cast<std::size_t>(output)];
        const QString text = QString::fromStdString(name);
        QCOMPARE(Form().Label300[channel].Caption(), name);
        QCOMPARE(desk_->Logic().Stores.ChannelNames[Id][channel], name);
        QCOMPARE(qobject_cast<ui::Panel*>(desk_->Control("Frame1", output + 2))->Caption(), text);
        QCOMPARE(qobject_cast<ui::Panel*>(desk_->Control("Frame3", output + 2))->Caption(), text);
        QCOMPARE(tabs->tabText(output + 2), text);
        QCOMPARE(Form().Option2[static_cast<std::size_t>(3 * output + 2)].Caption(), "Out + " + in_b);
        for (int row = 0; row < 5; ++row) {
            // The other five in their order.
            const int viewed = row < output ? row : row + 1;
            const auto* box = qobject_cast<QAbstractButton*>(
                desk_->Control(std::array{"Check4", "Check5", "Check6", "Check7", "Check8"}[std::size_t(row)], output));
            QCOMPARE(box->text(), QString::fromStdString(typed[static_cast<std::size_t>(viewed)]));
        }
    }
    // The window is left on the last tab.
    QCOMPARE(Form().SSTab1.Tab(), 7);
    QCOMPARE(tabs->currentIndex(), 7);
}

void WindowOnTheRackTest::MetersMoveOnTheGainsTabAndOnlyThere() {
    QVERIFY(desk_->Open(0));
    SetLevels(Id, {1, 2, 3, 4, 5, 6, 0, 5});
    Form().Timer1.Start(30);
    for (int tab = 0; tab < controls::TabCount; ++tab) {
        if (tab != controls::GainsTab) {
            desk_->ShowTab(tab);
            QCOMPARE(FramesIn(100), std::size_t{0});
        }
    }
    QCOMPARE(AllLamps().join(QString()), QString(48, u'0'));
    desk_->ShowTab(controls::GainsTab);
    QVERIFY(WaitForPolls());
    for (const simulator::Frame& frame : desk_->TakeFrames()) {
        QCOMPARE(frame, Request(Id, {0x12}));
    }
    const QStringList expected{QStringLiteral("100000"), QStringLiteral("110000"), QStringLiteral("111000"),
                               QStringLiteral("111100"), QStringLiteral("111110"), QStringLiteral("111111"),
                               QStringLiteral("000000"), QStringLiteral("111110")};
    QCOMPARE(AllLamps(), expected);
    // Two channels off, which is meant: Out 3, Out 4 and Out 6 mark the boxes of Out 1, Out 2 and Out 4.
    QCOMPARE(MarkedBoxes(), (QList<int>{2, 3, 5}));

    // The lamps keep their last state on another tab.
    desk_->ShowTab(0);
    SetLevels(Id, {});
    QCOMPARE(FramesIn(100), std::size_t{0});
    QCOMPARE(AllLamps(), expected);
    desk_->ShowTab(controls::GainsTab);
    QVERIFY(WaitForPolls());
    QCOMPARE(AllLamps().join(QString()), QString(48, u'0'));
    QCOMPARE(MarkedBoxes(), QList<int>());

    desk_->Line().WithRack([](simulator::Rack& rack) { rack.At(Id).SetLevels(std::nullopt); });
    QStringList last = AllLamps();
    int moves = 0;
    QVERIFY(driver::WaitUntil([&] {
        const QStringList now = AllLamps();
        moves += now != last ? 1 : 0;
        last = now;
        return moves >= 3;
    }));
}

void WindowOnTheRackTest::AMutedOutputFallsDark() {
    QVERIFY(desk_->Open(0));
    desk_->ShowTab(controls::GainsTab);
    SetLevels(Id, {6, 6, 6, 6, 6, 6, 6, 6});
    Form().Timer1.Start(30);
    QVERIFY(WaitForPolls());
    QCOMPARE(AllLamps().join(QString()), QString(48, u'1'));
    QCOMPARE(MarkedBoxes(), (QList<int>{0, 1, 2, 3, 4, 5}));
    driver::Click(desk_->Control("Check1", 0));
    driver::Click(desk_->Control("Check1", 5));
    QVERIFY(WaitForPolls());
    // The device goes on reporting. An input's lamps follow it whether or not it is muted.
    QCOMPARE(Lamps(5), QStringLiteral("000000"));
    QCOMPARE(Lamps(4), QStringLiteral("111111"));
    QCOMPARE(Lamps(0), QStringLiteral("111111"));
    QCOMPARE(MarkedBoxes(), (QList<int>{0, 1, 2, 4, 5}));
    driver::Click(desk_->Control("Check1", 5));
    QVERIFY(WaitForPolls());
    QCOMPARE(Lamps(5), QStringLiteral("111111"));
}

void WindowOnTheRackTest::ALevelOf7LeavesTheLamps() {
    QVERIFY(desk_->Open(0));
    desk_->ShowTab(controls::GainsTab);
    SetLevels(Id, {2, 2, 3, 2, 2, 2, 2, 2});
    Form().Timer1.Start(30);
    QVERIFY(WaitForPolls());
    const QStringList before = AllLamps();
    QCOMPARE(before[2], QStringLiteral("111000"));
    SetLevels(Id, {7, 2, 7, 2, 2, 2, 2, 2});
    QVERIFY(WaitForPolls());
    QCOMPARE(AllLamps(), before);
    QCOMPARE(MarkedBoxes(), QList<int>{0}); // it is a level past the limit all the same
    SetLevels(Id, {1, 2, 4, 2, 2, 2, 2, 2});
    QVERIFY(WaitForPolls());
    QCOMPARE(Lamps(0), QStringLiteral("100000"));
    QCOMPARE(Lamps(2), QStringLiteral("111100"));
}

void WindowOnTheRackTest::EveryWindowsTimerPollsTheActiveDevice() {
    QVERIFY(desk_->Open(0, 0));
    desk_->ShowTab(controls::GainsTab, 0);
    QVERIFY(desk_->Open(1, 1));
    desk_->ShowTab(controls::GainsTab, 1);
    SetLevels(Id, {1, 1, 1, 1, 1, 1, 1, 1});
    SetLevels(OtherId, {4, 4, 4, 4, 4, 4, 4, 4});
    const auto polled = [this] {
        const std::vector<simulator::Frame> frames = desk_->TakeFrames();
        std::vector<int> ids;
        for (const simulator::Frame& frame : frames) {
            ids.push_back(frame == Request(frame[2], {0x12}) ? frame[2] : -1);
        }
        std::ranges::sort(ids);
        ids.erase(std::unique(ids.begin(), ids.end()), ids.end());
        return ids;
    };
    // Each timer alone, the own window's and the other's; that the other's polls too is meant.
    for (const int active : {1, 0}) {
        desk_->BringForward(active);
        QCOMPARE(Current(), active);
        const int id = active == 0 ? Id : OtherId;
        for (const int ticking : {0, 1}) {
            Form(ticking).Timer1.Start(30);
            QVERIFY(WaitForPolls());
            Form(ticking).Timer1.Stop();
            QCOMPARE(polled(), std::vector<int>{id});
        }
        QCOMPARE(Lamps(3, active), active == 0 ? QStringLiteral("100000") : QStringLiteral("111100"));
    }
    // The tab that counts is the active window's, too.
    desk_->ShowTab(controls::DelaysTab, 0);
    Form(0).Timer1.Start(30);
    Form(1).Timer1.Start(30);
    QCOMPARE(Current(), 0);
    QCOMPARE(FramesIn(150), std::size_t{0});
}

void WindowOnTheRackTest::ABoxTickedInOneWindowIsTickedInTheOtherThatComesForward() {
    QVERIFY(desk_->Open(0, 0));
    QVERIFY(desk_->Open(1, 1));
    for (const int slot : {0, 1}) {
        desk_->ShowTab(2, slot);
    }
    desk_->BringForward(1);
    driver::ClickMark(desk_->Control("Check4", 0, 1));
    driver::ClickMark(desk_->Control("Option2", 2, 1));
    QCOMPARE(desk_->Image(OtherId).ViewState[0], 1);
    QCOMPARE(desk_->Image(OtherId).ViewState[40], 2);
    const auto* box = qobject_cast<QAbstractButton*>(desk_->Control("Check4", 0, 0));
    const auto* option = qobject_cast<QAbstractButton*>(desk_->Control("Option2", 2, 0));
    QVERIFY(!box->isChecked() && !option->isChecked());
    desk_->TakeFrames();
    desk_->BringForward(0);
    QVERIFY(box->isChecked() && option->isChecked());
    QVERIFY(!qobject_cast<QAbstractButton*>(desk_->Control("Option2", 0, 0))->isChecked());
    QCOMPARE(qobject_cast<QAbstractButton*>(desk_->Control("Check4", 1, 0))->text(), QStringLiteral(" Out 1+InB"));
    QCOMPARE(Form(0).Picture1[2].Strokes().size(), std::size_t{2});
    QCOMPARE(desk_->Image(Id).ViewState[0], 0);
    QCOMPARE(desk_->Image(Id).ViewState[40], 0);
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
}

NRV_UI_TEST(WindowOnTheRackTest);
#include "window_on_the_rack_test.moc"
