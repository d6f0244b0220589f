#include "response/curve_store.h"

#include "model/device_stores.h"

namespace nrv::response {
namespace {

constexpr std::size_t InputCount = 2;

void Add(Curve& sum, const Curve& part) {
    for (std::size_t point = 0; point < GridPoints; ++point) {
        sum[point] += part[point];
    }
}

} // namespace

void WindowCurves::Sum(int channel) {
    const std::size_t c = static_cast<std::size_t>(channel);
    const std::size_t first = model::FirstPeqOf(c);
    Curve& sum = sums_[c];
    sum = PeqCurve[first];
    for (std::size_t s = first + 1; s < first + model::PeqCountOf(c); ++s) {
        Add(sum, PeqCurve[s]);
    }
    if (c < InputCount) {
        Add(sum, ShelfCurve[2 * c]);
        Add(sum, ShelfCurve[2 * c + 1]);
    } else {
        const std::size_t output = c - InputCount;
        Add(sum, ShelfCurve[4 + output]);
        Add(sum, CrossoverCurve[2 * output]);
        Add(sum, CrossoverCurve[2 * output + 1]);
    }
    stale_[c] = false;
}

} // namespace nrv::response
