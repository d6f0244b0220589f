#include "history/rack_world.h"

// What stands on the screen when the program paints at once, stands still, asks or hands the keyboard on: each of it is
// to show what it is about, and not what was there before.

namespace nrv::testing {
namespace {

using controls::Aspect;

class OnTheScreen : public RackWorld {
  protected:
    /// Looks at a control at each of these aspects.
    template <class Look>
    static void Watch(controls::Control& control, Aspect aspect, Look look) {
        control.Observe([aspect, look](Aspect told) {
            if (told == aspect) {
                look();
            }
        });
    }
    controls::FrmCtrl& form = Window(1);
};

TEST_F(OnTheScreen, TheBarOfAStoreIsPaintedWhenItCanBeSeenAndBeforeTheFirstFrame) {
    controls::ProgressBar& bar = world.Forms.Store.ProgressBar1;
    std::vector<bool> visible;
    Watch(bar, Aspect::Repaint, [&] {
        visible.push_back(bar.Visible());
        if (visible.size() == 1) {
            EXPECT_TRUE(world.Port.Sent.empty());
        }
    });
    InDialog(1, controls::StorePresetTool, [&] {
        FramesSent();
        world.Forms.Store.Command1[1].UserClick();
    });
    ASSERT_FALSE(visible.empty());
    EXPECT_THAT(visible, ::testing::Each(true));
}

TEST_F(OnTheScreen, TheBoxesOfADraggedPointArePaintedWithItsValues) {
    constexpr std::size_t section = 22;
    std::vector<std::string> painted;
    for (controls::TextBox* const box : {&form.Text3[section], &form.Text4[section]}) {
        Watch(*box, Aspect::Repaint, [&painted, box] { painted.push_back(box->Text()); });
    }
    By(1, [&] { controls::Run(form.Label5[section].Pressed); });
    for (const auto& [x, y] : {std::pair{60.0, 60.0}, std::pair{90.0, 40.0}, std::pair{120.0, 80.0}}) {
        painted.clear();
        By(1, [&, x = x, y = y] { form.Label5[section].Moved(x, y); });
        EXPECT_THAT(painted, ::testing::ElementsAre(form.Text3[section].Text(), form.Text4[section].Text()));
    }
    By(1, [&] { controls::Run(form.Label5[section].Released); });
}

TEST_F(OnTheScreen, TheListPaintsEachRowBeforeItRests) {
    long slept_before = world.Process.Slept;
    int paints = 0;
    std::vector<std::string> rows;
    Watch(program.List.Devices, Aspect::Repaint, [&] {
        EXPECT_EQ(world.Process.Slept, slept_before + 50L * paints) << "painted behind the rest";
        rows.push_back(Row(paints));
        ++paints;
    });
    for (int row = 0; row < Windows; ++row) {
        program.List.Devices.SetCell(row, 0, "");
    }
    TickList();
    EXPECT_EQ(paints, Windows);
    EXPECT_THAT(rows, ::testing::ElementsAre(::testing::HasSubstr("Device 2"), ::testing::HasSubstr("Device 5"),
                                             ::testing::HasSubstr("Device 9")));
}

TEST_F(OnTheScreen, TheNoticeOfAnOpeningIsPaintedWhenItCanBeSeen) {
    std::vector<bool> visible;
    Watch(program.List.LoadingNotice, Aspect::Repaint,
          [&] { visible.push_back(program.List.LoadingNotice.Visible()); });
    for (const bool checked : {false, true}) {
        ASSERT_TRUE(program.Control.QueryUnload(1));
        program.Link.DeviceChecked[At(Ids[1])] = checked;
        visible.clear();
        DoubleClick(1);
        ASSERT_TRUE(Loaded(1));
        // For the check, for the reading, and away again.
        EXPECT_EQ(visible, checked ? std::vector({true, false}) : std::vector({true, true, false}));
    }
}

TEST_F(OnTheScreen, AWindowThatIsOpenIsSaidToBeInTheStatusLineToo) {
    std::string status;
    world.Boxes.WhileItStands = [&] { status = program.Main.StatusLine.Caption(); };
    DoubleClick(1);
    EXPECT_EQ(status, "The window is already open; Ctrl+Tab walks the windows");
}

TEST_F(OnTheScreen, ARefusedFrequencyIsPutBackBeforeItIsToldAndTakesTheKeyboardAfterIt) {
    constexpr std::size_t filter = 3;
    const int position = form.Slider3[filter].Position();
    int attended = 0;
    Watch(form.Text7[filter], Aspect::Attention, [&] { ++attended; });
    bool stood = false;
    world.Boxes.WhileItStands = [&] {
        stood = true;
        EXPECT_EQ(form.Slider3[filter].Position(), position);
        EXPECT_EQ(attended, 0);
    };
    form.Text7[filter].SetText("?");
    By(1, [&] { form.Slider3[filter].UserMove(position == 7 ? 9 : 7); });
    EXPECT_TRUE(stood);
    EXPECT_EQ(attended, 1);
}

TEST_F(OnTheScreen, APasswordThatIsRefusedTakesTheKeyboardAfterTheBox) {
    controls::FrmPassword& dialog = world.Forms.Password;
    program.Stores.ParamValues[At(Ids[1])].DevicePassword = {'A', 'b', 'c', ' ', '1', ' '};
    std::vector<std::string> order;
    Watch(dialog.Text1, Aspect::Attention, [&] { order.emplace_back("login"); });
    Watch(dialog.Text3, Aspect::Attention, [&] { order.emplace_back("second"); });
    world.Boxes.WhileItStands = [&] { order.emplace_back("box"); };
    InDialog(1, controls::PasswordTool, [&] {
        dialog.Text1.UserText("wrong");
        order.clear();
        dialog.Command1[0].UserClick();
        EXPECT_THAT(order, ::testing::ElementsAre("box", "login"));
        dialog.Text1.UserText("Abc 1 ");
        dialog.Command1[0].UserClick();
        dialog.Text2.UserText("123456");
        dialog.Text3.UserText("123457");
        order.clear();
        dialog.Command1[5].UserClick();
        EXPECT_THAT(order, ::testing::ElementsAre("box", "second"));
    });
}

TEST_F(OnTheScreen, ADeviceThatIsConnectedAgainIsPaintedAndRestedOnBeforeItsWindowGoes) {
    program.State.DeviceUnconnected[At(Ids[1])] = true;
    program.List.Devices.SetCell(1, 0, "unconnected");
    std::vector<std::string> order;
    Watch(program.List.Devices, Aspect::Repaint, [&] {
        order.push_back((Loaded(1) ? "window, " : "no window, ") + std::to_string(world.Process.Slept) + " ms, " +
                        Row(1).substr(0, 8));
    });
    long slept_at_removal = -1;
    world.Host.OnRemoved = [&] { slept_at_removal = world.Process.Slept; };
    DoubleClick(1);
    ASSERT_FALSE(order.empty());
    EXPECT_EQ(order.front(), "window, 0 ms, Device 5");
    EXPECT_EQ(slept_at_removal, 50);
}

class StartOnTheScreen : public ProgramTest {};

TEST_F(StartOnTheScreen, TheMainWindowComesBeforeTheListIsFilledAndTheListAfterIt) {
    line.Add(3, "Label of dev 003");
    std::vector<std::string> at_filling;
    program.List.Devices.Observe([&](Aspect) { at_filling = world.Host.Log; });
    Start([this] { ProceedWith(controls::MoreDevices, 1); });
    ASSERT_FALSE(at_filling.empty());
    EXPECT_EQ(at_filling.back(), "show main");
    EXPECT_EQ(std::ranges::count(world.Host.Log, "show list"), 1);
}

TEST_F(StartOnTheScreen, EqualIdsAreNamedInTheDialogWhenTheBoxStands) {
    line.Add(3, "Label of dev 003");
    std::string named;
    world.Boxes.WhileItStands = [&] { named = program.Select.EqualIds.Caption(); };
    Start([this] {
        program.Select.Link[1].Select();
        program.Select.Connection[controls::UpToTenDevices].Select();
        program.Select.ComSelect.UserSelect(1);
        program.Select.DeviceIds[1].UserSelect(4);
        program.Select.Proceed.UserClick();
        world.Boxes.WhileItStands = nullptr;
        ProceedWith(controls::MoreDevices, 1);
    });
    EXPECT_EQ(named, "Device1 and Device3 both have ID 1."); // as all but the second had
}

} // namespace
} // namespace nrv::testing
