#include "tool_dialog_fixture.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QComboBox>
#include <QLineEdit>
#include <QProgressBar>
#include <QScreen>

using namespace nrv;
using namespace nrv::controls;
using namespace nrv::test;

namespace {

constexpr std::array AllDialogs = {ToolDialog::EditNames, ToolDialog::Store,     ToolDialog::Read,
                                   ToolDialog::Password,  ToolDialog::CopyInput, ToolDialog::CopyOutput};

bool IsContainer(const QWidget& widget) {
    return widget.objectName().startsWith(Name("Frame"));
}

/// The widgets of the record's controls that can be seen now, but for frames.
QList<QWidget*> SeenControls(const QDialog& dialog) {
    QList<QWidget*> seen;
    const QList<QWidget*> all = dialog.findChildren<QWidget*>();
    for (QWidget* widget : all) {
        const bool inner =
            widget->parentWidget()->inherits("QAbstractScrollArea") || widget->objectName().startsWith(Name("qt_"));
        if (widget->isVisible() && !widget->objectName().isEmpty() && !inner && !IsContainer(*widget)) {
            seen.append(widget);
        }
    }
    return seen;
}

/// What stands on the screen, whether or not the event loop has run since it was painted.
QImage OnScreen(const QDialog& dialog, const QWidget& widget) {
    const QRect place = PlaceIn(dialog, widget);
    return QGuiApplication::primaryScreen()
        ->grabWindow(dialog.winId(), place.x(), place.y(), place.width(), place.height())
        .toImage();
}

} // namespace

Q_DECLARE_METATYPE(nrv::ToolDialog)

class ToolDialogsTest : public ToolDialogFixture {
    Q_OBJECT

  private slots:
    void initTestCase() { ui::ApplyTheme(*qApp); }

    void init() { FillForms(); }

    void the_list_of_all_dialogs_leaves_none_out() {
        QVERIFY(ui::MakeToolDialog(static_cast<ToolDialog>(AllDialogs.size()), *forms_, entry_, nullptr) == nullptr);
    }

    void every_dialog_has_its_name_and_title_data() {
        QTest::addColumn<ToolDialog>("dialog");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("title");
        QTest::newRow("names") << ToolDialog::EditNames << Name("FrmEditLabel") << Name("NRV-718 Edit Names");
        QTest::newRow("store") << ToolDialog::Store << Name("FrmStore") << Name("NRV-718 Store preset");
        QTest::newRow("read") << ToolDialog::Read << Name("FrmRead") << Name("NRV-718 Read Preset");
        QTest::newRow("password") << ToolDialog::Password << Name("FrmPassword") << Name("NRV-718 Password");
        QTest::newRow("copy input") << ToolDialog::CopyInput << Name("FrmCopyIn") << Name("NRV-718 Copy Input");
        QTest::newRow("copy output") << ToolDialog::CopyOutput << Name("FrmCopyOut") << Name("NRV-718 Copy Output");
    }
    void every_dialog_has_its_name_and_title() {
        QFETCH(ToolDialog, dialog);
        QFETCH(QString, name);
        QFETCH(QString, title);
        const auto window = Open(dialog);
        QCOMPARE(window->objectName(), name);
        QCOMPARE(window->windowTitle(), title);
        QVERIFY(window->isModal());
    }

    void the_texts_are_to_the_letter_data() {
        QTest::addColumn<ToolDialog>("dialog");
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("text");
        const auto row = [](ToolDialog dialog, const char* name, const char* text) {
            QTest::addRow("%d %s", int(dialog), name) << dialog << Name(name) << Name(text);
        };
        row(ToolDialog::EditNames, "Captions(0)", "In A");
        row(ToolDialog::EditNames, "Captions(1)", "In B");
        row(ToolDialog::EditNames, "Captions(2)", "Out1");
        row(ToolDialog::EditNames, "Captions(7)", "Out6");
        row(ToolDialog::EditNames, "Command1(0)", "OK");
        row(ToolDialog::EditNames, "Command1(1)", "Cancel");
        row(ToolDialog::Store, "ListCaption", "Memory Preset");
        row(ToolDialog::Store, "NameCaption", "Edit Name");
        row(ToolDialog::Store, "PositionCaption", "Select position");
        row(ToolDialog::Store, "Text1", "Club Main       ");
        row(ToolDialog::Store, "Command1(0)", "Cancel");
        row(ToolDialog::Store, "Command1(1)", "Store");
        row(ToolDialog::Read, "ListCaption", "Memory Preset");
        row(ToolDialog::Read, "Command1(0)", "Cancel");
        row(ToolDialog::Read, "Command1(1)", "Read");
        row(ToolDialog::CopyInput, "Command1(0)", "Copy InputA to InputB");
        row(ToolDialog::CopyInput, "Command1(1)", "Copy InputB to InputA");
        row(ToolDialog::CopyOutput, "Captions(0)", "Output  Source ");
        row(ToolDialog::CopyOutput, "Captions(1)", "Output  Destination");
        row(ToolDialog::CopyOutput, "Command1", "Copy");
        row(ToolDialog::Password, "LoginCaption", "Insert Password");
        row(ToolDialog::Password, "Label2", "System Unlock");
        row(ToolDialog::Password, "SwitchEnds(0)", "Unlock");
        row(ToolDialog::Password, "SwitchEnds(1)", "Lock");
        row(ToolDialog::Password, "NewCaption", "Insert New Password");
        row(ToolDialog::Password, "ConfirmCaption", "Confirm New Password");
        row(ToolDialog::Password, "Command1(0)", "OK");
        row(ToolDialog::Password, "Command1(1)", "Exit");
        row(ToolDialog::Password, "Command1(2)", "Config new password");
        row(ToolDialog::Password, "Command1(3)", "Confirm");
        row(ToolDialog::Password, "Command1(4)", "Cancel");
        row(ToolDialog::Password, "Command1(5)", "OK");
        row(ToolDialog::Password, "Command1(6)", "<<");
    }
    void the_texts_are_to_the_letter() {
        QFETCH(ToolDialog, dialog);
        QFETCH(QString, name);
        QFETCH(QString, text);
        const auto window = Open(dialog);
        const auto* widget = Find<QWidget>(*window, name.toLatin1().constData());
        // Of a button without the mark of its key, which shows as a line under the letter.
        const bool button = qobject_cast<const QPushButton*>(widget) != nullptr;
        const QString shown = widget->property("text").toString();
        QCOMPARE(button ? QString(shown).remove(u'&') : shown, text);
    }

    void nothing_is_cut_off_and_nothing_overlaps_data() {
        QTest::addColumn<ToolDialog>("dialog");
        QTest::addColumn<int>("page");
        for (const ToolDialog dialog : AllDialogs) {
            for (int page = 0; page < (dialog == ToolDialog::Password ? 3 : 1); ++page) {
                QTest::addRow("%d page %d", int(dialog), page) << dialog << page;
            }
        }
    }
    void nothing_is_cut_off_and_nothing_overlaps() {
        QFETCH(ToolDialog, dialog);
        QFETCH(int, page);
        forms_->Store.ProgressBar1.SetVisible(true);
        ShowPage(page);
        const auto window = Open(dialog);
        const QList<QWidget*> seen = SeenControls(*window);
        QVERIFY(seen.size() >= 2);
        for (int i = 0; i < seen.size(); ++i) {
            const QByteArray name = seen[i]->objectName().toLatin1();
            QVERIFY2(LiesInside(*seen[i]), name);
            QVERIFY2(TextFits(*seen[i]), name);
            for (int j = 0; j < i; ++j) {
                QVERIFY2(!PlaceIn(*window, *seen[i]).intersects(PlaceIn(*window, *seen[j])),
                         name + " and " + seen[j]->objectName().toLatin1());
            }
        }
        // Its size is its content's.
        QCOMPARE(window->minimumSize(), window->maximumSize());
    }

    void the_longest_texts_have_room() {
        const auto store = Open(ToolDialog::Store);
        auto* list = Find<QListWidget>(*store, "List1");
        QVERIFY(list->visualItemRect(list->item(7)).bottom() <= list->viewport()->height());
        QVERIFY(list->fontMetrics().horizontalAdvance(list->item(3)->text()) < list->viewport()->width());
        const auto* name = Find<QLineEdit>(*store, "Text1");
        QVERIFY(name->fontMetrics().horizontalAdvance(Name("WWWWWWWWWWWWWWWW")) < name->width() - 8);
        const auto names = Open(ToolDialog::EditNames);
        const auto* box = Find<QLineEdit>(*names, "Text1(2)");
        QVERIFY(box->fontMetrics().horizontalAdvance(box->text()) < box->width() - 8);
    }

    void the_buttons_reach_their_record() {
        std::vector<std::string> clicked;
        const auto hear = [&clicked](Button& button, const std::string& name) {
            button.Clicked = [&clicked, name] { clicked.push_back(name); };
        };
        std::vector<std::string> expected;
        const auto press = [&](ToolDialog dialog, const char* form, auto& buttons) {
            for (std::size_t i = 0; i < buttons.size(); ++i) {
                hear(buttons[i], form + std::to_string(i));
            }
            const auto window = Open(dialog);
            for (std::size_t i = 0; i < buttons.size(); ++i) {
                const QByteArray name = "Command1(" + QByteArray::number(int(i)) + ")";
                QTest::mouseClick(Find<QPushButton>(*window, name.constData()), Qt::LeftButton);
                expected.push_back(form + std::to_string(i));
            }
        };
        press(ToolDialog::EditNames, "names", forms_->EditNames.Command1);
        press(ToolDialog::Store, "store", forms_->Store.Command1);
        press(ToolDialog::Read, "read", forms_->Read.Command1);
        press(ToolDialog::CopyInput, "copy in", forms_->CopyIn.Command1);
        hear(forms_->CopyOut.Command1, "copy out");
        const auto copy = Open(ToolDialog::CopyOutput);
        QTest::mouseClick(Find<QPushButton>(*copy, "Command1"), Qt::LeftButton);
        expected.emplace_back("copy out");
        QCOMPARE(clicked, expected);
    }

    void the_input_names_are_locked_and_show_their_bytes_as_dots() {
        forms_->EditNames.Text1[0].SetText(std::string("\0B\x80 \xE9\x1F", 6));
        const auto window = Open(ToolDialog::EditNames);
        for (const char* name : {"Text1(0)", "Text1(1)"}) {
            QVERIFY(Find<QLineEdit>(*window, name)->isReadOnly());
        }
        auto* box = Find<QLineEdit>(*window, "Text1(0)");
        QCOMPARE(box->text(), Name("\xB7"
                                   "B\xB7 \xE9\xB7"));
        QTest::keyClicks(box, Name("x"));
        // What is shown never becomes the text.
        QCOMPARE(forms_->EditNames.Text1[0].Text(), std::string("\0B\x80 \xE9\x1F", 6));
        for (int i = 2; i < 8; ++i) {
            const QByteArray name = "Text1(" + QByteArray::number(i) + ")";
            QVERIFY(!Find<QLineEdit>(*window, name.constData())->isReadOnly());
        }
    }

    void a_name_is_typed_into_the_record_and_ends_at_six() {
        forms_->EditNames.Text1[3].SetText("  Mid ");
        const auto window = Open(ToolDialog::EditNames);
        auto* box = Find<QLineEdit>(*window, "Text1(3)");
        QCOMPARE(box->text(), Name("  Mid "));
        // The click that gives it the keyboard selects the whole, so that typing replaces a name full of blanks.
        QTest::mouseClick(box, Qt::LeftButton);
        QTest::keyClicks(box, Name("Subwoofer"));
        QCOMPARE(forms_->EditNames.Text1[3].Text(), std::string("Subwoo"));
        // A second click places the cursor.
        QTest::mouseClick(box, Qt::LeftButton);
        QVERIFY(!box->hasSelectedText());
        QTest::keyClick(box, Qt::Key_End);
        QTest::keyClick(box, Qt::Key_Backspace);
        QCOMPARE(forms_->EditNames.Text1[3].Text(), std::string("Subwo"));
    }

    void a_locked_system_disables_the_names_and_their_button() {
        const auto window = Open(ToolDialog::EditNames);
        forms_->EditNames.Text1[4].SetEnabled(false);
        forms_->EditNames.Command1[0].SetEnabled(false);
        QVERIFY(!Find<QWidget>(*window, "Text1(4)")->isEnabled());
        QVERIFY(!Find<QWidget>(*window, "Command1(0)")->isEnabled());
        QVERIFY(Find<QWidget>(*window, "Command1(1)")->isEnabled());
    }

    void the_keyboard_goes_from_box_to_box_and_on_to_the_buttons() {
        const auto window = Open(ToolDialog::EditNames);
        QStringList way;
        for (int i = 0; i < 8; ++i) {
            way.append(window->focusWidget()->objectName());
            QTest::keyClick(window->focusWidget(), Qt::Key_Tab);
        }
        QCOMPARE(way.mid(0, 6), QStringList({Name("Text1(2)"), Name("Text1(3)"), Name("Text1(4)"), Name("Text1(5)"),
                                             Name("Text1(6)"), Name("Text1(7)")}));
        QCOMPARE(QSet<QString>({way[6], way[7]}), QSet<QString>({Name("Command1(0)"), Name("Command1(1)")}));
        QCOMPARE(window->focusWidget()->objectName(), Name("Text1(2)"));
    }

    void enter_presses_the_default_button_once_data() {
        QTest::addColumn<ToolDialog>("dialog");
        QTest::addColumn<QString>("at");
        QTest::newRow("name") << ToolDialog::EditNames << Name("Text1(5)");
        QTest::newRow("list of the store") << ToolDialog::Store << Name("List1");
        QTest::newRow("name of the store") << ToolDialog::Store << Name("Text1");
        QTest::newRow("list of the read") << ToolDialog::Read << Name("List1");
    }
    void enter_presses_the_default_button_once() {
        QFETCH(ToolDialog, dialog);
        QFETCH(QString, at);
        int pressed = 0;
        int others = 0;
        const auto hear = [&](Button& main, Button& other) {
            main.Clicked = [&] { ++pressed; };
            other.Clicked = [&] { ++others; };
        };
        hear(forms_->EditNames.Command1[0], forms_->EditNames.Command1[1]);
        hear(forms_->Store.Command1[1], forms_->Store.Command1[0]);
        hear(forms_->Read.Command1[1], forms_->Read.Command1[0]);
        const auto window = Open(dialog);
        auto* widget = Find<QWidget>(*window, at.toLatin1().constData());
        widget->setFocus();
        QTest::keyClick(widget, Qt::Key_Return);
        QCOMPARE(pressed, 1);
        QTest::keyClick(widget, Qt::Key_Enter, Qt::KeypadModifier);
        QCOMPARE(pressed, 2);
        QCOMPARE(others, 0);
    }

    void escape_closes_every_dialog() {
        for (const ToolDialog dialog : AllDialogs) {
            const auto window = Open(dialog);
            QVERIFY(window->isVisible());
            QTest::keyClick(window->focusWidget(), Qt::Key_Escape);
            QVERIFY2(!window->isVisible(), window->objectName().toLatin1());
        }
    }

    void the_list_shows_every_byte_of_the_names() {
        const auto window = Open(ToolDialog::Store);
        const auto* list = Find<QListWidget>(*window, "List1");
        QCOMPARE(list->count(), 8);
        QCOMPARE(list->item(0)->text(), Name("Club Main       "));
        QCOMPARE(list->item(1)->text(), Name("  Lead blanks   "));
        QCOMPARE(list->item(2)->text(), Name("\xB7\xB7"
                                             "a\xB7\xB7 z"));
        QCOMPARE(list->item(4)->text(), QString());
        QCOMPARE(list->item(5)->text(), Name("g\xE9n\xE9rique"));
        QCOMPARE(list->toolTip(), Name("Double click to copy name"));
        QCOMPARE(list->currentRow(), 0);
        const auto read = Open(ToolDialog::Read);
        QCOMPARE(Find<QListWidget>(*read, "List1")->toolTip(), Name("Select a preset"));
    }

    void a_click_and_the_arrow_keys_select_a_line() {
        std::vector<int> chosen;
        forms_->Read.List1.Chosen = [&] { chosen.push_back(forms_->Read.List1.Index()); };
        const auto window = Open(ToolDialog::Read);
        auto* list = Find<QListWidget>(*window, "List1");
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, Line(*list, 3));
        QTest::keyClick(list, Qt::Key_Down);
        QTest::keyClick(list, Qt::Key_Up);
        QTest::keyClick(list, Qt::Key_End);
        QCOMPARE(chosen, (std::vector<int>{3, 4, 3, 7}));
        // The program's own choice shows and is not taken for the user's.
        forms_->Read.List1.Select(2);
        QCOMPARE(list->currentRow(), 2);
        QCOMPARE(chosen, (std::vector<int>{3, 4, 3, 7, 2}));
        forms_->Read.List1.SetItems({"one", "two", "three"});
        QCOMPARE(list->count(), 3);
        QCOMPARE(list->currentRow(), 2);
        QCOMPARE(chosen.size(), std::size_t{5});
    }

    void a_double_click_is_told_after_the_choice() {
        std::vector<std::string> heard;
        FrmStore& store = forms_->Store;
        store.List1.Chosen = [&] { heard.push_back("chosen " + std::to_string(store.List1.Index())); };
        store.List1.DoubleClicked = [&] {
            heard.emplace_back("double click");
            store.Text1.SetText(store.List1.ShownText());
            store.Combo1.Select(store.List1.Shown());
        };
        const auto window = Open(ToolDialog::Store);
        auto* list = Find<QListWidget>(*window, "List1");
        QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, Line(*list, 1));
        QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, Line(*list, 1));
        QCOMPARE(heard, (std::vector<std::string>{"chosen 1", "double click"}));
        QCOMPARE(Find<QLineEdit>(*window, "Text1")->text(), Name("  Lead blanks   "));
        QCOMPARE(Find<QComboBox>(*window, "Combo1")->currentText(), Name("2"));
    }

    void the_stores_name_and_position_reach_the_record() {
        FrmStore& store = forms_->Store;
        const auto window = Open(ToolDialog::Store);
        auto* name = Find<QLineEdit>(*window, "Text1");
        QTest::mouseClick(name, Qt::LeftButton);
        QTest::keyClicks(name, Name("A name of seventeen"));
        QCOMPARE(store.Text1.Text(), std::string("A name of sevent"));
        auto* position = Find<QComboBox>(*window, "Combo1");
        QCOMPARE(position->count(), 8);
        QCOMPARE(position->itemText(7), Name("8"));
        position->setFocus();
        QTest::keyClick(position, Qt::Key_Down);
        QCOMPARE(store.Combo1.Index(), 1);
        QTest::keyClick(position, Qt::Key_End);
        QCOMPARE(store.Combo1.Index(), 7);
    }

    void the_bar_is_painted_between_frames_without_the_event_loop() {
        ProgressBar& record = forms_->Store.ProgressBar1;
        const auto window = Open(ToolDialog::Store);
        auto* bar = Find<QProgressBar>(*window, "ProgressBar1");
        QVERIFY(!bar->isVisible());
        const QRect place = bar->geometry();
        QVERIFY(place.width() > 100 && place.height() >= 6);
        const QImage hidden = OnScreen(*window, *bar);

        record.SetMaximum(480);
        record.SetValue(0);
        record.SetVisible(true);
        record.Refresh();
        QVERIFY(bar->isVisible());
        QCOMPARE(bar->geometry(), place);
        const QImage empty = OnScreen(*window, *bar);
        QVERIFY(empty != hidden);

        record.SetValue(240);
        record.Refresh();
        const QImage half = OnScreen(*window, *bar);
        const QColor done = ui::CurrentTheme().Focus;
        const int middle = half.height() / 2;
        QCOMPARE(half.pixelColor(half.width() / 2 - 3, middle), done);
        QVERIFY(half.pixelColor(half.width() / 2 + 3, middle) != done);

        record.SetValue(450);
        record.Refresh();
        // 450 of 480: the bar never fills.
        const QImage last = OnScreen(*window, *bar);
        QCOMPARE(last.pixelColor(last.width() * 9 / 10, middle), done);
        QVERIFY(last.pixelColor(last.width() * 97 / 100, middle) != done);
        const QSize size = window->size();
        record.SetVisible(false);
        QTest::qWait(20);
        QVERIFY(!bar->isVisible());
        QCOMPARE(window->size(), size);
        QCOMPARE(bar->geometry(), place);
    }

    void the_lists_of_outputs_choose_and_show() {
        FrmCopyOut& copy = forms_->CopyOut;
        const auto window = Open(ToolDialog::CopyOutput);
        auto* source = Find<QComboBox>(*window, "Combo1(0)");
        auto* destination = Find<QComboBox>(*window, "Combo1(1)");
        QCOMPARE(source->count(), 6);
        QCOMPARE(source->itemText(5), Name("&Sub  "));
        QCOMPARE(source->currentIndex(), 0);
        QCOMPARE(destination->currentIndex(), 1);
        QTest::keyClick(destination, Qt::Key_End);
        QCOMPARE(copy.Combo1[1].Index(), 5);
        QCOMPARE(copy.Combo1[0].Index(), 0);
        copy.Combo1[0].Select(3);
        QCOMPARE(source->currentIndex(), 3);
    }

    void the_pointer_follows_the_record() {
        const auto window = Open(ToolDialog::CopyInput);
        forms_->CopyIn.Window.SetMousePointer(Pointer::Hourglass);
        QCOMPARE(window->cursor().shape(), Qt::WaitCursor);
        forms_->CopyIn.Window.SetMousePointer(Pointer::Default);
        QCOMPARE(window->cursor().shape(), Qt::ArrowCursor);
    }

    void an_error_of_an_event_becomes_a_message() {
        forms_->Read.Command1[1].Clicked = [] { throw RuntimeError(ErrorKind::PortGone, "COM 1 went away."); };
        const auto window = Open(ToolDialog::Read);
        QTest::mouseClick(Find<QPushButton>(*window, "Command1(1)"), Qt::LeftButton);
        QCOMPARE(boxes_.Shown.size(), std::size_t{1});
        QCOMPARE(boxes_.Shown[0].Text, std::string("COM 1 went away."));
        QVERIFY(window->isVisible());
    }

    void a_record_outlives_its_dialog() {
        for (const ToolDialog dialog : AllDialogs) {
            Open(dialog).reset();
        }
        // These reach nobody.
        forms_->EditNames.Text1[2].SetText("later");
        forms_->EditNames.Captions[2].SetCaption("later");
        forms_->Store.ProgressBar1.SetVisible(true);
        forms_->Store.ProgressBar1.Refresh();
        forms_->Store.List1.SetItems({});
        forms_->Store.Combo1.Select(4);
        forms_->CopyOut.Combo1[0].SetItems({"x"});
        forms_->CopyIn.Window.SetCaption("later");
        forms_->Password.Check1.SetValue(1);
        forms_->Password.SwitchEnds[0].SetCaption("later");
        for (Button& button : forms_->Password.Command1) {
            button.SetEnabled(false);
        }
        ShowPage(2);
        // And the next dialog shows what they have become.
        const auto window = Open(ToolDialog::EditNames);
        QCOMPARE(Find<QLineEdit>(*window, "Text1(2)")->text(), Name("later"));
    }

    void a_dialog_may_be_closed_from_inside_its_own_events() {
        ui::QtWindowHost host({forms_->Splash, forms_->Main, forms_->Select, forms_->List, forms_->Windows}, boundary_,
                              [](int, QWidget* parent) { return new QWidget(parent); });
        host.SetToolDialogs(
            [this](ToolDialog dialog, QWidget* parent) { return ui::MakeToolDialog(dialog, *forms_, entry_, parent); });
        host.ShowMainWindow();
        int after = 0;
        forms_->Read.Command1[1].Clicked = [&] {
            host.CloseDialog(ToolDialog::Read);
            forms_->Read.List1.Select(5);
            ++after;
        };
        RunAndDo(host, ToolDialog::Read,
                 [](QDialog& window) { QTest::mouseClick(Find<QPushButton>(window, "Command1(1)"), Qt::LeftButton); });
        forms_->Store.List1.DoubleClicked = [&] {
            host.CloseDialog(ToolDialog::Store);
            ++after;
        };
        RunAndDo(host, ToolDialog::Store, [this](QDialog& window) {
            auto* list = Find<QListWidget>(window, "List1");
            QTest::mouseClick(list->viewport(), Qt::LeftButton, {}, Line(*list, 2));
            QTest::mouseDClick(list->viewport(), Qt::LeftButton, {}, Line(*list, 2));
        });
        forms_->Password.Text1.KeyPressed = [&](char key) {
            host.CloseDialog(ToolDialog::Password);
            ++after;
            return key;
        };
        RunAndDo(host, ToolDialog::Password,
                 [](QDialog& window) { QTest::keyClick(window.focusWidget(), Qt::Key_Return); });
        forms_->CopyOut.Combo1[0].Chosen = [&] {
            host.CloseDialog(ToolDialog::CopyOutput);
            ++after;
        };
        RunAndDo(host, ToolDialog::CopyOutput,
                 [](QDialog& window) { QTest::keyClick(Find<QComboBox>(window, "Combo1(0)"), Qt::Key_Down); });
        QCOMPARE(after, 4);
    }

    void a_dialog_goes_with_the_control_window_under_it() {
        ui::QtWindowHost host({forms_->Splash, forms_->Main, forms_->Select, forms_->List, forms_->Windows}, boundary_,
                              [](int, QWidget* parent) { return new QWidget(parent); });
        host.SetToolDialogs(
            [this](ToolDialog dialog, QWidget* parent) { return ui::MakeToolDialog(dialog, *forms_, entry_, parent); });
        host.ShowMainWindow();
        host.ShowControlWindow(0);
        forms_->Password.Command1[3].Clicked = [&] { host.RemoveControlWindow(0); };
        ShowPage(1);
        RunAndDo(host, ToolDialog::Password, [](QDialog& window) {
            QTest::mouseClick(Find<QPushButton>(window, "Command1(3)"), Qt::LeftButton);
            QVERIFY(!window.isVisible());
            QCOMPARE(window.result(), int(QDialog::Rejected));
        });
    }
};

NRV_UI_TEST(ToolDialogsTest);
#include "tool_dialogs_test.moc"
