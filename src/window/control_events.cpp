#include "model/delay_commands.h"
#include "model/equaliser_commands.h"
#include "model/gain_commands.h"
#include "model/output_commands.h"
#include "model/system_commands.h"
#include "response/view_options.h"
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
        return tabs[At(kind)];
    }
    const int own_tab = block / BlocksPerChannel;
    const std::array<int, BlocksPerChannel> tabs = {own_tab, DelaysTab, own_tab, GainsTab, GainsTab};
    return tabs[At(kind)];
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
    WireDelays(form);
    WireOutputs(form);
    WireGraphs(form);
    editing_.Wire(form);
    WireOverview(form);
    WireTools(form);
}

void ControlWindow::WireGains(controls::FrmCtrl& form) {
    for (std::size_t i = 0; i < form.Slider1.size(); ++i) {
        const int index = static_cast<int>(i);
        form.Slider1[i].Moved = Guarded([this, index] {
            model::SetGain(context_, index);
            response_.RedrawChannel(ChannelOfControl(index));
        });
        form.Check1[i].Clicked = Guarded([this, index] { model::SetMute(context_, index); });
        form.Check2[i].Clicked = Guarded([this, index] { model::SetPhase(context_, index); });
    }
    form.Slider100.Moved = [this] { model::SetMasterGain(context_); };
    form.Combo4.Chosen = Guarded([this] { model::SetInputType(context_); });
}

void ControlWindow::WireDelays(controls::FrmCtrl& form) {
    for (std::size_t i = 0; i < form.Text2.size(); ++i) {
        const int index = static_cast<int>(i);
        const auto set_delay = Guarded([this, index] { model::SetDelay(context_, index); });
        form.UpDown1[i].Changed = set_delay;
        form.UpDown2[i].Clicked = set_delay;
        form.Text2[i].KeyPressed = [this, index](char key) { return model::TypedDelay(context_, boxes_, index, key); };
    }
    for (int unit = 0; unit < 2; ++unit) {
        form.Option1[At(unit)].Clicked = Guarded([this, unit] { model::SetDelayUnit(context_, unit); });
    }
}

void ControlWindow::WireOutputs(controls::FrmCtrl& form) {
    for (int output = 0; output < OutputCount; ++output) {
        form.Combo3[At(output)].Chosen = [this, output] { model::SetSource(context_, output); };
    }
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const std::size_t c = At(channel);
        form.Slider4[c].Moved = [this, channel] { model::SetThreshold(context_, channel); };
        form.Slider5[c].Moved = [this, channel] { model::SetRelease(context_, channel); };
        form.Slider6[c].Moved = [this, channel] { model::SetAttack(context_, channel); };
    }
}

void ControlWindow::WireGraphs(controls::FrmCtrl& form) {
    form.SSTab1.Changed = [this, &form] {
        if (form.SSTab1.Tab() < ChannelCount) {
            response_.RedrawChannel(form.SSTab1.Tab());
        }
    };
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const std::size_t c = At(channel);
        form.Check3[c].Clicked = [this, channel] { response::ShowCursor(context_, channel); };
        form.Command1[c].Clicked = [this, channel] {
            if (boxes_.AreYouSure("Flat Eq", BoxAnswer::No)) {
                link_.Current.Call("the flattening", PeqCountOf(channel));
                link_.Current.Title(std::string("flat equaliser of ") + ChannelTitles[At(channel)]);
                response::FlatEqualiser(context_, response_, channel);
            }
        };
    }
    for (int output = 0; output < OutputCount; ++output) {
        for (int row = 0; row < ViewsPerOutput; ++row) {
            form.ViewBox(row, output).Clicked = [this, output, row] {
                response::ViewOverlay(context_, response_, output, row);
            };
        }
    }
    for (int option = 0; option < static_cast<int>(form.Option2.size()); ++option) {
        form.Option2[At(option)].Clicked = [this, option] { response::ChooseViewMode(context_, response_, option); };
    }
}

void ControlWindow::WireOverview(controls::FrmCtrl& form) {
    const auto leads_to = [&form](controls::Label& label, int tab) {
        label.Clicked = [&form, tab] { form.SSTab1.SetTab(tab); };
    };
    for (std::size_t i = 0; i < form.Label100.size(); ++i) {
        leads_to(form.Label100[i], TabOfBlock(static_cast<int>(i)));
    }
    for (std::size_t output = 0; output < form.Label200.size(); ++output) {
        leads_to(form.Label200[output], ChannelOfOutput(static_cast<int>(output)));
    }
    for (controls::Label& socket : form.Label400) {
        leads_to(socket, controls::GainsTab);
    }
}

void ControlWindow::WireTools(controls::FrmCtrl& form) {
    for (std::size_t i = 0; i < form.Command2.size(); ++i) {
        form.Command2[i].Clicked = tools_[i];
        form.Command2[i].SetVisible(static_cast<bool>(tools_[i]));
    }
    for (controls::Label& name : form.Label300) {
        name.Clicked = tools_[controls::EditNamesTool];
    }
}

} // namespace nrv::window
