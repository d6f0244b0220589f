#include "reference/reference_desk.h"

// The tables of docs/line.md against what the program sends when every control goes to both its ends.

namespace nrv::testing {
namespace {

/// The program from its search to an open window, with every frame kept.
class OpeningDesk : public ProgramTest {
  public:
    explicit OpeningDesk(int positions_in_use) {
        DevicesOnLine::Device& device = line.Add(9, "Label of the dev");
        for (int position = 0; position < positions_in_use; ++position) {
            device.Memory[48 + position] = 0x55;
        }
        Start([this] { ProceedWith(controls::MoreDevices, 1); });
        AfterSearch = world.Port.Sent.size();
        TickList();
        AfterList = world.Port.Sent.size();
        DoubleClick(0);
    }
    void TestBody() override {}
    const std::vector<Frame>& Sent() const { return world.Port.Sent; }

    std::size_t AfterSearch = 0;
    std::size_t AfterList = 0;
};

void ToBothEnds(controls::Fader& fader) {
    for (const int position : {0, fader.Maximum(), 0}) {
        fader.UserMove(position);
    }
}
void ToBothEnds(controls::UpDown& arrows) {
    for (const int steps : {-arrows.Maximum(), arrows.Maximum(), -arrows.Maximum()}) {
        arrows.UserStep(steps);
    }
}
void ToBothEnds(controls::CheckBox& box) {
    box.UserToggle();
    box.UserToggle();
}
void ToBothEnds(controls::List& list) {
    const int last = static_cast<int>(list.Items().size()) - 1;
    for (const int entry : {0, last, 0}) {
        list.UserSelect(entry);
    }
}
template <class Controls>
void AllToBothEnds(Controls& controls) {
    for (auto& control : controls) {
        ToBothEnds(control);
    }
}
template <class Boxes>
void TypeIntoAll(Boxes& boxes, const std::vector<std::string>& texts) {
    for (controls::TextBox& box : boxes) {
        for (const std::string& text : texts) {
            TypeInto(box, text);
        }
    }
}

/// Every control of a parameter, once to each of its ends.
void MoveEverything(ReferenceDesk& desk) {
    controls::FrmCtrl& form = desk.form;
    AllToBothEnds(form.Slider1);
    AllToBothEnds(form.Check1);
    AllToBothEnds(form.Check2);
    TypeIntoAll(form.Text2, {"0", "255", "2500.987"});
    ToBothEnds(form.Slider100);
    ToBothEnds(form.Combo4);
    AllToBothEnds(form.Slider2);
    AllToBothEnds(form.UpDown3);
    TypeIntoAll(form.Text4, {"20", "20000"});
    AllToBothEnds(form.Slider3);
    AllToBothEnds(form.Combo1);
    TypeIntoAll(form.Text7, {"20", "20000"});
    TypeIntoAll(form.Text8, {"20", "20000"});
    AllToBothEnds(form.Combo2);
    AllToBothEnds(form.Slider4);
    AllToBothEnds(form.Slider5);
    AllToBothEnds(form.Slider6);
    AllToBothEnds(form.Combo3);
}

std::vector<Frame> EveryFrame() {
    std::vector<Frame> frames = OpeningDesk(8).Sent();
    ReferenceDesk desk;
    // At first the gates hold characters of a name; from the second time on everything holds a code of its own.
    MoveEverything(desk);
    desk.TakeSent();
    MoveEverything(desk);
    desk.form.Option1[1].Select();
    desk.Lock(true);
    desk.Lock(false);
    desk.SetPassword("ABC123");
    desk.PollMeters();
    const auto keep = [&] {
        const std::vector<Frame> sent = desk.TakeSent();
        frames.insert(frames.end(), sent.begin(), sent.end());
    };
    for (const std::uint8_t character : {std::uint8_t{0}, std::uint8_t{255}}) {
        for (int channel = InputCount; channel < ChannelCount; ++channel) {
            std::fill_n(desk.image.PresetBody.begin() + model::NameOffsets[At(channel)], ChannelNameLength, character);
        }
        keep();
        desk.LoadOwnFile(true);
        keep();
    }
    for (int position = 0; position < MemoryPositions; ++position) {
        desk.image.PresetBody[0] = 255; // means nothing, and is stored
        desk.Store(position);
        desk.ReadPosition(position);
    }
    desk.Unconnect();
    keep();
    ReferenceDesk leaving;
    leaving.Leave();
    frames.insert(frames.end(), leaving.Sent().begin(), leaving.Sent().end());
    return frames;
}

const std::vector<Frame>& Frames() {
    static const std::vector<Frame> frames = EveryFrame();
    return frames;
}

/// What went out at the bytes of a row, over the frames of one command.
struct Seen {
    int From = 256;
    int To = -1;
};
Seen SeenAt(const std::vector<int>& bytes, std::optional<int> command) {
    Seen seen;
    for (const Frame& frame : Frames()) {
        if (!command || frame[3] == *command) {
            for (const int byte : bytes) {
                seen.From = std::min<int>(seen.From, frame.at(At(byte)));
                seen.To = std::max<int>(seen.To, frame.at(At(byte)));
            }
        }
    }
    return seen;
}

void ExpectRange(const Row& row, std::optional<int> command) {
    const Seen seen = SeenAt(SpanOf(row.at(0)), command);
    EXPECT_EQ(seen.From, std::stoi(row.at(2))) << "byte " << row.at(0);
    EXPECT_EQ(seen.To, std::stoi(row.at(3))) << "byte " << row.at(0);
}

TEST(LinePage, ItsFrameIsEveryFrame) {
    const std::vector<Section>& page = LinePage();
    const std::vector<Row>& rows = SectionNamed(page, "The frame").Tables.at(0);
    std::set<int> bytes;
    for (const Row& row : rows) {
        ExpectRange(row, std::nullopt);
        for (const int byte : SpanOf(row.at(0))) {
            EXPECT_TRUE(bytes.insert(byte).second) << "byte " << byte << " twice";
        }
    }
    EXPECT_EQ(bytes.size(), std::size_t{link::FrameLength});
}

TEST(LinePage, TellsOfEveryCommandThatThereIs) {
    const std::set<int> of_link = CommandsOfLink(NRV718_SOURCES);
    std::set<int> sent;
    for (const Frame& frame : Frames()) {
        sent.insert(frame[3]);
    }
    EXPECT_EQ(sent, of_link);
    const std::vector<Section>& page = LinePage();
    std::set<int> told;
    for (const Row& row : SectionNamed(page, "Commands").Tables.at(0)) {
        told.insert(std::stoi(row.at(0), nullptr, 16));
        const Section& section = SectionNamed(page, row.at(0) + " ");
        EXPECT_FALSE(section.Examples.empty()) << section.Title;
    }
    EXPECT_EQ(told, of_link);
}

TEST(LinePage, ItsRangesAreTheOnesOfTheControls) {
    for (const auto& [command, answer] : ToldAnswers(LinePage())) {
        constexpr std::string_view digits = "0123456789ABCDEF";
        const std::string code = {digits[At(command / 16)], digits[At(command % 16)], ' '};
        SCOPED_TRACE(code);
        const std::vector<Section>& page = LinePage();
        const Section& section = SectionNamed(page, code);
        std::set<int> named;
        for (const Row& row : section.Tables.empty() ? std::vector<Row>() : section.Tables.at(0)) {
            ExpectRange(row, command);
            const std::vector<int> bytes = SpanOf(row.at(0));
            named.insert(bytes.begin(), bytes.end());
        }
        for (int byte = 4; byte < 12; ++byte) {
            if (!named.contains(byte)) {
                EXPECT_EQ(SeenAt({byte}, command).To, 0) << "byte " << byte;
            }
        }
    }
}

TEST(LinePage, ItsMemoryIsWhatIsReadAndWritten) {
    std::set<int> read;
    std::set<int> written;
    for (const Frame& frame : Frames()) {
        if (frame[3] == 0x10 || frame[3] == 0x11) {
            (frame[3] == 0x10 ? read : written).insert(frame[4] * 256 + frame[5]);
        }
    }
    std::set<int> told_read;
    std::set<int> told_written;
    for (const Row& row : SectionNamed(LinePage(), "Device memory").Tables.at(0)) {
        const int first = std::stoi(row.at(0));
        for (int address = first; address < first + std::stoi(row.at(1)); ++address) {
            if (row.at(3) == "yes") {
                told_read.insert(address);
            }
            if (row.at(4) == "yes") {
                told_written.insert(address);
            }
        }
    }
    EXPECT_EQ(read, told_read);
    EXPECT_EQ(written, told_written);
}

std::map<std::string, std::size_t> CountedSeries() {
    std::map<std::string, std::size_t> counted;
    const OpeningDesk empty(0);
    const OpeningDesk full(8);
    counted["the list reads a device: label, then what is live"] = empty.AfterList - empty.AfterSearch;
    // The first frame asks whether the device is there.
    counted["a window opens, no memory position in use"] = empty.Sent().size() - empty.AfterList - 1;
    counted["a window opens, all eight memory positions in use"] = full.Sent().size() - full.AfterList - 1;
    ReferenceDesk desk;
    desk.LoadOwnFile(false);
    counted["a preset file is loaded, nothing differs"] = desk.TakeSent().size();
    desk.Store(4);
    counted["a preset is stored into a memory position"] = desk.TakeSent().size();
    desk.ReadPosition(4);
    counted["a memory position is read"] = desk.TakeSent().size();
    return counted;
}

TEST(LinePage, ItsSeriesAreAsLongAsTold) {
    std::map<std::string, std::size_t> told;
    for (const Row& row : SectionNamed(LinePage(), "Series").Tables.at(0)) {
        told[row.at(0)] = std::stoul(row.at(1));
    }
    EXPECT_EQ(told, CountedSeries());
}

struct Wait {
    std::size_t Transmissions;
    double SecondsEach;
    bool operator==(const Wait&) const = default;
};
void PrintTo(const Wait& wait, std::ostream* out) {
    *out << wait.Transmissions << " times " << wait.SecondsEach << " s";
}

/// What a silent far end costs.
Wait Measured(const std::function<void(ReferenceDesk&)>& exchange) {
    ReferenceDesk desk;
    desk.world.Port.Answer = [](const Frame&) { return Bytes{}; };
    const long before = desk.world.Clock.Seconds;
    try {
        exchange(desk);
    } catch (const ProcessEnded&) {
        EXPECT_EQ(desk.world.Boxes.Shown.back().Text, "Time out");
    }
    const std::size_t transmissions = desk.Sent().size();
    return {transmissions, static_cast<double>(desk.world.Clock.Seconds - before) / static_cast<double>(transmissions)};
}

TEST(LinePage, ItsWaitsAreAsLongAsTold) {
    std::map<std::string, Wait> told;
    for (const Row& row : SectionNamed(LinePage(), "Waiting").Tables.at(0)) {
        told[row.at(0)] = {std::stoul(row.at(1)), std::stod(row.at(2))};
    }
    std::map<std::string, Wait> measured;
    measured["every frame not named below"] = Measured([](auto& desk) { desk.form.Slider1[0].UserMove(0); });
    measured["preset read"] =
        Measured([](auto& desk) { desk.program.Link.FetchPreset(9, 0, model::OnDevice(desk.image)); });
    measured["00 before a window opens"] = Measured([](auto& desk) {
        // The failed check cannot be marked in the list, which is meant.
        EXPECT_THROW(desk.program.Link.CheckDevice(9), RuntimeError);
    });
    // The limit is a timer's, which a desk without time lets run out at once.
    Wait search = Measured([](auto& desk) { desk.program.Link.ProbeDevice(9); });
    ReferenceDesk desk;
    desk.program.Link.ProbeDevice(9);
    search.SecondsEach = desk.program.Main.SerialTimer.Interval() / 1000.0;
    measured["00 of a search"] = search;
    EXPECT_EQ(told, measured);
}

TEST(LinePage, AnAnswerIsAsLongAsToldAndLookedAtWhereTold) {
    for (const auto& [command, told] : ToldAnswers(LinePage())) {
        SCOPED_TRACE(command);
        // What comes of an answer: how often was sent, and what the program took.
        const auto outcome = [code = command](const Bytes& answer) {
            ReferenceDesk desk;
            desk.world.Port.Answer = [&](const Frame&) { return answer; };
            Bytes taken;
            if (code == 0x00) {
                taken = {static_cast<std::uint8_t>(desk.program.Link.CheckDevice(9) ? 1 : 0)};
            } else if (code == 0x0B) {
                taken.resize(link::BulkLength);
                desk.program.Link.FetchPreset(9, 0, std::span<std::uint8_t, link::BulkLength>(taken));
            } else if (code == 0x10) {
                desk.program.Link.MemoryRead(9, 48);
                taken = {desk.program.Link.MemoryValue()};
            } else if (code == 0x12) {
                desk.PollMeters();
                for (int channel = 0; channel < ChannelCount; ++channel) {
                    taken.push_back(static_cast<std::uint8_t>(desk.LampsOf(channel)));
                }
            } else {
                desk.program.Link.SendFrame(9, {static_cast<std::uint8_t>(code)});
            }
            return std::pair(desk.Sent().size(), taken);
        };
        EXPECT_EQ(outcome(Bytes(told.Length)).first, 1U);
        if (told.Length == 0) {
            continue;
        }
        EXPECT_GT(outcome(Bytes(told.Length - 1)).first, 1U);
        if (told.LookedAt.empty()) {
            continue; // that nothing comes of it is seen on the examples
        }
        Bytes plain(told.Length);
        if (command == 0x00) {
            plain.at(4) = 0xC3;
        }
        const Bytes taken = outcome(plain).second;
        std::set<int> looked_at;
        for (int byte = 0; byte < static_cast<int>(told.Length); byte += command == 0x0B ? 37 : 1) {
            Bytes other = plain;
            other.at(At(byte)) ^= 1;
            if (outcome(other).second != taken) {
                looked_at.insert(byte);
            }
        }
        if (command == 0x0B) {
            EXPECT_EQ(looked_at.size(), 12U);
            EXPECT_EQ(told.LookedAt.size(), std::size_t{link::BulkLength});
        } else {
            EXPECT_EQ(looked_at, told.LookedAt);
        }
    }
}

} // namespace
} // namespace nrv::testing
