#pragma once

#include "link/serial_port.h"
#include "ports/clock.h"
#include "ports/file_dialogs.h"
#include "ports/message_boxes.h"
#include "ports/process.h"
#include "ports/runtime_error.h"
#include "ports/window_host.h"

// The world of a program that shows no windows.

namespace nrv::tool {

/// No line at all.
class NoPort final : public link::SerialPort {
  public:
    void SetCommPort(int) override {}
    void SetSettings(const link::LineSettings&) override {}
    bool PortOpen() override { return false; }
    void SetPortOpen(bool open) override {
        if (open) {
            Refuse();
        }
    }
    void SetInBufferSize(int) override {}
    void SetInputLen(int) override {}
    void Output(std::span<const std::uint8_t>) override { Refuse(); }
    int InBufferCount() override { Refuse(); }
    void ClearInBuffer() override {}
    std::vector<std::uint8_t> Input() override { Refuse(); }

  private:
    [[noreturn]] static void Refuse() { throw RuntimeError(ErrorKind::PortUnavailable, "There is no line."); }
};

/// Nothing waits and nothing sleeps; the program's end is left to whoever runs it.
class NoEvents final : public Process {
  public:
    void RunPendingEvents() override {}
    void Sleep(int) override {}
    [[noreturn]] void End() override { throw EndOfProcess{}; }
};

/// Nobody there to read a box: the answer that does nothing.
class NoBoxes final : public MessageBoxes {
  public:
    BoxAnswer Show(const MessageBox& box) override {
        return box.Buttons == BoxButtons::YesNo ? BoxAnswer::No : BoxAnswer::Ok;
    }
};

/// Answers each question for a file with one.
class GivenFile final : public FileDialogs {
  public:
    std::optional<std::filesystem::path> File;

    std::optional<std::filesystem::path> AskOpen(const FileRequest&) override { return File; }
    std::optional<std::filesystem::path> AskSave(const FileRequest&) override { return File; }
};

/// Windows that are records and nothing more.
class NoWindows final : public WindowHost {
  public:
    ScreenSize Screen() override { return {1920, 1080}; }
    void RunConnectionDialog() override {}
    void CloseConnectionDialog() override {}
    void UnloadSplash() override {}
    void ShowMainWindow() override {}
    void UnloadMainWindow() override {}
    void ShowDeviceList() override {}
    void FocusDeviceList() override {}
    bool DeviceListMinimised() override { return false; }
    void MinimiseDeviceList(bool) override {}
    void RunDialog(ToolDialog) override {}
    void CloseDialog(ToolDialog) override {}
    void ShowControlWindow(int) override {}
    void FocusControlWindow(int) override {}
    void RemoveControlWindow(int) override {}
};

} // namespace nrv::tool
