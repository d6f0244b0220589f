#include "controls/dialog_forms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::ElementsAre;

template <class Controls>
std::vector<std::string> CaptionsOf(const Controls& row) {
    std::vector<std::string> captions;
    for (const auto& control : row) {
        captions.push_back(control.Caption());
    }
    return captions;
}

TEST(DialogForms, NamesAreBesideTheirChannelsAndTheInputsCannotBeTyped) {
    const controls::FrmEditLabel form;
    EXPECT_EQ(form.Window.Caption(), "NRV-718 Edit Names");
    EXPECT_THAT(CaptionsOf(form.Captions), ElementsAre("In A", "In B", "Out1", "Out2", "Out3", "Out4", "Out5", "Out6"));
    EXPECT_THAT(CaptionsOf(form.Command1), ElementsAre("OK", "Cancel"));
    for (std::size_t channel = 0; channel < 8; ++channel) {
        EXPECT_EQ(form.Text1[channel].MaxLength(), 6U);
        EXPECT_EQ(form.Text1[channel].Locked(), channel < 2) << channel;
    }
}

TEST(DialogForms, StoringHasItsCaptionsAndNoBarYet) {
    const controls::FrmStore form;
    EXPECT_EQ(form.Window.Caption(), "NRV-718 Store preset");
    EXPECT_EQ(form.ListCaption.Caption(), "Memory Preset");
    EXPECT_EQ(form.List1.ToolTip(), "Double click to copy name");
    EXPECT_EQ(form.NameCaption.Caption(), "Edit Name");
    EXPECT_EQ(form.PositionCaption.Caption(), "Select position");
    EXPECT_THAT(form.Combo1.Items(), ElementsAre("1", "2", "3", "4", "5", "6", "7", "8"));
    EXPECT_THAT(CaptionsOf(form.Command1), ElementsAre("Cancel", "Store"));
    EXPECT_EQ(form.Text1.MaxLength(), 16U);
    EXPECT_FALSE(form.ProgressBar1.Visible());
    EXPECT_EQ(form.ProgressBar1.Value(), 0);
    EXPECT_EQ(form.ProgressBar1.Maximum(), 100);
}

TEST(DialogForms, ReadingHasItsCaptions) {
    const controls::FrmRead form;
    EXPECT_EQ(form.Window.Caption(), "NRV-718 Read Preset");
    EXPECT_EQ(form.ListCaption.Caption(), "Memory Preset");
    EXPECT_EQ(form.List1.ToolTip(), "Select a preset");
    EXPECT_THAT(CaptionsOf(form.Command1), ElementsAre("Cancel", "Read"));
}

TEST(DialogForms, ThePasswordOpensOnTheLoginAlone) {
    const controls::FrmPassword form;
    EXPECT_EQ(form.LoginCaption.Caption(), "Insert Password");
    EXPECT_EQ(form.Label2.Caption(), "System Unlock");
    EXPECT_TRUE(form.Frame3.Visible());
    EXPECT_FALSE(form.Frame1.Visible());
    EXPECT_FALSE(form.Frame4.Visible());
}

} // namespace
} // namespace nrv::testing
