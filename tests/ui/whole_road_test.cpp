// The whole road, with real windows, mouse and keys, on a real serial line: connection dialog, search, device list,
// control window, a gain, the closing question, the exit.

#include "driver/driver.h"
#include "simulator/line.h"
#include "support/scripted_ports.h"
#include "support/test_folder.h"
#include "ui/application.h"
#include "ui/look/theme.h"
#include "ui/platform/qt_process.h"

#include <QComboBox>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QSlider>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace nrv;
using driver::Find;
using driver::FindAs;
using driver::WaitUntil;

namespace {

/// Ends in thought alone, but lets events run and sleeps as the real one does.
class TestProcess final : public nrv::Process {
  public:
    explicit TestProcess(ui::QtProcess& real) : real_(real) {}
    void RunPendingEvents() override { real_.RunPendingEvents(); }
    void Sleep(int milliseconds) override { real_.Sleep(milliseconds); }
    [[noreturn]] void End() override {
        Ended = true;
        throw EndOfProcess{};
    }
    bool Ended = false;

  private:
    ui::QtProcess& real_;
};

simulator::Rack FourDevices() {
    simulator::Rack rack;
    rack.Add(1, "Left subwoofer  ");
    rack.Add(2, "Right subwoofer ");
    rack.Add(5, "Left top        ");
    rack.Add(9, "Right top       ");
    return rack;
}

simulator::Frame GainFrame(int id, int channel, int code) {
    using simulator::Byte;
    return {0xF0, 0xC3, static_cast<Byte>(id),   0x01, static_cast<Byte>(channel), 0, 0, 0, 0,
            0,    0,    static_cast<Byte>(code), 0xF7};
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
    program::Program& Logic() { return application_->Logic(); }
    QString Row(int row) { return FindAs<QTableWidget>(QStringLiteral("Devices"))->item(row, 0)->text(); }
    QMdiSubWindow* Window(int slot) { return FindAs<QMdiSubWindow>(QStringLiteral("FrmCtrl(%1)").arg(slot)); }
    bool IsOpen(int slot) { return Window(slot) != nullptr && Window(slot)->isVisible(); }
    void Open(int row, int slot) {
        driver::DoubleClickRow(Find(QStringLiteral("Devices")), row);
        QVERIFY(WaitUntil([&] { return IsOpen(slot); }));
    }
    void ShowGains(int slot) { driver::ShowTab(Find(QStringLiteral("SSTab1"), Window(slot)), controls::GainsTab); }

    testing::TestFolder folder_;
    std::unique_ptr<simulator::Line> line_;
    std::unique_ptr<ui::ComPortNames> names_;
    std::unique_ptr<ui::QtSerialPort> spare_port_;
    std::unique_ptr<ui::QtProcess> real_process_;
    std::unique_ptr<TestProcess> process_;
    std::unique_ptr<ui::Application> application_;
};

void WholeRoadTest::initTestCase() {
    ui::ApplyTheme(*qApp);
    line_ = std::make_unique<simulator::Line>(FourDevices());
    line_->LinkAs(folder_.Path() / "com1");
    line_->Start();
    names_ = std::make_unique<ui::ComPortNames>(QString());
    spare_port_ = std::make_unique<ui::QtSerialPort>(*names_);
    real_process_ = std::make_unique<ui::QtProcess>(*spare_port_);
    process_ = std::make_unique<TestProcess>(*real_process_);
    application_ =
        std::make_unique<ui::Application>(folder_.Path(), ui::Application::Substitutes{nullptr, process_.get()});
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
    application_->Start();
    QVERIFY(Find(QStringLiteral("frmSplash"))->isVisible());
    QVERIFY(WaitUntil([&] { return worked; }));
    QCOMPARE(folder_.Read("init.cfg"), (std::vector<std::uint8_t>{1, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0}));
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
    line_->ClearFrames();
    Open(2, 0);
    QCOMPARE(Window(0)->windowTitle(), QStringLiteral("ID:5 NRV-718 - Name Preset loaded from device: ") +
                                           QString::fromStdString(Logic().Stores.ParamValues[5].CurrentPresetName));
    // The check and 32 bytes of memory; filling the window sends nothing.
    QCOMPARE(line_->Frames().size(), std::size_t{1 + 32});
    QVERIFY(!Find(QStringLiteral("LoadingNotice"))->isVisible());
}

void WholeRoadTest::OneStepOfAGainFaderIsOneFrame() {
    ShowGains(0);
    line_->ClearFrames();
    driver::Press(Find(QStringLiteral("Slider1(3)"), Window(0)), Qt::Key_Up);
    const std::vector<simulator::Frame> frames = line_->Frames();
    QCOMPARE(frames.size(), std::size_t{1});
    QCOMPARE(frames[0], GainFrame(5, 3, 61));
    QCOMPARE(line_->WithRack([](simulator::Rack& rack) { return rack.At(5).LiveImage()[231 + 1]; }), std::uint8_t{61});
    QCOMPARE(FindAs<QSlider>(QStringLiteral("Slider1(11)"), Window(0))->value(), 59);
    QCOMPARE(Logic().Windows.Current().Text1[11].Text(), std::string("0.2"));
    QCOMPARE(Logic().Stores.ParamValues[5].ChannelGain[3], 0.2);
}

void WholeRoadTest::TheCopyOnTheChannelsTabMovesTheSameGain() {
    driver::ShowTab(Find(QStringLiteral("SSTab1"), Window(0)), 3);
    line_->ClearFrames();
    driver::Press(Find(QStringLiteral("Slider1(11)"), Window(0)), Qt::Key_PageDown);
    QCOMPARE(line_->Frames(), std::vector<simulator::Frame>{GainFrame(5, 3, 56)});
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
    line_->ClearFrames();
    driver::Press(Find(QStringLiteral("Slider100"), Window(1)), Qt::Key_Down);
    QCOMPARE(line_->Frames().size(), std::size_t{1});
    const simulator::Frame master{0xF0, 0xC3, 9, 0x0C, 0, 0, 0, 0, 0, 0, 0, 59, 0xF7};
    QCOMPARE(line_->Frames()[0], master);

    Window(0)->mdiArea()->setActiveSubWindow(Window(0));
    QCOMPARE(Logic().Windows.CurrentWindow, 0);
    ShowGains(0);
    line_->ClearFrames();
    driver::Press(Find(QStringLiteral("Slider1(0)"), Window(0)), Qt::Key_Up);
    QCOMPARE(line_->Frames(), std::vector<simulator::Frame>{GainFrame(5, 0, 61)});
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
    line_->ClearFrames();
    driver::BoxAnswers boxes({QStringLiteral("Yes")});
    driver::Click(Find(QStringLiteral("Command2(5)"), Window(0)));
    QVERIFY(WaitUntil([&] { return !IsOpen(0); }));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("Do you want unconnect this device, are you sure ? "));
    const simulator::Frame notice{0xF0, 0xC3, 5, 0x0F, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7};
    QVERIFY(WaitUntil([&] { return !line_->Frames().empty(); }));
    QCOMPARE(line_->Frames(), std::vector<simulator::Frame>{notice});
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
    line_.reset(); // the port goes away, which needs no time limit
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
    line_ = std::make_unique<simulator::Line>(FourDevices());
    line_->LinkAs(folder_.Path() / "com1");
    line_->Start();
    Logic().Link.OpenPort();
    QVERIFY(Logic().Link.PortOpened);
    driver::BoxAnswers boxes({QStringLiteral("No"), QStringLiteral("Yes")});
    QWidget* main = Find(QStringLiteral("MDIFrmMain"));
    main->close();
    QVERIFY(main->isVisible());
    QVERIFY(!process_->Ended);
    main->close();
    QVERIFY(process_->Ended);
    QCOMPARE(boxes.Seen()[1].Title, QStringLiteral("Exit"));
    const simulator::Frame notice{0xF0, 0xC3, 0, 0x8F, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7};
    QVERIFY(WaitUntil([&] { return !line_->Frames().empty(); }));
    QCOMPARE(line_->Frames(), std::vector<simulator::Frame>{notice});
}

QTEST_MAIN(WholeRoadTest)
#include "whole_road_test.moc"
