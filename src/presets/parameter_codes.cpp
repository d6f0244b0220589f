#include "presets/parameter_codes.h"

#include "model/encodings.h"
#include "model/tables.h"
#include "ports/numbering.h"

#include <bit>

namespace nrv::presets {
namespace {

using enum ParameterKind;

CodePlace Whole(std::size_t field, std::size_t byte, int top) {
    return {field, byte, 1, 0xFF, top};
}

CodePlace Bit(const ImageBits& bits) {
    return {0, bits.Byte, 1, bits.Bits, 1};
}

int LastOf(const controls::List& list) {
    return static_cast<int>(list.Items().size()) - 1;
}

} // namespace

std::vector<CodePlace> CodesOf(Parameter parameter, const controls::FrmCtrl& form) {
    const std::size_t i = At(parameter.Index);
    const ImagePlaces places = PlacesOf(parameter);
    const std::size_t first = places[0].Byte;
    switch (parameter.Kind) {
    case Mute:
    case InputType:
    case DelayUnit:
        return {Bit(places[0])};
    case Source:
        return {Whole(0, first, LastOf(form.Combo3[i]))};
    case Threshold:
        return {Whole(0, first, IsInput(i) ? model::NoiseGateThresholdTop : model::LimiterThresholdTop)};
    case Release:
        return {Whole(0, first, model::ReleaseTop)};
    case Attack:
        return {Whole(0, first, model::AttackTop)};
    case Crossover:
        return {Whole(0, first, model::FrequencyTop), Whole(1, places[1].Byte, LastOf(form.Combo2[i]))};
    case Peq:
        return {Whole(0, places[2].Byte, model::PeqGainTop), Whole(1, first, model::FrequencyTop),
                Whole(2, places[1].Byte, model::BandwidthTop)};
    case Tone:
        return {Whole(0, places[2].Byte, model::ToneGainTop), Whole(1, first, model::FrequencyTop),
                Whole(2, places[1].Byte, LastOf(form.Combo1[i]))};
    case Phase:
        return {Whole(0, first, 1)};
    case Delay:
        return {{0, first, 2, 0xFF, model::DelayCoarseTop}, Whole(0, places[2].Byte, model::DelayFineTop)};
    case Gain:
    case MasterGain:
        return {Whole(0, first, model::ChannelGainTop)};
    case ChannelName:
        return {};
    }
    return {};
}

int CodeIn(const model::PresetImageRow& image, const CodePlace& place) {
    int code = 0;
    for (std::size_t n = 0; n < place.Bytes; ++n) {
        code = 256 * code + (BytesOf(image)[place.Byte + n] & place.Bits);
    }
    return code >> std::countr_zero(place.Bits);
}

void PutCode(model::PresetImageRow& image, const CodePlace& place, int code) {
    unsigned rest = static_cast<unsigned>(code) << static_cast<unsigned>(std::countr_zero(place.Bits));
    for (std::size_t n = place.Bytes; n > 0; --n) {
        std::uint8_t& byte = BytesOf(image)[place.Byte + n - 1];
        byte = static_cast<std::uint8_t>((byte & ~place.Bits) | (rest & place.Bits));
        rest >>= 8U;
    }
}

} // namespace nrv::presets
