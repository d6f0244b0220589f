#pragma once

#include "tool/line.h"

#include <ostream>
#include <string>

namespace nrv::tool {

/// How many frames have gone out since a step began, on a terminal: one line, never longer than the terminal is wide.
class Progress {
  public:
    Progress(LineDesk& desk, LineConsole& console) : desk_(desk), console_(console) {
        if (console.TerminalWidth > 0) {
            desk.FrameGoesOut() = [this] { Show(step_ + ": frame " + std::to_string(++frames_)); };
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
        console_.Out << what << "\n" << std::flush;
    }

  private:
    void Show(const std::string& line) {
        // The last column stays free: a cursor behind it would be on the next line.
        shown_ = line.substr(0, static_cast<std::size_t>(console_.TerminalWidth - 1));
        console_.Errors << "\r" << shown_ << std::flush;
    }
    void Clear() {
        if (!shown_.empty()) {
            console_.Errors << "\r" << std::string(shown_.size(), ' ') << "\r" << std::flush;
            shown_.clear();
        }
    }

    LineDesk& desk_;
    LineConsole& console_;
    std::string step_;
    std::string shown_;
    int frames_ = 0;
};

} // namespace nrv::tool
