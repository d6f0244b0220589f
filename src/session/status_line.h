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
    const std::string& Text() const { return label_.Caption(); }

  private:
    controls::Label& label_;
};

} // namespace nrv::session
