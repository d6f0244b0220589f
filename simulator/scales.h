#pragma once

#include <string>

/// What the codes of the parameters mean to a person.
namespace nrv::simulator {

/// Each gives the code and its value, "code 61 (0.2 dB)"; a code outside its range reads "code 200 (out of range)".
std::string GainCode(int code);
std::string PeqGainCode(int code);
std::string ToneGainCode(int code);
std::string FrequencyCode(int code);
std::string BandwidthCode(int code);
std::string SlopeCode(int code);
std::string ToneTypeCode(bool input, int code);
std::string ThresholdCode(bool input, int code);
std::string AttackCode(int code);
std::string ReleaseCode(int code);
std::string SourceCode(int code);
/// "20 ms" and the like, from the whole milliseconds and the fine code.
std::string DelayCodes(int coarse, int fine);

} // namespace nrv::simulator
