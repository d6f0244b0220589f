#include "session/program_fixture.h"

namespace nrv::testing {
namespace {

class MarkedRowTest : public ProgramTest {};

TEST_F(MarkedRowTest, IsTheRowOfTheDeviceInTheSlotWhateverOrderTheyWereOpenedIn) {
    StartOnLine({3, 7});
    DoubleClick(1);
    DoubleClick(0);
    EXPECT_EQ(program.List.Devices.MarkedRow(), controls::Grid::NoRow);
    program.DeviceList.MarkFront(0);
    EXPECT_EQ(program.List.Devices.MarkedRow(), 1);
    program.DeviceList.MarkFront(1);
    EXPECT_EQ(program.List.Devices.MarkedRow(), 0);
    program.DeviceList.MarkFront(Operation::NoSlot);
    EXPECT_EQ(program.List.Devices.MarkedRow(), controls::Grid::NoRow);
}

} // namespace
} // namespace nrv::testing
