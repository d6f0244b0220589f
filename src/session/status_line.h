#pragma once

#include "controls/control.h"

#include <string>

namespace nrv::session {

/// Says in one sentence at the foot of the main window what did not happen and why.
class StatusLine {
  public:
    explicit StatusLine(controls::Label& label) : label_(label) {}
    void Tell(const std::string& sentence) { label_.SetCaption(sentence); }

  private:
    controls::Label& label_;
};

} // namespace nrv::session
