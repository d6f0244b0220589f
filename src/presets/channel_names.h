#pragma once

#include "controls/text_box.h"
#include "model/command_context.h"
#include "response/response.h"

#include <array>
#include <string>

namespace nrv::presets {

/// What the names dialog's text boxes hold, by channel.
using NameTexts = std::array<std::string, ChannelCount>;

/// A name as the device keeps it: six characters, a shorter one in the middle of blanks.
std::string PaddedName(std::string name);

/// Centres a name of fewer than six characters in six, in place, and puts an output's first six characters into the
/// image. The image is never written with an input's name: its bytes serve other purposes.
void PadChannelName(const model::CommandContext& context, std::string& name, int channel);

/// Names one channel: of an output its device and its image too. True when the link failed for good. Whatever quotes
/// the name follows with `QuoteNames`.
bool NameChannel(const model::CommandContext& context, int channel, const std::string& name);
/// Writes the names into the captions that quote them.
void QuoteNames(const model::CommandContext& context, const response::Response& response);

/// Sends the outputs' names and brings every caption that quotes a name into line; the tab strip is left on the last
/// channel's tab. A reported link failure ends it where it stands.
void ApplyChannelNames(const model::CommandContext& context, const response::Response& response,
                       const NameTexts& texts);

} // namespace nrv::presets
