#include "session/failure_text.h"

#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

/// One of device 1 that failed for this reason.
Operation Failed(const std::string& reason) {
    Operation operation;
    operation.Begin({2, 1});
    operation.Fail(reason);
    return operation;
}

TEST(FailureText, AChangeWithoutANameWasNotSent) {
    EXPECT_EQ(session::FailureText(Failed("ID:1 does not answer")),
              "ID:1 does not answer; the change was not sent. Double-click its row to connect it again.");
}

TEST(FailureText, AnOperationStoppedAfterSoManyOfItsFrames) {
    Operation operation = Failed("ID:1 does not answer");
    operation.Call("the copy", 28);
    operation.CountAnswered();
    operation.CountAnswered();
    EXPECT_EQ(session::FailureText(operation),
              "ID:1 does not answer; the copy stopped after 2 of 28 frames. Double-click its row to connect it again.");
}

TEST(FailureText, OfOneFrameNobodyIsToldACount) {
    Operation operation = Failed("ID:1 does not answer");
    operation.Call("the leaving", Operation::Untold);
    EXPECT_EQ(session::FailureText(operation),
              "ID:1 does not answer; the leaving stopped. Double-click its row to connect it again.");
    operation.Call("the copy", 2);
    EXPECT_EQ(session::FailureText(operation),
              "ID:1 does not answer; the copy stopped after 0 of 2 frames. Double-click its row to connect it again.");
}

TEST(FailureText, TheRowIsNamedWhereTheReasonNamesNoDevice) {
    EXPECT_EQ(session::FailureText(Failed("The port is gone")),
              "The port is gone; the change was not sent. Double-click the row of ID:1 to connect it again.");
    EXPECT_EQ(session::FailureText(Failed("ID:12 does not answer")),
              "ID:12 does not answer; the change was not sent. Double-click the row of ID:1 to connect it again.");
    EXPECT_EQ(session::FailureText(Failed("Of ID:1 nothing is heard")),
              "Of ID:1 nothing is heard; the change was not sent. Double-click the row of ID:1 to connect it again.");
}

TEST(FailureText, OutsideAnOperationThereIsNoDeviceToName) {
    Operation operation;
    operation.Fail(" does not answer");
    EXPECT_EQ(session::FailureText(operation),
              " does not answer; the change was not sent. Double-click the row of the device to connect it again.");
}

TEST(WaitingText, TellsHowFarItIsWhereThatIsKnown) {
    Operation operation;
    EXPECT_EQ(session::WaitingText(operation, 7), "ID:7 does not answer, waiting.");
    operation.At("byte 3 of 16");
    EXPECT_EQ(session::WaitingText(operation, 7), "ID:7 does not answer, byte 3 of 16.");
}

} // namespace
} // namespace nrv::testing
