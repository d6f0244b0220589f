// Texts that are typed into control windows and not entered, and what a click and an Enter leave selected.

#include "rack_test.h"
#include "ui_test.h"

#include <QTabBar>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using driver::Press;

namespace {

const QString EnterSendsIt = QStringLiteral("Enter sends it");

} // namespace

class TypedTextTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId}), 0));
        StandReady();
        QVERIFY(TakeKeyboard());
    }
    void cleanup() { TakeDown(); }

    void ATypedTextIsMarkedThroughTabsUntilEnterSendsIt();
    void EscapePutsTheStoredTextBackAndSendsNothing();
    void EscapeWithNothingTypedIsNobodysMatter();
    void AFaderStepThatSendsTheTypedTextAlongEndsTheMark();
    void ItsOwnToolTipComesBackAfterwards();
    void ClosingTheWindowForgetsWhatWasTyped();
    void ANoToTheClosingLeavesWhatWasTyped();
    void ATextTypedInOneWindowWaitsWhileAnotherIsWorkedIn();
    void AnUnreadableEnterLeavesTheMark();
    void AnEmptyDelayLeavesTheMark();
    void ADeviceThatDiesInTheEnterTakesItsWindowAlong();
    void TheFirstClickSelectsAndTheSecondSetsTheCaret();
    void AfterAnEnterTheNextKeysReplaceTheValue();
    void AWrongPasswordIsSelectedForTheNext();
    void NewPasswordsThatDifferAreSelectedForTheNext();
    void TheNamesOpenSelected();
    void TheNameOfTheStoreOpensSelected();
    void AFieldOfADialogIsNeverMarked();

  private:
    QLineEdit* Field(const char* name, int index, int slot = 0) {
        return qobject_cast<QLineEdit*>(desk_->Control(name, index, slot));
    }
    static bool IsMarked(const QLineEdit* field) {
        const bool slanted = field->font().italic();
        const bool tip = field->toolTip() == EnterSendsIt;
        // Just inside the outer border, half way down, where a field that holds is blank.
        const QColor inner = const_cast<QLineEdit*>(field)->grab().toImage().pixelColor(1, field->height() / 2);
        const bool border = inner == ui::CurrentTheme().Typed;
        if (slanted != tip || tip != border) {
            qFatal("%s is half marked", qPrintable(field->objectName()));
        }
        return tip;
    }
};

void TypedTextTest::ATypedTextIsMarkedThroughTabsUntilEnterSendsIt() {
    QLineEdit* field = Field("Text4", 3);
    const QString stored = field->text();
    QVERIFY(!IsMarked(field));
    Type(field, QStringLiteral("1010"));
    QVERIFY(IsMarked(field));
    Press(field, Qt::Key_Tab);
    QVERIFY(!field->hasFocus());
    QVERIFY(IsMarked(field));
    desk_->ShowTab(4);
    desk_->ShowTab(0);
    QVERIFY(IsMarked(field));
    QVERIFY(desk_->TakeFrames().empty());
    Press(field, Qt::Key_Return);
    QVERIFY(!IsMarked(field));
    QCOMPARE(field->text(), QStringLiteral("1000"));
    const auto frames = desk_->TakeFrames();
    QCOMPARE(frames.size(), std::size_t{1});
    QCOMPARE(int(frames[0][8]), 68); // of 1000 Hz
    QCOMPARE(field->selectedText(), QStringLiteral("1000"));
    Type(field, QStringLiteral("1000"));
    QVERIFY(!IsMarked(field)); // it is what holds
    QVERIFY(stored != field->text());
}

void TypedTextTest::EscapePutsTheStoredTextBackAndSendsNothing() {
    for (const auto& [name, index, tab] : {std::tuple{"Text4", 20, 2},
                                           {"Text5", 20, 2},
                                           {"Text7", 4, 2},
                                           {"Text8", 0, 2},
                                           {"Text2", 10, 2},
                                           {"Text2", 2, 9}}) {
        desk_->ShowTab(tab);
        QLineEdit* field = Field(name, index);
        const QString stored = field->text();
        Type(field, QStringLiteral("7"));
        QVERIFY(IsMarked(field));
        Press(field, Qt::Key_Escape);
        QVERIFY(!IsMarked(field));
        QCOMPARE(field->text(), stored);
        QCOMPARE(field->selectedText(), stored);
        QVERIFY(desk_->IsOpen(0));
    }
    QVERIFY(desk_->TakeFrames().empty());
    // Nothing of it goes along with the next step of a fader.
    desk_->ShowTab(2);
    const QString stored = Field("Text4", 20)->text();
    const double held = desk_->Logic().Stores.ParamValues[Id].PeqFrequency[20];
    Press(desk_->Control("Slider2", 20), Qt::Key_Down);
    QCOMPARE(Field("Text4", 20)->text(), stored);
    QCOMPARE(desk_->Logic().Stores.ParamValues[Id].PeqFrequency[20], held);
}

void TypedTextTest::EscapeWithNothingTypedIsNobodysMatter() {
    QLineEdit* field = Field("Text4", 3);
    const QString stored = field->text();
    field->setFocus();
    field->setCursorPosition(1);
    Press(field, Qt::Key_Escape);
    QCOMPARE(field->text(), stored);
    QVERIFY(!field->hasSelectedText());
    QVERIFY(desk_->IsOpen(0));
}

void TypedTextTest::AFaderStepThatSendsTheTypedTextAlongEndsTheMark() {
    for (const char* const typed : {"1010", "1000"}) { // one that the table changes and one that it leaves
        QLineEdit* field = Field("Text4", 5);
        Type(field, QStringLiteral("500"));
        Press(field, Qt::Key_Return);
        Type(field, QLatin1String(typed));
        QVERIFY(IsMarked(field));
        desk_->TakeFrames();
        Press(desk_->Control("Slider2", 5), Qt::Key_Down);
        QVERIFY(!IsMarked(field));
        QCOMPARE(field->text(), QStringLiteral("1000"));
        const auto frames = desk_->TakeFrames();
        QCOMPARE(frames.size(), std::size_t{1});
        QCOMPARE(int(frames[0][8]), 68);
    }
}

void TypedTextTest::ItsOwnToolTipComesBackAfterwards() {
    QLineEdit* field = Field("Text4", 3);
    desk_->Form().Text4[3].SetToolTip("one");
    QCOMPARE(field->toolTip(), QStringLiteral("one"));
    Type(field, QStringLiteral("7"));
    QCOMPARE(field->toolTip(), EnterSendsIt);
    desk_->Form().Text4[3].SetToolTip("two");
    QCOMPARE(field->toolTip(), EnterSendsIt);
    Press(field, Qt::Key_Escape);
    QCOMPARE(field->toolTip(), QStringLiteral("two"));
}

void TypedTextTest::ClosingTheWindowForgetsWhatWasTyped() {
    const std::string stored = desk_->Form().Text4[3].Text();
    Type(Field("Text4", 3), QStringLiteral("77"));
    BoxAnswers boxes({QStringLiteral("Yes")});
    desk_->Window()->close();
    QVERIFY(!desk_->IsOpen(0));
    QCOMPARE(desk_->Form().Text4[3].Text(), stored);
    QVERIFY(desk_->Open(0));
    QCOMPARE(Field("Text4", 3)->text(), QString::fromStdString(stored));
    desk_->ShowTab(0);
    QVERIFY(!IsMarked(Field("Text4", 3)));
}

void TypedTextTest::ANoToTheClosingLeavesWhatWasTyped() {
    QLineEdit* field = Field("Text4", 3);
    Type(field, QStringLiteral("77"));
    BoxAnswers boxes({QStringLiteral("No")});
    desk_->Window()->close();
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QVERIFY(desk_->IsOpen(0));
    QCOMPARE(field->text(), QStringLiteral("77"));
    QVERIFY(IsMarked(field));
}

void TypedTextTest::ATextTypedInOneWindowWaitsWhileAnotherIsWorkedIn() {
    QLineEdit* field = Field("Text4", 3);
    Type(field, QStringLiteral("77"));
    desk_->BringForward(1);
    Type(Field("Text4", 3, 1), QStringLiteral("88"));
    Press(Field("Text4", 3, 1), Qt::Key_Escape);
    QVERIFY(!IsMarked(Field("Text4", 3, 1)));
    desk_->BringForward(0);
    QVERIFY(IsMarked(field));
    Press(field, Qt::Key_Return);
    QVERIFY(!IsMarked(field));
    QCOMPARE(int(desk_->TakeFrames().back()[2]), Id);
}

void TypedTextTest::AnUnreadableEnterLeavesTheMark() {
    QLineEdit* field = Field("Text4", 3);
    BoxAnswers boxes({QStringLiteral("OK"), QStringLiteral("OK")});
    Type(field, QStringLiteral("12x"));
    Press(field, Qt::Key_Return);
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(field->text(), QStringLiteral("12??"));
    QVERIFY(IsMarked(field));
}

void TypedTextTest::AnEmptyDelayLeavesTheMark() {
    QLineEdit* field = Field("Text2", 8);
    const QString stored = field->text();
    BoxAnswers boxes({QStringLiteral("OK")});
    Type(field, {});
    Press(field, Qt::Key_Return);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QVERIFY(IsMarked(field));
    Press(field, Qt::Key_Escape);
    QCOMPARE(field->text(), stored);
}

void TypedTextTest::ADeviceThatDiesInTheEnterTakesItsWindowAlong() {
    Type(Field("Text4", 3), QStringLiteral("77"));
    BoxAnswers boxes({QStringLiteral("OK")});
    desk_->LetDie(Id);
    Press(Field("Text4", 3), Qt::Key_Return);
    QVERIFY(!desk_->IsOpen(0));
    QVERIFY(desk_->IsOpen(1));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Title, QLatin1String(DeathTitle));
}

void TypedTextTest::TheFirstClickSelectsAndTheSecondSetsTheCaret() {
    for (const auto& [name, index] : {std::pair{"Text4", 3}, {"Text2", 8}}) {
        QLineEdit* field = Field(name, index);
        desk_->Control("Slider2", 0)->setFocus();
        QTRY_VERIFY(desk_->Control("Slider2", 0)->hasFocus());
        driver::Click(field);
        QCOMPARE(field->selectedText(), field->text());
        QTest::qWait(QApplication::doubleClickInterval() + 50);
        driver::Click(field);
        QVERIFY(!field->hasSelectedText());
    }
}

void TypedTextTest::AfterAnEnterTheNextKeysReplaceTheValue() {
    QLineEdit* field = Field("Text2", 8);
    Type(field, QStringLiteral("3.021"));
    Press(field, Qt::Key_Return);
    QCOMPARE(field->text(), QStringLiteral("3.021 ms"));
    QTest::keyClicks(field, QStringLiteral("57"));
    QCOMPARE(field->text(), QStringLiteral("57"));
    desk_->TakeFrames();
    Press(field, Qt::Key_Return);
    QCOMPARE(field->text(), QStringLiteral("57 ms"));
    const auto frames = desk_->TakeFrames();
    QCOMPARE(frames.size(), std::size_t{1});
    QCOMPARE(int(frames[0][10]), 57); // the low byte of the coarse delay
    Type(Field("Text5", 3), QStringLiteral("2"));
    Press(Field("Text5", 3), Qt::Key_Return);
    QCOMPARE(Field("Text5", 3)->selectedText(), QStringLiteral("2"));
}

void TypedTextTest::AWrongPasswordIsSelectedForTheNext() {
    for (const bool by_key : {true, false}) {
        BoxAnswers boxes({QStringLiteral("OK")});
        QVERIFY(desk_->WithTool(controls::PasswordTool, "FrmPassword", [&](QWidget& dialog) {
            auto* field = qobject_cast<QLineEdit*>(In(dialog, "Text1"));
            Type(field, QStringLiteral("123456"));
            by_key ? Press(field, Qt::Key_Return) : driver::Click(In(dialog, "Command1(0)"));
            QCOMPARE(boxes.Seen().size(), std::size_t{1});
            QCOMPARE(dialog.focusWidget(), field);
            QCOMPARE(field->selectedText().size(), 6);
            QTest::keyClicks(field, QStringLiteral("000000")); // the factory's
            Press(field, Qt::Key_Return);
            QVERIFY(In(dialog, "Check1")->isVisible());
        }));
    }
}

void TypedTextTest::NewPasswordsThatDifferAreSelectedForTheNext() {
    BoxAnswers boxes({QStringLiteral("OK")});
    QVERIFY(desk_->WithTool(controls::PasswordTool, "FrmPassword", [&](QWidget& dialog) {
        Type(In(dialog, "Text1"), QStringLiteral("000000"));
        Press(In(dialog, "Text1"), Qt::Key_Return);
        driver::Click(In(dialog, "Command1(2)"));
        Type(In(dialog, "Text2"), QStringLiteral("abcdef"));
        Type(In(dialog, "Text3"), QStringLiteral("abcdeg"));
        Press(In(dialog, "Text3"), Qt::Key_Return);
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        auto* again = qobject_cast<QLineEdit*>(In(dialog, "Text3"));
        QCOMPARE(dialog.focusWidget(), again);
        QTest::keyClicks(again, QStringLiteral("abcdef"));
        desk_->TakeFrames();
        Press(again, Qt::Key_Return);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{6});
    }));
}

void TypedTextTest::TheNamesOpenSelected() {
    QVERIFY(desk_->WithTool(controls::EditNamesTool, "FrmEditLabel", [&](QWidget& dialog) {
        auto* field = qobject_cast<QLineEdit*>(dialog.focusWidget());
        QVERIFY(field != nullptr);
        QCOMPARE(field->objectName(), QStringLiteral("Text1(2)"));
        QCOMPARE(field->selectedText(), field->text());
        QTest::keyClicks(field, QStringLiteral("Sub"));
        QCOMPARE(field->text(), QStringLiteral("Sub"));
    }));
}

void TypedTextTest::TheNameOfTheStoreOpensSelected() {
    QVERIFY(desk_->WithTool(controls::StorePresetTool, "FrmStore", [&](QWidget& dialog) {
        auto* field = qobject_cast<QLineEdit*>(In(dialog, "Text1"));
        QVERIFY(!field->text().isEmpty());
        QCOMPARE(dialog.focusWidget(), field);
        QCOMPARE(field->selectedText(), field->text());
        QTest::keyClicks(field, QStringLiteral("Night"));
        QCOMPARE(field->text(), QStringLiteral("Night"));
    }));
}

void TypedTextTest::AFieldOfADialogIsNeverMarked() {
    QVERIFY(desk_->WithTool(controls::EditNamesTool, "FrmEditLabel", [&](QWidget& dialog) {
        auto* field = qobject_cast<QLineEdit*>(In(dialog, "Text1(3)"));
        Type(field, QStringLiteral("Sub"));
        QVERIFY(!field->font().italic());
        QVERIFY(field->toolTip() != EnterSendsIt);
    }));
}

NRV_UI_TEST(TypedTextTest);
#include "typed_text_test.moc"
