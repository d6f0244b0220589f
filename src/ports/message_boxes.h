#pragma once

#include <string>

namespace nrv {

enum class BoxIcon { None, Information, Exclamation, Critical };
enum class BoxButtons { Ok, YesNo };
enum class BoxAnswer { Ok, Yes, No };

/// One modal message box. Texts are single bytes of the one-byte code page; an empty title is the toolkit's own.
struct MessageBox {
    std::string Text;
    std::string Title;
    BoxIcon Icon = BoxIcon::None;
    BoxButtons Buttons = BoxButtons::Ok;
    BoxAnswer Default = BoxAnswer::Yes; ///< the preselected button of a Yes/No box
};

class MessageBoxes {
  public:
    virtual ~MessageBoxes() = default;
    /// Shows the box and returns the user's answer; closing the box answers Ok or No.
    virtual BoxAnswer Show(const MessageBox& box) = 0;

    /// The usual question before something that cannot be taken back.
    bool AreYouSure(const std::string& title, BoxAnswer preselected = BoxAnswer::Yes) {
        return Show({"               Are you sure ? ", title, BoxIcon::None, BoxButtons::YesNo, preselected}) ==
               BoxAnswer::Yes;
    }
};

} // namespace nrv
