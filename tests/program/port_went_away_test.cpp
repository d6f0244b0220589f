#include "session/program_fixture.h"

namespace nrv::testing {
namespace {

class PortWentAway : public ProgramTest {
  protected:
    const std::string Sentence =
        "The port went away. When it is back, double-click the row of a device to connect it again.";
};

TEST_F(PortWentAway, IsToldWithWhatToDo) {
    program.TellPortWentAway("The port went away.");
    EXPECT_EQ(program.Status.Text(), Sentence);
}

TEST_F(PortWentAway, IsNotToldWhenItIsBack) {
    program.Link.ComIndex = 1;
    program.Link.OpenPort();
    program.TellPortWentAway("The port went away.");
    EXPECT_EQ(program.Status.Text(), "");
}

TEST_F(PortWentAway, IsNotToldInDemoMode) {
    program.Link.DemoMode = true;
    program.TellPortWentAway("The port went away.");
    EXPECT_EQ(program.Status.Text(), "");
}

TEST_F(PortWentAway, LeavesASentenceThatBeginsWithItAndSaysMore) {
    program.Status.Tell("The port went away; the load stopped after 3 frames.");
    program.TellPortWentAway("The port went away.");
    EXPECT_EQ(program.Status.Text(), "The port went away; the load stopped after 3 frames.");
    program.Status.Tell("The preset was stored.");
    program.TellPortWentAway("The port went away.");
    EXPECT_EQ(program.Status.Text(), Sentence);
}

} // namespace
} // namespace nrv::testing
