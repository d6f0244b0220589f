#include "lock/password_dialog.h"

#include "lock/lock_state.h"
#include "ports/numbering.h"

#include <algorithm>
#include <utility>

namespace nrv::lock {
namespace {

template <class Action>
std::function<controls::KeyEntry(char)> OnEnter(Action action) {
    return [action](char key) {
        if (key == controls::EnterKey) {
            action();
        }
        return key;
    };
}

} // namespace

std::array<std::uint8_t, PasswordLength> PasswordBytes(const std::string& text) {
    std::array<std::uint8_t, PasswordLength> bytes{};
    bytes.fill(' ');
    std::copy_n(text.begin(), std::min(text.size(), PasswordLength), bytes.begin());
    return bytes;
}

PasswordDialog::PasswordDialog(Parts parts) : parts_(std::move(parts)) {
    controls::FrmPassword& form = parts_.Form;
    const auto close = [this] { parts_.Host.CloseDialog(ToolDialog::Password); };
    form.Command1[0].Clicked = [this] { LogIn(); };
    form.Command1[1].Clicked = close;
    form.Command1[2].Clicked = [this] { ShowPage(parts_.Form.Frame4); };
    form.Command1[3].Clicked = [this] { Confirm(); };
    form.Command1[4].Clicked = [this] { BackToLogin(); };
    form.Command1[5].Clicked = [this] { ChangePassword(); };
    form.Command1[6].Clicked = [this] { BackToLogin(); };
    form.Text1.KeyPressed = OnEnter([this] { LogIn(); });
    form.Text2.KeyPressed = OnEnter([this] { ChangePassword(); });
    form.Text3.KeyPressed = OnEnter([this] { ChangePassword(); });
}

void PasswordDialog::Open() {
    // It changes through "Confirm" alone, and says so even of a locked system at first.
    parts_.Form.Label2.SetCaption("System Unlock");
    BackToLogin();
    parts_.Form.Check1.SetValue(parts_.Commands.Values().LockFlag == 1.0 ? 1 : 0);
    const Operation::Standing standing(parts_.Commands.Link.Current, Operation::Loop::Dialog);
    parts_.Host.RunDialog(ToolDialog::Password);
}

void PasswordDialog::ShowPage(controls::Frame& page) {
    controls::FrmPassword& form = parts_.Form;
    page.SetVisible(true);
    for (controls::Frame* other : {&form.Frame3, &form.Frame1, &form.Frame4}) {
        if (other != &page) {
            other->SetVisible(false);
        }
    }
}

void PasswordDialog::BackToLogin() {
    for (controls::TextBox* box : {&parts_.Form.Text1, &parts_.Form.Text2, &parts_.Form.Text3}) {
        box->SetText("");
    }
    ShowPage(parts_.Form.Frame3);
}

void PasswordDialog::LogIn() {
    const auto typed = PasswordBytes(parts_.Form.Text1.Text());
    const auto same = [](std::uint8_t byte, double stored) { return static_cast<double>(byte) == stored; };
    if (!std::ranges::equal(typed, parts_.Commands.Values().DevicePassword, same)) {
        parts_.Boxes.Show({"Password incorrect", "Insert Password", BoxIcon::Information});
        parts_.Form.Text1.Attend(); // a full box takes no more characters
        return;
    }
    ShowPage(parts_.Form.Frame1);
}

void PasswordDialog::Confirm() {
    const bool locking = parts_.Form.Check1.Checked();
    parts_.Commands.Values().LockFlag = locking ? 1.0 : 0.0;
    // The status changes before the frame when locking and after it when unlocking; that is meant.
    if (locking) {
        parts_.Form.Label2.SetCaption("System Lock");
    }
    if (SendOptionBits()) {
        return;
    }
    if (!locking) {
        parts_.Form.Label2.SetCaption("System Unlock");
    }
    ApplyLockState(parts_.Commands, parts_.Names);
    const std::string id = IdText(parts_.Commands.DeviceId());
    parts_.Tell(locking ? id + " is locked. \"Password\" in its tool bar unlocks it." : id + " is unlocked.");
}

bool PasswordDialog::SendOptionBits() {
    parts_.Commands.Link.Current.Call("the change of the lock", Operation::Untold);
    std::uint8_t& option_bits = parts_.Commands.Image().SystemPage[model::OptionBitsAddress];
    option_bits = model::RebuildOptionBits(parts_.Commands.Values());
    return parts_.Commands.Link.MemoryWrite(parts_.Commands.DeviceId(), static_cast<int>(model::OptionBitsAddress),
                                            option_bits);
}

void PasswordDialog::ChangePassword() {
    const std::string& first = parts_.Form.Text2.Text();
    const std::string& second = parts_.Form.Text3.Text();
    if (first.size() < PasswordLength || second.size() < PasswordLength) {
        parts_.Boxes.Show({"Insert 6 character", "Password incorrect", BoxIcon::Information});
        return;
    }
    const auto bytes = PasswordBytes(first);
    if (bytes != PasswordBytes(second)) {
        parts_.Boxes.Show({"Passwords don't match ", "New Password", BoxIcon::Information});
        parts_.Form.Text3.Attend();
        return;
    }
    parts_.Commands.Link.Current.Call("the new password", static_cast<int>(PasswordLength));
    for (std::size_t i = 0; i < PasswordLength; ++i) {
        parts_.Commands.Values().DevicePassword[i] = bytes[i];
        if (parts_.Commands.Link.MemoryWrite(parts_.Commands.DeviceId(), static_cast<int>(model::PasswordAddress + i),
                                             bytes[i])) {
            return;
        }
    }
    BackToLogin();
    parts_.Tell("The new password of " + IdText(parts_.Commands.DeviceId()) + " is set.");
}

} // namespace nrv::lock
