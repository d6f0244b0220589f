#pragma once

#include "controls/event_boundary.h"
#include "controls/forms.h"
#include "controls/windows.h"
#include "ports/window_host.h"

#include <QDialog>
#include <QPointer>

#include <array>
#include <functional>
#include <memory>
#include <utility>

class QMdiSubWindow;
class QWidget;

namespace nrv::ui {

class ConnectionDialog;
class DeviceListWindow;
class MainWindow;
class MdiChild;
class SplashWindow;

/// The records that the windows show.
struct WindowRecords {
    controls::FrmSplash& Splash;
    controls::MDIFrmMain& Main;
    controls::FrmSelect& Select;
    controls::FrmSearchNet& List;
    controls::Windows& Control;
};

/// What the user does to whole windows. Each runs through the boundary; an error refuses the closing.
struct WindowEvents {
    std::function<bool(int slot)> QueryUnload;                    ///< true: the control window closes
    std::function<void(int slot)> Activated;                      ///< a control window came to the front
    std::function<void(int slot, int width, int height)> Resized; ///< twips; never while it is minimised
    std::function<void()> ListQueryUnload;                        ///< the user wants to close the device list
    std::function<bool()> MainQueryUnload;                        ///< true: the main window closes
    std::function<bool()> ConnectionQueryUnload;                  ///< true: the connection dialog closes
    std::function<void(int slot)> FrontChanged = {}; ///< the control window in front of the others, NoSlot for none
};

/// Makes what a control window holds, from the record of its slot; the host puts it into a window of its own.
using ControlWindowFactory = std::function<QWidget*(int slot, QWidget* parent)>;

/// Makes a tool dialog from its record.
using ToolDialogFactory = std::function<QDialog*(ToolDialog dialog, QWidget* parent)>;

/// The windows of the toolkit. Needs an application object, which it tells not to end with its last window.
class QtWindowHost : public WindowHost {
  public:
    QtWindowHost(WindowRecords records, controls::EventBoundary& boundary, ControlWindowFactory factory);
    ~QtWindowHost() override;

    /// To be set before a window opens: the logic that answers is made after the host.
    void SetEvents(WindowEvents events) { events_ = std::move(events); }
    void SetToolDialogs(ToolDialogFactory factory) { tool_dialog_factory_ = std::move(factory); }
    /// What the menu "Help" opens.
    void SetGuide(std::function<void()> open);
    /// The folder of the program's files, as "About" tells it.
    void SetFolder(const QString& folder);
    /// The splash window is what the program starts with.
    void ShowSplash();

    ScreenSize Screen() override;
    void RunConnectionDialog() override;
    void CloseConnectionDialog() override;
    void UnloadSplash() override;
    void ShowMainWindow() override;
    void UnloadMainWindow() override;
    void ShowDeviceList() override;
    void FocusDeviceList() override;
    bool DeviceListMinimised() override;
    void MinimiseDeviceList(bool minimised) override;
    void RunDialog(ToolDialog dialog) override;
    void CloseDialog(ToolDialog dialog) override;
    void ShowControlWindow(int slot) override;
    void FocusControlWindow(int slot) override;
    void RemoveControlWindow(int slot) override;

  private:
    void CloseDialogsOf(int slot);
    void OperationOver();
    void ControlWindowActivated(QMdiSubWindow* window);
    int SlotOf(const QMdiSubWindow* window) const;
    void TellFront();
    void ControlWindowResized(int slot);
    bool ControlWindowMayClose(int slot);
    void Detach(int slot);
    void PlaceControlWindow(MdiChild& window);

    WindowRecords records_;
    controls::EventBoundary& boundary_;
    ControlWindowFactory factory_;
    ToolDialogFactory tool_dialog_factory_;
    QPointer<QDialog> tool_dialog_; ///< modal: one at a time
    WindowEvents events_;
    std::unique_ptr<SplashWindow> splash_;
    QPointer<ConnectionDialog> connection_;
    std::unique_ptr<MainWindow> main_;
    QPointer<DeviceListWindow> list_;
    std::array<QPointer<MdiChild>, controls::SlotCount> control_windows_;
    std::array<QPointer<MdiChild>, controls::SlotCount> leaving_; ///< taken off the screen, their events not yet over
    bool removing_ = false; ///< what the toolkit activates meanwhile is not the user's doing
};

} // namespace nrv::ui
