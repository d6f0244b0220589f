#include "program/fault_table.h"

#include <algorithm>
#include <cmath>

namespace nrv::testing {
namespace {

std::string IdText(int id) {
    return "ID:" + std::to_string(id);
}

/// The decimal that a person reads off the scale.
double Decimal(double value) {
    return std::round(value * 100.0) / 100.0;
}

double Hertz(std::uint8_t code) {
    return model::FrequencyTable.at(code);
}

int Held(int code, int top) {
    return std::min(code, top);
}

} // namespace

int Expectation::First(std::uint8_t command) const {
    const auto found = std::ranges::find_if(Steps, [command](const Step& step) { return step.Sent[3] == command; });
    return static_cast<int>(found - Steps.begin());
}

void Expectation::Report(int slot, int device, const std::string& undone) {
    const std::string id = IdText(device);
    After.Boxes.push_back({"Communication problem", " The system will be close the communication with this device"});
    After.Unconnected.at(static_cast<std::size_t>(device)) = true;
    const int row = After.DeviceRow.at(static_cast<std::size_t>(device));
    After.Rows.at(static_cast<std::size_t>(row)) = " Unconnected      " + id;
    if (slot != Operation::NoSlot) {
        Remove(slot);
    }
    After.Status = (PortWent() ? "The port went away; " : id + " does not answer; ") + undone + ". Double-click " +
                   (PortWent() ? "the row of " + id : "its row") + " to connect it again.";
    if (std::ranges::count(After.Loaded, true) > 0) {
        After.Status += " The meters rest until the next change.";
    }
    After.TransactionDone = false;
}

void Expectation::Remove(int slot) {
    After.Loaded.at(static_cast<std::size_t>(slot)) = false;
    After.InUse.at(static_cast<std::size_t>(slot)) = false;
    --After.OpenWindowTop;
    After.Removed.push_back(slot);
}

void Expectation::EndByTimeOut() {
    After.Boxes.push_back({"", "Time out"});
    After.Status = "ID:5 does not answer, waiting.";
    After.LinkReady = false;
    After.Ended = true;
    After.InputLen = link::BulkLength;
}

Expectation Expected(const FaultOperation& operation, const Outcome& before, std::vector<Step> steps,
                     const Trial& trial) {
    Expectation e;
    e.After = before;
    e.After.Stores = std::make_shared<model::DeviceStores>(*before.Stores);
    e.Steps = std::move(steps);
    e.Met = trial;
    e.After.Boxes = operation.Questions;
    if (operation.ByUser) {
        e.After.Status.clear();
    }
    const int count = static_cast<int>(e.Steps.size());
    for (int n = 0; n < count && !e.Stopped; ++n) {
        const Step& step = e.Steps[static_cast<std::size_t>(n)];
        const Course course = n == trial.At ? CourseOf(step.Kind, trial.Kind) : Course{};
        e.After.Sent.insert(e.After.Sent.end(), static_cast<std::size_t>(course.Transmissions), step.Sent);
        e.Stopped = !course.GoesThrough;
        if (step.Kind != Exchange::Bulk && step.Kind != Exchange::Probe) {
            e.After.TransactionDone = course.GoesThrough && step.Kind != Exchange::WithoutReply;
        }
        e.Through += e.Stopped ? 0 : 1;
    }
    if (e.Stopped && !operation.OwnRoad) {
        std::string undone = "the change was not sent";
        if (!operation.Called.empty()) {
            undone = operation.Called + " stopped";
            if (operation.Counted) {
                undone += " after " + std::to_string(e.Through) + " of " + std::to_string(count) + " frames";
            }
        }
        e.Report(operation.Slot, operation.Device, undone);
    }
    operation.Expect(e);
    return e;
}

Body BodyOf(const model::PresetImageRow& image) {
    return image.PresetBody;
}

void PutBody(model::PresetImageRow& image, const Body& body) {
    image.PresetBody = body;
}

void TakeParameters(model::ParamRow& values, const Body& body) {
    using L = ImageLayout;
    std::size_t section = 0;
    std::size_t filter = 0;
    for (int c = 0; c < 8; ++c) {
        const auto channel = static_cast<std::size_t>(c);
        values.ChannelGain[channel] = Decimal(-12.0 + 0.2 * Held(body[L::Gain(c)], 120));
        values.ChannelPhase[channel] = body[L::Phase(c)] != 0 ? 1.0 : 0.0;
        values.DelayCoarse[channel] = 256.0 * body[L::Delay(c)] + body[L::Delay(c) + 1];
        values.DelayFine[channel] = body[L::Delay(c) + 2];
        values.LimiterAttack[channel] = body[L::Dynamics(c)];
        values.LimiterRelease[channel] = body[L::Dynamics(c) + 1];
        values.LimiterThreshold[channel] = body[L::Dynamics(c) + 3];
        for (int n = 0; n < L::PeqCount(c); ++n, ++section) {
            const std::size_t block = L::Peq(c, n);
            values.PeqGain[section] = Decimal(-15.0 + 0.2 * Held(body[block + 4], 150));
            values.PeqFrequency[section] = Hertz(body[block + 1]);
            values.PeqBandwidth[section] = Decimal(0.05 * (Held(body[block + 2], 59) + 1));
        }
        for (int n = 0; n < L::ToneCount(c); ++n, ++filter) {
            const std::size_t block = L::Tone(c, n);
            values.ToneGain[filter] = Decimal(-12.0 + 0.5 * Held(body[block + 4], 36));
            values.ToneFrequency[filter] = Hertz(body[block + 1]);
            values.ToneType[filter] = body[block + 2];
        }
    }
    for (int output = 0; output < 6; ++output) {
        const auto x = static_cast<std::size_t>(output);
        values.OutputSource[x] = body[L::Source(output)];
        for (const int side : {0, 1}) {
            const std::size_t block = L::Crossover(output, side);
            const std::size_t s = 2 * x + static_cast<std::size_t>(side);
            values.CrossoverFrequency[s] = Hertz(body[block + 1]);
            values.CrossoverSlope[s] = body[block + 2];
        }
    }
    values.MasterGain = Decimal(-12.0 + 0.2 * Held(body[L::Master], 120));
}

void TakeMutes(model::ParamRow& values, int bits) {
    for (std::size_t channel = 0; channel < 8; ++channel) {
        values.ChannelMute[channel] = (bits >> channel) & 1;
    }
}

void TakeOptions(model::ParamRow& values, int bits) {
    values.MuteWithPreset = (bits >> 2) & 1;
    values.OptionBit3 = (bits >> 3) & 1;
    values.InputType = (bits >> 4) & 1;
    values.OptionBit5 = (bits >> 5) & 1;
    values.DelayUnit = (bits >> 6) & 1;
}

void PutMutes(model::PresetImageRow& image, int bits) {
    image.SystemPage[18] = static_cast<std::uint8_t>(bits);
    image.PresetBody[ImageLayout::Mutes] = static_cast<std::uint8_t>(bits);
}

std::string NameIn(const Body& body, int channel) {
    const auto first = body.begin() + static_cast<std::ptrdiff_t>(ImageLayout::Name(channel));
    return {first, first + 6};
}

Body StaleBody(const Body& before, int last_value) {
    static const Bytes ListedLast = FaultWorld().line.Devices.at(FaultWorld::Behind).Preset;
    const Bytes answer{0, 0, 0, 0, 0xC3, 0, 0, 0, static_cast<std::uint8_t>(last_value), 0, 0, 0, 0};
    Body body = before;
    std::ranges::copy(ListedLast, body.begin());
    std::ranges::copy(answer, body.begin());
    return body;
}

Body ShiftedBody(const Body& before, const Bytes& preset) {
    Body body = before;
    std::ranges::copy(WrongAnswer, body.begin());
    std::copy_n(preset.begin(), 432 - 13, body.begin() + 13);
    return body;
}

std::vector<Step> StepsOf(const std::vector<Frame>& frames) {
    std::vector<Step> steps;
    for (const Frame& frame : frames) {
        steps.push_back({frame, Exchange::Ordinary});
    }
    return steps;
}

} // namespace nrv::testing
