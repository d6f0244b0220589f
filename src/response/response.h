#pragma once

#include "controls/windows.h"
#include "model/device_stores.h"
#include "response/curve_store.h"
#include "response/filters.h"

#include <array>
#include <string>

namespace nrv::response {

/// The response display of the current window: the stored curves, their sums, and their drawing.
class Response {
  public:
    Response(controls::Windows& windows, model::DeviceStores& stores) : windows_(windows), stores_(stores) {}

    // What belongs to the program and not to a window.
    std::array<int, 21> ViewMode{}; ///< by output: 0 "Out only", 1 with In A, 2 with In B
    std::array<std::array<bool, ChannelCount>, ChannelCount>
        OverlayMatrix{};        ///< [c][j]: the graph of channel c also shows channel j
    bool PlotSuspended = false; ///< curves are computed, nothing is drawn

    // Recompute one part over the grid from the stored values, bring its channel's sum up to date and draw its graph
    // anew.
    void UpdatePeqCurve(int section);
    void UpdateShelfCurve(int filter);
    /// A slope past the list's end stands for the list's last entry.
    void UpdateCrossoverCurve(int side);

    /// The level of a tone filter, 0 to 9, at a frequency in Hz, in dB. For one value of its own: the program computes
    /// whole curves, by the same formulas.
    double ShelfResponse(int filter, double hz) const;

    // One point, for whoever follows a change along the grid by hand: the program draws whole curves.
    /// The next point of a channel's curve on its own graph. Throws `RuntimeError` of kind IndexOutOfRange for a
    /// frequency that is not of the grid, as the operation below does.
    void PlotPoint(double f, int channel) { PlotOverlayPoint(f, channel, channel); }
    /// The next point of a channel's curve on the graph of another.
    void PlotOverlayPoint(double f, int drawn, int onto);
    /// What is drawn of a channel in a view mode, in dB, before it is put on pixels: the sum of its parts, its gain and
    /// the master gain, and in modes 1 and 2 of an output an input's sum and gain.
    Curve DrawnLevels(int channel, int view_mode);
    /// The whole curve of a channel on the graph of another.
    void DrawOverlay(int drawn, int onto);
    /// Draws a channel's graph anew from the stored curves: overlays first, the channel's own curve on top.
    void RedrawChannel(int channel);

    /// A view option was chosen: 0 to 17, three to an output. The captions that quote the output follow. An image can
    /// hold an option beyond them: up to 62 it is kept and seen nowhere, past that `RuntimeError` of kind
    /// IndexOutOfRange is thrown.
    void SetViewMode(int option);
    /// The caption of the boxes that view an output, 0 to 5, in the current window: its name and what its view adds.
    std::string ViewCaption(int output) const;

    WindowCurves& Curves() { return curves_.Of(windows_.CurrentWindow); }
    const Curve& ChannelTotal(int channel) { return Curves().ChannelCurve(channel); }

  private:
    const model::ParamRow& Values() const {
        return stores_.ParamValues[static_cast<std::size_t>(windows_.CurrentDevice())];
    }
    void DrawBackground(int channel);
    void Walk(int drawn, int onto, std::size_t point, std::size_t end);

    controls::Windows& windows_;
    model::DeviceStores& stores_;
    CurveStore curves_;
};

/// The kind of a tone filter, 0 to 9, from its list position: the high shelves of the inputs list fewer kinds.
ShelfKind KindOfShelf(int filter, double position);

/// The colour of a channel's curve on whichever graph it is drawn.
controls::Colour CurveColour(int channel);

} // namespace nrv::response
