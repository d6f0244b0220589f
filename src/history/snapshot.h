#pragma once

#include "model/command_context.h"
#include "model/preset_image.h"
#include "response/response.h"

#include <string>
#include <vector>

namespace nrv::history {

/// What a step of the user's can change of a device and of its window, and what cannot be worked out from that: its
/// image, and texts and values that the image does not tell.
struct Snapshot {
    model::PresetImageRow Image;
    std::vector<std::string> Extras; ///< by the places in `extra`
};

/// What the entries of `Snapshot::Extras` are.
namespace extra {
inline constexpr std::size_t DelayTexts = 0; ///< a copy that shows a number without its unit until the next change
inline constexpr std::size_t BandwidthTexts = DelayTexts + StripCount; ///< one that was typed may stay as it was typed
inline constexpr std::size_t Names = BandwidthTexts + PeqCount;        ///< as they were typed, not as they are padded
inline constexpr std::size_t Sockets = Names + ChannelCount; ///< captions that stand crosswise until a choice is made
inline constexpr std::size_t Title = Sockets + InputCount;
inline constexpr std::size_t Options = Title + 1; ///< five option bits as `ParamValues` has them
inline constexpr std::size_t LastInputType = Options + 5;
inline constexpr std::size_t InputTypeOfRow0 = LastInputType + 1; ///< which a load from a file writes for any device
inline constexpr std::size_t ViewModes = InputTypeOfRow0 + 1;
inline constexpr std::size_t Overlays = ViewModes + 1;
inline constexpr std::size_t Sums = Overlays + 1; ///< which button of each output shows, whatever its view mode
inline constexpr std::size_t Count = Sums + 1;
} // namespace extra

/// Of the current window and its device.
Snapshot Take(const model::CommandContext& context, const response::Response& response);

/// Brings the current window, its device and what the program holds of it from one snapshot to another, as far as they
/// are still as the first one has them: what was changed since by something that is no step stays. Each parameter that
/// differs is shown and sent by its own command, in the order of a load, and no other; all else is put back as it was.
void Bring(const model::CommandContext& context, response::Response& response, const Snapshot& from,
           const Snapshot& to);

/// How many frames that sends.
int FramesBetween(const Snapshot& from, const Snapshot& to);

/// The settings of `preset` over all else of `now`, such as the title and the names of memory positions.
Snapshot SettingsOver(const Snapshot& now, const Snapshot& preset);

} // namespace nrv::history
