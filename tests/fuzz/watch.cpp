#include "fuzz/watch.h"

#include "fuzz/frames.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <filesystem>
#include <span>

namespace nrv::fuzz {
namespace {

using testing::Bytes;
using testing::Frame;

constexpr std::size_t IdByte = 2;
constexpr std::size_t CommandByte = 3;

/// How long and how often a frame is asked for.
struct Limits {
    long Ticks;
    int Transmissions;
};

constexpr Limits LimitsOf(std::uint8_t command) {
    switch (command) {
    case 0: // a check; a probe's time is its timer's
        return {5, 2};
    case link::PresetReadCommand:
        return {19, 6};
    default:
        return {10, 5};
    }
}

bool IsReport(const MessageBox& box) {
    return box.Text == " The system will be close the communication with this device";
}

bool InRange(double value, double lowest, double highest) {
    return value >= lowest && value <= highest; // and a number at all
}

bool AllInRange(std::span<const double> values, double lowest, double highest) {
    return std::ranges::all_of(values, [&](double value) { return InRange(value, lowest, highest); });
}

void LookAtValues(const model::ParamRow& values) {
    constexpr double Lowest = 20.0;
    constexpr double Highest = 20000.0;
    Require(AllInRange(values.PeqGain, -15.0, 15.0), "a gain of a section is out of range");
    Require(AllInRange(values.PeqFrequency, Lowest, Highest), "a frequency of a section is out of range");
    Require(AllInRange(values.PeqBandwidth, 0.05, 3.0), "a bandwidth is out of range");
    Require(AllInRange(values.ToneGain, -12.0, 6.0), "a gain of a tone filter is out of range");
    Require(AllInRange(values.ToneFrequency, Lowest, Highest), "a frequency of a tone filter is out of range");
    Require(AllInRange(values.CrossoverFrequency, Lowest, Highest), "a crossover frequency is out of range");
    Require(AllInRange(values.ChannelGain, -12.0, 12.0), "a channel's gain is out of range");
    Require(AllInRange(values.ChannelMute, 0.0, 1.0), "a mute is out of range");
    Require(AllInRange(values.ChannelPhase, 0.0, 1.0), "a phase is out of range");
    Require(AllInRange(values.DevicePassword, 0.0, 255.0), "a password's character is out of range");
}

void LookAtWindows(const controls::Windows& windows) {
    int open = 0;
    std::array<bool, DeviceCount> shown{};
    for (std::size_t slot = 0; slot < windows.WindowSlots.size(); ++slot) {
        if (!windows.Loaded[slot]) {
            Require(!windows.WindowSlots[slot].InUse, "a slot without a window is in use");
            continue;
        }
        ++open;
        const int id = windows.WindowSlots[slot].DeviceId;
        Require(windows.WindowSlots[slot].InUse, "the slot of a window is not in use");
        Require(IsDeviceId(id), "a window is of no device");
        Require(!shown[At(id)], "a device has two windows");
        shown[At(id)] = true;
    }
    Require(windows.OpenWindowTop == open - 1, "the open windows are counted wrong");
    Require(windows.CurrentWindow >= 0 && windows.CurrentWindow < controls::SlotCount, "there is no current window");
}

} // namespace

void Break(const std::string& what) {
    std::fprintf(stderr, "FUZZ: %s\n", what.c_str());
    std::abort();
}

void UseMemoryForFiles() {
    std::error_code ignored;
    if (std::filesystem::is_directory("/dev/shm", ignored)) {
        setenv("TMPDIR", "/dev/shm", 1);
    }
}

const testing::TestFolder& MemoryFolder() {
    static const testing::TestFolder folder = [] {
        UseMemoryForFiles();
        return testing::TestFolder();
    }();
    return folder;
}

Watch::Watch(testing::TestProgram& world) : world_(world) {
    world_.Port.Answer = [this](const Frame& frame) { return Transmitted(frame); };
    world_.Port.OnPoll = [this] { Polled(); };
    world_.Program.Link.Answered = [this, before = world_.Program.Link.Answered] {
        transmissions_ = 0;
        if (before) {
            before();
        }
    };
}

Bytes Watch::Transmitted(const Frame& frame) {
    Require(world_.Port.WholeFrames, "what was sent is no frame");
    Require(frame[0] == 0xF0 && frame[1] == 0xC3 && frame.back() == 0xF7, "a frame has no head or end");
    Require(IsDeviceId(frame[IdByte]), "a frame is for no device");
    Require(!world_.Program.Link.DemoMode && !world_.Program.Link.TxSuppressed, "a frame was not to be sent");
    Require(!world_.Program.Events.Current().Reported(), "a frame was sent after the report");
    const model::PresetImageRow& image = world_.Program.Stores.PresetImage[frame[IdByte]];
    std::string fault = FaultOf(frame, image);
    if (fault.empty() && CodesFit) {
        fault = CodeFaultOf(frame);
    }
    if (!fault.empty()) {
        Break("frame of command " + std::to_string(frame[CommandByte]) + ": " + fault);
    }
    transmissions_ = frame == last_ ? transmissions_ + 1 : 1;
    last_ = frame;
    Require(transmissions_ <= LimitsOf(frame[CommandByte]).Transmissions, "a frame was sent too often");
    transmitted_at_ = world_.Clock.Seconds;
    return Answer ? Answer(frame) : Bytes{};
}

void Watch::Polled() {
    const std::uint8_t command = last_[CommandByte];
    if (command == 0 && world_.Program.Main.SerialTimer.Running()) {
        Require(!world_.Program.Link.SerialTimeUp, "a probe waits on");
    } else {
        // The clock moved by this look: what counts is the time before it.
        Require(world_.Clock.Seconds - world_.Port.SecondsPerPoll - transmitted_at_ < LimitsOf(command).Ticks,
                "an exchange goes past its time");
    }
    if (Poll) {
        Poll();
    }
}

bool Watch::Run(const controls::EventSource& source, const std::function<void()>& event) {
    const std::size_t first = world_.Boxes.Shown.size();
    const int before = ++events_;
    if (depth_ == 0) {
        told_ = first;
        transmissions_ = 0;
    }
    ++depth_;
    bool ran = false;
    try {
        ran = world_.Program.Events.Run(source, event);
    } catch (const std::exception& error) {
        Break(std::string("an exception left the boundary: ") + error.what());
    } catch (...) {
        Break("something left the boundary");
    }
    --depth_;
    if (events_ == before) {
        LookAtBoxes(first);
    }
    if (depth_ == 0) {
        LookAtRest();
    }
    return ran;
}

void Watch::Forget() {
    world_.Port.Sent.clear();
    world_.Port.Log.clear();
    world_.Host.Log.clear();
    world_.Files.Log.clear();
    world_.Boxes.Shown.clear();
    world_.Boxes.Answers.clear();
    world_.Process.Slept = 0;
}

/// Of one event, with no other inside it.
void Watch::LookAtBoxes(std::size_t first) const {
    const auto& shown = world_.Boxes.Shown;
    for (std::size_t box = first; box < shown.size(); ++box) {
        for (std::size_t later = box + 1; later < shown.size(); ++later) {
            Require(shown[box].Text != shown[later].Text || shown[box].Title != shown[later].Title,
                    "a box is shown twice");
        }
    }
}

void Watch::LookAtRest() const {
    const std::vector<std::string> left = testing::NotAtRest(world_);
    if (!left.empty()) {
        Break("left behind: " + left.front());
    }
    const auto& shown = world_.Boxes.Shown;
    for (std::size_t box = told_; box + 1 < shown.size(); ++box) {
        Require(!IsReport(shown[box]), "a box follows the report");
    }
    LookAtWindows(world_.Program.Windows);
    for (std::size_t slot = 0; slot < controls::SlotCount; ++slot) {
        if (world_.Program.Windows.Loaded[slot]) {
            LookAtValues(world_.Program.Stores.ParamValues[At(world_.Program.Windows.WindowSlots[slot].DeviceId)]);
        }
    }
}

} // namespace nrv::fuzz
