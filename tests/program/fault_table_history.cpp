#include "program/fault_table.h"

#include <sstream>

// The ways back: an undo, a redo, the comparison with the last preset and its end, the revert, and the program's end in
// the midst of a comparison. What they bring stands in the stores before its frames go out.

namespace nrv::testing {
namespace {

using L = ImageLayout;

/// The body of the front device as its window opened, and with the phase of Out 3 turned and the gain of Out 1 at 2 dB.
struct Bodies {
    Body Preset;
    Body Own;
};
const Bodies& OfFront() {
    static const Bodies bodies = [] {
        FaultWorld opened;
        const Body preset = opened.Image(FaultWorld::Front).PresetBody;
        Body own = preset;
        own[L::Phase(4)] = static_cast<std::uint8_t>(1 - preset[L::Phase(4)]);
        own[L::Gain(2)] = 70;
        return Bodies{preset, own};
    }();
    return bodies;
}

void Edit(FaultWorld& at) {
    at.InWindow(FaultWorld::FrontSlot, [&] { at.Window(FaultWorld::FrontSlot).Check2[4].UserToggle(); });
    at.InWindow(FaultWorld::FrontSlot, [&] { at.Window(FaultWorld::FrontSlot).Slider1[2].UserMove(50); });
}
void Click(FaultWorld& at, controls::Button& entry) {
    EXPECT_TRUE(at.program.Events.Run(UserOutside(), [&] { entry.UserClick(); }));
}
std::vector<Step> Frames(const Body& body) {
    return StepsOf({FrameTo(FaultWorld::Front, {3, 4, 0, 0, 0, 0, 0, 0, body[L::Phase(4)]}),
                    FrameTo(FaultWorld::Front, {1, 2, 0, 0, 0, 0, 0, 0, body[L::Gain(2)]})});
}
void Take(Expectation& e, const Body& body) {
    PutBody(e.Image(FaultWorld::Front), body);
    TakeParameters(e.Values(FaultWorld::Front), body);
}

/// A click on an entry of the menu, after edits and other clicks.
FaultOperation Way(const std::string& name, controls::Button controls::MDIFrmMain::*entry,
                   const std::vector<controls::Button controls::MDIFrmMain::*>& before, const Body& brought,
                   const std::string& called, const std::string& told) {
    FaultOperation operation;
    operation.Name = name;
    operation.Called = called;
    operation.Prepare = [before](FaultWorld& at) {
        Edit(at);
        for (const auto click : before) {
            Click(at, at.program.Main.*click);
        }
        at.Forget();
    };
    operation.Event = [entry](FaultWorld& at) { Click(at, at.program.Main.*entry); };
    operation.Exchanges = 2;
    operation.Counted = true;
    operation.Steps = [brought](FaultWorld&) { return Frames(brought); };
    operation.Expect = [brought, told](Expectation& e) {
        Take(e, brought);
        if (!e.Stopped) {
            e.After.Status = told;
        }
    };
    return operation;
}

/// One step is one frame.
FaultOperation OneStepOf(FaultOperation way, int gain) {
    way.Exchanges = 1;
    way.Counted = false;
    way.Steps = [gain](FaultWorld&) { return OneStep(FaultWorld::Front, {1, 2, 0, 0, 0, 0, 0, 0, gain}); };
    return way;
}

/// Behind the front device's own settings comes the notice to all.
FaultOperation ExitWhileComparing() {
    FaultOperation operation = Way("ExitWhileComparing", &controls::MDIFrmMain::Exit, {&controls::MDIFrmMain::Compare},
                                   OfFront().Own, "", "Your settings play again.");
    operation.Exchanges = 3;
    operation.Answered = false;
    operation.OwnRoad = true;
    operation.Questions = {{"Exit", AreYouSure}};
    operation.Steps = [](FaultWorld&) {
        std::vector<Step> steps = Frames(OfFront().Own);
        steps.push_back({FrameTo(0, {0x8F}), Exchange::WithoutReply});
        return steps;
    };
    operation.Expect = [brings = operation.Expect](Expectation& e) {
        if (e.Stopped) {
            e.Report(FaultWorld::FrontSlot, FaultWorld::Front,
                     e.Through < 2 ? "the comparison stopped after " + std::to_string(e.Through) + " of 2 frames"
                                   : "the leaving stopped");
        }
        e.After.Ended = !e.Stopped;
        brings(e);
    };
    return operation;
}

} // namespace

std::vector<FaultOperation> HistoryOperations() {
    using Main = controls::MDIFrmMain;
    Body undone = OfFront().Own;
    undone[L::Gain(2)] = OfFront().Preset[L::Gain(2)];
    std::ostringstream gain;
    gain << "Out 1: gain " << 0.2 * OfFront().Preset[L::Gain(2)] - 12.0 << " to 2 dB";
    const std::string last_preset =
        "The last preset plays. Ctrl+Space goes back to your settings; a change goes on from here.";
    return {OneStepOf(Way("Undo", &Main::Undo, {}, undone, "the undo", "Undone: " + gain.str()), undone[L::Gain(2)]),
            OneStepOf(Way("Redo", &Main::Redo, {&Main::Undo}, OfFront().Own, "the redo", "Redone: " + gain.str()), 70),
            Way("Compare", &Main::Compare, {}, OfFront().Preset, "the comparison", last_preset),
            Way("EndOfComparison", &Main::Compare, {&Main::Compare}, OfFront().Own, "the comparison",
                "Your settings play again."),
            Way("Revert", &Main::Revert, {}, OfFront().Preset, "the revert",
                "Back at the last preset; \"Undo\" brings your settings back."),
            ExitWhileComparing()};
}

} // namespace nrv::testing
