#include "program/fault_world.h"

#include <cstring>
#include <ostream>
#include <sstream>

namespace nrv::testing {
namespace {

constexpr int SixSeconds = 6;
constexpr int AfterAFrame = 12; // a frame's wait ends at 10
constexpr int AfterABulk = 21;  // a bulk reply's at 19

constexpr std::size_t NumbersOfARow = offsetof(model::ParamRow, PresetNames) / sizeof(double);

std::array<double, NumbersOfARow> NumbersOf(const model::ParamRow& row) {
    std::array<double, NumbersOfARow> numbers{};
    std::memcpy(numbers.data(), static_cast<const void*>(&row), sizeof numbers);
    return numbers;
}

/// Lines for the entries of two rows that differ, no more than anybody would read.
class Comparison {
  public:
    template <class Value>
    void Compare(const std::string& what, const Value& expected, const Value& actual) {
        if (expected == actual) {
            return;
        }
        if (++lines_ <= MostLines) {
            text_ << what << " is " << +actual << " and not " << +expected << '\n';
        }
    }
    void Compare(const std::string& what, const std::string& expected, const std::string& actual) {
        if (expected != actual && ++lines_ <= MostLines) {
            text_ << what << " is \"" << actual << "\" and not \"" << expected << "\"\n";
        }
    }
    template <class Row>
    void CompareAll(const std::string& what, const Row& expected, const Row& actual) {
        for (std::size_t n = 0; n < expected.size(); ++n) {
            Compare(what + " " + std::to_string(n), expected[n], actual[n]);
        }
    }
    std::string Text() const { return text_.str(); }

  private:
    static constexpr int MostLines = 12;
    std::ostringstream text_;
    int lines_ = 0;
};

} // namespace

void PrintTo(const ShownBox& box, std::ostream* stream) {
    *stream << '"' << box.Title << "\": \"" << box.Text << '"';
}

std::string Differences(const model::DeviceStores& expected, const model::DeviceStores& actual) {
    Comparison comparison;
    for (std::size_t id = 0; id < expected.ParamValues.size(); ++id) {
        const std::string of = " of ID:" + std::to_string(id) + ", entry";
        comparison.CompareAll("ParamValues" + of, NumbersOf(expected.ParamValues[id]),
                              NumbersOf(actual.ParamValues[id]));
        comparison.CompareAll("PresetNames" + of, expected.ParamValues[id].PresetNames,
                              actual.ParamValues[id].PresetNames);
        comparison.Compare("CurrentPresetName" + of, expected.ParamValues[id].CurrentPresetName,
                           actual.ParamValues[id].CurrentPresetName);
        comparison.CompareAll("PresetImage" + of, BytesOf(expected.PresetImage[id]), BytesOf(actual.PresetImage[id]));
        comparison.CompareAll("ChannelNames" + of, expected.ChannelNames[id], actual.ChannelNames[id]);
    }
    comparison.Compare("LastInputType", expected.LastInputType, actual.LastInputType);
    return comparison.Text();
}

Course CourseOf(Exchange kind, Fault fault) {
    switch (fault) {
    case Fault::None:
        return {};
    case Fault::GoneBefore:
        return {0, false};
    case Fault::GoneWaiting:
        return {1, false};
    case Fault::Silent:
        switch (kind) {
        case Exchange::Ordinary:
            return {5, false};
        case Exchange::WithoutReply:
            return {1, true};
        case Exchange::Bulk:
            return {6, false};
        case Exchange::Probe:
            return {1, false};
        case Exchange::Check:
            return {2, false};
        }
        return {};
    case Fault::OtherAnswers:
        // The 13 bytes are no 432, and stay for the reply to the second transmission; a probe looks at byte 4.
        return kind == Exchange::Bulk ? Course{2, true} : Course{1, kind != Exchange::Probe};
    case Fault::SixSecondsLate:
        return kind == Exchange::Probe ? Course{1, false} : Course{kind == Exchange::Check ? 2 : 1, true};
    case Fault::AfterTheWait:
        if (kind == Exchange::Probe || kind == Exchange::Check) {
            return {kind == Exchange::Probe ? 1 : 2, false};
        }
        return {kind == Exchange::WithoutReply ? 1 : 2, true};
    }
    return {};
}

Bytes ShiftablePreset(int seed) {
    Bytes bytes(432);
    for (std::size_t n = 0; n < bytes.size(); ++n) {
        bytes[n] = static_cast<std::uint8_t>((n * n + static_cast<std::size_t>(seed) * n / 7) % 3);
    }
    return bytes;
}

FaultWorld::FaultWorld() {
    std::mt19937 random(718);
    for (const int id : {FirstListed, Front, Closed, Behind}) {
        DevicesOnLine::Device& device = line.Add(id, "Label of dev 00" + std::to_string(id));
        const Body preset = RandomPreset(random);
        device.Preset.assign(preset.begin(), preset.begin() + 432);
        device.Memory[16] = id == Front ? 0x30 : 0x20; // digital in front
        device.Memory[18] = static_cast<std::uint8_t>(0x14 + id);
        DevicesOnLine::PutText(device, 26, "pass0" + std::to_string(id));
        device.Memory[48 + UsedPosition] = 85;
        DevicesOnLine::PutText(device, 64 + 16 * UsedPosition, "Third of ID:" + std::to_string(id) + "   ");
        DevicesOnLine::PutText(device, 192, "Live in ID:" + std::to_string(id) + "    ");
    }
    Start([this] { ProceedWith(controls::MoreDevices, 1); });
    TickList();
    DoubleClick(3);
    DoubleClick(1);
    Forget();
}

void FaultWorld::InToolDialog(controls::ToolButton tool, std::function<void()> in_dialog) {
    world.Host.WhileToolDialogStands = std::move(in_dialog);
    InWindow(FrontSlot, [&] { Window(FrontSlot).Command2[static_cast<std::size_t>(tool)].UserClick(); });
    world.Host.WhileToolDialogStands = nullptr;
}

void FaultWorld::Meet(const Trial& trial, Exchange kind, int device) {
    const auto at = static_cast<std::size_t>(trial.At);
    ScriptedPort& port = world.Port;
    port.Answer = [this, trial, kind, device](const Frame& frame) { return AnswerFor(frame, trial, kind, device); };
    if (trial.Kind == Fault::GoneBefore) {
        port.OnOutput = [&port, at] {
            if (port.Sent.size() == at) {
                port.GoAway();
            }
        };
    }
    if (trial.Kind == Fault::GoneWaiting) {
        port.OnPoll = [&port, at] {
            if (port.Sent.size() == at + 1) {
                port.GoAway();
            }
        };
    }
}

Bytes FaultWorld::AnswerFor(const Frame& frame, const Trial& trial, Exchange kind, int device) {
    const int transmission = static_cast<int>(world.Port.Sent.size()) - 1;
    const bool hit = transmission == trial.At;
    const bool again = transmission == trial.At + 1 && CourseOf(kind, trial.Kind).Transmissions == 2;
    Bytes answer = line.Answer(frame);
    switch (trial.Kind) {
    case Fault::None:
    case Fault::GoneBefore:
        return answer;
    case Fault::Silent:
        return transmission >= trial.At && frame[2] == device ? Bytes{} : answer;
    case Fault::GoneWaiting:
        return hit ? Bytes{} : answer;
    case Fault::OtherAnswers:
        return hit ? WrongAnswer : answer;
    case Fault::SixSecondsLate:
    case Fault::AfterTheWait:
        if (hit) {
            const int late = trial.Kind == Fault::SixSecondsLate ? SixSeconds
                             : kind == Exchange::Bulk            ? AfterABulk
                                                                 : AfterAFrame;
            world.Port.ArriveAt(world.Clock.Seconds + late, answer);
        }
        return hit || again ? Bytes{} : answer;
    }
    return answer;
}

Outcome FaultWorld::Look() {
    const controls::Windows& windows = program.Windows;
    Outcome outcome;
    outcome.Sent = world.Port.Sent;
    for (const MessageBox& box : world.Boxes.Shown) {
        outcome.Boxes.push_back({box.Title, box.Text});
    }
    outcome.Loaded = windows.Loaded;
    for (std::size_t slot = 0; slot < windows.WindowSlots.size(); ++slot) {
        outcome.InUse[slot] = windows.WindowSlots[slot].InUse;
        outcome.SlotDevices[slot] = windows.WindowSlots[slot].DeviceId;
    }
    outcome.OpenWindowTop = windows.OpenWindowTop;
    outcome.CurrentWindow = windows.CurrentWindow;
    for (std::size_t slot = 0; slot <= NewSlot; ++slot) {
        const auto& window = windows.ControlWindows[slot];
        outcome.Titles.push_back(window == nullptr ? std::string() : window->Window.Caption());
        const std::string log = "remove window " + std::to_string(slot);
        outcome.Removed.insert(outcome.Removed.end(), static_cast<std::size_t>(std::ranges::count(world.Host.Log, log)),
                               static_cast<int>(slot));
    }
    for (int row = 0; row < program.List.Devices.Rows(); ++row) {
        outcome.Rows.push_back(Row(row));
    }
    outcome.Unconnected = program.State.DeviceUnconnected;
    outcome.Checked = program.Link.DeviceChecked;
    for (std::size_t id = 0; id < outcome.Found.size(); ++id) {
        outcome.Found[id] = program.State.SpeakerRecords[id].Found();
    }
    outcome.DeviceRow = program.State.DeviceRow;
    outcome.Labels = program.State.DeviceNames;
    outcome.Status = program.Main.StatusLine.Caption();
    outcome.Ended = world.Process.Ended;
    outcome.LinkReady = program.Link.LinkReady;
    outcome.TransactionDone = program.Link.TransactionDone;
    outcome.LoadingNotice = program.List.LoadingNotice.Visible();
    outcome.InputLen = world.Port.InputLen;
    outcome.NotAtRest = NotAtRest(world);
    outcome.Stores = std::make_shared<model::DeviceStores>(program.Stores);
    return outcome;
}

} // namespace nrv::testing
