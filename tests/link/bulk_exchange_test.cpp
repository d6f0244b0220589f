#include "link/link_rig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

const link::Payload ReadThird = {0x0B, 0x02, 0x03, 0x04, 0x05, 0x06, 0x07, 0x08, 0x09};

class BulkExchange : public ::testing::Test {
  protected:
    BulkExchange() { rig.Link.ReopenPort(432); }
    LinkRig rig;
};

/// A reply whose bytes differ from each other's neighbours and between its two halves.
Bytes Image() {
    Bytes bytes;
    for (int i = 0; i < 432; ++i) {
        bytes.push_back(static_cast<std::uint8_t>(i * 7 + i / 256));
    }
    return bytes;
}

TEST_F(BulkExchange, WritesTheFrameOfTenArgumentsAndTakes432Bytes) {
    rig.Port.Answer = [](const Frame&) { return Image(); };
    EXPECT_TRUE(rig.Link.BulkExchange(9, ReadThird));
    EXPECT_THAT(rig.Port.Sent, ElementsAre(Frame{0xF0, 0xC3, 9, 0x0B, 2, 3, 4, 5, 6, 7, 8, 9, 0xF7}));
    EXPECT_EQ(rig.Received(432), Image());
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
}

TEST_F(BulkExchange, LeavesAtOnceInDemoMode) {
    rig.Link.DemoMode = true;
    EXPECT_FALSE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
}

TEST_F(BulkExchange, LeavesAtOnceWhileSuppressed) {
    rig.Link.TxSuppressed = true;
    EXPECT_FALSE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
}

TEST_F(BulkExchange, LeavesAtOnceWhenTheLinkIsNotReady) {
    rig.Link.LinkReady = false;
    EXPECT_FALSE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
}

TEST_F(BulkExchange, NeverTouchesTransactionDone) {
    rig.Port.Answer = [](const Frame&) { return Image(); };
    rig.Link.BulkExchange(0, ReadThird);
    EXPECT_FALSE(rig.Link.TransactionDone);
    rig.Link.TransactionDone = true;
    rig.Link.BulkExchange(0, ReadThird);
    EXPECT_TRUE(rig.Link.TransactionDone);
    rig.Port.Answer = nullptr;
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
    EXPECT_TRUE(rig.Link.TransactionDone);
}

TEST_F(BulkExchange, LosesWhatComesBehind432Bytes) {
    rig.Link.RxFrame[432] = 0x5A;
    rig.Port.Answer = [](const Frame&) {
        Bytes long_reply = Image();
        long_reply.insert(long_reply.end(), 20, 0xEE);
        return long_reply;
    };
    EXPECT_TRUE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_EQ(rig.Received(432), Image());
    EXPECT_EQ(rig.Link.RxFrame[432], 0x5A);
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
}

TEST_F(BulkExchange, TwoTimes216BytesCompleteIt) {
    rig.Port.Answer = [this](const Frame&) {
        const Bytes image = Image();
        const auto middle = image.begin() + 216;
        return rig.Port.Sent.size() == 1 ? Bytes(image.begin(), middle) : Bytes(middle, image.end());
    };
    EXPECT_TRUE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Port.Sent, SizeIs(2));
    EXPECT_EQ(rig.Received(432), Image());
}

TEST_F(BulkExchange, WaitsUntilTheNineteenthTickSixTimesOver) {
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
    EXPECT_THAT(rig.Port.Sent, SizeIs(6));
    EXPECT_EQ(rig.Port.Polls, 6 * 19); // after 0 to 18 seconds
    EXPECT_EQ(rig.Clock.Seconds, 6 * 19);
}

TEST_F(BulkExchange, StillWaitsAtTheEighteenthTick) {
    rig.Port.SecondsPerPoll = 18;
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
    EXPECT_EQ(rig.Port.Polls, 6 * 2);
}

TEST_F(BulkExchange, WaitsNoLongerAtTheNineteenthTick) {
    rig.Port.SecondsPerPoll = 19;
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
    EXPECT_EQ(rig.Port.Polls, 6);
}

TEST_F(BulkExchange, TakesAReplyToTheSixthTransmission) {
    rig.Port.Answer = [this](const Frame&) { return rig.Port.Sent.size() == 6 ? Image() : Bytes(); };
    EXPECT_TRUE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
    EXPECT_FALSE(rig.Process.Ended);
}

TEST_F(BulkExchange, TimeOutShowsABoxAndThenEndsTheProcess) {
    rig.Link.RxFrame.fill(0x5A);
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
    ASSERT_THAT(rig.Boxes.Shown, SizeIs(1));
    EXPECT_EQ(rig.Boxes.Shown[0].Text, "Time out");
    EXPECT_EQ(rig.Boxes.Shown[0].Title, "");
    EXPECT_EQ(rig.Boxes.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(rig.Boxes.Shown[0].Buttons, BoxButtons::Ok);
    EXPECT_TRUE(rig.Process.Ended);
    EXPECT_EQ(rig.Received(433), Bytes(433, 0x5A));
    EXPECT_THAT(rig.Handler.Log, IsEmpty()); // no window is unloaded
}

TEST_F(BulkExchange, TimeOutEndsTheProcessEvenIfFailuresAreNotReported) {
    rig.Link.ReportLinkFailure = false;
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
    EXPECT_THAT(rig.Boxes.Shown, SizeIs(1));
}

TEST_F(BulkExchange, With431BytesNeverCompletes) {
    rig.Port.ArriveAt(1, Bytes(431, 1));
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
}

TEST_F(BulkExchange, NeedsTheReceiveLengthsOfItsCaller) {
    rig.Link.ReopenPort(13);
    rig.Port.Answer = [](const Frame&) { return Image(); };
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
}

TEST_F(BulkExchange, PortGoneInTheWaitGivesFalseAndKeepsTheLastReply) {
    rig.Link.RxFrame.fill(0x5A);
    rig.Link.ReportLinkFailure = true;
    rig.Port.OnPoll = [this] { rig.Port.Gone = rig.Port.Polls == 20; };
    EXPECT_FALSE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Port.Sent, SizeIs(2));
    EXPECT_EQ(rig.Received(433), Bytes(433, 0x5A));
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
    EXPECT_FALSE(rig.Process.Ended);
}

TEST_F(BulkExchange, PortThatIsNotOpenGivesFalse) {
    rig.Port.SetPortOpen(false);
    EXPECT_FALSE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
}

TEST_F(BulkExchange, LetsNoEventsRun) {
    bool ran = false;
    rig.Process.OnPendingEvents = [&ran] { ran = true; };
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
    EXPECT_FALSE(ran);
}

TEST_F(BulkExchange, APortThatGoesAwayMeanwhileIsFalseWithoutABox) {
    rig.Port.OnPoll = [this] { rig.Port.Gone = true; };
    EXPECT_FALSE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Port.Sent, SizeIs(1));
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
}

TEST_F(BulkExchange, LeavesAtOnceAfterAFailureThatWasTold) {
    rig.Operation.Begin({0, 0});
    rig.Operation.Report();
    rig.Port.Answer = [](const Frame&) { return Image(); };
    EXPECT_FALSE(rig.Link.BulkExchange(0, ReadThird));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
}

TEST_F(BulkExchange, NothingMoreIsSentWhileTheTimeOutBoxStands) {
    rig.Boxes.WhileItStands = [this] {
        EXPECT_FALSE(rig.Link.LinkReady);
        EXPECT_FALSE(rig.Link.SendFrame(0, {0x12}));
    };
    EXPECT_THROW(rig.Link.BulkExchange(0, ReadThird), ProcessEnded);
    EXPECT_THAT(rig.Boxes.Shown, SizeIs(1));
    EXPECT_THAT(rig.Port.Sent, SizeIs(6));
}

} // namespace
} // namespace nrv::testing
