#include "presets/copy_trace.h"
#include "program/fault_table.h"

#include <cstring>

// Whole presets, copies and memory positions: after a reported failure the work goes on in controls and stores, and
// commands of two steps stop at their first frame.

namespace nrv::testing {
namespace {

using L = ImageLayout;
constexpr const char* FileName = "Stage.n91";

std::string& FrontTitle(Expectation& e) {
    return e.After.Titles[FaultWorld::FrontSlot];
}

/// A file whose option byte asks for all that a file cannot have: the lock, the mute option, another input type.
model::PresetImageRow FileImage() {
    std::mt19937 random(20260301);
    model::PresetImageRow image{};
    PutBody(image, RandomPreset(random));
    for (std::uint8_t& byte : image.SystemPage) {
        byte = static_cast<std::uint8_t>(random() % 256);
    }
    image.SystemPage[16] = 0xE4; // lock, distance, bit 5, mutes with the preset; analog
    image.ViewState.fill(0);
    return image;
}

void ChooseFile(FaultWorld& at) {
    const model::PresetImageRow image = FileImage();
    std::vector<std::uint8_t> bytes(sizeof image);
    std::memcpy(bytes.data(), &image, sizeof image);
    at.world.Folder.Write(FileName, bytes);
    at.world.Files.File = at.world.Folder.Path() / FileName;
}

std::vector<Step> LoadSteps(FaultWorld& at, bool option_on) {
    LoadSituation situation{.Id = FaultWorld::Front, .OptionBits = option_on ? 0x74 : 0x30, .OptionOn = option_on};
    for (int output = 0; output < 6; ++output) {
        situation.SourcesBefore[static_cast<std::size_t>(output)] =
            at.Image(FaultWorld::Front).PresetBody[L::Source(output)];
    }
    return StepsOf(LoadTrace(BodyOf(FileImage()), situation).Frames);
}

/// The names of the channels that their frames reached, and those of the inputs, for which none goes out.
void TakeNames(Expectation& e, const Body& body) {
    const int first = e.First(0x0E);
    for (int channel = 0; channel < 8; ++channel) {
        if (channel < 2 || e.Passed(first + channel - 2)) {
            e.Names(FaultWorld::Front)[static_cast<std::size_t>(channel)] = NameIn(body, channel);
        }
    }
}

FaultOperation Load() {
    FaultOperation operation;
    operation.Event = [](FaultWorld& at) {
        at.InWindow(FaultWorld::FrontSlot,
                    [&] { at.Window(FaultWorld::FrontSlot).Command2[controls::LoadPresetTool].UserClick(); });
    };
    operation.Called = "the load";
    operation.Counted = true;
    return operation;
}

const std::string OutputsMuted =
    "All outputs are muted, for ID:5 takes no mutes from a preset. \"Gains\" unmutes them.";

FaultOperation LoadWithoutOption() {
    FaultOperation operation = Load();
    operation.Name = "Load";
    operation.Exchanges = LoadFrames + 5; // five of the six sources change
    operation.Prepare = ChooseFile;
    operation.FurtherPlaces = {{"NameOfOut3", 151}};
    operation.Steps = [](FaultWorld& at) { return LoadSteps(at, false); };
    operation.Expect = [](Expectation& e) {
        const model::PresetImageRow file = FileImage();
        e.Image(FaultWorld::Front) = file;
        e.Image(FaultWorld::Front).SystemPage[16] = 0x30; // as the device has it
        // Inputs sounding, outputs muted; the byte itself is stored with the first frame that went through.
        TakeMutes(e.Values(FaultWorld::Front), 0xFC);
        if (e.Passed(0)) {
            PutMutes(e.Image(FaultWorld::Front), 0xFC);
        }
        TakeParameters(e.Values(FaultWorld::Front), file.PresetBody);
        TakeNames(e, e.Image(FaultWorld::Front).PresetBody);
        e.Values(0).InputType = 1.0;
        if (!e.Stopped) {
            e.After.Status = OutputsMuted;
            FrontTitle(e) = std::string("ID:5 NRV 916 - Last preset loaded: come from PC - ") + FileName;
        }
    };
    return operation;
}

/// Mutes come with the preset, a bulk update goes before and after, and the unit of the delays changes.
FaultOperation LoadWithOption() {
    FaultOperation operation = Load();
    operation.Name = "LoadWithMutes";
    operation.Exchanges = BulkLoadFrames + 5 + 1; // the same, the update around them and the unit
    operation.Prepare = [](FaultWorld& at) {
        at.line.Devices.at(FaultWorld::Front).Memory[16] = 0x34;
        at.InWindow(FaultWorld::FrontSlot, [&] { at.program.Control.QueryUnload(FaultWorld::FrontSlot); });
        at.DoubleClick(1);
        at.Forget();
        ChooseFile(at);
    };
    operation.Steps = [](FaultWorld& at) { return LoadSteps(at, true); };
    operation.Expect = [](Expectation& e) {
        const model::PresetImageRow file = FileImage();
        e.Image(FaultWorld::Front) = file;
        e.Image(FaultWorld::Front).SystemPage[16] = 0x74;
        e.Values(0).InputType = 1.0;
        if (!e.Passed(0)) {
            return; // nothing was applied
        }
        TakeOptions(e.Values(FaultWorld::Front), 0x74);
        TakeMutes(e.Values(FaultWorld::Front), file.PresetBody[L::Mutes]);
        if (e.Passed(1)) {
            PutMutes(e.Image(FaultWorld::Front), file.PresetBody[L::Mutes]);
        }
        TakeParameters(e.Values(FaultWorld::Front), file.PresetBody);
        TakeNames(e, file.PresetBody);
        if (!e.Stopped) {
            FrontTitle(e) = std::string("ID:5 NRV 916 - Last preset loaded: come from PC - ") + FileName;
        }
    };
    operation.FurtherPlaces = {{"FirstMute", 1}, {"Unit", 142}, {"NameOfOut3", 153}};
    return operation;
}

/// What a copy leaves: all parameters, and the mute byte if the first mute frame went through.
void TakeCopy(Expectation& e, const Body& after, int destination) {
    const std::uint8_t mutes_before = e.Image(FaultWorld::Front).PresetBody[L::Mutes];
    PutBody(e.Image(FaultWorld::Front), after);
    e.Image(FaultWorld::Front).PresetBody[L::Mutes] = mutes_before;
    TakeParameters(e.Values(FaultWorld::Front), after);
    const int mutes = after[L::Mutes];
    e.Values(FaultWorld::Front).ChannelMute[static_cast<std::size_t>(destination)] = (mutes >> destination) & 1;
    if (e.Passed(e.First(9))) {
        PutMutes(e.Image(FaultWorld::Front), mutes);
    }
}

FaultOperation CopyIn() {
    FaultOperation operation;
    operation.Name = "CopyInput";
    operation.Exchanges = 34; // of which 14 by boxes, lists and arrows that change
    operation.Event = [](FaultWorld& at) {
        at.InToolDialog(controls::CopyInputTool,
                        [&at] { at.InDialog([&] { at.world.Forms.CopyIn.Command1[0].UserClick(); }); });
    };
    const auto copied = [](const Body& before) {
        CopyTrace trace(before, FaultWorld::Front);
        trace.CopyInput(0, 1);
        return trace;
    };
    operation.Steps = [copied](FaultWorld& at) { return StepsOf(copied(BodyOf(at.Image(FaultWorld::Front))).Frames); };
    operation.Expect = [copied](Expectation& e) { TakeCopy(e, copied(BodyOf(e.Image(FaultWorld::Front))).After, 1); };
    operation.Questions = {{"Copy InA to InB", AreYouSure}};
    operation.Called = "the copy";
    operation.Counted = true;
    operation.FurtherPlaces = {{"Mute", 30}, {"MuteByte", 31}, {"MuteAgain", 32}};
    return operation;
}

FaultOperation CopyOut() {
    FaultOperation operation;
    operation.Name = "CopyOutput";
    operation.Exchanges = 25; // of which 9 by boxes, lists and arrows that change
    operation.Event = [](FaultWorld& at) {
        at.InToolDialog(controls::CopyOutputTool, [&at] {
            at.InDialog([&] { at.world.Forms.CopyOut.Combo1[1].UserSelect(3); });
            at.InDialog([&] { at.world.Forms.CopyOut.Command1.UserClick(); });
        });
    };
    const auto copied = [](const Body& before) {
        CopyTrace trace(before, FaultWorld::Front);
        trace.CopyOutput(0, 3);
        return trace;
    };
    operation.Steps = [copied](FaultWorld& at) { return StepsOf(copied(BodyOf(at.Image(FaultWorld::Front))).Frames); };
    operation.Expect = [copied](Expectation& e) { TakeCopy(e, copied(BodyOf(e.Image(FaultWorld::Front))).After, 5); };
    operation.Questions = {{"Copy Output", AreYouSure}};
    operation.Called = "the copy";
    operation.Counted = true;
    operation.FurtherPlaces = {{"Mute", 23}};
    return operation;
}

constexpr int StoredPosition = 4;
constexpr int StoredAsMutes = 0x5A;
const std::string StoredName = "Evening         ";

FaultOperation Store() {
    FaultOperation operation;
    operation.Name = "Store";
    operation.Exchanges = 450;
    operation.Prepare = [](FaultWorld& at) { at.Image(FaultWorld::Front).ViewState[18] = StoredAsMutes; };
    operation.Event = [](FaultWorld& at) {
        at.InToolDialog(controls::StorePresetTool, [&at] {
            controls::FrmStore& form = at.world.Forms.Store;
            at.InDialog([&] { form.List1.UserDoubleClick(StoredPosition); });
            form.Text1.UserText("Evening");
            at.InDialog([&] { form.Command1[1].UserClick(); });
        });
    };
    operation.Steps = [](FaultWorld& at) {
        const auto write = [](int address, int value) {
            return FrameTo(FaultWorld::Front, {0x11, address / 256, address % 256, 0, 0, value});
        };
        std::vector<Frame> frames{write(18, StoredAsMutes), write(48 + StoredPosition, 85)};
        for (int n = 0; n < 16; ++n) {
            frames.push_back(write(64 + 16 * StoredPosition + n, StoredName[static_cast<std::size_t>(n)]));
        }
        for (int n = 0; n < 432; ++n) {
            frames.push_back(write(640 + 432 * StoredPosition + n,
                                   at.Image(FaultWorld::Front).PresetBody[static_cast<std::size_t>(n)]));
        }
        return StepsOf(frames);
    };
    operation.Expect = [](Expectation& e) {
        e.Values(FaultWorld::Front).PresetNames[StoredPosition] = StoredName;
        std::ranges::copy(StoredName,
                          e.Image(FaultWorld::Front).SystemPage.begin() + 64 + std::ptrdiff_t{16} * StoredPosition);
        PutMutes(e.Image(FaultWorld::Front), 0x19);
        if (e.Passed(1)) {
            e.Values(FaultWorld::Front).PresetUsed[StoredPosition] = 85;
        }
        if (!e.Stopped) {
            FrontTitle(e) = "ID:5 NRV-718 - Last preset loaded: come from DEVICE - " + StoredName;
        }
    };
    operation.Questions = {{"Store Preset", AreYouSure}};
    operation.Called = "the store";
    operation.Counted = true;
    operation.FurtherPlaces = {{"UsedMark", 1}};
    operation.AlsoSee = [](FaultWorld& at, const Expectation& e) {
        EXPECT_EQ(at.world.Forms.Store.ProgressBar1.Value(), e.Through);
        EXPECT_EQ(at.world.Forms.Store.ProgressBar1.Visible(), e.Stopped);
    };
    return operation;
}

constexpr int MutesToRead = 0xA6;

void ExpectBulkFailure(Expectation& e) {
    e.Image(FaultWorld::Front).SystemPage[18] = MutesToRead;
    for (std::size_t channel = 2; channel < 8; ++channel) {
        e.Values(FaultWorld::Front).ChannelMute[channel] = (MutesToRead >> channel) & 1;
    }
    if (e.PortWent()) {
        PutBody(e.Image(FaultWorld::Front), StaleBody(BodyOf(e.Image(FaultWorld::Front)), MutesToRead));
        e.Report(FaultWorld::FrontSlot, FaultWorld::Front, "the read stopped");
        // It is missed as it is to be opened for the next frames.
        e.After.Status.replace(0, std::string("The port went away").size(), "The port is absent");
        return;
    }
    e.EndByTimeOut();
}

void ExpectRead(Expectation& e) {
    if (e.Stopped && e.Through == 0) {
        e.Report(FaultWorld::FrontSlot, FaultWorld::Front, "the read stopped");
        return;
    }
    if (e.Stopped) {
        ExpectBulkFailure(e);
        return;
    }
    Body body = BodyOf(e.Image(FaultWorld::Front));
    const Bytes preset = ShiftablePreset(3);
    if (e.Met.Kind == Fault::OtherAnswers && e.Met.At == 1) {
        body = ShiftedBody(body, preset);
    } else {
        std::ranges::copy(preset, body.begin());
    }
    body[L::Mutes] = 0xFC;
    PutBody(e.Image(FaultWorld::Front), body);
    PutMutes(e.Image(FaultWorld::Front), 0xFC);
    TakeMutes(e.Values(FaultWorld::Front), 0xFC);
    TakeParameters(e.Values(FaultWorld::Front), body);
    for (int channel = 0; channel < 8; ++channel) {
        e.Names(FaultWorld::Front)[static_cast<std::size_t>(channel)] = NameIn(body, channel);
    }
    FrontTitle(e) = "ID:5 NRV-718 - Last preset loaded: come from DEVICE - Third of ID:5   ";
    e.After.Status = OutputsMuted;
}

FaultOperation Read() {
    FaultOperation operation;
    operation.Name = "Read";
    operation.Exchanges = 2;
    operation.Prepare = [](FaultWorld& at) {
        at.line.Devices.at(FaultWorld::Front).Memory[18] = MutesToRead;
        at.line.Devices.at(FaultWorld::Front).Preset = ShiftablePreset(3);
    };
    operation.Event = [](FaultWorld& at) {
        at.InToolDialog(controls::ReadPresetTool, [&at] {
            at.InDialog([&] { at.world.Forms.Read.List1.UserSelect(FaultWorld::UsedPosition); });
            at.InDialog([&] { at.world.Forms.Read.Command1[1].UserClick(); });
        });
    };
    operation.Steps = [](FaultWorld&) {
        return std::vector<Step>{{FrameTo(FaultWorld::Front, {0x10, 0, 18}), Exchange::Ordinary},
                                 {FrameTo(FaultWorld::Front, {0x0B, FaultWorld::UsedPosition}), Exchange::Bulk}};
    };
    operation.Expect = ExpectRead;
    operation.OwnRoad = true;
    operation.Questions = {{"Read Preset", "Overwrite current editing, are you sure ? "}};
    return operation;
}

} // namespace

std::vector<FaultOperation> PresetOperations() {
    return {LoadWithoutOption(), LoadWithOption(), Store(), Read(), CopyIn(), CopyOut()};
}

} // namespace nrv::testing
