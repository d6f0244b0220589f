#include "controls/event_boundary.h"
#include "support/scripted_ports.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <memory>
#include <stdexcept>

namespace nrv::testing {
namespace {

using controls::EventBoundary;
using Kind = controls::EventSource::Kind;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class EventBoundaryTest : public ::testing::Test {
  protected:
    EventBoundaryTest() {
        windows->Loaded[3] = true;
        windows->WindowSlots[3] = {true, 9, 3};
        boundary.Set({.UserBegins = [this] { Log.emplace_back("user begins"); },
                      .MakeCurrent =
                          [this](int slot) {
                              Log.push_back("current " + std::to_string(slot));
                              windows->CurrentWindow = slot;
                          },
                      .TellError = [this](const std::string& text) { Log.push_back("error " + text); },
                      .Ends = [this] { Log.emplace_back("ends"); }});
    }

    /// Whether an event from there runs now.
    bool Passes(Kind kind) {
        bool ran = false;
        const bool admitted = boundary.Run({kind, 3}, [&ran] { ran = true; });
        EXPECT_EQ(admitted, ran);
        return ran;
    }
    /// What passes now, in the order Program, Device, Dialog, Tick, Meters, Always.
    std::string Passing() {
        std::string passing;
        for (const auto& [kind, letter] :
             {std::pair(Kind::Program, 'P'), std::pair(Kind::Device, 'D'), std::pair(Kind::Dialog, 'd'),
              std::pair(Kind::Tick, 'T'), std::pair(Kind::Meters, 'M'), std::pair(Kind::Always, 'A')}) {
            if (Passes(kind)) {
                passing += letter;
            }
        }
        return passing;
    }

    std::unique_ptr<controls::Windows> windows = std::make_unique<controls::Windows>();
    EventBoundary boundary{*windows};
    std::vector<std::string> Log;
};

TEST_F(EventBoundaryTest, TurnsAnErrorIntoAMessage) {
    boundary.Run({Kind::Tick}, [] { throw RuntimeError(ErrorKind::IndexOutOfRange, "The list has no row 7."); });
    EXPECT_THAT(Log, ElementsAre("error The list has no row 7.", "ends"));
}

TEST_F(EventBoundaryTest, TurnsAnErrorThatNobodyExpectsIntoAMessageToo) {
    boundary.Run({Kind::Tick}, [] { throw std::length_error("too long"); });
    EXPECT_THAT(Log, ElementsAre("error The program could not go on with this: too long.", "ends"));
    EXPECT_FALSE(boundary.Current().Running());
    EXPECT_EQ(Passing(), "PDdTMA");
}

TEST_F(EventBoundaryTest, RunsAnEventThatGoesWellWithoutAWord) {
    EXPECT_TRUE(Passes(Kind::Tick));
    EXPECT_THAT(Log, ElementsAre("ends"));
}

TEST_F(EventBoundaryTest, IsWhereAnEventEndsThatEndedTheProcess) {
    ScriptedProcess process;
    bool went_on = false;
    boundary.Run({Kind::Program}, [&] {
        process.End();
        went_on = true;
    });
    EXPECT_TRUE(process.Ended);
    EXPECT_FALSE(went_on);
    EXPECT_FALSE(boundary.Current().Running());
}

TEST_F(EventBoundaryTest, EverythingPassesWhileNothingRuns) {
    EXPECT_EQ(Passing(), "PDdTMA");
}

TEST_F(EventBoundaryTest, NothingPassesWhileAnOperationRunsButWhatItWaitsFor) {
    std::string passing;
    boundary.Run({Kind::Program}, [&] { passing = Passing(); });
    EXPECT_EQ(passing, "A");
}

TEST_F(EventBoundaryTest, BesideADialogOfTheOperationItsControlsAndTheMetersPass) {
    std::string beside;
    std::string in_part;
    std::string under_box;
    std::string after_box;
    std::string after;
    boundary.Run({Kind::Device, 3}, [&] {
        Operation& operation = boundary.Current();
        {
            const Operation::Standing dialog(operation, Operation::Loop::Dialog);
            beside = Passing();
            boundary.Run({Kind::Dialog}, [&] { in_part = Passing(); });
            {
                const Operation::Standing box(operation, Operation::Loop::Box);
                under_box = Passing();
            }
            after_box = Passing();
        }
        after = Passing();
    });
    EXPECT_EQ(beside, "dMA");
    EXPECT_EQ(in_part, "A");
    EXPECT_EQ(under_box, "A");
    EXPECT_EQ(after_box, "dMA");
    EXPECT_EQ(after, "A");
}

TEST_F(EventBoundaryTest, WhileABoxOfAPartStandsNothingPasses) {
    std::string under_box;
    boundary.Run({Kind::Device, 3}, [&] {
        const Operation::Standing dialog(boundary.Current(), Operation::Loop::Dialog);
        boundary.Run({Kind::Meters, 3}, [&] {
            const Operation::Standing box(boundary.Current(), Operation::Loop::Box);
            under_box = Passing();
        });
    });
    EXPECT_EQ(under_box, "A");
}

TEST_F(EventBoundaryTest, AnEventOfAWindowThatIsGoneIsPassedOver) {
    windows->Loaded[3] = false;
    EXPECT_FALSE(Passes(Kind::Device));
    EXPECT_THAT(Log, IsEmpty());
}

TEST_F(EventBoundaryTest, AUsersEventMakesItsWindowTheCurrentOneFirst) {
    int current = -1;
    Operation::Subject subject;
    boundary.Run({Kind::Device, 3}, [&] {
        current = windows->CurrentWindow;
        subject = *boundary.Current().Of();
    });
    EXPECT_EQ(current, 3);
    EXPECT_EQ(subject.Slot, 3);
    EXPECT_EQ(subject.Device, 9);
    EXPECT_THAT(Log, ElementsAre("current 3", "user begins", "ends"));
}

TEST_F(EventBoundaryTest, AUsersEventInTheCurrentWindowMakesNothingCurrent) {
    windows->CurrentWindow = 3;
    boundary.Run({Kind::Device, 3}, [] {});
    EXPECT_THAT(Log, ElementsAre("user begins", "ends"));
}

TEST_F(EventBoundaryTest, AMouseOverAWindowThatIsGoneIsPassedOverThoughItWasTheCurrentOne) {
    windows->CurrentWindow = 4;
    bool ran = false;
    EXPECT_FALSE(boundary.Run({Kind::Hover, 4}, [&ran] { ran = true; }));
    EXPECT_FALSE(ran);
}

TEST_F(EventBoundaryTest, RunsEventsBeforeAnybodySaidWhatTheySetGoing) {
    EventBoundary bare{*windows};
    bool ran = false;
    EXPECT_TRUE(bare.Run({Kind::Device, 3}, [&ran] { ran = true; }));
    EXPECT_TRUE(ran);
}

TEST_F(EventBoundaryTest, AMouseThatMerelyPassesMakesNoWindowTheCurrentOne) {
    EXPECT_FALSE(Passes(Kind::Hover));
    EXPECT_EQ(windows->CurrentWindow, 0);
    windows->CurrentWindow = 3;
    EXPECT_TRUE(Passes(Kind::Hover));
}

TEST_F(EventBoundaryTest, WhatMayWaitRunsAsAnOperationOfItsOwnWhenTheOtherIsOver) {
    const controls::EventEntry entry(boundary, {Kind::Device, 3});
    boundary.Run({Kind::Tick}, [&] {
        entry.RunWhenOver([this] { Log.emplace_back(boundary.Current().Running() ? "runs" : "stray"); });
        Log.emplace_back("work");
    });
    EXPECT_THAT(Log, ElementsAre("work", "ends", "current 3", "user begins", "runs", "ends"));
}

TEST_F(EventBoundaryTest, ATickMakesNoWindowTheCurrentOneAndClearsNoStatus) {
    boundary.Run({Kind::Meters, 3}, [] {});
    EXPECT_EQ(windows->CurrentWindow, 0);
    EXPECT_THAT(Log, ElementsAre("ends"));
}

TEST_F(EventBoundaryTest, WhatIsToRunWhenItIsOverRunsThenInItsOrder) {
    boundary.Run({Kind::Program}, [this] {
        boundary.RunWhenOver([this] { Log.emplace_back("first"); });
        boundary.RunWhenOver([this] { Log.emplace_back("second"); });
        Log.emplace_back("work");
    });
    boundary.RunWhenOver([this] { Log.emplace_back("at once"); });
    EXPECT_THAT(Log, ElementsAre("user begins", "work", "ends", "first", "second", "at once"));
}

TEST_F(EventBoundaryTest, TheOuterLayerIsToldOfEachTurn) {
    boundary.Current().Watch = {
        .Began = [this] { Log.emplace_back("began"); },
        .LoopBegins = [this] { Log.emplace_back("loop begins"); },
        .LoopEnds = [this] { Log.emplace_back("loop ends"); },
        .Ending = [this] { Log.emplace_back("ending"); },
        .Over = [this] { Log.emplace_back(boundary.Current().Running() ? "over too early" : "over"); }};
    boundary.Run({Kind::Tick}, [this] {
        const Operation::Standing box(boundary.Current(), Operation::Loop::Box);
        Log.emplace_back("stands");
    });
    EXPECT_THAT(Log, ElementsAre("began", "loop begins", "stands", "loop ends", "ends", "ending", "over"));
}

TEST_F(EventBoundaryTest, APartBesideADialogHasItsOwnTurns) {
    boundary.Run({Kind::Device, 3}, [this] {
        const Operation::Standing dialog(boundary.Current(), Operation::Loop::Dialog);
        boundary.Current().Watch.Began = [this] { Log.emplace_back("part"); };
        boundary.Current().Watch.Ending = [this] {
            Log.emplace_back(boundary.Current().Busy() ? "still at work" : "at rest too early");
        };
        Log.clear();
        boundary.Run({Kind::Dialog}, [this] { Log.emplace_back("work"); });
        boundary.Current().Watch = {};
    });
    EXPECT_THAT(Log, ElementsAre("part", "work", "still at work", "ends"));
}

TEST_F(EventBoundaryTest, AReportEndsWithItsOperation) {
    bool reported = false;
    boundary.Current().Report();
    EXPECT_FALSE(boundary.Current().Reported()); // outside an operation there is nothing to stop
    boundary.Run({Kind::Program}, [&] {
        boundary.Current().Report();
        reported = boundary.Current().Reported();
    });
    EXPECT_TRUE(reported);
    EXPECT_FALSE(boundary.Current().Reported());
}

} // namespace
} // namespace nrv::testing
