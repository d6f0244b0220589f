// Which window is in front: the mark in the list of devices, the window that is open already, the joined caption.

#include "rack_test.h"
#include "ui_test.h"

#include <QMainWindow>
#include <QTableWidget>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;

class InFrontTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() { QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId, ThirdId}))); }
    void cleanup() { TakeDown(); }

    void TheListMarksTheRowOfTheWindowInFront();
    void ADeadDeviceTakesItsMarkAlong();
    void AWindowThatIsOpenComesToTheFront_data();
    void AWindowThatIsOpenComesToTheFront();
    void AClickAgainAfterTheBoxFindsTheSame();
    void CtrlTabWalksTheWindows();
    void AMaximisedWindowLosesItsPaddingInTheJoinedCaption();
    void AMaximisedWindowTellsItsMarkInTheJoinedCaption();
    void TheNoticeIsOnTheScreenBeforeTheWaitBegins();

  private:
    /// The marked row, -1 when none or more than one is marked.
    int Marked() {
        auto* grid = driver::FindAs<QTableWidget>(QStringLiteral("Devices"));
        int marked = -1;
        for (int row = 0; row < grid->rowCount(); ++row) {
            if (grid->item(row, 0)->font().weight() > QFont::Normal) {
                if (marked >= 0 || grid->item(row, 0)->background().style() == Qt::NoBrush) {
                    return -1;
                }
                marked = row;
            }
        }
        return marked;
    }
    QMdiSubWindow* Active() { return desk_->Window()->mdiArea()->activeSubWindow(); }
};

void InFrontTest::TheListMarksTheRowOfTheWindowInFront() {
    QCOMPARE(Marked(), 2);
    desk_->BringForward(0);
    QCOMPARE(Marked(), 0);
    // The list in front of all of them changes nothing.
    driver::Click(driver::FindAs<QTableWidget>(QStringLiteral("Devices"))->viewport());
    QCOMPARE(Marked(), 0);
    desk_->BringForward(1);
    QCOMPARE(Marked(), 1);
    desk_->Window(1)->showMinimized();
    QCOMPARE(Marked(), 0); // the one that was in front before
    BoxAnswers boxes({QStringLiteral("Yes"), QStringLiteral("Yes"), QStringLiteral("Yes")});
    desk_->Window(1)->close();
    desk_->BringForward(2);
    desk_->Window(2)->close();
    QCOMPARE(Marked(), 0);
    desk_->Window(0)->close();
    QCOMPARE(Marked(), -1);
    QVERIFY(desk_->Open(1, 0));
    QCOMPARE(Marked(), 1);
}

void InFrontTest::ADeadDeviceTakesItsMarkAlong() {
    desk_->BringForward(0);
    desk_->ShowTab(controls::GainsTab, 0);
    desk_->LetDie(Id);
    BoxAnswers boxes({QStringLiteral("OK")});
    driver::Press(desk_->Control("Slider1", 0), Qt::Key_Up);
    QVERIFY(driver::WaitUntil([&] { return !desk_->IsOpen(0); }));
    QCOMPARE(Marked(), 2); // the one that was in front before
}

void InFrontTest::AWindowThatIsOpenComesToTheFront_data() {
    QTest::addColumn<bool>("minimised");
    QTest::newRow("from behind another") << false;
    QTest::newRow("from its minimised state") << true;
}

void InFrontTest::AWindowThatIsOpenComesToTheFront() {
    QFETCH(bool, minimised);
    if (minimised) {
        desk_->Window(0)->showMinimized();
    }
    desk_->BringForward(2);
    std::string told;
    BoxAnswers boxes({QStringLiteral("OK")});
    boxes.OnBox = [&](QWidget&) { told = desk_->Status(); };
    desk_->DoubleClick(0);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("The window is already open"));
    QCOMPARE(told, std::string("The window is already open; Ctrl+Tab walks the windows"));
    QVERIFY(!desk_->Window(0)->isMinimized());
    QCOMPARE(Active(), desk_->Window(0));
    QCOMPARE(Current(), 0);
    QCOMPARE(Marked(), 0);
    QCOMPARE(desk_->Logic().Windows.OpenWindowTop, 2);
}

void InFrontTest::AClickAgainAfterTheBoxFindsTheSame() {
    BoxAnswers boxes({QStringLiteral("OK"), QStringLiteral("OK")});
    desk_->DoubleClick(0);
    desk_->DoubleClick(1);
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(Active(), desk_->Window(1));
    QCOMPARE(Current(), 1);
    QCOMPARE(desk_->Logic().Windows.OpenWindowTop, 2);
}

void InFrontTest::CtrlTabWalksTheWindows() {
    desk_->BringForward(0);
    desk_->BringForward(2);
    QWidget* keyboard = desk_->Window(2)->widget();
    QTest::keyPress(keyboard, Qt::Key_Control);
    QTest::keyPress(keyboard, Qt::Key_Tab, Qt::ControlModifier);
    QTest::keyRelease(keyboard, Qt::Key_Tab, Qt::ControlModifier);
    QTest::keyRelease(keyboard, Qt::Key_Control);
    QVERIFY(driver::WaitUntil([&] { return Active() == desk_->Window(0); }));
    QCOMPARE(Current(), 0);
}

void InFrontTest::AMaximisedWindowTellsItsMarkInTheJoinedCaption() {
    QWidget* const main = driver::Find(QStringLiteral("MDIFrmMain"));
    desk_->Form(2).Window.SetMark("Locked");
    QVERIFY(!desk_->Window(2)->windowTitle().contains(QStringLiteral("Locked")));
    desk_->BringForward(2);
    desk_->Window(2)->showMaximized();
    QTRY_VERIFY(main->windowTitle().endsWith(QStringLiteral(" - Locked]")));
    desk_->Form(2).Window.SetMark("");
    QTRY_VERIFY(!main->windowTitle().contains(QStringLiteral("Locked")));
    desk_->Form(2).Window.SetMark("Last preset");
    QTRY_VERIFY(main->windowTitle().endsWith(QStringLiteral(" - Last preset]")));
    desk_->Window(2)->showNormal();
    QTRY_VERIFY(!desk_->Window(2)->windowTitle().contains(QStringLiteral("Last preset")));
}

void InFrontTest::AMaximisedWindowLosesItsPaddingInTheJoinedCaption() {
    auto* main = driver::FindAs<QMainWindow>(QStringLiteral("MDIFrmMain"));
    desk_->Form(2).Window.SetCaption("ID:12 NRV-718 - Last preset loaded: come from DEVICE - Hall            ");
    desk_->Window(2)->showMaximized();
    QCOMPARE(main->windowTitle(), QStringLiteral("NRV-718 Multi Device Remote Control - [ID:12 NRV-718 - Last preset "
                                                 "loaded: come from DEVICE - Hall]"));
    desk_->Form(2).Window.SetCaption("ID:12 NRV-718 - Last preset loaded: come from DEVICE - Club Main       ");
    QCOMPARE(main->windowTitle(), QStringLiteral("NRV-718 Multi Device Remote Control - [ID:12 NRV-718 - Last preset "
                                                 "loaded: come from DEVICE - Club Main]"));
    // Its own title keeps every blank.
    QCOMPARE(desk_->Window(2)->windowTitle(),
             QStringLiteral("ID:12 NRV-718 - Last preset loaded: come from DEVICE - Club Main       "));
    desk_->Window(2)->showNormal();
    QCOMPARE(main->windowTitle(), QStringLiteral("NRV-718 Multi Device Remote Control"));
}

namespace {

/// How often a widget was painted.
class Paints : public QObject {
  public:
    explicit Paints(QWidget& widget) { widget.installEventFilter(this); }
    int Count = 0;

  protected:
    bool eventFilter(QObject*, QEvent* event) override {
        Count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace

void InFrontTest::TheNoticeIsOnTheScreenBeforeTheWaitBegins() {
    TakeDown();
    Connect(FactoryRack({Id, OtherId}));
    QTest::qWait(50);
    QWidget* notice = driver::Find(QStringLiteral("LoadingNotice"));
    QVERIFY(!notice->isVisible());
    desk_->LetDie(Id);
    Paints paints(*notice);
    BoxAnswers boxes({QStringLiteral("OK")});
    // Told at the end of the first wait, and no event is served in a wait.
    int painted_at_the_first_wait = -1;
    const auto waiting = desk_->Logic().Link.Waiting;
    desk_->Logic().Link.Waiting = [&](int id) {
        painted_at_the_first_wait = painted_at_the_first_wait < 0 ? paints.Count : painted_at_the_first_wait;
        waiting(id);
    };
    desk_->DoubleClick(0);
    QVERIFY(painted_at_the_first_wait > 0);
}

NRV_UI_TEST(InFrontTest);
#include "in_front_test.moc"
