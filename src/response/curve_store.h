#pragma once

#include "controls/windows.h"
#include "ports/channels.h"
#include "ports/numbering.h"
#include "response/plot_grid.h"

#include <array>
#include <memory>

namespace nrv::response {

/// The curves of one window, in dB over the grid. A part that was never computed is 0.
class WindowCurves {
  public:
    // The curve of one part.
    const Curve& PeqCurve(int section) const { return sections_[At(section)]; }
    const Curve& ShelfCurve(int filter) const { return shelves_[At(filter)]; }
    const Curve& CrossoverCurve(int side) const { return crossovers_[At(side)]; }
    // The same to be filled anew. A whole image changes every part of a channel before its sum is wanted, so that the
    // sum waits until it is read.
    Curve& FillPeq(int section) {
        stale_[At(ChannelOfPeq(section))] = true;
        return sections_[At(section)];
    }
    Curve& FillShelf(int filter) {
        stale_[At(ChannelOfTone(filter))] = true;
        return shelves_[At(filter)];
    }
    Curve& FillCrossover(int side) {
        stale_[At(ChannelOfCrossover(side))] = true;
        return crossovers_[At(side)];
    }

    /// The sum of a channel's parts as they stand.
    const Curve& ChannelCurve(int channel) {
        if (stale_[static_cast<std::size_t>(channel)]) {
            Sum(channel);
        }
        return sums_[static_cast<std::size_t>(channel)];
    }

  private:
    void Sum(int channel);

    std::array<Curve, PeqCount> sections_{};
    std::array<Curve, ToneCount> shelves_{};
    std::array<Curve, CrossoverCount> crossovers_{};
    std::array<Curve, ChannelCount> sums_{};
    std::array<bool, ChannelCount> stale_{};
};

/// The curves of every window slot, kept for the life of the process. A slot's room is taken when it is first used.
class CurveStore {
  public:
    WindowCurves& Of(int slot) {
        std::unique_ptr<WindowCurves>& curves = curves_[static_cast<std::size_t>(slot)];
        if (!curves) {
            curves = std::make_unique<WindowCurves>();
        }
        return *curves;
    }

  private:
    std::array<std::unique_ptr<WindowCurves>, controls::SlotCount> curves_;
};

static_assert(controls::SlotCount * sizeof(WindowCurves) <= std::size_t{12} * 1024 * 1024);

} // namespace nrv::response
