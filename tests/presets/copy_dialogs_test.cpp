#include "presets/copy_dialogs.h"
#include "presets/copy_trace.h"
#include "presets/load_window.h"

namespace nrv::testing {
namespace {

class CopyDialogs : public LoadWindow {
  protected:
    CopyDialogs() {
        image.PresetBody = RandomPreset(random);
        ApplySilently(WindowOpens);
        TakeSent();
    }
    void ExpectQuestion(const std::string& title) {
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], title, "               Are you sure ? ", BoxIcon::None, BoxButtons::YesNo);
        EXPECT_EQ(world.Boxes.Shown[0].Default, BoxAnswer::No);
    }
    /// Notes the pointer of a dialog at each frame.
    void WatchPointer(const controls::Form& window) {
        world.Port.Answer = [this, &window](const Frame& frame) {
            pointers.push_back(window.MousePointer());
            return line.Answer(frame);
        };
    }
    CopyTrace FromNow() const { return {image.PresetBody, Id}; }

    std::vector<controls::Pointer> pointers;
    controls::FrmCopyIn& inputs = world.Forms.CopyIn;
    controls::FrmCopyOut& outputs = world.Forms.CopyOut;
};

TEST_F(CopyDialogs, CaptionsOfTheInputDialog) {
    EXPECT_EQ(inputs.Window.Caption(), "NRV-718 Copy Input");
    EXPECT_EQ(inputs.Command1[0].Caption(), "Copy InputA to InputB");
    EXPECT_EQ(inputs.Command1[1].Caption(), "Copy InputB to InputA");
}

TEST_F(CopyDialogs, EachInputButtonCopiesItsWay) {
    const std::array<std::string, 2> titles = {"Copy InA to InB", "Copy InB to InA"};
    WatchPointer(inputs.Window);
    for (const int source : {0, 1}) {
        image.PresetBody = RandomPreset(random);
        ApplySilently(WindowOpens);
        Forget();
        pointers.clear();
        CopyTrace expected = FromNow();
        expected.CopyInput(source, 1 - source);
        InDialog(controls::CopyInputTool,
                 [this, source] { inputs.Command1[static_cast<std::size_t>(source)].UserClick(); });
        ExpectQuestion(titles[static_cast<std::size_t>(source)]);
        ExpectSent(expected.Frames);
        EXPECT_EQ(image.PresetBody, expected.After);
        EXPECT_THAT(pointers, ::testing::Each(controls::Pointer::Hourglass));
        EXPECT_EQ(inputs.Window.MousePointer(), controls::Pointer::Default);
        EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 4", "close tool dialog 4"));
    }
}

TEST_F(CopyDialogs, InputCopyAnsweredNoStaysOpenAndSendsNothing) {
    for (const std::size_t button : {0U, 1U}) {
        Forget();
        const model::PresetImageRow before = image;
        world.Boxes.Answers = {BoxAnswer::No};
        InDialog(controls::CopyInputTool, [this, button] { inputs.Command1[button].UserClick(); });
        ExpectQuestion(button == 0 ? "Copy InA to InB" : "Copy InB to InA");
        EXPECT_TRUE(world.Port.Sent.empty());
        ExpectChanged(before, {});
        EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 4"));
    }
}

TEST_F(CopyDialogs, OutputDialogListsTheNamesAsShown) {
    for (std::size_t c = 0; c < 8; ++c) {
        form.Label300[c].SetCaption("name " + std::to_string(c));
    }
    const auto names = ::testing::ElementsAre("name 2", "name 3", "name 4", "name 5", "name 6", "name 7");
    for (int round = 0; round < 2; ++round) { // the second time from other choices
        InDialog(controls::CopyOutputTool, [&] {
            EXPECT_THAT(outputs.Combo1[0].Items(), names);
            EXPECT_THAT(outputs.Combo1[1].Items(), names);
            for (const controls::List& list : outputs.Combo1) {
                EXPECT_THAT(list.ItemNotes(),
                            ::testing::ElementsAre("Out 1", "Out 2", "Out 3", "Out 4", "Out 5", "Out 6"));
            }
            EXPECT_EQ(outputs.Combo1[0].Shown(), 0);
            EXPECT_EQ(outputs.Combo1[1].Shown(), 1);
            outputs.Combo1[0].UserSelect(4);
            outputs.Combo1[1].UserSelect(5);
        });
    }
    EXPECT_EQ(outputs.Window.Caption(), "NRV-718 Copy Output");
    EXPECT_EQ(outputs.Captions[0].Caption(), "Output  Source ");
    EXPECT_EQ(outputs.Captions[1].Caption(), "Output  Destination");
    EXPECT_EQ(outputs.Command1.Caption(), "Copy");
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(CopyDialogs, OutputIsCopiedUnderTheWaitCursor) {
    WatchPointer(outputs.Window);
    CopyTrace expected = FromNow();
    expected.CopyOutput(0, 3);
    InDialog(controls::CopyOutputTool, [this] {
        outputs.Combo1[1].UserSelect(3);
        outputs.Command1.UserClick();
    });
    ExpectQuestion("Copy Output");
    ExpectSent(expected.Frames);
    EXPECT_EQ(image.PresetBody, expected.After);
    EXPECT_THAT(pointers, ::testing::Each(controls::Pointer::Hourglass));
    EXPECT_EQ(outputs.Window.MousePointer(), controls::Pointer::Default);
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 5", "close tool dialog 5"));
}

TEST_F(CopyDialogs, OutputOntoItselfIsRefusedAndSendsNothing) {
    const model::PresetImageRow before = image;
    InDialog(controls::CopyOutputTool, [this] {
        outputs.Combo1[0].UserSelect(1);
        outputs.Command1.UserClick();
    });
    ASSERT_EQ(world.Boxes.Shown.size(), 1U);
    ExpectBox(world.Boxes.Shown[0], "Copy Output", "Copy not possible, Source=Dest", BoxIcon::Critical, BoxButtons::Ok);
    EXPECT_TRUE(world.Port.Sent.empty());
    ExpectChanged(before, {});
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 5"));
}

TEST_F(CopyDialogs, OutputCopyAnsweredNoStaysOpenAndSendsNothing) {
    const model::PresetImageRow before = image;
    world.Boxes.Answers = {BoxAnswer::No};
    InDialog(controls::CopyOutputTool, [this] { outputs.Command1.UserClick(); });
    ExpectQuestion("Copy Output");
    EXPECT_TRUE(world.Port.Sent.empty());
    ExpectChanged(before, {});
    EXPECT_THAT(world.Host.Log, ::testing::ElementsAre("run tool dialog 5"));
}

TEST_F(CopyDialogs, TextThatIsNoNumberIsToldAndThePointerComesBack) {
    form.Text4[3].UserText("none");
    InDialog(controls::CopyInputTool, [this] { inputs.Command1[0].UserClick(); });
    EXPECT_EQ(world.Boxes.Shown.size(), 2U);
    EXPECT_EQ(inputs.Window.MousePointer(), controls::Pointer::Default);
    EXPECT_FALSE(program.Windows.ControlEventsOff);
}

TEST_F(CopyDialogs, DemoModeCopiesAndSendsNothing) {
    program.Link.DemoMode = true;
    CopyTrace expected = FromNow();
    expected.CopyOutput(0, 1);
    InDialog(controls::CopyOutputTool, [this] { outputs.Command1.UserClick(); });
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(image.PresetBody, expected.After);
}

} // namespace
} // namespace nrv::testing
