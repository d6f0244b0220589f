#pragma once

#include "presets/load_trace.h"

#include <functional>

namespace nrv::testing {

/// What a copy of one channel onto another says to the device and makes of the image, from the layout of the channels'
/// blocks. A box, list or up-down that changes runs its own event beside the command.
class CopyTrace {
  public:
    CopyTrace(const Body& before, int id) : After(before), id_(id) {}

    void CopyInput(int source, int destination) {
        CopyGain(source, destination);
        for (int section = 0; section < 10; ++section) {
            CopyPeq(source, destination, section);
        }
        for (int filter = 0; filter < 2; ++filter) {
            CopyTone(source, destination, filter);
        }
        CopyPhase(source, destination, destination);
        CopyDelay(source, destination);
        CopyDynamics(source, destination);
        CopyMute(source, destination);
    }
    /// Outputs 0 to 5.
    void CopyOutput(int source, int destination) {
        const int s = source + 2;
        const int d = destination + 2;
        CopyGain(s, d);
        const bool source_changes = Move(ImageLayout::Source(source), ImageLayout::Source(destination));
        for (int n = source_changes ? 2 : 1; n > 0; --n) {
            Add({8, d, 0, 0, 0, 0, 0, 0, At(ImageLayout::Source(destination))});
        }
        CopyDynamics(s, d);
        for (const int side : {0, 1}) {
            const std::size_t from = ImageLayout::Crossover(source, side);
            const std::size_t to = ImageLayout::Crossover(destination, side);
            Move(from + 1, to + 1);
            for (int n = Move(from + 2, to + 2) ? 2 : 1; n > 0; --n) {
                Add({4, d, side, 0, 0, 0, 0, At(to + 1), At(to + 2)});
            }
        }
        for (int section = 0; section < 4; ++section) {
            CopyPeq(s, d, section);
        }
        CopyTone(s, d, 0);
        CopyPhase(s, d, destination);
        CopyDelay(s, d);
        CopyMute(s, d);
    }

    Body After;
    std::vector<Frame> Frames;

  private:
    int At(std::size_t place) const { return After[place]; }
    void Add(std::array<int, 9> payload) {
        Frame frame{0xF0, 0xC3, static_cast<std::uint8_t>(id_)};
        for (std::size_t n = 0; n < 9; ++n) {
            frame[3 + n] = static_cast<std::uint8_t>(payload[n]);
        }
        frame[12] = 0xF7;
        Frames.push_back(frame);
    }
    /// True when the byte changes.
    bool Move(std::size_t from, std::size_t to) {
        const bool changes = After[from] != After[to];
        After[to] = After[from];
        return changes;
    }
    void CopyGain(int s, int d) {
        Move(ImageLayout::Gain(s), ImageLayout::Gain(d));
        Add({1, d, 0, 0, 0, 0, 0, 0, At(ImageLayout::Gain(d))});
    }
    void CopyPeq(int s, int d, int section) {
        const std::size_t from = ImageLayout::Peq(s, section);
        const std::size_t to = ImageLayout::Peq(d, section);
        Move(from + 4, to + 4);
        Move(from + 1, to + 1);
        for (int n = Move(from + 2, to + 2) ? 2 : 1; n > 0; --n) {
            Add({5, d, section, 0, 0, At(to + 1), At(to + 2), 0, At(to + 4)});
        }
    }
    void CopyTone(int s, int d, int filter) {
        const std::size_t from = ImageLayout::Tone(s, filter);
        const std::size_t to = ImageLayout::Tone(d, filter);
        Move(from + 4, to + 4);
        Move(from + 1, to + 1);
        for (int n = Move(from + 2, to + 2) ? 2 : 1; n > 0; --n) {
            Add({6, d, filter, 0, 0, At(to + 1), At(to + 2), 0, At(to + 4)});
        }
    }
    void CopyPhase(int s, int d, int commanded) {
        if (Move(ImageLayout::Phase(s), ImageLayout::Phase(d))) {
            Add({3, d, 0, 0, 0, 0, 0, 0, At(ImageLayout::Phase(d))});
        }
        Add({3, commanded, 0, 0, 0, 0, 0, 0, At(ImageLayout::Phase(commanded))});
    }
    void CopyDelay(int s, int d) {
        const std::size_t to = ImageLayout::Delay(d);
        for (std::size_t n = 0; n < 3; ++n) {
            Move(ImageLayout::Delay(s) + n, to + n);
        }
        Add({2, d, 0, 0, 0, 0, At(to), At(to + 1), At(to + 2)});
    }
    void CopyDynamics(int s, int d) {
        const std::size_t from = ImageLayout::Dynamics(s);
        const std::size_t to = ImageLayout::Dynamics(d);
        // Threshold, release, attack: each command sends all three as the image has them by then.
        for (const std::size_t code : {3U, 1U, 0U}) {
            Move(from + code, to + code);
            Add({7, d, 0, 0, 0, At(to), At(to + 1), 0, At(to + 3)});
        }
    }
    void CopyMute(int s, int d) {
        const int from = (After[71] >> s) & 1;
        const int to = (After[71] >> d) & 1;
        After[71] = static_cast<std::uint8_t>((After[71] & ~(1 << d)) | (from << d));
        for (int n = from != to ? 2 : 1; n > 0; --n) {
            Add({9, d, 0, 0, 0, 0, 0, 0, from});
            Add({0x11, 0, 18, 0, 0, After[71]});
        }
    }

    int id_;
};

} // namespace nrv::testing
