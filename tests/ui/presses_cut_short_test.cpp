// A press that a box comes over, or that stands still for want of an answer: it acts once and leaves nothing behind.

#include "rack_test.h"
#include "ui/widgets/fader.h"
#include "ui_test.h"

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using testing::ImageLayout;

namespace {

/// Longer than a held press needs to repeat itself.
constexpr int RepeatedBy = 600;

} // namespace

class PressesCutShortTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId}), 0));
        StandReady();
    }
    void cleanup() { TakeDown(); }

    void APressOnADeadLineIsOneFailure_data();
    void APressOnADeadLineIsOneFailure();
    void AnArrowBesideATextThatIsNoFrequencyStepsOnce();
    void ALostAnswerDoesNotMakeAClickTwo_data();
    void ALostAnswerDoesNotMakeAClickTwo();
    void AHeldArrowStillRepeats();
    void ADragThatABoxEndsIsOver();
    void ADragInWhichTheDeviceDiesIsOver();

  private:
    QWidget* Arrows(int slot = 0) { return desk_->Control("UpDown3", 0, slot); }
    ui::Fader* FaderOf(int section, int slot = 0) {
        return qobject_cast<ui::Fader*>(desk_->Control("Slider2", section, slot));
    }
    ui::Fader* GainFader(int slot) { return qobject_cast<ui::Fader*>(desk_->Control("Slider1", 8, slot)); }
    static QPoint AtPosition(const ui::Fader& fader, int position) {
        return {fader.width() / 2, int(std::lround(fader.PlaceOf(position)))};
    }
    /// Presses an arrow or beside the cap of a fader.
    QWidget* Press(bool arrows) {
        QWidget* widget = arrows ? Arrows() : FaderOf(0);
        const QPoint place = arrows ? QPoint(widget->width() / 2, widget->height() / 4) : AtPosition(*FaderOf(0), 140);
        QTest::mousePress(widget, Qt::LeftButton, Qt::NoModifier, place);
        return widget;
    }
    int Code(bool arrows, int id = Id) { return desk_->Live(id)[ImageLayout::Peq(0, 0) + (arrows ? 2 : 4)]; }
};

void PressesCutShortTest::APressOnADeadLineIsOneFailure_data() {
    QTest::addColumn<bool>("arrows");
    QTest::addColumn<bool>("port_gone");
    QTest::newRow("arrows, port gone") << true << true;
    QTest::newRow("arrows, silent") << true << false;
    QTest::newRow("fader, port gone") << false << true;
    QTest::newRow("fader, silent") << false << false;
}

void PressesCutShortTest::APressOnADeadLineIsOneFailure() {
    QFETCH(bool, arrows);
    QFETCH(bool, port_gone);
    BoxAnswers boxes(AnyNumberOfOk());
    if (port_gone) {
        Unplug();
    } else {
        desk_->LetDie(Id);
    }
    const QPointer<QWidget> pressed = Press(arrows);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QVERIFY(!desk_->IsOpen(0));
    // No release comes: the box took it.
    QTest::qWait(RepeatedBy);
    QVERIFY(pressed == nullptr);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    if (!port_gone) {
        const std::vector<simulator::Frame> frames = desk_->TakeFrames();
        QCOMPARE(frames.size(), Transmissions);
        QVERIFY(std::all_of(frames.begin(), frames.end(), [&](const auto& frame) { return frame == frames[0]; }));
        QCOMPARE(frames[0][2], simulator::Byte{Id});
        QCOMPARE(frames[0][3], simulator::Byte{5});
    }
    QCOMPARE(other_->Difference(), QString());
    QCOMPARE(RowText(0), QStringLiteral(" Unconnected      ID:5"));
}

void PressesCutShortTest::AnArrowBesideATextThatIsNoFrequencyStepsOnce() {
    BoxAnswers boxes(AnyNumberOfOk());
    // The key that is refused leaves its mark.
    Type(desk_->Control("Text4", 0), QStringLiteral("100x"));
    QCOMPARE(desk_->Form().Text4[0].Text(), std::string("100?"));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    const int before = desk_->Form().UpDown3[0].Position();
    desk_->TakeFrames();
    Press(true);
    QTest::qWait(RepeatedBy);
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(desk_->Form().UpDown3[0].Position(), before); // it stepped and went back
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    QVERIFY(desk_->IsOpen(0));
    QCOMPARE(other_->Difference(), QString());
}

void PressesCutShortTest::ALostAnswerDoesNotMakeAClickTwo_data() {
    QTest::addColumn<bool>("arrows");
    QTest::newRow("arrows") << true;
    QTest::newRow("fader") << false;
}

void PressesCutShortTest::ALostAnswerDoesNotMakeAClickTwo() {
    QFETCH(bool, arrows);
    const int before = Code(arrows);
    BoxAnswers boxes(AnyNumberOfOk());
    desk_->Line().Order(simulator::Fault::Lose(Id));
    desk_->Clock().RunFaster(20.0); // a wait is half a second, longer than a press is held before it repeats
    QWidget* widget = Press(arrows);
    QTest::qWait(20); // the release comes with what had to wait
    QTest::mouseRelease(widget, Qt::LeftButton);
    QTest::qWait(RepeatedBy);
    QCOMPARE(boxes.Seen().size(), std::size_t{0});
    // The frame and its repetition: one step of the arrows, five of the fader, whose code falls downwards.
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{2});
    QCOMPARE(Code(arrows), arrows ? before + 1 : before - 5);
    QCOMPARE(desk_->Status(), std::string()); // the word on the wait is gone with it
    QCOMPARE(other_->Difference(), QString());
}

void PressesCutShortTest::AHeldArrowStillRepeats() {
    const int before = Code(true);
    QWidget* widget = Press(true);
    QVERIFY(driver::WaitUntil([&] { return Code(true) >= before + 3; }));
    QTest::mouseRelease(widget, Qt::LeftButton);
    const int after = Code(true);
    QTest::qWait(200);
    QCOMPARE(Code(true), after);
    QCOMPARE(other_->Difference(), QString());
}

void PressesCutShortTest::ADragThatABoxEndsIsOver() {
    BoxAnswers boxes(AnyNumberOfOk());
    Type(desk_->Control("Text4", 0), QStringLiteral("100x"));
    ui::Fader* fader = FaderOf(0);
    QTest::mousePress(fader, Qt::LeftButton, Qt::NoModifier, AtPosition(*fader, 75));
    QTest::mouseMove(fader, AtPosition(*fader, 90));
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QVERIFY(!fader->isSliderDown());
    const int here = fader->value();
    // Nobody holds it any more.
    QTest::mouseMove(fader, AtPosition(*fader, 30));
    QTest::qWait(50);
    QCOMPARE(fader->value(), here);
    // And a new hold begins where it is taken, on this fader as on the next.
    for (ui::Fader* held : {fader, FaderOf(1)}) {
        const int position = held->value();
        const QPoint near_the_cap = AtPosition(*held, position) + QPoint(0, 3);
        QTest::mousePress(held, Qt::LeftButton, Qt::NoModifier, near_the_cap);
        QTest::mouseMove(held, near_the_cap);
        QTest::qWait(30);
        QCOMPARE(held->value(), position);
        QTest::mouseRelease(held, Qt::LeftButton, Qt::NoModifier, near_the_cap);
    }
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    QCOMPARE(other_->Difference(), QString());
}

void PressesCutShortTest::ADragInWhichTheDeviceDiesIsOver() {
    BoxAnswers boxes(AnyNumberOfOk());
    const QPointer<ui::Fader> dragged = GainFader(0);
    QTest::mousePress(dragged, Qt::LeftButton, Qt::NoModifier, AtPosition(*dragged, 60));
    QTest::mouseMove(dragged, AtPosition(*dragged, 70));
    QCOMPARE(int(desk_->Live(Id)[ImageLayout::Gain(0)]), 50);
    desk_->TakeFrames();
    desk_->LetDie(Id);
    QTest::mouseMove(dragged, AtPosition(*dragged, 80));
    QVERIFY(!desk_->IsOpen(0));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(desk_->TakeFrames().size(), Transmissions);
    QTest::qWait(100);
    QVERIFY(dragged == nullptr);
    // The hand is still down where the other's fader lies now.
    ui::Fader* next = GainFader(1);
    QTest::mouseMove(next, AtPosition(*next, 80));
    QTest::mouseRelease(next, Qt::LeftButton, Qt::NoModifier, AtPosition(*next, 80));
    const QPoint near_the_cap = AtPosition(*next, next->value()) + QPoint(0, 3);
    QTest::mousePress(next, Qt::LeftButton, Qt::NoModifier, near_the_cap);
    QTest::mouseRelease(next, Qt::LeftButton, Qt::NoModifier, near_the_cap);
    QTest::qWait(50);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    QCOMPARE(other_->Difference(), QString());
}

NRV_UI_TEST(PressesCutShortTest);
#include "presses_cut_short_test.moc"
