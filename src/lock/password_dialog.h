#pragma once

#include "controls/dialog_forms.h"
#include "model/command_context.h"
#include "ports/message_boxes.h"
#include "ports/window_host.h"

#include <array>
#include <cstdint>
#include <functional>
#include <string>

namespace nrv::lock {

/// A text as the six bytes of a password, padded with blanks.
std::array<std::uint8_t, PasswordLength> PasswordBytes(const std::string& text);

/// The dialog that locks and unlocks a device and changes its password. The check is made here, against what was read
/// from the device; the login is asked for at each opening, and any number of attempts is allowed.
class PasswordDialog {
  public:
    struct Parts {
        model::CommandContext Commands;
        MessageBoxes& Boxes;
        WindowHost& Host;
        controls::FrmPassword& Form;
        controls::FrmEditLabel& Names;
        std::function<void(const std::string&)> Tell; ///< the status line
    };
    explicit PasswordDialog(Parts parts);

    void Open();

  private:
    void ShowPage(controls::Frame& page);
    void BackToLogin();
    void LogIn();
    void Confirm();
    void ChangePassword();
    /// True when the link failed for good.
    bool SendOptionBits();

    Parts parts_;
};

} // namespace nrv::lock
