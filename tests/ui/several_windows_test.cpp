// Several windows of which one fills the main window: the one in front stays the one that is worked on.

#include "rack_test.h"
#include "ui_test.h"

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;

class SeveralWindowsTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() { Connect(FactoryRack({Id, OtherId, ThirdId})); }
    void cleanup() { TakeDown(); }

    void TheWindowOverAMaximisedOneStaysTheCurrentOne();
    void AnUnconnectOverAMaximisedWindowClosesTheOneInFront();
    void AClickInAWindowBehindWorksOnItsDevice_data();
    void AClickInAWindowBehindWorksOnItsDevice();
    void AToolButtonOfAWindowBehindAsksForItsDevice();
    void AWindowThatComesForwardUnderAQuestionCountsAfterIt();
    void ClosingAWindowBehindAsksForItsDevice();
    void EachOfThreeWindowsTakesItsOwnDeviceAway();

  private:
    void OpenOverAMaximisedOne() {
        QVERIFY(desk_->Open(0, 0));
        desk_->Window(0)->showMaximized();
        QTest::qWait(20);
        QVERIFY(desk_->Open(1, 1));
        QCOMPARE(Current(), 1);
        QWidget* main = driver::Find(QStringLiteral("MDIFrmMain"));
        const QSize before = desk_->Window(0)->size() + desk_->Window(1)->size();
        main->resize(main->size() + QSize(150, 100));
        // The enlarging reached one of the windows, or this would show nothing.
        QTRY_VERIFY(desk_->Window(0)->size() + desk_->Window(1)->size() != before);
        desk_->TakeFrames();
    }
};

void SeveralWindowsTest::TheWindowOverAMaximisedOneStaysTheCurrentOne() {
    OpenOverAMaximisedOne();
    QCOMPARE(Current(), 1);
    desk_->ShowTab(controls::GainsTab, 1);
    const Witness first(*desk_, Id, 0);
    driver::Click(desk_->Control("Check1", 2, 1));
    QCOMPARE(
        Difference(desk_->TakeFrames(), {Request(OtherId, {9, 2, 0, 0, 0, 0, 0, 0, 1}), WriteRequest(OtherId, 18, 4)}),
        QString());
    QCOMPARE(int(desk_->Memory(OtherId, 18)), 4);
    QCOMPARE(first.Difference(), QString());
    QCOMPARE(Current(), 1);
}

void SeveralWindowsTest::AnUnconnectOverAMaximisedWindowClosesTheOneInFront() {
    OpenOverAMaximisedOne();
    const Witness first(*desk_, Id, 0);
    BoxAnswers boxes({QStringLiteral("Yes")});
    driver::Click(desk_->Control("Command2", controls::UnconnectTool, 1));
    QTRY_VERIFY(!desk_->IsOpen(1));
    QVERIFY(desk_->IsOpen(0));
    QCOMPARE(RowText(1), QStringLiteral(" Unconnected      ID:9"));
    QCOMPARE(Difference(desk_->TakeFrames(), {Request(OtherId, {0x0F})}), QString());
    QCOMPARE(first.Difference(), QString());
    QVERIFY(
        driver::WaitUntil([&] { return desk_->Status().starts_with("ID:9 is unconnected. Double-click its row"); }));
    // What is left is worked on as before.
    desk_->ShowTab(controls::GainsTab, 0);
    driver::Click(desk_->Control("Check1", 0, 0));
    QCOMPARE(FramesTo(desk_->TakeFrames(), Id).size(), std::size_t{2});
    QCOMPARE(Current(), 0);
}

void SeveralWindowsTest::AClickInAWindowBehindWorksOnItsDevice_data() {
    QTest::addColumn<bool>("takes_focus");
    QTest::newRow("a control that takes the focus") << true;
    QTest::newRow("a control that does not") << false;
}

void SeveralWindowsTest::AClickInAWindowBehindWorksOnItsDevice() {
    QFETCH(bool, takes_focus);
    QVERIFY(OpenAll(3, controls::GainsTab));
    for (const int slot : {0, 1, 2}) {
        desk_->Control("Check1", 3, slot)->setFocusPolicy(takes_focus ? Qt::StrongFocus : Qt::NoFocus);
    }
    const std::array<int, 3> ids{Id, OtherId, ThirdId};
    for (const int slot : {1, 0, 2, 0}) {
        const int in_front = Current();
        QVERIFY(in_front != slot);
        const int id = ids[static_cast<std::size_t>(slot)];
        const Witness other(*desk_, ids[static_cast<std::size_t>(in_front)], in_front);
        const int muted = desk_->Memory(id, 18);
        desk_->TakeFrames();
        QWidget* mute = desk_->Control("Check1", 3, slot);
        QTest::mousePress(mute, Qt::LeftButton);
        QTest::mouseRelease(mute, Qt::LeftButton);
        QCOMPARE(int(desk_->Memory(id, 18)), muted ^ 8);
        const std::vector<simulator::Frame> frames = desk_->TakeFrames();
        QCOMPARE(frames.size(), std::size_t{2});
        QCOMPARE(FramesTo(frames, id).size(), std::size_t{2});
        QCOMPARE(Current(), slot);
        QCOMPARE(other.Difference(), QString());
    }
}

void SeveralWindowsTest::AToolButtonOfAWindowBehindAsksForItsDevice() {
    QVERIFY(OpenAll(2));
    const Witness second(*desk_, OtherId, 1);
    BoxAnswers boxes({QStringLiteral("Yes")});
    driver::Click(desk_->Control("Command2", controls::UnconnectTool, 0));
    QTRY_VERIFY(!desk_->IsOpen(0));
    QCOMPARE(Difference(desk_->TakeFrames(), {Request(Id, {0x0F})}), QString());
    QCOMPARE(RowText(0), QStringLiteral(" Unconnected      ID:5"));
    QCOMPARE(second.Difference(), QString());
}

void SeveralWindowsTest::AWindowThatComesForwardUnderAQuestionCountsAfterIt() {
    for (const int slot : {1, 0}) {
        QVERIFY(desk_->Open(slot, 1 - slot));
    }
    // The device of row 1 was opened first.
    const Witness other(*desk_, OtherId, 0);
    desk_->ShowTab(3, 1);
    desk_->TakeFrames();
    BoxAnswers boxes({QStringLiteral("Yes")});
    boxes.OnBox = [this](QWidget&) { desk_->BringForward(0); };
    driver::Click(desk_->Control("Command1", 3, 1));
    const std::vector<simulator::Frame> frames = desk_->TakeFrames();
    QCOMPARE(frames.size(), std::size_t{4});
    QCOMPARE(FramesTo(frames, Id).size(), std::size_t{4});
    QCOMPARE(other.Difference(), QString());
    QCOMPARE(Current(), 0);
}

void SeveralWindowsTest::ClosingAWindowBehindAsksForItsDevice() {
    QVERIFY(OpenAll(3));
    const Witness second(*desk_, OtherId, 1);
    const Witness third(*desk_, ThirdId, 2);
    BoxAnswers boxes({QStringLiteral("No"), QStringLiteral("Yes")});
    desk_->Window(0)->close();
    QVERIFY(desk_->IsOpen(0));
    desk_->Window(0)->close();
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("ID:5 - Close window"));
    QCOMPARE(boxes.Seen()[1].Title, QStringLiteral("ID:5 - Close window"));
    QTRY_VERIFY(!desk_->IsOpen(0));
    QCOMPARE(RowText(0), QStringLiteral("Top               ID:5"));
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    QCOMPARE(second.Difference(), QString());
    QCOMPARE(third.Difference(), QString());
}

void SeveralWindowsTest::EachOfThreeWindowsTakesItsOwnDeviceAway() {
    QVERIFY(OpenAll(3, controls::GainsTab));
    desk_->Window(2)->showMaximized();
    QTest::qWait(30);
    const Witness third(*desk_, ThirdId, 2);
    desk_->LetDie(Id);
    desk_->LetDie(OtherId);
    BoxAnswers boxes(AnyNumberOfOk());
    for (const auto& [slot, id] : {std::pair(1, OtherId), std::pair(0, Id)}) {
        desk_->TakeFrames();
        driver::Click(desk_->Control("Check1", 5, slot));
        QTRY_VERIFY(!desk_->IsOpen(slot));
        const std::vector<simulator::Frame> frames = desk_->TakeFrames();
        QCOMPARE(
            Difference(frames, std::vector<simulator::Frame>(Transmissions, Request(id, {9, 5, 0, 0, 0, 0, 0, 0, 1}))),
            QString());
        QCOMPARE(desk_->Status(), "ID:" + std::to_string(id) +
                                      " does not answer; the change was not sent. Double-click its row to connect it "
                                      "again. The meters rest until the next change.");
    }
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(third.Difference(), QString());
    // The last one works on, and the meters with it.
    desk_->Clock().RunFaster(1.0);
    desk_->Form(2).Timer1.Start(30);
    driver::Click(desk_->Control("Check1", 5, 2));
    desk_->TakeFrames();
    QVERIFY(driver::WaitUntil([&] { return FramesTo(desk_->Line().Frames(), ThirdId).size() >= 3; }));
    QCOMPARE(desk_->Logic().Windows.OpenWindowTop, 0);
}

NRV_UI_TEST(SeveralWindowsTest);
#include "several_windows_test.moc"
