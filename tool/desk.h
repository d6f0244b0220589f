#pragma once

#include "controls/event_boundary.h"
#include "link/system_clock.h"
#include "model/preset_image.h"
#include "program/program.h"
#include "response/plot_grid.h"
#include "tool/quiet_ports.h"

#include <memory>

namespace nrv::tool {

/// What of a graph is added to an output's own curve.
enum class AddedInput { None = 0, InA = 1, InB = 2 };

/// The program with a preset in its only window, and neither line nor display.
class CurveDesk {
  public:
    /// As `Show`.
    explicit CurveDesk(const model::PresetImageRow& image);

    /// Brings another preset to life in place of the one before. Throws Trouble for one that the program cannot; its
    /// curves are then those of neither.
    void Show(const model::PresetImageRow& image);

    /// In dB at each point of `response::PlotGrid`, as the program draws it.
    response::Curve Levels(int channel, AddedInput added);
    /// The sum of a channel's filters alone.
    const response::Curve& Filters(int channel) { return program_->Response.ChannelTotal(channel); }

  private:
    NoPort port_;
    link::SystemClock clock_;
    NoEvents process_;
    NoBoxes boxes_;
    GivenFile files_;
    NoWindows host_;
    std::unique_ptr<program::Forms> forms_ = std::make_unique<program::Forms>();
    controls::EventBoundary events_{forms_->Windows};
    std::unique_ptr<program::Program> program_ = std::make_unique<program::Program>(
        program::Ports{port_, clock_, process_, boxes_, files_, host_, events_}, *forms_);
};

/// Throws Trouble for a preset of which a load would stop half-way.
void RequireWhole(const model::PresetImageRow& image);

} // namespace nrv::tool
