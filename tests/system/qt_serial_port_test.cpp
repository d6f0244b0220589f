#include "ports/runtime_error.h"
#include "pseudo_terminal.h"
#include "support/test_folder.h"
#include "ui/platform/qt_serial_port.h"

#include <QCoreApplication>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <numeric>
#include <optional>
#include <thread>
#include <vector>

namespace nrv::ui {
namespace {

using Bytes = std::vector<std::uint8_t>;
using std::chrono::milliseconds;
using std::chrono::steady_clock;

Bytes Count(std::size_t size, std::uint8_t first = 0) {
    Bytes bytes(size);
    std::iota(bytes.begin(), bytes.end(), first);
    return bytes;
}

struct Refusal {
    ErrorKind Kind;
    std::string Sentence;
};

std::optional<Refusal> RefusalFrom(const std::function<void()>& action) {
    try {
        action();
    } catch (const RuntimeError& error) {
        return Refusal{error.Kind(), error.what()};
    }
    return std::nullopt;
}

class QtSerialPortTest : public ::testing::Test {
  protected:
    QtSerialPortTest()
        : names_(QString::fromStdString(folder_.Path().string()), [] { return std::vector<PortInfo>(); }) {
        Link(1, line_.Device());
        SetUp13(port_, 1);
    }

    void Link(int number, const std::string& target) {
        std::filesystem::create_symlink(target, folder_.Path() / ("com" + std::to_string(number)));
    }

    static void SetUp13(QtSerialPort& port, int number) {
        port.SetCommPort(number);
        port.SetSettings({.Baud = 19200});
        port.SetInBufferSize(13);
        port.SetInputLen(13);
    }

    /// Counts until so many bytes wait, for some seconds at most.
    int CountUntil(int bytes) {
        const auto end = steady_clock::now() + milliseconds(5000);
        int waiting = port_.InBufferCount();
        while (waiting < bytes && steady_clock::now() < end) {
            waiting = port_.InBufferCount();
        }
        return waiting;
    }

    /// Reads on until the line is dry.
    void Settle() {
        const auto end = steady_clock::now() + milliseconds(60);
        while (steady_clock::now() < end) {
            port_.InBufferCount();
        }
    }

    nrv::testing::TestFolder folder_;
    test::PseudoTerminal line_;
    ComPortNames names_;
    QtSerialPort port_{names_};
};

TEST_F(QtSerialPortTest, OpensTheDeviceThatALinkInTheFolderPointsTo) {
    EXPECT_FALSE(port_.PortOpen());
    port_.SetPortOpen(true);
    EXPECT_TRUE(port_.PortOpen());
    port_.SetPortOpen(false);
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortTest, NoPortChosenCannotBeOpened) {
    port_.SetCommPort(0);
    const auto refusal = RefusalFrom([&] { port_.SetPortOpen(true); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
    EXPECT_EQ(refusal->Sentence, "No serial port is chosen.");
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortTest, ANumberThatStandsForNothingCannotBeOpened) {
    for (const int number : {2, 32, 33, -1}) {
        port_.SetCommPort(number);
        const auto refusal = RefusalFrom([&] { port_.SetPortOpen(true); });
        ASSERT_TRUE(refusal) << number;
        EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
        EXPECT_NE(refusal->Sentence.find("COM " + std::to_string(number)), std::string::npos) << refusal->Sentence;
    }
}

TEST_F(QtSerialPortTest, ALinkToNothingStandsForNothing) {
    Link(2, "/dev/pts/no-such-terminal");
    port_.SetCommPort(2);
    const auto refusal = RefusalFrom([&] { port_.SetPortOpen(true); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
    EXPECT_EQ(refusal->Sentence, "COM 2 stands for nothing: no such serial port is plugged in.");
}

TEST_F(QtSerialPortTest, AFileIsNoSerialPort) {
    const auto file = folder_.Path() / "com3";
    std::ofstream(file) << "text";
    port_.SetCommPort(3);
    const auto refusal = RefusalFrom([&] { port_.SetPortOpen(true); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
    EXPECT_NE(refusal->Sentence.find("is no serial port."), std::string::npos) << refusal->Sentence;
}

TEST_F(QtSerialPortTest, ACharacterDeviceThatIsNoTerminalIsRefusedWithAReason) {
    Link(4, "/dev/null");
    port_.SetCommPort(4);
    const auto refusal = RefusalFrom([&] { port_.SetPortOpen(true); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
    EXPECT_NE(refusal->Sentence.find("COM 4 (/dev/null)"), std::string::npos) << refusal->Sentence;
    EXPECT_FALSE(port_.PortOpen());
}

TEST_F(QtSerialPortTest, APortInUseIsRefusedAndOpensWhenItIsFree) {
    QtSerialPort first(names_);
    SetUp13(first, 1);
    first.SetPortOpen(true);
    const auto refusal = RefusalFrom([&] { port_.SetPortOpen(true); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
    EXPECT_NE(refusal->Sentence.find("in use"), std::string::npos) << refusal->Sentence;
    first.SetPortOpen(false);
    port_.SetPortOpen(true);
    EXPECT_TRUE(port_.PortOpen());
}

TEST_F(QtSerialPortTest, TwoLinksOfOneNameToTwoTerminalsDoNotGetInEachOthersWay) {
    const nrv::testing::TestFolder other_folder;
    const test::PseudoTerminal other_line;
    std::filesystem::create_symlink(other_line.Device(), other_folder.Path() / "com1");
    const ComPortNames other_names(QString::fromStdString(other_folder.Path().string()));
    QtSerialPort other(other_names);
    SetUp13(other, 1);
    port_.SetPortOpen(true);
    other.SetPortOpen(true);
    EXPECT_TRUE(port_.PortOpen());
    EXPECT_TRUE(other.PortOpen());
}

TEST_F(QtSerialPortTest, AnotherNumberIsRefusedWhileThePortIsOpen) {
    port_.SetPortOpen(true);
    const auto refusal = RefusalFrom([&] { port_.SetCommPort(2); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
    EXPECT_TRUE(port_.PortOpen());
}

TEST_F(QtSerialPortTest, ASpeedThatMakesNoSenseIsRefused) {
    for (const int baud : {0, -1}) {
        const auto refusal = RefusalFrom([&] { port_.SetSettings({.Baud = baud}); });
        ASSERT_TRUE(refusal) << baud;
        EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
    }
}

TEST_F(QtSerialPortTest, AClosedPortExchangesNothing) {
    const Bytes frame = Count(13);
    for (const std::function<void()>& action :
         {std::function<void()>([&] { port_.Output(frame); }), std::function<void()>([&] { port_.InBufferCount(); }),
          std::function<void()>([&] { port_.ClearInBuffer(); }), std::function<void()>([&] { port_.Input(); })}) {
        const auto refusal = RefusalFrom(action);
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->Kind, ErrorKind::PortUnavailable);
    }
}

TEST_F(QtSerialPortTest, EveryByteGoesOutAsItIs) {
    port_.SetPortOpen(true);
    const Bytes all = Count(256);
    port_.Output(all);
    EXPECT_EQ(line_.Receive(256), all);
    EXPECT_TRUE(line_.Silent(20));
}

TEST_F(QtSerialPortTest, EveryByteComesInAsItIs) {
    port_.SetInBufferSize(256);
    port_.SetInputLen(256);
    port_.SetPortOpen(true);
    const Bytes all = Count(256);
    line_.Send(all);
    EXPECT_EQ(CountUntil(256), 256);
    EXPECT_EQ(port_.Input(), all);
    // Nothing was echoed on the way.
    EXPECT_TRUE(line_.Silent(20));
}

TEST_F(QtSerialPortTest, CountsNoMoreThanTheBufferSize) {
    port_.SetPortOpen(true);
    line_.Send(Count(20));
    EXPECT_EQ(CountUntil(13), 13);
    Settle();
    EXPECT_EQ(port_.InBufferCount(), 13);
    port_.SetInBufferSize(432);
    EXPECT_EQ(port_.InBufferCount(), 20);
}

TEST_F(QtSerialPortTest, InputDeliversItsLengthAndTheRestStaysUntilCleared) {
    port_.SetPortOpen(true);
    line_.Send(Count(20));
    CountUntil(13);
    Settle();
    EXPECT_EQ(port_.Input(), Count(13));
    EXPECT_EQ(port_.InBufferCount(), 7);
    port_.ClearInBuffer();
    EXPECT_EQ(port_.InBufferCount(), 0);
    line_.Send(Count(3, 100));
    EXPECT_EQ(CountUntil(3), 3);
    EXPECT_EQ(port_.Input(), Count(3, 100));
}

TEST_F(QtSerialPortTest, APartOfAReplyStaysAndTheNextCompletesIt) {
    port_.SetPortOpen(true);
    line_.Send(Count(6));
    EXPECT_EQ(CountUntil(6), 6);
    EXPECT_EQ(port_.InBufferCount(), 6);
    line_.Send(Count(13, 6));
    EXPECT_EQ(CountUntil(13), 13);
    EXPECT_EQ(port_.Input(), Count(13));
}

TEST_F(QtSerialPortTest, ClosingAndOpeningEmptiesTheInput) {
    port_.SetPortOpen(true);
    line_.Send(Count(5));
    EXPECT_EQ(CountUntil(5), 5);
    port_.SetPortOpen(false);
    port_.SetPortOpen(true);
    Settle();
    EXPECT_EQ(port_.InBufferCount(), 0);
    line_.Send(Count(2, 50));
    EXPECT_EQ(CountUntil(2), 2);
    EXPECT_EQ(port_.Input(), Count(2, 50));
}

TEST_F(QtSerialPortTest, BytesThatCameWhileEventsWereServedAreCounted) {
    port_.SetPortOpen(true);
    line_.Send(Count(13));
    const auto end = steady_clock::now() + milliseconds(5000);
    int waiting = 0;
    while (waiting < 13 && steady_clock::now() < end) {
        QCoreApplication::processEvents();
        waiting = port_.InBufferCount();
    }
    EXPECT_EQ(waiting, 13);
    EXPECT_EQ(port_.Input(), Count(13));
}

TEST_F(QtSerialPortTest, ASilentPortIsNoError) {
    port_.SetPortOpen(true);
    const auto end = steady_clock::now() + milliseconds(150);
    while (steady_clock::now() < end) {
        QCoreApplication::processEvents();
        ASSERT_EQ(port_.InBufferCount(), 0);
    }
    port_.Output(Count(13));
    EXPECT_EQ(line_.Receive(13), Count(13));
}

TEST_F(QtSerialPortTest, APortThatGoesAwayDuringAWaitIsToldAtOnce) {
    for (const bool pump : {false, true}) {
        test::PseudoTerminal line;
        std::filesystem::remove(folder_.Path() / "com5");
        Link(5, line.Device());
        QtSerialPort port(names_);
        SetUp13(port, 5);
        port.SetPortOpen(true);
        std::thread unplug([&] {
            std::this_thread::sleep_for(milliseconds(50));
            line.HangUp();
        });
        const auto start = steady_clock::now();
        const auto refusal = RefusalFrom([&] {
            while (steady_clock::now() < start + milliseconds(20000)) {
                if (pump) {
                    QCoreApplication::processEvents();
                }
                port.InBufferCount();
            }
        });
        const auto waited = steady_clock::now() - start;
        unplug.join();
        ASSERT_TRUE(refusal);
        EXPECT_EQ(refusal->Kind, ErrorKind::PortGone);
        EXPECT_EQ(refusal->Sentence, "COM 5 (" + line.Device() + ") went away.");
        EXPECT_LT(waited, milliseconds(5000));

        // It stays gone for whoever asks, until it is opened anew.
        EXPECT_FALSE(port.PortOpen());
        const auto again = RefusalFrom([&] { port.Output(Count(13)); });
        ASSERT_TRUE(again);
        EXPECT_EQ(again->Kind, ErrorKind::PortGone);
        const auto reopen = RefusalFrom([&] { port.SetPortOpen(true); });
        ASSERT_TRUE(reopen);
        EXPECT_EQ(reopen->Kind, ErrorKind::PortUnavailable);
    }
}

TEST_F(QtSerialPortTest, APortThatIsGoneTakesNoBytes) {
    port_.SetPortOpen(true);
    line_.HangUp();
    const auto refusal = RefusalFrom([&] { port_.Output(Count(13)); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->Kind, ErrorKind::PortGone);
}

TEST_F(QtSerialPortTest, APortThatCameBackOpensAgain) {
    port_.SetPortOpen(true);
    line_.HangUp();
    EXPECT_TRUE(RefusalFrom([&] { CountUntil(13); }));
    test::PseudoTerminal next;
    std::filesystem::remove(folder_.Path() / "com1");
    Link(1, next.Device());
    port_.SetPortOpen(true);
    port_.Output(Count(13));
    EXPECT_EQ(next.Receive(13), Count(13));
}

TEST_F(QtSerialPortTest, AFarEndThatReadsNothingDoesNotHoldTheProgramForLong) {
    port_.SetPortOpen(true);
    const Bytes flood(1 << 20, 0x55);
    const auto start = steady_clock::now();
    const auto refusal = RefusalFrom([&] { port_.Output(flood); });
    ASSERT_TRUE(refusal);
    EXPECT_EQ(refusal->Kind, ErrorKind::PortGone);
    EXPECT_LT(steady_clock::now() - start, milliseconds(3000));
}

TEST_F(QtSerialPortTest, WaitingCostsLittleProcessorTime) {
    port_.SetPortOpen(true);
    const auto start = steady_clock::now();
    const std::clock_t busy_from = std::clock();
    while (steady_clock::now() - start < milliseconds(500)) {
        port_.InBufferCount();
    }
    const double busy = static_cast<double>(std::clock() - busy_from) / CLOCKS_PER_SEC;
    const double waited = std::chrono::duration<double>(steady_clock::now() - start).count();
    RecordProperty("percent_of_a_core", std::to_string(100.0 * busy / waited));
    EXPECT_LT(busy / waited, 0.15);
}

TEST_F(QtSerialPortTest, ABytePresentIsCountedWithoutARest) {
    port_.SetPortOpen(true);
    line_.Send(Count(13));
    CountUntil(13);
    std::vector<steady_clock::duration> counts(1001);
    for (auto& count : counts) {
        const auto start = steady_clock::now();
        ASSERT_EQ(port_.InBufferCount(), 13);
        count = steady_clock::now() - start;
    }
    // A rest is a millisecond; on a busy machine one or the other takes longer.
    std::ranges::sort(counts);
    EXPECT_LT(counts[500], std::chrono::microseconds(300));
}

} // namespace
} // namespace nrv::ui
