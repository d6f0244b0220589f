// A device dies, or the port goes, in the middle of an operation, with two other windows open: what is sent until then,
// the one box, and nothing that happens to the others.

#include "presets/copy_trace.h"
#include "rack_test.h"
#include "ui_test.h"

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using driver::FindAs;
using testing::CopyTrace;
using testing::ImageLayout;
using testing::LoadTrace;

namespace {

/// The frames of flattening the sections of Out 2: gain code 75 is 0 dB.
std::vector<simulator::Frame> FlatTrace(const testing::Body& body) {
    std::vector<simulator::Frame> frames;
    for (int section = 0; section < 4; ++section) {
        const std::size_t block = ImageLayout::Peq(3, section);
        frames.push_back(Request(Id, {5, 3, section, 0, 0, body[block + 1], body[block + 2], 0, 75}));
    }
    return frames;
}

} // namespace

class DeadDeviceTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(RandomRack({Id, OtherId, ThirdId})));
        // The other was used before.
        desk_->BringForward(1);
        desk_->ShowTab(controls::GainsTab, 1);
        driver::Click(desk_->Control("Check1", 4, 1));
        StandReady();
        third_ = std::make_unique<Witness>(*desk_, ThirdId, 2);
    }
    void cleanup() {
        third_.reset();
        TakeDown();
    }

    void ADeathInACopyStopsItThere();
    void ADeathInALoadStopsItThere();
    void ADeathInAFlatteningStopsItThere();
    void AnErrorAfterTheDeathIsNoSecondBox();
    void ClicksUnderTheBoxAndOnWhatIsLeftDoNothing();
    void ALoadWithThePortGoneTellsItOnce();
    void ACopyWithThePortGoneTellsItOnce();
    void ALoadOnALineThatDiedBeforeTellsItOnce();
    void TheOthersWorkOnAfterADeathAndTheDeviceComesBack();
    void TwoDeathsOneAfterTheOtherTakeTheirOwnWindows();

  private:
    void DieWhen(QSlider* slider) {
        QObject::connect(
            slider, &QSlider::valueChanged, slider, [this] { desk_->LetDie(Id); }, Qt::SingleShotConnection);
    }
    void CopyOut2ToOut5() {
        QVERIFY(desk_->WithTool(controls::CopyOutputTool, "FrmCopyOut", [&](QWidget& dialog) {
            driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1(0)"), &dialog), 1);
            driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1(1)"), &dialog), 4);
            driver::Click(In(dialog, "Command1"));
        }));
    }
    /// Writes the preset of a seed as a file that fits the device's options.
    model::PresetImageRow WriteFile(unsigned seed) {
        model::PresetImageRow image = desk_->Image(Id);
        const simulator::PresetBody body = RandomPreset(seed);
        std::copy(body.begin(), body.end(), image.PresetBody.begin());
        const auto* bytes = reinterpret_cast<const std::uint8_t*>(&image);
        WritePresetFile("other.n91", {bytes, bytes + sizeof image});
        return image;
    }
    std::vector<simulator::Frame> LoadFrames(const model::PresetImageRow& image) {
        const testing::LoadSituation situation{.Id = Id, .OptionBits = PlainOptions, .SourcesBefore = Sources()};
        return LoadTrace(image.PresetBody, situation).Frames;
    }
    void CheckEnd(const BoxAnswers& boxes, std::size_t questions, const QString& status) {
        QTest::qWait(100);
        QCOMPARE(boxes.Seen().size(), questions + 1);
        QCOMPARE(boxes.Seen().back().Title, QLatin1String(DeathTitle));
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QVERIFY(!desk_->IsOpen(0));
        QCOMPARE(RowText(0), QStringLiteral(" Unconnected      ID:5"));
        QVERIFY(desk_->Logic().State.DeviceUnconnected[Id]);
        QCOMPARE(desk_->Logic().Windows.OpenWindowTop, 1);
        QCOMPARE(QString::fromStdString(desk_->Status()), status);
        QCOMPARE(other_->Difference(), QString());
        QCOMPARE(third_->Difference(), QString());
        QCOMPARE(desk_->Logic().Main.Window.MousePointer(), controls::Pointer::Default);
    }
    static QString Stopped(const char* what, std::size_t answered, std::size_t all) {
        return QStringLiteral("ID:5 does not answer; %1 stopped after %2 of %3 frames. Double-click its row to connect "
                              "it again. The meters rest until the next change.")
            .arg(QLatin1String(what))
            .arg(answered)
            .arg(all);
    }

    QString UnplugUnderTheOthers() {
        QString device = Unplug();
        third_ = std::make_unique<Witness>(*desk_, ThirdId, 2);
        return device;
    }
    static QString PortGone(const QString& device, const char* what, std::size_t all) {
        return QStringLiteral("COM 1 (%1) went away; %2 stopped after 0 of %3 frames. Double-click the row of ID:5 to "
                              "connect it again. The meters rest until the next change.")
            .arg(device, QLatin1String(what))
            .arg(all);
    }

    std::unique_ptr<Witness> third_;
};

void DeadDeviceTest::ADeathInACopyStopsItThere() {
    CopyTrace trace(Body(), Id);
    trace.CopyOutput(1, 4);
    // The sections' faders move before their frames: behind gain, source, limiter and two sides.
    std::size_t answered = 0;
    while (trace.Frames[answered][3] != 5) {
        ++answered;
    }
    DieWhen(FindAs<QSlider>(QStringLiteral("Slider2(36)"), desk_->Window(0)));
    BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")}));
    CopyOut2ToOut5();
    QCOMPARE(Difference(desk_->TakeFrames(), UpToTheDeath(trace.Frames, answered)), QString());
    CheckEnd(boxes, 1, Stopped("the copy", answered, trace.Frames.size()));
}

void DeadDeviceTest::ADeathInALoadStopsItThere() {
    const model::PresetImageRow image = WriteFile(7);
    const std::vector<simulator::Frame> whole = LoadFrames(image);
    const auto limiters = std::find_if(whole.begin(), whole.end(), [](const auto& frame) { return frame[3] == 7; });
    // The first fader of In B's noise gate moves behind the three frames of In A's.
    const auto answered = static_cast<std::size_t>(limiters - whole.begin()) + 3;
    DieWhen(FindAs<QSlider>(QStringLiteral("Slider4(1)"), desk_->Window(0)));
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(LoadFile(QStringLiteral("other.n91")));
    QCOMPARE(Difference(desk_->TakeFrames(), UpToTheDeath(whole, answered)), QString());
    CheckEnd(boxes, 0, Stopped("the load", answered, whole.size()));
}

void DeadDeviceTest::ADeathInAFlatteningStopsItThere() {
    const std::vector<simulator::Frame> whole = FlatTrace(Body());
    desk_->ShowTab(3);
    QVERIFY(desk_->Form().Slider2[26].Position() != 75);
    DieWhen(FindAs<QSlider>(QStringLiteral("Slider2(26)"), desk_->Window(0)));
    BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")}));
    driver::Click(desk_->Control("Command1", 3));
    QCOMPARE(Difference(desk_->TakeFrames(), UpToTheDeath(whole, 2)), QString());
    CheckEnd(boxes, 1, Stopped("the flattening", 2, 4));
}

void DeadDeviceTest::AnErrorAfterTheDeathIsNoSecondBox() {
    // A text that the copy cannot read, two channels of commands behind the one that fails.
    BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("OK"), QStringLiteral("Yes")}));
    desk_->ShowTab(3);
    Type(desk_->Control("Text8", 2), QStringLiteral("50x"));
    QCOMPARE(desk_->Form().Text8[2].Text(), std::string("50?"));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    const int slope = desk_->Form().Combo2[2].Index();
    driver::Choose(qobject_cast<QComboBox*>(desk_->Control("Combo2", 8)), slope == 0 ? 1 : slope - 1);
    QVERIFY(desk_->Form().Combo2[8].Index() != slope);
    desk_->TakeFrames();
    desk_->LetDie(Id);
    CopyOut2ToOut5();
    QTest::qWait(50);
    QCOMPARE(boxes.Seen().size(), std::size_t{3});
    QCOMPARE(boxes.Seen()[2].Title, QLatin1String(DeathTitle));
    QCOMPARE(desk_->TakeFrames().size(), Transmissions);
    QVERIFY(!desk_->IsOpen(0));
    QCOMPARE(other_->Difference(), QString());
    QCOMPARE(third_->Difference(), QString());
}

void DeadDeviceTest::ClicksUnderTheBoxAndOnWhatIsLeftDoNothing() {
    desk_->ShowTab(controls::GainsTab);
    const QPointer<QWidget> mute = desk_->Control("Check1", 2);
    const QPointer<QWidget> fader = desk_->Control("Slider1", 2);
    const QPointer<QWidget> tool = desk_->Control("Command2", controls::UnconnectTool);
    BoxAnswers boxes(AnyNumberOfOk());
    boxes.OnBox = [&](QWidget&) {
        driver::Click(mute);
        driver::Click(desk_->Control("Check1", 2, 1));
        driver::Click(desk_->Control("Command2", controls::UnconnectTool, 2));
        driver::Press(desk_->Control("Slider1", 2, 1), Qt::Key_Up);
        desk_->Window(0)->close();
        desk_->Window(2)->close();
        desk_->DoubleClick(0);
    };
    const int muted = 1 - desk_->Form().Check1[2].Value();
    desk_->LetDie(Id);
    driver::Click(mute);
    // Its widgets live on until the events of now are over.
    for (const QPointer<QWidget>& left : {mute, tool}) {
        QVERIFY(left != nullptr);
        driver::Click(left);
    }
    QVERIFY(fader != nullptr);
    QTest::keyClick(fader, Qt::Key_Up);
    QCOMPARE(Difference(desk_->TakeFrames(),
                        std::vector<simulator::Frame>(Transmissions, Request(Id, {9, 2, 0, 0, 0, 0, 0, 0, muted}))),
             QString());
    QTest::qWait(50);
    QVERIFY(mute == nullptr && fader == nullptr && tool == nullptr);
    CheckEnd(boxes, 0,
             QStringLiteral("ID:5 does not answer; the change was not sent. Double-click its row to connect it again. "
                            "The meters rest until the next change."));
}

void DeadDeviceTest::ALoadOnALineThatDiedBeforeTellsItOnce() {
    const std::vector<simulator::Frame> whole = LoadFrames(WriteFile(7));
    desk_->LetDie(Id);
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(LoadFile(QStringLiteral("other.n91")));
    QCOMPARE(Difference(desk_->TakeFrames(), UpToTheDeath(whole, 0)), QString());
    CheckEnd(boxes, 0, Stopped("the load", 0, whole.size()));
}

void DeadDeviceTest::ALoadWithThePortGoneTellsItOnce() {
    const std::vector<simulator::Frame> whole = LoadFrames(WriteFile(7));
    const QString device = UnplugUnderTheOthers();
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(LoadFile(QStringLiteral("other.n91")));
    CheckEnd(boxes, 0, PortGone(device, "the load", whole.size()));
    QVERIFY(!desk_->Application().Port().PortOpen());
}

void DeadDeviceTest::ACopyWithThePortGoneTellsItOnce() {
    CopyTrace trace(Body(), Id);
    trace.CopyOutput(1, 4);
    const QString device = UnplugUnderTheOthers();
    BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")}));
    CopyOut2ToOut5();
    CheckEnd(boxes, 1, PortGone(device, "the copy", trace.Frames.size()));
}

void DeadDeviceTest::TheOthersWorkOnAfterADeathAndTheDeviceComesBack() {
    desk_->ShowTab(controls::GainsTab);
    desk_->LetDie(Id);
    {
        BoxAnswers boxes(AnyNumberOfOk());
        driver::Click(desk_->Control("Check1", 2));
        QTest::qWait(50);
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
    }
    desk_->Clock().RunFaster(1.0);
    desk_->TakeFrames();
    // A click straight into either window works on its device.
    for (const auto& [slot, id] : {std::pair(2, ThirdId), std::pair(1, OtherId)}) {
        desk_->ShowTab(controls::GainsTab, slot);
        const int muted = desk_->Memory(id, 18) & 1;
        driver::Click(desk_->Control("Check1", 0, slot));
        const std::vector<simulator::Frame> frames = desk_->TakeFrames();
        QCOMPARE(frames.size(), std::size_t{2});
        QCOMPARE(FramesTo(frames, id).size(), std::size_t{2});
        QCOMPARE(desk_->Memory(id, 18) & 1, 1 - muted);
        QCOMPARE(Current(), slot);
    }
    desk_->Line().Revive(Id);
    BoxAnswers boxes({QStringLiteral("Yes")});
    QVERIFY(desk_->Open(0, 0));
    QCOMPARE(ImageDifference(Body(), desk_->Live(Id)), QString());
    QCOMPARE(desk_->Logic().Windows.OpenWindowTop, 2);
}

void DeadDeviceTest::TwoDeathsOneAfterTheOtherTakeTheirOwnWindows() {
    desk_->LetDie(Id);
    desk_->LetDie(OtherId);
    BoxAnswers boxes(AnyNumberOfOk());
    desk_->ShowTab(controls::GainsTab);
    driver::Click(desk_->Control("Check1", 2, 0));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(other_->Difference(), QString());
    driver::Click(desk_->Control("Check1", 2, 1));
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QVERIFY(!desk_->IsOpen(0) && !desk_->IsOpen(1) && desk_->IsOpen(2));
    QCOMPARE(RowText(0), QStringLiteral(" Unconnected      ID:5"));
    QCOMPARE(RowText(1), QStringLiteral(" Unconnected      ID:9"));
    QCOMPARE(FramesTo(desk_->TakeFrames(), ThirdId).size(), std::size_t{0});
    QCOMPARE(third_->Difference(), QString());
}

NRV_UI_TEST(DeadDeviceTest);
#include "dead_device_test.moc"
