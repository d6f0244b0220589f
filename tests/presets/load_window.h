#pragma once

#include "model/command_window.h"
#include "presets/apply_image.h"
#include "presets/load_trace.h"

namespace nrv::testing {

/// An open window into which images are put and applied.
class LoadWindow : public CommandWindow {
  protected:
    static constexpr presets::ImageCase ReadFromDevice = presets::ImageCase::FromDevice;
    static constexpr presets::ImageCase LoadedFromFile = presets::ImageCase::FromFile;
    static constexpr presets::ImageCase WindowOpens = presets::ImageCase::Opening;

    void Apply(presets::ImageCase flags) { presets::ApplyImage(Context(), program.Response, flags); }
    /// As the callers apply what is already in the device.
    void ApplySilently(presets::ImageCase flags) {
        program.Link.TxSuppressed = true;
        program.Response.PlotSuspended = true;
        Apply(flags);
        program.Response.PlotSuspended = false;
        program.Link.TxSuppressed = false;
    }
    std::array<int, 6> Sources() const {
        std::array<int, 6> sources{};
        for (std::size_t y = 0; y < 6; ++y) {
            sources[y] = form.Combo3[y].Index();
        }
        return sources;
    }
    /// The sources as the window has them, so that a load changes none.
    void KeepSources(Body& body) const {
        for (int output = 0; output < 6; ++output) {
            body[ImageLayout::Source(output)] =
                static_cast<std::uint8_t>(form.Combo3[static_cast<std::size_t>(output)].Index());
        }
    }
    std::vector<Frame> Trace(const Body& body, const LoadSituation& situation) const {
        return LoadTrace(body, situation).Frames;
    }

    std::mt19937 random{20260214};
};

} // namespace nrv::testing
