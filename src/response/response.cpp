#include "response/response.h"

#include "model/tables.h"
#include "ports/numbering.h"
#include "response/filters.h"

#include <algorithm>

namespace nrv::response {
namespace {

// A list position past the list's end stands for the entry that the list shows, its nearest.
constexpr double LastSlope = 10.0;
constexpr double LastInputTone = 2.0;
constexpr double LastOutputTone = 4.0;

Shelf ShelfOf(const model::ParamRow& values, int filter) {
    const std::size_t h = At(filter);
    return {KindOfShelf(filter, values.ToneType[h]), values.ToneGain[h], values.ToneFrequency[h]};
}

} // namespace

ShelfKind KindOfShelf(int filter, double position) {
    const bool of_input = IsToneOfInput(filter);
    const int type = static_cast<int>(std::clamp(position, 0.0, of_input ? LastInputTone : LastOutputTone));
    const bool high_of_input = of_input && filter % 2 == 1;
    return static_cast<ShelfKind>(high_of_input && type > 0 ? type + 2 : type);
}

void Response::UpdatePeqCurve(int section) {
    const std::size_t s = At(section);
    const int channel = ChannelOfPeq(section);
    DrawBackground(channel);
    // Q comes from the position of the bandwidth control, not from the stored bandwidth.
    const double q = model::Entry(model::QTable, windows_.Current().UpDown3[s].Shown());
    Evaluate(Bell{Values().PeqGain[s], Values().PeqFrequency[s], q}, Curves().FillPeq(section));
    DrawOverlay(channel, channel);
}

void Response::UpdateShelfCurve(int filter) {
    const int channel = ChannelOfTone(filter);
    DrawBackground(channel);
    Evaluate(ShelfOf(Values(), filter), Curves().FillShelf(filter));
    DrawOverlay(channel, channel);
}

void Response::UpdateCrossoverCurve(int side) {
    const std::size_t x = At(side);
    const int channel = ChannelOfCrossover(side);
    DrawBackground(channel);
    const Side pass_side = CrossoverInChannel(side) == 0 ? Side::HighPass : Side::LowPass;
    const int slope = static_cast<int>(std::clamp(Values().CrossoverSlope[x], 0.0, LastSlope));
    Evaluate(Crossover{pass_side, slope, Values().CrossoverFrequency[x]}, Curves().FillCrossover(side));
    DrawOverlay(channel, channel);
}

double Response::ShelfResponse(int filter, double hz) const {
    return Level(ShelfOf(Values(), filter), hz);
}

} // namespace nrv::response
