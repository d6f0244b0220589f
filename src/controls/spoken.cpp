#include "controls/spoken.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <functional>
#include <map>

namespace nrv::controls {
namespace {

using std::string_view;
using Place = std::function<std::string(int)>;

std::string OfChannel(int channel) {
    return ChannelTitles[static_cast<std::size_t>(channel)];
}
std::string OfStrip(int index) {
    return OfChannel(ChannelOfControl(index));
}
std::string OfOutput(int output) {
    return OfChannel(ChannelOfOutput(output));
}
std::string OfPeq(int section) {
    return OfChannel(ChannelOfPeq(section)) + ", PEQ " + std::to_string(PeqInChannel(section) + 1);
}
std::string OfTone(int filter) {
    const char* const kind = !IsToneOfInput(filter)       ? "shelving"
                             : ToneInChannel(filter) == 0 ? "low shelving"
                                                          : "high shelving";
    return OfChannel(ChannelOfTone(filter)) + ", " + kind;
}
std::string OfSide(int side) {
    return OfChannel(ChannelOfCrossover(side)) + (CrossoverInChannel(side) == 0 ? ", high pass" : ", low pass");
}
std::string OfDynamics(int channel) {
    return OfChannel(channel) + (IsInput(channel) ? ", noise gate" : ", limiter");
}
std::string Nowhere(int) {
    return {};
}

struct Words {
    Place Where;
    string_view What;
};

/// The controls that are named by where they are and what they do there.
const std::map<string_view, Words>& Controls() {
    static const std::map<string_view, Words> controls = {
        {"Slider1", {OfStrip, "gain"}},
        {"Text1", {OfStrip, "gain"}},
        {"Check1", {OfStrip, "mute"}},
        {"Check2", {OfStrip, "phase 180 degrees"}},
        {"Text2", {OfStrip, "delay"}},
        {"UpDown2", {OfStrip, "delay, adjust"}},
        {"UpDown1", {OfStrip, "delay, fine"}},
        {"Slider100", {Nowhere, "Master gain"}},
        {"Text100", {Nowhere, "Master gain"}},
        {"Combo4", {Nowhere, "Select input"}},
        {"Slider2", {OfPeq, "gain"}},
        {"Text3", {OfPeq, "gain"}},
        {"Text4", {OfPeq, "frequency in Hz"}},
        {"Text5", {OfPeq, "bandwidth in octaves"}},
        {"UpDown3", {OfPeq, "bandwidth"}},
        {"Label5", {OfPeq, "point"}},
        {"Command1", {OfChannel, "flat equaliser"}},
        {"Slider3", {OfTone, "gain"}},
        {"Text6", {OfTone, "gain"}},
        {"Text7", {OfTone, "frequency in Hz"}},
        {"Combo1", {OfTone, "type"}},
        {"Text8", {OfSide, "frequency in Hz"}},
        {"Combo2", {OfSide, "slope"}},
        {"Slider4", {OfDynamics, "threshold"}},
        {"Text9", {OfDynamics, "threshold"}},
        {"Slider5", {OfDynamics, "release"}},
        {"Text10", {OfDynamics, "release"}},
        {"Slider6", {OfDynamics, "attack"}},
        {"Text11", {OfDynamics, "attack"}},
        {"Combo3", {OfOutput, "source"}},
        {"Picture1", {OfChannel, "frequency response"}},
        {"Check3", {OfChannel, "show cursor"}},
        {"Image1", {OfChannel, "picture"}},
        {"Label200", {OfOutput, "source block"}},
        {"Label300", {OfChannel, "name block"}},
        {"Label400", {OfChannel, "socket"}},
    };
    return controls;
}

std::string Joined(const std::string& where, const std::string& what) {
    return where.empty() ? what : where + ", " + what;
}

std::string OfLamp(int lamp) {
    const int channel = lamp / LampsPerChannel;
    const std::array<const char*, LampsPerChannel> levels = {
        "-24 dB", "-18 dB", "-12 dB", "-6 dB", IsInput(channel) ? "-2 dB" : "limit", "clip"};
    return Joined(OfChannel(channel), std::string(levels[static_cast<std::size_t>(lamp % LampsPerChannel)]) + " lamp");
}

std::string OfSum(int option) {
    const std::array<const char*, SumsPerOutput> sums = {"output only", "output and In A", "output and In B"};
    return Joined(OfOutput(option / SumsPerOutput), sums[static_cast<std::size_t>(option % SumsPerOutput)]);
}

/// A stage of a channel in the diagram; the last two are the inputs' gates.
std::string OfBlock(int block) {
    constexpr int stages = 5;
    constexpr int first_gate = stages * ChannelCount;
    const std::array<const char*, stages> input = {"master", "gain", "PEQ", "delay", "phase"};
    const std::array<const char*, stages> output = {"crossover", "delay", "limiter", "gain", "phase"};
    if (block >= first_gate) {
        return Joined(OfChannel(block - first_gate), "noise gate block");
    }
    const int channel = block / stages;
    const auto stage = static_cast<std::size_t>(block % stages);
    return Joined(OfChannel(channel), std::string(IsInput(channel) ? input[stage] : output[stage]) + " block");
}

std::string OfView(string_view name, int output) {
    return Joined(OfOutput(output), "view " + OfOutput(ViewedOutput(output, name.back() - '4')));
}

struct Value {
    const TextBox& Text;
    const char* Unit;
};

/// What a number of a unit is called; words stay as they are.
std::string InWords(const Value& value) {
    // Some times stand right-aligned in their tables.
    const std::string text =
        value.Text.Text().substr(std::min(value.Text.Text().find_first_not_of(' '), value.Text.Text().size()));
    const bool number = !text.empty() && (std::isdigit(static_cast<unsigned char>(text.back())) != 0);
    return number ? text + value.Unit : text;
}

} // namespace

std::string SpokenName(string_view name, int index) {
    if (const auto words = Controls().find(name); words != Controls().end()) {
        return Joined(words->second.Where(index), std::string(words->second.What));
    }
    if (name == "Shape1") {
        return OfLamp(index);
    }
    if (name == "Label100") {
        return OfBlock(index);
    }
    if (name == "Option2") {
        return OfSum(index);
    }
    if (name.size() == 6 && name.starts_with("Check") && name.back() >= '4' && name.back() <= '8') {
        return OfView(name, index);
    }
    return {};
}

std::string SpokenValue(const FrmCtrl& form, string_view name, int index) {
    const auto i = static_cast<std::size_t>(index);
    const auto is = [name](auto... names) { return ((name == names) || ...); };
    if (is("Slider1")) {
        return InWords({form.Text1[i], " dB"});
    }
    if (is("Slider100")) {
        return InWords({form.Text100, " dB"});
    }
    if (is("Slider2")) {
        return InWords({form.Text3[i], " dB"});
    }
    if (is("Slider3")) {
        return InWords({form.Text6[i], " dB"});
    }
    if (is("Slider4")) {
        return InWords({form.Text9[i], " dBu"});
    }
    if (is("Slider5")) {
        return InWords({form.Text10[i], ""});
    }
    if (is("Slider6")) {
        return InWords({form.Text11[i], ""});
    }
    if (is("UpDown1", "UpDown2")) {
        return InWords({form.Text2[i], ""});
    }
    if (is("UpDown3")) {
        return InWords({form.Text5[i], " octaves"});
    }
    if (is("Label5")) {
        return InWords({form.Text4[i], " Hz"}) + ", " + InWords({form.Text3[i], " dB"}) + ", " +
               InWords({form.Text5[i], " octaves"});
    }
    return {};
}

} // namespace nrv::controls
