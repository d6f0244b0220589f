#pragma once

namespace nrv {

struct ScreenSize {
    int WidthPixels = 0;
    int HeightPixels = 0;
};

/// The modal dialogs of a control window's tool buttons.
enum class ToolDialog { EditNames, Store, Read, Password, CopyInput, CopyOutput };

/// Brings windows onto the screen and takes them off it; what they hold are the control records.
class WindowHost {
  public:
    virtual ~WindowHost() = default;

    virtual ScreenSize Screen() = 0;

    /// Shows the connection dialog and returns when it was closed.
    virtual void RunConnectionDialog() = 0;
    virtual void CloseConnectionDialog() = 0;

    virtual void UnloadSplash() = 0;
    virtual void ShowMainWindow() = 0;
    virtual void UnloadMainWindow() = 0;

    virtual void ShowDeviceList() = 0;
    /// Brings the device list to the front.
    virtual void FocusDeviceList() = 0;
    /// True while the device list is minimised.
    virtual bool DeviceListMinimised() = 0;
    virtual void MinimiseDeviceList(bool minimised) = 0;

    /// Shows a dialog, whose record was just filled, and returns when it was closed.
    virtual void RunDialog(ToolDialog dialog) = 0;
    virtual void CloseDialog(ToolDialog dialog) = 0;

    /// Makes the widgets of a control window whose record was just filled, and shows them.
    virtual void ShowControlWindow(int slot) = 0;
    /// Brings a control window to the front, out of its minimised state too.
    virtual void FocusControlWindow(int slot) = 0;
    /// Takes a control window's widgets away; its record stays until the slot is loaded anew.
    virtual void RemoveControlWindow(int slot) = 0;
};

} // namespace nrv
