#pragma once

#include "presets/parameter_words.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace nrv::tool {

/// One value of a preset by the key under which it is set, such as "out2.peq3.gain".
struct KeyedField {
    std::string Key;
    std::string Place;          ///< such as "Out 2, PEQ 3"; empty of the device's own
    std::optional<int> Channel; ///< none of the device's own
    presets::Parameter Parameter;
    std::size_t Index; ///< of the parameter's fields
};

/// Every value, in the order in which it is shown: the device's own, then channel by channel.
const std::vector<KeyedField>& AllFields();

/// The key that a typed one means: letters of any size, "freq" and "bw" for short.
std::string KeyFromTyped(std::string_view typed);

/// The channel of a title, a key or a number of its own, such as "Out 2", "out2"; throws Trouble for another.
int ChannelFromTyped(const std::string& typed);

} // namespace nrv::tool
