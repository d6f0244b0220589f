#include "controls/frm_ctrl.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <set>
#include <string>

namespace nrv::testing {
namespace {

using namespace nrv::controls;
using ::testing::ElementsAre;

using Texts = std::vector<std::string>;

class ControlWindowInventory : public ::testing::Test {
  protected:
    FrmCtrl form;
};

constexpr int Single = 1;

TEST_F(ControlWindowInventory, HoldsEveryControlByNameAndNumber) {
    const std::map<std::string, int> expected = {
        // the window itself
        {"Toolbar1", Single},
        {"Command2", 10},
        {"SSTab1", Single},
        {"Timer1", Single},
        {"Shape2", 8},
        // gain and delay strips: eight channels and their copies
        {"Frame1", 18},
        {"Slider1", 16},
        {"Text1", 16},
        {"Check1", 16},
        {"Frame2", 16},
        {"Check2", 16},
        {"Frame11", 8},
        {"Shape1", 48},
        {"Slider100", Single},
        {"Text100", Single},
        {"Label6", Single},
        {"Combo4", Single},
        {"Frame3", 16},
        {"Text2", 16},
        {"UpDown1", 16},
        {"UpDown2", 16},
        {"Frame4", Single},
        {"Option1", 2},
        // 2 x 10 and 6 x 4 sections; 2 x 2 and 6 tone filters; two sides for each of six outputs
        {"Frame5", 8},
        {"Slider2", 44},
        {"Text3", 44},
        {"Text4", 44},
        {"UpDown3", 44},
        {"Text5", 44},
        {"Label5", 44},
        {"Command1", 8},
        {"Frame6", 10},
        {"Slider3", 10},
        {"Text6", 10},
        {"Text7", 10},
        {"Combo1", 10},
        {"Frame7", 12},
        {"Text8", 12},
        {"Combo2", 12},
        // dynamics, routing, graph
        {"Frame8", 8},
        {"Slider4", 8},
        {"Slider5", 8},
        {"Slider6", 8},
        {"Text9", 8},
        {"Text10", 8},
        {"Text11", 8},
        {"Frame9", 6},
        {"Combo3", 6},
        {"Frame10", 8},
        {"Picture1", 8},
        {"Check3", 8},
        {"Option2", 18},
        {"Check4", 6},
        {"Check5", 6},
        {"Check6", 6},
        {"Check7", 6},
        {"Check8", 6},
        // block diagram
        {"Label100", 42},
        {"Label200", 6},
        {"Label300", 8},
        {"Label400", 2},
        {"Image1", 8},
        {"Line6", 8},
        {"Line7", 8},
        {"Line1000", 6},
        {"Line1100", 6},
        {"Line1", 6},
        {"Line2", 6}};
    std::map<std::string, int> found;
    std::set<const Control*> controls;
    int visited = 0;
    ForEachControl(form, [&](std::string_view name, int index, Control& control) {
        const std::string key(name);
        EXPECT_EQ(index, expected.contains(key) && expected.at(key) == Single ? NoIndex : found[key]) << name;
        ++found[key];
        controls.insert(&control);
        ++visited;
    });
    EXPECT_EQ(found, expected);
    EXPECT_EQ(controls.size(), static_cast<std::size_t>(visited)); // none is visited twice
}

TEST_F(ControlWindowInventory, IsTitledAndHasElevenTabs) {
    EXPECT_EQ(form.Window.Caption(), "NRV-718 Parameters Control");
    EXPECT_THAT(form.SSTab1.TabCaptions(), ElementsAre("In A", "In B", "Out 1", "Out 2", "Out 3", "Out 4", "Out 5",
                                                       "Out 6", "Gains", "Delays", "Overview"));
    EXPECT_EQ(FrmCtrl::WidthTwips, 10920);
    EXPECT_EQ(FrmCtrl::HeightTwips, 8220);
}

TEST_F(ControlWindowInventory, ToolButtonsSayWhatTheyLeadTo) {
    Texts tool_tips;
    for (const Button& tool : form.Command2) {
        tool_tips.push_back(tool.ToolTip());
    }
    EXPECT_THAT(tool_tips, ElementsAre("Load Preset from PC", "Save Preset to PC", "Store Preset to device",
                                       "Read Preset from device", "Password", "Unconnect device", "", "Edit Names",
                                       "Copy Input", "Copy Output"));
}

TEST_F(ControlWindowInventory, EveryControlIsShownAtDesignButTheRedCrosses) {
    ForEachControl(form, [](std::string_view name, int index, Control& control) {
        EXPECT_EQ(control.Visible(), name != "Line6" && name != "Line7") << name << " " << index;
        EXPECT_TRUE(control.Enabled()) << name << " " << index;
    });
}

const Texts Channels = {"In A", "In B", "Out 1", "Out 2", "Out 3", "Out 4", "Out 5", "Out 6"};

TEST_F(ControlWindowInventory, GainStripsOfTheGainsTab) {
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_EQ(form.Frame1[c].Caption(), Channels[c]);
        EXPECT_EQ(form.Slider1[c].Minimum(), 0);
        EXPECT_EQ(form.Slider1[c].Maximum(), 120);
        EXPECT_EQ(form.Slider1[c].TickSpacing(), 4);
        EXPECT_EQ(form.Frame2[c].Caption(), "Phase");
        EXPECT_EQ(form.Check2[c].Caption(), "180 '");
        EXPECT_EQ(form.Frame11[c].Caption(), "");
    }
}

TEST_F(ControlWindowInventory, GainStripsOfTheChannelTabs) {
    for (std::size_t i = 8; i < 16; ++i) {
        EXPECT_EQ(form.Frame1[i].Caption(), "Gain");
        EXPECT_EQ(form.Slider1[i].Minimum(), 0);
        EXPECT_EQ(form.Slider1[i].Maximum(), 120);
        EXPECT_EQ(form.Slider1[i].TickSpacing(), 8);
        EXPECT_EQ(form.Frame2[i].Caption(), "Phase");
    }
}

TEST_F(ControlWindowInventory, MasterStripAndInputChoice) {
    EXPECT_EQ(form.Frame1[16].Caption(), "Master");
    EXPECT_EQ(form.Frame1[17].Caption(), "");
    EXPECT_EQ(form.Slider100.Minimum(), 0);
    EXPECT_EQ(form.Slider100.Maximum(), 120);
    EXPECT_EQ(form.Slider100.TickSpacing(), 4);
    EXPECT_EQ(form.Label6.Caption(), "Select input");
    EXPECT_THAT(form.Combo4.Items(), ElementsAre("Analog", "Digital"));
}

TEST_F(ControlWindowInventory, LongTicksStandAtZeroDecibel) {
    const auto expect_zero = [](const auto& faders, int position) {
        ASSERT_FALSE(std::empty(faders));
        for (const Fader& fader : faders) {
            EXPECT_EQ(fader.ZeroPosition(), position);
        }
    };
    expect_zero(form.Slider1, 60);
    EXPECT_EQ(form.Slider100.ZeroPosition(), 60);
    expect_zero(form.Slider2, 75);
    expect_zero(form.Slider3, 12);
    const int none = -1;
    expect_zero(form.Slider4, none); // a threshold, an attack and a release have none
    expect_zero(form.Slider5, none);
    expect_zero(form.Slider6, none);
}

TEST_F(ControlWindowInventory, DelayStripsAndUnits) {
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(form.Frame3[i].Caption(), i < 8 ? Channels[i] : "Delay");
        EXPECT_EQ(form.UpDown2[i].Caption(), "Adj");
        EXPECT_EQ(form.UpDown2[i].Minimum(), 0);
        EXPECT_EQ(form.UpDown2[i].Maximum(), 2500);
        EXPECT_EQ(form.UpDown1[i].Caption(), "Fine");
        EXPECT_EQ(form.UpDown1[i].Minimum(), 0);
        EXPECT_EQ(form.UpDown1[i].Maximum(), 47);
    }
    EXPECT_EQ(form.Frame4.Caption(), "Units");
    EXPECT_EQ(form.Option1[0].Caption(), "Time");
    EXPECT_EQ(form.Option1[1].Caption(), "Meter");
}

TEST_F(ControlWindowInventory, UnitsAreOneGroup) {
    form.Option1[1].Select();
    EXPECT_FALSE(form.Option1[0].Selected());
    form.Option1[0].Select();
    EXPECT_FALSE(form.Option1[1].Selected());
}

TEST_F(ControlWindowInventory, EqualiserSections) {
    const Texts numbers = {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10", // In A
                           "1", "2", "3", "4", "5", "6", "7", "8", "9", "10", // In B
                           "1", "2", "3", "4", "1", "2", "3", "4", "1", "2",  "3", "4",
                           "1", "2", "3", "4", "1", "2", "3", "4", "1", "2",  "3", "4"};
    ASSERT_EQ(numbers.size(), 44U);
    for (std::size_t s = 0; s < 44; ++s) {
        EXPECT_EQ(form.Slider2[s].Minimum(), 0);
        EXPECT_EQ(form.Slider2[s].Maximum(), 150);
        EXPECT_EQ(form.Slider2[s].TickSpacing(), 5);
        EXPECT_EQ(form.UpDown3[s].Minimum(), 0);
        EXPECT_EQ(form.UpDown3[s].Maximum(), 59);
        EXPECT_EQ(form.Label5[s].Caption(), numbers[s]) << s;
    }
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_EQ(form.Command1[c].Caption(), c < 2 ? "Flat Eq" : "Flat PEQ") << c;
    }
    for (const controls::Frame& frame : form.Frame5) {
        EXPECT_EQ(frame.Caption(), "PEQ");
    }
}

TEST_F(ControlWindowInventory, ToneFilters) {
    const Texts captions = {"Lo-Shelving", "Hi-Shelving", "Lo-Shelving", "Hi-Shelving", "Shelving",
                            "Shelving",    "Shelving",    "Shelving",    "Shelving",    "Shelving"};
    for (std::size_t h = 0; h < 10; ++h) {
        EXPECT_EQ(form.Frame6[h].Caption(), captions[h]);
        EXPECT_EQ(form.Slider3[h].Minimum(), 0);
        EXPECT_EQ(form.Slider3[h].Maximum(), 36);
        EXPECT_EQ(form.Slider3[h].TickSpacing(), 2);
        if (h < 4) {
            EXPECT_THAT(form.Combo1[h].Items(), ElementsAre("Bypass", " 1' ord", " 2' ord"));
        } else {
            EXPECT_THAT(form.Combo1[h].Items(),
                        ElementsAre(" Bypass", "1' ord Lo", "2' ord Lo", "1' ord Hi", "2' ord Hi"));
        }
    }
}

TEST_F(ControlWindowInventory, CrossoverSides) {
    for (std::size_t x = 0; x < 12; x += 2) {
        EXPECT_EQ(form.Frame7[x].Caption(), "High Pass filter");
        EXPECT_EQ(form.Frame7[x + 1].Caption(), "Low Pass filter");
    }
    for (const List& slopes : form.Combo2) {
        EXPECT_THAT(slopes.Items(), ElementsAre("    Bypass", "- 6 dB/oct Bw", "-12dB/oct Bw", "-12dB/oct Lz",
                                                "-12dB/oct Bs", "-12dB/oct Cv", "-18dB/oct Bw", "-18dB/oct Cv",
                                                "-24dB/oct Bw", "-24dB/oct Lz", "-24dB/oct Cv"));
    }
}

TEST_F(ControlWindowInventory, NoiseGateOnInputsAndLimiterOnOutputs) {
    for (std::size_t c = 0; c < 8; ++c) {
        const bool input = c == 0 || c == 1;
        EXPECT_EQ(form.Frame8[c].Caption(), input ? "Noise Gate" : "Limiter");
        EXPECT_EQ(form.Slider4[c].Minimum(), 0);
        EXPECT_EQ(form.Slider4[c].Maximum(), input ? 10 : 60);
        EXPECT_EQ(form.Slider4[c].TickSpacing(), input ? 1 : 2);
        EXPECT_EQ(form.Slider5[c].Maximum(), 18);
        EXPECT_EQ(form.Slider5[c].TickSpacing(), 1);
        EXPECT_EQ(form.Slider6[c].Maximum(), 29);
        EXPECT_EQ(form.Slider6[c].TickSpacing(), 1);
    }
}

TEST_F(ControlWindowInventory, Routing) {
    for (std::size_t k = 0; k < 6; ++k) {
        EXPECT_EQ(form.Frame9[k].Caption(), "Routing");
        EXPECT_THAT(form.Combo3[k].Items(), ElementsAre("In A", "In B", "In A+B"));
        EXPECT_EQ(form.Combo3[k].Index(), List::None);
    }
}

TEST_F(ControlWindowInventory, GraphOptionsAreThreeToAnOutput) {
    for (std::size_t k = 0; k < 6; ++k) {
        EXPECT_EQ(form.Option2[3 * k].Caption(), "Out only");
        EXPECT_EQ(form.Option2[3 * k + 1].Caption(), "Out + InputA");
        EXPECT_EQ(form.Option2[3 * k + 2].Caption(), "Out + InputB");
        form.Option2[3 * k + 1].Select();
        form.Option2[3 * k + 2].Select();
        EXPECT_FALSE(form.Option2[3 * k + 1].Selected());
    }
    for (std::size_t k = 0; k < 6; ++k) {
        EXPECT_TRUE(form.Option2[3 * k + 2].Selected()) << "another output's option took it away";
    }
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_EQ(form.Check3[c].Caption(), "Show cursor");
        EXPECT_EQ(form.Frame10[c].Caption(), "");
    }
}

TEST_F(ControlWindowInventory, ViewBoxesLeaveOutTheTabsOwnOutput) {
    const std::vector<Texts> expected = {{"View Out2", "View Out3", "View Out4", "View Out5", "View Out6"},
                                         {"View Out1", "View Out3", "View Out4", "View Out5", "View Out6"},
                                         {"View Out1", "View Out2", "View Out4", "View Out5", "View Out6"},
                                         {"View Out1", "View Out2", "View Out3", "View Out5", "View Out6"},
                                         {"View Out1", "View Out2", "View Out3", "View Out4", "View Out6"},
                                         {"View Out1", "View Out2", "View Out3", "View Out4", "View Out5"}};
    for (std::size_t k = 0; k < 6; ++k) {
        const Texts captions = {form.Check4[k].Caption(), form.Check5[k].Caption(), form.Check6[k].Caption(),
                                form.Check7[k].Caption(), form.Check8[k].Caption()};
        EXPECT_EQ(captions, expected[k]) << "Out " << k + 1;
    }
}

TEST_F(ControlWindowInventory, ViewBoxesAreFoundByRowAndOutput) {
    EXPECT_EQ(&form.ViewBox(0, 0), &form.Check4[0]);
    EXPECT_EQ(&form.ViewBox(1, 5), &form.Check5[5]);
    EXPECT_EQ(&form.ViewBox(2, 3), &form.Check6[3]);
    EXPECT_EQ(&form.ViewBox(3, 1), &form.Check7[1]);
    EXPECT_EQ(&form.ViewBox(4, 5), &form.Check8[5]);
}

TEST_F(ControlWindowInventory, BlockDiagramOfTheInputs) {
    const Texts expected = {"Master", "Gain", "PEQ", "Delay", "Phase", "Master", "Gain", "PEQ", "Delay", "Phase"};
    for (std::size_t i = 0; i < 10; ++i) {
        EXPECT_EQ(form.Label100[i].Caption(), expected[i]) << i;
    }
    EXPECT_EQ(form.Label100[40].Caption(), "NGate");
    EXPECT_EQ(form.Label100[41].Caption(), "NGate");
}

TEST_F(ControlWindowInventory, BlockDiagramOfTheOutputs) {
    for (std::size_t first = 10; first < 40; first += 5) {
        EXPECT_EQ(form.Label100[first].Caption(), "X-over");
        EXPECT_EQ(form.Label100[first + 1].Caption(), "Delay");
        EXPECT_EQ(form.Label100[first + 2].Caption(), "Limiter");
        EXPECT_EQ(form.Label100[first + 3].Caption(), "Gain");
        EXPECT_EQ(form.Label100[first + 4].Caption(), "Phase");
    }
}

TEST_F(ControlWindowInventory, BlockDiagramChannelsHaveTheShortNames) {
    const Texts expected = {"In A", "In B", "Out1", "Out2", "Out3", "Out4", "Out5", "Out6"};
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_EQ(form.Label300[c].Caption(), expected[c]);
    }
}

TEST_F(ControlWindowInventory, EverySlopeSaysItsNameInFull) {
    const std::vector<std::string>& tips = form.Combo2[0].ItemToolTips();
    ASSERT_EQ(tips.size(), form.Combo2[0].Items().size());
    EXPECT_EQ(tips[0], "No filter");
    for (std::size_t slope = 1; slope < tips.size(); ++slope) {
        const std::string& item = form.Combo2[0].Items()[slope];
        const std::map<std::string, std::string> families = {
            {"Bw", "Butterworth"}, {"Lz", "Linkwitz-Riley"}, {"Bs", "Bessel"}, {"Cv", "Chebyshev"}};
        const std::string steep = std::to_string(std::stoi(item.substr(1)));
        EXPECT_EQ(tips[slope], families.at(item.substr(item.size() - 2)) + ", " + steep + " dB an octave");
    }
}

// Meant: the sockets stand crosswise at design.
TEST_F(ControlWindowInventory, SocketsStandCrosswiseAtDesign) {
    EXPECT_EQ(form.Label400[0].Caption(), "Input 2");
    EXPECT_EQ(form.Label400[1].Caption(), "Input 1");
}

TEST_F(ControlWindowInventory, DesignRunsAndShowsNothingYet) {
    for (std::size_t i = 0; i < 16; ++i) {
        EXPECT_EQ(form.Slider1[i].Position(), 0);
        EXPECT_EQ(form.Text1[i].Text(), "");
        EXPECT_FALSE(form.Check1[i].Checked());
    }
    for (const Shape& lamp : form.Shape1) {
        EXPECT_FALSE(lamp.Lit());
    }
    EXPECT_FALSE(form.Timer1.Running());
}

} // namespace
} // namespace nrv::testing
