#include "model/device_stores.h"

#include "model/encodings.h"
#include "model/tables.h"

namespace nrv::model {

std::uint8_t RebuildOptionBits(const ParamRow& row) {
    return ToByte(row.MuteWithPreset * MuteWithPresetBit + row.OptionBit3 * OptionBit3Bit +
                  row.InputType * InputTypeBit + row.OptionBit5 * OptionBit5Bit + row.DelayUnit * DelayUnitBit +
                  row.LockFlag * LockFlagBit);
}

void DecodeOptionBits(std::uint8_t option_bits, ParamRow& row) {
    row.MuteWithPreset = DecodeBit(option_bits, 2);
    row.OptionBit3 = DecodeBit(option_bits, 3);
    row.InputType = DecodeBit(option_bits, 4);
    row.OptionBit5 = DecodeBit(option_bits, 5);
    row.DelayUnit = DecodeBit(option_bits, 6);
}

void DecodeLockFlag(std::uint8_t option_bits, ParamRow& row) {
    row.LockFlag = DecodeBit(option_bits, 7);
}

void DecodeMuteBits(std::uint8_t mute_bits, ParamRow& row) {
    for (std::size_t channel = 0; channel < row.ChannelMute.size(); ++channel) {
        row.ChannelMute[channel] = DecodeBit(mute_bits, static_cast<int>(channel));
    }
}

std::uint8_t SumOfMutes(const ParamRow& row) {
    double sum = 0.0;
    for (std::size_t channel = 0; channel < row.ChannelMute.size(); ++channel) {
        sum += row.ChannelMute[channel] * BitMasks[channel];
    }
    return ToByte(sum);
}

void StoreMuteBits(std::uint8_t mute_bits, PresetImageRow& image) {
    image.SystemPage[MuteBitsAddress] = mute_bits;
    image.PresetBody[MuteBitsCopy] = mute_bits;
}

} // namespace nrv::model
