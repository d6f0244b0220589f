#include "simulator/frame_reader.h"

#include <algorithm>

namespace nrv::simulator {

std::optional<Frame> FrameReader::Take(Byte byte) {
    bytes_.push_back(byte);
    DropToHead(0);
    if (bytes_.size() < FrameSize) {
        return std::nullopt;
    }
    if (bytes_.back() != Tail) {
        DropToHead(1);
        return std::nullopt;
    }
    Frame frame;
    std::ranges::copy(bytes_, frame.begin());
    bytes_.clear();
    return frame;
}

void FrameReader::DropToHead(std::size_t from) {
    std::size_t start = from;
    while (start < bytes_.size()) {
        const bool last = start + 1 == bytes_.size();
        if (bytes_[start] == Head0 && (last || bytes_[start + 1] == Head1)) {
            break;
        }
        ++start;
    }
    bytes_.erase(bytes_.begin(), bytes_.begin() + static_cast<std::ptrdiff_t>(start));
}

} // namespace nrv::simulator
