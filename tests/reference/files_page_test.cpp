#include "presets/parameter_words.h"
#include "reference/reference_desk.h"

#include <filesystem>

// docs/files.md against the files that the program writes, and its tables against the bytes that each control changes.

namespace nrv::testing {
namespace {

using std::to_string;

const std::vector<Section>& FilesPage() {
    static const std::vector<Section> page = SectionsOf(TextOfFile(NRV718_SOURCES "/docs/files.md"));
    return page;
}

/// Demo devices, with the files of their folder.
class FilesDesk : public ProgramTest {
  public:
    void TestBody() override {}
    void ByUser(const std::function<void()>& event) { program.Events.Run(UserIn(0), event); }

    void ChoosePort() {
        Start([this] {
            program.Select.ComSelect.UserSelect(3);
            throw ProcessEnded{}; // the dialog is as far as this goes
        });
    }
    void ChooseIds() {
        Start([this] {
            program.Select.Link[1].Select();
            program.Select.Connection[controls::MoreDevices].Select();
            program.Select.DeviceIds[0].UserSelect(5);
            program.Select.DeviceIds[1].UserSelect(9);
            Proceed();
            throw ProcessEnded{};
        });
    }
    void ListSuppliedDevices() {
        std::filesystem::copy_file(NRV718_SPEAKERS_CFG, world.Folder / "Speakers.cfg");
        Start([this] { ProceedWith(controls::MoreDevices, 0); });
        EXPECT_EQ(program.State.FoundLast, 7);
        for (int row = 0; row < 8; ++row) {
            EXPECT_EQ(program.State.FoundDevices[At(row)], row + 1);
        }
    }
    controls::FrmCtrl& OpenDemoDevice(int id) {
        StartDemo(id + 1);
        DoubleClick(id);
        return Window(0);
    }
    void SaveHall() {
        controls::FrmCtrl& form = OpenDemoDevice(0);
        ByUser([&] { form.Slider1[3].UserMove(45); });
        ByUser([&] { form.Slider2[26].UserMove(90); });
        world.Files.File = world.Folder / "hall.n91";
        ByUser([&] { form.Command2[controls::SavePresetTool].UserClick(); });
    }
    void LetTwoMinutesPass() {
        controls::FrmCtrl& form = OpenDemoDevice(5);
        for (const int position : {45, 30}) {
            ByUser([&] { form.Slider1[3].UserMove(position); });
            EXPECT_EQ(program.Main.AutosaveTimer.Interval(), 60'000);
            program.Main.AutosaveTimer.Tick();
        }
    }

    using ProgramTest::world;
};

using Actions = std::map<std::string, std::function<void(FilesDesk&)>>;

const Actions& TheActions() {
    static const Actions actions = {
        {"COM 3 is chosen where there was no file", &FilesDesk::ChoosePort},
        {"Lines 1 and 2 get the IDs 5 and 9 where there was no file, and \">>\" is pressed", &FilesDesk::ChooseIds},
        {"The supplied file lists the devices 1 to 8; record 1 is this", &FilesDesk::ListSuppliedDevices},
        {"A demo device opens; the gain of Out 2 goes to 3 dB and its PEQ 3 to -3 dB; the preset is saved as hall.n91",
         &FilesDesk::SaveHall},
        {"The gain of Out 2 of demo device 5 goes to 3 dB, a minute passes, it goes to 6 dB, and another minute passes",
         &FilesDesk::LetTwoMinutesPass},
    };
    return actions;
}

/// "name, n bytes" and lines of "offset: bytes" below it.
void ExpectFiles(FilesDesk& desk, const std::vector<std::string>& lines) {
    Bytes bytes;
    for (const std::string& line : lines) {
        const std::size_t colon = line.find(':');
        if (colon == std::string::npos) {
            const std::size_t comma = line.find(", ");
            bytes = desk.world.Folder.Read(line.substr(0, comma));
            EXPECT_EQ(to_string(bytes.size()) + " bytes", line.substr(comma + 2)) << line;
            continue;
        }
        const Bytes told = BytesOfHex(line.substr(colon + 1));
        const std::size_t offset = std::stoul(line);
        ASSERT_LE(offset + told.size(), bytes.size()) << line;
        const auto from = bytes.begin() + static_cast<std::ptrdiff_t>(offset);
        EXPECT_EQ(Bytes(from, from + static_cast<std::ptrdiff_t>(told.size())), told) << line;
    }
}

TEST(FilesPage, ItsExamplesAreWhatTheProgramWrites) {
    std::set<std::string> done;
    for (const Section& section : FilesPage()) {
        if (section.Title.starts_with("A backup")) {
            continue; // the preset tool's own tests have these
        }
        for (const Example& example : section.Examples) {
            SCOPED_TRACE(example.Sentence);
            ASSERT_TRUE(TheActions().contains(example.Sentence));
            EXPECT_TRUE(done.insert(example.Sentence).second) << "told twice";
            FilesDesk desk;
            try {
                TheActions().at(example.Sentence)(desk);
            } catch (const ProcessEnded&) {
                SUCCEED() << "it ended where it was to end";
            }
            ExpectFiles(desk, example.Lines);
        }
    }
    EXPECT_EQ(done.size(), TheActions().size());
}

/// The rows of the table whose first one is headed so, by field; the first byte and the size of each.
struct Place {
    std::size_t First;
    std::size_t Size;
};
using Fields = std::vector<std::pair<std::string, Place>>;

Fields FieldsOf(const Section& section, std::size_t table) {
    Fields fields;
    for (const Row& row : section.Tables.at(table)) {
        fields.emplace_back(row.at(2), Place{std::stoul(row.at(0)), std::stoul(row.at(1))});
    }
    return fields;
}

/// The tables of a preset, in their order on the page.
struct PresetTables {
    const Section& Preset = SectionNamed(FilesPage(), "A preset");
    const Fields Blocks = FieldsOf(Preset, 0);
    const Fields Input = FieldsOf(Preset, 1);
    const Fields Output = FieldsOf(Preset, 2);
    const Fields Filter = FieldsOf(Preset, 3);
    const Fields Side = FieldsOf(Preset, 4);
    const Fields System = FieldsOf(Preset, 5);
    const Fields View = FieldsOf(Preset, 6);

    static Place At(const Fields& fields, const std::string& name) {
        for (const auto& [field, place] : fields) {
            if (field.starts_with(name)) {
                return place;
            }
        }
        throw std::runtime_error("no field " + name);
    }
    std::size_t Block(int channel) const { return At(Blocks, ChannelTitles[nrv::At(channel)]).First; }
    std::size_t InChannel(int channel, const std::string& field) const {
        return Block(channel) + At(IsInput(channel) ? Input : Output, field).First;
    }
    std::size_t InSystem(const std::string& field) const {
        return At(Blocks, "system page").First + At(System, field).First;
    }
    std::size_t InView(const std::string& field) const {
        return At(Blocks, "view state").First + At(View, field).First;
    }
};

void ExpectNoGap(const Fields& fields, std::size_t end) {
    std::size_t next = 0;
    for (const auto& [field, place] : fields) {
        EXPECT_EQ(place.First, next) << field;
        next = place.First + place.Size;
    }
    EXPECT_EQ(next, end);
}

TEST(FilesPage, TheTablesOfAPresetLeaveNoByteOut) {
    const PresetTables tables{};
    ExpectNoGap(tables.Blocks, 771);
    ExpectNoGap(tables.Input, 72);
    ExpectNoGap(tables.Output, 48);
    ExpectNoGap(tables.Filter, 5);
    ExpectNoGap(tables.Side, 3);
    ExpectNoGap(tables.View, 81);
}

/// What a new device has in the bytes of a table that mean nothing and are told to be 0, of which there are some.
void ExpectZeros(const Section& section, std::size_t table, std::size_t start) {
    int told = 0;
    for (const Row& row : section.Tables.at(table)) {
        if (row.at(2) == "nothing" && row.at(3).size() == 1) {
            EXPECT_EQ(std::to_string(model::FactoryImage[start + std::stoul(row.at(0))]), row.at(3)) << start;
            ++told;
        }
    }
    EXPECT_GT(told, 0) << "table " << table;
}

TEST(FilesPage, BytesThatMeanNothingAreZeroInANewDevice) {
    const PresetTables tables{};
    for (int channel = 0; channel < ChannelCount; ++channel) {
        ExpectZeros(tables.Preset, IsInput(channel) ? 1 : 2, tables.Block(channel));
        for (int section = 0; section < PeqCountOf(channel); ++section) {
            ExpectZeros(tables.Preset, 3, tables.InChannel(channel, "PEQ") + 5 * nrv::At(section));
        }
    }
    for (int output = 0; output < OutputCount; ++output) {
        ExpectZeros(tables.Preset, 4, tables.InChannel(ChannelOfOutput(output), "high-pass"));
        ExpectZeros(tables.Preset, 4, tables.InChannel(ChannelOfOutput(output), "low-pass"));
    }
}

/// The bytes of the table whose field is called so, from where it starts.
std::set<std::size_t> BytesCalled(const std::string& name, const Fields& fields, std::size_t start) {
    std::set<std::size_t> bytes;
    for (const auto& [field, place] : fields) {
        for (std::size_t n = 0; field == name && n < place.Size; ++n) {
            bytes.insert(start + place.First + n);
        }
    }
    return bytes;
}

TEST(FilesPage, NoByteOfAParameterMeansNothing) {
    const PresetTables tables{};
    std::set<std::size_t> nothing;
    for (int channel = 0; channel < ChannelCount; ++channel) {
        nothing.merge(BytesCalled("nothing", IsInput(channel) ? tables.Input : tables.Output, tables.Block(channel)));
    }
    EXPECT_FALSE(nothing.empty());
    for (const presets::Parameter parameter : presets::Parameters()) {
        for (const presets::ImageBits& place : presets::PlacesOf(parameter)) {
            EXPECT_FALSE(nothing.contains(place.Byte)) << presets::PlaceOf(parameter) << ", byte " << place.Byte;
        }
    }
}

/// Finds what an action changed in the image, and holds it against what the page gives.
class PresetBytes : public ReferenceDesk {
  public:
    void Expect(const std::set<std::size_t>& told, const std::string& what, const std::function<void()>& action) {
        const model::PresetImageRow before = image;
        action();
        std::set<std::size_t> changed;
        for (std::size_t byte = 0; byte < model::ImageSize; ++byte) {
            if (BytesOf(before)[byte] != BytesOf(image)[byte]) {
                changed.insert(byte);
            }
        }
        EXPECT_EQ(changed, told) << what;
    }
    void ExpectFilter(std::size_t start, const std::string& what, controls::TextBox& frequency,
                      const std::function<void()>& second, controls::Fader& gain) {
        Expect({start + PresetTables::At(tables.Filter, "frequency").First}, what + " frequency",
               [&] { TypeInto(frequency, "11875"); });
        Expect({start + PresetTables::At(tables.Filter, "bandwidth or type").First}, what + " second", second);
        Expect({start + PresetTables::At(tables.Filter, "gain").First}, what + " gain", [&] { gain.UserMove(1); });
    }
    void ExpectSide(std::size_t start, int side) {
        Expect({start + PresetTables::At(tables.Side, "frequency").First}, "side",
               [&] { TypeInto(form.Text8[At(side)], "11875"); });
        Expect({start + PresetTables::At(tables.Side, "slope").First}, "side",
               [&] { form.Combo2[At(side)].UserSelect(7); });
    }
    static std::size_t At(int index) { return nrv::At(index); }

    const PresetTables tables{};
};

TEST(FilesPage, EveryChannelsFieldsAreWhereItsControlsWrite) {
    PresetBytes desk;
    const PresetTables& tables = desk.tables;
    controls::FrmCtrl& form = desk.form;
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const std::size_t c = nrv::At(channel);
        const std::string title = ChannelTitles[c];
        const auto at = [&](const std::string& field) { return tables.InChannel(channel, field); };
        desk.Expect({at("gain")}, title + " gain", [&] { form.Slider1[c].UserMove(7); });
        desk.Expect({at("coarse delay"), at("coarse delay") + 1}, title + " coarse",
                    [&] { form.UpDown2[c].UserStep(770 - form.UpDown2[c].Position()); });
        desk.Expect({at("fine delay")}, title + " fine", [&] { form.UpDown1[c].UserStep(3); });
        desk.Expect({at("phase")}, title + " phase", [&] { form.Check2[c].UserToggle(); });
        desk.Expect({at("attack")}, title + " attack", [&] { form.Slider6[c].UserMove(1); });
        desk.Expect({at("release")}, title + " release", [&] { form.Slider5[c].UserMove(1); });
        desk.Expect({at("threshold")}, title + " threshold", [&] { form.Slider4[c].UserMove(1); });
        desk.Expect({tables.InChannel(0, "mutes or master gain"), tables.InSystem("mute bits")}, title + " mute",
                    [&] { form.Check1[c].UserToggle(); });
        for (int section = 0; section < PeqCountOf(channel); ++section) {
            const std::size_t s = nrv::At(FirstPeqOf(channel) + section);
            desk.ExpectFilter(
                at("PEQ") + 5 * nrv::At(section), title + " PEQ", form.Text4[s], [&] { form.UpDown3[s].UserStep(1); },
                form.Slider2[s]);
        }
        const std::vector<std::string> shelves = IsInput(channel)
                                                     ? std::vector<std::string>{"low shelving", "high shelving"}
                                                     : std::vector<std::string>{"shelving"};
        for (std::size_t shelf = 0; shelf < shelves.size(); ++shelf) {
            const std::size_t t = nrv::At(FirstToneOf(channel)) + shelf;
            desk.ExpectFilter(
                at(shelves[shelf]), title + " shelf", form.Text7[t], [&] { form.Combo1[t].UserSelect(1); },
                form.Slider3[t]);
        }
    }
    desk.Expect({tables.InChannel(1, "mutes or master gain")}, "master gain", [&] { form.Slider100.UserMove(7); });
}

TEST(FilesPage, AnOutputsOwnFieldsAreWhereItsControlsWrite) {
    PresetBytes desk;
    for (int output = 0; output < OutputCount; ++output) {
        const int channel = ChannelOfOutput(output);
        desk.ExpectSide(desk.tables.InChannel(channel, "high-pass"), FirstSideOf(output));
        desk.ExpectSide(desk.tables.InChannel(channel, "low-pass"), FirstSideOf(output) + 1);
        desk.Expect({desk.tables.InChannel(channel, "source")}, "source",
                    [&] { desk.form.Combo3[nrv::At(output)].UserSelect(2); });
        std::set<std::size_t> name;
        for (std::size_t n = 0; n < 6; ++n) {
            name.insert(desk.tables.InChannel(channel, "name") + n);
        }
        desk.Expect(name, "name", [&] { desk.NameChannel(channel, "abcdef"); });
    }
}

TEST(FilesPage, TheSystemPageHoldsWhatAnOpeningReads) {
    const PresetTables tables{};
    std::set<std::size_t> told;
    for (const auto& [field, place] : tables.System) {
        for (std::size_t n = 0; n < place.Size; ++n) {
            told.insert(PresetTables::At(tables.Blocks, "system page").First + place.First + n);
        }
    }
    PresetBytes desk;
    for (int address = 0; address < 640; ++address) {
        desk.line.Devices.at(9).Memory[address] = 0x55;
    }
    desk.Expect(told, "reading", [&] { desk.program.Devices.ReadDeviceState(9); });
}

TEST(FilesPage, TheOptionBitsAndTheViewStateAreWhereTheirControlsWrite) {
    PresetBytes desk;
    const PresetTables& tables = desk.tables;
    controls::FrmCtrl& form = desk.form;
    const std::size_t options = tables.InSystem("option bits");
    const auto bits = [&] { return static_cast<int>(BytesOf(desk.image)[options]); };
    desk.Expect({options}, "input type", [&] { form.Combo4.UserSelect(1); });
    EXPECT_EQ(bits(), 16);
    desk.Expect({options}, "unit", [&] { form.Option1[1].Select(); });
    EXPECT_EQ(bits(), 16 + 64);
    desk.Expect({options}, "lock", [&] { desk.Lock(true); });
    EXPECT_EQ(bits(), 16 + 64 + 128);
    for (int output = 0; output < OutputCount; ++output) {
        const std::size_t x = nrv::At(output);
        for (int row = 0; row < ViewsPerOutput; ++row) {
            desk.Expect({tables.InView("view boxes") + 6 * nrv::At(row) + x}, "view box",
                        [&] { form.ViewBox(row, output).UserToggle(); });
        }
        desk.Expect({tables.InView("sums") + x}, "sum", [&] { form.Option2[3 * x + 2].Select(); });
        EXPECT_EQ(BytesOf(desk.image)[tables.InView("sums") + x], 2);
    }
    for (std::size_t channel = 0; channel < std::size_t{ChannelCount}; ++channel) {
        desk.Expect({tables.InView("show cursor") + channel}, "cursor", [&] { form.Check3[channel].UserToggle(); });
    }
}

/// The tables of the three configuration files against what is read from them.
TEST(FilesPage, TheConfigurationFilesAreReadWhereTold) {
    const std::vector<Section>& page = FilesPage();
    ExpectNoGap(FieldsOf(SectionNamed(page, "init.cfg"), 0), 14);
    ExpectNoGap(FieldsOf(SectionNamed(page, "TenDev.cfg"), 0), 66);
    const Fields speakers = FieldsOf(SectionNamed(page, "Speakers.cfg"), 0);
    ExpectNoGap(speakers, 128);
    for (int record : {0, 7, 32}) {
        FilesDesk desk;
        Bytes bytes(4224, 0);
        const std::size_t start = 128 * nrv::At(record);
        bytes[start + PresetTables::At(speakers, "device ID").First] = 21;
        bytes[start + PresetTables::At(speakers, "found").First] = 1;
        desk.world.Folder.Write("Speakers.cfg", bytes);
        const auto records = session::ReadSpeakerRecords(desk.world.Folder.Path());
        EXPECT_EQ(records[nrv::At(record)].DeviceId(), 21);
        EXPECT_TRUE(records[nrv::At(record)].Found());
        EXPECT_EQ(std::ranges::count_if(records, [](const auto& of) { return of.Found(); }), 1);
    }
}

} // namespace
} // namespace nrv::testing
