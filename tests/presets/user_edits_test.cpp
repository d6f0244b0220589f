#include "model/any_edit.h"
#include "presets/load_window.h"

namespace nrv::testing {
namespace {

using model::DecimalText;

/// Whatever the user does, image, controls and values tell the same, by a decoder of the test's own.
class UserEdits : public LoadWindow {
  protected:
    int Pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    std::size_t Any(std::size_t count) { return static_cast<std::size_t>(random() % count); }
    template <class Range>
    auto& AnyOf(Range& range) {
        return range[Any(range.size())];
    }
    void Edit() {
        switch (Pick(25)) {
        case 0:
            return AnyOf(form.Check3).UserToggle();
        case 1:
            return AnyOf(form.Option2).Select();
        case 2:
            return form.ViewBox(Pick(5), Pick(6)).UserToggle();
        default:
            return EditAnyParameter(form, random);
        }
    }

    int Code(std::size_t place) const { return image.PresetBody[place]; }
    static double Number(const std::string& text) { return std::stod(text); }
    static int FrequencyOf(int code) { return static_cast<int>(model::FrequencyTable[static_cast<std::size_t>(code)]); }

    void ExpectGain(int channel) {
        const auto c = static_cast<std::size_t>(channel);
        const int code = Code(ImageLayout::Gain(channel));
        const std::string text = DecimalText(2L * code - 120, 1);
        for (const std::size_t i : {c, c + 8}) {
            EXPECT_EQ(form.Slider1[i].Position(), 120 - code);
            EXPECT_EQ(form.Text1[i].Text(), text);
        }
        EXPECT_EQ(values.ChannelGain[c], Number(text));
    }
    void ExpectMarks(int channel) {
        const auto c = static_cast<std::size_t>(channel);
        const int muted = (Code(71) >> channel) & 1;
        const int inverted = Code(ImageLayout::Phase(channel));
        for (const std::size_t i : {c, c + 8}) {
            EXPECT_EQ(form.Check1[i].Value(), muted);
            EXPECT_EQ(form.Check2[i].Value(), inverted);
        }
        EXPECT_EQ(values.ChannelMute[c], muted);
        EXPECT_EQ(values.ChannelPhase[c], inverted);
        EXPECT_EQ(form.Line6[c].Visible(), muted == 1);
    }
    void ExpectDelay(int channel) {
        const auto c = static_cast<std::size_t>(channel);
        const std::size_t place = ImageLayout::Delay(channel);
        const int coarse = 256 * Code(place) + Code(place + 1);
        const int fine = Code(place + 2);
        for (const std::size_t i : {c, c + 8}) {
            EXPECT_EQ(form.UpDown2[i].Position(), coarse);
            EXPECT_EQ(form.UpDown1[i].Position(), fine);
        }
        EXPECT_EQ(values.DelayCoarse[c], coarse);
        EXPECT_EQ(values.DelayFine[c], fine);
        const long thousandths = 1000L * coarse + 21L * fine;
        const bool metres = (image.SystemPage[16] & 0x40) != 0;
        const std::string number = metres ? DecimalText(34 * thousandths, 5) : DecimalText(thousandths, 3);
        EXPECT_EQ(form.Text2[c].Text(), number + (metres ? " m" : " ms"));
        EXPECT_THAT(form.Text2[c + 8].Text(), ::testing::AnyOf(number, form.Text2[c].Text()));
    }
    void ExpectDynamics(int channel) {
        const auto c = static_cast<std::size_t>(channel);
        const std::size_t place = ImageLayout::Dynamics(channel);
        EXPECT_EQ(form.Slider4[c].Position(), (channel < 2 ? 10 : 60) - Code(place + 3));
        EXPECT_EQ(form.Slider5[c].Position(), 18 - Code(place + 1));
        EXPECT_EQ(form.Slider6[c].Position(), 29 - Code(place));
        EXPECT_EQ(values.LimiterThreshold[c], Code(place + 3));
        EXPECT_EQ(values.LimiterRelease[c], Code(place + 1));
        EXPECT_EQ(values.LimiterAttack[c], Code(place));
        const int code = Code(place + 3);
        const std::string threshold = channel >= 2 ? DecimalText(5L * code - 100, 1)
                                      : code == 0  ? "OFF"
                                                   : std::to_string(code - 100) + ".0";
        EXPECT_EQ(form.Text9[c].Text(), threshold);
    }
    void ExpectPeq(int channel, int section, std::size_t s) {
        const std::size_t place = ImageLayout::Peq(channel, section);
        const std::string gain = DecimalText(2L * Code(place + 4) - 150, 1);
        const std::string width = DecimalText(5L * Code(place + 2) + 5, 2);
        const int frequency = FrequencyOf(Code(place + 1));
        EXPECT_EQ(form.Slider2[s].Position(), 150 - Code(place + 4));
        EXPECT_EQ(form.UpDown3[s].Position(), Code(place + 2));
        EXPECT_EQ(form.Text3[s].Text(), gain);
        EXPECT_EQ(form.Text4[s].Text(), std::to_string(frequency));
        EXPECT_EQ(Number(form.Text5[s].Text()), Number(width)); // a width typed anew for the same code stays as typed
        EXPECT_EQ(values.PeqGain[s], Number(gain));
        EXPECT_EQ(values.PeqFrequency[s], frequency);
        EXPECT_EQ(values.PeqBandwidth[s], Number(width));
    }
    void ExpectTone(int channel, int filter, std::size_t h) {
        const std::size_t place = ImageLayout::Tone(channel, filter);
        const std::string gain = DecimalText(5L * Code(place + 4) - 120, 1);
        const int frequency = FrequencyOf(Code(place + 1));
        EXPECT_EQ(form.Slider3[h].Position(), 36 - Code(place + 4));
        EXPECT_EQ(form.Combo1[h].Index(), Code(place + 2));
        EXPECT_EQ(form.Text6[h].Text(), gain);
        EXPECT_EQ(form.Text7[h].Text(), std::to_string(frequency));
        EXPECT_EQ(values.ToneGain[h], Number(gain));
        EXPECT_EQ(values.ToneFrequency[h], frequency);
        EXPECT_EQ(values.ToneType[h], Code(place + 2));
    }
    void ExpectOutput(int output) {
        const auto y = static_cast<std::size_t>(output);
        const int source = Code(ImageLayout::Source(output));
        EXPECT_EQ(form.Combo3[y].Index(), source);
        EXPECT_EQ(values.OutputSource[y], source);
        EXPECT_EQ(form.Line1000[y].Visible(), source != 1);
        EXPECT_EQ(form.Line1100[y].Visible(), source != 0);
        for (const int side : {0, 1}) {
            const std::size_t x = 2 * y + static_cast<std::size_t>(side);
            const std::size_t place = ImageLayout::Crossover(output, side);
            const int frequency = FrequencyOf(Code(place + 1));
            EXPECT_EQ(form.Text8[x].Text(), std::to_string(frequency));
            EXPECT_EQ(form.Combo2[x].Index(), Code(place + 2));
            EXPECT_EQ(values.CrossoverFrequency[x], frequency);
            EXPECT_EQ(values.CrossoverSlope[x], Code(place + 2));
        }
        for (int row = 0; row < 5; ++row) {
            const std::size_t place = 6 * static_cast<std::size_t>(row) + y;
            EXPECT_EQ(form.ViewBox(row, output).Value(), image.ViewState[place]);
        }
        for (std::size_t m = 0; m < 3; ++m) {
            EXPECT_EQ(form.Option2[3 * y + m].Selected(), m == image.ViewState[40 + y]);
        }
    }
    void ExpectSystem() {
        const int options = image.SystemPage[16];
        EXPECT_EQ(form.Combo4.Index(), (options >> 4) & 1);
        EXPECT_EQ(values.InputType, (options >> 4) & 1);
        EXPECT_EQ(values.DelayUnit, (options >> 6) & 1);
        EXPECT_TRUE(form.Option1[(options >> 6) & 1].Selected());
        EXPECT_EQ(image.SystemPage[18], Code(71));
        EXPECT_EQ(form.Slider100.Position(), 120 - Code(143));
        EXPECT_EQ(form.Text100.Text(), DecimalText(2L * Code(143) - 120, 1));
        EXPECT_EQ(values.MasterGain, Number(form.Text100.Text()));
        for (std::size_t c = 0; c < 8; ++c) {
            EXPECT_EQ(form.Check3[c].Value(), image.ViewState[30 + c]);
        }
    }
    void ExpectAgreement() {
        std::size_t s = 0;
        std::size_t h = 0;
        for (int channel = 0; channel < 8; ++channel) {
            SCOPED_TRACE(channel);
            ExpectGain(channel);
            ExpectMarks(channel);
            ExpectDelay(channel);
            ExpectDynamics(channel);
            for (int section = 0; section < ImageLayout::PeqCount(channel); ++section) {
                ExpectPeq(channel, section, s++);
            }
            for (int filter = 0; filter < ImageLayout::ToneCount(channel); ++filter) {
                ExpectTone(channel, filter, h++);
            }
        }
        for (int output = 0; output < 6; ++output) {
            SCOPED_TRACE(output);
            ExpectOutput(output);
        }
        ExpectSystem();
        EXPECT_FALSE(program.Windows.ControlEventsOff);
    }
    void PutPreset() {
        image.PresetBody = RandomPreset(random);
        image.SystemPage[18] = image.PresetBody[71];
        image.SystemPage[16] = static_cast<std::uint8_t>(random());
        for (std::size_t n = 0; n < 38; ++n) {
            image.ViewState[n] = static_cast<std::uint8_t>(random() % 2);
        }
        for (std::size_t n = 40; n < 46; ++n) {
            image.ViewState[n] = static_cast<std::uint8_t>(random() % 3);
        }
    }
};

TEST_F(UserEdits, ImageControlsAndValuesAgreeAfterFiveHundredEdits) {
    PutPreset();
    ApplySilently(WindowOpens);
    ExpectAgreement();
    std::set<presets::ParameterKind> edited;
    for (int edit = 1; edit <= 500; ++edit) {
        const model::PresetImageRow before = image;
        Edit();
        edited.merge(KindsThatDiffer(before, image));
        if (edit % 50 == 0) {
            SCOPED_TRACE("after edit " + std::to_string(edit));
            ExpectAgreement();
        }
    }
    EXPECT_EQ(edited, EditedKinds());
}

TEST_F(UserEdits, ImageControlsAndValuesAgreeAfterEveryKindOfLoad) {
    for (const double option : {0.0, 1.0}) {
        for (const auto& flags : {ReadFromDevice, LoadedFromFile, WindowOpens}) {
            PutPreset();
            values.MuteWithPreset = option;
            program.Link.TxSuppressed = flags != LoadedFromFile;
            // Without the option the input type stands as it was, and the image's bit follows it.
            values.InputType = form.Combo4.Index();
            Apply(flags);
            program.Link.TxSuppressed = false;
            ExpectAgreement();
        }
    }
}

TEST_F(UserEdits, FramesAloneRebuildTheImage) {
    PutPreset();
    ApplySilently(WindowOpens);
    Body device = image.PresetBody;
    for (int edit = 0; edit < 500; ++edit) {
        Edit();
    }
    // What a device makes of the frames; the names and the codes of the noise gates share their bytes.
    for (const Frame& frame : TakeSent()) {
        const int channel = frame[4];
        const auto put = [&](std::size_t place, std::size_t byte) { device[place] = frame[3 + byte - 1]; };
        switch (frame[3]) {
        case 0x01:
            put(ImageLayout::Gain(channel), 9);
            break;
        case 0x02:
            put(ImageLayout::Delay(channel), 7);
            put(ImageLayout::Delay(channel) + 1, 8);
            put(ImageLayout::Delay(channel) + 2, 9);
            break;
        case 0x03:
            put(ImageLayout::Phase(channel), 9);
            break;
        case 0x04:
            put(ImageLayout::Crossover(channel - 2, frame[5]) + 1, 8);
            put(ImageLayout::Crossover(channel - 2, frame[5]) + 2, 9);
            break;
        case 0x05:
            put(ImageLayout::Peq(channel, frame[5]) + 1, 6);
            put(ImageLayout::Peq(channel, frame[5]) + 2, 7);
            put(ImageLayout::Peq(channel, frame[5]) + 4, 9);
            break;
        case 0x06:
            put(ImageLayout::Tone(channel, frame[5]) + 1, 6);
            put(ImageLayout::Tone(channel, frame[5]) + 2, 7);
            put(ImageLayout::Tone(channel, frame[5]) + 4, 9);
            break;
        case 0x07:
            put(ImageLayout::Dynamics(channel), 6);
            put(ImageLayout::Dynamics(channel) + 1, 7);
            put(ImageLayout::Dynamics(channel) + 3, 9);
            break;
        case 0x08:
            put(ImageLayout::Source(channel - 2), 9);
            break;
        case 0x09:
            break; // the write of the mute bits says it all
        case 0x0C:
            put(ImageLayout::Master, 9);
            break;
        case 0x0D:
            break;
        case 0x11:
            if (frame[5] == 18) {
                put(ImageLayout::Mutes, 6);
            }
            break;
        default:
            ADD_FAILURE() << "an edit sent the command " << int{frame[3]};
        }
    }
    for (std::size_t n = 0; n < device.size(); ++n) {
        EXPECT_EQ(device[n], image.PresetBody[n]) << "byte " << n;
    }
}

} // namespace
} // namespace nrv::testing
