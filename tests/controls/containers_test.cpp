#include "controls/containers.h"
#include "controls/observed.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace nrv::testing {
namespace {

using namespace nrv::controls;
using ::testing::ElementsAre;

TEST(TabControl, RunsItsEventWhenAnotherTabComesToTheTopWhoeverBroughtIt) {
    TabControl tabs;
    std::vector<int> seen;
    tabs.Changed = [&] { seen.push_back(tabs.Tab()); };
    const Observed view(tabs);
    tabs.SetTab(0);
    tabs.SetTab(8);
    tabs.SetTab(8);
    tabs.SetTab(0);
    EXPECT_THAT(seen, ElementsAre(8, 0));
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Value, Aspect::Value));
}

TEST(TabControl, CaptionsCanBeRewritten) {
    TabControl tabs;
    tabs.SetTabCaptions({"In A", "In B"});
    tabs.SetTabCaption(1, "Right");
    EXPECT_THAT(tabs.TabCaptions(), ElementsAre("In A", "Right"));
}

class AGrid : public ::testing::Test {
  protected:
    AGrid() { grid.SetSize(3, 1, 1935); }
    ErrorKind KindOf(int row, int column) {
        try {
            grid.SetCell(row, column, "---");
        } catch (const RuntimeError& error) {
            return error.Kind();
        }
        ADD_FAILURE() << "cell " << row << ", " << column << " was written";
        return ErrorKind::TypeMismatch;
    }
    Grid grid;
};

TEST_F(AGrid, HasRowsOfEmptyCells) {
    EXPECT_EQ(grid.Rows(), 3);
    EXPECT_EQ(grid.Columns(), 1);
    EXPECT_EQ(grid.ColumnWidth(), 1935);
    EXPECT_EQ(grid.Cell(2, 0), "");
}

TEST_F(AGrid, KeepsItsTextsAndTellsTheView) {
    const Observed view(grid);
    grid.SetCell(1, 0, "  Device Demo     ID:4");
    EXPECT_EQ(grid.Cell(1, 0), "  Device Demo     ID:4");
    EXPECT_EQ(grid.Cell(0, 0), "");
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Text));
}

TEST_F(AGrid, RefusesACellThatIsNotThere) {
    EXPECT_EQ(KindOf(0, 1), ErrorKind::IndexOutOfRange); // a second column
    EXPECT_EQ(KindOf(3, 0), ErrorKind::IndexOutOfRange);
    EXPECT_EQ(KindOf(-1, 0), ErrorKind::IndexOutOfRange);
    EXPECT_EQ(KindOf(0, -1), ErrorKind::IndexOutOfRange);
    EXPECT_THROW(grid.Cell(3, 0), RuntimeError);
}

TEST_F(AGrid, WithoutRowsRefusesEveryCell) {
    grid.SetSize(0, 1, 1935);
    EXPECT_EQ(grid.Rows(), 0);
    EXPECT_EQ(KindOf(0, 0), ErrorKind::IndexOutOfRange);
}

TEST_F(AGrid, NewSizeEmptiesIt) {
    grid.SetCell(0, 0, "x");
    grid.SetSize(2, 1, 1935);
    EXPECT_EQ(grid.Cell(0, 0), "");
}

TEST_F(AGrid, DoubleClickTellsTheRow) {
    grid.UserDoubleClick(1);
    std::vector<int> rows;
    grid.DoubleClicked = [&rows](int row) { rows.push_back(row); };
    grid.UserDoubleClick(2);
    EXPECT_THAT(rows, ElementsAre(2));
}

TEST(Form, HasATitleAPointerAndASize) {
    Form form;
    EXPECT_EQ(form.MousePointer(), Pointer::Default);
    const Observed view(form);
    form.SetMousePointer(Pointer::ArrowAndHourglass);
    form.SetMousePointer(Pointer::ArrowAndHourglass);
    form.SetSize(2805, 5700);
    EXPECT_EQ(form.MousePointer(), Pointer::ArrowAndHourglass);
    EXPECT_EQ(form.Width(), 2805);
    EXPECT_EQ(form.Height(), 5700);
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Value, Aspect::Place));
}

TEST(Timer, RunsFromStartToStop) {
    Timer timer;
    EXPECT_FALSE(timer.Running());
    EXPECT_EQ(timer.Interval(), 0);
    timer.Start(200);
    EXPECT_TRUE(timer.Running());
    EXPECT_EQ(timer.Interval(), 200);
    timer.SetInterval(30);
    EXPECT_TRUE(timer.Running());
    EXPECT_EQ(timer.Interval(), 30);
    timer.Stop();
    EXPECT_FALSE(timer.Running());
    EXPECT_EQ(timer.Interval(), 30);
}

TEST(Timer, IntervalAloneDoesNotStartIt) {
    Timer timer;
    timer.SetInterval(2000);
    EXPECT_FALSE(timer.Running());
}

TEST(Timer, TellsTheViewOfEachStart) {
    Timer timer;
    const Observed view(timer);
    timer.Start(200);
    timer.Start(200); // a stop and a start, so that the time begins anew
    timer.Stop();
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Value, Aspect::Value, Aspect::Value, Aspect::Value));
}

} // namespace
} // namespace nrv::testing
