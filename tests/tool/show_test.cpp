#include "tool/tool_desk.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using ::testing::HasSubstr;
using ::testing::Not;

TEST(Show, TellsEveryPlaceOfThePreset) {
    const ToolDesk desk;
    const ToolRun run = ToolDesk::Run({"show", desk.Put("a.n91", FactoryPreset())});
    EXPECT_EQ(run.Outcome, 0);
    EXPECT_EQ(run.Errors, "");
    // One of the device, 2 x (strip, gate, 10 sections, 2 shelves), 6 x (strip, limiter, 2 sides, 4 sections, shelf).
    EXPECT_EQ(std::ranges::count(run.Out, '\n'), 1 + 2 * 14 + 6 * 9);
    EXPECT_THAT(run.Out, HasSubstr("Device: input Analog, delays shown in milliseconds, master gain 0 dB\n"));
    EXPECT_THAT(run.Out, HasSubstr("\nIn A: mute off, phase 0, delay 20 ms, gain 0 dB\n"));
    EXPECT_THAT(run.Out, HasSubstr("\nIn A, PEQ 3: gain 0 dB, frequency 113 Hz, bandwidth 0.45 oct\n"));
    EXPECT_THAT(run.Out, HasSubstr("\nOut 4: mute on, source In B, phase 0, delay 0 ms, gain 0 dB, name \"Out 4\"\n"));
    EXPECT_THAT(run.Out, HasSubstr("\nOut 2, high pass: frequency 63 Hz, slope -12dB/oct Bw\n"));
}

TEST(Show, OneChannelAlone) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    const ToolRun run = ToolDesk::Run({"show", file, "--channel", "Out 2"});
    EXPECT_EQ(std::ranges::count(run.Out, '\n'), 9);
    EXPECT_THAT(run.Out, Not(HasSubstr("Out 3")));
    EXPECT_EQ(ToolDesk::Run({"show", file, "--channel", "out2"}).Out, run.Out);
    const ToolRun wrong = ToolDesk::Run({"show", file, "--channel", "Out 7"});
    EXPECT_EQ(wrong.Outcome, 2);
    EXPECT_EQ(wrong.Errors, "nrv718-preset: \"Out 7\" is no channel; the channels are In A, In B, Out 1, Out 2, Out 3, "
                            "Out 4, Out 5, Out 6.\n");
}

TEST(Show, AnEmptyChannelIsNone) {
    const ToolDesk desk;
    const std::string file = desk.Put("a.n91", FactoryPreset());
    EXPECT_EQ(ToolDesk::Run({"show", file, "--channel", ""}).Outcome, 2);
    EXPECT_EQ(ToolDesk::Run({"curve", file, "--channel", "", "--csv", "-"}).Outcome, 2);
}

TEST(Show, KeysAndJsonTellTheSameValues) {
    const ToolDesk desk;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[model::PeqOffsets[26] + 4] = 60; // Out 2, PEQ 3: (60 - 75) / 5 dB
    image.PresetBody[model::NameOffsets[3] + 1] = 0xE9;
    image.PresetBody[model::NameOffsets[3] + 2] = 7;
    const std::string file = desk.Put("a.n91", image);
    const std::string keys = ToolDesk::Run({"show", file, "--keys"}).Out;
    EXPECT_THAT(keys, HasSubstr("master.gain=0dB\n"));
    EXPECT_THAT(keys, HasSubstr("out2.peq3.gain=-3dB\n"));
    EXPECT_THAT(keys, HasSubstr("out2.name=\"\xC3\xA9\\x07t 2\"\n"));
    const std::string json = ToolDesk::Run({"show", file, "--json"}).Out;
    EXPECT_THAT(json, HasSubstr("  \"out2.peq3.gain\": {\n    \"value\": -3.0,\n    \"unit\": \"dB\"\n  }"));
    EXPECT_THAT(json, HasSubstr("  \"out2.name\": {\n    \"value\": \"\xC3\xA9\\\\x07t 2\"\n  }"));
    // 154 parameters, of which 12 sides have two values, and 44 sections and 10 tone filters three.
    const auto values = std::ranges::count(keys, '\n');
    EXPECT_EQ(values, 8 + 1 + 6 + 24 + 2 * 12 + 3 * 54 + 8 + 8 + 1 + 8 + 6 + 1);
}

TEST(Show, RefusesWhatIsNoPresetAndMakesNoFile) {
    const ToolDesk desk;
    const ToolRun missing = ToolDesk::Run({"show", desk.File("none.n91")});
    EXPECT_EQ(missing.Outcome, 2);
    EXPECT_EQ(missing.Errors,
              "nrv718-preset: " + desk.File("none.n91") + ": no such file; give the name of a preset.\n");
    EXPECT_FALSE(desk.Folder.Has("none.n91"));
    desk.Folder.Write("short.n91", std::vector<std::uint8_t>(432));
    const ToolRun shorter = ToolDesk::Run({"show", desk.File("short.n91")});
    EXPECT_EQ(shorter.Outcome, 2);
    EXPECT_EQ(shorter.Errors, "nrv718-preset: " + desk.File("short.n91") +
                                  ": byte 432: the file ends here, and a preset has 771 bytes; save it anew.\n");
    EXPECT_EQ(ToolDesk::Run({"show", desk.Folder.Path().string()}).Outcome, 2);
    EXPECT_EQ(ToolDesk::Run({"show"}).Outcome, 2);
    EXPECT_THAT(ToolDesk::Run({"--help"}).Out, HasSubstr("show"));
}

TEST(Diff, TellsWhatDiffersInWords) {
    const ToolDesk desk;
    model::PresetImageRow other = FactoryPreset();
    const std::string one = desk.Put("a.n91", other);
    EXPECT_EQ(ToolDesk::Run({"diff", one, one}).Outcome, 0);
    EXPECT_EQ(ToolDesk::Run({"diff", one, one}).Out, "");
    other.PresetBody[model::PeqOffsets[26] + 4] = 60;
    other.PresetBody[model::PhaseOffsets[2]] = 1;
    other.SystemPage[18] = 0x21;
    const ToolRun run = ToolDesk::Run({"diff", one, desk.Put("b.n91", other)});
    EXPECT_EQ(run.Outcome, 1);
    EXPECT_EQ(run.Out, "In A: mute off to on\nOut 2, PEQ 3: gain 0 to -3 dB\nOut 1: phase 0 to 180\n");
    EXPECT_EQ(ToolDesk::Run({"diff", one, desk.File("none.n91")}).Outcome, 2);
}

TEST(Diff, TellsWhatNoWordTells) {
    const ToolDesk desk;
    model::PresetImageRow one = FactoryPreset();
    model::PresetImageRow other = FactoryPreset();
    one.PresetBody[model::PhaseOffsets[2]] = 1;
    other.PresetBody[model::PhaseOffsets[2]] = 5;
    other.SystemPage[model::LabelAddress] = 'L';
    other.ViewState[0] = 1;
    other.ViewState[40] = 2;
    const ToolRun run = ToolDesk::Run({"diff", desk.Put("a.n91", one), desk.Put("b.n91", other)});
    EXPECT_EQ(run.Outcome, 1);
    EXPECT_EQ(run.Out, "Out 1: the same in words, by other bytes: byte 182 1 to 5\n"
                       "Besides, 1 byte of the copy of device memory\n"
                       "Besides, 2 bytes of the state of the window\n");
}

TEST(Check, PassesAWholePreset) {
    const ToolDesk desk;
    for (unsigned seed = 1; seed <= 20; ++seed) {
        const std::string file = desk.Put("a.n91", RandomPreset(seed));
        const ToolRun run = ToolDesk::Run({"check", file});
        EXPECT_EQ(run.Outcome, 0) << run.Out;
        EXPECT_EQ(run.Out, file + ": a whole preset, every code in range\n");
    }
}

TEST(Check, NamesEachCodeOutOfRangeAndItsPlace) {
    const ToolDesk desk;
    model::PresetImageRow image = FactoryPreset();
    image.PresetBody[2] = 10; // a delay of 2560 + 20 steps
    image.PresetBody[4] = 48;
    image.PresetBody[65] = 2;
    image.PresetBody[66] = 30;
    image.PresetBody[146] = 11;
    image.PresetBody[186] = 0;
    image.SystemPage[18] = 0x21;
    image.ViewState[40] = 3;
    const std::string file = desk.Put("a.n91", image);
    const ToolRun run = ToolDesk::Run({"check", file});
    EXPECT_EQ(run.Outcome, 1);
    std::string expected;
    for (const char* finding :
         {"byte 66: In A, noise gate, attack holds 30, and codes end at 29",
          "byte 146: Out 1, high pass, slope holds 11, and codes end at 10",
          "byte 65: In A, phase holds 2, and codes end at 1", "byte 2: In A, delay holds 2580, and codes end at 2500",
          "byte 4: In A, delay holds 48, and codes end at 47", "byte 186: Out 1, name holds 0, which is no character",
          "byte 451: the mutes are 33 here and 32 in byte 71",
          "byte 730: Out 1, view option holds 3, and codes end at 2"}) {
        expected += file + ": " + finding + "\n";
    }
    EXPECT_EQ(run.Out, expected);
}

TEST(Check, TellsAFileThatIsTooShortOrLonger) {
    const ToolDesk desk;
    desk.Put("b.n91", FactoryPreset());
    std::vector<std::uint8_t> bytes = desk.Folder.Read("b.n91");
    desk.Folder.Write("a.n91", {bytes.begin(), bytes.begin() + 432});
    const std::string file = desk.File("a.n91");
    EXPECT_EQ(ToolDesk::Run({"check", file}).Out,
              file + ": byte 432: the file ends here, and a preset has 771 bytes\n");
    EXPECT_EQ(ToolDesk::Run({"check", file}).Outcome, 1);
    bytes.resize(800);
    desk.Folder.Write("b.n91", bytes);
    const ToolRun longer = ToolDesk::Run({"check", desk.File("b.n91")});
    EXPECT_EQ(longer.Outcome, 0);
    EXPECT_THAT(longer.Out, HasSubstr("note: 29 bytes behind the preset, which mean nothing\n"));
}

TEST(Check, HoldsForEveryCodeThatWordsKnow) {
    const auto form = std::make_unique<controls::FrmCtrl>();
    for (const presets::Parameter parameter : presets::Parameters()) {
        for (const presets::CodePlace& place : presets::CodesOf(parameter, *form)) {
            model::PresetImageRow image{};
            presets::PutCode(image, place, place.Top);
            EXPECT_EQ(presets::CodeIn(image, place), place.Top);
            const auto told = [&] { return presets::FieldsOf(parameter, image, *form)[place.Field].Value; };
            EXPECT_THAT(told(), Not(HasSubstr("code")));
            if (place.Bits == 0xFF && parameter.Kind != presets::ParameterKind::Phase) {
                presets::PutCode(image, place, place.Top + 1);
                EXPECT_THAT(told(), HasSubstr("code"));
            }
        }
    }
}

} // namespace
} // namespace nrv::testing
