#include "lines.h"
#include "simulator/line.h"

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <mutex>

namespace nrv::simulator {
namespace {

using std::chrono::steady_clock;
using Milliseconds = std::chrono::duration<double, std::milli>;

LineOptions Unpaced() {
    return {.Paced = false, .Trace = {}};
}

TEST(Line, AnswersOverThePseudoTerminal) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    Terminal terminal(line.DevicePath());
    EXPECT_EQ(terminal.Ask(Request(5, {})), Presence5);
    const PresetBody factory = FactoryPreset();
    EXPECT_EQ(terminal.Ask(Request(9, {0x0B, 0xFF}), 432), Bytes(factory.begin(), factory.end()));
    terminal.Send(Request(6, {}));
    terminal.Send(Request(5, {0x0F}));
    terminal.Send(Request(0, {0x8F}));
    EXPECT_TRUE(terminal.Silent());
}

TEST(Line, EveryByteValuePassesBothWays) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    Terminal terminal(line.DevicePath());
    for (int value = 0; value < 256; ++value) {
        ASSERT_EQ(terminal.Ask(Request(5, {0x11, 2, value, 0, 0, value})).size(), 13U);
        const Bytes answer = terminal.Ask(Request(5, {0x10, 2, value}));
        ASSERT_EQ(answer.size(), 13U);
        ASSERT_EQ(answer[8], value);
    }
}

TEST(Line, FindsTheNextFrameAfterGarbage) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    Terminal terminal(line.DevicePath());
    terminal.Send(Bytes{0x00, 0xF0, 0x11, 0xF7, 0xC3});
    EXPECT_EQ(terminal.Ask(Request(5, {})), Presence5);
}

TEST(Line, TakesAFrameInPieces) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    Terminal terminal(line.DevicePath());
    terminal.Send(Bytes{0xF0, 0xC3, 5, 0, 0});
    EXPECT_TRUE(terminal.Silent());
    terminal.Send(Bytes{0, 0, 0, 0, 0, 0, 0, 0xF7});
    EXPECT_EQ(terminal.Read(13), Presence5);
}

TEST(Line, ExchangeTakesTheTimeOfTheWire) {
    Line line(TwoDevices());
    line.Start();
    Terminal terminal(line.DevicePath());
    constexpr int Exchanges = 40;
    Milliseconds all(0);
    Milliseconds shortest(1000);
    for (int i = 0; i < Exchanges; ++i) {
        const auto start = steady_clock::now();
        ASSERT_EQ(terminal.Ask(Request(5, {})), Presence5);
        const Milliseconds time = steady_clock::now() - start;
        all += time;
        shortest = std::min(shortest, time);
    }
    EXPECT_GE(all.count() / Exchanges, 13.54); // 26 bytes of 10 bits at 19200 baud
    EXPECT_LT(shortest.count(), 13.54 * 1.5);  // others may be held up by the machine
    RecordProperty("exchange_ms", std::to_string(all.count() / Exchanges));
}

TEST(Line, PresetTakesTheTimeOfTheWire) {
    Line line(TwoDevices());
    line.Start();
    Terminal terminal(line.DevicePath());
    Milliseconds shortest(10000);
    for (int i = 0; i < 3; ++i) {
        const auto start = steady_clock::now();
        ASSERT_EQ(terminal.Ask(Request(5, {0x0B, 0xFF}), 432).size(), 432U);
        shortest = std::min(shortest, Milliseconds(steady_clock::now() - start));
    }
    EXPECT_GE(shortest.count(), 231.77); // 13 + 432 bytes
    EXPECT_LT(shortest.count(), 231.77 * 1.5);
}

TEST(Line, UnpacedExchangeIsMuchFasterThanTheWire) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    Terminal terminal(line.DevicePath());
    std::vector<Milliseconds> times;
    for (int i = 0; i < 101; ++i) {
        const auto start = steady_clock::now();
        ASSERT_EQ(terminal.Ask(Request(5, {})), Presence5);
        times.emplace_back(steady_clock::now() - start);
    }
    std::ranges::sort(times);
    EXPECT_LT(times[50].count(), 5.0); // on the wire 13.54
}

TEST(Line, RecordsEachFrameWithItsTime) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    Terminal terminal(line.DevicePath());
    const auto before = steady_clock::now();
    terminal.Send(Request(31, {0x12}));
    terminal.Ask(Request(5, {1, 3, 0, 0, 0, 0, 0, 0, 61}));
    const auto after = steady_clock::now();
    EXPECT_THAT(line.Frames(), ::testing::ElementsAre(Request(31, {0x12}), Request(5, {1, 3, 0, 0, 0, 0, 0, 0, 61})));
    const auto records = line.Records();
    ASSERT_EQ(records.size(), 2U);
    EXPECT_GE(records[0].At, before);
    EXPECT_LE(records[0].At, records[1].At);
    EXPECT_LE(records[1].At, after);
    line.ClearFrames();
    EXPECT_TRUE(line.Frames().empty());
}

TEST(Line, TracesFramesInWords) {
    std::mutex mutex;
    std::vector<std::string> lines;
    Line line(TwoDevices(), {.Paced = false, .Trace = [&](const std::string& text) {
                                 const std::scoped_lock lock(mutex);
                                 lines.push_back(text);
                             }});
    line.Start();
    Terminal terminal(line.DevicePath());
    terminal.Ask(Request(5, {1, 3, 0, 0, 0, 0, 0, 0, 61}));
    terminal.Ask(Request(5, {0x0B, 0xFF}), 432);
    line.Order(Fault::Lose(5));
    terminal.Send(Request(5, {}));
    EXPECT_TRUE(terminal.Silent());
    line.Stop();
    EXPECT_THAT(lines, ::testing::ElementsAre("-> ID 5  Gain of Out 2: code 61 (0.2 dB)", "<- ID 5  Obeyed",
                                              "-> ID 5  Read live preset", "<- ID 5  432 bytes of preset",
                                              "-> ID 5  Are you there?", "<- ID 5  No answer [lost]"));
}

TEST(Line, RackIsReachedWhileTheLineRuns) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    Terminal terminal(line.DevicePath());
    line.WithRack([](Rack& rack) { rack.At(5).SetMemory(300, 42); });
    EXPECT_EQ(terminal.Ask(Request(5, {0x10, 1, 44})).at(8), 42);
    terminal.Ask(Request(5, {1, 0, 0, 0, 0, 0, 0, 0, 99}));
    EXPECT_EQ(line.WithRack([](Rack& rack) { return int{rack.At(5).LiveImage()[1]}; }), 99);
}

TEST(Line, StopsAtOnceAndStartsAgain) {
    Line line(TwoDevices());
    Terminal terminal(line.DevicePath());
    Milliseconds shortest(1000);
    for (int i = 0; i < 5; ++i) {
        line.Start();
        line.Start();
        terminal.Send(Request(5, {0x0B, 0xFF})); // 225 ms of answer
        EXPECT_EQ(terminal.Read(1).size(), 1U);
        const auto start = steady_clock::now();
        line.Stop();
        line.Stop();
        shortest = std::min(shortest, Milliseconds(steady_clock::now() - start));
        while (!terminal.Silent(milliseconds(20))) {
        }
    }
    EXPECT_LT(shortest.count(), 100); // others may be held up by the machine
    line.Start();
    EXPECT_EQ(terminal.Ask(Request(5, {})), Presence5);
}

TEST(Line, OutlivesTheTerminalBeingClosedAndOpenedAgain) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    for (int i = 0; i < 20; ++i) {
        Terminal terminal(line.DevicePath());
        ASSERT_EQ(terminal.Ask(Request(5, {})), Presence5);
    }
}

TEST(Line, RestsWhileNobodyAsks) {
    Line line(TwoDevices());
    line.Start();
    { Terminal terminal(line.DevicePath()); }
    const double before = ProcessorMs();
    std::this_thread::sleep_for(milliseconds(300));
    EXPECT_LT(ProcessorMs() - before, 60);
}

TEST(Line, AnswerThatNobodyFetchedIsGoneForTheNextWhoOpens) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    {
        Terminal terminal(line.DevicePath());
        terminal.Send(Request(5, {0x0B, 0xFF}));
        ASSERT_EQ(terminal.Read(1).size(), 1U);
    }
    line.Order(Fault::Late(5, 1, milliseconds(40)));
    {
        Terminal terminal(line.DevicePath());
        terminal.Send(Request(5, {}));
        while (line.Frames().size() < 2) {
            std::this_thread::sleep_for(milliseconds(1));
        }
    }
    std::this_thread::sleep_for(milliseconds(100)); // the late answer comes while nobody is there
    Terminal terminal(line.DevicePath());
    EXPECT_TRUE(terminal.Silent());
    EXPECT_EQ(terminal.Ask(Request(5, {0x10, 0, 16})).at(3), 0x10);
}

TEST(Line, ReaderThatDoesNotReadCostsBytesButNotTheLine) {
    Line line(TwoDevices(), Unpaced());
    line.Start();
    Terminal terminal(line.DevicePath());
    for (std::size_t i = 1; i <= 40; ++i) { // 40 * 432 bytes are more than a terminal holds
        terminal.Send(Request(5, {0x0B, 0xFF}));
        while (line.Frames().size() < i) {
            std::this_thread::sleep_for(milliseconds(1));
        }
    }
    while (!terminal.Read(4096, milliseconds(50)).empty()) {
    }
    EXPECT_EQ(terminal.Ask(Request(5, {})), Presence5);
}

TEST(Line, LinkLastsAsLongAsTheLine) {
    const auto path = std::filesystem::path(::testing::TempDir()) / ("nrv_line_link_" + std::to_string(::getpid()));
    {
        Line line(TwoDevices(), Unpaced());
        line.LinkAs(path);
        line.Start();
        Terminal terminal(path.string());
        EXPECT_EQ(terminal.Ask(Request(5, {})), Presence5);
    }
    EXPECT_FALSE(std::filesystem::is_symlink(path));
}

} // namespace
} // namespace nrv::simulator
