#include "program/fault_table.h"

// Opening a device's window, for the first time and after the device or the port was away.

namespace nrv::testing {
namespace {

constexpr const char* EmptyPosition = "  Preset Empty  ";
constexpr int PresetSeed = 5;

std::vector<int> PageAddresses() {
    std::vector<int> addresses{16, 18};
    Append(addresses, Range(26, 31));
    Append(addresses, Range(48, 55));
    Append(addresses, Range(64 + 16 * FaultWorld::UsedPosition, 79 + 16 * FaultWorld::UsedPosition));
    Append(addresses, Range(192, 207));
    return addresses;
}

void AddReads(std::vector<Step>& steps, int id, const std::vector<int>& addresses) {
    for (const int address : addresses) {
        steps.push_back({FrameTo(id, {0x10, 0, address}), Exchange::Ordinary});
    }
}

/// What a read of memory brought: what the device has there, or the byte that another device's answer has.
std::uint8_t ByteRead(const Expectation& e, const DevicesOnLine::Device& device, int step, int address) {
    if (e.Met.Kind == Fault::OtherAnswers && e.Met.At == step) {
        return WrongAnswer[8];
    }
    const auto found = device.Memory.find(address);
    return found == device.Memory.end() ? std::uint8_t{0} : found->second;
}

/// The page as far as its reads went through, the first of which is a step.
class PageReading {
  public:
    PageReading(Expectation& e, int id) : e_(e), id_(id), device_(FaultWorldDevice(id)) {}

    void From(int first_step) {
        int step = first_step;
        for (const int address : PageAddresses()) {
            Begin(address);
            if (!e_.Passed(step)) {
                return;
            }
            Take(address, ByteRead(e_, device_, step, address));
            ++step;
        }
    }

    static const DevicesOnLine::Device& FaultWorldDevice(int id) {
        static const FaultWorld World;
        return World.line.Devices.at(id);
    }

  private:
    static constexpr int FirstNameByte = 64 + 16 * FaultWorld::UsedPosition;

    /// What needs no frame comes right before the next read.
    void Begin(int address) {
        model::ParamRow& values = e_.Values(id_);
        if (address == FirstNameByte) {
            NameAsEmpty(0, FaultWorld::UsedPosition);
            values.PresetNames[FaultWorld::UsedPosition].clear();
        }
        if (address == 192) {
            NameAsEmpty(FaultWorld::UsedPosition + 1, 8);
            values.CurrentPresetName.clear();
        }
    }
    void NameAsEmpty(int first, int end) {
        for (int position = first; position < end; ++position) {
            e_.Values(id_).PresetNames[static_cast<std::size_t>(position)] = EmptyPosition;
            std::copy_n(EmptyPosition, 16, e_.Image(id_).SystemPage.begin() + 64 + std::ptrdiff_t{16} * position);
        }
    }
    void Take(int address, std::uint8_t value) {
        model::ParamRow& values = e_.Values(id_);
        const auto a = static_cast<std::size_t>(address);
        if (address >= 26 && address <= 31) {
            values.DevicePassword[a - 26] = value;
            return;
        }
        if (address >= 48 && address <= 55) {
            values.PresetUsed[a - 48] = value;
            return;
        }
        e_.Image(id_).SystemPage[a] = value;
        if (address == 16) {
            TakeOptions(values, value);
            values.LockFlag = value >> 7;
            e_.After.Stores->LastInputType = values.InputType;
        } else if (address == 18) {
            TakeMutes(values, value);
        } else {
            std::string& name = address < 192 ? values.PresetNames[FaultWorld::UsedPosition] : values.CurrentPresetName;
            name += static_cast<char>(value);
        }
    }

    Expectation& e_;
    int id_;
    const DevicesOnLine::Device& device_;
};

/// The window comes up on what the stores hold, however much of that was read.
void ExpectOpened(Expectation& e, int slot, int id) {
    const auto s = static_cast<std::size_t>(slot);
    model::PresetImageRow& image = e.Image(id);
    TakeOptions(e.Values(id), image.SystemPage[16]);
    TakeMutes(e.Values(id), image.SystemPage[18]);
    PutMutes(image, image.SystemPage[18]);
    const Body body = BodyOf(image);
    TakeParameters(e.Values(id), body);
    for (int channel = 0; channel < 8; ++channel) {
        e.Names(id)[static_cast<std::size_t>(channel)] = NameIn(body, channel);
    }
    e.After.Loaded[s] = true;
    e.After.InUse[s] = true;
    e.After.SlotDevices[s] = id;
    ++e.After.OpenWindowTop;
    e.After.CurrentWindow = slot;
    e.After.TransactionDone = true;
    e.After.LoadingNotice = false;
    e.After.Titles[s] =
        "ID:" + std::to_string(id) + " NRV-718 - Name Preset loaded from device: " + e.Values(id).CurrentPresetName;
    if (e.Stopped) {
        e.After.Status =
            "Device ID:" + std::to_string(id) + " could not be read; what its window shows is not what it holds.";
    }
}

void ExpectFirstOpening(Expectation& e) {
    constexpr int id = FaultWorld::Closed;
    if (e.Stopped && e.Through == 0) {
        e.After.LoadingNotice = true; // until the next window opens; that is meant
        if (e.PortWent()) {
            e.After.Checked[id] = true;
            e.After.Status = "The device was not opened. The port went away.";
            return;
        }
        // The box names the device of the window in front.
        e.After.Boxes.push_back({"", "Time-Out: Communication problem with device ID:5"});
        e.After.Status = "ID:7 does not answer; its window was not opened. Double-click its row to try again.";
        return;
    }
    e.After.Checked[id] = true;
    PageReading(e, id).From(1);
    if (e.Stopped) {
        e.Report(Operation::NoSlot, id, "");
    }
    ExpectOpened(e, FaultWorld::NewSlot, id);
}

FaultOperation FirstOpening() {
    FaultOperation operation;
    operation.Name = "Opening";
    operation.Exchanges = 49;
    operation.Device = FaultWorld::Closed;
    operation.Slot = Operation::NoSlot;
    operation.OwnRoad = true;
    operation.Event = [](FaultWorld& at) { at.DoubleClick(2); };
    operation.Steps = [](FaultWorld&) {
        std::vector<Step> steps{{ProbeFrame(FaultWorld::Closed), Exchange::Check}};
        AddReads(steps, FaultWorld::Closed, PageAddresses());
        return steps;
    };
    operation.Expect = ExpectFirstOpening;
    operation.FurtherPlaces = {{"OptionBits", 1}, {"MuteBits", 2}, {"Password", 5}, {"UsedMark", 10}, {"LiveName", 33}};
    return operation;
}

// The steps of a reconnect.
constexpr int LabelStep = 1;
constexpr int ImageStep = 17;
constexpr int PageStep = 18;
constexpr std::size_t ReconnectRow = 1;

/// False when the operation ended in the label.
bool ExpectLabel(Expectation& e, int slot) {
    constexpr int id = FaultWorld::Front;
    const DevicesOnLine::Device& device = PageReading::FaultWorldDevice(id);
    std::string& label = e.After.Labels[id];
    label.clear();
    for (int n = 0; n < 16; ++n) {
        if (!e.Passed(LabelStep + n)) {
            e.Report(slot, id, "its opening stopped");
            return false;
        }
        label += static_cast<char>(ByteRead(e, device, LabelStep + n, 32 + n));
    }
    e.After.Rows[ReconnectRow] = label + "  ID:5";
    e.After.Unconnected[id] = false;
    return true;
}

/// False when the operation ended in the image.
bool ExpectImage(Expectation& e) {
    constexpr int id = FaultWorld::Front;
    const Body before = BodyOf(e.Image(id));
    if (!e.Passed(ImageStep)) {
        if (e.PortWent()) {
            PutBody(e.Image(id), StaleBody(before, e.After.Labels[id].back()));
            e.After.Status = "The device was not opened. The port is absent.";
        } else {
            e.EndByTimeOut();
        }
        return false;
    }
    const Bytes preset = ShiftablePreset(PresetSeed);
    Body body = before;
    if (e.Met.Kind == Fault::OtherAnswers && e.Met.At == ImageStep) {
        body = ShiftedBody(before, preset);
    } else {
        std::ranges::copy(preset, body.begin());
    }
    PutBody(e.Image(id), body);
    return true;
}

/// `slot` is that of a window of the device that still stands.
void ExpectReconnect(Expectation& e, int slot) {
    constexpr int id = FaultWorld::Front;
    e.After.Found[id] = e.Passed(0);
    if (!e.Passed(0)) {
        e.After.Boxes.push_back({"Communication problem", "Device unconnected"});
        return;
    }
    e.After.DeviceRow[id] = 0; // and not its row; that is meant
    if (!ExpectLabel(e, slot) || !ExpectImage(e)) {
        return;
    }
    if (slot != Operation::NoSlot) {
        e.Remove(slot);
    }
    PageReading(e, id).From(PageStep);
    if (e.Stopped) {
        e.Report(Operation::NoSlot, id, "");
    }
    ExpectOpened(e, FaultWorld::FrontSlot, id);
}

FaultOperation Reconnect() {
    FaultOperation operation;
    operation.Exchanges = 66;
    operation.OwnRoad = true;
    operation.Event = [](FaultWorld& at) { at.DoubleClick(static_cast<int>(ReconnectRow)); };
    operation.Steps = [](FaultWorld&) {
        std::vector<Step> steps{{ProbeFrame(FaultWorld::Front), Exchange::Probe}};
        AddReads(steps, FaultWorld::Front, Range(32, 47));
        steps.push_back({FrameTo(FaultWorld::Front, {0x0B, 0xFF}), Exchange::Bulk});
        AddReads(steps, FaultWorld::Front, PageAddresses());
        return steps;
    };
    operation.Questions = {{"Connect device", "Do you want connect this device, are you sure ? "}};
    operation.FurtherPlaces = {
        {"Label", 9}, {"LabelsLast", 16}, {"Image", ImageStep}, {"OptionBits", PageStep}, {"PresetName", 40}};
    return operation;
}

FaultOperation ReconnectOfAnUnconnectedDevice() {
    FaultOperation operation = Reconnect();
    operation.Name = "Reconnect";
    operation.Prepare = [](FaultWorld& at) {
        at.InWindow(FaultWorld::FrontSlot,
                    [&] { at.Window(FaultWorld::FrontSlot).Command2[controls::UnconnectTool].UserClick(); });
        at.line.Devices.at(FaultWorld::Front).Preset = ShiftablePreset(PresetSeed);
        at.Forget();
    };
    operation.Expect = [](Expectation& e) { ExpectReconnect(e, Operation::NoSlot); };
    return operation;
}

/// The port was away and is back; the device's window stands and opens anew.
FaultOperation ReconnectAfterThePortWasAway() {
    FaultOperation operation = Reconnect();
    operation.Name = "ReconnectAfterThePortWasAway";
    operation.Prepare = [](FaultWorld& at) {
        at.world.Port.GoAway();
        at.world.Port.ComeBack();
        at.line.Devices.at(FaultWorld::Front).Preset = ShiftablePreset(PresetSeed);
    };
    operation.Expect = [](Expectation& e) { ExpectReconnect(e, FaultWorld::FrontSlot); };
    return operation;
}

} // namespace

std::vector<FaultOperation> OpeningOperations() {
    return {FirstOpening(), ReconnectOfAnUnconnectedDevice(), ReconnectAfterThePortWasAway()};
}

} // namespace nrv::testing
