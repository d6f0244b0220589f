#include "reference/reference_desk.h"
#include "simulator/device.h"

// Every worked example of docs/line.md is done, and the bytes of the page are what has to go out.

namespace nrv::testing {
namespace {

using Actions = std::map<std::string, std::function<void(ReferenceDesk&, const std::vector<Bytes>&)>>;

void ExpectLamps(ReferenceDesk& desk, const Bytes& answer) {
    for (int channel = 0; channel < ChannelCount; ++channel) {
        EXPECT_EQ(desk.LampsOf(channel), answer.at(4 + At(channel))) << "channel " << channel;
    }
}

/// What each sentence says is done, as a user or the program does it.
const Actions& TheActions() {
    static const Actions actions = {
        {"The search asks for ID 9, which is there",
         [](ReferenceDesk& desk, const auto&) { EXPECT_TRUE(desk.program.Link.ProbeDevice(9)); }},
        {"The gain of Out 2 goes to 3 dB", [](ReferenceDesk& desk, const auto&) { desk.form.Slider1[3].UserMove(45); }},
        {"A delay of 300.042 ms is typed for Out 2",
         [](ReferenceDesk& desk, const auto&) { TypeInto(desk.form.Text2[3], "300.042 ms"); }},
        {"In B is turned", [](ReferenceDesk& desk, const auto&) { desk.form.Check2[1].UserToggle(); }},
        {"The low-pass of Out 1, at 63 Hz, becomes a Linkwitz-Riley of 24 dB an octave",
         [](ReferenceDesk& desk, const auto&) {
             EXPECT_EQ(desk.form.Text8[1].Text(), "63");
             desk.form.Combo2[1].UserSelect(9);
         }},
        {"PEQ 3 of Out 2, at 47 Hz and 0.45 octaves, goes to -3 dB",
         [](ReferenceDesk& desk, const auto&) {
             EXPECT_EQ(desk.form.Text4[26].Text() + " " + desk.form.Text5[26].Text(), "47 0.45");
             desk.form.Slider2[26].UserMove(90);
         }},
        {"The high shelving of In A, at 630 Hz and bypassed, goes to 4 dB",
         [](ReferenceDesk& desk, const auto&) {
             EXPECT_EQ(desk.form.Text7[1].Text() + desk.form.Combo1[1].ShownText(), "630Bypass");
             desk.form.Slider3[1].UserMove(4);
         }},
        {"The threshold of the limiter of Out 2 goes to 10 dBu",
         [](ReferenceDesk& desk, const auto&) {
             desk.form.Slider4[3].UserMove(20);
             EXPECT_EQ(desk.form.Text9[3].Text(), "10");
         }},
        {"The noise gate of In A is put \"OFF\"; its other two codes still are characters of the name in the factory's "
         "preset, a blank and an \"I\"",
         [](ReferenceDesk& desk, const auto&) {
             desk.form.Slider4[0].UserMove(10);
             EXPECT_EQ(desk.form.Text9[0].Text(), "OFF");
         }},
        {"Out 2 takes both inputs", [](ReferenceDesk& desk, const auto&) { desk.form.Combo3[1].UserSelect(2); }},
        {"Out 1 is muted, and nothing else is",
         [](ReferenceDesk& desk, const auto&) { desk.form.Check1[2].UserToggle(); }},
        {"A preset file is loaded into a device that takes mutes from presets",
         [](ReferenceDesk& desk, const auto&) { desk.LoadOwnFile(true); }},
        {"The third memory position is read; the mutes are asked for first",
         [](ReferenceDesk& desk, const auto&) { desk.ReadPosition(2); }},
        {"The master gain goes to -6 dB",
         [](ReferenceDesk& desk, const auto&) {
             desk.form.Slider100.UserMove(90);
             EXPECT_EQ(desk.form.Text100.Text(), "-6");
         }},
        {"The digital input is chosen", [](ReferenceDesk& desk, const auto&) { desk.form.Combo4.UserSelect(1); }},
        {"Out 2 is called \"Subs\", and the other outputs keep their names",
         [](ReferenceDesk& desk, const auto&) { desk.NameChannel(3, "Subs"); }},
        {"The device is unconnected by its tool button", [](ReferenceDesk& desk, const auto&) { desk.Unconnect(); }},
        {"Is the first memory position in use? The byte is 55, which says so",
         [](ReferenceDesk& desk, const auto&) {
             EXPECT_FALSE(desk.program.Link.MemoryRead(9, 48));
             EXPECT_EQ(desk.program.Link.MemoryValue(), model::PresetUsedMark);
         }},
        {"The unit of the delays goes from time to distance",
         [](ReferenceDesk& desk, const auto&) { desk.form.Option1[1].Select(); }},
        {"The device is locked", [](ReferenceDesk& desk, const auto&) { desk.Lock(true); }},
        {"The password becomes \"ABC123\"", [](ReferenceDesk& desk, const auto&) { desk.SetPassword("ABC123"); }},
        {"The meters are asked for; In A lights four lamps, In B three, Out 1 six",
         [](ReferenceDesk& desk, const auto& answers) {
             desk.PollMeters();
             EXPECT_EQ(desk.LampsOf(0), 4);
             EXPECT_EQ(desk.LampsOf(1), 3);
             EXPECT_EQ(desk.LampsOf(2), 6);
             ExpectLamps(desk, answers.at(0));
         }},
        {"The program ends", [](ReferenceDesk& desk, const auto&) { desk.Leave(); }},
    };
    return actions;
}

/// A frame as the page writes it.
std::string Hex(const Frame& frame) {
    constexpr std::string_view digits = "0123456789ABCDEF";
    std::string text = "->";
    for (const std::uint8_t byte : frame) {
        text += std::string(" ") + digits[byte / 16U] + digits[byte % 16U];
    }
    return text;
}

/// What went out as the page would tell it, with "..." where the page has it.
std::vector<std::string> AsTold(const std::vector<Frame>& sent, const std::vector<std::string>& told) {
    std::vector<std::string> lines;
    for (const Frame& frame : sent) {
        lines.push_back(Hex(frame));
    }
    const auto dots = std::ranges::find(told, "...");
    if (dots != told.end() && lines.size() > told.size()) {
        const auto before = dots - told.begin();
        const auto behind = told.end() - dots - 1;
        lines.erase(lines.begin() + before, lines.end() - behind);
        lines.insert(lines.begin() + before, "...");
    }
    return lines;
}

TEST(LinePage, ItsExamplesAreWhatTheProgramSendsAndReads) {
    std::set<std::string> done;
    for (const Section& section : LinePage()) {
        for (const Example& example : section.Examples) {
            SCOPED_TRACE(example.Sentence);
            ASSERT_TRUE(TheActions().contains(example.Sentence));
            EXPECT_TRUE(done.insert(example.Sentence).second) << "told twice";
            std::vector<std::string> told;
            std::vector<Bytes> answers;
            for (const std::string& line : example.Lines) {
                if (line.starts_with("<- ")) {
                    answers.push_back(BytesOfHex(line.substr(3)));
                } else {
                    told.push_back(line);
                }
            }
            ReferenceDesk desk;
            desk.AnswerWith(answers);
            TheActions().at(example.Sentence)(desk, answers);
            EXPECT_EQ(AsTold(desk.Sent(), told), told);
        }
    }
    EXPECT_EQ(done.size(), TheActions().size());
}

/// The rack has a reading of the protocol of its own.
TEST(LinePage, ItsAnswersAreTheVirtualRacks) {
    simulator::Device device(9, "Label of the dev");
    device.PutPreset(0, "Hall", device.LiveImage());
    device.SetLevels(simulator::Levels{4, 3, 6});
    int answers = 0;
    for (const Section& section : LinePage()) {
        for (const Example& example : section.Examples) {
            simulator::Frame request{};
            for (const std::string& line : example.Lines) {
                if (line.starts_with("-> ")) {
                    std::ranges::copy(BytesOfHex(line.substr(3)), request.begin());
                } else if (line.starts_with("<- ")) {
                    ++answers;
                    EXPECT_EQ(device.Handle(request, {}), BytesOfHex(line.substr(3))) << example.Sentence;
                }
            }
        }
    }
    EXPECT_EQ(answers, 3);
}

TEST(LinePage, WhatIsNotLookedAtInAnAnswerChangesNothing) {
    for (const Section& section : LinePage()) {
        for (const Example& example : section.Examples) {
            if (std::ranges::any_of(example.Lines, [](const std::string& line) { return line.starts_with("<-"); })) {
                continue;
            }
            SCOPED_TRACE(example.Sentence);
            ReferenceDesk sound;
            TheActions().at(example.Sentence)(sound, {});
            ReferenceDesk nonsense;
            nonsense.AnswerNonsense();
            TheActions().at(example.Sentence)(nonsense, {});
            EXPECT_EQ(sound.Sent(), nonsense.Sent());
            EXPECT_TRUE(std::ranges::equal(BytesOf(sound.image), BytesOf(nonsense.image)));
        }
    }
}

} // namespace
} // namespace nrv::testing
