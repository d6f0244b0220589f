#include "lines.h"
#include "simulator/line.h"

#include <ctime>
#include <gtest/gtest.h>
#include <random>

namespace nrv::simulator {
namespace {

using std::chrono::steady_clock;

constexpr milliseconds FloodTime{400};

Rack OneDevice() {
    Rack rack;
    rack.Add(5);
    return rack;
}

/// Writes without an end as fast as the line takes it, and fetches no answer.
std::size_t Flood(const std::string& path, const Bytes& bytes) {
    const Descriptor file(::open(path.c_str(), O_RDWR | O_NOCTTY | O_CLOEXEC | O_NONBLOCK));
    std::size_t taken = 0;
    for (const auto end = steady_clock::now() + FloodTime; steady_clock::now() < end;) {
        const ssize_t size = ::write(file.Get(), bytes.data(), bytes.size());
        if (size > 0) {
            taken += static_cast<std::size_t>(size);
        } else {
            std::this_thread::sleep_for(milliseconds(5));
        }
    }
    return taken;
}

Bytes Many(const Frame& frame) {
    Bytes bytes;
    for (int i = 0; i < 100; ++i) {
        bytes.insert(bytes.end(), frame.begin(), frame.end());
    }
    return bytes;
}

/// The next who opens the line after a flood is answered as if there had been none.
void ExpectUnharmed(const Bytes& flood) {
    Line line(OneDevice());
    line.Start();
    const double before = ProcessorMs();
    const std::size_t taken = Flood(line.DevicePath(), flood);
    EXPECT_LT(ProcessorMs() - before, 0.5 * FloodTime.count());
    EXPECT_LT(taken, 100000U); // the wire takes 768 bytes in this time; the rest lies in the terminal

    std::this_thread::sleep_for(milliseconds(100));
    Terminal terminal(line.DevicePath());
    const auto start = steady_clock::now();
    EXPECT_EQ(terminal.Ask(Request(5, {0x10, 0, 26})), (Bytes{0xF0, 0xC3, 5, 0x10, 0, 26, 0, 0, '0', 0, 0, 0, 0xF7}));
    EXPECT_LT(steady_clock::now() - start, milliseconds(200));
}

TEST(LineFlood, OfFramesIsTakenAtThePaceOfTheWire) {
    ExpectUnharmed(Many(Request(5, {0x10, 0, 16})));
}

TEST(LineFlood, OfPresetRequestsIsTakenAtThePaceOfTheWire) {
    ExpectUnharmed(Many(Request(5, {0x0B, 0xFF})));
}

TEST(LineFlood, OfGarbageIsTakenAtThePaceOfTheWire) {
    std::minstd_rand values(1);
    Bytes garbage(4000);
    for (Byte& byte : garbage) {
        byte = static_cast<Byte>(values() >> 8U);
    }
    ExpectUnharmed(garbage);
}

TEST(LineFlood, OnALineThatStaysOpenIsWorkedOffInSeconds) {
    Line line(OneDevice());
    line.Start();
    Terminal terminal(line.DevicePath());
    terminal.Send(Many(Request(5, {0x0B, 0xFF})));
    // What had no room to wait is lost.
    std::size_t came = 0;
    for (Bytes part; !(part = terminal.Read(4096, milliseconds(300))).empty();) {
        came += part.size();
    }
    EXPECT_EQ(came % 432, 0U);
    EXPECT_LE(came, Outbox::MostWaiting + 4 * std::size_t{432});
    EXPECT_EQ(terminal.Ask(Request(5, {})).at(4), 0xC3);
}

TEST(Line, LastRequestBeforeTheCloseIsHeard) {
    Line line(OneDevice());
    line.Start();
    {
        Terminal terminal(line.DevicePath());
        terminal.Send(Request(5, {0x11, 1, 44, 0, 0, 42}));
        terminal.Send(Request(0, {0x8F}));
    }
    for (int i = 0; i < 100 && line.Frames().size() < 2; ++i) {
        std::this_thread::sleep_for(milliseconds(10));
    }
    EXPECT_EQ(line.Frames().size(), 2U);
    Terminal terminal(line.DevicePath());
    EXPECT_EQ(terminal.Ask(Request(5, {0x10, 1, 44})).at(8), 42);
}

} // namespace
} // namespace nrv::simulator
