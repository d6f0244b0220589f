#include "link/link_rig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class ProbeDevice : public ::testing::Test {
  protected:
    /// The timer's 200 ms are over the n-th time that events run.
    void TimeUpAfter(int turns) {
        rig.Process.OnPendingEvents = [this, turns] {
            if (++turns_ == turns) {
                EXPECT_TRUE(rig.SerialTimer.Running());
                EXPECT_EQ(rig.SerialTimer.Interval(), 200);
                rig.SerialTimer.Tick();
            }
        };
        turns_ = 0;
    }

    LinkRig rig;
    int turns_ = 0;
};

TEST_F(ProbeDevice, AsksWithNineZerosAndDeviceAnswers) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    rig.Link.TxFrame.fill(0xEE);
    EXPECT_TRUE(rig.Link.ProbeDevice(31));
    EXPECT_THAT(rig.Port.Sent, ElementsAre(Frame{0xF0, 0xC3, 31, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(rig.Received(13), AnswerOfDevice());
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
    EXPECT_FALSE(rig.SerialTimer.Running());
}

TEST_F(ProbeDevice, LeavesAtOnceInDemoMode) {
    rig.Link.DemoMode = true;
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
    EXPECT_EQ(rig.SerialTimer.Interval(), 0);
}

TEST_F(ProbeDevice, LeavesAtOnceWhileSuppressed) {
    rig.Link.TxSuppressed = true;
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
}

TEST_F(ProbeDevice, LeavesAtOnceWhenTheLinkIsNotReady) {
    rig.Link.LinkReady = false;
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
}

TEST_F(ProbeDevice, RunsEventsAndTheTimerOf200MillisecondsWhileItWaits) {
    rig.Port.ArriveAt(5, AnswerOfDevice());
    int turns = 0;
    rig.Process.OnPendingEvents = [this, &turns] {
        ++turns;
        EXPECT_TRUE(rig.SerialTimer.Running());
        EXPECT_EQ(rig.SerialTimer.Interval(), 200);
    };
    EXPECT_TRUE(rig.Link.ProbeDevice(0));
    EXPECT_EQ(turns, 5); // before each look at what waits
    EXPECT_FALSE(rig.SerialTimer.Running());
}

TEST_F(ProbeDevice, ReplyWithAnotherByte4IsNoDevice) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(0xC2); };
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_EQ(rig.Link.RxFrame[4], 0xC2);
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
    EXPECT_FALSE(rig.SerialTimer.Running());
}

TEST_F(ProbeDevice, GivesUpAfterOneTransmissionWhenTheTimeIsUp) {
    TimeUpAfter(3);
    rig.Link.ReportLinkFailure = true;
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_THAT(rig.Port.Sent, SizeIs(1));
    EXPECT_EQ(rig.Port.Polls, 2); // the third turn ended it before the look
    EXPECT_FALSE(rig.SerialTimer.Running());
    EXPECT_TRUE(rig.Link.SerialTimeUp);
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
    EXPECT_THAT(rig.Handler.Log, IsEmpty());
}

TEST_F(ProbeDevice, ForgetsTheTimeUpOfTheProbeBefore) {
    rig.Link.SerialTimeUp = true;
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    EXPECT_TRUE(rig.Link.ProbeDevice(0));
    EXPECT_FALSE(rig.Link.SerialTimeUp);
}

TEST_F(ProbeDevice, EmptiesNothingAfterATimeOut) {
    rig.Port.Answer = [](const Frame&) { return Rising(1, 5); };
    TimeUpAfter(2);
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_EQ(rig.Port.Waiting, Rising(1, 5));
}

TEST_F(ProbeDevice, LateReplySatisfiesTheNextProbeAndItsByte4Decides) {
    TimeUpAfter(2);
    EXPECT_FALSE(rig.Link.ProbeDevice(4)); // one look, one second
    rig.Port.ArriveAt(2, AnswerOfDevice());
    EXPECT_TRUE(rig.Link.ProbeDevice(5)); // nobody has the ID 5
    rig.Port.ArriveAt(3, AnswerOfDevice(0x00));
    rig.Port.Answer = nullptr;
    EXPECT_FALSE(rig.Link.ProbeDevice(6));
    EXPECT_THAT(rig.Port.Sent, SizeIs(3));
}

TEST_F(ProbeDevice, TimeUpWinsOverAReplyThatWaits) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    TimeUpAfter(1);
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_EQ(rig.Port.Waiting, AnswerOfDevice());
}

TEST_F(ProbeDevice, KnowsNoClock) {
    rig.Port.SecondsPerPoll = 1000;
    rig.Port.ArriveAt(20'000, AnswerOfDevice());
    EXPECT_TRUE(rig.Link.ProbeDevice(0));
    EXPECT_EQ(rig.Port.Polls, 20);
}

TEST_F(ProbeDevice, NeverTouchesTransactionDone) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    rig.Link.ProbeDevice(0);
    EXPECT_FALSE(rig.Link.TransactionDone);
    rig.Link.TransactionDone = true;
    rig.Port.Answer = nullptr;
    TimeUpAfter(2);
    rig.Link.ProbeDevice(0);
    EXPECT_TRUE(rig.Link.TransactionDone);
}

TEST_F(ProbeDevice, PortThatIsNotOpenStopsTheTimer) {
    rig.Port.SetPortOpen(false);
    rig.SerialTimer.Start(200);
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_FALSE(rig.SerialTimer.Running());
}

TEST_F(ProbeDevice, PortGoneInTheWaitStopsTheTimer) {
    rig.Process.OnPendingEvents = [this] { rig.Port.Gone = ++turns_ == 3; };
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_EQ(turns_, 3);
    EXPECT_FALSE(rig.SerialTimer.Running());
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
}

TEST_F(ProbeDevice, PortGoneAsTheReplyIsReadGivesFalse) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    rig.Port.OnPoll = [this] { rig.Port.Gone = true; };
    EXPECT_FALSE(rig.Link.ProbeDevice(0));
    EXPECT_FALSE(rig.SerialTimer.Running());
}

TEST_F(ProbeDevice, LeavesAtOnceAfterAFailureThatWasTold) {
    rig.Operation.Begin({0, 0});
    rig.Operation.Report();
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    EXPECT_FALSE(rig.Link.ProbeDevice(31));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
    EXPECT_FALSE(rig.SerialTimer.Running());
}

} // namespace
} // namespace nrv::testing
