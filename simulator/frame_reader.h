#pragma once

#include "simulator/protocol.h"

#include <optional>
#include <vector>

namespace nrv::simulator {

/// Picks the 13-byte frames out of whatever comes down the line.
class FrameReader {
  public:
    /// Takes one byte; gives the frame that it completes. Bytes ahead of a head are passed over. Thirteen bytes that do
    /// not end in F7 are dropped, and a head inside them is taken as the start of the next frame, so that a frame
    /// behind a cut one is not lost.
    std::optional<Frame> Take(Byte byte);

    /// Bytes held of a frame that is not whole yet.
    std::size_t Pending() const { return bytes_.size(); }

  private:
    void DropToHead(std::size_t from);

    std::vector<Byte> bytes_;
};

} // namespace nrv::simulator
