// The whole road, with real windows, mouse and keys, on a real serial line: connection dialog, search, device list,
// control window, a gain, the closing question, the exit.

#include "rack_desk.h"
#include "ui/look/theme.h"
#include "ui_test.h"

#include <QComboBox>
#include <QSlider>
#include <QTableWidget>
#include <QTimer>

#include <memory>

using namespace nrv;
using driver::Find;
using driver::FindAs;
using driver::WaitUntil;

namespace {

simulator::Rack FourDevices() {
    simulator::Rack rack;
    rack.Add(1, "Left subwoofer  ");
    rack.Add(2, "Right subwoofer ");
    rack.Add(5, "Left top        ");
    rack.Add(9, "Right top       ");
    return rack;
}

simulator::Frame GainFrame(int id, int channel, int code) {
    return test::Request(id, {1, channel, 0, 0, 0, 0, 0, 0, code});
}

} // namespace

class WholeRoadTest : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase();
    void TheDialogChoosesPortAndMode();
    void FourDevicesAreFoundAndListedWithTheirLabels();
    void ADoubleClickOpensTheWindowOfTheDevice();
    void OneStepOfAGainFaderIsOneFrame();
    void TheCopyOnTheChannelsTabMovesTheSameGain();
    void ASecondDoubleClickSaysThatTheWindowIsOpen();
    void TwoWindowsTheActiveOneIsTheOneThatIsEdited();
    void ClosingAsks();
    void UnconnectingSendsItsFrameAndMarksTheRow();
    void AnUnconnectedDeviceIsConnectedAgainByItsRow();
    void ADeadDeviceTakesItsWindowAlong();
    void TheExitSendsItsFrame();

  private:
    program::Program& Logic() { return desk_->Logic(); }
    QString Row(int row) { return FindAs<QTableWidget>(QStringLiteral("Devices"))->item(row, 0)->text(); }
    QMdiSubWindow* Window(int slot) { return desk_->Window(slot); }
    bool IsOpen(int slot) { return desk_->IsOpen(slot); }
    void Open(int row, int slot) {
        driver::DoubleClickRow(Find(QStringLiteral("Devices")), row);
        QVERIFY(WaitUntil([&] { return IsOpen(slot); }));
    }
    void ShowGains(int slot) { desk_->ShowTab(controls::GainsTab, slot); }

    std::unique_ptr<test::RackDesk> desk_;
};

void WholeRoadTest::initTestCase() {
    ui::ApplyTheme(*qApp);
    desk_ = std::make_unique<test::RackDesk>(FourDevices(), test::RackDesk::Pace::OfTheWire);
}

void WholeRoadTest::TheDialogChoosesPortAndMode() {
    bool worked = false;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget* dialog = Find(QStringLiteral("FrmSelect"));
        if (dialog == nullptr || !dialog->isVisible()) {
            return;
        }
        watch.stop();
        driver::ClickMark(Find(QStringLiteral("Link(1)"), dialog));
        driver::ClickMark(Find(QStringLiteral("Connection(3)"), dialog));
        driver::Choose(FindAs<QComboBox>(QStringLiteral("ComSelect"), dialog), 1);
        worked = Logic().State.MultiDevice && Logic().Link.ComIndex == 1;
        driver::Click(Find(QStringLiteral("Proceed"), dialog));
    });
    watch.start(20);
    desk_->Application().Start();
    QVERIFY(Find(QStringLiteral("frmSplash"))->isVisible());
    QVERIFY(WaitUntil([&] { return worked; }));
    QCOMPARE(desk_->Folder().Read("init.cfg"), (std::vector<std::uint8_t>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
}

void WholeRoadTest::FourDevicesAreFoundAndListedWithTheirLabels() {
    QVERIFY(WaitUntil([&] { return Logic().State.FoundLast == 3 && Find(QStringLiteral("MDIFrmMain"))->isVisible(); },
                      30000));
    QCOMPARE(Find(QStringLiteral("MDIFrmMain"))->windowTitle(), QStringLiteral("NRV-718 Multi Device Remote Control"));
    QVERIFY(WaitUntil([&] { return !Logic().List.Timer1.Running(); }, 30000));
    QCOMPARE(Row(0), QStringLiteral("Left subwoofer    ID:1"));
    QCOMPARE(Row(1), QStringLiteral("Right subwoofer   ID:2"));
    QCOMPARE(Row(2), QStringLiteral("Left top          ID:5"));
    QCOMPARE(Row(3), QStringLiteral("Right top         ID:9"));
    QVERIFY(!Find(QStringLiteral("SearchingNotice"))->isVisible());
}

void WholeRoadTest::ADoubleClickOpensTheWindowOfTheDevice() {
    desk_->Line().ClearFrames();
    Open(2, 0);
    QCOMPARE(Window(0)->windowTitle(), QStringLiteral("ID:5 NRV-718 - Name Preset loaded from device: ") +
                                           QString::fromStdString(Logic().Stores.ParamValues[5].CurrentPresetName));
    // The check and 32 bytes of memory; filling the window sends nothing.
    QCOMPARE(desk_->Line().Frames().size(), std::size_t{1 + 32});
    QVERIFY(!Find(QStringLiteral("LoadingNotice"))->isVisible());
}

void WholeRoadTest::OneStepOfAGainFaderIsOneFrame() {
    ShowGains(0);
    desk_->Line().ClearFrames();
    driver::Press(Find(QStringLiteral("Slider1(3)"), Window(0)), Qt::Key_Up);
    const std::vector<simulator::Frame> frames = desk_->Line().Frames();
    QCOMPARE(frames.size(), std::size_t{1});
    QCOMPARE(frames[0], GainFrame(5, 3, 61));
    QCOMPARE(desk_->Line().WithRack([](simulator::Rack& rack) { return rack.At(5).LiveImage()[231 + 1]; }),
             std::uint8_t{61});
    QCOMPARE(FindAs<QSlider>(QStringLiteral("Slider1(11)"), Window(0))->value(), 59);
    QCOMPARE(Logic().Windows.Current().Text1[11].Text(), std::string("0.2"));
    QCOMPARE(Logic().Stores.ParamValues[5].ChannelGain[3], 0.2);
}

void WholeRoadTest::TheCopyOnTheChannelsTabMovesTheSameGain() {
    driver::ShowTab(Find(QStringLiteral("SSTab1"), Window(0)), 3);
    desk_->Line().ClearFrames();
    driver::Press(Find(QStringLiteral("Slider1(11)"), Window(0)), Qt::Key_PageDown);
    QCOMPARE(desk_->Line().Frames(), std::vector<simulator::Frame>{GainFrame(5, 3, 56)});
    QCOMPARE(FindAs<QSlider>(QStringLiteral("Slider1(3)"), Window(0))->value(), 64);
}

void WholeRoadTest::ASecondDoubleClickSaysThatTheWindowIsOpen() {
    driver::BoxAnswers boxes({QStringLiteral("OK")});
    driver::DoubleClickRow(Find(QStringLiteral("Devices")), 2);
    QVERIFY(WaitUntil([&] { return boxes.Seen().size() == 1; }));
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Speakers Edit"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("The window is already open"));
    QCOMPARE(Logic().Windows.OpenWindowTop, 0);
}

void WholeRoadTest::TwoWindowsTheActiveOneIsTheOneThatIsEdited() {
    Open(3, 1);
    QCOMPARE(Logic().Windows.CurrentWindow, 1);
    ShowGains(1);
    desk_->Line().ClearFrames();
    driver::Press(Find(QStringLiteral("Slider100"), Window(1)), Qt::Key_Down);
    QCOMPARE(desk_->Line().Frames().size(), std::size_t{1});
    const simulator::Frame master{0xF0, 0xC3, 9, 0x0C, 0, 0, 0, 0, 0, 0, 0, 59, 0xF7};
    QCOMPARE(desk_->Line().Frames()[0], master);

    Window(0)->mdiArea()->setActiveSubWindow(Window(0));
    QCOMPARE(Logic().Windows.CurrentWindow, 0);
    ShowGains(0);
    desk_->Line().ClearFrames();
    driver::Press(Find(QStringLiteral("Slider1(0)"), Window(0)), Qt::Key_Up);
    QCOMPARE(desk_->Line().Frames(), std::vector<simulator::Frame>{GainFrame(5, 0, 61)});
}

void WholeRoadTest::ClosingAsks() {
    driver::BoxAnswers boxes({QStringLiteral("No"), QStringLiteral("Yes")});
    Window(1)->close();
    QVERIFY(IsOpen(1));
    Window(1)->close();
    QVERIFY(WaitUntil([&] { return !IsOpen(1); }));
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("ID:9 - Close window"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("               Are you sure ? "));
    QCOMPARE(Logic().Windows.OpenWindowTop, 0);
    QVERIFY(!Logic().Windows.WindowSlots[1].InUse);
}

void WholeRoadTest::UnconnectingSendsItsFrameAndMarksTheRow() {
    Window(0)->mdiArea()->setActiveSubWindow(Window(0));
    desk_->Line().ClearFrames();
    driver::BoxAnswers boxes({QStringLiteral("Yes")});
    driver::Click(Find(QStringLiteral("Command2(5)"), Window(0)));
    QVERIFY(WaitUntil([&] { return !IsOpen(0); }));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("Do you want unconnect this device, are you sure ? "));
    const simulator::Frame notice{0xF0, 0xC3, 5, 0x0F, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7};
    QVERIFY(WaitUntil([&] { return !desk_->Line().Frames().empty(); }));
    QCOMPARE(desk_->Line().Frames(), std::vector<simulator::Frame>{notice});
    QCOMPARE(Row(2), QStringLiteral(" Unconnected      ID:5"));
}

void WholeRoadTest::AnUnconnectedDeviceIsConnectedAgainByItsRow() {
    driver::BoxAnswers boxes({QStringLiteral("Yes")});
    Open(2, 0);
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Connect device"));
    QCOMPARE(Row(2), QStringLiteral("Left top          ID:5"));
    // The image was fetched anew: the gain that was set stands in it.
    QCOMPARE(Logic().Stores.PresetImage[5].PresetBody[231 + 1], std::uint8_t{56});
}

void WholeRoadTest::ADeadDeviceTakesItsWindowAlong() {
    desk_->Unplug(); // the port goes away, which needs no time limit
    driver::BoxAnswers boxes({QStringLiteral("OK")});
    ShowGains(0);
    driver::Press(Find(QStringLiteral("Slider1(0)"), Window(0)), Qt::Key_Up);
    QVERIFY(WaitUntil([&] { return !IsOpen(0); }));
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Communication problem"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral(" The system will be close the communication with this device"));
    // After the reconnect its mark goes to row 0, which is meant.
    QCOMPARE(Row(0), QStringLiteral(" Unconnected      ID:5"));
    QVERIFY(Logic().State.DeviceUnconnected[5]);
    QCOMPARE(Logic().Windows.OpenWindowTop, -1);
}

void WholeRoadTest::TheExitSendsItsFrame() {
    desk_->PlugIn(FourDevices(), test::RackDesk::Pace::OfTheWire);
    Logic().Link.OpenPort();
    QVERIFY(Logic().Link.PortOpened);
    driver::BoxAnswers boxes({QStringLiteral("No"), QStringLiteral("Yes")});
    QWidget* main = Find(QStringLiteral("MDIFrmMain"));
    main->close();
    QVERIFY(main->isVisible());
    QVERIFY(!desk_->Process().Ended);
    main->close();
    QVERIFY(desk_->Process().Ended);
    QCOMPARE(boxes.Seen()[1].Title, QStringLiteral("Exit"));
    const simulator::Frame notice{0xF0, 0xC3, 0, 0x8F, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7};
    QVERIFY(WaitUntil([&] { return !desk_->Line().Frames().empty(); }));
    QCOMPARE(desk_->Line().Frames(), std::vector<simulator::Frame>{notice});
}

NRV_UI_TEST(WholeRoadTest);
#include "whole_road_test.moc"
