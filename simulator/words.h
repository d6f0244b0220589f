#pragma once

#include "simulator/protocol.h"

#include <span>
#include <string>
#include <string_view>

/// Frames in words, for whoever watches the line.
namespace nrv::simulator {

/// What a request asks for, such as "Gain of Out 2: code 61 (0.2 dB)".
std::string DescribeRequest(const Frame& request);

/// What an answer says, such as "432 bytes of preset" or "Value 32".
std::string DescribeAnswer(const Frame& request, std::span<const Byte> answer);

/// Whole lines of a trace: "-> ID 5  Gain of ...", "<- ID 5  Obeyed", with a note on what was spoilt in brackets.
std::string RequestInWords(const Frame& request);
std::string AnswerInWords(const Frame& request, std::span<const Byte> answer, std::string_view note = {});
std::string NoAnswerInWords(const Frame& request, std::string_view reason);

} // namespace nrv::simulator
