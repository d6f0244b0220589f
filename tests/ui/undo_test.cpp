// Steps taken back with real keys and mouse, before a virtual rack of two devices.

#include "rack_test.h"
#include "ui_test.h"
#include "widget_edits.h"

#include <QAction>
#include <QKeyEvent>
#include <QWheelEvent>

using namespace nrv;
using namespace nrv::test;

namespace {

void TurnWheel(QWidget& widget) {
    const QPointF middle = QRectF(widget.rect()).center();
    QWheelEvent event(middle, widget.mapToGlobal(middle), QPoint(), QPoint(0, -120), Qt::NoButton, Qt::NoModifier,
                      Qt::NoScrollPhase, false);
    QCoreApplication::sendEvent(&widget, &event);
}

} // namespace

class UndoTest : public RackTest {
    Q_OBJECT

    QAction* Entry(const char* name) {
        return driver::Find(QStringLiteral("MDIFrmMain"))->findChild<QAction*>(QLatin1String(name));
    }
    QString Undoable() { return Entry("Undo")->text().replace(QStringLiteral("&&"), QStringLiteral("&")); }
    std::size_t Depth(int slot = 0) { return desk_->Logic().History.Depth(slot); }
    simulator::PresetBody Live(int id) { return desk_->Live(id); }
    void Press(QWidget* widget, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::ControlModifier) {
        QTest::keyClick(widget, key, modifiers);
    }
    static void Grab(QWidget* widget) { widget->setFocus(); }

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId})));
        StandReady();
        desk_->BringForward(0);
        desk_->ShowTab(3);
        QVERIFY(TakeKeyboard());
    }
    void cleanup() { TakeDown(); }

    void TheKeysTakeAStepBackAndGoItAgain() {
        const simulator::PresetBody before = Live(Id);
        QWidget* const fader = desk_->Control("Slider2", 26);
        Grab(fader);
        Press(fader, Qt::Key_Up, Qt::NoModifier);
        const simulator::PresetBody after = Live(Id);
        QVERIFY(before != after);
        QCOMPARE(Undoable(), QStringLiteral("Undo Out 2, PEQ 3: gain 0 to 0.2 dB"));
        desk_->TakeFrames();
        Press(fader, Qt::Key_Z);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
        QVERIFY(Live(Id) == before);
        QCOMPARE(QString::fromStdString(desk_->Logic().Main.StatusLine.Caption()),
                 QStringLiteral("Undone: Out 2, PEQ 3: gain 0 to 0.2 dB"));
        QVERIFY(!Entry("Undo")->isEnabled());
        Press(fader, Qt::Key_Y);
        QVERIFY(Live(Id) == after);
        Press(fader, Qt::Key_Z);
        Press(fader, Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier);
        QVERIFY(Live(Id) == after);
        QCOMPARE(other_->Difference(), QString());
    }

    void ADragARunOfAKeyAndTheWheelAreOneStepEach() {
        auto* const fader = qobject_cast<QAbstractSlider*>(desk_->Control("Slider1", 11));
        const simulator::PresetBody before = Live(Id);
        const int travel = fader->height() / 3;
        const QPoint middle = fader->rect().center();
        QTest::mousePress(fader, Qt::LeftButton, {}, middle);
        for (int move = 1; move <= 8; ++move) {
            QTest::mouseMove(fader, middle - QPoint(0, travel * move / 8));
        }
        QTest::mouseRelease(fader, Qt::LeftButton, {}, middle - QPoint(0, travel));
        QVERIFY(desk_->TakeFrames().size() > 2);
        QCOMPARE(Depth(), std::size_t{1});
        QVERIFY2(Undoable().startsWith(QStringLiteral("Undo Out 2: gain 0 to ")), qPrintable(Undoable()));

        Grab(fader);
        for (int n = 0; n < 5; ++n) {
            Press(fader, Qt::Key_Down, Qt::NoModifier);
        }
        QCOMPARE(Depth(), std::size_t{2});
        Press(fader, Qt::Key_Up, Qt::NoModifier); // another key
        QCOMPARE(Depth(), std::size_t{3});
        QTest::qWait(ui::GestureWatch::LongestPause + 100);
        Press(fader, Qt::Key_Up, Qt::NoModifier); // the same, but later
        QCOMPARE(Depth(), std::size_t{4});
        for (int n = 0; n < 3; ++n) {
            TurnWheel(*fader);
        }
        QCOMPARE(Depth(), std::size_t{5});
        for (int n = 0; n < 5; ++n) {
            Press(fader, Qt::Key_Z);
        }
        QVERIFY(Live(Id) == before);
    }

    void EveryClickIsAStepHoweverFastTheyCome() {
        QWidget* const mute = desk_->Control("Check1", 11);
        for (int n = 0; n < 3; ++n) {
            driver::Click(mute);
        }
        QCOMPARE(Depth(), std::size_t{3});
        QTest::keyClick(mute, Qt::Key_Space);
        QTest::keyClick(mute, Qt::Key_Space);
        QCOMPARE(Depth(), std::size_t{5});
    }

    void WhatWasTypedAndNotEnteredIsTheFieldsOwn() {
        auto* const field = qobject_cast<QLineEdit*>(desk_->Control("Text4", 26));
        driver::Click(desk_->Control("Check1", 11)); // a step
        Grab(field);
        field->selectAll();
        QTest::keyClicks(field, QStringLiteral("77"));
        desk_->TakeFrames();
        Press(field, Qt::Key_Z);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
        QCOMPARE(Depth(), std::size_t{1});
        QTest::keyClick(field, Qt::Key_Escape); // nothing typed any more
        Press(field, Qt::Key_Z);
        QCOMPARE(Depth(), std::size_t{0});
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{2});
        const QString text = field->text();
        Press(field, Qt::Key_Z); // nothing left, and the field does not go on by itself
        QCOMPARE(field->text(), text);
    }

    void ComparingByAShortPressStaysAndByALongOneLastsAsLongAsItIsHeld() {
        QWidget* const fader = desk_->Control("Slider2", 26);
        Grab(fader);
        const simulator::PresetBody opened = Live(Id);
        Press(fader, Qt::Key_Up, Qt::NoModifier);
        const simulator::PresetBody own = Live(Id);
        const auto let_go = [fader](quint64 after) {
            QKeyEvent release(QEvent::KeyRelease, Qt::Key_Space, Qt::ControlModifier);
            release.setTimestamp(after);
            QCoreApplication::sendEvent(fader, &release);
        };
        QTest::keyPress(fader, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(Live(Id) == opened);
        QVERIFY(Entry("Compare")->isChecked());
        QCOMPARE(desk_->Form().Window.Mark(), std::string("Last preset"));
        let_go(0);
        QVERIFY(Live(Id) == opened);
        QTest::keyPress(fader, Qt::Key_Space, Qt::ControlModifier);
        let_go(1'000'000);
        QVERIFY(Live(Id) == own);
        QVERIFY(!Entry("Compare")->isChecked());

        QTest::keyPress(fader, Qt::Key_Space, Qt::ControlModifier);
        QVERIFY(Live(Id) == opened);
        let_go(1'000'000'000);
        QVERIFY(Live(Id) == own);
        QVERIFY(!Entry("Compare")->isChecked());
        QCOMPARE(other_->Difference(), QString());
    }

    void ADeathAsTheProgramLeavesKeepsItOpenForTheOther() {
        for (const auto& [slot, id] : {std::pair(0, Id), std::pair(1, OtherId)}) {
            desk_->BringForward(slot);
            desk_->ShowTab(3, slot);
            driver::Click(desk_->Control("Check2", 11, slot));
            const simulator::PresetBody own = Live(id);
            Entry("Compare")->trigger();
            QVERIFY(Live(id) != own);
        }
        simulator::PresetBody own = Live(OtherId);
        own[testing::ImageLayout::Phase(3)] ^= 1;
        QWidget* const main = driver::Find(QStringLiteral("MDIFrmMain"));
        desk_->LetDie(Id);
        {
            driver::BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")}));
            main->close();
            QTest::qWait(100);
            QCOMPARE(boxes.Seen().size(), std::size_t{2});
            QCOMPARE(boxes.Seen().back().Title, QLatin1String(DeathTitle));
        }
        QVERIFY(main->isVisible() && !desk_->Process().Ended);
        QVERIFY(!desk_->IsOpen(0) && desk_->IsOpen(1));
        QCOMPARE(QString::fromStdString(desk_->Status()),
                 QStringLiteral("ID:5 does not answer; the comparison stopped. Double-click its row to connect it "
                                "again. The meters rest until the next change."));
        QVERIFY(Live(OtherId) != own);
        driver::BoxAnswers boxes({QStringLiteral("Yes")});
        main->close();
        QVERIFY(desk_->Process().Ended);
        QVERIFY(Live(OtherId) == own);
    }

    void EachWindowHasItsOwnHistory() {
        driver::Click(desk_->Control("Check1", 11));
        desk_->BringForward(1);
        desk_->ShowTab(3, 1);
        QTRY_COMPARE(Undoable(), QStringLiteral("Undo"));
        driver::Click(desk_->Control("Check2", 11, 1));
        QCOMPARE(Undoable(), QStringLiteral("Undo Out 2: phase 0 to 180"));
        desk_->BringForward(0);
        QTRY_COMPARE(Undoable(), QStringLiteral("Undo Out 2: mute off to on"));
        Entry("Undo")->trigger();
        QCOMPARE(Depth(0), std::size_t{0});
        QCOMPARE(Depth(1), std::size_t{1});
    }

    void ADeviceThatDiesWhileAStepIsTakenBackIsReportedOnce() {
        driver::Click(desk_->Control("Check1", 11));
        desk_->LetDie(Id);
        driver::BoxAnswers boxes({QStringLiteral("OK")});
        Entry("Undo")->trigger();
        QTRY_VERIFY(!desk_->IsOpen(0));
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        QVERIFY(!Entry("Undo")->isEnabled());
        Entry("Undo")->trigger();
        QCOMPARE(other_->Difference(), QString());
    }

    void EditsOfEveryKindByWidgetsAreAllUndoneAndAllRedone() {
        const auto all = [this] {
            std::vector<std::vector<simulator::Byte>> bytes;
            for (const int id : {Id, OtherId}) {
                const simulator::PresetBody live = Live(id);
                bytes.emplace_back(live.begin(), live.end());
                bytes.push_back({desk_->Memory(id, 16), desk_->Memory(id, 18)}); // options and mutes
                const auto& body = desk_->Logic().Stores.PresetImage[static_cast<std::size_t>(id)].PresetBody;
                bytes.emplace_back(body.begin(), body.end());
            }
            return bytes;
        };
        const auto first = all();
        WidgetEdits edits(*desk_, 99);
        for (int n = 0; n < 120; ++n) {
            edits.Edit(n / 20 % 2);
        }
        const auto last = all();
        QVERIFY(first != last);
        for (const auto& [key, expected] : {std::pair(Qt::Key_Z, first), std::pair(Qt::Key_Y, last)}) {
            for (const int slot : {0, 1}) {
                desk_->BringForward(slot);
                QTRY_COMPARE(desk_->Logic().Windows.CurrentWindow, slot);
                QAction* const entry = Entry(key == Qt::Key_Z ? "Undo" : "Redo");
                QWidget* const tabs = desk_->Control("SSTab1", controls::NoIndex, slot);
                tabs->setFocus();
                while (entry->isEnabled()) {
                    Press(tabs, key);
                }
            }
            QVERIFY(all() == expected);
        }
    }

    void TheListTellsOfEditsAtTheRow() {
        driver::Click(desk_->Control("Check1", 11));
        const auto* const grid = driver::FindAs<QTableWidget>(QStringLiteral("Devices"));
        QCOMPARE(grid->item(0, 0)->toolTip(),
                 QStringLiteral("Double Click to edit parameters\nOne setting differs from "
                                "what was last loaded, stored or saved."));
        QCOMPARE(grid->item(1, 0)->toolTip(), QString());
    }
};

NRV_UI_TEST(UndoTest);
#include "undo_test.moc"
