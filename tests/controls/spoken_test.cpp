#include "controls/spoken.h"

#include <concepts>
#include <gtest/gtest.h>
#include <map>
#include <memory>
#include <set>

namespace nrv::testing {
namespace {

using controls::SpokenName;
using controls::SpokenValue;

TEST(SpokenName, SaysWhereAControlIsAndWhatItIs) {
    const std::map<std::pair<std::string, int>, std::string> expected = {
        {{"Slider1", 0}, "In A, gain"},
        {{"Slider1", 15}, "Out 6, gain"},
        {{"Text1", 9}, "In B, gain"},
        {{"Check1", 3}, "Out 2, mute"},
        {{"Check2", 10}, "Out 1, phase 180 degrees"},
        {{"Text2", 7}, "Out 6, delay"},
        {{"UpDown2", 2}, "Out 1, delay, adjust"},
        {{"UpDown1", 2}, "Out 1, delay, fine"},
        {{"Slider100", -1}, "Master gain"},
        {{"Slider2", 0}, "In A, PEQ 1, gain"},
        {{"Slider2", 26}, "Out 2, PEQ 3, gain"},
        {{"Text3", 43}, "Out 6, PEQ 4, gain"},
        {{"Text4", 19}, "In B, PEQ 10, frequency in Hz"},
        {{"Text5", 20}, "Out 1, PEQ 1, bandwidth in octaves"},
        {{"UpDown3", 43}, "Out 6, PEQ 4, bandwidth"},
        {{"Label5", 10}, "In B, PEQ 1, point"},
        {{"Command1", 1}, "In B, flat equaliser"},
        {{"Slider3", 2}, "In B, low shelving, gain"},
        {{"Text6", 4}, "Out 1, shelving, gain"},
        {{"Text7", 3}, "In B, high shelving, frequency in Hz"},
        {{"Combo1", 9}, "Out 6, shelving, type"},
        {{"Text8", 2}, "Out 2, high pass, frequency in Hz"},
        {{"Combo2", 11}, "Out 6, low pass, slope"},
        {{"Slider4", 1}, "In B, noise gate, threshold"},
        {{"Text9", 0}, "In A, noise gate, threshold"},
        {{"Text10", 3}, "Out 2, limiter, release"},
        {{"Text11", 1}, "In B, noise gate, attack"},
        {{"Slider5", 2}, "Out 1, limiter, release"},
        {{"Slider6", 7}, "Out 6, limiter, attack"},
        {{"Combo3", 4}, "Out 5, source"},
        {{"Picture1", 5}, "Out 4, frequency response"},
        {{"Check3", 6}, "Out 5, show cursor"},
        {{"Option2", 0}, "Out 1, output only"},
        {{"Image1", 2}, "Out 1, picture"},
        {{"Option2", 4}, "Out 2, output and In A"},
        {{"Option2", 17}, "Out 6, output and In B"},
        {{"Check4", 0}, "Out 1, view Out 2"},
        {{"Check4", 3}, "Out 4, view Out 1"},
        {{"Check8", 0}, "Out 1, view Out 6"},
        {{"Check8", 5}, "Out 6, view Out 5"},
        {{"Label100", 0}, "In A, master block"},
        {{"Label100", 1}, "In A, gain block"},
        {{"Label100", 7}, "In B, PEQ block"},
        {{"Label100", 3}, "In A, delay block"},
        {{"Label100", 9}, "In B, phase block"},
        {{"Label100", 10}, "Out 1, crossover block"},
        {{"Label100", 16}, "Out 2, delay block"},
        {{"Label100", 23}, "Out 3, gain block"},
        {{"Label100", 39}, "Out 6, phase block"},
        {{"Label100", 37}, "Out 6, limiter block"},
        {{"Label100", 40}, "In A, noise gate block"},
        {{"Label100", 41}, "In B, noise gate block"},
        {{"Label200", 5}, "Out 6, source block"},
        {{"Label300", 2}, "Out 1, name block"},
        {{"Label400", 1}, "In B, socket"},
        {{"Shape1", 0}, "In A, -24 dB lamp"},
        {{"Shape1", 7}, "In B, -18 dB lamp"},
        {{"Shape1", 14}, "Out 1, -12 dB lamp"},
        {{"Shape1", 21}, "Out 2, -6 dB lamp"},
        {{"Shape1", 4}, "In A, -2 dB lamp"},
        {{"Shape1", 16}, "Out 1, limit lamp"},
        {{"Shape1", 47}, "Out 6, clip lamp"},
    };
    for (const auto& [control, words] : expected) {
        EXPECT_EQ(SpokenName(control.first, control.second), words) << control.first << control.second;
    }
}

/// What a user sets: the units alone are called by their captions.
template <class Control>
constexpr bool IsSet = std::derived_from<Control, controls::Fader> || std::derived_from<Control, controls::TextBox> ||
                       std::derived_from<Control, controls::CheckBox> || std::derived_from<Control, controls::List> ||
                       std::derived_from<Control, controls::UpDown> || std::derived_from<Control, controls::Option>;

TEST(SpokenName, IsThereForAllThatAUserSets) {
    const auto form = std::make_unique<controls::FrmCtrl>();
    int seen = 0;
    controls::ForEachControl(*form, [&seen]<class Control>(std::string_view name, int index, const Control&) {
        if (IsSet<Control> && name != "Option1") {
            ++seen;
            EXPECT_NE(SpokenName(name, index), "") << name << index;
        }
    });
    EXPECT_GT(seen, 400);
}

TEST(SpokenValue, IsThereForAllThatHasANumber) {
    const auto form = std::make_unique<controls::FrmCtrl>();
    const auto type = []<class Control>(std::string_view, int, Control& control) {
        if constexpr (std::derived_from<Control, controls::TextBox>) {
            control.SetText("1");
        }
    };
    controls::ForEachControl(*form, type);
    controls::ForEachControl(*form, [&form]<class Control>(std::string_view name, int index, const Control&) {
        if (std::derived_from<Control, controls::Fader> || std::derived_from<Control, controls::UpDown>) {
            EXPECT_NE(SpokenValue(*form, name, index), "") << name << index;
        }
    });
}

TEST(SpokenName, IsEmptyForWhatItsCaptionOrToolTipNames) {
    for (const char* const name : {"Command2", "Frame1", "Frame4", "Label6", "Timer1", "Check0", "Check9", "Check14"}) {
        EXPECT_EQ(SpokenName(name, 0), "") << name;
    }
}

TEST(SpokenValue, TellsWhatTheTextBesideTheControlTells) {
    const auto form = std::make_unique<controls::FrmCtrl>();
    EXPECT_EQ(SpokenValue(*form, "Slider1", 3), ""); // nothing to tell as yet
    form->Text1[3].SetText("-1.4");
    form->Text100.SetText("-12");
    form->Text3[26].SetText("0.2");
    form->Text4[26].SetText("1000");
    form->Text5[26].SetText("1.05");
    form->Text6[0].SetText("-6");
    form->Text9[2].SetText("20");
    form->Text9[0].SetText("OFF");
    form->Text10[2].SetText("0.2s");
    form->Text11[2].SetText("  5ms");
    form->Text2[8].SetText("3.021 ms");
    EXPECT_EQ(SpokenValue(*form, "Slider1", 3), "-1.4 dB");
    EXPECT_EQ(SpokenValue(*form, "Slider100", -1), "-12 dB");
    EXPECT_EQ(SpokenValue(*form, "Slider2", 26), "0.2 dB");
    EXPECT_EQ(SpokenValue(*form, "UpDown3", 26), "1.05 octaves");
    EXPECT_EQ(SpokenValue(*form, "Label5", 26), "1000 Hz, 0.2 dB, 1.05 octaves");
    EXPECT_EQ(SpokenValue(*form, "Slider3", 0), "-6 dB");
    EXPECT_EQ(SpokenValue(*form, "Slider4", 2), "20 dBu");
    EXPECT_EQ(SpokenValue(*form, "Slider4", 0), "OFF");
    EXPECT_EQ(SpokenValue(*form, "Slider5", 2), "0.2s");
    EXPECT_EQ(SpokenValue(*form, "Slider6", 2), "5ms");
    EXPECT_EQ(SpokenValue(*form, "UpDown1", 8), "3.021 ms");
    EXPECT_EQ(SpokenValue(*form, "UpDown2", 8), "3.021 ms");
    EXPECT_EQ(SpokenValue(*form, "Check1", 0), "");
}

} // namespace
} // namespace nrv::testing
