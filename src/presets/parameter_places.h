#pragma once

#include "model/device_stores.h"
#include "ports/channels.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace nrv::presets {

/// What a preset is made of, in the order in which a load brings it to life.
enum class ParameterKind {
    Mute,        ///< of each channel
    InputType,   ///< one
    Source,      ///< of each output
    Threshold,   ///< of each channel's noise gate or limiter, as the two that follow
    Release,     //
    Attack,      //
    Crossover,   ///< of each crossover side
    Peq,         ///< each section
    Tone,        ///< each tone filter
    Phase,       ///< of each channel
    Delay,       ///< of each channel; an index from `ChannelCount` on is its second copy of controls
    DelayUnit,   ///< one
    Gain,        ///< of each channel
    ChannelName, ///< of each output
    MasterGain,  ///< one
};

struct Parameter {
    ParameterKind Kind = ParameterKind::Mute;
    int Index = 0;
    friend bool operator==(const Parameter&, const Parameter&) = default;
};

/// Every parameter once, in the order of a load.
const std::vector<Parameter>& Parameters();

/// Bits of one byte of an image.
struct ImageBits {
    std::size_t Byte; ///< of the whole row of `PresetImage`, 0 to 770
    std::uint8_t Bits;
};

/// The bytes of one parameter, in a value of its own: two images are compared after each event of a user.
class ImagePlaces {
  public:
    void Add(ImageBits place) { places_.at(count_++) = place; }

    const ImageBits* begin() const { return places_.data(); }
    const ImageBits* end() const { return begin() + count_; }
    std::size_t size() const { return count_; }
    const ImageBits& operator[](std::size_t n) const { return places_[n]; }

  private:
    static constexpr std::size_t Most = ChannelNameLength;

    std::array<ImageBits, Most> places_{};
    std::size_t count_ = 0;
};

/// Where a parameter is kept.
ImagePlaces PlacesOf(Parameter parameter);
/// Whether two images have it differently.
bool Differs(Parameter parameter, const model::PresetImageRow& one, const model::PresetImageRow& other);

/// Those that two images have differently, in the order of a load.
std::vector<Parameter> Differing(const model::PresetImageRow& one, const model::PresetImageRow& other);

} // namespace nrv::presets
