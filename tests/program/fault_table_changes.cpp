#include "program/fault_table.h"

// A change of a single control: every value is stored before its frame goes out, so a failed frame leaves it stored.

namespace nrv::testing {
namespace {

using L = ImageLayout;

/// A change by one user's event in the front window.
FaultOperation Change(std::string name, std::function<void(controls::FrmCtrl&)> event,
                      std::function<std::vector<Step>(FaultWorld&)> steps, std::function<void(Expectation&)> expect) {
    FaultOperation operation;
    operation.Name = std::move(name);
    operation.Event = [event = std::move(event)](FaultWorld& at) {
        at.InWindow(FaultWorld::FrontSlot, [&] { event(at.Window(FaultWorld::FrontSlot)); });
    };
    operation.Steps = std::move(steps);
    operation.Expect = std::move(expect);
    return operation;
}

std::uint8_t BodyByte(FaultWorld& at, std::size_t place) {
    return at.Image(FaultWorld::Front).PresetBody[place];
}

FaultOperation Gain() {
    return Change(
        "Gain", [](controls::FrmCtrl& form) { form.Slider1[2].UserMove(50); },
        [](FaultWorld&) {
            return OneStep(FaultWorld::Front, {1, 2, 0, 0, 0, 0, 0, 0, 70});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).ChannelGain[2] = 2.0;
            e.Image(FaultWorld::Front).PresetBody[L::Gain(2)] = 70;
        });
}

FaultOperation GainInTheOtherWindow() {
    FaultOperation operation;
    operation.Name = "GainInTheWindowBehind";
    operation.Slot = FaultWorld::BehindSlot;
    operation.Device = FaultWorld::Behind;
    operation.Event = [](FaultWorld& at) {
        at.InWindow(FaultWorld::BehindSlot, [&] { at.Window(FaultWorld::BehindSlot).Slider1[9].UserMove(51); });
    };
    operation.Steps = [](FaultWorld&) { return OneStep(FaultWorld::Behind, {1, 1, 0, 0, 0, 0, 0, 0, 69}); };
    operation.Expect = [](Expectation& e) {
        e.After.CurrentWindow = FaultWorld::BehindSlot;
        e.Values(FaultWorld::Behind).ChannelGain[1] = 1.8;
        e.Image(FaultWorld::Behind).PresetBody[L::Gain(1)] = 69;
    };
    return operation;
}

FaultOperation Delay() {
    FaultOperation operation = Change(
        "Delay", [](controls::FrmCtrl& form) { form.UpDown1[3].UserStep(5); },
        [](FaultWorld& at) {
            const std::size_t field = L::Delay(3);
            return OneStep(FaultWorld::Front, {2, 3, 0, 0, 0, 0, BodyByte(at, field), BodyByte(at, field + 1), 25});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).DelayFine[3] = 25;
            e.Image(FaultWorld::Front).PresetBody[L::Delay(3) + 2] = 25;
        });
    operation.Prepare = [](FaultWorld& at) {
        at.Window(FaultWorld::FrontSlot).UpDown1[3].SetPosition(20);
        at.world.Port.Sent.clear();
    };
    operation.AlsoSee = [](FaultWorld& at, const Expectation& e) {
        EXPECT_EQ(at.Window(FaultWorld::FrontSlot).UpDown1[11].Position(), e.Stopped ? 20 : 25);
    };
    return operation;
}

FaultOperation Phase() {
    FaultOperation operation = Change(
        "Phase", [](controls::FrmCtrl& form) { form.Check2[4].UserToggle(); },
        [](FaultWorld& at) {
            return OneStep(FaultWorld::Front, {3, 4, 0, 0, 0, 0, 0, 0, 1 - BodyByte(at, L::Phase(4))});
        },
        [](Expectation& e) {
            std::uint8_t& phase = e.Image(FaultWorld::Front).PresetBody[L::Phase(4)];
            phase = static_cast<std::uint8_t>(1 - phase);
            e.Values(FaultWorld::Front).ChannelPhase[4] = phase;
        });
    operation.AlsoSee = [](FaultWorld& at, const Expectation& e) {
        const controls::FrmCtrl& form = at.Window(FaultWorld::FrontSlot);
        EXPECT_EQ(form.Check2[12].Value() == form.Check2[4].Value(), !e.Stopped) << "the other copy of the box";
    };
    return operation;
}

/// The mutes of the front device are 0x19: channels 0, 3 and 4.
FaultOperation Mute() {
    FaultOperation operation = Change(
        "Mute", [](controls::FrmCtrl& form) { form.Check1[5].UserToggle(); },
        [](FaultWorld&) {
            return StepsOf({FrameTo(FaultWorld::Front, {9, 5, 0, 0, 0, 0, 0, 0, 1}),
                            FrameTo(FaultWorld::Front, {0x11, 0, 18, 0, 0, 0x39})});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).ChannelMute[5] = 1.0;
            if (e.Passed(0)) {
                PutMutes(e.Image(FaultWorld::Front), 0x39);
            }
        });
    operation.Exchanges = 2;
    operation.AlsoSee = [](FaultWorld& at, const Expectation& e) {
        EXPECT_EQ(at.Window(FaultWorld::FrontSlot).Check1[13].Value(), e.Stopped ? 0 : 1);
    };
    return operation;
}

FaultOperation Crossover() {
    FaultOperation operation = Change(
        "Crossover", [](controls::FrmCtrl& form) { form.Combo2[3].UserSelect(7); },
        [](FaultWorld& at) {
            return OneStep(FaultWorld::Front, {4, 3, 1, 0, 0, 0, 0, BodyByte(at, L::Crossover(1, 1) + 1), 7});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).CrossoverSlope[3] = 7;
            e.Image(FaultWorld::Front).PresetBody[L::Crossover(1, 1) + 2] = 7;
        });
    operation.Prepare = [](FaultWorld& at) { EXPECT_NE(at.Window(FaultWorld::FrontSlot).Combo2[3].Index(), 7); };
    return operation;
}

FaultOperation Peq() {
    return Change(
        "Peq", [](controls::FrmCtrl& form) { form.Slider2[23].UserMove(60); },
        [](FaultWorld& at) {
            const std::size_t block = L::Peq(2, 3);
            return OneStep(FaultWorld::Front, {5, 2, 3, 0, 0, BodyByte(at, block + 1), BodyByte(at, block + 2), 0, 90});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).PeqGain[23] = 3.0;
            e.Image(FaultWorld::Front).PresetBody[L::Peq(2, 3) + 4] = 90;
        });
}

FaultOperation Tone() {
    return Change(
        "Tone", [](controls::FrmCtrl& form) { form.Slider3[4].UserMove(19); },
        [](FaultWorld& at) {
            const std::size_t block = L::Tone(2, 0);
            return OneStep(FaultWorld::Front, {6, 2, 0, 0, 0, BodyByte(at, block + 1), BodyByte(at, block + 2), 0, 17});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).ToneGain[4] = -3.5;
            e.Image(FaultWorld::Front).PresetBody[L::Tone(2, 0) + 4] = 17;
        });
}

FaultOperation Threshold() {
    return Change(
        "Threshold", [](controls::FrmCtrl& form) { form.Slider4[3].UserMove(49); },
        [](FaultWorld& at) {
            const std::size_t block = L::Dynamics(3);
            return OneStep(FaultWorld::Front, {7, 3, 0, 0, 0, BodyByte(at, block), BodyByte(at, block + 1), 0, 11});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).LimiterThreshold[3] = 11;
            e.Image(FaultWorld::Front).PresetBody[L::Dynamics(3) + 3] = 11;
        });
}

int OtherSource(std::uint8_t source) {
    return source == 1 ? 2 : 1;
}

FaultOperation Source() {
    FaultOperation operation;
    operation.Name = "Source";
    operation.Event = [](FaultWorld& at) {
        const int chosen = OtherSource(BodyByte(at, L::Source(1)));
        at.InWindow(FaultWorld::FrontSlot, [&] { at.Window(FaultWorld::FrontSlot).Combo3[1].UserSelect(chosen); });
    };
    operation.Steps = [](FaultWorld& at) {
        return OneStep(FaultWorld::Front, {8, 3, 0, 0, 0, 0, 0, 0, OtherSource(BodyByte(at, L::Source(1)))});
    };
    operation.Expect = [](Expectation& e) {
        std::uint8_t& source = e.Image(FaultWorld::Front).PresetBody[L::Source(1)];
        source = static_cast<std::uint8_t>(OtherSource(source));
        e.Values(FaultWorld::Front).OutputSource[1] = source;
    };
    return operation;
}

FaultOperation Master() {
    return Change(
        "Master", [](controls::FrmCtrl& form) { form.Slider100.UserMove(61); },
        [](FaultWorld&) {
            return OneStep(FaultWorld::Front, {0x0C, 0, 0, 0, 0, 0, 0, 0, 59});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).MasterGain = -0.2;
            e.Image(FaultWorld::Front).PresetBody[L::Master] = 59;
        });
}

FaultOperation InputType() {
    return Change(
        "InputType", [](controls::FrmCtrl& form) { form.Combo4.UserSelect(0); },
        [](FaultWorld&) {
            return OneStep(FaultWorld::Front, {0x0D, 0, 0, 0, 0, 0, 0, 0, 0});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).InputType = 0;
            e.After.Stores->LastInputType = 0;
            e.Image(FaultWorld::Front).SystemPage[16] = 0x20;
        });
}

FaultOperation Unit() {
    FaultOperation operation = Change(
        "Unit", [](controls::FrmCtrl& form) { form.Option1[1].Select(); },
        [](FaultWorld&) {
            return OneStep(FaultWorld::Front, {0x11, 0, 16, 0, 0, 0x70});
        },
        [](Expectation& e) {
            e.Values(FaultWorld::Front).DelayUnit = 1;
            e.Image(FaultWorld::Front).SystemPage[16] = 0x70;
        });
    operation.AlsoSee = [](FaultWorld& at, const Expectation& e) {
        const std::string& text = at.Window(FaultWorld::FrontSlot).Text2[0].Text();
        EXPECT_EQ(text.ends_with(" ms"), e.Stopped) << text;
    };
    return operation;
}

FaultOperation Flat() {
    FaultOperation operation = Change(
        "Flat", [](controls::FrmCtrl& form) { form.Command1[1].UserClick(); },
        [](FaultWorld& at) {
            std::vector<Frame> frames;
            for (int section = 0; section < 10; ++section) {
                const std::size_t block = L::Peq(1, section);
                frames.push_back(FrameTo(
                    FaultWorld::Front, {5, 1, section, 0, 0, BodyByte(at, block + 1), BodyByte(at, block + 2), 0, 75}));
            }
            return StepsOf(frames);
        },
        [](Expectation& e) {
            for (int section = 0; section < 10; ++section) {
                e.Values(FaultWorld::Front).PeqGain[static_cast<std::size_t>(section) + 10] = 0.0;
                e.Image(FaultWorld::Front).PresetBody[L::Peq(1, section) + 4] = 75;
            }
        });
    operation.Exchanges = 10;
    operation.Questions = {{"Flat Eq", AreYouSure}};
    operation.Called = "the flattening";
    operation.Counted = true;
    return operation;
}

} // namespace

std::vector<FaultOperation> ChangeOperations() {
    return {Gain(),      GainInTheOtherWindow(),
            Delay(),     Phase(),
            Mute(),      Crossover(),
            Peq(),       Tone(),
            Threshold(), Source(),
            Master(),    InputType(),
            Unit(),      Flat()};
}

} // namespace nrv::testing
