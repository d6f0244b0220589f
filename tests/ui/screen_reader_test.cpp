// The windows as a screen reader has them: through the toolkit's accessibility tree, and nothing else.

#include "rack_test.h"
#include "ui_test.h"

#include <QAccessible>
#include <QAccessibleInterface>
#include <QTabBar>
#include <QTableWidget>

#include <map>

using namespace nrv;
using namespace nrv::test;
using testing::ImageLayout;

namespace {

QAccessibleInterface* Told(QObject* object) {
    return QAccessible::queryAccessibleInterface(object);
}

QString NameOf(QWidget* widget) {
    return Told(widget)->text(QAccessible::Name);
}

} // namespace

class ScreenReaderTest : public RackTest {
    Q_OBJECT

    QAccessibleInterface* Of(const char* name, int index = controls::NoIndex) {
        return Told(desk_->Control(name, index));
    }
    bool Press(const char* name, int index) {
        QAccessibleInterface* const control = Of(name, index);
        const QStringList actions = control->actionInterface()->actionNames();
        const QString& press = QAccessibleActionInterface::pressAction();
        const QString& toggle = QAccessibleActionInterface::toggleAction();
        const QString action = actions.contains(press) ? press : toggle;
        if (!actions.contains(action)) {
            return false;
        }
        control->actionInterface()->doAction(action);
        return true;
    }
    void Set(const char* name, int index, int number) { Of(name, index)->valueInterface()->setCurrentValue(number); }

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId})));
        StandReady();
    }
    void cleanup() { TakeDown(); }

    void EveryControlThatTakesTheKeyboardSaysWhatItIsAndNoTwoOfATabSayTheSame() {
        for (int tab = 0; tab < controls::TabCount; ++tab) {
            desk_->ShowTab(tab);
            std::map<QString, QString> named;
            for (QWidget* widget : desk_->Window()->findChildren<QWidget*>()) {
                const bool ours =
                    desk_->Window()->isAncestorOf(widget) && !widget->objectName().startsWith(QLatin1String("qt_"));
                if (!ours || !widget->isVisible() || widget->focusPolicy() == Qt::NoFocus ||
                    widget->objectName().isEmpty()) {
                    continue;
                }
                const QString name = NameOf(widget);
                QVERIFY2(!name.isEmpty(), qPrintable(widget->objectName()));
                QVERIFY2(!named.contains(name), qPrintable(widget->objectName() + u' ' + named[name] + u' ' + name));
                named[name] = widget->objectName();
            }
            QVERIFY(named.size() > 10U);
        }
    }

    void AFaderTellsItsValueInWordsAndANumberSetIsTheUsersMove() {
        desk_->ShowTab(3);
        QAccessibleInterface* const fader = Of("Slider2", 26);
        QCOMPARE(fader->text(QAccessible::Name), QStringLiteral("Out 2, PEQ 3, gain"));
        QCOMPARE(fader->role(), QAccessible::Slider);
        QCOMPARE(fader->text(QAccessible::Value), QStringLiteral("0 dB"));
        QCOMPARE(fader->valueInterface()->maximumValue().toInt(), 150);
        QCOMPARE(fader->valueInterface()->currentValue().toInt(), 75);
        fader->valueInterface()->setCurrentValue(68); // seven steps of 0.2 dB down
        QCOMPARE(fader->text(QAccessible::Value), QStringLiteral("-1.4 dB"));
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
        QCOMPARE(int(desk_->Live(Id)[ImageLayout::Peq(3, 2) + 4]), 68);
        QCOMPARE(desk_->Form().Slider2[26].Position(), 82); // from the top
        fader->valueInterface()->setCurrentValue(68);       // where it stands already
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
        fader->valueInterface()->setCurrentValue(1000);
        QCOMPARE(fader->text(QAccessible::Value), QStringLiteral("15 dB"));
        QCOMPARE(other_->Difference(), QString());
    }

    void ATextIsTypedAndEntersWithItsAction() {
        desk_->ShowTab(3);
        QAccessibleInterface* const field = Of("Text4", 26);
        QCOMPARE(field->text(QAccessible::Name), QStringLiteral("Out 2, PEQ 3, frequency in Hz"));
        auto* editable =
            static_cast<QAccessibleEditableTextInterface*>(field->interface_cast(QAccessible::EditableTextInterface));
        editable->replaceText(0, field->textInterface()->characterCount(), QStringLiteral("1010"));
        QCOMPARE(field->textInterface()->text(0, -1), QStringLiteral("1010"));
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
        field->actionInterface()->doAction(QStringLiteral("Enter"));
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
        QCOMPARE(field->text(QAccessible::Value), QStringLiteral("1000"));
        field->setText(QAccessible::Value, QStringLiteral("20000")); // a whole value enters by itself
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
        QCOMPARE(desk_->Form().Text4[26].Text(), std::string("20000"));
    }

    void AListAPairOfArrowsAMuteAndATabAreWorked() {
        QVERIFY(Of("SSTab1")->childCount() >= controls::TabCount);
        QAccessibleInterface* const tab = Of("SSTab1")->child(3);
        QCOMPARE(tab->text(QAccessible::Name), QStringLiteral("Out 2"));
        desk_->Form().SSTab1.SetTabCaptions(
            {"In A", "In B", "Out 1", "Subs  ", "Out 3", "Out 4", "Out 5", "Out 6", "Gains", "Delays", "Overview"});
        QCOMPARE(tab->text(QAccessible::Name), QStringLiteral("Out 2, Subs"));
        desk_->Form().SSTab1.SetTabCaption(0, "In A\x05\x80");
        QCOMPARE(Of("SSTab1")->child(0)->text(QAccessible::Name), QStringLiteral("In A"));
        tab->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QVERIFY(desk_->Control("Combo2", 2)->isVisible());
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});

        QCOMPARE(Of("Combo2", 2)->role(), QAccessible::ComboBox);
        Set("Combo2", 2, 9);
        QCOMPARE(Of("Combo2", 2)->text(QAccessible::Value), QStringLiteral("-24dB/oct Lz"));
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});

        const int bandwidth = Of("UpDown3", 26)->valueInterface()->currentValue().toInt();
        Set("UpDown3", 26, bandwidth + 1);
        QCOMPARE(desk_->Form().UpDown3[26].Position(), bandwidth + 1);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});

        QVERIFY(!Of("Check1", 11)->state().checked);
        QVERIFY(Press("Check1", 11));
        QVERIFY(Of("Check1", 11)->state().checked);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{2}); // the mute and the memory's bits
        QCOMPARE(other_->Difference(), QString());
    }

    void ARowOfTheDeviceListSaysItsDeviceAndOpensIt() {
        auto* const grid = driver::FindAs<QTableWidget>(QStringLiteral("Devices"));
        QAccessibleInterface* const list = Told(grid);
        QCOMPARE(list->role(), QAccessible::List);
        QCOMPARE(list->text(QAccessible::Name), QStringLiteral("Name & ID Device"));
        QCOMPARE(list->childCount(), 2);
        QAccessibleInterface* const row = list->child(1);
        QCOMPARE(row->role(), QAccessible::ListItem);
        QCOMPARE(row->text(QAccessible::Name), grid->item(1, 0)->text());
        QVERIFY(row->text(QAccessible::Name).contains(QStringLiteral("ID:9")));
        QCOMPARE(list->indexOfChild(row), 1);
        QCOMPARE(row->parent(), list);
        const QRect place = row->rect();
        QCOMPARE(list->childAt(place.center().x(), place.center().y()), row);
        QVERIFY(list->child(2) == nullptr);

        driver::BoxAnswers boxes({QStringLiteral("OK")}); // both stand open
        row->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        QCOMPARE(grid->currentRow(), 1);
        QVERIFY(row->state().selected);
        QVERIFY(!list->child(0)->state().selected);
        grid->setEnabled(false);
        list->child(0)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        QCOMPARE(grid->currentRow(), 1);
    }

    void ALampSaysItsLevelAndWhetherItIsLit() {
        desk_->ShowTab(controls::GainsTab);
        QCOMPARE(Of("Shape1", 0)->text(QAccessible::Name), QStringLiteral("In A, -24 dB lamp"));
        QCOMPARE(Of("Shape1", 0)->role(), QAccessible::Indicator);
        desk_->Form().Shape1[0].Light({0, 255, 0});
        QCOMPARE(Of("Shape1", 0)->text(QAccessible::Value), QStringLiteral("lit"));
        desk_->Form().Shape1[0].Extinguish();
        QCOMPARE(Of("Shape1", 0)->text(QAccessible::Value), QStringLiteral("dark"));
    }

    void WhatIsLockedTakesNothing() {
        desk_->ShowTab(3);
        desk_->Form().Frame5[3].SetEnabled(false);
        Set("Slider2", 26, 10);
        Of("Text4", 26)->setText(QAccessible::Value, QStringLiteral("100"));
        Set("UpDown3", 26, 10);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
        QVERIFY(Of("Slider2", 26)->state().disabled);
    }

    void AValueSetAtADeadDeviceEndsAsTheUsersDoes() {
        desk_->ShowTab(3);
        desk_->LetDie(Id);
        driver::BoxAnswers boxes({QStringLiteral("OK")});
        Of("Text4", 26)->setText(QAccessible::Value, QStringLiteral("500"));
        QTRY_VERIFY(!desk_->IsOpen(0));
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        QCOMPARE(other_->Difference(), QString());
    }
};

NRV_UI_TEST(ScreenReaderTest);
#include "screen_reader_test.moc"
