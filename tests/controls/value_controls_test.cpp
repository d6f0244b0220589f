#include "controls/observed.h"
#include "controls/value_controls.h"

#include <array>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <span>

namespace nrv::testing {
namespace {

using namespace nrv::controls;
using ::testing::ElementsAre;
using ::testing::IsEmpty;

class AFader : public ::testing::Test {
  protected:
    AFader() {
        fader.SetUp(120, 4, 60);
        fader.Moved = [this] { positions.push_back(fader.Position()); };
    }
    Fader fader;
    std::vector<int> positions; ///< at each event
};

TEST_F(AFader, KnowsItsRangeTicksAndZero) {
    EXPECT_EQ(fader.Minimum(), 0);
    EXPECT_EQ(fader.Maximum(), 120);
    EXPECT_EQ(fader.TickSpacing(), 4);
    EXPECT_EQ(fader.ZeroPosition(), 60);
    EXPECT_EQ(Fader::SmallStep, 1);
    EXPECT_EQ(Fader::LargeStep, 5);
    Fader plain;
    plain.SetUp(29, 1);
    EXPECT_EQ(plain.ZeroPosition(), -1);
}

TEST_F(AFader, RunsNothingWhenCodeSetsIt) {
    const Observed view(fader);
    fader.SetPosition(100);
    EXPECT_EQ(fader.Position(), 100);
    EXPECT_THAT(positions, IsEmpty());
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Value));
}

TEST_F(AFader, TellsItsViewNothingWhenSetToWhereItIs) {
    fader.SetPosition(100);
    const Observed view(fader);
    fader.SetPosition(100);
    EXPECT_THAT(view.Aspects, IsEmpty());
}

TEST_F(AFader, RunsItsEventOnceForEachStepOfTheUser) {
    fader.UserMove(1);
    fader.UserMove(2);
    fader.UserMove(7);
    EXPECT_THAT(positions, ElementsAre(1, 2, 7));
}

TEST_F(AFader, RunsNothingWhenTheUserLeavesItWhereItIs) {
    fader.SetPosition(50);
    fader.UserMove(50);
    EXPECT_THAT(positions, IsEmpty());
}

TEST_F(AFader, UserCannotLeaveTheRange) {
    fader.SetPosition(118);
    fader.UserMove(123);
    EXPECT_EQ(fader.Position(), 120);
    fader.UserMove(125);
    EXPECT_THAT(positions, ElementsAre(120));
    fader.UserMove(-5);
    EXPECT_THAT(positions, ElementsAre(120, 0));
}

TEST_F(AFader, HoldsWhatCodeSetOutsideTheRangeAndShowsTheNearest) {
    fader.SetPosition(-135); // 120 - 255
    EXPECT_EQ(fader.Position(), -135);
    EXPECT_EQ(fader.Shown(), 0);
    fader.SetPosition(121);
    EXPECT_EQ(fader.Position(), 121);
    EXPECT_EQ(fader.Shown(), 120);
}

TEST_F(AFader, UserMoveFromOutsideTheRangeToWhatShowsIsAMove) {
    fader.SetPosition(200);
    fader.UserMove(120); // where it shows already
    EXPECT_EQ(fader.Position(), 120);
    fader.UserMove(120);
    fader.UserMove(119);
    EXPECT_THAT(positions, ElementsAre(120, 119));
}

class AnUpDown : public ::testing::Test {
  protected:
    AnUpDown() {
        up_down.SetRange(0, 47);
        up_down.Changed = [this] { events.push_back("changed " + std::to_string(up_down.Position())); };
        up_down.Clicked = [this] { events.push_back("clicked " + std::to_string(up_down.Position())); };
    }
    UpDown up_down;
    std::vector<std::string> events;
};

TEST_F(AnUpDown, RunsChangedButNotClickedWhenCodeSetsIt) {
    up_down.SetPosition(20);
    EXPECT_THAT(events, ElementsAre("changed 20"));
}

TEST_F(AnUpDown, RunsNothingWhenCodeSetsItToWhereItIs) {
    up_down.SetPosition(0);
    EXPECT_THAT(events, IsEmpty());
}

TEST_F(AnUpDown, RunsChangedThenClickedOnTheUsersArrows) {
    up_down.UserStep(1);
    up_down.UserStep(-1);
    EXPECT_THAT(events, ElementsAre("changed 1", "clicked 1", "changed 0", "clicked 0"));
}

TEST_F(AnUpDown, RunsClickedButNotChangedAtTheEndOfTheRange) {
    up_down.UserStep(-1);
    EXPECT_THAT(events, ElementsAre("clicked 0"));
    up_down.SetPosition(47);
    events.clear();
    up_down.UserStep(1);
    EXPECT_THAT(events, ElementsAre("clicked 47"));
    EXPECT_EQ(up_down.Position(), 47);
}

TEST_F(AnUpDown, StopsAtTheEndOfTheRange) {
    up_down.SetPosition(45);
    up_down.UserStep(5);
    EXPECT_EQ(up_down.Position(), 47);
}

TEST_F(AnUpDown, HoldsWhatCodeSetOutsideTheRangeAndStepsFromWhatShows) {
    up_down.SetPosition(255);
    EXPECT_EQ(up_down.Position(), 255);
    EXPECT_EQ(up_down.Shown(), 47);
    events.clear();
    up_down.UserStep(1);
    EXPECT_THAT(events, ElementsAre("clicked 255"));
    EXPECT_EQ(up_down.Position(), 255);
    events.clear();
    up_down.UserStep(-1);
    EXPECT_THAT(events, ElementsAre("changed 46", "clicked 46"));
}

class AList : public ::testing::Test {
  protected:
    AList() {
        list.SetItems({"In A", "In B", "In A+B"});
        list.Chosen = [this] { chosen.push_back(list.Index()); };
    }
    List list;
    std::vector<int> chosen;
};

TEST_F(AList, HasNoSelectionAtFirst) {
    EXPECT_EQ(list.Index(), List::None);
    EXPECT_EQ(list.Shown(), List::None);
    EXPECT_EQ(list.ShownText(), "");
}

TEST_F(AList, RunsItsEventWhoeverChoseAnEntry) {
    list.Select(0);
    list.UserSelect(2);
    EXPECT_THAT(chosen, ElementsAre(0, 2));
    EXPECT_EQ(list.ShownText(), "In A+B");
}

TEST_F(AList, RunsNothingWhenTheEntryStays) {
    list.Select(1);
    list.Select(1);
    list.UserSelect(1);
    EXPECT_THAT(chosen, ElementsAre(1));
}

TEST_F(AList, HoldsAPositionPastItsEndAndShowsTheLast) {
    list.Select(200);
    EXPECT_EQ(list.Index(), 200);
    EXPECT_EQ(list.Shown(), 2);
    EXPECT_EQ(list.ShownText(), "In A+B");
    list.UserSelect(2); // what shows already
    EXPECT_EQ(list.Index(), 2);
    list.UserSelect(2);
    EXPECT_THAT(chosen, ElementsAre(200, 2));
}

TEST_F(AList, WithoutEntriesShowsNothing) {
    list.SetItems({});
    list.Select(0);
    EXPECT_EQ(list.Index(), 0);
    EXPECT_EQ(list.Shown(), List::None);
    EXPECT_EQ(list.ShownText(), "");
}

TEST_F(AList, NewEntriesRunNothingAndKeepThePosition) {
    list.Select(1);
    chosen.clear();
    const Observed view(list);
    list.SetItems({"Analog", "Digital"});
    EXPECT_THAT(chosen, IsEmpty());
    EXPECT_EQ(list.ShownText(), "Digital");
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Items));
}

TEST_F(AList, KeepsToolTipsForItsEntries) {
    EXPECT_THAT(list.ItemToolTips(), IsEmpty());
    list.SetItemToolTips({"first", "second", ""});
    EXPECT_THAT(list.ItemToolTips(), ElementsAre("first", "second", ""));
}

TEST_F(AList, TellsItsViewOfTheSelection) {
    const Observed view(list);
    list.Select(2);
    list.Select(2);
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Value));
}

class ACheckBox : public ::testing::Test {
  protected:
    ACheckBox() {
        box.Clicked = [this] { values.push_back(box.Value()); };
    }
    CheckBox box;
    std::vector<int> values;
};

TEST_F(ACheckBox, RunsItsEventWhoeverChangedIt) {
    box.SetValue(1);
    box.UserToggle();
    box.UserToggle();
    EXPECT_THAT(values, ElementsAre(1, 0, 1));
}

TEST_F(ACheckBox, RunsNothingWhenTheValueStays) {
    const Observed view(box);
    box.SetValue(0);
    EXPECT_THAT(values, IsEmpty());
    EXPECT_THAT(view.Aspects, IsEmpty());
}

TEST_F(ACheckBox, RunsNothingWhenItIsOnlyShown) {
    const Observed view(box);
    box.ShowValue(1);
    box.ShowValue(1);
    EXPECT_TRUE(box.Checked());
    EXPECT_THAT(values, IsEmpty());
    EXPECT_THAT(view.Aspects, ElementsAre(Aspect::Value));
}

TEST_F(ACheckBox, IsSetByAnyValueButZeroAndKeepsIt) {
    box.SetValue(2);
    EXPECT_TRUE(box.Checked());
    EXPECT_EQ(box.Value(), 2);
    box.UserToggle();
    EXPECT_EQ(box.Value(), 0);
}

class Options : public ::testing::Test {
  protected:
    Options() {
        Option::Group(std::span(options).first(3));
        for (std::size_t i = 0; i < options.size(); ++i) {
            options[i].Clicked = [this, i] { clicks.push_back(static_cast<int>(i)); };
        }
    }
    std::vector<bool> Selected() const {
        return {options[0].Selected(), options[1].Selected(), options[2].Selected(), options[3].Selected()};
    }
    std::array<Option, 4> options; ///< three of a group and a stranger
    std::vector<int> clicks;
};

TEST_F(Options, NoneIsSelectedAtFirst) {
    EXPECT_THAT(Selected(), ElementsAre(false, false, false, false));
}

TEST_F(Options, SelectingOneDeselectsItsGroupAndRunsItsOwnEventAlone) {
    options[0].Select();
    options[3].Select();
    options[2].Select();
    EXPECT_THAT(Selected(), ElementsAre(false, false, true, true));
    EXPECT_THAT(clicks, ElementsAre(0, 3, 2));
}

TEST_F(Options, SelectingTheSelectedOneRunsNothing) {
    options[1].Select();
    options[1].Select();
    EXPECT_THAT(clicks, ElementsAre(1));
}

TEST_F(Options, TheGroupIsInOrderWhenTheEventRuns) {
    options[0].Select();
    bool alone = false;
    options[1].Clicked = [&] { alone = options[1].Selected() && !options[0].Selected(); };
    options[1].Select();
    EXPECT_TRUE(alone);
}

TEST_F(Options, TheOneThatIsOnlyShownRunsNothing) {
    options[0].ShowSelected();
    EXPECT_TRUE(options[0].Selected());
    EXPECT_THAT(clicks, IsEmpty());
    options[1].Select();
    EXPECT_THAT(Selected(), ElementsAre(false, true, false, false));
}

TEST_F(Options, ViewsAreToldOfTheTwoThatChanged) {
    options[0].Select();
    const Observed left(options[0]);
    const Observed taken(options[1]);
    const Observed neither(options[2]);
    options[1].Select();
    EXPECT_THAT(left.Aspects, ElementsAre(Aspect::Value));
    EXPECT_THAT(taken.Aspects, ElementsAre(Aspect::Value));
    EXPECT_THAT(neither.Aspects, IsEmpty());
}

} // namespace
} // namespace nrv::testing
