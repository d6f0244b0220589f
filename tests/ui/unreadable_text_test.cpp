// Texts that cannot be read, met by a fader, arrows, a list or an Enter that has no words of its own for them.

#include "rack_test.h"
#include "ui/widgets/text_field.h"
#include "ui_test.h"

#include <QClipboard>
#include <QSlider>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using driver::Press;

class UnreadableTextTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(RandomRack({Id, OtherId}), 3));
        StandReady();
        QVERIFY(TakeKeyboard());
    }
    void cleanup() { TakeDown(); }

    void AFaderSaysWhichBoxAndGoesBack();
    void ArrowsSayWhichBoxAndGoBack();
    void ASlopeSaysWhichBoxAndGoesBack();
    void AToneFilterGoesBackBehindItsOwnWords_data();
    void AToneFilterGoesBackBehindItsOwnWords();
    void ADelaySaysWhichBoxInTheUnitOfTheWindow();
    void ALongTextIsCutInTheWords();
    void AHeldPressOnTheFaderEndsWithTheBox();
    void FlatGoesOverWhatWasTyped();
    void APasteRaisesOneBox();

  private:
    QLineEdit* Field(const char* name, int index) { return qobject_cast<QLineEdit*>(desk_->Control(name, index)); }
    /// Puts a text into a box that its keys would not let in one by one.
    void Leave(const char* name, int index, const QString& text) {
        auto* field = Field(name, index);
        Type(field, {});
        field->insert(text);
    }
    void ExpectBox(const BoxAnswers& boxes, const char* text, const QLineEdit* field) {
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        QCOMPARE(boxes.Seen()[0].Text, QLatin1String(text));
        QCOMPARE(desk_->Window()->window()->focusWidget(), field);
        QTRY_COMPARE(field->selectedText(), field->text());
        QVERIFY(field->font().italic());
        QVERIFY(desk_->TakeFrames().empty());
    }
};

// Out 2 is channel 3: sections 24 to 27, tone filter 5, sides 2 and 3.

void UnreadableTextTest::AFaderSaysWhichBoxAndGoesBack() {
    auto* fader = qobject_cast<QSlider*>(desk_->Control("Slider2", 26));
    const auto before = Body();
    const int position = fader->value();
    const std::string gain = desk_->Form().Text3[26].Text();
    Leave("Text4", 26, QStringLiteral("12?"));
    BoxAnswers boxes({QStringLiteral("OK")});
    Press(fader, position > 75 ? Qt::Key_Up : Qt::Key_Down);
    ExpectBox(boxes, "Out 2, PEQ 3: \"12?\" is no frequency. Type 20 to 20000 and press Enter.", Field("Text4", 26));
    QCOMPARE(fader->value(), position);
    QCOMPARE(desk_->Form().Slider2[26].Position(), position);
    QCOMPARE(desk_->Form().Text3[26].Text(), gain);
    QVERIFY(Body() == before);
    // What the box asks for helps.
    QTest::keyClicks(Field("Text4", 26), QStringLiteral("1000"));
    Press(Field("Text4", 26), Qt::Key_Return);
    const auto frames = desk_->TakeFrames();
    QCOMPARE(frames.size(), std::size_t{1});
    QCOMPARE(int(frames[0][11]), 150 - position);
    QCOMPARE(int(frames[0][8]), 68);
}

void UnreadableTextTest::ArrowsSayWhichBoxAndGoBack() {
    const auto before = Body();
    const int position = desk_->Form().UpDown3[24].Position();
    const std::string width = desk_->Form().Text5[24].Text();
    Leave("Text4", 24, {});
    BoxAnswers boxes({QStringLiteral("OK")});
    Press(desk_->Control("UpDown3", 24), position > 30 ? Qt::Key_Down : Qt::Key_Up);
    ExpectBox(boxes, "Out 2, PEQ 1: \"\" is no frequency. Type 20 to 20000 and press Enter.", Field("Text4", 24));
    QCOMPARE(desk_->Form().UpDown3[24].Position(), position);
    QCOMPARE(desk_->Form().Text5[24].Text(), width);
    QVERIFY(Body() == before);
}

void UnreadableTextTest::ASlopeSaysWhichBoxAndGoesBack() {
    for (const auto& [side, words] :
         {std::pair{2, "Out 2, High Pass filter: \"?\" is no frequency. Type 20 to 20000 and press Enter."},
          {3, "Out 2, Low Pass filter: \"?\" is no frequency. Type 20 to 20000 and press Enter."}}) {
        auto* list = qobject_cast<QComboBox*>(desk_->Control("Combo2", side));
        const auto before = Body();
        const int entry = list->currentIndex();
        Leave("Text8", side, QStringLiteral("?"));
        BoxAnswers boxes({QStringLiteral("OK")});
        Press(list, entry > 5 ? Qt::Key_Up : Qt::Key_Down);
        ExpectBox(boxes, words, Field("Text8", side));
        QCOMPARE(list->currentIndex(), entry);
        QVERIFY(Body() == before);
        Press(Field("Text8", side), Qt::Key_Escape);
        // With the stored frequency back the same key works.
        Press(list, entry > 5 ? Qt::Key_Up : Qt::Key_Down);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
    }
}

void UnreadableTextTest::AToneFilterGoesBackBehindItsOwnWords_data() {
    QTest::addColumn<QString>("control");
    QTest::addColumn<QString>("words");
    QTest::newRow("fader") << "Slider3"
                           << "  Incorrect value";
    QTest::newRow("type") << "Combo1"
                          << "  Incorrect frequency value";
}

void UnreadableTextTest::AToneFilterGoesBackBehindItsOwnWords() {
    QFETCH(const QString, control);
    QFETCH(const QString, words);
    const auto before = Body();
    const int position = desk_->Form().Slider3[5].Position();
    const int type = desk_->Form().Combo1[5].Index();
    Leave("Text7", 5, QStringLiteral("12?"));
    BoxAnswers boxes({QStringLiteral("OK")});
    const bool low = control == QStringLiteral("Slider3") ? position < 18 : type < 2;
    Press(desk_->Control(qPrintable(control), 5), low ? Qt::Key_Down : Qt::Key_Up);
    ExpectBox(boxes, qPrintable(words), Field("Text7", 5));
    QCOMPARE(desk_->Form().Slider3[5].Position(), position);
    QCOMPARE(desk_->Form().Combo1[5].Index(), type);
    QCOMPARE(qobject_cast<QComboBox*>(desk_->Control("Combo1", 5))->currentIndex(), type);
    QVERIFY(Body() == before);
}

void UnreadableTextTest::ADelaySaysWhichBoxInTheUnitOfTheWindow() {
    desk_->ShowTab(controls::DelaysTab);
    for (const auto& [unit, words] :
         {std::pair{0, "In B, Delay: \"1.2.3\" is no delay. Type 0 to 2500.987 ms and press Enter."},
          {1, "In B, Delay: \"1.2.3\" is no delay. Type 0 to 850.33558 m and press Enter."}}) {
        driver::ClickMark(desk_->Control("Option1", unit));
        desk_->TakeFrames();
        const QString stored = Field("Text2", 1)->text();
        Type(Field("Text2", 1), QStringLiteral("1.2.3"));
        BoxAnswers boxes({QStringLiteral("OK")});
        Press(Field("Text2", 1), Qt::Key_Return);
        ExpectBox(boxes, words, Field("Text2", 1));
        Press(Field("Text2", 1), Qt::Key_Escape);
        QCOMPARE(Field("Text2", 1)->text(), stored);
    }
}

void UnreadableTextTest::ALongTextIsCutInTheWords() {
    Leave("Text4", 26, QString(4000, u'9') + QStringLiteral("?"));
    BoxAnswers boxes({QStringLiteral("OK")});
    Press(desk_->Control("Slider2", 26), desk_->Form().Slider2[26].Position() > 75 ? Qt::Key_Up : Qt::Key_Down);
    ExpectBox(boxes, "Out 2, PEQ 3: \"999999999999999999999999...\" is no frequency. Type 20 to 20000 and press Enter.",
              Field("Text4", 26));
}

void UnreadableTextTest::AHeldPressOnTheFaderEndsWithTheBox() {
    auto* fader = qobject_cast<QSlider*>(desk_->Control("Slider2", 26));
    const int position = fader->value();
    Leave("Text4", 26, QStringLiteral("12?"));
    BoxAnswers boxes({QStringLiteral("OK")});
    QTest::mousePress(fader, Qt::LeftButton, {}, QPoint(fader->width() / 2, position > 75 ? 3 : fader->height() - 3));
    QTest::qWait(700); // twice as long as a held press takes to repeat itself
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(fader->value(), position);
    QVERIFY(desk_->TakeFrames().empty());
}

void UnreadableTextTest::FlatGoesOverWhatWasTyped() {
    const QString stored = Field("Text4", 26)->text();
    Leave("Text4", 26, QStringLiteral("12?"));
    BoxAnswers boxes({QStringLiteral("Yes")});
    driver::Click(desk_->Control("Command1", 3));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{4});
    QCOMPARE(Field("Text4", 26)->text(), stored);
    QVERIFY(!Field("Text4", 26)->font().italic());
}

void UnreadableTextTest::APasteRaisesOneBox() {
    for (const auto& [name, index] : {std::pair{"Text4", 26}, {"Text5", 26}, {"Text7", 5}, {"Text8", 2}}) {
        QGuiApplication::clipboard()->setText(QStringLiteral("Out 2: 63 Hz, 1/3 oct, -6 dB"));
        BoxAnswers boxes({QStringLiteral("OK"), QStringLiteral("OK")});
        Field(name, index)->setFocus();
        QTest::keySequence(Field(name, index), QKeySequence(QKeySequence::Paste));
        QTest::qWait(100);
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
    }
    QVERIFY(desk_->TakeFrames().empty());
}

NRV_UI_TEST(UnreadableTextTest);
#include "unreadable_text_test.moc"
