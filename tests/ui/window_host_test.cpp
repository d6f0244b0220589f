#include "find.h"
#include "ui/look/theme.h"
#include "ui/platform/qt_message_boxes.h"
#include "ui/platform/qt_window_host.h"
#include "ui_test.h"

#include <QApplication>
#include <QMdiArea>
#include <QMdiSubWindow>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <functional>
#include <memory>
#include <vector>

using namespace nrv;
using namespace nrv::controls;
using test::Find;
using test::Name;

class WindowHostTest : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { ui::ApplyTheme(*qApp); }

    void init() {
        select_ = std::make_unique<FrmSelect>();
        list_ = std::make_unique<FrmSearchNet>();
        main_ = std::make_unique<MDIFrmMain>();
        splash_ = std::make_unique<FrmSplash>();
        windows_ = std::make_unique<Windows>();
        windows_->Loaded.fill(true);
        boundary_ = std::make_unique<EventBoundary>(*windows_);
    }

    void control_windows_come_and_go_with_their_slots() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowDeviceList();
        windows_->ControlWindows[2]->Window.SetCaption("ID:5 NRV-718 - Name Preset loaded from device: Club\x01");
        host->ShowControlWindow(2);
        auto* window = Find<QMdiSubWindow>(host.MainWindow(), "FrmCtrl(2)");
        QCOMPARE(window->windowTitle(), Name("ID:5 NRV-718 - Name Preset loaded from device: Club\xB7"));
        QVERIFY(window->width() >= 728 && window->height() >= 548);
        window->resize(100, 100);
        QVERIFY(window->width() >= 728 && window->height() >= 548);
        QCOMPARE(host.Activated.back(), 2);
        host->RemoveControlWindow(2);
        QTRY_VERIFY(host.MainWindow().findChild<QMdiSubWindow*>(Name("FrmCtrl(2)")) == nullptr);
        QTRY_COMPARE(host.Contents, 0);
        // A change of the record after that reaches nobody.
        windows_->ControlWindows[2]->Window.SetCaption("later");
        host->RemoveControlWindow(2);
    }

    void activating_a_control_window_is_told() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowControlWindow(0);
        host->ShowControlWindow(1);
        host.Activated.clear();
        auto* area = host.MainWindow().findChild<QMdiArea*>();
        area->setActiveSubWindow(Find<QMdiSubWindow>(host.MainWindow(), "FrmCtrl(0)"));
        QCOMPARE(host.Activated, std::vector<int>{0});
    }

    void a_refused_closing_leaves_the_window() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowControlWindow(0);
        host.MayClose = false;
        auto* window = Find<QMdiSubWindow>(host.MainWindow(), "FrmCtrl(0)");
        QVERIFY(!window->close());
        QVERIFY(window->isVisible());
        QCOMPARE(host.Contents, 1);
        host.MayClose = true;
        QVERIFY(window->close());
        QTRY_COMPARE(host.Contents, 0);
        QCOMPARE(host.Asked, 2);
    }

    void the_logic_may_take_the_window_away_while_it_is_asked() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowDeviceList();
        host->ShowControlWindow(0);
        host.WhenAsked = [&] {
            host->RemoveControlWindow(0);
            host->FocusDeviceList();
        };
        Find<QMdiSubWindow>(host.MainWindow(), "FrmCtrl(0)")->close();
        QTRY_COMPARE(host.Contents, 0);
        QCOMPARE(host.MainWindow().findChild<QMdiArea*>()->activeSubWindow()->objectName(), Name("FrmSearchNet"));
    }

    void a_window_goes_from_inside_an_event_of_its_own_and_its_slot_opens_again() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowControlWindow(0);
        auto* button = Find<QPushButton>(host.MainWindow(), "inside");
        QObject::connect(button, &QPushButton::clicked, this, [&] { host->RemoveControlWindow(0); });
        QTest::mouseClick(button, Qt::LeftButton);
        host->ShowControlWindow(0);
        QTRY_COMPARE(host.Contents, 1);
        QVERIFY(Find<QMdiSubWindow>(host.MainWindow(), "FrmCtrl(0)")->isVisible());
        windows_->ControlWindows[0]->Window.SetCaption("anew");
        QCOMPARE(Find<QMdiSubWindow>(host.MainWindow(), "FrmCtrl(0)")->windowTitle(), Name("anew"));
    }

    void minimising_runs_no_resize_and_a_maximised_window_closes() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowControlWindow(0);
        auto* window = Find<QMdiSubWindow>(host.MainWindow(), "FrmCtrl(0)");
        host.Resized = 0;
        window->showMinimized();
        QCOMPARE(host.Resized, 0);
        window->showNormal();
        window->showMaximized();
        QVERIFY(host.Resized > 0);
        window->close();
        QTRY_COMPARE(host.Contents, 0);
    }

    void a_window_follows_the_size_of_its_record_but_not_while_it_is_minimised() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowControlWindow(0);
        auto* window = Find<QMdiSubWindow>(host.MainWindow(), "FrmCtrl(0)");
        controls::Form& record = windows_->ControlWindows[0]->Window;
        record.SetSize(12000, 9000);
        QCOMPARE(window->size(), QSize(800, 600)); // 15 to a pixel
        window->showMinimized();
        const QSize minimised = window->size();
        QVERIFY(minimised.height() < 100);
        record.SetSize(12600, 9300);
        QVERIFY(window->isMinimized());
        QCOMPARE(window->size(), minimised);
    }

    void the_list_shows_the_whole_of_its_content() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowDeviceList();
        const auto* list = Find<QMdiSubWindow>(host.MainWindow(), "FrmSearchNet");
        const auto* grid = Find<QWidget>(host.MainWindow(), "Devices");
        QVERIFY(list->widget()->rect().contains(grid->geometry()));
        QVERIFY(list->rect().contains(list->widget()->geometry()));
    }

    void the_list_is_minimised_and_comes_back() {
        Host host(*this);
        host->ShowMainWindow();
        host->ShowDeviceList();
        QVERIFY(!host->DeviceListMinimised());
        host->MinimiseDeviceList(true);
        QVERIFY(host->DeviceListMinimised());
        host->MinimiseDeviceList(false);
        QVERIFY(!host->DeviceListMinimised());
    }

    void the_connection_dialog_returns_when_it_was_closed() {
        Host host(*this);
        QString stood;
        QTimer::singleShot(30, this, [&] {
            stood = QApplication::activeModalWidget()->objectName();
            host->CloseConnectionDialog();
        });
        host->RunConnectionDialog();
        QCOMPARE(stood, Name("FrmSelect"));
        QVERIFY(QApplication::activeModalWidget() == nullptr);
        host->CloseConnectionDialog();
    }

    void unloading_the_main_window_asks_the_logic() {
        Host host(*this);
        host->ShowMainWindow();
        host.MayClose = false;
        host->UnloadMainWindow();
        QCOMPARE(host.AskedOfAll, 1);
        QVERIFY(host.MainWindow().isVisible());
        host.MayClose = true;
        host->UnloadMainWindow();
        QCOMPARE(host.AskedOfAll, 2);
        QVERIFY(!host.MainWindow().isVisible());
    }

  private:
    /// A host with contents of its own: a widget with one button.
    struct Host {
        explicit Host(WindowHostTest& test)
            : host({*test.splash_, *test.main_, *test.select_, *test.list_, *test.windows_}, *test.boundary_,
                   [this](int, QWidget* parent) {
                       auto* content = new QWidget(parent);
                       content->setMinimumSize(200, 100);
                       auto* button = new QPushButton(content);
                       button->setObjectName(Name("inside"));
                       ++Contents;
                       QObject::connect(content, &QObject::destroyed, qApp, [this] { --Contents; });
                       return content;
                   }) {
            host.SetEvents({[this](int) {
                                ++Asked;
                                if (WhenAsked) {
                                    WhenAsked();
                                }
                                return MayClose;
                            },
                            [this](int slot) { Activated.push_back(slot); }, [this](int, int, int) { ++Resized; },
                            [] {},
                            [this] {
                                ++AskedOfAll;
                                return MayClose;
                            },
                            [] { return true; }});
        }
        ui::QtWindowHost* operator->() { return &host; }
        QWidget& MainWindow() const {
            const QWidgetList all = QApplication::topLevelWidgets();
            for (QWidget* widget : all) {
                if (widget->objectName() == Name("MDIFrmMain")) {
                    return *widget;
                }
            }
            qFatal("there is no main window");
        }

        int Contents = 0;
        int Asked = 0;
        int AskedOfAll = 0; ///< by the main window
        int Resized = 0;
        bool MayClose = true;
        std::function<void()> WhenAsked;
        std::vector<int> Activated;
        ui::QtWindowHost host;
    };

    ui::QtMessageBoxes boxes_;
    std::unique_ptr<FrmSelect> select_;
    std::unique_ptr<FrmSearchNet> list_;
    std::unique_ptr<MDIFrmMain> main_;
    std::unique_ptr<FrmSplash> splash_;
    std::unique_ptr<Windows> windows_;
    std::unique_ptr<EventBoundary> boundary_;
};

NRV_UI_TEST(WindowHostTest);
#include "window_host_test.moc"
