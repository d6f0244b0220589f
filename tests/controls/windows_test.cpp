#include "controls/windows.h"

#include <gtest/gtest.h>
#include <memory>

namespace nrv::testing {
namespace {

TEST(WindowsOfDevices, ASlotIsADevicesWhileItIsInUseAndItsWindowThere) {
    const auto windows = std::make_unique<controls::Windows>();
    windows->WindowSlots[6] = {true, 12, 6};
    windows->Loaded[6] = true;
    EXPECT_EQ(windows->SlotOf(12), 6);
    EXPECT_EQ(windows->SlotOf(13), Operation::NoSlot);
    windows->Loaded[6] = false;
    EXPECT_EQ(windows->SlotOf(12), Operation::NoSlot);
    windows->Loaded[6] = true;
    windows->WindowSlots[6].InUse = false;
    EXPECT_EQ(windows->SlotOf(12), Operation::NoSlot);
}

} // namespace
} // namespace nrv::testing
