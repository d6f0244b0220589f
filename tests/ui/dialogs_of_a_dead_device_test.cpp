// A device dies while a dialog or a question of its window stands and the meters run behind it.

#include "rack_test.h"
#include "ui_test.h"

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using driver::FindAs;

namespace {

simulator::Rack TwoDevices() {
    simulator::Rack rack = RandomRack({Id, OtherId});
    for (const int id : {Id, OtherId}) {
        rack.At(id).PutPreset(0, "First           ", RandomPreset(static_cast<unsigned>(10 + id)));
    }
    return rack;
}

const simulator::Frame Poll = Request(Id, {0x12});

} // namespace

class DialogsOfADeadDeviceTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(TwoDevices(), controls::GainsTab));
        WritePresetFile("a.n91", std::vector<std::uint8_t>(771, 1));
        StandReady();
        // Either window's timer polls the device in front.
        for (const int slot : {0, 1}) {
            desk_->Form(slot).Timer1.Start(30);
        }
        QVERIFY(Polled());
    }
    void cleanup() { TakeDown(); }

    void TheMetersFindTheDeathUnderADialog_data();
    void TheMetersFindTheDeathUnderADialog();
    void TheMetersRestUnderTheQuestionOfAStore();
    void TheMetersRestUnderTheUnconnectQuestion_data();
    void TheMetersRestUnderTheUnconnectQuestion();
    void TheMetersRestUnderTheClosingQuestion_data();
    void TheMetersRestUnderTheClosingQuestion();
    void ThePortGoesUnderADialog();
    void NothingIsPolledUnderTheTimeOutOfALongRead();

  private:
    bool Polled() {
        desk_->TakeFrames();
        return driver::WaitUntil([&] { return desk_->Line().Frames().size() >= 3; });
    }
    /// The frames that come in the time of several polls.
    std::size_t FramesMeanwhile() {
        desk_->TakeFrames();
        QTest::qWait(150);
        return desk_->Line().Frames().size();
    }
    void CheckGone() {
        QTest::qWait(80);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        QVERIFY(!desk_->IsOpen(0));
        QCOMPARE(RowText(0), QStringLiteral(" Unconnected      ID:5"));
        QCOMPARE(desk_->Logic().Windows.OpenWindowTop, 0);
        QCOMPARE(other_->Difference(), QString());
        QCOMPARE(FramesTo(desk_->TakeFrames(), OtherId).size(), std::size_t{0});
    }
    /// A device that dies is found by the meters, once.
    void CheckFoundByTheMeters(const BoxAnswers& boxes, std::size_t boxes_before) {
        QVERIFY(driver::WaitUntil([&] { return !desk_->IsOpen(0); }));
        QTest::qWait(80);
        QCOMPARE(boxes.Seen().size(), boxes_before + 1);
        QCOMPARE(boxes.Seen().back().Title, QLatin1String(DeathTitle));
        const std::vector<simulator::Frame> frames = desk_->Line().Frames();
        QCOMPARE(frames.size(), Transmissions);
        QCOMPARE(std::count(frames.begin(), frames.end(), Poll), std::ptrdiff_t{Transmissions});
        QCOMPARE(desk_->Status(), std::string("ID:5 does not answer; the meters stopped. Double-click its row to "
                                              "connect it again. The meters rest until the next change."));
        CheckGone();
    }
};

void DialogsOfADeadDeviceTest::TheMetersFindTheDeathUnderADialog_data() {
    QTest::addColumn<int>("tool");
    QTest::addColumn<QString>("dialog");
    using namespace controls;
    for (const auto& [tool, dialog] : DialogsOfTools) {
        QTest::newRow(dialog) << int(tool) << QString::fromLatin1(dialog);
    }
    QTest::newRow("load") << int(LoadPresetTool) << QStringLiteral("FileDialog");
    QTest::newRow("save") << int(SavePresetTool) << QStringLiteral("FileDialog");
}

void DialogsOfADeadDeviceTest::TheMetersFindTheDeathUnderADialog() {
    QFETCH(int, tool);
    QFETCH(QString, dialog);
    const model::PresetImageRow image = desk_->Image(Id);
    const simulator::PresetBody live = desk_->Live(Id);
    BoxAnswers boxes(AnyNumberOfOk());
    QPointer<QWidget> stood;
    bool polled = false;
    bool stood_under_the_box = false;
    boxes.OnBox = [&](QWidget&) { stood_under_the_box = stood != nullptr && stood->isVisible(); };
    const driver::WhenShown shown(dialog, [&](QWidget& window) {
        stood = &window;
        if (auto* edit = window.findChild<QLineEdit*>(); edit != nullptr && edit->isVisible()) {
            edit->setText(QStringLiteral("a.n91"));
        }
        polled = Polled();
        desk_->LetDie(Id);
        desk_->TakeFrames();
    });
    driver::Click(desk_->Control("Command2", tool));
    QVERIFY(shown.Done());
    QVERIFY(polled);
    QVERIFY(stood_under_the_box);
    QVERIFY(stood == nullptr || !stood->isVisible());
    CheckFoundByTheMeters(boxes, 0);
    // Unanswered: nothing was loaded, stored or saved.
    QCOMPARE(std::memcmp(&image, &desk_->Image(Id), sizeof image), 0);
    QCOMPARE(desk_->Live(Id), live);
    QCOMPARE(desk_->Folder().Read("preset/a.n91"), std::vector<std::uint8_t>(771, 1));
    // A further tick or click finds nothing that is left.
    QTest::mouseClick(FindAs<QTableWidget>(QStringLiteral("Devices"))->viewport(), Qt::LeftButton);
    QCOMPARE(FramesMeanwhile(), std::size_t{0});
}

void DialogsOfADeadDeviceTest::TheMetersRestUnderTheQuestionOfAStore() {
    BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")}));
    std::size_t polls = 99;
    boxes.OnBox = [&](QWidget& box) {
        if (box.windowTitle() == QStringLiteral("Store Preset")) {
            polls = FramesMeanwhile();
            desk_->LetDie(Id);
        }
    };
    QPointer<QWidget> stood;
    const driver::WhenShown shown(QStringLiteral("FrmStore"), [&](QWidget& dialog) {
        stood = &dialog;
        driver::Click(In(dialog, "Command1(1)"));
    });
    driver::Click(desk_->Control("Command2", controls::StorePresetTool));
    QCOMPARE(polls, std::size_t{0});
    QVERIFY(stood == nullptr || !stood->isVisible());
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(boxes.Seen()[1].Title, QLatin1String(DeathTitle));
    const std::vector<simulator::Frame> expected(Transmissions, WriteRequest(Id, 18, desk_->Image(Id).ViewState[18]));
    QCOMPARE(Difference(desk_->TakeFrames(), expected), QString());
    QCOMPARE(desk_->Status(), std::string("ID:5 does not answer; the store stopped after 0 of 450 frames. Double-click "
                                          "its row to connect it again. The meters rest until the next change."));
    CheckGone();
}

void DialogsOfADeadDeviceTest::TheMetersRestUnderTheUnconnectQuestion_data() {
    QTest::addColumn<bool>("yes");
    QTest::newRow("yes") << true;
    QTest::newRow("no") << false;
}

void DialogsOfADeadDeviceTest::TheMetersRestUnderTheUnconnectQuestion() {
    QFETCH(bool, yes);
    BoxAnswers boxes(AnyNumberOfOk({yes ? QStringLiteral("Yes") : QStringLiteral("No")}));
    std::size_t polls = 99;
    boxes.OnBox = [&](QWidget& box) {
        if (box.windowTitle() == QStringLiteral("Unconnect device")) {
            desk_->LetDie(Id);
            polls = FramesMeanwhile();
        }
    };
    driver::Click(desk_->Control("Command2", controls::UnconnectTool));
    QCOMPARE(polls, std::size_t{0});
    if (!yes) {
        CheckFoundByTheMeters(boxes, 1);
        return;
    }
    // No answer is waited for, and the window is gone with the device.
    CheckGone();
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
}

void DialogsOfADeadDeviceTest::TheMetersRestUnderTheClosingQuestion_data() {
    TheMetersRestUnderTheUnconnectQuestion_data();
}

void DialogsOfADeadDeviceTest::TheMetersRestUnderTheClosingQuestion() {
    QFETCH(bool, yes);
    BoxAnswers boxes(AnyNumberOfOk({yes ? QStringLiteral("Yes") : QStringLiteral("No")}));
    std::size_t polls = 99;
    boxes.OnBox = [&](QWidget& box) {
        if (box.windowTitle() == QStringLiteral("ID:5 - Close window")) {
            desk_->LetDie(Id);
            polls = FramesMeanwhile();
        }
    };
    desk_->Window(0)->close();
    QCOMPARE(polls, std::size_t{0});
    if (!yes) {
        QVERIFY(desk_->IsOpen(0));
        CheckFoundByTheMeters(boxes, 1);
        return;
    }
    QVERIFY(!desk_->IsOpen(0));
    desk_->Form(1).Timer1.Stop();
    QTest::qWait(80);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(RowText(0), QStringLiteral("Top               ID:5"));
    QCOMPARE(FramesTo(desk_->TakeFrames(), Id).size(), std::size_t{0});
    QVERIFY(desk_->IsOpen(1));
}

void DialogsOfADeadDeviceTest::ThePortGoesUnderADialog() {
    BoxAnswers boxes(AnyNumberOfOk());
    QPointer<QWidget> stood;
    QString device;
    const driver::WhenShown shown(QStringLiteral("FrmPassword"), [&](QWidget& dialog) {
        stood = &dialog;
        device = Unplug();
    });
    driver::Click(desk_->Control("Command2", controls::PasswordTool));
    QVERIFY(shown.Done());
    QVERIFY(driver::WaitUntil([&] { return !desk_->IsOpen(0); }));
    QTest::qWait(80);
    QVERIFY(stood == nullptr || !stood->isVisible());
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QCOMPARE(QString::fromStdString(desk_->Status()),
             QStringLiteral("COM 1 (%1) went away; the meters stopped. Double-click the row of ID:5 to connect it "
                            "again. The meters rest until the next change.")
                 .arg(device));
    QVERIFY(desk_->IsOpen(1));
}

void DialogsOfADeadDeviceTest::NothingIsPolledUnderTheTimeOutOfALongRead() {
    BoxAnswers boxes({QStringLiteral("Yes"), QStringLiteral("OK")});
    std::vector<simulator::Frame> frames;
    std::size_t polls = 99;
    bool ready = true;
    boxes.OnBox = [&](QWidget& box) {
        if (box.windowTitle() != QStringLiteral("Read Preset")) {
            frames = desk_->TakeFrames();
            ready = desk_->Logic().Link.LinkReady;
            polls = FramesMeanwhile();
        }
    };
    QVERIFY(desk_->WithTool(controls::ReadPresetTool, "FrmRead", [&](QWidget& dialog) {
        desk_->Form(0).Timer1.Stop();
        desk_->Form(1).Timer1.Stop();
        // The mute byte is still told; the preset never comes.
        desk_->Line().Order(simulator::Fault::Late(Id, 1, std::chrono::milliseconds(0)));
        desk_->Line().Order(simulator::Fault::Lose(Id, 0));
        desk_->Clock().RunFaster(200.0);
        desk_->TakeFrames();
        desk_->Form(0).Timer1.Start(30);
        desk_->Form(1).Timer1.Start(30);
        driver::Click(In(dialog, "Command1(1)"));
    }));
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(boxes.Seen()[1].Text, QStringLiteral("Time out"));
    std::vector<simulator::Frame> expected(7, Request(Id, {0x0B, 0}));
    expected[0] = Request(Id, {0x10, 0, 18});
    QCOMPARE(Difference(frames, expected), QString());
    QVERIFY(!ready);
    QCOMPARE(polls, std::size_t{0});
    QVERIFY(desk_->Process().Ended);
    QCOMPARE(other_->Difference(), QString());
}

NRV_UI_TEST(DialogsOfADeadDeviceTest);
#include "dialogs_of_a_dead_device_test.moc"
