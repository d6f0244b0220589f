#pragma once

#include "model/preset_image.h"
#include "support/scripted_ports.h"

#include <string>

namespace nrv::fuzz {

/// What is wrong with a frame, in words; empty when it names what there is and carries what the device's image holds.
std::string FaultOf(const testing::Frame& frame, const model::PresetImageRow& image);

/// The same for codes beyond their range; only an image that holds such codes may send them.
std::string CodeFaultOf(const testing::Frame& frame);

/// Every code of the image is one that its control can show.
bool CodesFit(const model::PresetImageRow& image);

} // namespace nrv::fuzz
