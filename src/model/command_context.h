#pragma once

#include "controls/windows.h"
#include "link/link.h"
#include "model/device_stores.h"

#include <array>

namespace nrv::model {

/// The code of a fader whose top position is the highest code. The image keeps what is held, so that a byte out of
/// range stays the byte that was there; texts say what shows.
struct FaderCode {
    int Held;
    int Shown;
};
inline FaderCode CodeOf(const controls::Fader& fader, int top) {
    return {top - fader.Position(), top - fader.Shown()};
}

/// What a command works on: the current window, its device and that device's stores.
struct CommandContext {
    link::Link& Link;
    DeviceStores& Stores;
    controls::Windows& Windows;

    controls::FrmCtrl& Form() const { return Windows.Current(); }
    int DeviceId() const { return Windows.CurrentDevice(); }
    ParamRow& Values() const { return Stores.ParamValues[static_cast<std::size_t>(DeviceId())]; }
    PresetImageRow& Image() const { return Stores.PresetImage[static_cast<std::size_t>(DeviceId())]; }
    std::uint8_t BodyByte(std::size_t position) const { return Image().PresetBody[position]; }
    bool Send(const link::Payload& payload) const { return Link.SendFrame(DeviceId(), payload); }
    /// Sends a parameter's codes, P6 to P9. True when the link failed for good.
    bool Send(link::Command command, int channel, int section, const std::array<int, 4>& codes) const {
        return Send(link::ParameterFrame(command, channel, section, codes));
    }
};

} // namespace nrv::model
