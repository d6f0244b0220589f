#pragma once

#include "controls/control.h"

#include <string>

namespace nrv::session {

/// Says in a sentence at the foot of the main window what did not happen, why, and what to do next. It is painted at
/// once: the program may stand still right after it.
class StatusLine {
  public:
    explicit StatusLine(controls::Label& label) : label_(label) {}
    void Tell(const std::string& sentence) {
        label_.SetCaption(sentence);
        label_.Refresh();
    }
    void Clear() { label_.SetCaption({}); }
    /// A sentence that may soon be no longer so.
    void TellForNow(const std::string& sentence) {
        for_now_ = sentence;
        Tell(sentence);
    }
    /// It is no longer so; another sentence told since stays.
    void TakeBack() {
        if (Text() == for_now_) {
            Clear();
        }
    }
    const std::string& Text() const { return label_.Caption(); }

  private:
    controls::Label& label_;
    std::string for_now_;
};

} // namespace nrv::session
