#include "link/link_rig.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

/// A link that was never opened.
class OpeningAPort : public ::testing::Test {
  protected:
    ScriptedClock clock;
    ScriptedPort port{clock};
    ScriptedProcess process;
    ScriptedBoxes boxes;
    controls::Timer timer;
    Operation operation;
    link::Link link{port, clock, process, boxes, timer, operation};
};

TEST_F(OpeningAPort, SetsPortAndLineAndOpens) {
    link.ComIndex = 32;
    link.OpenPort();
    EXPECT_THAT(port.Log, ElementsAre("port 32", "19200,N,8,1", "open"));
    EXPECT_TRUE(link.PortOpened);
    EXPECT_TRUE(link.LinkReady);
}

TEST_F(OpeningAPort, ClosesAnOpenPortFirst) {
    link.ComIndex = 1;
    link.OpenPort();
    port.Log.clear();
    link.ComIndex = 2;
    link.OpenPort();
    EXPECT_THAT(port.Log, ElementsAre("close", "port 2", "19200,N,8,1", "open"));
    EXPECT_TRUE(link.LinkReady);
}

TEST_F(OpeningAPort, FailsOnNoneWithoutAMessageAndNothingIsSent) {
    link.PortOpened = true;
    link.LinkReady = true;
    link.ReportLinkFailure = true;
    link.OpenPort();
    EXPECT_THAT(port.Log, ElementsAre("port 0", "19200,N,8,1", "open"));
    EXPECT_FALSE(link.PortOpened);
    EXPECT_FALSE(link.LinkReady);
    EXPECT_FALSE(link.SendFrame(0, {0x01}));
    EXPECT_THAT(port.Sent, IsEmpty());
    EXPECT_THAT(boxes.Shown, IsEmpty());
}

TEST_F(OpeningAPort, FailsOnAnAbsentPort) {
    port.Present = false;
    link.ComIndex = 5;
    link.OpenPort();
    EXPECT_FALSE(link.PortOpened);
    EXPECT_FALSE(link.LinkReady);
    EXPECT_FALSE(port.PortOpen());
    EXPECT_THAT(boxes.Shown, IsEmpty());
}

TEST_F(OpeningAPort, RecoversWhenThePortIsThereAgain) {
    port.Present = false;
    link.ComIndex = 5;
    link.OpenPort();
    port.Present = true;
    link.OpenPort();
    EXPECT_TRUE(link.PortOpened);
    EXPECT_TRUE(link.LinkReady);
}

TEST_F(OpeningAPort, ConnectSetsUpOpensAndReopensWithTheLengthsOfAFrame) {
    port.InBufferSize = port.InputLen = 432;
    link.ComIndex = 7;
    link.ConnectPort();
    EXPECT_THAT(port.Log, ElementsAre("port 7", "19200,N,8,1", "open", "close", "buffer 13", "input 13", "open"));
    EXPECT_TRUE(port.PortOpen());
}

TEST_F(OpeningAPort, ConnectClosesAnOpenPortFirst) {
    link.ComIndex = 7;
    link.OpenPort();
    port.Log.clear();
    link.ConnectPort();
    EXPECT_THAT(port.Log,
                ElementsAre("close", "port 7", "19200,N,8,1", "open", "close", "buffer 13", "input 13", "open"));
}

TEST_F(OpeningAPort, ConnectLeavesTheFlagsAsTheyAre) {
    link.ComIndex = 7;
    link.ConnectPort();
    EXPECT_FALSE(link.PortOpened);
    EXPECT_FALSE(link.LinkReady);
}

TEST_F(OpeningAPort, ConnectThrowsOnNoneAndLeavesTheFlags) {
    link.PortOpened = true;
    link.LinkReady = true;
    EXPECT_THROW(link.ConnectPort(), RuntimeError);
    EXPECT_THAT(port.Log, ElementsAre("port 0", "19200,N,8,1", "open"));
    EXPECT_TRUE(link.PortOpened);
    EXPECT_TRUE(link.LinkReady);
}

TEST_F(OpeningAPort, ReopenClosesSetsBothLengthsAndOpens) {
    link.ComIndex = 4;
    link.OpenPort();
    port.Log.clear();
    link.ReopenPort(432);
    EXPECT_THAT(port.Log, ElementsAre("close", "buffer 432", "input 432", "open"));
}

TEST_F(OpeningAPort, ReopenOpensAClosedPort) {
    link.ComIndex = 4;
    link.OpenPort();
    port.SetPortOpen(false);
    port.Log.clear();
    link.ReopenPort(13);
    EXPECT_THAT(port.Log, ElementsAre("buffer 13", "input 13", "open"));
}

TEST_F(OpeningAPort, ReopenThrowsWhenThePortIsAbsent) {
    link.ComIndex = 4;
    link.OpenPort();
    port.Present = false;
    EXPECT_THROW(link.ReopenPort(432), RuntimeError);
    EXPECT_FALSE(port.PortOpen());
}

TEST_F(OpeningAPort, TellsWhyItFailedUntilItIsOpenedAgain) {
    EXPECT_EQ(link.PortRefusal(), "");
    port.Present = false;
    link.ComIndex = 5;
    link.OpenPort();
    EXPECT_EQ(link.PortRefusal(), "The port is absent.");
    port.Present = true;
    link.OpenPort();
    EXPECT_EQ(link.PortRefusal(), "");
}

} // namespace
} // namespace nrv::testing
