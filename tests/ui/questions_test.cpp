// Questions and boxes: where they stand, what Enter does to them, and that a hurried user loses nothing.

#include "rack_test.h"
#include "ui_test.h"

#include <QMdiSubWindow>
#include <QMessageBox>
#include <QPushButton>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;

namespace {

void HoldEnter(QWidget* widget, int repetitions) {
    for (int n = 0; n < repetitions; ++n) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"), true);
        QApplication::sendEvent(widget, &press);
    }
}

} // namespace

class QuestionsTest : public RackTest {
    Q_OBJECT

    /// What a box looked like when it was answered.
    struct Seen {
        QString Title;
        QString Preselected;
        QRect Frame;
        Qt::WindowFlags Flags;
        QWidget* Owner = nullptr;
    };

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId})));
        StandReady();
        seen_.clear();
        boxes_ = std::make_unique<BoxAnswers>();
        boxes_->OnBox = [this](QWidget& box) {
            const QPushButton* preselected = nullptr;
            for (const QPushButton* button : box.findChildren<QPushButton*>()) {
                preselected = button->isDefault() && box.focusWidget() == button ? button : preselected;
            }
            seen_.push_back({box.windowTitle(),
                             preselected == nullptr ? QString() : preselected->text().remove(QLatin1Char('&')),
                             box.frameGeometry(), box.windowFlags(), box.parentWidget()});
        };
    }
    void cleanup() {
        boxes_.reset();
        TakeDown();
    }

    void WhatCannotBeUndoneIsPreselectedNo();
    void ABoxIsAsWideAsItsTitleAndStandsBelowTheDialogThatAsked();
    void ABoxBelongsToAWindowOfOursWhileAnotherProgramHasTheKeyboard_data();
    void ABoxBelongsToAWindowOfOursWhileAnotherProgramHasTheKeyboard();
    void EnterHeldDownAtTheLoginConfirmsNothing();
    void EnterHeldDownAnswersNoQuestion();
    void ADeviceThatDiesUnderItsQuestionLeavesNothingBehind();
    void ButtonsShowFocusAndDefault();
    void EnterPressesTheButtonsOfAControlWindow();
    void EnterPressesTheButtonThatHasTheKeyboard_data();
    void EnterPressesTheButtonThatHasTheKeyboard();

  private:
    void AnswerNo(int boxes) {
        for (int n = 0; n < boxes; ++n) {
            boxes_->Next(QStringLiteral("No"));
        }
    }

    std::vector<Seen> seen_;
    std::unique_ptr<BoxAnswers> boxes_;
};

void QuestionsTest::WhatCannotBeUndoneIsPreselectedNo() {
    desk_->Line().WithRack([](simulator::Rack& rack) {
        rack.At(Id).SetMemory(48, 0x55);
        return 0;
    });
    desk_->Logic().Stores.ParamValues[Id].PresetUsed[0] = 85.0;
    AnswerNo(4);
    desk_->ShowTab(2);
    driver::Click(desk_->Control("Command1", 2));
    driver::Click(desk_->Control("Command2", controls::UnconnectTool));
    desk_->Window()->close();
    QVERIFY(desk_->WithTool(controls::ReadPresetTool, "FrmRead",
                            [&](QWidget& dialog) { driver::Click(In(dialog, "Command1(1)")); }));
    QCOMPARE(seen_.size(), std::size_t{4});
    const std::array<const char*, 4> titles{"Flat Eq", "Unconnect device", "ID:5 - Close window", "Read Preset"};
    for (std::size_t n = 0; n < titles.size(); ++n) {
        QCOMPARE(seen_[n].Title, QString::fromLatin1(titles[n]));
        QCOMPARE(seen_[n].Preselected, QStringLiteral("No"));
    }
    QVERIFY(desk_->TakeFrames().empty());
    QVERIFY(desk_->IsOpen(0));
    QCOMPARE(other_->Difference(), QString());
}

void QuestionsTest::ABoxIsAsWideAsItsTitleAndStandsBelowTheDialogThatAsked() {
    const std::array<std::tuple<int, const char*, const char*>, 3> askers{
        std::tuple(int(controls::StorePresetTool), "FrmStore", "Command1(1)"),
        std::tuple(int(controls::EditNamesTool), "FrmEditLabel", "Command1(0)"),
        std::tuple(int(controls::CopyOutputTool), "FrmCopyOut", "Command1")};
    for (const auto& [tool, name, button] : askers) {
        AnswerNo(1);
        QRect asked;
        QVERIFY(desk_->WithTool(tool, name, [&, button = button](QWidget& dialog) {
            driver::Click(In(dialog, button));
            asked = dialog.frameGeometry();
        }));
        const Seen& box = seen_.back();
        QVERIFY2(!box.Frame.intersects(asked), name);
        QVERIFY2(box.Frame.top() > asked.bottom(), name);
        QVERIFY(box.Flags.testFlag(Qt::WindowTitleHint) && box.Flags.testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(!box.Flags.testFlag(Qt::WindowMinimizeButtonHint) && !box.Flags.testFlag(Qt::WindowMaximizeButtonHint));
        QFont title = QApplication::font();
        title.setPixelSize(13);
        title.setBold(true);
        // Room for the title, the desktop's icon and one button.
        QVERIFY(box.Frame.width() >= QFontMetrics(title).horizontalAdvance(box.Title) + 80);
    }
}

void QuestionsTest::ABoxBelongsToAWindowOfOursWhileAnotherProgramHasTheKeyboard_data() {
    QTest::addColumn<bool>("in_dialog");
    QTest::newRow("asked by a window") << false;
    QTest::newRow("asked by a dialog") << true;
}

void QuestionsTest::ABoxBelongsToAWindowOfOursWhileAnotherProgramHasTheKeyboard() {
    QFETCH(bool, in_dialog);
    AnswerNo(1);
    QWidget* owner = driver::Find(QStringLiteral("MDIFrmMain"));
    const auto look_elsewhere = [] {
        QApplication::setActiveWindow(nullptr);
        QVERIFY(QApplication::activeWindow() == nullptr);
    };
    if (in_dialog) {
        QVERIFY(desk_->WithTool(controls::CopyOutputTool, "FrmCopyOut", [&](QWidget& dialog) {
            owner = &dialog;
            look_elsewhere();
            In(dialog, "Command1")->setFocus();
            qobject_cast<QPushButton*>(In(dialog, "Command1"))->click();
        }));
    } else {
        look_elsewhere();
        desk_->Window()->close();
    }
    QCOMPARE(seen_.size(), std::size_t{1});
    QCOMPARE(seen_[0].Owner, owner);
}

void QuestionsTest::EnterHeldDownAtTheLoginConfirmsNothing() {
    const std::array<double, 6> password = desk_->Logic().Stores.ParamValues[Id].DevicePassword;
    QString text;
    for (const double code : password) {
        text += QLatin1Char(static_cast<char>(code));
    }
    QVERIFY(desk_->WithTool(controls::PasswordTool, "FrmPassword", [&](QWidget& dialog) {
        QWidget* box = In(dialog, "Text1");
        Type(box, text);
        desk_->TakeFrames();
        driver::Press(box, Qt::Key_Return);
        QVERIFY(In(dialog, "Frame1")->isVisible());
        HoldEnter(dialog.focusWidget(), 5);
        QVERIFY(desk_->TakeFrames().empty());
        // And so with the keyboard on the button itself.
        In(dialog, "Command1(3)")->setFocus();
        HoldEnter(In(dialog, "Command1(3)"), 5);
        QVERIFY(desk_->TakeFrames().empty());
        QTest::keyClick(In(dialog, "Command1(3)"), Qt::Key_Return);
        QCOMPARE(Difference(desk_->TakeFrames(), {WriteRequest(Id, 16, PlainOptions)}), QString());
    }));
    QCOMPARE(desk_->Status(), std::string("ID:5 is unlocked."));
    QCOMPARE(other_->Difference(), QString());
}

void QuestionsTest::EnterHeldDownAnswersNoQuestion() {
    bool stood = false;
    QTimer::singleShot(100, this, [&] {
        QWidget* box = QApplication::activeModalWidget();
        stood = qobject_cast<QMessageBox*>(box) != nullptr;
        HoldEnter(box->focusWidget(), 5);
        stood = stood && box->isVisible();
        AnswerNo(1);
    });
    driver::Click(desk_->Control("Command2", controls::UnconnectTool));
    QVERIFY(stood);
    QCOMPARE(seen_.size(), std::size_t{1});
}

void QuestionsTest::ADeviceThatDiesUnderItsQuestionLeavesNothingBehind() {
    // It is found dead by what was asked, and the box of the report comes up in the place of the question.
    boxes_->Next(QStringLiteral("Yes"));
    boxes_->Next(QStringLiteral("OK"));
    const auto note = boxes_->OnBox;
    boxes_->OnBox = [&, note](QWidget& box) {
        note(box);
        if (seen_.size() == 1) {
            desk_->LetDie(Id);
        }
    };
    QVERIFY(desk_->WithTool(controls::CopyOutputTool, "FrmCopyOut",
                            [&](QWidget& dialog) { driver::Click(In(dialog, "Command1")); }));
    QVERIFY(driver::WaitUntil([&] { return !desk_->IsOpen(0); }));
    QCOMPARE(seen_.size(), std::size_t{2});
    QCOMPARE(seen_[1].Title, QString::fromLatin1(DeathTitle));
    for (const QWidget* window : QApplication::topLevelWidgets()) {
        QVERIFY2(!window->isVisible() || qobject_cast<const QDialog*>(window) == nullptr,
                 qPrintable(window->objectName()));
    }
    QCOMPARE(other_->Difference(), QString());
}

void QuestionsTest::ButtonsShowFocusAndDefault() {
    QVERIFY(desk_->WithTool(controls::StorePresetTool, "FrmStore", [&](QWidget& dialog) {
        QVERIFY(driver::WaitUntil([&] { return dialog.isActiveWindow(); })); // on a busy machine it is shown first
        auto* cancel = In(dialog, "Command1(0)");
        auto* store = In(dialog, "Command1(1)");
        In(dialog, "Text1")->setFocus();
        const QColor rim = ui::CurrentTheme().Focus;
        const auto rim_of = [](QWidget* button) { return button->grab().toImage().pixelColor(button->width() / 2, 0); };
        QCOMPARE(rim_of(store), rim);
        QVERIFY(rim_of(cancel) != rim);
        const QImage without = store->grab().toImage();
        store->setFocus();
        QVERIFY(store->grab().toImage() != without);
        cancel->setFocus();
        QCOMPARE(rim_of(cancel), rim);
        QVERIFY(rim_of(store) != rim); // Enter would press the other
        In(dialog, "Combo1")->setFocus();
        QCOMPARE(rim_of(store), rim); // and here the dialog's own again
        QVERIFY(rim_of(cancel) != rim);
    }));
}

void QuestionsTest::EnterPressesTheButtonsOfAControlWindow() {
    AnswerNo(2);
    desk_->ShowTab(2);
    driver::Press(desk_->Control("Command1", 2), Qt::Key_Return);
    driver::Press(desk_->Control("Command2", controls::UnconnectTool), Qt::Key_Enter);
    QCOMPARE(seen_.size(), std::size_t{2});
    QCOMPARE(seen_[0].Title, QStringLiteral("Flat Eq"));
    QCOMPARE(seen_[1].Title, QStringLiteral("Unconnect device"));
    // A mute and a box of text have other keys.
    driver::Press(desk_->Control("Check1", 10), Qt::Key_Return);
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(other_->Difference(), QString());
}

void QuestionsTest::EnterPressesTheButtonThatHasTheKeyboard_data() {
    QTest::addColumn<QString>("focus");
    QTest::addColumn<bool>("leaves");
    QTest::newRow("Exit") << QStringLiteral("Exit") << true;
    QTest::newRow("the list of ports") << QStringLiteral("ComSelect") << false;
    QTest::newRow(">>") << QStringLiteral("Proceed") << false;
}

void QuestionsTest::EnterPressesTheButtonThatHasTheKeyboard() {
    QFETCH(QString, focus);
    QFETCH(bool, leaves);
    AnswerNo(1);
    desk_->Logic().Connection.Load();
    const driver::WhenShown shown(QStringLiteral("FrmSelect"), [&](QWidget& dialog) {
        driver::Press(driver::Find(focus, &dialog), Qt::Key_Return);
        QCOMPARE(seen_.size(), std::size_t(leaves ? 1 : 0));
        QCOMPARE(dialog.isVisible(), leaves);
        if (dialog.isVisible()) {
            QCOMPARE(seen_[0].Title, QStringLiteral("Exit"));
            driver::Click(driver::Find(QStringLiteral("Proceed"), &dialog));
        }
    });
    desk_->Application().Host().RunConnectionDialog();
    QVERIFY(shown.Done());
}

NRV_UI_TEST(QuestionsTest);
#include "questions_test.moc"
