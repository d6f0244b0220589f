#pragma once

#include "tool/line.h"

#include <ostream>
#include <string>

namespace nrv::tool {

/// How many frames have gone out since a step began, on a terminal.
class Progress {
  public:
    Progress(LineDesk& desk, LineConsole& console) : desk_(desk), console_(console) {
        if (console.Terminal) {
            desk.FrameGoesOut() = [this] {
                console_.Errors << "\r" << step_ << ": frame " << ++frames_ << ' ' << std::flush;
            };
        }
    }
    ~Progress() {
        Clear();
        desk_.FrameGoesOut() = nullptr;
    }
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Begin(const std::string& step) {
        Clear();
        step_ = step;
        frames_ = 0;
    }
    void Tell(const std::string& what) {
        Clear();
        frames_ = 0;
        console_.Out << what << "\n" << std::flush;
    }

  private:
    void Clear() {
        if (console_.Terminal && frames_ > 0) {
            console_.Errors << "\r" << std::string(step_.size() + 20, ' ') << "\r" << std::flush;
        }
    }

    LineDesk& desk_;
    LineConsole& console_;
    std::string step_;
    int frames_ = 0;
};

} // namespace nrv::tool
