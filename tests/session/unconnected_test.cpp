#include "session/program_fixture.h"
#include "session/unconnected.h"

namespace nrv::testing {
namespace {

class Unconnected : public ProgramTest {};

TEST_F(Unconnected, RowTextIsTheLabelAndTheId) {
    EXPECT_EQ(session::RowText("  Device Demo   ", 0), "  Device Demo     ID:0");
    EXPECT_EQ(session::RowText("My loudspeaker 1", 32), "My loudspeaker 1  ID:32");
}

TEST_F(Unconnected, MarkGoesToTheRowOfTheDevice) {
    program.List.Devices.SetSize(3, 1, 1935);
    program.State.DeviceRow[17] = 2;
    program.State.DeviceUnconnected.fill(false);
    session::MarkUnconnected(program.State, program.List, 17);
    EXPECT_EQ(Row(2), " Unconnected      ID:17");
    EXPECT_EQ(Row(0), "");
    EXPECT_TRUE(program.State.DeviceUnconnected[17]);
    EXPECT_FALSE(program.State.DeviceUnconnected[16]);
}

TEST_F(Unconnected, IsTrueOfEveryDeviceFromTheStart) {
    EXPECT_THAT(program.State.DeviceUnconnected, ::testing::Each(true));
}

TEST_F(Unconnected, FailureBeforeTheListHasRowsOnlyFlagsTheDevice) {
    program.State.DeviceUnconnected.fill(false);
    session::MarkUnconnected(program.State, program.List, 4);
    EXPECT_TRUE(program.State.DeviceUnconnected[4]);
    EXPECT_EQ(program.List.Devices.Rows(), 0);
}

} // namespace
} // namespace nrv::testing
