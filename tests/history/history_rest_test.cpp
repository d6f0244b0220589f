#include "history/rack_world.h"
#include "model/tables.h"
#include "response/view_options.h"

namespace nrv::testing {
namespace {

/// What a step back puts back besides the parameters that it sends.
class HistoryRest : public RackWorld {
  protected:
    /// A preset with views of its own.
    std::filesystem::path FileWithViews(const std::string& name) {
        auto file = AnyFile(name);
        Bytes bytes = world.Folder.Read(name);
        for (std::size_t n = 0; n < 38; ++n) {
            bytes[690 + n] = static_cast<std::uint8_t>(Pick(2));
        }
        for (std::size_t output = 0; output < 6; ++output) {
            bytes[690 + 40 + output] = static_cast<std::uint8_t>(Pick(3));
        }
        world.Folder.Write(name, bytes);
        return file;
    }
    auto Views() { return std::pair(program.Response.ViewMode, program.Response.OverlayMatrix); }
    std::string Status() { return program.Main.StatusLine.Caption(); }
    std::string Undoable() { return program.Main.Undo.Caption(); }
    controls::FrmCtrl& form = Window(1);
};

TEST_F(HistoryRest, TheViewsThatALoadBroughtGoAsTheyCame) {
    for (int round = 0; round < 8; ++round) {
        const All before = Look(1);
        const auto views = Views();
        Load(1, FileWithViews("Views.n91"));
        const auto loaded = Views();
        EXPECT_NE(loaded, views);
        const All after = Look(1);
        Undo(1);
        EXPECT_EQ(Views(), views);
        ExpectSame(Look(1), before, "undone");
        Redo(1);
        EXPECT_EQ(Views(), loaded);
        ExpectSame(Look(1), after, "redone");
    }
}

TEST_F(HistoryRest, AViewThatWasChosenSinceStays) {
    Load(1, FileWithViews("Views.n91"));
    const int box = form.ViewBox(1, 1).Value();
    By(1, [&] { form.ViewBox(1, 1).UserToggle(); });
    By(1, [&] { form.Check3[4].UserToggle(); });
    const int cursor = form.Check3[4].Value();
    Undo(1);
    EXPECT_EQ(form.ViewBox(1, 1).Value(), 1 - box);
    EXPECT_EQ(form.Check3[4].Value(), cursor);
    EXPECT_EQ(form.Label5[28].Visible(), cursor == 1);
}

TEST_F(HistoryRest, OneStepTakesLittleRoom) {
    By(1, [&] { form.Slider2[30].UserMove(form.Slider2[30].Shown() == 7 ? 9 : 7); });
    EXPECT_GT(program.History.Size(1), 7U);
    EXPECT_LT(program.History.Size(1), 300U);
}

TEST_F(HistoryRest, WordsTellTheFirstChangeAndHowManyMore) {
    InDialog(1, controls::EditNamesTool, [&] {
        world.Forms.EditNames.Text1[2].UserText("Left");
        world.Forms.EditNames.Text1[5].UserText("Right");
        world.Forms.EditNames.Command1[0].UserClick();
    });
    EXPECT_THAT(Undoable(), ::testing::MatchesRegex("Undo Out 1: name .* to \"Left\" and 1 more"));
    Load(1, AnyFile(std::string(100, 'x') + ".n91"));
    EXPECT_EQ(Undoable(), "Undo load of \"" + std::string(78, 'x') + "...");
    EXPECT_EQ(Undoable().size(), 5 + 90U);
    Load(1, AnyFile(std::string(75, 'y') + ".n91")); // just fits
    EXPECT_EQ(Undoable(), "Undo load of \"" + std::string(75, 'y') + ".n91\"");
}

TEST_F(HistoryRest, TwoOperationsAreTwoStepsInWhateverTimeTheyFollow) {
    program.History.Gesture = [] { return 1; };
    Load(1, AnyFile("One.n91"));
    Load(1, AnyFile("Other.n91"));
    EXPECT_EQ(Depth(1), 2U);
}

TEST_F(HistoryRest, AStepThatWasTakenBackIsNotGoneOnWith) {
    program.History.Gesture = [] { return 1; };
    const All before = Look(1);
    By(1, [&] { form.Slider1[4].UserMove(40); });
    By(1, [&] { form.Slider1[4].UserMove(41); });
    By(1, [&] { form.Slider1[5].UserMove(42); });
    EXPECT_EQ(Depth(1), 2U);
    Undo(1);
    By(1, [&] { form.Slider1[4].UserMove(43); });
    EXPECT_EQ(Depth(1), 2U);
    EXPECT_FALSE(program.Main.Redo.Enabled());
    Undo(1);
    EXPECT_EQ(form.Slider1[4].Position(), 41);
    Undo(1);
    ExpectSame(Look(1), before, "undone");
}

TEST_F(HistoryRest, ASwitchNeverGoesOn) {
    program.History.Gesture = [] { return 1; };
    std::size_t depth = 0;
    for (const auto& turn :
         std::vector<std::function<void()>>{[&] { form.Check1[3].UserToggle(); }, [&] { form.Check2[3].UserToggle(); },
                                            [&] { form.Combo4.UserSelect(form.Combo4.Index() == 1 ? 0 : 1); },
                                            [&] { form.Option1[form.Option1[0].Selected() ? 1 : 0].Select(); }}) {
        By(1, turn);
        By(1, turn);
        depth += 2;
        EXPECT_EQ(Depth(1), depth);
    }
}

TEST_F(HistoryRest, ATextThatStayedAsItWasTypedComesBackAsItWasTyped) {
    for (const std::size_t section : {std::size_t{0}, std::size_t{20}, form.Text5.size() - 1}) {
        By(1, [&] { form.UpDown3[section].UserStep(59); });
        By(1, [&] { TypeInto(form.Text5[section], "3.9"); }); // held to the range, the code is the same
        EXPECT_EQ(form.Text5[section].Text(), "3.9");
        const All before = Look(1);
        By(1, [&] { form.Slider2[section].UserMove(form.Slider2[section].Shown() == 7 ? 9 : 7); });
        EXPECT_EQ(form.Text5[section].Text(), "3");
        Undo(1);
        ExpectSame(Look(1), before, "undone");
    }
}

TEST_F(HistoryRest, TheLastInputTypeIsThatOfBefore) {
    By(2, [&] { Window(2).Combo4.UserSelect(1); });
    By(1, [&] { form.Combo4.UserSelect(1); });
    Undo(1);
    EXPECT_EQ(program.Stores.LastInputType, 1.0);
    EXPECT_EQ(form.Combo4.Index(), 0);
}

TEST_F(HistoryRest, TheLockThatWasSetSinceStays) {
    By(1, [&] { form.Option1[1].Select(); });
    program.Stores.PresetImage[5].SystemPage[16] |= 128; // a bit of the same byte
    rack.At(5).SetMemory(16, static_cast<std::uint8_t>(rack.At(5).Memory(16) | 128));
    Undo(1);
    EXPECT_EQ(program.Stores.PresetImage[5].SystemPage[16] & (128 + 64), 128);
    EXPECT_EQ(rack.At(5).Memory(16) & (128 + 64), 128);
}

TEST_F(HistoryRest, ANameThatIsTheSameOnTheLineIsNotSentAgain) {
    Rename(1, 3, "Subs");
    for (int output = 2; output < 8; ++output) { // as a load leaves them
        if (form.Check1[At(output)].Value() == 0) {
            By(1, [&] { form.Check1[At(output)].UserToggle(); });
        }
    }
    world.Files.File = world.Folder.Path() / "Named.n91";
    By(1, [&] { form.Command2[controls::SavePresetTool].UserClick(); });
    By(1, [&] { form.Slider100.UserMove(form.Slider100.Shown() == 7 ? 9 : 7); });
    const All before = Look(1);
    Load(1, world.Folder.Path() / "Named.n91"); // the master gain differs, and the name is a padded one
    EXPECT_EQ(form.Label300[3].Caption(), " Subs ");
    FramesSent();
    Undo(1);
    EXPECT_EQ(FramesSent(), 1U);
    EXPECT_EQ(form.Label300[3].Caption(), "Subs");
    ExpectSame(Look(1), before, "undone");
}

TEST_F(HistoryRest, ComparingTellsWhatPlaysAndTakesTheUnitAlong) {
    EXPECT_TRUE(program.Main.Compare.Enabled());
    By(1, [&] { form.Option1[1].Select(); });
    EXPECT_EQ(program.Stores.ParamValues[5].DelayUnit, 1.0);
    Compare(1);
    EXPECT_EQ(program.Stores.ParamValues[5].DelayUnit, 0.0);
    EXPECT_TRUE(form.Option1[0].Selected());
    EXPECT_EQ(Status(), "The last preset plays. Ctrl+Space goes back to your settings; a change goes on from here.");
    Compare(1);
    EXPECT_EQ(program.Stores.ParamValues[5].DelayUnit, 1.0);
    EXPECT_EQ(Status(), "Your settings play again.");
    Revert(1);
    EXPECT_EQ(Status(), "Back at the last preset; \"Undo\" brings your settings back.");
    Compare(1);
    EXPECT_EQ(Status(), "Nothing differs from the last preset.");
}

TEST_F(HistoryRest, ALoadWhileComparingGoesFromTheUsersOwn) {
    By(1, [&] { form.Slider2[20].UserMove(form.Slider2[20].Shown() == 7 ? 9 : 7); });
    const All own = Look(1);
    Compare(1);
    Load(1, AnyFile("Hall.n91"));
    EXPECT_EQ(Depth(1), 2U);
    EXPECT_EQ(form.Window.Mark(), "");
    Undo(1);
    ExpectSame(Look(1), own, "the load undone");
}

TEST_F(HistoryRest, GoingOnWhileComparingIsFromTheUsersOwn) {
    By(1, [&] { form.Slider2[20].UserMove(form.Slider2[20].Shown() == 7 ? 9 : 7); });
    By(1, [&] { form.Slider2[21].UserMove(form.Slider2[21].Shown() == 7 ? 9 : 7); });
    const All own = Look(1);
    Undo(1);
    Compare(1);
    Redo(1);
    EXPECT_EQ(form.Window.Mark(), "");
    ExpectSame(Look(1), own, "redone");
}

TEST_F(HistoryRest, ADeviceThatDiesWhileComparingTakesItAlong) {
    for (const char* const go : {"undo", "compare", "revert", "redo"}) {
        By(1, [&] { Window(1).Slider2[20].UserMove(Window(1).Slider2[20].Shown() == 7 ? 9 : 7); });
        By(1, [&] { Window(1).Slider2[21].UserMove(Window(1).Slider2[21].Shown() == 7 ? 9 : 7); });
        Undo(1);
        Compare(1);
        ASSERT_TRUE(Loaded(1));
        answers_left = 0;
        world.Boxes.Shown.clear();
        const std::string way = go;
        way == "undo" ? Undo(1) : way == "compare" ? Compare(1) : way == "revert" ? Revert(1) : Redo(1);
        if (way == "revert") {
            EXPECT_TRUE(Loaded(1)) << "what plays stays, nothing is sent";
            By(1, [&] { Window(1).Check1[3].UserToggle(); });
        }
        EXPECT_FALSE(Loaded(1));
        EXPECT_EQ(world.Boxes.Shown.size(), 1U);
        EXPECT_THAT(NotAtRest(world), ::testing::IsEmpty());
        answers_left = -1;
        DoubleClick(1);
        ASSERT_TRUE(Loaded(1));
        EXPECT_EQ(Depth(1), 0U);
        EXPECT_EQ(Window(1).Window.Mark(), "");
    }
}

TEST_F(HistoryRest, AnEndThatFailsIsNoStepOfTheWindowItStoppedAt) {
    By(1, [&] { form.Check1[3].UserToggle(); });
    program.Control.Activate(1);
    answers_left = 0;
    program.Events.Run(UserOutside(), [&] { program.StartUp.MainQueryUnload(); });
    EXPECT_EQ(Depth(0), 0U);
    EXPECT_EQ(Depth(2), 0U);
}

TEST_F(HistoryRest, AWindowThatIsOpenedAgainTellsOfNoEdits) {
    By(1, [&] { form.Check1[3].UserToggle(); });
    EXPECT_NE(program.List.Devices.RowNote(1), "");
    program.Events.Run(UserIn(1), [&] { program.Control.QueryUnload(1); });
    DoubleClick(1);
    EXPECT_EQ(program.List.Devices.RowNote(1), "");
}

TEST_F(HistoryRest, WhatBrokeOffIsTakenBackAndNotGoneAgain) {
    By(1, [&] { form.Check1[3].UserToggle(); });
    const All before = Look(1);
    const auto file = AnyFile("Bad.n91");
    Bytes bytes = world.Folder.Read("Bad.n91");
    bytes[model::PeqOffsets[15] + 1] = 130; // a frequency that does not exist
    world.Folder.Write("Bad.n91", bytes);
    Load(1, file);
    ASSERT_EQ(Depth(1), 2U);
    Undo(1);
    ExpectSame(Look(1), before, "undone");
    EXPECT_FALSE(program.Main.Redo.Enabled());
    Undo(1);
    EXPECT_TRUE(program.Main.Redo.Enabled());
}

TEST_F(HistoryRest, ABrokenReadIsTakenBackToo) {
    simulator::PresetBody body = AnyPreset();
    body[model::PeqOffsets[15] + 1] = 130;
    rack.At(5).PutPreset(3, "Broken", body);
    const All before = Look(1);
    Read(1, 3);
    ASSERT_EQ(Depth(1), 1U);
    EXPECT_EQ(program.Main.Undo.Caption(), "Undo read of \"Stored 3\"");
    Undo(1);
    ExpectSame(Look(1), before, "undone");
    EXPECT_FALSE(program.Main.Redo.Enabled());
}

TEST_F(HistoryRest, WhatBreaksOffHasItsNameAllTheSame) {
    simulator::PresetBody body = AnyPreset();
    body[model::PeqOffsets[15] + 1] = 130;
    Bytes file(771, 0);
    std::ranges::copy(body, file.begin());
    world.Folder.Write("Odd.n91", file);
    Load(1, world.Folder.Path() / "Odd.n91");
    EXPECT_EQ(program.Main.Undo.Caption(), "Undo load of \"Odd.n91\"");

    Load(1, AnyFile("Hall.n91"));
    form.Slider1[0].UserMove(form.Slider1[0].Position() == 7 ? 9 : 7);
    form.Text4[3].UserText("?");
    CopyInput(1, 0);
    EXPECT_EQ(program.Main.Undo.Caption(), "Undo copy of In A to In B");

    By(1, [&] { form.Slider1[2].UserMove(form.Slider1[2].Position() == 7 ? 9 : 7); });
    EXPECT_THAT(program.Main.Undo.Caption(), ::testing::StartsWith("Undo Out 1: gain "));
    form.Text4[20].UserText("?");
    CopyOutput(1, 0, 1);
    EXPECT_EQ(program.Main.Undo.Caption(), "Undo copy of Out 1 to Out 2");
}

TEST_F(HistoryRest, TheWayBackIsPlayedInTheOrderOfALoad) {
    By(1, [&] { form.Combo4.UserSelect(form.Combo4.Shown() == 0 ? 1 : 0); });
    By(1, [&] { form.Option1[form.Option1[0].Selected() ? 1 : 0].Select(); });
    for (int n = 0; n < 400; ++n) {
        Edit(1);
    }
    By(1, [&] { form.Slider100.UserMove(form.Slider100.Position() == 7 ? 9 : 7); });
    Rename(1, 5, "Side fill");
    FramesSent();
    Revert(1);
    std::vector<int> commands;
    for (const Frame& frame : world.Port.Sent) {
        const bool of_mute = frame[3] == 0x11 && frame[5] == 18; // its second frame
        if (!of_mute && (commands.empty() || commands.back() != frame[3])) {
            commands.push_back(frame[3]);
        }
    }
    // Mutes, input type, sources, limiters, crossovers, sections, tones, phases, delays and their unit, gains, names,
    // the master gain.
    EXPECT_THAT(commands,
                ::testing::ElementsAre(0x09, 0x0D, 0x08, 0x07, 0x04, 0x05, 0x06, 0x03, 0x02, 0x11, 0x01, 0x0E, 0x0C));
}

TEST_F(HistoryRest, AByteThatStandsForNothingIsPutBackAndNotSent) {
    // The window holds a code without an entry, as after a load that broke off, and a whole load goes over it.
    auto& body = program.Stores.PresetImage[5].PresetBody;
    body[model::PeqOffsets[15] + 1] = 130;
    const int position = form.Slider2[15].Position();
    Load(1, AnyFile("Hall.n91"));
    ASSERT_NE(form.Slider2[15].Position(), position);
    const std::string text = form.Text4[15].Text();
    Undo(1);
    EXPECT_EQ(body[model::PeqOffsets[15] + 1], 130);
    EXPECT_EQ(form.Text4[15].Text(), text);
    EXPECT_THAT(NotAtRest(world), ::testing::IsEmpty());
}

} // namespace
} // namespace nrv::testing
