#pragma once

#include "controls/frm_ctrl.h"
#include "controls/windows.h"
#include "response/plot_grid.h"

#include <array>
#include <memory>

namespace nrv::response {

/// The curves of one window, in dB over the grid. A part that was never computed is 0.
class WindowCurves {
  public:
    std::array<Curve, controls::PeqCount> PeqCurve{};
    std::array<Curve, controls::ToneCount> ShelfCurve{};
    std::array<Curve, controls::CrossoverCount> CrossoverCurve{};

    /// The sum of a channel's parts as they stand.
    const Curve& ChannelCurve(int channel) {
        if (stale_[static_cast<std::size_t>(channel)]) {
            Sum(channel);
        }
        return sums_[static_cast<std::size_t>(channel)];
    }
    /// To be told after each change of a part. A whole image changes every part of a channel before its sum is wanted,
    /// so that the sum waits until it is read.
    void PartChanged(int channel) { stale_[static_cast<std::size_t>(channel)] = true; }

  private:
    void Sum(int channel);

    std::array<Curve, controls::ChannelCount> sums_{};
    std::array<bool, controls::ChannelCount> stale_{};
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
