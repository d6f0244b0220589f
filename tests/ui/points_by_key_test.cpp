// The points of the equaliser by keys, and what a press on one does that is no drag.

#include "rack_test.h"
#include "ui/widgets/marker_dot.h"
#include "ui/widgets/value_plate.h"
#include "ui_test.h"

#include <QApplication>
#include <QMouseEvent>
#include <QTabBar>

#include <cstdlib>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using driver::Press;

namespace {

/// Every frequency there is, by its code.
constexpr std::array<int, 4> FirstFrequencies{20, 21, 22, 23};

} // namespace

class PointsByKeyTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId}), 0));
        StandReady();
        QVERIFY(TakeKeyboard());
        for (const int slot : {0, 1}) {
            desk_->BringForward(slot);
            driver::ClickMark(desk_->Control("Check3", 0, slot));
        }
        desk_->BringForward(0);
    }
    void cleanup() { TakeDown(); }

    void AKeyOnAPointDoesWhatTheOtherWayDoes_data();
    void AKeyOnAPointDoesWhatTheOtherWayDoes();
    void TheFrequenciesEndAtTheirEnds();
    void ThePlateShowsTheValuesWhileThePointHasTheKeyboard();
    void FocusShowsOnThePoint();
    void EscapeOnAPointAtRestGivesNothing();
    void HiddenAndLockedPointsTakeNoKeyboard();
    void ADeviceThatDiesUnderTheKeyTakesItsWindowAlong();
    void AnUnreadableFrequencyStopsTheGain();
    void AClickThatReportsAMoveToTheSamePlaceSendsNothing();
    void AClickGivesThePointTheKeyboard();
    void OtherButtonsDoNothing();
    void EscapeInADragPutsThePointBack();
    void ADragCanBeginAnewAfterEscape();

  private:
    ui::MarkerDot* Point(int section, int slot = 0) {
        return qobject_cast<ui::MarkerDot*>(desk_->Control("Label5", section, slot));
    }
    /// All that a window shows and holds of a section, in one text.
    QString State(int section, int slot) {
        const auto s = static_cast<std::size_t>(section);
        controls::FrmCtrl& form = desk_->Form(slot);
        const model::ParamRow& values = desk_->Logic().Stores.ParamValues[slot == 0 ? Id : OtherId];
        QString state = QStringLiteral("%1|%2|%3|%4|%5|%6|%7|%8|%9")
                            .arg(QString::fromStdString(form.Text3[s].Text() + '|' + form.Text4[s].Text() + '|' +
                                                        form.Text5[s].Text()))
                            .arg(form.Slider2[s].Position())
                            .arg(form.UpDown3[s].Position())
                            .arg(form.Label5[s].Left())
                            .arg(form.Label5[s].Top())
                            .arg(values.PeqGain[s])
                            .arg(values.PeqFrequency[s])
                            .arg(values.PeqBandwidth[s])
                            .arg(QString::fromStdString(form.Label100[2].ToolTip()));
        for (const auto& stroke : form.Picture1[0].Strokes()) {
            for (const auto& point : stroke.Points) {
                state += QStringLiteral(" %1,%2").arg(point.X).arg(point.Y);
            }
        }
        for (const auto byte : Body(slot == 0 ? Id : OtherId)) {
            state += QStringLiteral(" %1").arg(int(byte));
        }
        return state;
    }
    std::vector<simulator::Frame> FramesWithoutId() {
        auto frames = desk_->TakeFrames();
        for (auto& frame : frames) {
            frame[2] = 0;
        }
        return frames;
    }
    ui::ValuePlate* Plate() {
        for (auto* plate : desk_->Control("Frame10", 0)->findChildren<ui::ValuePlate*>()) {
            return plate;
        }
        return nullptr;
    }
    void Mouse(QWidget* widget, QEvent::Type type, Qt::MouseButton button, Qt::MouseButtons buttons, QPoint place) {
        QMouseEvent event(type, QPointF(place), QPointF(widget->mapToGlobal(place)), button, buttons, {});
        QCoreApplication::sendEvent(widget, &event);
    }
};

void PointsByKeyTest::AKeyOnAPointDoesWhatTheOtherWayDoes_data() {
    QTest::addColumn<int>("key");
    QTest::addColumn<QString>("other");
    QTest::addColumn<int>("other_key");
    QTest::addColumn<QString>("typed");
    QTest::newRow("up") << int(Qt::Key_Up) << "Slider2" << int(Qt::Key_Up) << "";
    QTest::newRow("down") << int(Qt::Key_Down) << "Slider2" << int(Qt::Key_Down) << "";
    QTest::newRow("page up") << int(Qt::Key_PageUp) << "Slider2" << int(Qt::Key_PageUp) << "";
    QTest::newRow("page down") << int(Qt::Key_PageDown) << "Slider2" << int(Qt::Key_PageDown) << "";
    // The frequencies on either side of 1000 Hz.
    QTest::newRow("left") << int(Qt::Key_Left) << "Text4" << int(Qt::Key_Return) << "944";
    QTest::newRow("right") << int(Qt::Key_Right) << "Text4" << int(Qt::Key_Return) << "1060";
    QTest::newRow("plus") << int(Qt::Key_Plus) << "Text5" << int(Qt::Key_Return) << "1.05";
    QTest::newRow("minus") << int(Qt::Key_Minus) << "Text5" << int(Qt::Key_Return) << "0.95";
}

void PointsByKeyTest::AKeyOnAPointDoesWhatTheOtherWayDoes() {
    QFETCH(const int, key);
    QFETCH(const QString, other);
    QFETCH(const int, other_key);
    QFETCH(const QString, typed);
    constexpr int section = 4;
    for (const int slot : {0, 1}) {
        desk_->BringForward(slot);
        for (const auto& [name, value] : {std::pair{"Text4", "1000"}, {"Text5", "1"}}) {
            Type(desk_->Control(name, section, slot), QLatin1String(value));
            Press(desk_->Control(name, section, slot), Qt::Key_Return);
        }
    }
    QCOMPARE(State(section, 0), State(section, 1));
    desk_->TakeFrames();

    QWidget* const way = desk_->Control(qPrintable(other), section, 1);
    if (!typed.isEmpty()) {
        Type(way, typed);
    }
    Press(way, static_cast<Qt::Key>(other_key));
    const auto expected = FramesWithoutId();
    QCOMPARE(expected.size(), std::size_t{1});

    desk_->BringForward(0);
    Press(Point(section), static_cast<Qt::Key>(key));
    QCOMPARE(Difference(FramesWithoutId(), expected), QString());
    QCOMPARE(State(section, 0), State(section, 1));
    QVERIFY(Point(section)->hasFocus());
}

void PointsByKeyTest::TheFrequenciesEndAtTheirEnds() {
    Type(desk_->Control("Text4", 2), QStringLiteral("23"));
    Press(desk_->Control("Text4", 2), Qt::Key_Return);
    desk_->TakeFrames();
    for (int code = 2; code >= -1; --code) {
        Press(Point(2), Qt::Key_Left);
        const int expected = FirstFrequencies[static_cast<std::size_t>(std::max(code, 0))];
        QCOMPARE(desk_->Form().Text4[2].Text(), std::to_string(expected));
        QCOMPARE(desk_->TakeFrames().size(), code >= 0 ? std::size_t{1} : std::size_t{0});
    }
    // One frame for each of the way to the top, and none beyond.
    for (int step = 0; step < 125; ++step) {
        Press(Point(2), Qt::Key_Right);
    }
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{120});
    QCOMPARE(desk_->Form().Text4[2].Text(), std::string("20000"));
}

void PointsByKeyTest::ThePlateShowsTheValuesWhileThePointHasTheKeyboard() {
    QVERIFY(!Plate()->isVisible());
    Press(Point(2), Qt::Key_Up);
    QVERIFY(Plate()->isVisible());
    const QImage first = Plate()->grab().toImage();
    const QRect place = Plate()->geometry();
    Press(Point(2), Qt::Key_PageUp);
    QVERIFY(Plate()->grab().toImage() != first); // another gain
    QVERIFY(Plate()->geometry() != place);       // and it goes along
    Press(Point(2), Qt::Key_Tab);
    QVERIFY(Point(3)->hasFocus());
    QVERIFY(!Plate()->isVisible());
}

void PointsByKeyTest::FocusShowsOnThePoint() {
    Point(7)->setFocus(Qt::OtherFocusReason);
    Point(8)->setFocus(Qt::OtherFocusReason);
    const QImage without = Point(7)->grab().toImage();
    Point(7)->setFocus(Qt::OtherFocusReason);
    QVERIFY(Point(7)->hasFocus());
    QVERIFY(Point(7)->grab().toImage() != without);
}

void PointsByKeyTest::EscapeOnAPointAtRestGivesNothing() {
    Press(Point(2), Qt::Key_Up);
    desk_->TakeFrames();
    const QString before = State(2, 0);
    Press(Point(2), Qt::Key_Escape);
    QCOMPARE(State(2, 0), before);
    QVERIFY(desk_->TakeFrames().empty());
    QVERIFY(desk_->IsOpen(0));
}

void PointsByKeyTest::HiddenAndLockedPointsTakeNoKeyboard() {
    Point(2)->setFocus();
    QVERIFY(Point(2)->hasFocus());
    driver::ClickMark(desk_->Control("Check3", 0));
    QVERIFY(!Point(2)->isVisible());
    QVERIFY(!Point(2)->hasFocus());
    driver::ClickMark(desk_->Control("Check3", 0));
    QVERIFY(Point(2)->isVisible());
    Point(2)->setFocus();
    desk_->Form().Frame5[0].SetEnabled(false); // as the lock does
    desk_->Form().Frame10[0].SetEnabled(false);
    QVERIFY(!Point(2)->hasFocus());
    QVERIFY(!desk_->Control("Slider2", 2)->isEnabled());
    desk_->TakeFrames();
    QTest::keyClick(Point(2), Qt::Key_Up);
    QVERIFY(desk_->TakeFrames().empty());
}

void PointsByKeyTest::ADeviceThatDiesUnderTheKeyTakesItsWindowAlong() {
    for (const Qt::Key key : {Qt::Key_Left, Qt::Key_Up, Qt::Key_Plus}) {
        BoxAnswers boxes({QStringLiteral("OK")});
        desk_->LetDie(Id);
        Press(Point(2), key);
        QVERIFY(!desk_->IsOpen(0));
        QVERIFY(desk_->IsOpen(1));
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        QCOMPARE(boxes.Seen()[0].Title, QLatin1String(DeathTitle));
        TakeDown();
        init();
    }
}

void PointsByKeyTest::AnUnreadableFrequencyStopsTheGain() {
    auto* field = qobject_cast<QLineEdit*>(desk_->Control("Text4", 2));
    Type(field, {});
    const int position = desk_->Form().Slider2[2].Position();
    BoxAnswers boxes({QStringLiteral("OK")});
    Press(Point(2), Qt::Key_Up);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Text,
             QStringLiteral("In A, PEQ 3: \"\" is no frequency. Type 20 to 20000 and press Enter."));
    QCOMPARE(desk_->Form().Slider2[2].Position(), position);
    QVERIFY(!Plate()->isVisible());
    QVERIFY(desk_->TakeFrames().empty());
    // A frequency by key goes over what was typed.
    Press(Point(2), Qt::Key_Right);
    QVERIFY(!desk_->Form().Text4[2].Typed());
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
}

void PointsByKeyTest::AClickThatReportsAMoveToTheSamePlaceSendsNothing() {
    const QString before = State(5, 0);
    const QPoint place(11, 4); // off its middle: a move would pull it there
    Mouse(Point(5), QEvent::MouseButtonPress, Qt::LeftButton, Qt::LeftButton, place);
    Mouse(Point(5), QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, place);
    Mouse(Point(5), QEvent::MouseMove, Qt::NoButton, Qt::LeftButton, place);
    Mouse(Point(5), QEvent::MouseButtonRelease, Qt::LeftButton, Qt::NoButton, place);
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(State(5, 0), before);
}

void PointsByKeyTest::AClickGivesThePointTheKeyboard() {
    desk_->Control("Check3", 0)->setFocus();
    const int position = desk_->Form().Slider2[5].Position();
    QTest::mouseClick(Point(5), Qt::LeftButton);
    QVERIFY(Point(5)->hasFocus());
    QVERIFY(desk_->TakeFrames().empty());
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Up);
    QCOMPARE(std::abs(desk_->Form().Slider2[5].Position() - position), 1);
    QCOMPARE(desk_->Form().Text3[5].Text(), std::string("0.2"));
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
}

void PointsByKeyTest::OtherButtonsDoNothing() {
    const QString before = State(5, 0);
    desk_->Control("Slider2", 0)->setFocus();
    for (const Qt::MouseButton button : {Qt::RightButton, Qt::MiddleButton, Qt::BackButton}) {
        Mouse(Point(5), QEvent::MouseButtonPress, button, button, QPoint(7, 7));
        Mouse(Point(5), QEvent::MouseMove, Qt::NoButton, button, QPoint(60, 40));
        Mouse(Point(5), QEvent::MouseButtonRelease, button, Qt::NoButton, QPoint(60, 40));
        Mouse(Point(5), QEvent::MouseButtonDblClick, button, button, QPoint(7, 7));
    }
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(State(5, 0), before);
    QVERIFY(!Point(5)->hasFocus());
    QVERIFY(!desk_->Form().MarkerDragging[5]);
}

void PointsByKeyTest::EscapeInADragPutsThePointBack() {
    Press(Point(5), Qt::Key_PageUp);
    desk_->TakeFrames();
    const QString before = State(5, 0);
    const QPoint start = Point(5)->geometry().center();
    QTest::mousePress(Point(5), Qt::LeftButton);
    QTest::mouseMove(Point(5), Point(5)->mapFromParent(start + QPoint(80, 30)));
    QVERIFY(State(5, 0) != before);
    QTest::keyClick(Point(5), Qt::Key_Escape);
    QCOMPARE(State(5, 0), before);
    QCOMPARE(Point(5)->geometry().center(), start);
    QVERIFY(!Plate()->isVisible());
    // The button is still down, and what it does now is nothing.
    QTest::mouseMove(Point(5), Point(5)->mapFromParent(start + QPoint(-60, 10)));
    QTest::mouseRelease(Point(5), Qt::LeftButton);
    QCOMPARE(State(5, 0), before);
    QVERIFY(desk_->TakeFrames().empty());
}

void PointsByKeyTest::ADragCanBeginAnewAfterEscape() {
    QTest::mousePress(Point(5), Qt::LeftButton);
    QTest::mouseMove(Point(5), QPoint(50, 20));
    QTest::keyClick(Point(5), Qt::Key_Escape);
    QTest::mouseRelease(Point(5), Qt::LeftButton);
    QVERIFY(desk_->TakeFrames().empty());
    driver::Drag(Point(5), {Point(5)->geometry().center() + QPoint(40, -20)});
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
}

NRV_UI_TEST(PointsByKeyTest);
#include "points_by_key_test.moc"
