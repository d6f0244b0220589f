#pragma once

#include "support/scripted_ports.h"

#include <cstdint>
#include <random>
#include <vector>

// A second reading of the image and of what a load says to the device, from the layout of the channels' blocks: an
// input's 72 bytes at 72c, an output's 48 at 144 + 48k.

namespace nrv::testing {

using Body = std::array<std::uint8_t, 433>;

struct ImageLayout {
    static std::size_t Block(int channel) {
        return static_cast<std::size_t>(channel < 2 ? 72 * channel : 144 + 48 * (channel - 2));
    }
    static std::size_t Gain(int channel) { return Block(channel) + (channel < 2 ? 1U : 40U); }
    static std::size_t Delay(int channel) { return Block(channel) + (channel < 2 ? 2U : 31U); }
    static std::size_t Phase(int channel) { return Block(channel) + (channel < 2 ? 65U : 38U); }
    static std::size_t Dynamics(int channel) { return Block(channel) + (channel < 2 ? 66U : 34U); }
    static std::size_t Name(int channel) { return Block(channel) + (channel < 2 ? 66U : 42U); }
    static std::size_t Source(int output) { return Block(output + 2) + 41; }
    static std::size_t Crossover(int output, int side) { return Block(output + 2) + (side == 0 ? 0U : 3U); }
    static int PeqCount(int channel) { return channel < 2 ? 10 : 4; }
    static std::size_t Peq(int channel, int section) {
        return Block(channel) + (channel < 2 ? 5U : 6U) + 5 * static_cast<std::size_t>(section);
    }
    static int ToneCount(int channel) { return channel < 2 ? 2 : 1; }
    static std::size_t Tone(int channel, int filter) {
        return Block(channel) + (channel < 2 ? 55U : 26U) + 5 * static_cast<std::size_t>(filter);
    }
    static constexpr std::size_t Mutes = 71;
    static constexpr std::size_t Master = 143;

    static std::vector<std::size_t> FrequencyBytes() {
        std::vector<std::size_t> bytes;
        for (int channel = 0; channel < 8; ++channel) {
            for (int section = 0; section < PeqCount(channel); ++section) {
                bytes.push_back(Peq(channel, section) + 1);
            }
            for (int filter = 0; filter < ToneCount(channel); ++filter) {
                bytes.push_back(Tone(channel, filter) + 1);
            }
        }
        for (int output = 0; output < 6; ++output) {
            bytes.push_back(Crossover(output, 0) + 1);
            bytes.push_back(Crossover(output, 1) + 1);
        }
        return bytes;
    }
};

/// The frames of a load in which no source and no unit changes: mutes, sources, dynamics, crossover sides, sections,
/// tone filters, phases, delays, gains, names and the master gain.
inline constexpr int LoadFrames = 8 * 2 + 6 + 8 * 3 + 12 + 44 + 10 + 8 + 8 * 2 + 8 + 6 + 1;
/// With a bulk update before and after it.
inline constexpr int BulkLoadFrames = LoadFrames + 2;

/// Every byte any, but frequency codes that the table has.
inline Body RandomBody(std::mt19937& random) {
    Body body{};
    for (std::uint8_t& byte : body) {
        byte = static_cast<std::uint8_t>(random() % 256);
    }
    for (const std::size_t place : ImageLayout::FrequencyBytes()) {
        body[place] = static_cast<std::uint8_t>(random() % 121);
    }
    return body;
}

/// The same with every code inside its range; what has no meaning stays any.
inline Body RandomPreset(std::mt19937& random) {
    Body body = RandomBody(random);
    const auto put = [&](std::size_t place, unsigned top) {
        body[place] = static_cast<std::uint8_t>(random() % (top + 1));
    };
    for (int channel = 0; channel < 8; ++channel) {
        put(ImageLayout::Gain(channel), 120);
        const std::size_t delay = ImageLayout::Delay(channel);
        const auto coarse = static_cast<unsigned>(random() % 2501);
        body[delay] = static_cast<std::uint8_t>(coarse / 256);
        body[delay + 1] = static_cast<std::uint8_t>(coarse % 256);
        put(delay + 2, 47);
        put(ImageLayout::Phase(channel), 1);
        put(ImageLayout::Dynamics(channel), 29);
        put(ImageLayout::Dynamics(channel) + 1, 18);
        put(ImageLayout::Dynamics(channel) + 3, channel < 2 ? 10 : 60);
        for (int section = 0; section < ImageLayout::PeqCount(channel); ++section) {
            put(ImageLayout::Peq(channel, section) + 2, 59);
            put(ImageLayout::Peq(channel, section) + 4, 150);
        }
        for (int filter = 0; filter < ImageLayout::ToneCount(channel); ++filter) {
            put(ImageLayout::Tone(channel, filter) + 2, channel < 2 ? 2 : 4);
            put(ImageLayout::Tone(channel, filter) + 4, 36);
        }
    }
    for (int output = 0; output < 6; ++output) {
        put(ImageLayout::Source(output), 2);
        put(ImageLayout::Crossover(output, 0) + 2, 10);
        put(ImageLayout::Crossover(output, 1) + 2, 10);
    }
    put(ImageLayout::Master, 120);
    return body;
}

/// What a load depends on beside the preset.
struct LoadSituation {
    int Id = 0;
    int OptionBits = 0;                 ///< as the loaded image has them
    bool OptionOn = false;              ///< mute with preset, before the load
    std::array<int, 6> SourcesBefore{}; ///< list positions
    int UnitBefore = 0;                 ///< 0 time, 1 distance
};

/// Every frame of a load in its order.
class LoadTrace {
  public:
    LoadTrace(const Body& body, const LoadSituation& situation) : body_(body), id_(situation.Id) {
        if (situation.OptionOn) {
            Add({0x0A});
        }
        AddMutes(situation.OptionOn ? body[ImageLayout::Mutes] : 0xFC);
        AddSources(situation.SourcesBefore);
        AddDynamics();
        AddFilters();
        AddPhases();
        AddDelays();
        if ((situation.OptionBits & 0x40) / 0x40 != situation.UnitBefore) {
            Add({0x11, 0, 16, 0, 0, situation.OptionBits});
        }
        for (int channel = 0; channel < 8; ++channel) {
            Add({1, channel, 0, 0, 0, 0, 0, 0, At(ImageLayout::Gain(channel))});
        }
        for (int channel = 2; channel < 8; ++channel) {
            const std::size_t n = ImageLayout::Name(channel);
            Add({0x0E, channel, 0, At(n), At(n + 1), At(n + 2), At(n + 3), At(n + 4), At(n + 5)});
        }
        Add({0x0C, 0, 0, 0, 0, 0, 0, 0, At(ImageLayout::Master)});
        if (situation.OptionOn && (situation.OptionBits & 4) != 0) {
            Add({0x0A, 1});
        }
    }
    std::vector<Frame> Frames;

  private:
    int At(std::size_t place) const { return body_[place]; }
    void Add(std::array<int, 9> payload) {
        Frame frame{0xF0, 0xC3, static_cast<std::uint8_t>(id_)};
        for (std::size_t n = 0; n < 9; ++n) {
            frame[3 + n] = static_cast<std::uint8_t>(payload[n]);
        }
        frame[12] = 0xF7;
        Frames.push_back(frame);
    }
    void AddMutes(int bits) {
        for (int channel = 0; channel < 8; ++channel) {
            Add({9, channel, 0, 0, 0, 0, 0, 0, (bits >> channel) & 1});
            Add({0x11, 0, 18, 0, 0, bits});
        }
    }
    void AddSources(const std::array<int, 6>& before) {
        for (int output = 0; output < 6; ++output) {
            const int source = At(ImageLayout::Source(output));
            // A list that changes runs its own event as well.
            for (int n = source == before[static_cast<std::size_t>(output)] ? 1 : 0; n < 2; ++n) {
                Add({8, output + 2, 0, 0, 0, 0, 0, 0, source});
            }
        }
    }
    void AddDynamics() {
        for (int channel = 0; channel < 8; ++channel) {
            const std::size_t d = ImageLayout::Dynamics(channel);
            for (int n = 0; n < 3; ++n) {
                Add({7, channel, 0, 0, 0, At(d), At(d + 1), 0, At(d + 3)});
            }
        }
    }
    void AddFilters() {
        for (int output = 0; output < 6; ++output) {
            for (const int side : {0, 1}) {
                const std::size_t x = ImageLayout::Crossover(output, side);
                Add({4, output + 2, side, 0, 0, 0, 0, At(x + 1), At(x + 2)});
            }
        }
        for (int channel = 0; channel < 8; ++channel) {
            for (int section = 0; section < ImageLayout::PeqCount(channel); ++section) {
                const std::size_t p = ImageLayout::Peq(channel, section);
                Add({5, channel, section, 0, 0, At(p + 1), At(p + 2), 0, At(p + 4)});
            }
        }
        for (int channel = 0; channel < 8; ++channel) {
            for (int filter = 0; filter < ImageLayout::ToneCount(channel); ++filter) {
                const std::size_t t = ImageLayout::Tone(channel, filter);
                Add({6, channel, filter, 0, 0, At(t + 1), At(t + 2), 0, At(t + 4)});
            }
        }
    }
    void AddPhases() {
        for (int channel = 0; channel < 8; ++channel) {
            Add({3, channel, 0, 0, 0, 0, 0, 0, At(ImageLayout::Phase(channel))});
        }
    }
    void AddDelays() {
        for (int copy = 0; copy < 2; ++copy) {
            for (int channel = 0; channel < 8; ++channel) {
                const std::size_t d = ImageLayout::Delay(channel);
                Add({2, channel, 0, 0, 0, 0, At(d), At(d + 1), At(d + 2)});
            }
        }
    }

    Body body_;
    int id_;
};

} // namespace nrv::testing
