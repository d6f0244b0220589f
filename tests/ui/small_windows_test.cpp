#include "find.h"
#include "ui/look/theme.h"
#include "ui/platform/qt_message_boxes.h"
#include "ui/windows/connection_dialog.h"
#include "ui/windows/device_list_window.h"
#include "ui/windows/main_window.h"
#include "ui/windows/splash_window.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QComboBox>
#include <QHelpEvent>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTableWidget>
#include <QTest>
#include <QTimer>
#include <QToolTip>
#include <QWheelEvent>

#include <functional>
#include <memory>
#include <vector>

using namespace nrv;
using namespace nrv::controls;
using test::Find;
using test::LiesInside;
using test::Name;
using test::TextFits;

class SmallWindowsTest : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { ui::ApplyTheme(*qApp); }

    void init() {
        select_ = std::make_unique<FrmSelect>();
        list_ = std::make_unique<FrmSearchNet>();
        main_ = std::make_unique<MDIFrmMain>();
        splash_ = std::make_unique<FrmSplash>();
    }

    void the_dialog_has_the_width_of_its_record_and_shows_what_fits_data() {
        QTest::addColumn<int>("twips");
        QTest::addColumn<int>("pixels");
        QTest::addColumn<int>("frames");
        QTest::newRow("left column") << 2805 << 187 << 0;
        QTest::newRow("ten devices") << 5190 << 346 << 1;
        QTest::newRow("twenty devices") << 7600 << 506 << 2;
    }
    void the_dialog_has_the_width_of_its_record_and_shows_what_fits() {
        QFETCH(int, twips);
        QFETCH(int, pixels);
        QFETCH(int, frames);
        ui::ConnectionDialog dialog(*select_, entry_, [] { return true; });
        dialog.show();
        select_->Window.SetSize(twips, FrmSelect::Height);
        QTest::qWait(20);
        QCOMPARE(dialog.width(), pixels);
        QCOMPARE(Find<QWidget>(dialog, "DeviceFrames(0)")->isVisible(), frames >= 1);
        QCOMPARE(Find<QWidget>(dialog, "DeviceFrames(1)")->isVisible(), frames >= 2);
        for (int line = 0; line < 20; ++line) {
            const QByteArray list = "DeviceIds(" + QByteArray::number(line) + ")";
            const QByteArray label = "DeviceLines(" + QByteArray::number(line) + ")";
            QCOMPARE(Find<QComboBox>(dialog, list)->isVisible(), line < frames * 10);
            if (line < frames * 10) {
                QVERIFY(LiesInside(*Find<QComboBox>(dialog, list)));
                QVERIFY(TextFits(*Find<QLabel>(dialog, label)));
            }
        }
        for (const char* name : {"Link(0)", "Link(1)", "Connection(0)", "Connection(1)", "Connection(2)",
                                 "Connection(3)", "Exit", "Proceed"}) {
            const auto* button = Find<QAbstractButton>(dialog, name);
            QVERIFY2(LiesInside(*button) && TextFits(*button), name);
        }
        QVERIFY(LiesInside(*Find<QComboBox>(dialog, "IdSelect")));
        QVERIFY(LiesInside(*Find<QComboBox>(dialog, "ComSelect")));
        // Nothing of one column reaches into the next.
        if (frames > 0) {
            QVERIFY(Find<QWidget>(dialog, "PortFrame")->mapTo(&dialog, QPoint()).x() +
                        Find<QWidget>(dialog, "PortFrame")->width() <=
                    Find<QWidget>(dialog, "DeviceFrames(0)")->x());
        }
    }

    void the_dialog_shows_the_texts_of_its_record() {
        ui::ConnectionDialog dialog(*select_, entry_, [] { return true; });
        QCOMPARE(dialog.windowTitle(), Name("Select"));
        QCOMPARE(Find<QAbstractButton>(dialog, "Connection(1)")->text(), Name("with 2 or max 20 device"));
        QCOMPARE(Find<QAbstractButton>(dialog, "Connection(2)")->text(), Name("with 2 or max 10 device"));
        QCOMPARE(Find<QAbstractButton>(dialog, "Proceed")->text(), Name(">>"));
        QCOMPARE(Find<QLabel>(dialog, "DeviceLines(19)")->text(), Name("Device20 with ID:"));
        const auto* ports = Find<QComboBox>(dialog, "ComSelect");
        QCOMPARE(ports->count(), 33);
        QCOMPARE(ports->itemText(0), Name("NONE"));
        QCOMPARE(ports->itemText(32), Name("COM 32"));
        const auto* ids = Find<QComboBox>(dialog, "IdSelect");
        QCOMPARE(ids->count(), 33);
        QCOMPARE(ids->itemText(0), Name("0"));
        QCOMPARE(ids->itemText(32), Name("32"));
    }

    void the_users_choices_reach_the_record() {
        ui::ConnectionDialog dialog(*select_, entry_, [] { return true; });
        dialog.show();
        int links = 0;
        int chosen = -1;
        int clicks = 0;
        select_->Link[1].Clicked = [&] { ++links; };
        select_->DeviceIds[3].Chosen = [&] { chosen = select_->DeviceIds[3].Index(); };
        select_->Proceed.Clicked = [&] { ++clicks; };
        QTest::mouseClick(Find<QAbstractButton>(dialog, "Link(1)"), Qt::LeftButton);
        QCOMPARE(links, 1);
        QVERIFY(select_->Link[1].Selected());
        select_->Window.SetSize(FrmSelect::TenWidth, FrmSelect::Height);
        QTest::keyClicks(Find<QComboBox>(dialog, "DeviceIds(3)"), Name("7"));
        QTest::keyClick(Find<QComboBox>(dialog, "DeviceIds(3)"), Qt::Key_Down);
        QCOMPARE(chosen, 8);
        QTest::mouseClick(Find<QPushButton>(dialog, "Proceed"), Qt::LeftButton);
        QCOMPARE(clicks, 1);
    }

    void a_wheel_turns_no_list_that_has_not_the_keyboard() {
        select_->Window.SetSize(FrmSelect::TenWidth, FrmSelect::Height);
        ui::ConnectionDialog dialog(*select_, entry_, [] { return true; });
        dialog.show();
        int chosen = 0;
        for (List* list : {&select_->ComSelect, &select_->IdSelect, &select_->DeviceIds[3]}) {
            list->Select(5);
            list->Chosen = [&chosen] { ++chosen; };
        }
        Find<QAbstractButton>(dialog, "Link(0)")->setFocus();
        for (const char* const name : {"ComSelect", "IdSelect", "DeviceIds(3)"}) {
            auto* list = Find<QComboBox>(dialog, name);
            for (const int turn : {120, -120, -120}) {
                const QPointF middle(list->rect().center());
                QWheelEvent wheel(middle, list->mapToGlobal(middle), {}, QPoint(0, turn), Qt::NoButton, {},
                                  Qt::NoScrollPhase, false);
                QCoreApplication::sendEvent(list, &wheel);
            }
            QCOMPARE(list->currentIndex(), 5);
            QVERIFY(!list->hasFocus());
        }
        QCOMPARE(chosen, 0);
    }

    void a_disabled_frame_disables_its_list() {
        ui::ConnectionDialog dialog(*select_, entry_, [] { return true; });
        select_->IdFrame.SetEnabled(false);
        QVERIFY(!Find<QComboBox>(dialog, "IdSelect")->isEnabled());
        QVERIFY(Find<QComboBox>(dialog, "ComSelect")->isEnabled());
        select_->IdFrame.SetEnabled(true);
        QVERIFY(Find<QComboBox>(dialog, "IdSelect")->isEnabled());
    }

    void closing_the_dialog_asks_by_whatever_means() {
        int asked = 0;
        bool answer = false;
        ui::ConnectionDialog dialog(*select_, entry_, [&] {
            ++asked;
            return answer;
        });
        dialog.show();
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(asked, 1);
        QVERIFY(dialog.isVisible());
        dialog.close();
        QCOMPARE(asked, 2);
        QVERIFY(dialog.isVisible());
        answer = true;
        QTest::keyClick(&dialog, Qt::Key_Escape);
        QCOMPARE(asked, 3);
        QVERIFY(!dialog.isVisible());
    }

    void the_list_shows_its_rows_and_every_byte_of_them() {
        list_->Devices.SetSize(3, 1, FrmSearchNet::ColumnWidth);
        ui::DeviceListWindow window(*list_, entry_, [] {});
        window.show();
        const auto* grid = Find<QTableWidget>(window, "Devices");
        QCOMPARE(window.windowTitle(), Name(" List ID"));
        QCOMPARE(grid->columnCount(), 1);
        QCOMPARE(grid->rowCount(), 3);
        QCOMPARE(grid->horizontalHeaderItem(0)->text(), Name("Name & ID Device"));
        list_->Devices.SetCell(0, 0, "  Device Demo     ID:7");
        list_->Devices.SetCell(1, 0, std::string("A\0B\x7F\xADZ", 6) + "  ID:8");
        QCOMPARE(grid->item(0, 0)->text(), Name("  Device Demo     ID:7"));
        QCOMPARE(grid->item(1, 0)->text(), Name("A\xB7"
                                                "B\xB7\xB7Z  ID:8"));
        QCOMPARE(grid->item(2, 0)->text(), QString());
    }

    void a_wide_row_has_room() {
        list_->Devices.SetSize(1, 1, FrmSearchNet::ColumnWidth);
        ui::DeviceListWindow window(*list_, entry_, [] {});
        window.show();
        auto* grid = Find<QTableWidget>(window, "Devices");
        QVERIFY(grid->columnWidth(0) >= 129);
        const std::string widest(16, 'W');
        list_->Devices.SetCell(0, 0, widest + "  ID:32");
        QTest::qWait(20);
        QVERIFY(grid->columnWidth(0) > grid->fontMetrics().horizontalAdvance(grid->item(0, 0)->text()));
        QVERIFY(grid->columnWidth(0) <= grid->viewport()->width());
        for (const char* notice : {"SearchingNotice", "LoadingNotice"}) {
            QVERIFY2(TextFits(*Find<QLabel>(window, notice)), notice);
        }
    }

    void a_notice_keeps_its_place_while_it_is_hidden() {
        list_->LoadingNotice.SetVisible(false);
        ui::DeviceListWindow window(*list_, entry_, [] {});
        window.show();
        QTest::qWait(20);
        auto* notice = Find<QLabel>(window, "LoadingNotice");
        QVERIFY(!notice->isVisible());
        const int height = Find<QTableWidget>(window, "Devices")->height();
        list_->LoadingNotice.SetVisible(true);
        list_->LoadingNotice.Refresh();
        // At once, with no event served in between.
        QVERIFY(notice->isVisible());
        QVERIFY(TextFits(*notice));
        QCOMPARE(notice->text(), Name("Please wait, Loading controls ......"));
        QTest::qWait(20);
        QCOMPARE(Find<QTableWidget>(window, "Devices")->height(), height);
    }

    void a_double_click_opens_a_device_and_so_does_enter() {
        list_->Devices.SetSize(3, 1, FrmSearchNet::ColumnWidth);
        std::vector<int> opened;
        list_->Devices.DoubleClicked = [&](int row) { opened.push_back(row); };
        ui::DeviceListWindow window(*list_, entry_, [] {});
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto* grid = Find<QTableWidget>(window, "Devices");
        const QPoint second = grid->visualItemRect(grid->item(1, 0)).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, second);
        QTest::keyClick(grid, Qt::Key_Space);
        QTest::keyClick(grid, Qt::Key_F2);
        QVERIFY(opened.empty());
        QTest::keyClick(grid, Qt::Key_Return);
        QTest::keyClick(grid, Qt::Key_Down);
        QTest::keyClick(grid, Qt::Key_Enter);
        QCOMPARE(opened, (std::vector<int>{1, 2}));
        QKeyEvent held(QEvent::KeyPress, Qt::Key_Return, {}, {}, true);
        QApplication::sendEvent(grid, &held); // a key held down opens nothing more
        QCOMPARE(opened.size(), std::size_t{2});
        opened.clear();
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, second);
        QCOMPARE(opened, std::vector<int>{1});
        QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, {20, grid->viewport()->height() - 5});
        QCOMPARE(opened.size(), std::size_t{1});
        QCOMPARE(grid->item(1, 0)->text(), QString());
    }

    void an_error_of_a_double_click_becomes_a_message() {
        list_->Devices.SetSize(1, 1, FrmSearchNet::ColumnWidth);
        boundary_.Set({.TellError = [this](const std::string& text) {
            boxes_.Show({text, "Error", BoxIcon::Critical});
        }});
        list_->Devices.DoubleClicked = [](int) { throw RuntimeError(ErrorKind::PortGone, "COM 1 went away."); };
        ui::DeviceListWindow window(*list_, entry_, [] {});
        window.show();
        QVERIFY(QTest::qWaitForWindowExposed(&window));
        auto* grid = Find<QTableWidget>(window, "Devices");
        const QPoint first = grid->visualItemRect(grid->item(0, 0)).center();
        QTest::mouseClick(grid->viewport(), Qt::LeftButton, {}, first);
        const QString text = TextOfBoxDuring([&] { QTest::mouseDClick(grid->viewport(), Qt::LeftButton, {}, first); });
        QCOMPARE(text, Name("COM 1 went away."));
    }

    void closing_the_list_is_refused() {
        int asked = 0;
        ui::DeviceListWindow window(*list_, entry_, [&] { ++asked; });
        window.show();
        QVERIFY(!window.close());
        QCOMPARE(asked, 1);
        QVERIFY(window.isVisible());
    }

    void the_list_has_its_tool_tip() {
        list_->Devices.SetSize(1, 1, FrmSearchNet::ColumnWidth);
        ui::DeviceListWindow window(*list_, entry_, [] {});
        window.show();
        auto* grid = Find<QTableWidget>(window, "Devices");
        const QPoint place = grid->visualItemRect(grid->item(0, 0)).center();
        QHelpEvent help(QEvent::ToolTip, place, grid->viewport()->mapToGlobal(place));
        QApplication::sendEvent(grid->viewport(), &help);
        QCOMPARE(QToolTip::text(), Name("Double Click to edit parameters"));
        QToolTip::hideText();
    }

    void the_pointer_follows_the_record() {
        ui::DeviceListWindow window(*list_, entry_, [] {});
        list_->Window.SetMousePointer(Pointer::ArrowAndHourglass);
        QCOMPARE(window.widget()->cursor().shape(), Qt::BusyCursor);
        list_->Window.SetMousePointer(Pointer::Hourglass);
        QCOMPARE(window.widget()->cursor().shape(), Qt::WaitCursor);
        list_->Window.SetMousePointer(Pointer::Default);
        QCOMPARE(window.widget()->cursor().shape(), Qt::ArrowCursor);
    }

    void the_status_line_shows_a_sentence_and_the_whole_of_a_long_one_as_tool_tip() {
        ui::MainWindow window(*main_, entry_, [] { return true; });
        window.resize(500, 400);
        window.show();
        main_->StatusLine.SetCaption("The preset was not saved: the disk is full.");
        auto* line = Find<QLabel>(window, "StatusLine");
        QCOMPARE(line->text(), Name("The preset was not saved: the disk is full."));
        QVERIFY(TextFits(*line));
        const std::string sentence(300, 'x');
        main_->StatusLine.SetCaption(sentence);
        QTest::qWait(20);
        // The window does not grow with it.
        QCOMPARE(window.width(), 500);
        QHelpEvent help(QEvent::ToolTip, {5, 5}, line->mapToGlobal(QPoint(5, 5)));
        QApplication::sendEvent(line, &help);
        QVERIFY(QToolTip::text().contains(QString::fromStdString(sentence)));
        QToolTip::hideText();
    }

    void the_file_menu_leaves_the_program() {
        int exits = 0;
        main_->Exit.Clicked = [&] { ++exits; };
        ui::MainWindow window(*main_, entry_, [] { return false; });
        window.show();
        QCOMPARE(window.windowTitle(), Name("NRV-718 Multi Device Remote Control"));
        auto* exit = Find<QAction>(window, "Exit");
        QCOMPARE(exit->text(), Name("Exit"));
        exit->trigger();
        QCOMPARE(exits, 1);
        QApplication::setActiveWindow(&window);
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&window, Qt::Key_Q, Qt::ControlModifier);
        QCOMPARE(exits, 2);
        QVERIFY(!window.close());
        QVERIFY(window.isVisible());
    }

    void the_main_window_runs_its_port_timer() {
        int ticks = 0;
        main_->SerialTimer.Tick = [&] {
            ++ticks;
            main_->SerialTimer.Stop();
        };
        ui::MainWindow window(*main_, entry_, [] { return true; });
        main_->SerialTimer.Start(20);
        QTRY_COMPARE_WITH_TIMEOUT(ticks, 1, 2000);
        QTest::qWait(60);
        QCOMPARE(ticks, 1);
    }

    void the_splash_window_shows_its_labels_and_stays() {
        splash_->Progress.SetVisible(false);
        splash_->Searching.SetVisible(false);
        ui::SplashWindow window(*splash_, entry_);
        window.show();
        QStringList texts;
        const QList<QLabel*> labels = window.findChildren<QLabel*>();
        for (const QLabel* label : labels) {
            QVERIFY(TextFits(*label));
            if (label->isVisible() && !label->text().isEmpty()) {
                texts.append(label->text());
            }
        }
        QCOMPARE(texts, QStringList({Name("NRV-718"), Name("X-over"), Name("Multi device remote control")}));
        splash_->Progress.SetVisible(true);
        splash_->Progress.SetCaption("11.1 %");
        QCOMPARE(Find<QLabel>(window, "Progress")->text(), Name("11.1 %"));
        QVERIFY(Find<QLabel>(window, "Progress")->isVisible());
        splash_->Progress.SetVisible(false);
        // The longest reason there is: a port that a group may open, under a name of the system's.
        splash_->Reason.SetCaption("COM 1 (/dev/ttyUSB0) cannot be opened by this user: it takes a member of the group "
                                   "\"dialout\".");
        const auto* reason = Find<QLabel>(window, "Reason");
        QVERIFY(reason->isVisible());
        QVERIFY(reason->heightForWidth(reason->width()) <= reason->height());
        QVERIFY(!window.close());
        splash_->Window.SetMousePointer(Pointer::ArrowAndHourglass);
        QCOMPARE(window.cursor().shape(), Qt::BusyCursor);
    }

    void a_message_box_shows_its_text_to_the_letter_data() {
        QTest::addColumn<int>("close_by");
        QTest::addColumn<int>("answer");
        QTest::newRow("yes") << int(QMessageBox::Yes) << int(BoxAnswer::Yes);
        QTest::newRow("no") << int(QMessageBox::No) << int(BoxAnswer::No);
        QTest::newRow("close box") << 0 << int(BoxAnswer::No);
    }
    void a_message_box_shows_its_text_to_the_letter() {
        QFETCH(int, close_by);
        QFETCH(int, answer);
        bool seen = false;
        QTimer::singleShot(30, this, [&] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            seen = box->objectName() == Name("MessageBox") && box->windowTitle() == Name("Exit") &&
                   box->text() == Name("               Are you sure ? ") && box->icon() == QMessageBox::NoIcon &&
                   box->textFormat() == Qt::PlainText && box->isModal() &&
                   box->defaultButton() == box->button(QMessageBox::No);
            close_by == 0 ? static_cast<void>(box->close())
                          : box->button(static_cast<QMessageBox::StandardButton>(close_by))->click();
        });
        QCOMPARE(int(boxes_.AreYouSure("Exit", BoxAnswer::No) ? BoxAnswer::Yes : BoxAnswer::No), answer);
        QVERIFY(seen);
    }

    void a_message_of_one_button_answers_ok_however_it_is_closed() {
        QString text;
        QTimer::singleShot(30, this, [&text] {
            auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
            QVERIFY(box != nullptr);
            QCOMPARE(box->icon(), QMessageBox::Warning);
            text = box->text();
            QTest::keyClick(box, Qt::Key_Escape);
        });
        QCOMPARE(boxes_.Show({"<b>5 < 6</b> & more", "Communication problem", BoxIcon::Exclamation}), BoxAnswer::Ok);
        QCOMPARE(text, Name("<b>5 < 6</b> & more"));
    }

  private:
    /// The text of the message box that an action brings up.
    QString TextOfBoxDuring(const std::function<void()>& action) {
        QString text;
        QTimer::singleShot(30, this, [&text] {
            if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                text = box->text();
                box->close();
            }
        });
        action();
        return text;
    }

    ui::QtMessageBoxes boxes_;
    std::unique_ptr<Windows> windows_ = std::make_unique<Windows>();
    EventBoundary boundary_{*windows_};
    EventEntry entry_{boundary_, EventSource::Kind::Program};
    std::unique_ptr<FrmSelect> select_;
    std::unique_ptr<FrmSearchNet> list_;
    std::unique_ptr<MDIFrmMain> main_;
    std::unique_ptr<FrmSplash> splash_;
};

NRV_UI_TEST(SmallWindowsTest);
#include "small_windows_test.moc"
