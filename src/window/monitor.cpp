#include "window/monitor.h"

namespace nrv::window {
namespace {

constexpr int FirstTickMilliseconds = 2000;
constexpr int TickMilliseconds = 30;
constexpr double NeverShown = 255.0;
constexpr double LimitLevel = 5.0;
constexpr double HighestLevel = 6.0;
constexpr std::size_t FirstLevelByte = 4;

/// Lamp 0 at the bottom.
constexpr std::array<controls::Colour, controls::LampsPerChannel> LampColours = {
    {{0, 255, 0}, {0, 255, 0}, {0, 255, 0}, {0, 255, 0}, {255, 255, 0}, {255, 0, 0}}};

} // namespace

void Monitor::Start(controls::FrmCtrl& form) {
    const auto id = static_cast<std::size_t>(context_.DeviceId());
    for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
        meter_shown_[channel][id] = NeverShown;
    }
    form.Timer1.Tick = [this, &timer = form.Timer1] { Tick(timer); };
    form.Timer1.Start(FirstTickMilliseconds);
}

void Monitor::Tick(controls::Timer& timer) {
    if (context_.Link.TransactionDone) {
        const controls::WindowSlot& slot = context_.Windows.WindowSlots[At(context_.Windows.CurrentWindow)];
        // A tick that leaves here keeps its interval.
        if (state_.DeviceUnconnected[At(slot.DeviceId)] || !slot.InUse) {
            return;
        }
        if (context_.Form().SSTab1.Tab() == controls::GainsTab) {
            context_.Link.Current.Call("the meters", Operation::Untold);
            if (context_.Send({link::LevelPollCommand})) {
                return;
            }
            Poll(slot.DeviceId);
        }
    }
    timer.SetInterval(TickMilliseconds);
}

void Monitor::Poll(int device_id) {
    const std::size_t id = At(device_id);
    for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
        double& level = meter_now_[channel][id];
        level = context_.Link.RxFrame[FirstLevelByte + channel];
        if (!IsInput(channel)) {
            if (context_.Values().ChannelMute[channel] == 1.0) {
                level = 0.0;
            }
            limit_now_[channel][id] = level >= LimitLevel ? 1 : 0;
        }
    }
    for (std::size_t channel = 0; channel < ChannelCount; ++channel) {
        if (meter_now_[channel][id] != meter_shown_[channel][id]) {
            ShowMeter(static_cast<int>(channel));
            meter_shown_[channel][id] = meter_now_[channel][id];
        }
    }
    for (std::size_t channel = InputCount; channel < ChannelCount; ++channel) {
        if (limit_now_[channel][id] != limit_shown_[channel][id]) {
            // Two boxes off: Out 1 marks the box of In A, and the boxes of Out 5 and Out 6 are never marked. That is
            // meant.
            controls::TextBox& box = context_.Form().Text9[OutputOf(channel)];
            box.SetMarked(limit_now_[channel][id] != 0);
            box.SetToolTip(box.Marked() ? std::string(ChannelTitles[channel]) + " is limiting" : "");
            box.Refresh();
            limit_shown_[channel][id] = limit_now_[channel][id];
        }
    }
}

void Monitor::ShowMeter(int channel) {
    const double level = meter_now_[At(channel)][static_cast<std::size_t>(context_.DeviceId())];
    if (level > HighestLevel) {
        return; // the lamps stay as they are
    }
    for (int lamp = controls::LampsPerChannel - 1; lamp >= 0; --lamp) {
        controls::Shape& shape = context_.Form().Shape1[At(controls::LampsPerChannel * channel + lamp)];
        const bool lit = lamp < static_cast<int>(level);
        if (lit == shape.Lit()) {
            continue;
        }
        if (lit) {
            shape.Light(LampColours[At(lamp)]);
        } else {
            shape.Extinguish();
        }
        shape.Refresh();
    }
}

} // namespace nrv::window
