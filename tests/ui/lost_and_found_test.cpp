// Devices on the way into the list and back into it: the first second, reconnecting beside a window whose meters run, a
// plug that is pulled while nothing happens.

#include "rack_test.h"
#include "ui_test.h"

#include <sys/resource.h>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using testing::ImageLayout;

namespace {

simulator::Rack OneDevice() {
    simulator::Rack rack;
    Furnish(rack.Add(0, "Alone           "), RandomPreset(4));
    rack.At(0).SetMemory(simulator::OptionBitsAddress, PlainOptions);
    return rack;
}

double ProcessSeconds() {
    rusage usage{};
    getrusage(RUSAGE_SELF, &usage);
    const auto seconds = [](const timeval& time) { return double(time.tv_sec) + double(time.tv_usec) / 1e6; };
    return seconds(usage.ru_utime) + seconds(usage.ru_stime);
}

} // namespace

class LostAndFoundTest : public RackTest {
    Q_OBJECT

  private slots:
    void cleanup() { TakeDown(); }

    void ADoubleClickInTheFirstSecondAsksToConnect_data();
    void ADoubleClickInTheFirstSecondAsksToConnect();
    void ADeviceComesBackBesideRunningMeters();
    void ADoubleClickDuringTheProbeDoesNothing_data();
    void ADoubleClickDuringTheProbeDoesNothing();
    void APlugPulledWhileNothingHappensIsTold();

  private:
    bool OpenBoth() { return ConnectAndOpenAll(RandomRack({Id, OtherId}), controls::GainsTab); }
    void Unconnect(int slot) {
        BoxAnswers boxes({QStringLiteral("Yes")});
        driver::Click(desk_->Control("Command2", controls::UnconnectTool, slot));
        QTest::qWait(20);
        QVERIFY(!desk_->IsOpen(slot));
    }
    /// Goes through the connection dialog; the port entry is 0 for none.
    void StartUp(int port) {
        const driver::WhenShown dialog(QStringLiteral("FrmSelect"), [&](QWidget& window) {
            driver::Choose(qobject_cast<QComboBox*>(In(window, "ComSelect")), port);
            driver::Click(In(window, "Proceed"));
        });
        desk_->Application().Start();
        desk_->Logic().Splash.Timer1.Start(10);
        QVERIFY(driver::WaitUntil([&] { return desk_->Logic().List.Timer1.Running(); }));
    }
};

void LostAndFoundTest::ADoubleClickInTheFirstSecondAsksToConnect_data() {
    QTest::addColumn<bool>("demo");
    QTest::newRow("usb") << false;
    QTest::newRow("demo") << true;
}

void LostAndFoundTest::ADoubleClickInTheFirstSecondAsksToConnect() {
    QFETCH(bool, demo);
    SetUp(OneDevice());
    // The first of 33 records of eleven words is found.
    std::vector<std::uint8_t> speakers(std::size_t{33} * 22);
    speakers[20] = 1;
    desk_->Folder().Write("Speakers.cfg", speakers);
    BoxAnswers boxes;
    if (demo) {
        boxes.Next(QStringLiteral("Yes"));
    }
    boxes.Next(QStringLiteral("No"));
    StartUp(demo ? 0 : 1);
    QCOMPARE(desk_->Logic().Link.DemoMode, demo);
    QVERIFY(desk_->Logic().State.DeviceUnconnected[0]);
    desk_->TakeFrames();
    desk_->DoubleClick(0);
    QCOMPARE(boxes.Seen().size(), std::size_t{demo ? 2U : 1U});
    QCOMPARE(boxes.Seen().back().Title, QLatin1String(ConnectTitle));
    QVERIFY(!desk_->IsOpen(0));
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});

    QVERIFY(driver::WaitUntil([&] { return !desk_->Logic().List.Timer1.Running(); }));
    QVERIFY(!desk_->Logic().State.DeviceUnconnected[0]);
    QCOMPARE(RowText(0), demo ? QStringLiteral("  Device Demo     ID:0") : QStringLiteral("Alone             ID:0"));
    QVERIFY(desk_->Open(0));
    if (demo) {
        // A device of the factory: 0 dB on Out 1, and one step up is 0.2 dB.
        desk_->ShowTab(controls::GainsTab);
        QCOMPARE(desk_->Form().Slider1[2].Position(), 60);
        driver::Press(desk_->Control("Slider1", 2), Qt::Key_Up);
        QCOMPARE(desk_->Form().Text1[2].Text(), std::string("0.2"));
        QCOMPARE(desk_->Image(0).PresetBody[ImageLayout::Gain(2)], std::uint8_t{61});
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
        return;
    }
    const simulator::PresetBody live = desk_->Live(0);
    QCOMPARE(ImageDifference(desk_->Image(0).PresetBody, live), QString());
    desk_->ShowTab(controls::GainsTab);
    for (const int channel : {0, 3, 7}) {
        const int code = live[ImageLayout::Gain(channel)];
        auto* fader = qobject_cast<QSlider*>(desk_->Control("Slider1", channel));
        QCOMPARE(fader->value(), 120 - code);
        driver::Press(fader, code < 120 ? Qt::Key_Up : Qt::Key_Down);
        const int after = code < 120 ? code + 1 : code - 1;
        QCOMPARE(Difference(desk_->TakeFrames(), {Request(0, {1, channel, 0, 0, 0, 0, 0, 0, after})}), QString());
        QCOMPARE(int(desk_->Live(0)[ImageLayout::Gain(channel)]), after);
    }
}

void LostAndFoundTest::ADeviceComesBackBesideRunningMeters() {
    QVERIFY(OpenBoth());
    for (int round = 0; round < 10; ++round) {
        desk_->BringForward(0);
        Unconnect(0);
        desk_->BringForward(1);
        // A good exchange lets the meters go on; they poll while the probe waits for its late answer.
        driver::Press(desk_->Control("Slider1", 2, 1), round % 2 == 0 ? Qt::Key_Up : Qt::Key_Down);
        WatchOther();
        // Moving lamps are not moved by what is shown here.
        desk_->Form(1).Timer1.Start(10);
        desk_->TakeFrames();
        QVERIFY(driver::WaitUntil([&] { return desk_->Line().Frames().size() >= 2; }));
        desk_->Line().Order(simulator::Fault::Late(Id, 1, std::chrono::milliseconds(90)));
        BoxAnswers boxes({QStringLiteral("Yes"), QStringLiteral("OK"), QStringLiteral("OK")});
        desk_->DoubleClick(0);
        QVERIFY2(driver::WaitUntil([&] { return desk_->IsOpen(0); }), QByteArray::number(round));
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        desk_->Form(0).Timer1.Stop();
        desk_->Form(1).Timer1.Stop();
        QCOMPARE(ImageDifference(desk_->Image(Id).PresetBody, desk_->Live(Id)), QString());
        QCOMPARE(RowText(0), QStringLiteral("Top               ID:5"));
        QCOMPARE(desk_->Logic().Stores.ParamValues[Id].CurrentPresetName,
                 desk_->Logic().Stores.ParamValues[OtherId].CurrentPresetName);
        // No poll came in between.
        const std::vector<simulator::Frame> frames = desk_->TakeFrames();
        const auto probe = std::find(frames.begin(), frames.end(), Request(Id, {}));
        const auto last = std::find(frames.rbegin(), frames.rend(), Request(Id, {0x10, 0, 207})).base();
        QVERIFY(probe < last);
        QVERIFY(std::all_of(probe, last, [](const simulator::Frame& frame) { return frame[2] == Id; }));
        QCOMPARE(other_->Difference(), QString());
    }
}

void LostAndFoundTest::ADoubleClickDuringTheProbeDoesNothing_data() {
    QTest::addColumn<bool>("answers");
    QTest::newRow("it answers late") << true;
    QTest::newRow("it does not answer") << false;
}

void LostAndFoundTest::ADoubleClickDuringTheProbeDoesNothing() {
    QFETCH(bool, answers);
    QVERIFY(OpenBoth());
    desk_->BringForward(0);
    Unconnect(0);
    WatchOther();
    desk_->Line().Order(answers ? simulator::Fault::Late(Id, 1, std::chrono::milliseconds(120))
                                : simulator::Fault::Die(Id));
    desk_->TakeFrames();
    BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")}));
    int clicks = 0;
    QTimer again;
    QObject::connect(&again, &QTimer::timeout, &again, [&] {
        if (desk_->Line().Frames().size() == 1) { // the probe is under way
            ++clicks;
            desk_->DoubleClick(0);
            driver::Click(desk_->Control("Check1", 2, 1));
            desk_->Window(1)->close();
        }
    });
    again.start(15);
    desk_->DoubleClick(0);
    again.stop();
    QVERIFY(clicks >= 1);
    QTest::qWait(50);
    QCOMPARE(other_->Difference(), QString());
    const std::vector<simulator::Frame> frames = desk_->TakeFrames();
    QCOMPARE(frames[0], Request(Id, {}));
    if (answers) {
        QVERIFY(desk_->IsOpen(0));
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        // One probe, the label, the image, the page: the device was checked before.
        QCOMPARE(frames.size(), std::size_t{1 + 16 + 1 + 32});
    } else {
        QCOMPARE(boxes.Seen().size(), std::size_t{2});
        QCOMPARE(boxes.Seen()[1].Text, QStringLiteral("Device unconnected"));
        QCOMPARE(frames.size(), std::size_t{1});
        QVERIFY(!desk_->IsOpen(0));
    }
    QVERIFY(!desk_->Logic().Main.SerialTimer.Running());
}

void LostAndFoundTest::APlugPulledWhileNothingHappensIsTold() {
    QVERIFY(OpenBoth());
    desk_->BringForward(0);
    const QString device = Unplug();
    const Witness first(*desk_, Id, 0);
    BoxAnswers boxes;
    QVERIFY(driver::WaitUntil([&] { return !desk_->Application().Port().PortOpen(); }));
    const std::string told = desk_->Status();
    QCOMPARE(QString::fromStdString(told), QStringLiteral("COM 1 (%1) went away. When it is back, double-click the row "
                                                          "of a device to connect it again.")
                                               .arg(device));
    const double before = ProcessSeconds();
    QTest::qWait(300);
    // A port that told of itself for ever would take all of it.
    QVERIFY(ProcessSeconds() - before < 0.1);
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(desk_->Status(), told);
    QCOMPARE(other_->Difference(), QString());
    QCOMPARE(first.Difference(), QString());

    desk_->PlugIn(RandomRack({Id, OtherId}));
    WatchOther();
    boxes.Next(QStringLiteral("Yes"));
    desk_->DoubleClick(0);
    QVERIFY(driver::WaitUntil([&] { return desk_->IsOpen(0) && desk_->Application().Port().PortOpen(); }));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Title, QLatin1String(ConnectTitle));
    desk_->ShowTab(controls::GainsTab);
    desk_->TakeFrames();
    driver::Click(desk_->Control("Check1", 2));
    QCOMPARE(FramesTo(desk_->TakeFrames(), Id).size(), std::size_t{2});
    QCOMPARE(other_->Difference(), QString());
    // The other one never lost its window and goes on on the same port.
    desk_->ShowTab(controls::GainsTab, 1);
    driver::Click(desk_->Control("Check1", 2, 1));
    QCOMPARE(FramesTo(desk_->TakeFrames(), OtherId).size(), std::size_t{2});
}

NRV_UI_TEST(LostAndFoundTest);
#include "lost_and_found_test.moc"
