#pragma once

#include <array>
#include <cstddef>

// How the device's channels, filters and sides are numbered, and how long its names are.

namespace nrv {

inline constexpr int ChannelCount = 8; ///< 0 In A, 1 In B, 2 to 7 Out 1 to Out 6
/// By channel, whatever names an image gives them.
inline constexpr std::array<const char*, ChannelCount> ChannelTitles{"In A",  "In B",  "Out 1", "Out 2",
                                                                     "Out 3", "Out 4", "Out 5", "Out 6"};
inline constexpr int InputCount = 2;
inline constexpr int OutputCount = ChannelCount - InputCount; ///< output = channel - 2
inline constexpr int PeqPerInput = 10;
inline constexpr int PeqPerOutput = 4;
inline constexpr int PeqOfInputs = InputCount * PeqPerInput;
inline constexpr int PeqCount = PeqOfInputs + OutputCount * PeqPerOutput;
inline constexpr int TonePerInput = 2; ///< low, high
inline constexpr int ToneOfInputs = InputCount * TonePerInput;
inline constexpr int ToneCount = ToneOfInputs + OutputCount;
inline constexpr int SidesPerOutput = 2; ///< high-pass, low-pass
inline constexpr int CrossoverCount = OutputCount * SidesPerOutput;
/// Controls of gain, mute, phase and delay: index c, and c + 8 on the channel's own tab.
inline constexpr int StripCount = 2 * ChannelCount;
inline constexpr int ViewsPerOutput = OutputCount - 1; ///< the other outputs that a graph can show
inline constexpr int SumsPerOutput = 3;                ///< alone, with In A, with In B

inline constexpr int MemoryPositions = 8;           ///< of the device, as the dialogs offer them
inline constexpr std::size_t MemoryNameLength = 16; ///< of a memory position, and of a device's label
inline constexpr std::size_t ChannelNameLength = 6;
inline constexpr std::size_t PasswordLength = 6;

// Arguments are integers in the range told; the result has the argument's type.

template <class I>
constexpr bool IsInput(I channel) {
    return channel < static_cast<I>(InputCount);
}
/// Output 0 to 5 of channel 2 to 7.
template <class I>
constexpr I OutputOf(I channel) {
    return static_cast<I>(channel - static_cast<I>(InputCount));
}
/// Channel of output 0 to 5.
template <class I>
constexpr I ChannelOfOutput(I output) {
    return static_cast<I>(output + static_cast<I>(InputCount));
}

/// Channel of PEQ section 0 to 43.
template <class I>
constexpr I ChannelOfPeq(I section) {
    return section < static_cast<I>(PeqOfInputs)
               ? static_cast<I>(section / PeqPerInput)
               : ChannelOfOutput(static_cast<I>((section - static_cast<I>(PeqOfInputs)) / PeqPerOutput));
}
/// Number of PEQ section 0 to 43 within its channel.
template <class I>
constexpr I PeqInChannel(I section) {
    return section < static_cast<I>(PeqOfInputs)
               ? static_cast<I>(section % PeqPerInput)
               : static_cast<I>((section - static_cast<I>(PeqOfInputs)) % PeqPerOutput);
}
/// First PEQ section of channel 0 to 7.
template <class I>
constexpr I FirstPeqOf(I channel) {
    return IsInput(channel) ? static_cast<I>(PeqPerInput * channel)
                            : static_cast<I>(PeqOfInputs + PeqPerOutput * OutputOf(channel));
}
/// Number of PEQ sections of channel 0 to 7.
template <class I>
constexpr I PeqCountOf(I channel) {
    return static_cast<I>(IsInput(channel) ? PeqPerInput : PeqPerOutput);
}

/// Tone filters 0 to 3 are the inputs'.
template <class I>
constexpr bool IsToneOfInput(I filter) {
    return filter < static_cast<I>(ToneOfInputs);
}
/// Channel of tone filter 0 to 9.
template <class I>
constexpr I ChannelOfTone(I filter) {
    return IsToneOfInput(filter) ? static_cast<I>(filter / TonePerInput)
                                 : ChannelOfOutput(static_cast<I>(filter - static_cast<I>(ToneOfInputs)));
}
/// Number of tone filter 0 to 9 within its channel.
template <class I>
constexpr I ToneInChannel(I filter) {
    return static_cast<I>(IsToneOfInput(filter) ? filter % TonePerInput : 0);
}
/// First tone filter of channel 0 to 7.
template <class I>
constexpr I FirstToneOf(I channel) {
    return IsInput(channel) ? static_cast<I>(TonePerInput * channel) : static_cast<I>(ToneOfInputs + OutputOf(channel));
}
/// Number of tone filters of channel 0 to 7.
template <class I>
constexpr I ToneCountOf(I channel) {
    return static_cast<I>(IsInput(channel) ? TonePerInput : 1);
}

/// Channel of crossover side 0 to 11.
template <class I>
constexpr I ChannelOfCrossover(I side) {
    return ChannelOfOutput(static_cast<I>(side / SidesPerOutput));
}
/// Crossover side 0 to 11 within its output: 0 high-pass, 1 low-pass.
template <class I>
constexpr I CrossoverInChannel(I side) {
    return static_cast<I>(side % SidesPerOutput);
}
/// The high-pass side of output 0 to 5; its low-pass side is the next.
template <class I>
constexpr I FirstSideOf(I output) {
    return static_cast<I>(SidesPerOutput * output);
}

/// Channel of control index 0 to 15, the controls of gain, mute, phase and delay being there twice.
template <class I>
constexpr I ChannelOfControl(I index) {
    return static_cast<I>(index < static_cast<I>(ChannelCount) ? index : index - static_cast<I>(ChannelCount));
}
/// The other control index of the same channel.
template <class I>
constexpr I TwinOfControl(I index) {
    return static_cast<I>(index < static_cast<I>(ChannelCount) ? index + static_cast<I>(ChannelCount)
                                                               : index - static_cast<I>(ChannelCount));
}

/// The output, 0 to 5, that the view box of a row, 0 to 4, stands for on an output's tab: the others in their order.
constexpr int ViewedOutput(int output, int row) {
    return row < output ? row : row + 1;
}

} // namespace nrv
