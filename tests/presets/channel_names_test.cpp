#include "model/command_window.h"
#include "presets/apply_image.h"
#include "presets/channel_names.h"

namespace nrv::testing {
namespace {

constexpr std::array<std::size_t, 8> NameBytes = {66, 138, 186, 234, 282, 330, 378, 426};

class ChannelNames : public CommandWindow {
  protected:
    void ApplyNames(const presets::NameTexts& texts) { presets::ApplyChannelNames(Context(), program.Response, texts); }
    std::string NameInImage(std::size_t channel) const {
        std::string name;
        for (std::size_t j = 0; j < 6; ++j) {
            name += static_cast<char>(image.PresetBody[NameBytes[channel] + j]);
        }
        return name;
    }
    static Frame NameFrame(int channel, const std::string& six) {
        std::array<int, 9> payload{0x0E, channel, 0};
        for (std::size_t j = 0; j < 6; ++j) {
            payload[3 + j] = static_cast<unsigned char>(six.at(j));
        }
        return FrameOf(payload);
    }

    const presets::NameTexts names{"Left", "Right", "Sub", "Low L", "Low R", "Mid", "High L", "H"};
};

TEST_F(ChannelNames, ShortNamesAreCentred) {
    const std::array<std::pair<std::string, std::string>, 9> cases = {{{"", "      "},
                                                                       {"X", "   X  "},
                                                                       {"XY", "  XY  "},
                                                                       {"XYZ", "  XYZ "},
                                                                       {"XYZA", " XYZA "},
                                                                       {"XYZAB", " XYZAB"},
                                                                       {"XYZABC", "XYZABC"},
                                                                       {"XYZABCD", "XYZABCD"},
                                                                       {" ", "      "}}};
    for (const auto& [name, padded] : cases) {
        for (int channel = 0; channel < 8; ++channel) {
            SCOPED_TRACE(name + " of " + std::to_string(channel));
            auto before = image;
            std::string text = name;
            presets::PadChannelName(Context(), text, channel);
            EXPECT_EQ(text, padded);
            if (channel < 2) {
                ExpectChanged(before, {}); // never an input's
            } else {
                EXPECT_EQ(NameInImage(static_cast<std::size_t>(channel)), padded.substr(0, 6));
                std::copy_n(before.PresetBody.begin() +
                                static_cast<std::ptrdiff_t>(NameBytes[static_cast<std::size_t>(channel)]),
                            6,
                            image.PresetBody.begin() +
                                static_cast<std::ptrdiff_t>(NameBytes[static_cast<std::size_t>(channel)]));
                ExpectChanged(before, {});
            }
        }
    }
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(ChannelNames, OutputsNamesGoToTheDeviceAndIntoTheImage) {
    auto before = image;
    ApplyNames(names);
    const std::array<std::string, 6> padded = {"  Sub ", " Low L", " Low R", "  Mid ", "High L", "   H  "};
    std::vector<Frame> frames;
    std::map<std::size_t, int> changed;
    for (int output = 0; output < 6; ++output) {
        const std::string& six = padded[static_cast<std::size_t>(output)];
        frames.push_back(NameFrame(output + 2, six));
        for (std::size_t j = 0; j < 6; ++j) {
            changed[NameBytes[static_cast<std::size_t>(output) + 2] + j] = static_cast<std::uint8_t>(six[j]);
        }
    }
    ExpectSent(frames);
    ExpectChanged(before, changed);
}

TEST_F(ChannelNames, CaptionsBearTheNamesAsTyped) {
    form.SSTab1.SetTab(9);
    ApplyNames(names);
    for (std::size_t c = 0; c < 8; ++c) {
        EXPECT_EQ(form.Label300[c].Caption(), names[c]);
        EXPECT_EQ(form.Frame1[c].Caption(), names[c]);
        EXPECT_EQ(form.Frame3[c].Caption(), names[c]);
        EXPECT_EQ(form.SSTab1.TabCaptions()[c], names[c]);
        EXPECT_EQ(program.Stores.ChannelNames[Id][c], names[c]);
        EXPECT_EQ(form.Frame1[c + 8].Caption(), "Gain");
        EXPECT_EQ(form.Frame3[c + 8].Caption(), "Delay");
    }
    EXPECT_EQ(form.SSTab1.TabCaptions()[8], "Gains");
    EXPECT_EQ(form.SSTab1.TabCaptions()[9], "Delays");
    EXPECT_EQ(form.SSTab1.TabCaptions()[10], "Overview");
    EXPECT_EQ(form.SSTab1.Tab(), 7); // the last one touched
    EXPECT_EQ(program.Stores.ChannelNames[Id - 1][0], "");
}

TEST_F(ChannelNames, EveryTabComesForwardInTurn) {
    std::vector<int> tabs;
    form.SSTab1.SetTab(10);
    form.SSTab1.Changed = [&] { tabs.push_back(form.SSTab1.Tab()); };
    ApplyNames(names);
    EXPECT_THAT(tabs, ::testing::ElementsAre(0, 1, 2, 3, 4, 5, 6, 7));
}

TEST_F(ChannelNames, OptionsQuoteTheInputs) {
    ApplyNames(names);
    for (std::size_t k = 0; k < 6; ++k) {
        EXPECT_EQ(form.Option2[3 * k].Caption(), "Out only");
        EXPECT_EQ(form.Option2[3 * k + 1].Caption(), "Out + Left");
        EXPECT_EQ(form.Option2[3 * k + 2].Caption(), "Out + Right");
    }
}

TEST_F(ChannelNames, ViewBoxesQuoteTheOtherOutputsWithTheirSums) {
    form.Option2[1].Select();  // Out 1 with In A
    form.Option2[14].Select(); // Out 5 with In B
    ApplyNames(names);
    const std::array<std::array<std::string, 5>, 6> captions = {{{"Low L", "Low R", "Mid", "High L+InB", "H"},
                                                                 {"Sub+InA", "Low R", "Mid", "High L+InB", "H"},
                                                                 {"Sub+InA", "Low L", "Mid", "High L+InB", "H"},
                                                                 {"Sub+InA", "Low L", "Low R", "High L+InB", "H"},
                                                                 {"Sub+InA", "Low L", "Low R", "Mid", "H"},
                                                                 {"Sub+InA", "Low L", "Low R", "Mid", "High L+InB"}}};
    for (int output = 0; output < 6; ++output) {
        for (int row = 0; row < 5; ++row) {
            EXPECT_EQ(form.ViewBox(row, output).Caption(),
                      captions[static_cast<std::size_t>(output)][static_cast<std::size_t>(row)]);
        }
    }
}

TEST_F(ChannelNames, EmptyNameIsSixBlanksOnTheDeviceAndNothingOnTheLabel) {
    presets::NameTexts texts = names;
    texts[4] = "";
    ApplyNames(texts);
    EXPECT_EQ(world.Port.Sent[2], NameFrame(4, "      "));
    EXPECT_EQ(NameInImage(4), "      ");
    EXPECT_EQ(form.Label300[4].Caption(), "");
    EXPECT_EQ(form.SSTab1.TabCaptions()[4], "");
    EXPECT_EQ(form.Check5[0].Caption(), "");          // Out 3, on the tab of Out 1
    presets::ApplyImage(Context(), program.Response); // shows what the image has
    EXPECT_EQ(form.Label300[4].Caption(), "      ");
}

TEST_F(ChannelNames, LongNameIsCutInTheImageAlone) {
    presets::NameTexts texts = names;
    texts[7] = "Subwoofer";
    ApplyNames(texts);
    EXPECT_EQ(world.Port.Sent[5], NameFrame(7, "Subwoo"));
    EXPECT_EQ(NameInImage(7), "Subwoo");
    EXPECT_EQ(form.Label300[7].Caption(), "Subwoofer");
}

TEST_F(ChannelNames, EveryCharacterIsTakenAsItsCode) {
    presets::NameTexts texts = names;
    texts[2] = std::string("\xE9\x01\0\xFF\x7F?", 6);
    ApplyNames(texts);
    EXPECT_EQ(world.Port.Sent[0], FrameOf({0x0E, 2, 0, 0xE9, 1, 0, 0xFF, 0x7F, '?'}));
    EXPECT_EQ(NameInImage(2), texts[2]);
    EXPECT_EQ(form.Label300[2].Caption(), texts[2]);
}

TEST_F(ChannelNames, InputsNeverReachTheDeviceOrTheImage) {
    presets::NameTexts texts = names;
    texts[0] = "abcdef";
    texts[1] = "";
    auto before = image;
    ApplyNames(texts);
    EXPECT_EQ(TakeSent().size(), 6U);
    EXPECT_TRUE(std::equal(image.PresetBody.begin(), image.PresetBody.begin() + 144, before.PresetBody.begin()));
    EXPECT_EQ(form.Label300[0].Caption(), "abcdef");
}

TEST_F(ChannelNames, ReportedFailureEndsThemWhereTheyStand) {
    world.Port.Answer = [this](const Frame& frame) {
        return frame[3] == 0x0E && frame[4] == 4 ? Bytes{} : line.Answer(frame);
    };
    ApplyNames(names);
    EXPECT_EQ(world.Port.CountSent(0x0E), 2 + 5);
    EXPECT_EQ(NameInImage(4), " Low R"); // the failing name's bytes stand already
    EXPECT_EQ(NameInImage(5), " Out 4");
    EXPECT_EQ(form.Label300[3].Caption(), "Low L");
    EXPECT_EQ(form.Label300[4].Caption(), " Out 3");
    EXPECT_EQ(form.Frame1[4].Caption(), " Out 3");
    EXPECT_EQ(form.Frame3[4].Caption(), " Out 3");
    EXPECT_EQ(form.SSTab1.TabCaptions()[4], " Out 3");
    EXPECT_EQ(form.SSTab1.Tab(), 3);
    EXPECT_EQ(program.Stores.ChannelNames[Id][4], " Out 3");
    // As the image gave it, whose sixth byte holds the mutes.
    EXPECT_EQ(form.Option2[1].Caption(), std::string("Out +  In A\0", 12));
    EXPECT_EQ(form.Check4[1].Caption(), " Out 1");
    EXPECT_FALSE(Loaded(0));
}

TEST_F(ChannelNames, UnreportedFailureGoesOn) {
    program.Link.ReportLinkFailure = false;
    line.Devices.at(Id).Alive = false;
    ApplyNames(names);
    EXPECT_EQ(world.Port.CountSent(0x0E), 30);
    EXPECT_EQ(form.Label300[7].Caption(), "H");
    EXPECT_EQ(NameInImage(7), "   H  ");
}

TEST_F(ChannelNames, SourceListsAreLeft) {
    ApplyNames(names);
    for (const controls::List& list : form.Combo3) {
        EXPECT_THAT(list.Items(), ::testing::ElementsAre("In A", "In B", "In A+B"));
    }
}

} // namespace
} // namespace nrv::testing
