#pragma once

#include "program/fault_world.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace nrv::testing {

/// How things stand after an operation, worked out from how they stood before it.
struct Expectation {
    Outcome After;           ///< begins as the state before
    std::vector<Step> Steps; ///< of a run without a fault
    Trial Met;
    int Through = 0;      ///< exchanges that went through
    bool Stopped = false; ///< one did not

    model::ParamRow& Values(int id) { return After.Stores->ParamValues[static_cast<std::size_t>(id)]; }
    model::PresetImageRow& Image(int id) { return After.Stores->PresetImage[static_cast<std::size_t>(id)]; }
    std::array<std::string, 8>& Names(int id) { return After.Stores->ChannelNames[static_cast<std::size_t>(id)]; }
    bool PortWent() const { return Met.Kind == Fault::GoneBefore || Met.Kind == Fault::GoneWaiting; }
    /// Where the frame with a command stands first; their number when there is none.
    int First(std::uint8_t command) const;
    /// Steps that went through, or a number that a counted one has.
    bool Passed(int step) const { return step < Through; }

    /// No bulk reply came in all that time.
    void EndByTimeOut();
    /// The one report of a final failure: the box, the device's row and flag, its window.
    void Report(int slot, int device, const std::string& undone);
    void Remove(int slot);
};

/// All that one event sets going, and what it makes of the program without and with a fault.
struct FaultOperation {
    std::string Name;
    int Exchanges = 1; ///< of a run without faults
    std::function<void(FaultWorld&)> Event;
    /// The exchanges, from what holds before the event.
    std::function<std::vector<Step>(FaultWorld&)> Steps;
    /// What the stores, and the title after a whole run, are to be.
    std::function<void(Expectation&)> Expect;

    std::vector<ShownBox> Questions = {}; ///< answered Yes before the first exchange
    std::string Called = {};              ///< in the status line; empty for a change
    bool Counted = false;                 ///< with how far it came
    std::function<void(FaultWorld&)> Prepare = {};
    int Slot = FaultWorld::FrontSlot;
    int Device = FaultWorld::Front;
    bool ByUser = true;
    bool Answered = true; ///< its frames are
    bool OwnRoad = false; ///< Expect tells of failures too
    std::vector<std::pair<std::string, int>> FurtherPlaces = {};
    /// What else is to be seen in the windows.
    std::function<void(FaultWorld&, const Expectation&)> AlsoSee = {};
};

std::vector<FaultOperation> ChangeOperations();
std::vector<FaultOperation> PresetOperations();
std::vector<FaultOperation> ToolOperations();
std::vector<FaultOperation> OpeningOperations();
std::vector<FaultOperation> HistoryOperations();

/// What is to be after the operation met the fault.
Expectation Expected(const FaultOperation& operation, const Outcome& before, std::vector<Step> steps,
                     const Trial& trial);

// The stores as a second reading of the image has them.

Body BodyOf(const model::PresetImageRow& image);
void PutBody(model::PresetImageRow& image, const Body& body);
/// Every parameter of a preset but mutes and options.
void TakeParameters(model::ParamRow& values, const Body& body);
void TakeMutes(model::ParamRow& values, int bits);
/// Bit 7, the lock, stays.
void TakeOptions(model::ParamRow& values, int bits);
/// The mute bits in both of their places.
void PutMutes(model::PresetImageRow& image, int bits);
/// The six characters of a channel's name in an image.
std::string NameIn(const Body& body, int channel);

/// The body taken from the buffer when no bulk reply came: the short answer to a read of memory, and behind it the
/// image that was listed last.
Body StaleBody(const Body& before, int last_value);
/// The body taken when another device's 13 bytes stand before the reply.
Body ShiftedBody(const Body& before, const Bytes& preset);

/// Steps of ordinary frames.
std::vector<Step> StepsOf(const std::vector<Frame>& frames);
inline std::vector<Step> OneStep(int id, const std::vector<int>& payload, Exchange kind = Exchange::Ordinary) {
    return {{FrameTo(id, payload), kind}};
}
inline constexpr const char* AreYouSure = "               Are you sure ? ";

} // namespace nrv::testing
