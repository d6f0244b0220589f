#include "ui/platform/qt_window_host.h"

#include "ports/numbering.h"
#include "ui/windows/connection_dialog.h"
#include "ui/windows/device_list_window.h"
#include "ui/windows/main_window.h"
#include "ui/windows/mdi_child.h"
#include "ui/windows/splash_window.h"

#include <QApplication>
#include <QMdiArea>
#include <QScreen>

#include <utility>

namespace nrv::ui {
namespace {

using Kind = controls::EventSource::Kind;

} // namespace

QtWindowHost::QtWindowHost(WindowRecords records, controls::EventBoundary& boundary, ControlWindowFactory factory)
    : records_(records), boundary_(boundary), factory_(std::move(factory)) {
    // A message box stands alone before the splash window comes: closing it must not end the program.
    QApplication::setQuitOnLastWindowClosed(false);
    boundary_.Current().Watch.Over = [this] { OperationOver(); };
    // Made now and shown later: its port timer is wanted before it is on the screen.
    main_ = std::make_unique<MainWindow>(records_.Main, controls::EventEntry(boundary_, Kind::Program),
                                         [this] { return events_.MainQueryUnload(); });
    QObject::connect(&main_->Area(), &QMdiArea::subWindowActivated, main_.get(),
                     [this](QMdiSubWindow* window) { ControlWindowActivated(window); });
}

QtWindowHost::~QtWindowHost() {
    boundary_.Current().Watch.Over = {};
    events_ = {};
    for (int slot = 0; slot < controls::SlotCount; ++slot) {
        if (control_windows_[At(slot)] != nullptr) {
            Detach(slot);
        }
    }
    for (const QPointer<MdiChild>& window : leaving_) {
        delete window.data();
    }
    main_->Area().disconnect(main_.get());
}

void QtWindowHost::SetGuide(std::function<void()> open) {
    main_->OpenGuide = std::move(open);
}

void QtWindowHost::SetFolder(const QString& folder) {
    main_->Folder = folder;
}

ScreenSize QtWindowHost::Screen() {
    const QScreen* screen = QGuiApplication::primaryScreen();
    return screen == nullptr ? ScreenSize{} : ScreenSize{screen->size().width(), screen->size().height()};
}

void QtWindowHost::ShowSplash() {
    splash_ = std::make_unique<SplashWindow>(records_.Splash, controls::EventEntry(boundary_, Kind::Program));
    splash_->show();
}

void QtWindowHost::UnloadSplash() {
    if (splash_ != nullptr) {
        // Called from the splash window's own timer.
        splash_->hide();
        splash_.release()->deleteLater();
    }
}

void QtWindowHost::RunConnectionDialog() {
    const QPointer<ConnectionDialog> dialog = new ConnectionDialog(
        records_.Select, controls::EventEntry(boundary_, Kind::Dialog),
        [this] { return events_.ConnectionQueryUnload(); }, splash_.get());
    connection_ = dialog;
    dialog->exec();
    delete dialog.data();
}

void QtWindowHost::CloseConnectionDialog() {
    // From inside an event of the dialog itself: the question is a part of that event.
    if (connection_ != nullptr && events_.ConnectionQueryUnload()) {
        connection_->accept();
    }
}

void QtWindowHost::ShowMainWindow() {
    main_->show();
    if (splash_ != nullptr) {
        splash_->raise();
    }
}

void QtWindowHost::UnloadMainWindow() {
    if (events_.MainQueryUnload()) {
        main_->hide();
    }
}

void QtWindowHost::ShowDeviceList() {
    if (list_ == nullptr) {
        list_ = new DeviceListWindow(records_.List, controls::EventEntry(boundary_, Kind::Program),
                                     [this] { events_.ListQueryUnload(); });
        main_->Area().addSubWindow(list_);
        list_->FitContent();
        list_->move(0, 0);
    }
    list_->show();
    list_->FocusGrid();
}

void QtWindowHost::FocusDeviceList() {
    if (list_ != nullptr) {
        main_->Area().setActiveSubWindow(list_);
        list_->raise();
        list_->FocusGrid();
    }
}

bool QtWindowHost::DeviceListMinimised() {
    return list_ != nullptr && list_->isMinimized();
}

void QtWindowHost::MinimiseDeviceList(bool minimised) {
    if (list_ != nullptr) {
        minimised ? list_->showMinimized() : list_->showNormal();
    }
}

void QtWindowHost::RunDialog(ToolDialog dialog) {
    const QPointer<QDialog> window = tool_dialog_factory_(dialog, main_.get());
    tool_dialog_ = window;
    window->exec();
    delete window.data();
}

void QtWindowHost::CloseDialog(ToolDialog) {
    if (tool_dialog_ != nullptr) {
        tool_dialog_->done(QDialog::Accepted);
    }
}

} // namespace nrv::ui
