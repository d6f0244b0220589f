#include "link/link_rig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;
using ::testing::SizeIs;

class CheckDevice : public ::testing::Test {
  protected:
    CheckDevice() { rig.Link.DeviceChecked[Asked] = true; }

    static constexpr int Asked = 12;
    LinkRig rig;
};

TEST_F(CheckDevice, AsksWithNineZerosAndDeviceAnswers) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    EXPECT_TRUE(rig.Link.CheckDevice(Asked));
    EXPECT_THAT(rig.Port.Sent, ElementsAre(Frame{0xF0, 0xC3, 12, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(rig.Received(13), AnswerOfDevice());
    EXPECT_TRUE(rig.Link.TransactionDone);
    EXPECT_TRUE(rig.Link.DeviceChecked[Asked]);
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
}

TEST_F(CheckDevice, ReplyWithAnotherByte4IsFalseAndStillEndsTheTransaction) {
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(0x3C); };
    EXPECT_FALSE(rig.Link.CheckDevice(Asked));
    EXPECT_TRUE(rig.Link.TransactionDone);
    EXPECT_TRUE(rig.Link.DeviceChecked[Asked]);
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
    EXPECT_THAT(rig.Port.Waiting, IsEmpty());
}

TEST_F(CheckDevice, LeavesAtOnceAfterAFailureThatWasTold) {
    rig.Operation.Begin({0, Asked});
    rig.Operation.Report();
    rig.Link.TransactionDone = true;
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    EXPECT_FALSE(rig.Link.CheckDevice(Asked));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
    EXPECT_TRUE(rig.Link.TransactionDone);
}

/// What makes a check leave at once.
struct AtOnce {
    const char* Name;
    void (*Set)(link::Link&);
};

class CheckDeviceLeavesAtOnce : public ::testing::TestWithParam<AtOnce> {};

TEST_P(CheckDeviceLeavesAtOnce, AndSendsNothing) {
    LinkRig rig;
    rig.Link.DeviceChecked[12] = true;
    rig.Link.TransactionDone = true;
    rig.Port.Answer = [](const Frame&) { return AnswerOfDevice(); };
    GetParam().Set(rig.Link);
    EXPECT_FALSE(rig.Link.CheckDevice(12));
    EXPECT_THAT(rig.Port.Sent, IsEmpty());
    EXPECT_TRUE(rig.Link.TransactionDone);
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    Link, CheckDeviceLeavesAtOnce,
    ::testing::Values(AtOnce{"DemoMode", [](link::Link& link) { link.DemoMode = true; }},
                      AtOnce{"LinkNotReady", [](link::Link& link) { link.LinkReady = false; }},
                      AtOnce{"TxSuppressed", [](link::Link& link) { link.TxSuppressed = true; }},
                      AtOnce{"DeviceCheckedFalse", [](link::Link& link) { link.DeviceChecked[12] = false; }},
                      AtOnce{"CheckSuppressed", [](link::Link& link) { link.CheckSuppressed = true; }}),
    [](const auto& instance) { return instance.param.Name; });

TEST_F(CheckDevice, WaitsUntilTheFifthTickTwice) {
    EXPECT_FALSE(rig.Link.CheckDevice(Asked));
    EXPECT_THAT(rig.Port.Sent, SizeIs(2));
    EXPECT_EQ(rig.Port.Sent[0], rig.Port.Sent[1]);
    EXPECT_EQ(rig.Port.Polls, 2 * 5); // after 0 to 4 seconds
    EXPECT_EQ(rig.Clock.Seconds, 2 * 5);
}

TEST_F(CheckDevice, StillWaitsAtTheFourthTick) {
    rig.Port.SecondsPerPoll = 4;
    rig.Link.CheckDevice(Asked);
    EXPECT_EQ(rig.Port.Polls, 2 * 2);
}

TEST_F(CheckDevice, WaitsNoLongerAtTheFifthTick) {
    rig.Port.SecondsPerPoll = 5;
    rig.Link.CheckDevice(Asked);
    EXPECT_EQ(rig.Port.Polls, 2);
}

TEST_F(CheckDevice, TakesAReplyToTheSecondTransmission) {
    rig.Port.Answer = [this](const Frame&) { return rig.Port.Sent.size() == 2 ? AnswerOfDevice() : Bytes(); };
    EXPECT_TRUE(rig.Link.CheckDevice(Asked));
    EXPECT_TRUE(rig.Link.DeviceChecked[Asked]);
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
}

TEST_F(CheckDevice, TimeOutNamesTheDeviceOfTheCurrentWindowNotTheOneAsked) {
    rig.Handler.DeviceIs = 7;
    rig.Boxes.WhileItStands = [this] { EXPECT_TRUE(rig.Link.DeviceChecked[Asked]); };
    EXPECT_FALSE(rig.Link.CheckDevice(Asked));
    ASSERT_THAT(rig.Boxes.Shown, SizeIs(1));
    EXPECT_EQ(rig.Boxes.Shown[0].Text, "Time-Out: Communication problem with device ID:7");
    EXPECT_EQ(rig.Boxes.Shown[0].Title, "");
    EXPECT_EQ(rig.Boxes.Shown[0].Icon, BoxIcon::Exclamation);
    EXPECT_EQ(rig.Boxes.Shown[0].Buttons, BoxButtons::Ok);
}

TEST_F(CheckDevice, TimeOutClearsTheMarkOfTheDeviceAskedAlone) {
    rig.Handler.DeviceIs = 7;
    rig.Link.DeviceChecked.fill(true);
    rig.Link.CheckDevice(Asked);
    for (std::size_t id = 0; id < 33; ++id) {
        EXPECT_EQ(rig.Link.DeviceChecked[id], id != 12) << id;
    }
    EXPECT_THAT(rig.Handler.Log, ElementsAre("mark 12 after 1"));
}

TEST_F(CheckDevice, ErrorOfTheMarkComesOutAndLeavesTransactionDoneFalse) {
    rig.Link.TransactionDone = true;
    rig.Handler.MarkFails = true;
    try {
        rig.Link.CheckDevice(Asked);
        FAIL() << "no error came out";
    } catch (const RuntimeError& error) {
        EXPECT_EQ(error.Kind(), ErrorKind::IndexOutOfRange);
    }
    EXPECT_FALSE(rig.Link.TransactionDone);
    EXPECT_FALSE(rig.Link.DeviceChecked[Asked]);
    EXPECT_THAT(rig.Boxes.Shown, SizeIs(1));
}

TEST_F(CheckDevice, TimeOutOfADeviceThatIsNotListedEndsTheTransaction) {
    EXPECT_FALSE(rig.Link.CheckDevice(Asked)); // the mark finds no row and says nothing
    EXPECT_TRUE(rig.Link.TransactionDone);
}

TEST_F(CheckDevice, TimeOutClosesNoWindow) {
    rig.Link.ReportLinkFailure = true;
    rig.Link.CheckDevice(Asked);
    EXPECT_THAT(rig.Handler.Log, ElementsAre("mark 12 after 1"));
}

TEST_F(CheckDevice, WithoutWindowsNamesDevice0) {
    link::Link link(rig.Port, rig.Clock, rig.Process, rig.Boxes, rig.SerialTimer, rig.Operation);
    link.LinkReady = true;
    link.DeviceChecked[Asked] = true;
    EXPECT_FALSE(link.CheckDevice(Asked));
    ASSERT_THAT(rig.Boxes.Shown, SizeIs(1));
    EXPECT_EQ(rig.Boxes.Shown[0].Text, "Time-Out: Communication problem with device ID:0");
}

TEST_F(CheckDevice, PartialReplyIsCompletedByTheSecond) {
    rig.Port.Answer = [this](const Frame&) {
        return rig.Port.Sent.size() == 1 ? Bytes{1, 2, 3} : Bytes{4, 0xC3, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16};
    };
    EXPECT_TRUE(rig.Link.CheckDevice(Asked));
    EXPECT_THAT(rig.Received(13), ElementsAre(1, 2, 3, 4, 0xC3, 6, 7, 8, 9, 10, 11, 12, 13));
}

TEST_F(CheckDevice, ErrorOfThePortComesOut) {
    rig.Link.TransactionDone = true;
    rig.Port.Gone = true;
    EXPECT_THROW(rig.Link.CheckDevice(Asked), RuntimeError);
    EXPECT_FALSE(rig.Link.TransactionDone);
    EXPECT_TRUE(rig.Link.DeviceChecked[Asked]);
    EXPECT_THAT(rig.Boxes.Shown, IsEmpty());
}

} // namespace
} // namespace nrv::testing
