#include "controls/observed.h"
#include "ports/numbering.h"
#include "session/program_fixture.h"
#include "window/monitor.h"

namespace nrv::testing {
namespace {

using controls::Aspect;
using Levels = std::array<int, 8>;

/// The window of device 7 with its "Gains" tab on top, and the levels that the device reports.
class MonitorTest : public ProgramTest {
  protected:
    MonitorTest() {
        StartOnLine({3, 7});
        DoubleClick(1);
        Window(0).SSTab1.SetTab(8);
        world.Port.Answer = [this](const Frame& frame) {
            Bytes reply = line.Answer(frame);
            if (frame[3] == 0x12 && !reply.empty()) {
                for (std::size_t c = 0; c < 8; ++c) {
                    reply[4 + c] = static_cast<std::uint8_t>(levels[c]);
                }
            }
            return reply;
        };
        Forget();
    }
    void Tick(int slot = 0) {
        program.Events.Run(MeterTick(slot), [this, slot] { Window(slot).Timer1.Tick(); });
    }
    /// How many lamps of a channel are lit, counted from the bottom; -1 when a dark one lies under a lit one.
    int Lit(int channel, int slot = 0) {
        int lit = 0;
        for (int lamp = 0; lamp < 6; ++lamp) {
            if (Window(slot).Shape1[At(6 * channel + lamp)].Lit()) {
                if (lit != lamp) {
                    return -1;
                }
                ++lit;
            }
        }
        return lit;
    }
    static Frame Poll(int id) {
        return {0xF0, 0xC3, static_cast<std::uint8_t>(id), 0x12, 0, 0, 0, 0, 0, 0, 0, 0, 0xF7};
    }
    int Interval(int slot = 0) { return Window(slot).Timer1.Interval(); }
    void SetMuted(int id, std::size_t channel, bool muted) {
        program.Stores.ParamValues[static_cast<std::size_t>(id)].ChannelMute[channel] = muted ? 1.0 : 0.0;
    }
    std::array<bool, 8> Marks(int slot = 0) {
        std::array<bool, 8> marks{};
        for (std::size_t n = 0; n < 8; ++n) {
            marks[n] = Window(slot).Text9[n].Marked();
        }
        return marks;
    }

    Levels levels{};
};

TEST_F(MonitorTest, FirstTickComesAfterTwoSecondsAndAllOthersAfter30Milliseconds) {
    EXPECT_EQ(Interval(), 2000);
    EXPECT_TRUE(Window(0).Timer1.Running());
    Tick();
    EXPECT_EQ(Interval(), 30);
    Tick();
    EXPECT_EQ(Interval(), 30);
}

TEST_F(MonitorTest, PollIsOneFrame) {
    Tick();
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(Poll(7)));
}

TEST_F(MonitorTest, OtherTabsAreNotPolledAndKeepTheirLamps) {
    levels.fill(4);
    Tick();
    Forget();
    levels.fill(1);
    for (const int tab : {0, 1, 2, 3, 4, 5, 6, 7, 9, 10}) {
        Window(0).SSTab1.SetTab(tab);
        Window(0).Timer1.SetInterval(2000);
        Tick();
        EXPECT_TRUE(world.Port.Sent.empty()) << tab;
        EXPECT_EQ(Interval(), 30);
        EXPECT_EQ(Lit(0), 4);
    }
    Window(0).SSTab1.SetTab(8);
    Tick();
    EXPECT_EQ(Lit(0), 1);
}

TEST_F(MonitorTest, LampsByLevel) {
    // Up, down and across, each channel another level at a time.
    for (int round = 0; round < 14; ++round) {
        for (std::size_t c = 0; c < 8; ++c) {
            levels[c] = (round * 3 + static_cast<int>(c)) % 7;
        }
        Tick();
        for (int c = 0; c < 8; ++c) {
            EXPECT_EQ(Lit(c), levels[static_cast<std::size_t>(c)]) << "round " << round << ", channel " << c;
        }
    }
}

TEST_F(MonitorTest, LampsAreGreenYellowAndRed) {
    levels.fill(6);
    Tick();
    const controls::Colour green{0, 255, 0};
    for (std::size_t c = 0; c < 8; ++c) {
        for (std::size_t lamp = 0; lamp < 4; ++lamp) {
            EXPECT_EQ(Window(0).Shape1[6 * c + lamp].Fill(), green);
        }
        EXPECT_EQ(Window(0).Shape1[6 * c + 4].Fill(), (controls::Colour{255, 255, 0}));
        EXPECT_EQ(Window(0).Shape1[6 * c + 5].Fill(), (controls::Colour{255, 0, 0}));
    }
}

TEST_F(MonitorTest, LevelOfSevenChangesNoLampAndCountsAsShown) {
    levels.fill(3);
    Tick();
    levels.fill(7);
    Tick();
    EXPECT_EQ(Lit(0), 3);
    EXPECT_EQ(Lit(5), 3);
    // Had it not counted as shown, going back to 3 would not be a change; so darken a lamp and see it painted anew.
    Window(0).Shape1[0].Extinguish();
    levels.fill(3);
    Tick();
    EXPECT_EQ(Lit(0), 3);
    // And at the same level nothing is painted.
    Window(0).Shape1[0].Extinguish();
    Tick();
    EXPECT_FALSE(Window(0).Shape1[0].Lit());
}

TEST_F(MonitorTest, MutedOutputFallsDarkAndItsMarkClears) {
    levels.fill(6);
    Tick();
    EXPECT_EQ(Lit(4), 6);
    EXPECT_TRUE(Window(0).Text9[2].Marked());
    SetMuted(7, 4, true);
    SetMuted(7, 0, true); // an input's meter does not follow its mute
    Tick();
    EXPECT_EQ(Lit(4), 0);
    EXPECT_FALSE(Window(0).Text9[2].Marked());
    EXPECT_EQ(Lit(0), 6);
    SetMuted(7, 4, false);
    Tick();
    EXPECT_EQ(Lit(4), 6);
    EXPECT_TRUE(Window(0).Text9[2].Marked());
}

TEST_F(MonitorTest, LimitMarksStandTwoBoxesOff) {
    for (std::size_t c = 0; c < 8; ++c) {
        levels = {};
        levels[c] = 5;
        Tick();
        std::array<bool, 8> expected{};
        if (c >= 2) {
            expected[c - 2] = true;
        }
        EXPECT_EQ(Marks(), expected) << "channel " << c;
    }
    levels.fill(6);
    Tick();
    EXPECT_THAT(Marks(), ::testing::ElementsAre(true, true, true, true, true, true, false, false));
    levels.fill(4);
    Tick();
    EXPECT_THAT(Marks(), ::testing::Each(false));
}

TEST_F(MonitorTest, FirstPollPaintsWhatIsThereEvenAtTheLevelOfTheLastWindow) {
    levels.fill(2);
    Tick();
    program.Windows.WindowSlots[1] = {true, 7, 1};
    program.Windows.NewSlot = 1;
    program.Control.Load();
    Window(1).SSTab1.SetTab(8);
    for (int channel = 0; channel < ChannelCount; ++channel) {
        EXPECT_EQ(Lit(channel, 1), 0) << channel;
    }
    EXPECT_EQ(Interval(1), 2000);
    Tick(1);
    for (int channel = 0; channel < ChannelCount; ++channel) {
        EXPECT_EQ(Lit(channel, 1), 2) << channel;
    }
}

TEST_F(MonitorTest, PaintsOnChangeAlone) {
    levels.fill(3);
    Tick();
    std::size_t lamps = 0;
    std::size_t marks = 0;
    for (controls::Shape& lamp : Window(0).Shape1) {
        lamp.Observe([&lamps](Aspect aspect) { lamps += aspect == Aspect::Colour ? 1U : 0U; });
    }
    for (controls::TextBox& box : Window(0).Text9) {
        box.Observe([&marks](Aspect aspect) { marks += aspect == Aspect::ToolTip ? 0U : 1U; });
    }
    for (int n = 0; n < 50; ++n) {
        Tick();
    }
    EXPECT_EQ(lamps, 0U);
    EXPECT_EQ(marks, 0U);
    levels[6] = 5; // two lamps of one channel, one mark: its colour and its painting
    Tick();
    EXPECT_EQ(lamps, 2U);
    EXPECT_EQ(marks, 2U);
    levels[6] = 6; // one lamp more, the mark stays
    Tick();
    EXPECT_EQ(lamps, 3U);
    EXPECT_EQ(marks, 2U);
    levels[6] = 0;
    Tick();
    EXPECT_EQ(lamps, 9U);
    EXPECT_EQ(marks, 4U);
}

TEST_F(MonitorTest, LampsArePaintedAtOnceTopLampFirst) {
    std::vector<int> painted;
    for (int lamp = 0; lamp < 6; ++lamp) {
        Window(0).Shape1[static_cast<std::size_t>(lamp)].Observe([&painted, lamp](Aspect aspect) {
            if (aspect == Aspect::Repaint) {
                painted.push_back(lamp);
            }
        });
    }
    levels[0] = 4;
    Tick();
    EXPECT_THAT(painted, ::testing::ElementsAre(3, 2, 1, 0));
}

TEST_F(MonitorTest, UnconnectedDeviceIsLeftWithItsInterval) {
    program.State.DeviceUnconnected[7] = true;
    Tick();
    EXPECT_EQ(Interval(), 2000);
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(MonitorTest, EmptySlotIsLeftWithItsInterval) {
    program.Windows.WindowSlots[0].InUse = false;
    Tick();
    EXPECT_EQ(Interval(), 2000);
    EXPECT_TRUE(world.Port.Sent.empty());
}

TEST_F(MonitorTest, ReportedFailureIsLeftWithItsInterval) {
    line.Devices.at(7).Alive = false;
    levels.fill(5);
    Tick();
    EXPECT_EQ(Interval(), 2000);
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_EQ(world.Boxes.Shown.size(), 1U);
    EXPECT_FALSE(Loaded(0));
    EXPECT_FALSE(Window(0).Timer1.Running());
    EXPECT_EQ(Lit(0), 0);
}

TEST_F(MonitorTest, WhileAnExchangeIsOpenNothingIsSentAndTheTicksGoOn) {
    program.Link.TransactionDone = false;
    Tick();
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(Interval(), 30);
    // Not even an unconnected device stops it then.
    program.State.DeviceUnconnected[7] = true;
    Window(0).Timer1.SetInterval(2000);
    Tick();
    EXPECT_EQ(Interval(), 30);
    program.State.DeviceUnconnected[7] = false;
    // The next good exchange brings it back.
    EXPECT_FALSE(program.Link.MemoryRead(7, 16));
    Tick();
    EXPECT_EQ(world.Port.Sent.back(), Poll(7));
}

TEST_F(MonitorTest, UnreportedFailureStopsThePollUntilTheNextGoodExchange) {
    program.Link.ReportLinkFailure = false;
    line.Devices.at(7).Alive = false;
    Tick();
    EXPECT_EQ(world.Port.Sent.size(), 5U);
    EXPECT_EQ(Interval(), 30);
    line.Devices.at(7).Alive = true;
    Tick();
    EXPECT_EQ(world.Port.Sent.size(), 5U);
}

TEST_F(MonitorTest, EveryWindowsTimerPollsTheCurrentDevice) {
    DoubleClick(0);
    Forget();
    Window(1).SSTab1.SetTab(8);
    levels.fill(4);
    program.Control.Activate(1);
    Tick(0);
    Tick(1);
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(Poll(3), Poll(3)));
    EXPECT_EQ(Lit(2, 1), 4);
    EXPECT_EQ(Lit(2, 0), 0);
    EXPECT_EQ(Interval(0), 30); // each its own interval
    EXPECT_EQ(Interval(1), 30);

    Forget();
    program.Control.Activate(0);
    levels.fill(2);
    Tick(1);
    EXPECT_THAT(world.Port.Sent, ::testing::ElementsAre(Poll(7)));
    EXPECT_EQ(Lit(2, 0), 2);
    EXPECT_EQ(Lit(2, 1), 4);
}

TEST_F(MonitorTest, TabOfTheCurrentWindowDecides) {
    DoubleClick(0); // slot 1 on "Overview", slot 0 on "Gains"
    Forget();
    Tick(0);
    EXPECT_TRUE(world.Port.Sent.empty());
    EXPECT_EQ(Interval(0), 30);
}

TEST_F(MonitorTest, DemoModeShowsWhatTheReplyBufferHolds) {
    program.Link.DemoMode = true;
    for (std::size_t c = 0; c < 8; ++c) {
        program.Link.RxFrame[4 + c] = static_cast<std::uint8_t>(c % 7);
    }
    Tick();
    EXPECT_TRUE(world.Port.Sent.empty());
    for (int c = 0; c < 8; ++c) {
        EXPECT_EQ(Lit(c), c % 7);
    }
}

TEST_F(MonitorTest, LimitMarkThatStandsAlreadyIsNotPaintedInTheNextWindow) {
    levels[4] = 5;
    Tick();
    EXPECT_TRUE(Window(0).Text9[2].Marked());
    program.Windows.WindowSlots[1] = {true, 7, 1};
    program.Windows.NewSlot = 1;
    program.Control.Load();
    Window(1).SSTab1.SetTab(8);
    Tick(1);
    EXPECT_THAT(Marks(1), ::testing::Each(false)); // a load forgets the lamps alone
    levels[4] = 4;
    Tick(1);
    levels[4] = 5;
    Tick(1);
    EXPECT_TRUE(Window(1).Text9[2].Marked());
}

TEST_F(MonitorTest, AMarkedBoxSaysWhichOutputIsLimiting) {
    levels.fill(0);
    levels[2] = 5;
    Tick();
    // The box of In A tells of Out 1; the mark stands two boxes off, and its tool tip tells the truth.
    EXPECT_EQ(Window(0).Text9[0].ToolTip(), "Out 1 is limiting");
    EXPECT_EQ(Window(0).Text9[2].ToolTip(), "");
    levels[2] = 0;
    Tick();
    EXPECT_EQ(Window(0).Text9[0].ToolTip(), "");
}

} // namespace
} // namespace nrv::testing
