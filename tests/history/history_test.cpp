#include "history/history.h"
#include "history/rack_world.h"
#include "model/tables.h"

#include <regex>

namespace nrv::testing {
namespace {

class HistoryTest : public RackWorld {
  protected:
    struct Command {
        std::string Name;
        std::function<void(controls::FrmCtrl&)> Run;
        std::size_t Frames = 1;
    };
    /// Each command on each of what it is for. Every one of them changes something in a random preset.
    static std::vector<Command> EveryCommand() {
        std::vector<Command> all;
        const auto add = [&all](const char* name, int count, std::size_t frames, auto run) {
            for (std::size_t i = 0; i < At(count); ++i) {
                all.push_back({std::string(name) + ' ' + std::to_string(i),
                               [run, i](controls::FrmCtrl& of) { run(of, i); }, frames});
            }
        };
        const auto away = [](auto& fader) { fader.UserMove(fader.Shown() == 1 ? 2 : 1); };
        const auto other = [](controls::List& list) { list.UserSelect(list.Index() == 1 ? 2 : 1); };
        const auto type = [](controls::TextBox& box) { TypeInto(box, box.Text() == "1000" ? "500" : "1000"); };
        add("gain", StripCount, 1, [away](auto& of, auto i) { away(of.Slider1[i]); });
        add("mute", StripCount, 2, [](auto& of, auto i) { of.Check1[i].UserToggle(); });
        add("phase", StripCount, 1, [](auto& of, auto i) { of.Check2[i].UserToggle(); });
        add("typed delay", StripCount, 1, [](auto& of, auto i) { TypeInto(of.Text2[i], "77.777"); });
        add("fine delay", StripCount, 1,
            [](auto& of, auto i) { of.UpDown1[i].UserStep(of.UpDown1[i].Shown() > 20 ? -1 : 1); });
        add("unit", 1, 1, [](auto& of, auto) { of.Option1[1].Select(); });
        add("input", 1, 1, [](auto& of, auto) { of.Combo4.UserSelect(1); });
        add("section's gain", PeqCount, 1, [away](auto& of, auto i) { away(of.Slider2[i]); });
        add("section's frequency", PeqCount, 1, [type](auto& of, auto i) { type(of.Text4[i]); });
        add("section's bandwidth", PeqCount, 1,
            [](auto& of, auto i) { of.UpDown3[i].UserStep(of.UpDown3[i].Shown() > 30 ? -1 : 1); });
        add("shelf's gain", ToneCount, 1, [away](auto& of, auto i) { away(of.Slider3[i]); });
        add("shelf's frequency", ToneCount, 1, [type](auto& of, auto i) { type(of.Text7[i]); });
        add("shelf's type", ToneCount, 1, [other](auto& of, auto i) { other(of.Combo1[i]); });
        add("slope", CrossoverCount, 1, [other](auto& of, auto i) { other(of.Combo2[i]); });
        add("crossover's frequency", CrossoverCount, 1, [type](auto& of, auto i) { type(of.Text8[i]); });
        add("source", OutputCount, 1, [other](auto& of, auto i) { other(of.Combo3[i]); });
        add("threshold", ChannelCount, 1, [away](auto& of, auto i) { away(of.Slider4[i]); });
        add("release", ChannelCount, 1, [away](auto& of, auto i) { away(of.Slider5[i]); });
        add("attack", ChannelCount, 1, [away](auto& of, auto i) { away(of.Slider6[i]); });
        add("master", 1, 1, [away](auto& of, auto) { away(of.Slider100); });
        return all;
    }
    std::string Undoable() { return program.Main.Undo.Caption(); }
    std::string Status() { return program.Main.StatusLine.Caption(); }
    controls::FrmCtrl& form = Window(1);
};

TEST_F(HistoryTest, EveryCommandIsTakenBackAndGoneAgainByItsOwnFrames) {
    std::set<presets::ParameterKind> kinds;
    for (const Command& command : EveryCommand()) {
        const model::PresetImageRow image = program.Stores.PresetImage[At(Ids[1])];
        const All other_window = Look(2);
        const All before = Look(1);
        FramesSent();
        By(1, [&] { command.Run(form); });
        EXPECT_EQ(FramesSent(), command.Frames) << command.Name;
        ASSERT_EQ(Depth(1), 1U) << command.Name;
        const All after = Look(1);
        EXPECT_NE(after.Image, before.Image) << command.Name;
        kinds.merge(KindsThatDiffer(image, program.Stores.PresetImage[At(Ids[1])]));
        Undo(1);
        ExpectDrawn(1, command.Name + " undone");
        EXPECT_EQ(FramesSent(), command.Frames) << command.Name;
        ExpectSame(Look(1), before, command.Name + " undone");
        EXPECT_EQ(Depth(1), 0U);
        Redo(1);
        EXPECT_EQ(FramesSent(), command.Frames) << command.Name;
        ExpectSame(Look(1), after, command.Name + " redone");
        Undo(1);
        ExpectSame(Look(1), before, command.Name + " undone again");
        ExpectSame(Look(2), other_window, command.Name + ", another window");
    }
    EXPECT_EQ(kinds, EditedKinds());
    EXPECT_THAT(NotAtRest(world), ::testing::IsEmpty());
}

/// A device that dies in the frame leaves a window that shows what was sent, and stores that agree with it. Some
/// commands take the copy on the other tab, or the texts of all delays, only with a frame that was answered.
TEST_F(HistoryTest, WhatIsSentIsShownAndStoredBefore) {
    const std::regex behind("(mute|phase|typed delay|fine delay|unit) .*");
    for (const Command& command : EveryCommand()) {
        if (std::regex_match(command.Name, behind)) {
            continue;
        }
        std::vector<Settled> at_frames;
        world.Port.Answer = [&](const Frame& frame) {
            at_frames.push_back(SettledIn(1));
            return Answer(frame);
        };
        By(1, [&] { command.Run(form); });
        ASSERT_EQ(at_frames.size(), command.Frames) << command.Name;
        const Settled in_the_end = SettledIn(1);
        for (const Settled& at_frame : at_frames) {
            EXPECT_EQ(at_frame.Image, in_the_end.Image) << command.Name;
            EXPECT_EQ(at_frame.Values, in_the_end.Values) << command.Name;
            for (std::size_t n = 0; n < in_the_end.Controls.size(); ++n) {
                EXPECT_EQ(at_frame.Controls[n], in_the_end.Controls[n]) << command.Name;
            }
        }
    }
}

TEST_F(HistoryTest, APointThatIsDraggedIsOneStepAndOneFrame) {
    const All before = Look(1);
    controls::Marker& point = form.Label5[22];
    By(1, [&] { controls::Run(point.Pressed); });
    for (int move = 1; move < 20; ++move) {
        By(1, [&] { point.Moved(60.0 + 8.0 * move, 60.0 - 5.0 * move); });
    }
    EXPECT_EQ(FramesSent(), 0U);
    By(1, [&] { controls::Run(point.Released); });
    EXPECT_EQ(Depth(1), 1U);
    EXPECT_EQ(FramesSent(), 1U);
    EXPECT_THAT(Undoable(), ::testing::MatchesRegex("Undo Out 1, PEQ 3: gain .* to .* dB, frequency .* to .* Hz"));
    Undo(1);
    EXPECT_EQ(FramesSent(), 1U);
    ExpectSame(Look(1), before, "undone");
}

TEST_F(HistoryTest, EveryOperationIsOneStepThatNamesItself) {
    struct Operation {
        std::string Words;
        std::function<void()> Run;
    };
    const auto file = AnyFile("Hall.n91");
    const std::vector<Operation> operations = {
        {"flat equaliser of Out 2", [&] { Flat(1, 3); }},
        {"copy of In B to In A", [&] { CopyInput(1, 1); }},
        {"copy of Out 1 to Out 5", [&] { CopyOutput(1, 0, 4); }},
        {"load of \"Hall.n91\"", [&] { Load(1, file); }},
        {"read of \"Stored 3\"", [&] { Read(1, 3); }},
    };
    for (const Operation& operation : operations) {
        const All before = Look(1);
        operation.Run();
        ASSERT_EQ(Depth(1), 1U) << operation.Words;
        EXPECT_EQ(Undoable(), "Undo " + operation.Words);
        const All after = Look(1);
        Undo(1);
        ExpectDrawn(1, operation.Words + " undone");
        EXPECT_EQ(Status(), "Undone: " + operation.Words);
        ExpectSame(Look(1), before, operation.Words + " undone");
        Redo(1);
        EXPECT_EQ(Status(), "Redone: " + operation.Words);
        All again = Look(1);
        if (operation.Words.starts_with("read")) {
            // The read itself told the device nothing; from here on it plays what the window shows.
            again.Live = after.Live;
            again.Memory = after.Memory;
        }
        ExpectSame(again, after, operation.Words + " redone");
        Undo(1);
        ExpectSame(Look(1), before, operation.Words + " undone again");
    }
    EXPECT_THAT(NotAtRest(world), ::testing::IsEmpty());
}

TEST_F(HistoryTest, ALoadWithTheMutesOfThePresetIsTakenBackWithMutesAndOptions) {
    rack.At(5).SetMemory(simulator::OptionBitsAddress, 32 + 4);
    program.Stores.ParamValues[5].MuteWithPreset = 1.0;
    program.Stores.PresetImage[5].SystemPage[model::OptionBitsAddress] = 32 + 4;
    const All before = Look(1);
    Load(1, AnyFile("Loud.n91"));
    const All after = Look(1);
    EXPECT_NE(after.Memory, before.Memory);
    Undo(1);
    ExpectSame(Look(1), before, "undone");
    Redo(1);
    ExpectSame(Look(1), after, "redone");
}

TEST_F(HistoryTest, TheKindOfInputThatALoadWritesIntoRow0ComesBackToo) {
    program.Stores.ParamValues[0].InputType = 1.0;
    Load(1, AnyFile("Hall.n91"));
    EXPECT_EQ(program.Stores.ParamValues[0].InputType, 0.0);
    Undo(1);
    EXPECT_EQ(program.Stores.ParamValues[0].InputType, 1.0);
    Redo(1);
    EXPECT_EQ(program.Stores.ParamValues[0].InputType, 0.0);
}

TEST_F(HistoryTest, ALoadSendsBackOnlyWhatItChanged) {
    const auto file = world.Folder.Path() / "Same.n91";
    world.Files.File = file;
    By(1, [&] { form.Command2[controls::SavePresetTool].UserClick(); });
    for (const int section : {0, 13, 40}) {
        By(1, [&] { form.Slider2[At(section)].UserMove(form.Slider2[At(section)].Shown() == 7 ? 9 : 7); });
    }
    for (int output = 0; output < OutputCount; ++output) { // as a load leaves them
        if (form.Check1[At(output + 2)].Value() == 0) {
            By(1, [&] { form.Check1[At(output + 2)].UserToggle(); });
        }
    }
    Load(1, file);
    EXPECT_GT(FramesSent(), 150U);
    Undo(1);
    EXPECT_EQ(FramesSent(), 3U);
}

TEST_F(HistoryTest, NamesComeBackAsTheyWereTypedAndAreSentOneByOne) {
    Rename(1, 3, "Subs");
    EXPECT_EQ(form.Label300[3].Caption(), "Subs");
    const All before = Look(1);
    const int tab = form.SSTab1.Tab();
    Rename(1, 3, "Top L");
    EXPECT_EQ(Undoable(), "Undo Out 2: name \"Subs\" to \"Top L\"");
    FramesSent();
    Undo(1);
    EXPECT_EQ(FramesSent(), 1U);
    ExpectSame(Look(1), before, "undone");
    EXPECT_EQ(form.Label300[3].Caption(), "Subs");
    EXPECT_EQ(rack.At(5).LiveImage()[model::NameOffsets[3] + 1], 'S'); // centred in six
    By(1, [&] { form.SSTab1.SetTab(tab); });
    Redo(1);
    EXPECT_EQ(form.SSTab1.Tab(), tab);
    EXPECT_EQ(form.Label300[3].Caption(), "Top L");
}

TEST_F(HistoryTest, AGestureIsOneStepForAsLongAsItLasts) {
    long gesture = 1;
    program.History.Gesture = [&gesture] { return gesture; };
    const All before = Look(1);
    const int start = form.Slider1[4].Position();
    for (int n = 1; n <= 10; ++n) {
        By(1, [&] { form.Slider1[4].UserMove(start > 60 ? start - n : start + n); });
    }
    EXPECT_EQ(Depth(1), 1U);
    By(1, [&] { form.Slider1[5].UserMove(form.Slider1[5].Position() == 3 ? 4 : 3); }); // another control
    EXPECT_EQ(Depth(1), 2U);
    gesture = 2;
    By(1, [&] { form.Slider1[5].UserMove(form.Slider1[5].Position() == 50 ? 51 : 50); });
    EXPECT_EQ(Depth(1), 3U);
    for (int turn = 0; turn < 3; ++turn) { // a switch never goes on
        By(1, [&] { form.Check1[5].UserToggle(); });
    }
    EXPECT_EQ(Depth(1), 6U);
    for (int n = 0; n < 6; ++n) {
        Undo(1);
    }
    ExpectSame(Look(1), before, "undone");
    EXPECT_EQ(Depth(1), 0U);
}

TEST_F(HistoryTest, AGestureThatComesBackToWhereItBeganIsNoStep) {
    program.History.Gesture = [] { return 1; };
    By(1, [&] { form.Slider1[4].UserMove(10); });
    By(1, [&] { form.Slider1[4].UserMove(20); });
    EXPECT_EQ(Depth(1), 1U);
    const int first = form.Slider1[4].Position();
    Undo(1);
    const int start = form.Slider1[4].Position();
    ASSERT_NE(first, start);
    program.History.Gesture = [] { return 2; };
    By(1, [&] { form.Slider1[4].UserMove(start == 11 ? 12 : 11); });
    EXPECT_EQ(Depth(1), 1U);
    By(1, [&] { form.Slider1[4].UserMove(start); });
    EXPECT_EQ(Depth(1), 0U);
}

TEST_F(HistoryTest, WhatTheDeviceDoesNotHearIsNoStep) {
    By(1, [&] { form.Check3[2].UserToggle(); });
    By(1, [&] { form.ViewBox(0, 0).UserToggle(); });
    By(1, [&] { form.Option2[1].Select(); });
    By(1, [&] { form.SSTab1.SetTab(2); });
    InDialog(1, controls::StorePresetTool, [&] {
        world.Forms.Store.Text1.UserText("Hall");
        world.Forms.Store.Command1[1].UserClick();
    });
    world.Files.File = world.Folder.Path() / "Saved.n91";
    By(1, [&] { form.Command2[controls::SavePresetTool].UserClick(); });
    EXPECT_EQ(Depth(1), 0U);
    EXPECT_FALSE(program.Main.Undo.Enabled());
    EXPECT_EQ(Undoable(), "Undo");
}

TEST_F(HistoryTest, WhatIsNoStepStaysWhenAStepIsTakenBack) {
    Load(1, AnyFile("Hall.n91"));
    By(1, [&] { form.ViewBox(2, 3).UserToggle(); });
    const int viewed = form.ViewBox(2, 3).Value();
    InDialog(1, controls::StorePresetTool, [&] {
        world.Forms.Store.List1.UserSelect(6);
        world.Forms.Store.Text1.UserText("Kept");
        world.Forms.Store.Command1[1].UserClick();
    });
    ASSERT_EQ(rack.At(5).PresetName(6), "Kept            ");
    Undo(1);
    EXPECT_EQ(form.ViewBox(2, 3).Value(), viewed);
    EXPECT_EQ(program.Stores.ParamValues[5].PresetNames[6], "Kept            ");
    const auto& page = program.Stores.PresetImage[5].SystemPage;
    EXPECT_EQ(std::string(&page[64 + 96], &page[64 + 96 + 4]), "Kept");
    EXPECT_EQ(program.Stores.ParamValues[5].PresetUsed[6], 85.0);
}

TEST_F(HistoryTest, TwoHundredStepsAreKeptInLessThanAMegabyte) {
    const std::array<std::filesystem::path, 2> files = {AnyFile("One.n91"), AnyFile("Other.n91")};
    std::optional<All> oldest;
    for (int n = 0; n < 207; ++n) {
        if (n == 7) {
            oldest = Look(1);
        }
        Load(1, files[At(n % 2)]);
    }
    EXPECT_EQ(Depth(1), history::History::Deepest);
    EXPECT_LT(program.History.Size(1), 1'000'000U);
    EXPECT_GT(program.History.Size(1), 200'000U);
    for (int n = 0; n < 200; ++n) {
        Undo(1);
    }
    EXPECT_EQ(Depth(1), 0U);
    ExpectSame(Look(1), *oldest, "undone");
    Undo(1);
    ExpectSame(Look(1), *oldest, "nothing left");
}

TEST_F(HistoryTest, ANewStepEndsWhatCouldBeGoneAgain) {
    By(1, [&] { form.Check1[4].UserToggle(); });
    Undo(1);
    EXPECT_TRUE(program.Main.Redo.Enabled());
    By(1, [&] { form.Check1[5].UserToggle(); });
    EXPECT_FALSE(program.Main.Redo.Enabled());
    EXPECT_EQ(program.Main.Redo.Caption(), "Redo");
    FramesSent();
    Redo(1);
    EXPECT_EQ(FramesSent(), 0U);
}

TEST_F(HistoryTest, TheMenuFollowsTheWindow) {
    By(1, [&] { form.Check1[4].UserToggle(); });
    EXPECT_EQ(Undoable(), "Undo Out 3: mute off to on");
    EXPECT_TRUE(program.Main.Undo.Enabled());
    program.Control.Activate(2);
    EXPECT_EQ(Undoable(), "Undo");
    EXPECT_FALSE(program.Main.Undo.Enabled());
    EXPECT_TRUE(program.Main.Revert.Enabled());
    program.Control.Activate(1);
    EXPECT_EQ(Undoable(), "Undo Out 3: mute off to on");
    program.Events.Run(UserIn(1), [&] { program.Control.QueryUnload(1); });
    EXPECT_FALSE(program.Main.Undo.Enabled());
    EXPECT_FALSE(program.Main.Compare.Enabled());
    EXPECT_FALSE(program.Main.Revert.Enabled());
    DoubleClick(1);
    EXPECT_EQ(Depth(1), 0U);
}

TEST_F(HistoryTest, OfALockedDeviceItRests) {
    By(1, [&] { form.Check1[4].UserToggle(); });
    program.Stores.ParamValues[5].LockFlag = 1.0;
    program.Control.Activate(1);
    EXPECT_FALSE(program.Main.Undo.Enabled());
    EXPECT_FALSE(program.Main.Compare.Enabled());
    FramesSent();
    Undo(1);
    Compare(1);
    Revert(1);
    EXPECT_EQ(FramesSent(), 0U);
    By(1, [&] { form.Slider5[7].UserMove(form.Slider5[7].Position() == 3 ? 4 : 3); }); // open all the same
    EXPECT_EQ(Depth(1), 2U);
    program.Stores.ParamValues[5].LockFlag = 0.0;
    Undo(1);
    Undo(1);
    EXPECT_EQ(form.Check1[4].Value(), 0);
}

TEST_F(HistoryTest, ADeviceThatDiesOnTheWayBackIsReportedOnceAndTakesItsHistoryAlong) {
    const All other_window = Look(2);
    Load(1, AnyFile("Hall.n91"));
    FramesSent();
    Undo(1);
    const std::size_t frames = FramesSent();
    Redo(1);
    answers_left = 20;
    world.Boxes.Shown.clear();
    Undo(1);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_FALSE(Loaded(1));
    EXPECT_THAT(Status(), ::testing::StartsWith("ID:5 does not answer; the undo stopped after 20 of " +
                                                std::to_string(frames) + " frames."));
    EXPECT_EQ(Depth(1), 0U);
    EXPECT_FALSE(program.Main.Undo.Enabled());
    EXPECT_THAT(NotAtRest(world), ::testing::IsEmpty());
    answers_left = -1;
    Undo(1); // of a window that is gone
    ExpectSame(Look(2), other_window, "another window");
    EXPECT_TRUE(Loaded(2));
}

TEST_F(HistoryTest, ADeviceThatDiesIsToldOfByWhatItDiedIn) {
    struct Death {
        std::string In;
        std::function<void()> Before, Then;
    };
    const auto nothing = [] {};
    const auto compare = [this] { Compare(1); };
    const std::vector<Death> deaths{
        {"the redo", [this] { Undo(1); }, [this] { Redo(1); }},
        {"the comparison", nothing, compare},
        {"the comparison", compare, compare},
        {"the revert", nothing, [this] { Revert(1); }},
    };
    for (const Death& death : deaths) {
        Load(1, AnyFile("Hall.n91"));
        Load(1, AnyFile("Club.n91"));
        for (const int channel : {2, 3, 4, 5, 6, 7}) {
            Flat(1, channel);
        }
        death.Before();
        answers_left = 3;
        death.Then();
        EXPECT_THAT(Status(), ::testing::StartsWith("ID:5 does not answer; " + death.In + " stopped after 3 of "));
        EXPECT_FALSE(Loaded(1));
        answers_left = -1;
        world.Boxes.Answers = {BoxAnswer::Yes};
        DoubleClick(1);
        ASSERT_TRUE(Loaded(1)) << death.In;
    }
}

TEST_F(HistoryTest, ComparingPlaysTheLastPresetAndThenTheUsersOwnAgain) {
    const All opened = Look(1);
    const std::string title = form.Window.Caption();
    Load(1, AnyFile("Hall.n91"));
    const All loaded = Look(1);
    By(1, [&] { form.Slider2[20].UserMove(form.Slider2[20].Shown() == 7 ? 9 : 7); });
    By(1, [&] { form.Check1[5].UserToggle(); });
    const All own = Look(1);
    FramesSent();
    Compare(1);
    EXPECT_EQ(FramesSent(), 3U);
    EXPECT_EQ(form.Window.Mark(), "Last preset");
    EXPECT_TRUE(program.Main.Compare.InForce());
    ExpectSame(Look(1), loaded, "comparing");
    Compare(1);
    EXPECT_EQ(form.Window.Mark(), "");
    EXPECT_FALSE(program.Main.Compare.InForce());
    ExpectSame(Look(1), own, "back");
    EXPECT_EQ(Depth(1), 3U);

    Compare(1);
    Undo(1); // back to the user's own, and a step back from there
    EXPECT_EQ(form.Window.Mark(), "");
    EXPECT_EQ(form.Check1[5].Value(), 1); // a load mutes the outputs
    Undo(1);
    Undo(1);
    ExpectSame(Look(1), opened, "all undone");
    EXPECT_EQ(form.Window.Caption(), title);
}

TEST_F(HistoryTest, AChangeWhileComparingGoesOnFromThePreset) {
    By(1, [&] { form.Slider2[20].UserMove(form.Slider2[20].Shown() == 7 ? 9 : 7); });
    const All own = Look(1);
    Compare(1);
    const All preset = Look(1);
    By(1, [&] { form.Check1[5].UserToggle(); });
    EXPECT_EQ(form.Window.Mark(), "");
    EXPECT_EQ(Depth(1), 3U);
    Undo(1);
    ExpectSame(Look(1), preset, "the change undone");
    EXPECT_EQ(Undoable(), "Undo revert to the last preset");
    Undo(1);
    ExpectSame(Look(1), own, "the user's own");
}

TEST_F(HistoryTest, RevertingIsAStep) {
    const All opened = Look(1);
    By(1, [&] { form.Slider2[20].UserMove(form.Slider2[20].Shown() == 7 ? 9 : 7); });
    By(1, [&] { form.Combo4.UserSelect(1); });
    const All own = Look(1);
    Revert(1);
    All reverted = Look(1);
    EXPECT_EQ(reverted.LastInputType, 0.0);
    ExpectSame(reverted, opened, "reverted");
    EXPECT_EQ(Depth(1), 3U);
    Undo(1);
    ExpectSame(Look(1), own, "undone");
    Compare(1);
    FramesSent();
    Revert(1); // what plays stays
    EXPECT_EQ(FramesSent(), 0U);
    EXPECT_EQ(form.Window.Mark(), "");
    ExpectSame(Look(1), opened, "reverted from the comparison");
    FramesSent();
    Revert(1);
    EXPECT_EQ(Status(), "Nothing differs from the last preset.");
    Compare(1);
    EXPECT_EQ(FramesSent(), 0U);
    EXPECT_EQ(form.Window.Mark(), "");
}

TEST_F(HistoryTest, TheListTellsHowManySettingsDifferFromWhatIsKept) {
    EXPECT_EQ(program.List.Devices.RowNote(1), "");
    By(1, [&] { form.Check1[4].UserToggle(); });
    EXPECT_EQ(program.List.Devices.RowNote(1), "One setting differs from what was last loaded, stored or saved.");
    By(1, [&] { form.Slider1[4].UserMove(form.Slider1[4].Position() == 7 ? 9 : 7); });
    EXPECT_EQ(program.List.Devices.RowNote(1), "2 settings differ from what was last loaded, stored or saved.");
    EXPECT_EQ(program.List.Devices.RowNote(2), "");
    world.Files.File = world.Folder.Path() / "Saved.n91";
    By(1, [&] { form.Command2[controls::SavePresetTool].UserClick(); });
    EXPECT_EQ(program.List.Devices.RowNote(1), "");
    Undo(1);
    EXPECT_EQ(program.List.Devices.RowNote(1), "One setting differs from what was last loaded, stored or saved.");
    InDialog(1, controls::StorePresetTool, [&] { world.Forms.Store.Command1[1].UserClick(); });
    EXPECT_EQ(program.List.Devices.RowNote(1), "");
    for (const int row : {0, 2}) {
        By(row, [&] { Window(row).Check1[4].UserToggle(); });
        EXPECT_EQ(program.List.Devices.RowNote(row), "One setting differs from what was last loaded, stored or saved.");
    }
    EXPECT_EQ(program.List.Devices.RowNote(1), "");
}

} // namespace
} // namespace nrv::testing
