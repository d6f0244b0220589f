#include "controls/frm_ctrl.h"

#include <span>
#include <string>

namespace nrv::controls {
namespace {

using Texts = std::vector<std::string>;

const Texts& SlopeTexts() {
    static const Texts texts = {"    Bypass",   "- 6 dB/oct Bw", "-12dB/oct Bw", "-12dB/oct Lz",
                                "-12dB/oct Bs", "-12dB/oct Cv",  "-18dB/oct Bw", "-18dB/oct Cv",
                                "-24dB/oct Bw", "-24dB/oct Lz",  "-24dB/oct Cv"};
    return texts;
}

const Texts& SlopeToolTips() {
    static const Texts texts = {"No filter",
                                "Butterworth, 6 dB an octave",
                                "Butterworth, 12 dB an octave",
                                "Linkwitz-Riley, 12 dB an octave",
                                "Bessel, 12 dB an octave",
                                "Chebyshev, 12 dB an octave",
                                "Butterworth, 18 dB an octave",
                                "Chebyshev, 18 dB an octave",
                                "Butterworth, 24 dB an octave",
                                "Linkwitz-Riley, 24 dB an octave",
                                "Chebyshev, 24 dB an octave"};
    return texts;
}

const Texts& InputToneTexts() {
    static const Texts texts = {"Bypass", " 1' ord", " 2' ord"};
    return texts;
}

const Texts& OutputToneTexts() {
    static const Texts texts = {" Bypass", "1' ord Lo", "2' ord Lo", "1' ord Hi", "2' ord Hi"};
    return texts;
}

void DesignTools(FrmCtrl& form) {
    const std::array<std::pair<int, const char*>, 9> tools = {{{LoadPresetTool, "Load Preset from PC"},
                                                               {SavePresetTool, "Save Preset to PC"},
                                                               {StorePresetTool, "Store Preset to device"},
                                                               {ReadPresetTool, "Read Preset from device"},
                                                               {PasswordTool, "Password"},
                                                               {UnconnectTool, "Unconnect device"},
                                                               {EditNamesTool, "Edit Names"},
                                                               {CopyInputTool, "Copy Input"},
                                                               {CopyOutputTool, "Copy Output"}}};
    for (const auto& [index, text] : tools) {
        form.Command2[static_cast<std::size_t>(index)].SetToolTip(text);
    }
}

void DesignStrips(FrmCtrl& form) {
    for (std::size_t i = 0; i < StripCount; ++i) {
        const bool copy = i >= ChannelCount;
        const std::string name = ChannelTitles[ChannelOfControl(i)];
        form.Frame1[i].SetCaption(copy ? "Gain" : name);
        form.Slider1[i].SetUp(120, copy ? 8 : 4, 60);
        form.Frame2[i].SetCaption("Phase");
        form.Check2[i].SetCaption("180 '");
        form.Frame3[i].SetCaption(copy ? "Delay" : name);
        form.UpDown2[i].SetCaption("Adj");
        form.UpDown2[i].SetRange(0, 2500);
        form.UpDown1[i].SetCaption("Fine");
        form.UpDown1[i].SetRange(0, 47);
    }
    form.Frame1[16].SetCaption("Master");
    form.Slider100.SetUp(120, 4, 60);
    form.Label6.SetCaption("Select input");
    form.Combo4.SetItems({"Analog", "Digital"});
    form.Frame4.SetCaption("Units");
    form.Option1[0].SetCaption("Time");
    form.Option1[1].SetCaption("Meter");
    Option::Group(form.Option1);
    form.Option1[0].ShowSelected();
}

void DesignEqualiser(FrmCtrl& form) {
    for (std::size_t s = 0; s < PeqCount; ++s) {
        form.Slider2[s].SetUp(150, 5, 75);
        form.UpDown3[s].SetRange(0, 59);
        form.Label5[s].SetCaption(std::to_string(PeqInChannel(s) + 1));
    }
    for (std::size_t h = 0; h < ToneCount; ++h) {
        form.Frame6[h].SetCaption(!IsToneOfInput(h) ? "Shelving" : h % 2 == 0 ? "Lo-Shelving" : "Hi-Shelving");
        form.Slider3[h].SetUp(36, 2, 12);
        form.Combo1[h].SetItems(IsToneOfInput(h) ? InputToneTexts() : OutputToneTexts());
    }
    for (std::size_t c = 0; c < ChannelCount; ++c) {
        form.Frame5[c].SetCaption("PEQ");
        form.Command1[c].SetCaption(IsInput(c) ? "Flat Eq" : "Flat PEQ");
    }
}

void DesignOutputs(FrmCtrl& form) {
    for (std::size_t x = 0; x < CrossoverCount; ++x) {
        form.Frame7[x].SetCaption(x % 2 == 0 ? "High Pass filter" : "Low Pass filter");
        form.Combo2[x].SetItems(SlopeTexts());
        form.Combo2[x].SetItemToolTips(SlopeToolTips());
    }
    for (std::size_t c = 0; c < ChannelCount; ++c) {
        form.Frame8[c].SetCaption(IsInput(c) ? "Noise Gate" : "Limiter");
        form.Slider4[c].SetUp(IsInput(c) ? 10 : 60, IsInput(c) ? 1 : 2);
        form.Slider5[c].SetUp(18, 1);
        form.Slider6[c].SetUp(29, 1);
        form.Check3[c].SetCaption("Show cursor");
    }
    for (std::size_t k = 0; k < OutputCount; ++k) {
        form.Frame9[k].SetCaption("Routing");
        form.Combo3[k].SetItems({"In A", "In B", "In A+B"});
        const std::span<Option> options(&form.Option2[SumsPerOutput * k], SumsPerOutput);
        options[0].SetCaption("Out only");
        options[1].SetCaption("Out + InputA");
        options[2].SetCaption("Out + InputB");
        Option::Group(options);
        for (int row = 0; row < ViewsPerOutput; ++row) {
            const int viewed = ViewedOutput(static_cast<int>(k), row);
            form.ViewBox(row, static_cast<int>(k)).SetCaption("View Out" + std::to_string(viewed + 1));
        }
    }
}

void DesignOverview(FrmCtrl& form) {
    const std::array<const char*, 5> input_blocks = {"Master", "Gain", "PEQ", "Delay", "Phase"};
    const std::array<const char*, 5> output_blocks = {"X-over", "Delay", "Limiter", "Gain", "Phase"};
    for (std::size_t i = 0; i < 40; ++i) {
        form.Label100[i].SetCaption(i < 10 ? input_blocks[i % 5] : output_blocks[i % 5]);
    }
    form.Label100[40].SetCaption("NGate");
    form.Label100[41].SetCaption("NGate");
    const std::array<const char*, 8> channels = {"In A", "In B", "Out1", "Out2", "Out3", "Out4", "Out5", "Out6"};
    for (std::size_t c = 0; c < ChannelCount; ++c) {
        form.Label300[c].SetCaption(channels[c]);
        form.Line6[c].SetVisible(false);
        form.Line7[c].SetVisible(false);
    }
    // Crosswise at design; setting the input type puts them right.
    form.Label400[0].SetCaption("Input 2");
    form.Label400[1].SetCaption("Input 1");
}

} // namespace

FrmCtrl::FrmCtrl() {
    Window.SetCaption("NRV-718 Parameters Control");
    Texts captions(ChannelTitles.begin(), ChannelTitles.end());
    captions.insert(captions.end(), {"Gains", "Delays", "Overview"});
    SSTab1.SetTabCaptions(captions);
    DesignTools(*this);
    DesignStrips(*this);
    DesignEqualiser(*this);
    DesignOutputs(*this);
    DesignOverview(*this);
}

CheckBox& FrmCtrl::ViewBox(int row, int output) {
    const std::array<std::array<CheckBox, OutputCount>*, 5> rows = {&Check4, &Check5, &Check6, &Check7, &Check8};
    return rows.at(static_cast<std::size_t>(row))->at(static_cast<std::size_t>(output));
}

} // namespace nrv::controls
