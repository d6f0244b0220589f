#include "link/link_rig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class SendFrameFailure : public ::testing::Test {
  protected:
    void ExpectReported() {
        ASSERT_THAT(rig.Boxes.Shown, SizeIs(1));
        EXPECT_EQ(rig.Boxes.Shown[0].Text, " The system will be close the communication with this device");
        EXPECT_EQ(rig.Boxes.Shown[0].Title, "Communication problem");
        EXPECT_EQ(rig.Boxes.Shown[0].Icon, BoxIcon::Exclamation);
        EXPECT_EQ(rig.Boxes.Shown[0].Buttons, BoxButtons::Ok);
        EXPECT_THAT(rig.Handler.Log, ElementsAre("tell after 0", "give up after 1"));
        EXPECT_FALSE(rig.Link.TransactionDone);
    }
    void ExpectSilent() {
        EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
        EXPECT_THAT(rig.Handler.Log, IsEmpty());
        EXPECT_FALSE(rig.Link.TransactionDone);
    }

    LinkRig rig;
};

TEST_F(SendFrameFailure, IsReportedAndClosesTheCurrentWindow) {
    rig.Link.ReportLinkFailure = true;
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x01}));
    ExpectReported();
    EXPECT_THAT(rig.Port.Sent, SizeIs(5));
}

TEST_F(SendFrameFailure, ConcernsTheCurrentWindowWhicheverDeviceWasAsked) {
    rig.Link.ReportLinkFailure = true;
    rig.Handler.DeviceIs = 9;
    rig.Operation.Begin({1, 9});
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x01}));
    // It is told of the device that was asked, and taken out on the other.
    EXPECT_EQ(rig.Operation.Reason(), "ID:3 does not answer");
    EXPECT_THAT(rig.Handler.Log, ElementsAre("tell after 0", "give up after 1"));
    ASSERT_TRUE(rig.Operation.Of());
    EXPECT_EQ(rig.Operation.Of()->Slot, 1);
    EXPECT_EQ(rig.Operation.Of()->Device, 9);
}

TEST_F(SendFrameFailure, IsSilentUnlessItIsToBeReported) {
    rig.Link.TransactionDone = true;
    EXPECT_FALSE(rig.Link.SendFrame(3, {0x01}));
    ExpectSilent();
}

TEST_F(SendFrameFailure, LeavesTheLastReplyInPlace) {
    rig.Link.RxFrame.fill(0x5A);
    rig.Link.SendFrame(3, {0x01});
    EXPECT_EQ(rig.Received(433), Bytes(433, 0x5A));
}

TEST_F(SendFrameFailure, LeavesTheLinkUsable) {
    rig.Link.ReportLinkFailure = true;
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x01}));
    EXPECT_TRUE(rig.Link.LinkReady);
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    EXPECT_FALSE(rig.Link.SendFrame(4, {0x01}));
    EXPECT_TRUE(rig.Link.TransactionDone);
}

TEST_F(SendFrameFailure, WithoutWindowsShowsTheBoxAlone) {
    link::Link link(rig.Port, rig.Clock, rig.Process, rig.Boxes, rig.SerialTimer, rig.Operation);
    link.LinkReady = true;
    link.ReportLinkFailure = true;
    EXPECT_TRUE(link.SendFrame(3, {0x01}));
    EXPECT_THAT(rig.Boxes.Shown, SizeIs(1));
    EXPECT_THAT(rig.Handler.Log, IsEmpty());
}

TEST_F(SendFrameFailure, PortThatIsNotOpenGetsNoAttempt) {
    rig.Port.SetPortOpen(false);
    rig.Link.ReportLinkFailure = true;
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x01}));
    ExpectReported();
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
}

TEST_F(SendFrameFailure, PortThatIsNotOpenIsPassedOverInSilence) {
    rig.Port.SetPortOpen(false);
    rig.Link.TransactionDone = true;
    EXPECT_FALSE(rig.Link.SendFrame(3, {0x01}));
    ExpectSilent();
}

TEST_F(SendFrameFailure, PortGoneInTheSecondWaitGetsNoThirdAttempt) {
    rig.Link.ReportLinkFailure = true;
    rig.Port.OnPoll = [this] { rig.Port.Gone = rig.Port.Polls == 12; };
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x01}));
    ExpectReported();
    EXPECT_THAT(rig.Port.Sent, SizeIs(2));
    EXPECT_EQ(rig.Clock.Seconds, 12);
}

TEST_F(SendFrameFailure, PortGoneInAWaitIsSilentUnlessToBeReported) {
    rig.Port.OnPoll = [this] { rig.Port.Gone = rig.Port.Polls == 3; };
    EXPECT_FALSE(rig.Link.SendFrame(3, {0x01}));
    ExpectSilent();
    EXPECT_THAT(rig.Port.Sent, SizeIs(1));
}

TEST_F(SendFrameFailure, PortGoneAsTheReplyIsReadKeepsTheLastReply) {
    rig.Link.RxFrame.fill(0x5A);
    rig.Link.ReportLinkFailure = true;
    rig.Port.Answer = [](const Frame&) { return Rising(1, 13); };
    rig.Port.OnPoll = [this] { rig.Port.Gone = true; };
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x01}));
    ExpectReported();
    EXPECT_EQ(rig.Received(13), Bytes(13, 0x5A));
    EXPECT_THAT(rig.Port.Sent, SizeIs(1));
}

TEST_F(SendFrameFailure, FrameWithoutReplyOnALostPortIsReported) {
    rig.Port.Gone = true;
    rig.Link.ReportLinkFailure = true;
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x0F}));
    ExpectReported();
}

TEST_F(SendFrameFailure, ReachesMemoryReadAndWrite) {
    rig.Link.ReportLinkFailure = true;
    EXPECT_TRUE(rig.Link.MemoryRead(3, 10));
    EXPECT_TRUE(rig.Link.MemoryWrite(3, 10, 1));
    EXPECT_THAT(rig.Handler.Log, ElementsAre("tell after 0", "give up after 1", "tell after 1", "give up after 2"));
}

TEST_F(SendFrameFailure, IsCountedAndHasItsReasonWhenItIsTold) {
    rig.Link.ReportLinkFailure = true;
    rig.Operation.Begin({1, 3});
    rig.Operation.Call("the copy");
    rig.Port.Answer = [](const Frame& frame) { return frame[3] == 0x09 ? Bytes{} : AnswerOfDevice(); };
    rig.Link.SendFrame(3, {0x01});
    rig.Link.SendFrame(3, {0x02});
    bool told = false;
    rig.Handler.WhenTold = [&] {
        told = true;
        EXPECT_EQ(rig.Operation.Answered(), 2);
        EXPECT_EQ(rig.Operation.Frames(), 4); // a mute is two
        EXPECT_EQ(rig.Operation.Reason(), "ID:3 does not answer");
    };
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x09}));
    EXPECT_TRUE(told);
}

TEST_F(SendFrameFailure, OfAnyOtherCommandIsOneFrameNotSent) {
    rig.Link.ReportLinkFailure = true;
    rig.Operation.Begin({1, 3});
    rig.Port.Answer = [](const Frame&) { return Bytes{}; };
    bool told = false;
    rig.Handler.WhenTold = [&] {
        told = true;
        EXPECT_EQ(rig.Operation.Frames(), 1);
    };
    EXPECT_TRUE(rig.Link.SendFrame(3, {0x01}));
    EXPECT_TRUE(told);
    rig.Link.SendFrame(3, {0x01}); // left out, as each that would follow
    EXPECT_EQ(rig.Operation.Frames(), 2);
}

} // namespace
} // namespace nrv::testing
