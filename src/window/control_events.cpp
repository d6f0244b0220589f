#include "model/gain_commands.h"
#include "window/control_window.h"

#include <array>

// Which event of a control window runs which command.

namespace nrv::window {
namespace {

/// The tab that a block of the "Overview" tab leads to.
int TabOfBlock(int block) {
    using namespace controls;
    constexpr int NoiseGateOfInA = 40;
    if (block >= NoiseGateOfInA) {
        return block - NoiseGateOfInA;
    }
    constexpr int FirstOutputBlock = 10;
    constexpr int BlocksPerChannel = 5;
    const int kind = block % BlocksPerChannel;
    if (block < FirstOutputBlock) {
        const std::array<int, BlocksPerChannel> tabs = {GainsTab, GainsTab, block / BlocksPerChannel, DelaysTab,
                                                        GainsTab};
        return tabs[static_cast<std::size_t>(kind)];
    }
    const int own_tab = block / BlocksPerChannel;
    const std::array<int, BlocksPerChannel> tabs = {own_tab, DelaysTab, own_tab, GainsTab, GainsTab};
    return tabs[static_cast<std::size_t>(kind)];
}

} // namespace

/// A guarded event does nothing while the program writes a control itself.
std::function<void()> ControlWindow::Guarded(std::function<void()> event) {
    return [this, run = std::move(event)] {
        if (!windows_.ControlEventsOff) {
            run();
        }
    };
}

void ControlWindow::WireEvents(controls::FrmCtrl& form) {
    WireGains(form);
    WireOverview(form);
    WireTools(form);
}

void ControlWindow::WireGains(controls::FrmCtrl& form) {
    for (std::size_t i = 0; i < form.Slider1.size(); ++i) {
        const int index = static_cast<int>(i);
        form.Slider1[i].Moved = Guarded([this, index] { model::SetGain(context_, index); });
        form.Check1[i].Clicked = Guarded([this, index] { model::SetMute(context_, index); });
    }
    form.Slider100.Moved = [this] { model::SetMasterGain(context_); };
}

void ControlWindow::WireOverview(controls::FrmCtrl& form) {
    const auto leads_to = [&form](controls::Label& label, int tab) {
        label.Clicked = [&form, tab] { form.SSTab1.SetTab(tab); };
    };
    for (std::size_t i = 0; i < form.Label100.size(); ++i) {
        leads_to(form.Label100[i], TabOfBlock(static_cast<int>(i)));
    }
    for (std::size_t output = 0; output < form.Label200.size(); ++output) {
        leads_to(form.Label200[output], static_cast<int>(output) + 2);
    }
    for (controls::Label& socket : form.Label400) {
        leads_to(socket, controls::GainsTab);
    }
}

void ControlWindow::WireTools(controls::FrmCtrl& form) {
    form.Command2[controls::UnconnectTool].Clicked = [this] { UnconnectDevice(); };
    // A tool button that runs nothing is not shown.
    for (controls::Button& tool : form.Command2) {
        tool.SetVisible(static_cast<bool>(tool.Clicked));
    }
}

} // namespace nrv::window
