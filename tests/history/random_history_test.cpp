#include "history/rack_world.h"

namespace nrv::testing {
namespace {

class RandomHistory : public RackWorld {
  protected:
    /// As many steps as a history holds, undone and redone.
    void Round(const std::function<void(int slot)>& edit, int edits, bool with_reads) {
        std::vector<All> first;
        std::vector<All> last;
        for (int slot = 0; slot < Windows; ++slot) {
            first.push_back(Look(slot));
        }
        const std::array<std::size_t, Windows> deep = Depths();
        for (int n = 0; n < edits; ++n) {
            edit(Pick(Windows));
        }
        for (int slot = 0; slot < Windows; ++slot) {
            last.push_back(Look(slot));
            steps[At(slot)] = Depth(slot) - deep[At(slot)];
            ASSERT_LT(Depth(slot), history::History::Deepest) << "the oldest may be forgotten";
        }
        for (int slot = 0; slot < Windows; ++slot) {
            All undone = GoAll(slot, &RandomHistory::Undo);
            undone.LastInputType = first[At(slot)].LastInputType; // the program's, and other windows chose it since
            ExpectSame(undone, first[At(slot)], "undone, window " + std::to_string(slot));
        }
        for (int slot = 0; slot < Windows; ++slot) {
            All redone = GoAll(slot, &RandomHistory::Redo);
            redone.LastInputType = last[At(slot)].LastInputType;
            if (with_reads) {
                // A read told the device nothing, its repetition does: the device plays what the window shows.
                ExpectPlays(slot);
                redone.Live = last[At(slot)].Live;
                redone.Memory = last[At(slot)].Memory;
            }
            ExpectSame(redone, last[At(slot)], "redone, window " + std::to_string(slot));
        }
        EXPECT_THAT(NotAtRest(world), ::testing::IsEmpty());
    }
    All GoAll(int slot, void (RandomHistory::*go)(int)) {
        for (std::size_t n = 0; n < steps[At(slot)]; ++n) {
            (this->*go)(slot);
        }
        return Look(slot);
    }
    std::array<std::size_t, Windows> Depths() { return {Depth(0), Depth(1), Depth(2)}; }
    void ExpectPlays(int slot) {
        const int id = Ids[At(slot)];
        for (const presets::Parameter parameter : presets::Parameters()) {
            for (const presets::ImageBits& place : presets::PlacesOf(parameter)) {
                if (place.Byte < simulator::PresetSize) {
                    EXPECT_EQ(rack.At(id).LiveImage()[place.Byte],
                              program.Stores.PresetImage[At(id)].PresetBody[place.Byte])
                        << "byte " << place.Byte;
                }
            }
        }
        EXPECT_EQ(rack.At(id).Memory(18), program.Stores.PresetImage[At(id)].SystemPage[18]);
    }
    void Operate(int slot) {
        const int output = Pick(OutputCount);
        switch (Pick(6)) {
        case 0:
            return Load(slot, AnyFile("Any.n91"));
        case 1:
            return CopyInput(slot, Pick(2));
        case 2:
            return CopyOutput(slot, output, (output + 1 + Pick(5)) % OutputCount);
        case 3:
            return Flat(slot, Pick(ChannelCount));
        case 4:
            return Rename(slot, 2 + Pick(6), std::string("Name ") + static_cast<char>('A' + Pick(26)));
        default:
            return Edit(slot);
        }
    }

    std::array<std::size_t, Windows> steps{};
};

TEST_F(RandomHistory, AThousandEditsOverThreeWindowsAreAllUndoneAndAllRedone) {
    for (int round = 0; round < 2; ++round) {
        Round([this](int slot) { Edit(slot); }, 500, false);
        for (int slot = 0; slot < Windows; ++slot) { // the second round begins with histories of its own
            program.Events.Run(UserIn(slot), [&] { program.Control.QueryUnload(slot); });
        }
        for (int row = 0; row < Windows; ++row) {
            DoubleClick(row);
        }
    }
}

TEST_F(RandomHistory, ALoadBringsEveryParameterToItsDevice) {
    for (int slot = 0; slot < Windows; ++slot) {
        Load(slot, AnyFile("Any.n91"));
        ExpectPlays(slot);
    }
}

TEST_F(RandomHistory, LoadsCopiesNamesAndFlatAmongThem) {
    Round([this](int slot) { Pick(4) == 0 ? Operate(slot) : Edit(slot); }, 400, false);
}

TEST_F(RandomHistory, ReadsAmongThem) {
    Round([this](int slot) { Pick(10) == 0 ? Read(slot, 3 * Pick(2)) : Edit(slot); }, 300, true);
}

TEST_F(RandomHistory, ADeviceThatDiesAtAnyFrameLeavesTheOthersWhole) {
    int died = 0;
    for (int death = 0; death < 40; ++death) {
        const int slot = Pick(Windows);
        for (int n = 0; n < 6; ++n) {
            Operate(slot);
        }
        std::vector<All> others;
        for (int other = 0; other < Windows; ++other) {
            others.push_back(Look(other));
        }
        world.Boxes.Shown.clear();
        const std::size_t before = Depth(slot);
        answers_left = 1 + Pick(60);
        while (Loaded(slot) && Depth(slot) > 0 && answers_left != 0) {
            Undo(slot);
        }
        answers_left = -1;
        if (!Loaded(slot)) {
            ++died;
            EXPECT_EQ(world.Boxes.Shown.size(), 1U);
            EXPECT_EQ(Depth(slot), 0U);
        } else {
            EXPECT_LT(Depth(slot), before);
        }
        for (int other = 0; other < Windows; ++other) {
            if (other != slot) {
                All now = Look(other);
                now.LastInputType = others[At(other)].LastInputType;
                ExpectSame(now, others[At(other)], "window " + std::to_string(other));
            }
        }
        EXPECT_THAT(NotAtRest(world), ::testing::IsEmpty());
        if (!Loaded(slot)) {
            DoubleClick(slot);
            ASSERT_TRUE(Loaded(slot));
            world.Boxes.Shown.clear();
        }
    }
    EXPECT_GT(died, 20);
}

} // namespace
} // namespace nrv::testing
