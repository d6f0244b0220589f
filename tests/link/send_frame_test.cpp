#include "link/link_rig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SendFrame : public ::testing::Test {
  protected:
    LinkRig rig;
};

TEST_F(SendFrame, WritesHeadIdPayloadAndTail) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    EXPECT_FALSE(rig.Link.SendFrame(32, {0x05, 1, 2, 3, 4, 5, 6, 7, 255}));
    EXPECT_THAT(rig.Port.Sent, ElementsAre(Frame{0xF0, 0xC3, 32, 0x05, 1, 2, 3, 4, 5, 6, 7, 255, 0xF7}));
    EXPECT_TRUE(rig.Link.TransactionDone);
}

TEST_F(SendFrame, TellsThatItWaitsBeforeEachFurtherTransmission) {
    std::vector<int> told;
    rig.Link.Waiting = [&told](int id) { told.push_back(id); };
    rig.Link.ReportLinkFailure = false;
    rig.Link.SendFrame(7, {0x01});
    EXPECT_THAT(rig.Port.Sent, SizeIs(5));
    EXPECT_THAT(told, ElementsAre(7, 7, 7, 7));
}

TEST_F(SendFrame, FillsPayloadBytesThatAreNotGivenWithZero) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    rig.Link.SendFrame(1, {9, 9, 9, 9, 9, 9, 9, 9, 9});
    rig.Link.SendFrame(2, {0x12});
    EXPECT_EQ(rig.Port.Sent[1], (Frame{0xF0, 0xC3, 2, 0x12, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
}

TEST_F(SendFrame, CopiesTheReplyUnlooked) {
    rig.Port.Answer = [](const Frame&) { return Rising(0x21, 13); };
    EXPECT_FALSE(rig.Link.SendFrame(0, {0x01}));
    EXPECT_EQ(rig.Received(13), Rising(0x21, 13));
    EXPECT_TRUE(rig.Link.TransactionDone);
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
}

TEST_F(SendFrame, KeepsTheBytesBehindAThirteenByteReply) {
    rig.Link.RxFrame.fill(0x77);
    rig.Port.Answer = [](const Frame&) { return Rising(0, 13); };
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Link.RxFrame[12], 12);
    for (std::size_t i = 13; i < 433; ++i) {
        ASSERT_EQ(rig.Link.RxFrame[i], 0x77) << i;
    }
}

TEST_F(SendFrame, LeavesAtOnceInDemoMode) {
    rig.Link.DemoMode = true;
    rig.Link.TransactionDone = true;
    EXPECT_FALSE(rig.Link.SendFrame(0, {0x01}));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
    EXPECT_TRUE(rig.Link.TransactionDone);
}

TEST_F(SendFrame, LeavesAtOnceWhenTheLinkIsNotReady) {
    rig.Link.LinkReady = false;
    rig.Link.TransactionDone = true;
    EXPECT_FALSE(rig.Link.SendFrame(0, {0x01}));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
    EXPECT_TRUE(rig.Link.TransactionDone);
}

TEST_F(SendFrame, LeavesAtOnceWhileSuppressed) {
    rig.Link.TxSuppressed = true;
    rig.Link.TransactionDone = true;
    EXPECT_FALSE(rig.Link.SendFrame(0, {0x01}));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
    EXPECT_TRUE(rig.Link.TransactionDone);
}

TEST_F(SendFrame, DoesNotReportWhatItDidNotSend) {
    rig.Link.ReportLinkFailure = true;
    rig.Link.DemoMode = true;
    EXPECT_FALSE(rig.Link.SendFrame(0, {0x01}));
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
    EXPECT_THAT(rig.Handler.Log, IsEmpty());
}

class NoReplyFrame : public ::testing::TestWithParam<std::uint8_t> {};

TEST_P(NoReplyFrame, ReturnsAtOnceAndLeavesTransactionDoneFalse) {
    LinkRig rig;
    rig.Link.TransactionDone = true;
    rig.Link.ReportLinkFailure = true;
    EXPECT_FALSE(rig.Link.SendFrame(4, {GetParam()}));
    EXPECT_THAT(rig.Port.Sent, ElementsAre(Frame{0xF0, 0xC3, 4, GetParam(), 0, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(rig.Port.Polls, 0);
    EXPECT_EQ(rig.Clock.Seconds, 0);
    EXPECT_FALSE(rig.Link.TransactionDone);
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(Link, NoReplyFrame, ::testing::Values(std::uint8_t{0x0F}, std::uint8_t{0x8F}));

TEST_F(SendFrame, IsTransmittedFiveTimesWithoutChange) {
    EXPECT_FALSE(rig.Link.SendFrame(7, {0x02, 1, 2}));
    const Frame frame = {0xF0, 0xC3, 7, 0x02, 1, 2, 0, 0, 0, 0, 0, 0, 0xF7};
    EXPECT_THAT(rig.Port.Sent, ElementsAre(frame, frame, frame, frame, frame));
}

TEST_F(SendFrame, WaitsUntilTheTenthTickOfTheClock) {
    // Looked at after 0 to 9 seconds and given up at 10, five times.
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Port.Polls, 50);
    EXPECT_EQ(rig.Clock.Seconds, 50);
}

TEST_F(SendFrame, StillWaitsAtTheNinthTick) {
    rig.Port.SecondsPerPoll = 9; // looks at 0 and 9 seconds, gives up at 18
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Port.Polls, 5 * 2);
}

TEST_F(SendFrame, WaitsNoLongerAtTheTenthTick) {
    rig.Port.SecondsPerPoll = 10; // looks at 0 seconds, gives up at 10
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Port.Polls, 5);
}

TEST_F(SendFrame, TakesAReplyToTheFifthTransmission) {
    rig.Port.Answer = [this](const Frame&) { return rig.Port.Sent.size() == 5 ? Rising(1, 13) : Bytes(); };
    rig.Link.ReportLinkFailure = true;
    EXPECT_FALSE(rig.Link.SendFrame(0, {0x01}));
    EXPECT_TRUE(rig.Link.TransactionDone);
    EXPECT_EQ(rig.Clock.Seconds, 41);
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
}

TEST_F(SendFrame, WaitGrowsWhenTheClockIsSetBack) {
    rig.Port.OnPoll = [this] {
        if (rig.Port.Polls == 5) {
            rig.Clock.Seconds -= 100;
        }
        if (rig.Port.Polls == 110) {
            EXPECT_THAT(rig.Port.Sent, SizeIs(1)); // ten seconds and the hundred
        }
        if (rig.Port.Polls == 111) {
            EXPECT_THAT(rig.Port.Sent, SizeIs(2));
        }
    };
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Port.Polls, 100 + 5 * 10);
    EXPECT_THAT(rig.Port.Sent, SizeIs(5));
}

TEST_F(SendFrame, WaitEndsEarlyWhenTheClockIsSetForward) {
    rig.Port.OnPoll = [this] {
        if (rig.Port.Polls == 1) {
            rig.Clock.Seconds += 3600;
        }
    };
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Port.Polls, 1 + 4 * 10);
}

TEST_F(SendFrame, ReplyOfMoreThanThirteenBytesLosesTheRest) {
    rig.Port.Answer = [](const Frame&) { return Rising(0x40, 20); };
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Received(13), Rising(0x40, 13));
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
}

TEST_F(SendFrame, PartialReplyStaysAndTheNextOneCompletesIt) {
    rig.Port.Answer = [this](const Frame&) { return rig.Port.Sent.size() == 1 ? Rising(0x01, 6) : Rising(0x11, 13); };
    EXPECT_FALSE(rig.Link.SendFrame(0, {0x01}));
    EXPECT_THAT(rig.Received(13), ElementsAre(0x01, 0x02, 0x03, 0x04, 0x05, 0x06, // the cut reply
                                              0x11, 0x12, 0x13, 0x14, 0x15, 0x16, 0x17));
    EXPECT_THAT(rig.Port.Sent, SizeIs(2));
    EXPECT_TRUE(rig.Link.TransactionDone);
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
}

TEST_F(SendFrame, RetryDoesNotEmptyTheInput) {
    rig.Port.Answer = [](const Frame&) { return Rising(0x31, 4); };
    rig.Link.SendFrame(0, {0x01}); // 4, 8, 12, and the fourth answer reaches 16
    EXPECT_THAT(rig.Port.Sent, SizeIs(4));
    EXPECT_THAT(rig.Received(13),
                ElementsAre(0x31, 0x32, 0x33, 0x34, 0x31, 0x32, 0x33, 0x34, 0x31, 0x32, 0x33, 0x34, 0x31));
}

TEST_F(SendFrame, LateAnswerStandsReadyForTheNextExchange) {
    rig.Link.MemoryRead(0, 0);
    ASSERT_FALSE(rig.Link.TransactionDone);
    ASSERT_EQ(rig.Clock.Seconds, 50);
    rig.Port.ArriveAt(51, {0xF0, 0xC3, 0, 0, 0, 0, 0, 0, 0xAA, 0, 0, 0, 0xF7});
    rig.Port.ArriveAt(53, {0xF0, 0xC3, 0, 0, 0, 0, 0, 0, 0xBB, 0, 0, 0, 0xF7});
    rig.Link.MemoryRead(0, 1);
    EXPECT_EQ(rig.Link.MemoryValue(), 0xAA); // the answer to the exchange before
    rig.Link.MemoryRead(0, 2);
    EXPECT_EQ(rig.Link.MemoryValue(), 0xBB);
    EXPECT_THAT(rig.Port.Sent, SizeIs(5 + 1 + 1));
}

TEST_F(SendFrame, SecondHalfOfADoubledReplyInOneWaitIsThrownAway) {
    rig.Port.Answer = [](const Frame&) {
        Bytes twice = Rising(0x50, 13);
        twice.insert(twice.end(), twice.begin(), twice.begin() + 13);
        return twice;
    };
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Received(13), Rising(0x50, 13));
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
}

TEST_F(SendFrame, SecondHalfOfADoubledReplyThatComesLaterMeetsTheNextExchange) {
    rig.Port.ArriveAt(1, Rising(0x50, 13));
    rig.Port.ArriveAt(2, Rising(0x60, 13));
    rig.Link.SendFrame(0, {0x01});
    EXPECT_EQ(rig.Received(13), Rising(0x50, 13));
    rig.Link.SendFrame(0, {0x02});
    EXPECT_EQ(rig.Received(13), Rising(0x60, 13));
    EXPECT_THAT(rig.Port.Sent, SizeIs(2));
}

TEST_F(SendFrame, NeverLetsEventsRunOrSleeps) {
    bool ran = false;
    rig.Process.OnPendingEvents = [&ran] { ran = true; };
    rig.Link.SendFrame(0, {0x01});
    EXPECT_FALSE(ran);
    EXPECT_EQ(rig.Process.Slept, 0);
}

struct AddressCase {
    int Address;
    std::uint8_t High;
    std::uint8_t Low;
};

class MemoryFrame : public ::testing::TestWithParam<AddressCase> {};

TEST_P(MemoryFrame, ReadCarriesTheAddressInTwoBytes) {
    LinkRig rig;
    rig.Port.Answer = [](const Frame&) { return Rising(0x60, 13); };
    const auto [address, high, low] = GetParam();
    EXPECT_FALSE(rig.Link.MemoryRead(5, address));
    EXPECT_THAT(rig.Port.Sent, ElementsAre(Frame{0xF0, 0xC3, 5, 0x10, high, low, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(rig.Link.MemoryValue(), 0x68); // byte 8 of the reply
}

TEST_P(MemoryFrame, WriteCarriesTheValueAsItsSixthPayloadByte) {
    LinkRig rig;
    rig.Port.Answer = [](const Frame&) { return Rising(0x60, 13); };
    const auto [address, high, low] = GetParam();
    EXPECT_FALSE(rig.Link.MemoryWrite(6, address, 0x9C));
    EXPECT_THAT(rig.Port.Sent, ElementsAre(Frame{0xF0, 0xC3, 6, 0x11, high, low, 0, 0, 0x9C, 0, 0, 0, 0xF7}));
}

// The last is the last byte of the eighth preset position: 640 + 432 * 7 + 431 = 4095.
INSTANTIATE_TEST_SUITE_P(Link, MemoryFrame,
                         ::testing::Values(AddressCase{0, 0x00, 0x00}, AddressCase{255, 0x00, 0xFF},
                                           AddressCase{256, 0x01, 0x00}, AddressCase{640, 0x02, 0x80},
                                           AddressCase{640 + 432 * 7 + 431, 0x0F, 0xFF}));

} // namespace
} // namespace nrv::testing
