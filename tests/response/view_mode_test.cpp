#include "ports/runtime_error.h"
#include "response/response_desk.h"

#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

/// As the window stands after its channels were named: each box quotes the output that it views.
struct NamedDesk : ResponseDesk {
    NamedDesk() {
        Stores->ChannelNames[Device] = {"In A", "In B", "Out 1", "Out 2", "Out 3", "Out 4", "Out 5", "Out 6"};
        for (int output = 0; output < 6; ++output) {
            Display.SetViewMode(3 * output);
        }
    }
};

TEST(SetViewMode, SetsTheModeOfTheOutputThatTheOptionBelongsTo) {
    NamedDesk desk;
    for (int option = 0; option < 18; ++option) {
        desk.Display.SetViewMode(option);
        EXPECT_EQ(desk.Display.ViewMode[static_cast<std::size_t>(option / 3)], option % 3);
    }
    for (std::size_t output = 0; output < 6; ++output) {
        EXPECT_EQ(desk.Display.ViewMode[output], 2);
    }
}

TEST(SetViewMode, CaptionsTheBoxOfTheOutputOnTheFiveOtherTabs) {
    NamedDesk desk;
    desk.Display.SetViewMode(7); // Out 3 with In A
    controls::FrmCtrl& form = desk.Form();
    // The rows skip the tab's own output.
    EXPECT_EQ(form.Check6[0].Caption(), "Out 4");
    EXPECT_EQ(form.Check5[0].Caption(), "Out 3+InA");
    EXPECT_EQ(form.Check5[1].Caption(), "Out 3+InA");
    EXPECT_EQ(form.Check6[3].Caption(), "Out 3+InA");
    EXPECT_EQ(form.Check6[4].Caption(), "Out 3+InA");
    EXPECT_EQ(form.Check6[5].Caption(), "Out 3+InA");
    desk.Display.SetViewMode(8);
    EXPECT_EQ(form.Check5[0].Caption(), "Out 3+InB");
    EXPECT_EQ(form.Check6[5].Caption(), "Out 3+InB");
    desk.Display.SetViewMode(6);
    EXPECT_EQ(form.Check5[0].Caption(), "Out 3");
    EXPECT_EQ(form.Check6[5].Caption(), "Out 3");
}

TEST(SetViewMode, LeavesAllOtherBoxesAsTheyAre) {
    NamedDesk desk;
    desk.Display.SetViewMode(7);
    int changed = 0;
    for (int tab = 0; tab < 6; ++tab) {
        for (int row = 0; row < 5; ++row) {
            const std::string& caption = desk.Form().ViewBox(row, tab).Caption();
            EXPECT_EQ(caption.substr(0, 4), "Out ");
            EXPECT_NE(caption[4] - '1', tab) << "a box for the tab's own output";
            EXPECT_EQ(caption.size() > 5, caption[4] == '3') << caption << " on tab " << tab;
            changed += caption == "Out 3+InA" ? 1 : 0;
        }
    }
    EXPECT_EQ(changed, 5);
}

TEST(SetViewMode, QuotesTheNameAsItStands) {
    NamedDesk desk;
    desk.Stores->ChannelNames[ResponseDesk::Device][7] = " Sub  ";
    desk.Display.SetViewMode(16);
    EXPECT_EQ(desk.Form().Check8[0].Caption(), " Sub  +InA");
    desk.Stores->ChannelNames[ResponseDesk::Device][7] = "";
    desk.Display.SetViewMode(17);
    EXPECT_EQ(desk.Form().Check8[4].Caption(), "+InB");
}

TEST(SetViewMode, WorksOnTheCurrentWindowAlone) {
    NamedDesk desk;
    desk.Windows.CurrentWindow = ResponseDesk::OtherSlot;
    desk.Stores->ChannelNames[ResponseDesk::OtherDevice][2] = "Left";
    desk.Display.SetViewMode(1);
    EXPECT_EQ(desk.Form().Check4[1].Caption(), "Left+InA");
    desk.Windows.CurrentWindow = 0;
    EXPECT_EQ(desk.Form().Check4[1].Caption(), "Out 1");
}

TEST(SetViewMode, DrawsNothing) {
    NamedDesk desk;
    desk.Display.SetViewMode(1);
    EXPECT_TRUE(desk.Graph(2).Strokes().empty());
}

TEST(SetViewMode, KeepsWhatAnImageHoldsBeyondTheOptionsAndRefusesWhatHasNoPlace) {
    NamedDesk desk;
    desk.Display.SetViewMode(62); // the last of the table's 21 places
    EXPECT_EQ(desk.Display.ViewMode[20], 2);
    const auto modes = desk.Display.ViewMode;
    for (const int option : {63, 255 + 15}) {
        EXPECT_THROW(desk.Display.SetViewMode(option), RuntimeError) << option;
    }
    EXPECT_EQ(desk.Display.ViewMode, modes);
    EXPECT_EQ(desk.Form().Check4[1].Caption(), "Out 1");
}

} // namespace
} // namespace nrv::testing
