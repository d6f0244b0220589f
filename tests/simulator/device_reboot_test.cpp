#include "simulator/device.h"

#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

PresetBody WithMasterGain(Byte code) {
    PresetBody body = FactoryPreset();
    body[MasterGainOffset] = code;
    return body;
}

TEST(Device, RebootsWithStoredSettings) {
    Device device(5);
    device.SetLiveImage(WithMasterGain(9));
    device.SetBulkUpdating(true);
    device.SetLocked(true);
    device.Reboot(false);
    EXPECT_EQ(device.LiveImage(), FactoryPreset()); // nothing is stored
    EXPECT_FALSE(device.BulkUpdating());
    EXPECT_TRUE(device.Locked());

    device.PutPreset(3, "Third", WithMasterGain(33));
    device.PutPreset(6, "Sixth", WithMasterGain(66));
    device.Reboot(false);
    EXPECT_EQ(device.LiveImage(), WithMasterGain(33)); // none of them is the active one
    for (std::size_t i = 0; i < NameSize; ++i) {
        device.SetMemory(ActiveNameAddress + i, static_cast<Byte>("Sixth           "[i]));
    }
    device.Reboot(false);
    EXPECT_EQ(device.LiveImage(), WithMasterGain(66));
}

TEST(Device, RebootsWithTheFactorysSettingsAndKeepsWhatIsStored) {
    Device device(5, "Stage");
    device.PutPreset(3, "Third", WithMasterGain(33));
    device.SetLiveImage(WithMasterGain(9));
    device.SetMemory(OptionBitsAddress, 0x14);
    device.SetMemory(MuteBitsAddress, 0xFF);
    device.SetPassword("secret");
    device.Reboot(true);
    EXPECT_EQ(device.LiveImage(), FactoryPreset());
    EXPECT_EQ(device.Memory(OptionBitsAddress), 32);
    EXPECT_EQ(device.Memory(MuteBitsAddress), 0);
    EXPECT_EQ(device.Memory(ActiveNameAddress), 'F');
    EXPECT_EQ(device.Label(), "Stage           ");
    EXPECT_EQ(device.Password(), "secret");
    EXPECT_EQ(device.Preset(3), WithMasterGain(33));
}

} // namespace
} // namespace nrv::simulator
