#pragma once

#include "controls/windows.h"
#include "link/link.h"
#include "model/device_stores.h"

namespace nrv::model {

/// What a command works on: the current window, its device and that device's stores.
struct CommandContext {
    link::Link& Link;
    DeviceStores& Stores;
    controls::Windows& Windows;

    controls::FrmCtrl& Form() const { return Windows.Current(); }
    int DeviceId() const { return Windows.CurrentDevice(); }
    ParamRow& Values() const { return Stores.ParamValues[static_cast<std::size_t>(DeviceId())]; }
    PresetImageRow& Image() const { return Stores.PresetImage[static_cast<std::size_t>(DeviceId())]; }
    bool Send(const link::Payload& payload) const { return Link.SendFrame(DeviceId(), payload); }
};

} // namespace nrv::model
