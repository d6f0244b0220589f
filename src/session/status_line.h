#pragma once

#include "controls/control.h"

#include <optional>
#include <string>

namespace nrv::session {

/// Says in a sentence at the foot of the main window what did not happen, why, and what to do next. It is painted at
/// once: the program may stand still right after it.
class StatusLine {
  public:
    explicit StatusLine(controls::Label& label) : label_(label) {}
    /// An empty sentence takes back what was said.
    void Tell(const std::string& sentence) {
        before_.reset();
        Show(sentence);
    }
    /// Says what holds for good: it stands there whenever nothing else does.
    void Stand(const std::string& sentence) {
        const bool free = Free();
        standing_ = sentence;
        if (free) {
            Tell({});
        }
    }
    /// Says what holds for now; once it does not, what stood there before comes back.
    void TellForNow(const std::string& sentence) {
        if (!before_) {
            before_ = Text();
        }
        Show(sentence);
    }
    void NoLonger() {
        if (before_) {
            Tell(std::string(*before_));
        }
    }
    void Clear() {
        before_.reset();
        label_.SetCaption(standing_);
    }
    /// Nothing stands there but what holds for good.
    bool Free() const { return Text() == standing_; }
    const std::string& Text() const { return label_.Caption(); }

  private:
    void Show(const std::string& sentence) {
        label_.SetCaption(sentence.empty() ? standing_ : sentence);
        label_.Refresh();
    }

    controls::Label& label_;
    std::string standing_;
    std::optional<std::string> before_;
};

} // namespace nrv::session
