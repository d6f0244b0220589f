#pragma once

#include "controls/windows.h"
#include "model/device_stores.h"
#include "response/response.h"

#include <memory>

namespace nrv::testing {

/// The response display over windows that nobody shows: slot 0 is device 5, slot 3 device 9.
struct ResponseDesk {
    static constexpr int Device = 5;
    static constexpr int OtherSlot = 3;
    static constexpr int OtherDevice = 9;

    controls::Windows Windows;
    std::unique_ptr<model::DeviceStores> Stores = std::make_unique<model::DeviceStores>();
    response::Response Display{Windows, *Stores};

    ResponseDesk() {
        Windows.WindowSlots[0] = {true, Device, 0};
        Windows.WindowSlots[OtherSlot] = {true, OtherDevice, OtherSlot};
    }

    model::ParamRow& Values() { return Stores->ParamValues[Device]; }
    controls::FrmCtrl& Form() { return Windows.Current(); }
    const controls::Picture& Graph(int channel) { return Form().Picture1[static_cast<std::size_t>(channel)]; }

    void SetPeq(int section, double gain, double hertz, int bandwidth_code) {
        const auto s = static_cast<std::size_t>(section);
        Stores->ParamValues[static_cast<std::size_t>(Windows.CurrentDevice())].PeqGain[s] = gain;
        Stores->ParamValues[static_cast<std::size_t>(Windows.CurrentDevice())].PeqFrequency[s] = hertz;
        Form().UpDown3[s].SetPosition(bandwidth_code);
    }
    void SetShelf(int filter, int type, double gain, double hertz) {
        const auto h = static_cast<std::size_t>(filter);
        Values().ToneType[h] = type;
        Values().ToneGain[h] = gain;
        Values().ToneFrequency[h] = hertz;
    }
    void SetCrossover(int side, int slope, double hertz) {
        const auto x = static_cast<std::size_t>(side);
        Values().CrossoverSlope[x] = slope;
        Values().CrossoverFrequency[x] = hertz;
    }
    /// A level over the whole of a channel, as its first section.
    void SetLevel(int channel, double level) { Display.Curves().FillPeq(FirstPeqOf(channel)).fill(level); }
};

} // namespace nrv::testing
