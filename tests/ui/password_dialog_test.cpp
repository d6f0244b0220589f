#include "tool_dialog_fixture.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QLineEdit>

using namespace nrv;
using namespace nrv::controls;
using namespace nrv::test;

class PasswordDialogTest : public ToolDialogFixture {
    Q_OBJECT

  private slots:
    void initTestCase() { ui::ApplyTheme(*qApp); }
    void init() { FillForms(); }

    void only_the_visible_page_shows() {
        const auto window = Open(ToolDialog::Password);
        const QSize size = window->size();
        const std::array<const char*, 3> pages = {"Frame3", "Frame1", "Frame4"};
        const std::array<const char*, 3> entries = {"Text1", "Check1", "Text2"};
        const std::array<const char*, 3> defaults = {"Command1(0)", "Command1(3)", "Command1(5)"};
        const QRect place = Find<QWidget>(*window, "Frame3")->geometry();
        for (const int shown : {0, 1, 2, 0}) {
            ShowPage(shown);
            for (int page = 0; page < 3; ++page) {
                QCOMPARE(Find<QWidget>(*window, pages[std::size_t(page)])->isVisible(), page == shown);
            }
            QTest::qWait(20);
            QCOMPARE(Find<QWidget>(*window, pages[std::size_t(shown)])->geometry(), place);
            QCOMPARE(window->size(), size);
            QCOMPARE(window->focusWidget(), Find<QWidget>(*window, entries[std::size_t(shown)]));
            QVERIFY(Find<QPushButton>(*window, defaults[std::size_t(shown)])->isDefault());
        }
    }

    void a_page_that_is_shown_lies_over_one_that_is_not_yet_hidden() {
        ShowPage(2);
        const auto window = Open(ToolDialog::Password);
        forms_->Password.Frame3.SetVisible(true);
        const auto* login = Find<QWidget>(*window, "Frame3");
        const QWidget* seen = window->childAt(login->geometry().center());
        QVERIFY(seen == login || login->isAncestorOf(seen));
        forms_->Password.Frame4.SetVisible(false);
        QCOMPARE(window->focusWidget(), Find<QWidget>(*window, "Text1"));
    }

    void the_password_is_typed_unseen_and_the_new_one_in_clear() {
        FrmPassword& password = forms_->Password;
        const auto window = Open(ToolDialog::Password);
        auto* login = Find<QLineEdit>(*window, "Text1");
        QCOMPARE(window->focusWidget(), login);
        QTest::keyClicks(login, Name("aB 9$%xyz"));
        QCOMPARE(password.Text1.Text(), std::string("aB 9$%"));
        QCOMPARE(login->displayText(), Name("******"));
        QCOMPARE(login->echoMode(), QLineEdit::Password);
        for (const char* name : {"Text2", "Text3"}) {
            auto* box = Find<QLineEdit>(*window, name);
            QCOMPARE(box->echoMode(), QLineEdit::Normal);
            QCOMPARE(box->maxLength(), 6);
        }
        ShowPage(2);
        QTest::keyClicks(window->focusWidget(), Name("clear1"));
        QCOMPARE(Find<QLineEdit>(*window, "Text2")->displayText(), Name("clear1"));
        password.Text1.SetText("");
        QCOMPARE(login->text(), QString());
    }

    void enter_in_a_password_box_is_a_key_and_presses_nothing_data() {
        QTest::addColumn<int>("page");
        QTest::addColumn<QString>("name");
        QTest::newRow("login") << 0 << Name("Text1");
        QTest::newRow("new") << 2 << Name("Text2");
        QTest::newRow("confirm") << 2 << Name("Text3");
    }
    void enter_in_a_password_box_is_a_key_and_presses_nothing() {
        QFETCH(int, page);
        QFETCH(QString, name);
        FrmPassword& password = forms_->Password;
        int pressed = 0;
        for (Button& button : password.Command1) {
            button.Clicked = [&] { ++pressed; };
        }
        std::vector<int> keys;
        for (TextBox* box : {&password.Text1, &password.Text2, &password.Text3}) {
            box->KeyPressed = [&](char key) {
                keys.push_back(key);
                return key;
            };
        }
        ShowPage(page);
        const auto window = Open(ToolDialog::Password);
        auto* box = Find<QLineEdit>(*window, name.toLatin1().constData());
        box->setFocus();
        QTest::keyClicks(box, Name("~ A"));
        QTest::keyClick(box, Qt::Key_Return);
        QTest::keyClick(box, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(keys, (std::vector<int>{126, 32, 65, 13, 13}));
        QCOMPARE(pressed, 0);
        QCOMPARE(box->text(), Name("~ A"));
        QVERIFY(window->isVisible());
    }

    void enter_may_change_the_page() {
        FrmPassword& password = forms_->Password;
        int confirmed = 0;
        password.Command1[3].Clicked = [&] { ++confirmed; };
        password.Text1.KeyPressed = [&](char key) {
            if (key == EnterKey) {
                ShowPage(1);
            }
            return key;
        };
        const auto window = Open(ToolDialog::Password);
        QTest::keyClick(window->focusWidget(), Qt::Key_Return);
        QCOMPARE(window->focusWidget(), Find<QWidget>(*window, "Check1"));
        QCOMPARE(confirmed, 0);
        QTest::keyClick(window->focusWidget(), Qt::Key_Return);
        QCOMPARE(confirmed, 1);
    }

    void the_switch_moves_by_mouse_and_keys() {
        CheckBox& record = forms_->Password.Check1;
        std::vector<int> heard;
        record.Clicked = [&] { heard.push_back(record.Value()); };
        ShowPage(1);
        const auto window = Open(ToolDialog::Password);
        auto* lock = Find<QAbstractButton>(*window, "Check1");
        const QImage open = lock->grab().toImage();
        QTest::mouseClick(lock, Qt::LeftButton);
        QVERIFY(lock->isChecked());
        QVERIFY(lock->grab().toImage() != open);
        QTest::keyClick(lock, Qt::Key_Right);
        QTest::keyClick(lock, Qt::Key_Left);
        QVERIFY(!lock->isChecked());
        QTest::keyClick(lock, Qt::Key_Left);
        QTest::keyClick(lock, Qt::Key_Space);
        QCOMPARE(heard, (std::vector<int>{1, 0, 1}));
        record.SetValue(0);
        QVERIFY(!lock->isChecked());
        // "Unlock" stands at the left end and "Lock" at the right.
        const int middle = PlaceIn(*window, *lock).center().x();
        QVERIFY(PlaceIn(*window, *Find<QWidget>(*window, "SwitchEnds(0)")).right() < middle);
        QVERIFY(PlaceIn(*window, *Find<QWidget>(*window, "SwitchEnds(1)")).left() > middle);
    }

    void the_status_follows_the_record() {
        const auto window = Open(ToolDialog::Password);
        forms_->Password.Label2.SetCaption("System Lock");
        QCOMPARE(Find<QLabel>(*window, "Label2")->text(), Name("System Lock"));
        QVERIFY(TextFits(*Find<QLabel>(*window, "Label2")));
    }
};

NRV_UI_TEST(PasswordDialogTest);
#include "password_dialog_test.moc"
