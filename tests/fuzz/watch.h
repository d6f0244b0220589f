#pragma once

#include "support/test_program.h"

#include <array>
#include <cstddef>
#include <functional>
#include <string>

namespace nrv::fuzz {

/// Ends the process with a word on what does not hold.
[[noreturn]] void Break(const std::string& what);
inline void Require(bool holds, const char* what) {
    if (!holds) {
        Break(what);
    }
}

/// Files of the runs go where no disk is.
void UseMemoryForFiles();
/// A folder there for all runs: each writes its own files anew. It goes with the process.
const testing::TestFolder& MemoryFolder();

/// What has to hold of every event, every frame and every wait of a program on scripted ports.
class Watch {
  public:
    /// From here on the line's far end is `Answer`.
    explicit Watch(testing::TestProgram& world);
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;

    std::function<testing::Bytes(const testing::Frame&)> Answer; ///< what waits at once after a frame
    std::function<void()> Poll;                                  ///< as the program looks for an answer
    /// No code beyond its range can have come into this event.
    bool CodesFit = false;

    /// Runs an event through the boundary, and looks at what it leaves when it is the outermost one.
    bool Run(const controls::EventSource& source, const std::function<void()>& event);
    /// Between two runs.
    void Forget();

  private:
    testing::Bytes Transmitted(const testing::Frame& frame);
    void Polled();
    void LookAtBoxes(std::size_t first) const;
    void LookAtRest() const;

    testing::TestProgram& world_;
    int depth_ = 0;
    int events_ = 0;
    testing::Frame last_{};
    int transmissions_ = 0;
    long transmitted_at_ = 0;
    std::size_t told_ = 0; ///< boxes before the outermost event
};

} // namespace nrv::fuzz
