#include "ports/operation.h"
#include "ports/standing_ports.h"
#include "support/scripted_ports.h"

#include <gtest/gtest.h>
#include <stdexcept>
#include <string>
#include <vector>

namespace nrv::testing {
namespace {

constexpr Operation::Subject OfSlot0{0, 5};

TEST(OperationTest, BeginsWithNothingOfTheLastOne) {
    Operation operation;
    operation.Begin(OfSlot0);
    EXPECT_TRUE(operation.Running());
    EXPECT_TRUE(operation.Busy());
    operation.Call("the copy", 7);
    operation.Title("copy of In A to In B");
    operation.At("byte 3 of 16");
    operation.CountAnswered();
    operation.CountUnsent(2);
    operation.Fail("ID:5 does not answer");
    operation.Report();
    operation.End();
    EXPECT_FALSE(operation.Running());
    EXPECT_FALSE(operation.Busy());
    EXPECT_FALSE(operation.Reported());

    operation.Begin(OfSlot0);
    EXPECT_FALSE(operation.Reported());
    EXPECT_EQ(operation.Reason(), "");
    EXPECT_EQ(operation.Name(), "");
    EXPECT_EQ(operation.Title(), "");
    EXPECT_EQ(operation.Progress(), "");
    EXPECT_EQ(operation.Answered(), 0);
    EXPECT_EQ(operation.Frames(), 0);
    operation.CountUnsent(3);
    operation.CountAnswered();
    EXPECT_EQ(operation.Frames(), 4);
    operation.Call("the load");
    EXPECT_EQ(operation.Frames(), 0);
}

TEST(OperationTest, IsNotBusyWhileABoxStandsAndBusyAgainBehindIt) {
    Operation operation;
    operation.Begin(OfSlot0);
    {
        const Operation::Standing box(operation, Operation::Loop::Box);
        EXPECT_FALSE(operation.Busy());
        EXPECT_TRUE(operation.BoxStands());
        EXPECT_FALSE(operation.DialogStands());
    }
    EXPECT_TRUE(operation.Busy());
    EXPECT_FALSE(operation.BoxStands());
}

TEST(OperationTest, TellsThatALoopEndedUnlessAnErrorLeavesIt) {
    Operation operation;
    int ended = 0;
    operation.Watch.LoopEnds = [&ended] { ++ended; };
    operation.Begin(OfSlot0);
    { const Operation::Standing dialog(operation, Operation::Loop::Dialog); }
    EXPECT_EQ(ended, 1);
    EXPECT_THROW(
        {
            const Operation::Standing dialog(operation, Operation::Loop::Dialog);
            throw std::runtime_error("it went");
        },
        std::runtime_error);
    EXPECT_EQ(ended, 1);
}

TEST(OperationTest, HooksSeeItAsItIsAtTheirTime) {
    Operation operation;
    std::vector<std::string> seen;
    const auto look = [&](const std::string& hook) {
        return [&seen, &operation, hook] {
            seen.push_back(hook + (operation.Running() ? " running" : "") + (operation.Busy() ? " busy" : "") +
                           (operation.Reported() ? " reported" : "") + ' ' + operation.Name());
        };
    };
    operation.Watch = {look("began"), look("loop begins"), look("loop ends"), look("ending"), look("over")};
    const std::vector<std::string> all{"began running busy ",
                                       "loop begins running busy the copy",
                                       "began running busy the copy",
                                       "ending running busy the copy",
                                       "loop ends running busy the copy",
                                       "ending running busy reported the copy",
                                       "over the copy"};
    for (int time = 0; time < 2; ++time) {
        seen.clear();
        operation.Begin(OfSlot0);
        operation.Call("the copy");
        {
            const Operation::Standing dialog(operation, Operation::Loop::Dialog);
            operation.BeginPart();
            operation.EndPart();
        }
        operation.Report();
        operation.End();
        EXPECT_EQ(seen, all);
    }
}

TEST(StandingBoxesTest, AfterAReportShowNothingAndAnswerWhatChangesNothing) {
    Operation operation;
    ScriptedBoxes boxes;
    StandingBoxes standing(boxes, operation);
    operation.Begin(OfSlot0);
    operation.Report();
    EXPECT_EQ(standing.Show({"Do you?", "Question", BoxIcon::None, BoxButtons::YesNo}), BoxAnswer::No);
    EXPECT_EQ(standing.Show({"It is so.", "Notice", BoxIcon::None, BoxButtons::Ok}), BoxAnswer::Ok);
    EXPECT_TRUE(boxes.Shown.empty());
    operation.End();
    operation.Begin(OfSlot0);
    standing.Show({"It is so.", "Notice", BoxIcon::None, BoxButtons::Ok});
    EXPECT_EQ(boxes.Shown.size(), 1U);
}

} // namespace
} // namespace nrv::testing
