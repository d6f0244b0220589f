#include "response/curve_store.h"

#include "model/device_stores.h"

namespace nrv::response {
namespace {

void Add(Curve& sum, const Curve& part) {
    for (std::size_t point = 0; point < GridPoints; ++point) {
        sum[point] += part[point];
    }
}

} // namespace

void WindowCurves::Sum(int channel) {
    const auto c = static_cast<std::size_t>(channel);
    const std::size_t first = FirstPeqOf(c);
    Curve& sum = sums_[c];
    sum = sections_[first];
    for (std::size_t s = first + 1; s < first + PeqCountOf(c); ++s) {
        Add(sum, sections_[s]);
    }
    for (std::size_t h = FirstToneOf(c); h < FirstToneOf(c) + ToneCountOf(c); ++h) {
        Add(sum, shelves_[h]);
    }
    if (!IsInput(c)) {
        for (std::size_t x = 0; x < SidesPerOutput; ++x) {
            Add(sum, crossovers_[FirstSideOf(OutputOf(c)) + x]);
        }
    }
    stale_[c] = false;
}

} // namespace nrv::response
