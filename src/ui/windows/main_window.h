#pragma once

#include "controls/event_boundary.h"
#include "controls/forms.h"
#include "ui/windows/held_key.h"

#include <QMainWindow>
#include <QPointer>

#include <functional>

class QMdiArea;

namespace nrv::ui {

class AboutWindow;

/// The main window: the menus, the area of the device list and the control windows, and the status line.
class MainWindow : public QMainWindow {
  public:
    /// `query_unload` says whether the window may close.
    MainWindow(controls::MDIFrmMain& record, const controls::EventEntry& entry, std::function<bool()> query_unload);

    QMdiArea& Area() { return *area_; }
    std::function<void()> OpenGuide;
    QString Folder; ///< of the program's files, as "About" tells it

  protected:
    void closeEvent(QCloseEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void changeEvent(QEvent* event) override;

  private:
    void BuildMenu();
    void BuildEditMenu();
    void BuildHelpMenu();
    void OpenAbout();
    void BuildStatusLine();
    void BindTimers();
    void Place();
    void KeepOnScreen();

    controls::MDIFrmMain& record_;
    controls::EventEntry entry_;
    std::function<bool()> query_unload_;
    QMdiArea* area_;
    QPointer<AboutWindow> about_;
    HeldKey compare_key_{Qt::Key_Space};
};

} // namespace nrv::ui
