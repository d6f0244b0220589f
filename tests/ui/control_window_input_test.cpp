#include "control_window_fixture.h"
#include "ui/widgets/block.h"
#include "ui/widgets/fader.h"
#include "ui/widgets/list_box.h"
#include "ui/widgets/marker_dot.h"
#include "ui/widgets/tab_strip.h"
#include "ui/widgets/text_field.h"
#include "ui/widgets/up_down_arrows.h"
#include "ui/widgets/value_plate.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QApplication>
#include <QClipboard>
#include <QTest>
#include <QWheelEvent>

#include <string>
#include <vector>

using namespace nrv;

namespace {

/// Turns a wheel over a widget as the window system would.
void TurnWheel(QWidget& widget, int eighths) {
    const QPointF middle = QRectF(widget.rect()).center();
    QWheelEvent event(middle, widget.mapToGlobal(middle), QPoint(), QPoint(0, eighths), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QApplication::sendEvent(&widget, &event);
}

} // namespace

class ControlWindowInputTest : public test::ControlWindowFixture {
    Q_OBJECT

  private slots:
    void initTestCase() { ui::ApplyTheme(*qApp); }
    void init() { OpenWindow(); }
    void cleanup() { view_.reset(); }

    void AKeyMovesAFaderOneStepAndRunsItsEventOnce() {
        int moves = 0;
        form_->Slider2[3].SetPosition(75);
        form_->Slider2[3].Moved = [&] { ++moves; };
        auto* fader = Find<ui::Fader>("Slider2(3)");
        Focus(0, fader);
        QTest::keyClick(fader, Qt::Key_Up);
        QCOMPARE(moves, 1);
        QCOMPARE(form_->Slider2[3].Position(), 74);
        QTest::keyClick(fader, Qt::Key_PageDown);
        QCOMPARE(moves, 2);
        QCOMPARE(form_->Slider2[3].Position(), 79);
        QCOMPARE(fader->value(), 79);
    }

    void AFaderAtItsEndRunsNothing() {
        int moves = 0;
        form_->Slider2[3].Moved = [&] { ++moves; };
        auto* fader = Find<ui::Fader>("Slider2(3)");
        Focus(0, fader);
        QTest::keyClick(fader, Qt::Key_Up);
        QCOMPARE(moves, 0);
    }

    void AFaderMovedByCodeShowsItAndRunsNothing() {
        int moves = 0;
        form_->Slider2[3].Moved = [&] { ++moves; };
        form_->Slider2[3].SetPosition(10);
        QCOMPARE(Find<ui::Fader>("Slider2(3)")->value(), 10);
        form_->Slider2[3].SetPosition(200);
        QCOMPARE(Find<ui::Fader>("Slider2(3)")->value(), 150);
        QCOMPARE(form_->Slider2[3].Position(), 200);
        QCOMPARE(moves, 0);
    }

    void AClickOnTheCapOfAFaderPastItsRangeChoosesWhatShows() {
        form_->Slider2[3].SetPosition(200);
        auto* fader = Find<ui::Fader>("Slider2(3)");
        QCOMPARE(fader->toolTip(), QStringLiteral("The device holds -50, outside the scale"));
        Focus(0, fader);
        const QPoint cap(fader->width() / 2, qRound(fader->PlaceOf(150)));
        QTest::mousePress(fader, Qt::LeftButton, {}, cap);
        QCOMPARE(form_->Slider2[3].Position(), 200);
        QTest::mouseRelease(fader, Qt::LeftButton, {}, cap);
        QCOMPARE(form_->Slider2[3].Position(), 150);
        QVERIFY(fader->toolTip().isEmpty());
        QTest::mouseClick(fader, Qt::LeftButton, {}, cap);
        QCOMPARE(form_->Slider2[3].Position(), 150);
    }

    void ADraggedCapRunsTheEventOncePerPosition() {
        std::vector<int> positions;
        form_->Slider1[0].SetPosition(60);
        form_->Slider1[0].Moved = [&] { positions.push_back(form_->Slider1[0].Position()); };
        form_->SSTab1.SetTab(controls::GainsTab);
        auto* fader = Find<ui::Fader>("Slider1(0)");
        const int x = fader->width() / 2;
        const auto at = [&](int position) { return QPoint(x, qRound(fader->PlaceOf(position))); };
        QTest::mousePress(fader, Qt::LeftButton, {}, at(60));
        QTest::mouseMove(fader, at(50));
        QTest::mouseMove(fader, at(50));
        QTest::mouseMove(fader, at(30));
        QTest::mouseRelease(fader, Qt::LeftButton, {}, at(30));
        QCOMPARE(positions, (std::vector<int>{50, 30}));
    }

    void APressOnTheGrooveMovesALargeStep() {
        form_->Slider1[0].SetPosition(60);
        form_->SSTab1.SetTab(controls::GainsTab);
        auto* fader = Find<ui::Fader>("Slider1(0)");
        QTest::mouseClick(fader, Qt::LeftButton, {}, QPoint(fader->width() / 2, qRound(fader->PlaceOf(110))));
        QCOMPARE(form_->Slider1[0].Position(), 65);
    }

    void AHeldPressRepeatsUntilItIsLetGo_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("groove") << QStringLiteral("Slider2(3)");
        QTest::newRow("arrows") << QStringLiteral("UpDown3(3)");
    }
    void AHeldPressRepeatsUntilItIsLetGo() {
        QFETCH(const QString, name);
        auto* widget = view_->findChild<QWidget*>(name);
        const QPoint low(widget->width() / 2, widget->height() - 9);
        int steps = 0;
        bool lose_the_mouse = false;
        const auto step = [&] {
            ++steps;
            if (lose_the_mouse) {
                QEvent lost(QEvent::UngrabMouse);
                QApplication::sendEvent(widget, &lost);
            }
        };
        form_->Slider2[3].SetPosition(0);
        form_->UpDown3[3].SetPosition(40);
        form_->Slider2[3].Moved = step;
        form_->UpDown3[3].Changed = step;
        QTest::mousePress(widget, Qt::LeftButton, {}, low);
        QCOMPARE(steps, 1);
        QTRY_VERIFY(steps >= 3);
        QTest::mouseRelease(widget, Qt::LeftButton, {}, low);
        const int after = steps;
        QTest::qWait(450);
        QCOMPARE(steps, after);
        // A press that its own step ends does not repeat.
        lose_the_mouse = true;
        QTest::mousePress(widget, Qt::LeftButton, {}, low);
        QTest::qWait(450);
        QCOMPARE(steps, after + 1);
        QTest::mouseRelease(widget, Qt::LeftButton, {}, low);
    }

    void AWheelChangesNothingWithoutTheKeyboard_data() {
        QTest::addColumn<QString>("name");
        QTest::addColumn<int>("tab");
        QTest::newRow("fader") << QStringLiteral("Slider2(3)") << 0;
        QTest::newRow("list") << QStringLiteral("Combo1(0)") << 0;
        QTest::newRow("arrows") << QStringLiteral("UpDown3(3)") << 0;
        QTest::newRow("tabs") << QStringLiteral("SSTab1") << 0;
    }
    void AWheelChangesNothingWithoutTheKeyboard() {
        QFETCH(const QString, name);
        QFETCH(const int, tab);
        form_->Slider2[3].SetPosition(75);
        form_->Combo1[0].Select(1);
        form_->UpDown3[3].SetPosition(8);
        Focus(tab, Find<QWidget>("Text4(0)"));
        for (const int turn : {240, -120, -120}) {
            TurnWheel(*view_->findChild<QWidget*>(name), turn);
            QCOMPARE(form_->Slider2[3].Position(), 75);
            QCOMPARE(form_->Combo1[0].Index(), 1);
            QCOMPARE(form_->UpDown3[3].Position(), 8);
            QCOMPARE(form_->SSTab1.Tab(), tab);
        }
        QVERIFY(Find<QWidget>("Text4(0)")->hasFocus());
    }

    void AWheelTurnsTheFaderThatHasTheKeyboard() {
        form_->Slider2[3].SetPosition(75);
        auto* fader = Find<ui::Fader>("Slider2(3)");
        Focus(0, fader);
        TurnWheel(*fader, 60);
        QCOMPARE(form_->Slider2[3].Position(), 75);
        TurnWheel(*fader, 60);
        QCOMPARE(form_->Slider2[3].Position(), 74);
    }

    void ArrowsStepTheirUpDown() {
        int clicks = 0;
        form_->UpDown2[8].SetPosition(100);
        form_->UpDown2[8].Clicked = [&] { ++clicks; };
        auto* arrows = Find<ui::UpDownArrows>("UpDown2(8)");
        Focus(0, arrows);
        QTest::mouseClick(arrows, Qt::LeftButton, {}, QPoint(arrows->width() / 2, 4));
        QCOMPARE(form_->UpDown2[8].Position(), 101);
        QTest::mouseClick(arrows, Qt::LeftButton, {}, QPoint(arrows->width() / 2, arrows->height() - 4));
        QCOMPARE(form_->UpDown2[8].Position(), 100);
        QTest::keyClick(arrows, Qt::Key_PageUp);
        QCOMPARE(form_->UpDown2[8].Position(), 110);
        QCOMPARE(clicks, 3);
    }

    void AKeyIsReplacedAsTheControlSays() {
        std::string keys;
        form_->Text4[0].SetText("100");
        form_->Text4[0].KeyPressed = [&](char key) {
            keys += key;
            return key == 'x' ? '?' : key == 'y' ? '\0' : key;
        };
        auto* field = Find<ui::TextField>("Text4(0)");
        Focus(0, field);
        field->end(false);
        QTest::keyClicks(field, QStringLiteral("5xy"));
        QCOMPARE(field->text(), QStringLiteral("1005?"));
        QCOMPARE(form_->Text4[0].Text(), std::string("1005?"));
        QTest::keyClick(field, Qt::Key_Backspace);
        QCOMPARE(form_->Text4[0].Text(), std::string("1005"));
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(form_->Text4[0].Text(), std::string("1005"));
        QCOMPARE(keys, std::string("5xy\b\r"));
    }

    void ARefusedEnterPutsItsReplacementIntoTheBox() {
        form_->Text4[0].SetText("1?");
        form_->Text4[0].KeyPressed = [](char) { return '?'; };
        auto* field = Find<ui::TextField>("Text4(0)");
        Focus(0, field);
        field->end(false);
        QTest::keyClick(field, Qt::Key_Return);
        QCOMPARE(form_->Text4[0].Text(), std::string("1??"));
    }

    void ATextSetByTheKeysOwnEventIsShown() {
        form_->Text4[0].SetText("25000");
        form_->Text4[0].KeyPressed = [this](char key) {
            form_->Text4[0].SetText("20000");
            return key;
        };
        auto* field = Find<ui::TextField>("Text4(0)");
        Focus(0, field);
        QTest::keyClick(field, Qt::Key_Enter);
        QCOMPARE(field->text(), QStringLiteral("20000"));
        QCOMPARE(form_->Text4[0].Text(), std::string("20000"));
    }

    void PastedTextGoesThroughTheSameKeys() {
        std::string keys;
        form_->Text5[0].KeyPressed = [&](char key) {
            keys += key;
            return key == ',' ? '.' : key;
        };
        auto* field = Find<ui::TextField>("Text5(0)");
        Focus(0, field);
        QGuiApplication::clipboard()->setText(QStringLiteral("1,5\n7"));
        QTest::keySequence(field, QKeySequence(QKeySequence::Paste));
        QCOMPARE(keys, std::string("1,5"));
        QCOMPARE(form_->Text5[0].Text(), std::string("1.5"));
    }

    void AnErrorOfAKeyBecomesAMessageAndNothingIsEntered() {
        form_->Text8[0].KeyPressed = [](char) -> char { throw RuntimeError(ErrorKind::TypeMismatch, "No number."); };
        auto* field = Find<ui::TextField>("Text8(0)");
        Focus(2, field);
        QTest::keyClicks(field, QStringLiteral("7"));
        QCOMPARE(boxes_->Shown.size(), std::size_t{1});
        QCOMPARE(boxes_->Shown[0].Text, std::string("No number."));
        QCOMPARE(field->text(), QString());
    }

    void ALockedBoxCannotBeTypedIn() {
        form_->Text4[0].SetText("100");
        form_->Text4[0].SetLocked(true);
        auto* field = Find<ui::TextField>("Text4(0)");
        Focus(0, field);
        QTest::keyClicks(field, QStringLiteral("7"));
        QCOMPARE(form_->Text4[0].Text(), std::string("100"));
    }

    void AListFollowsAndTellsTheUsersChoice() {
        std::vector<int> chosen;
        auto* box = Find<ui::ListBox>("Combo3(2)");
        QCOMPARE(box->currentIndex(), -1);
        form_->Combo3[2].Select(1);
        QCOMPARE(box->currentText(), QStringLiteral("In B"));
        form_->Combo3[2].Chosen = [&] { chosen.push_back(form_->Combo3[2].Index()); };
        Focus(4, box);
        QTest::keyClick(box, Qt::Key_Down);
        QCOMPARE(chosen, std::vector<int>{2});
    }

    void MuteAndPhaseToggle() {
        form_->SSTab1.SetTab(controls::GainsTab);
        QTest::mouseClick(Find<QWidget>("Check1(2)"), Qt::LeftButton);
        QCOMPARE(form_->Check1[2].Value(), 1);
        QTest::mouseClick(Find<QWidget>("Check2(2)"), Qt::LeftButton, {}, QPoint(6, 8));
        QCOMPARE(form_->Check2[2].Value(), 1);
        form_->Check1[2].SetValue(0);
        QVERIFY(!Find<QAbstractButton>("Check1(2)")->isChecked());
    }

    void AClickedTabComesToTheTopAndRunsItsEventOnce() {
        int changes = 0;
        form_->SSTab1.Changed = [&] { ++changes; };
        auto* strip = Find<ui::TabStrip>("SSTab1");
        QTest::mouseClick(strip, Qt::LeftButton, {}, strip->tabRect(9).center());
        QCOMPARE(form_->SSTab1.Tab(), 9);
        QCOMPARE(changes, 1);
        QVERIFY(Find<QWidget>("Frame3(0)")->isVisible());
        QVERIFY(!Find<QWidget>("Frame5(0)")->isVisible());
    }

    void BlocksAreClickedByMouseAndKey() {
        int clicks = 0;
        form_->Label100[40].Clicked = [&] { ++clicks; };
        form_->SSTab1.SetTab(controls::OverviewTab);
        auto* block = Find<ui::Block>("Label100(40)");
        QTest::mouseClick(block, Qt::LeftButton);
        Focus(controls::OverviewTab, block);
        QTest::keyClick(block, Qt::Key_Return);
        QCOMPARE(clicks, 2);
    }

    void ADraggedMarkerTellsTheMouseFromItsOwnCornerAndStandsWhereItIsPut() {
        controls::Marker& marker = form_->Label5[0];
        std::string events;
        QPointF told;
        marker.MoveTo(1440.0, 1440.0);
        marker.Pressed = [&] { events += 'p'; };
        marker.Moved = [&](double x, double y) {
            events += 'm';
            told = {x, y};
        };
        marker.Released = [&] { events += 'r'; };
        form_->SSTab1.SetTab(0);
        auto* dot = Find<ui::MarkerDot>("Label5(0)");
        const auto* graph = Find<QWidget>("Picture1(0)");
        const QPoint target(200, 50); // on the graph: 3000, 750 units
        QTest::mousePress(dot, Qt::LeftButton, {}, QPoint(7, 7));
        const auto* plate = dot->parentWidget()->findChild<ui::ValuePlate*>();
        QVERIFY(plate->isVisible());
        QTest::mouseMove(dot, dot->mapFromParent(graph->pos() + target));
        QCOMPARE(told, QPointF(3000.0 - 1440.0, 750.0 - 1440.0));
        // By its centre, 60 units from its corner; and the mouse stays where it is.
        marker.MoveTo(540.0, 1740.0);
        QCOMPARE(dot->geometry().center() - graph->pos(), QPoint(40, 120));
        QTest::mouseMove(dot, dot->mapFromParent(graph->pos() + target));
        QCOMPARE(told, QPointF(3000.0 - 540.0, 750.0 - 1740.0));
        QTest::mouseRelease(dot, Qt::LeftButton, {}, QPoint(7, 7));
        QCOMPARE(events, std::string("pmmr"));
        QVERIFY(!plate->isVisible());
    }

    void TheTabKeyWalksFromFieldToField() {
        auto* field = Find<ui::TextField>("Text4(0)");
        Focus(0, field);
        QTest::keyClick(field, Qt::Key_Tab);
        QVERIFY(Find<QWidget>("Text4(1)")->hasFocus()); // the rows of a panel from left to right
    }
};

NRV_UI_TEST(ControlWindowInputTest);
#include "control_window_input_test.moc"
