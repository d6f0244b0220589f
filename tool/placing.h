#pragma once

#include "model/preset_image.h"
#include "presets/parameter_places.h"
#include "response/plot_grid.h"
#include "tool/filter_text.h"

#include <vector>

namespace nrv::tool {

/// A filter of the device that plays one or more of those asked for.
struct PlacedFilter {
    presets::Parameter Parameter;
    std::vector<AskedFilter> Asked;
};

/// What came of a text: where its filters play, and what plays nowhere.
struct Placing {
    std::vector<PlacedFilter> Filters;
    std::vector<LineNote> Refused;
};

/// Puts each filter into a section, shelf or side of a channel, on the nearest codes. All sections of the channel
/// become flat first; shelves and sides that nothing asks for stay.
Placing Place(const FilterText& text, int channel, model::PresetImageRow& image);

/// The curve that was asked for and the one that the device plays of the same filters, and how far they are apart from
/// 20 Hz to 20 kHz.
struct Difference {
    double Largest = 0.0; ///< dB
    double AtHz = 0.0;
    double Mean = 0.0; ///< dB, over the logarithm of the frequency
};
response::Curve AskedCurve(const Placing& placing);
Difference DifferenceOf(const response::Curve& asked, const response::Curve& played);

/// An image in which nothing of the channel plays but these filters.
model::PresetImageRow OnlyFilters(const Placing& placing, int channel, const model::PresetImageRow& image);

/// Looks for the codes nearby that make the mean difference smallest, the largest growing no larger.
void Fit(const Placing& placing, model::PresetImageRow& image);

} // namespace nrv::tool
