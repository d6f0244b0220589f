#include "program/fault_table.h"

// Names, lock and password, leaving a device or the program, and the meters.

namespace nrv::testing {
namespace {

using L = ImageLayout;

FaultOperation Names() {
    FaultOperation operation;
    operation.Name = "Names";
    operation.Exchanges = 6;
    const auto typed = [](const Body& before) {
        std::array<std::string, 8> names;
        for (int channel = 0; channel < 8; ++channel) {
            names[static_cast<std::size_t>(channel)] = NameIn(before, channel);
        }
        names[2] = "  Sub "; // typed without the blanks
        names[5] = "Lows.L";
        names[7] = " High ";
        return names;
    };
    operation.Event = [](FaultWorld& at) {
        at.InToolDialog(controls::EditNamesTool, [&at] {
            controls::FrmEditLabel& form = at.world.Forms.EditNames;
            form.Text1[2].UserText("Sub");
            form.Text1[5].UserText("Lows.L");
            form.Text1[7].UserText("High");
            at.InDialog([&] { form.Command1[0].UserClick(); });
        });
    };
    operation.Steps = [typed](FaultWorld& at) {
        const auto names = typed(BodyOf(at.Image(FaultWorld::Front)));
        std::vector<Frame> frames;
        for (int channel = 2; channel < 8; ++channel) {
            std::vector<int> payload{0x0E, channel, 0};
            for (const char character : names[static_cast<std::size_t>(channel)]) {
                payload.push_back(static_cast<std::uint8_t>(character));
            }
            frames.push_back(FrameTo(FaultWorld::Front, payload));
        }
        return StepsOf(frames);
    };
    operation.Expect = [typed](Expectation& e) {
        const auto names = typed(BodyOf(e.Image(FaultWorld::Front)));
        for (int channel = 2; channel < 8; ++channel) {
            const auto c = static_cast<std::size_t>(channel);
            // The image has the name before its frame goes out, the program's own table after it.
            if (e.Passed(channel - 3)) {
                std::ranges::copy(names[c], e.Image(FaultWorld::Front).PresetBody.begin() +
                                                static_cast<std::ptrdiff_t>(L::Name(channel)));
            }
            if (e.Passed(channel - 2)) {
                e.Names(FaultWorld::Front)[c] = channel == 2 ? "Sub" : channel == 7 ? "High" : names[c];
            }
        }
    };
    operation.Questions = {{"Edit Names", AreYouSure}};
    operation.Called = "the naming";
    operation.Counted = true;
    operation.AlsoSee = [](FaultWorld& at, const Expectation& e) {
        const controls::FrmCtrl& form = at.Window(FaultWorld::FrontSlot);
        EXPECT_EQ(form.Label300[2].Caption() == "Sub", e.Passed(0));
        EXPECT_EQ(form.Label300[7].Caption() == "High", e.Passed(5));
    };
    return operation;
}

void LogIn(FaultWorld& at) {
    at.world.Forms.Password.Text1.UserText("pass05");
    at.InDialog([&] { at.world.Forms.Password.Command1[0].UserClick(); });
}

FaultOperation Lock(bool locking) {
    FaultOperation operation;
    operation.Name = locking ? "Lock" : "Unlock";
    operation.Called = "the change of the lock";
    operation.Event = [locking](FaultWorld& at) {
        at.InToolDialog(controls::PasswordTool, [&at, locking] {
            LogIn(at);
            at.InDialog([&] { at.world.Forms.Password.Check1.SetValue(locking ? 1 : 0); });
            at.InDialog([&] { at.world.Forms.Password.Command1[3].UserClick(); });
        });
    };
    const int bits = locking ? 0xB0 : 0x30;
    operation.Steps = [bits](FaultWorld&) { return OneStep(FaultWorld::Front, {0x11, 0, 16, 0, 0, bits}); };
    operation.Expect = [locking, bits](Expectation& e) {
        e.Values(FaultWorld::Front).LockFlag = locking ? 1.0 : 0.0;
        e.Image(FaultWorld::Front).SystemPage[16] = static_cast<std::uint8_t>(bits);
        if (!e.Stopped) {
            e.After.Status = locking ? "ID:5 is locked. \"Password\" in its tool bar unlocks it." : "ID:5 is unlocked.";
        }
    };
    if (!locking) {
        operation.Prepare = [](FaultWorld& at) {
            Lock(true).Event(at);
            at.Forget();
        };
    }
    operation.AlsoSee = [locking](FaultWorld& at, const Expectation& e) {
        const controls::FrmCtrl& window = at.Window(FaultWorld::FrontSlot);
        EXPECT_EQ(window.Frame5[0].Enabled(), locking == e.Stopped);
        EXPECT_EQ(window.Window.Mark(), locking == e.Stopped ? "" : "Locked");
        EXPECT_EQ(window.Command2[controls::PasswordTool].InForce(), locking != e.Stopped);
        // It changes before the frame when locking and after it when unlocking; the dialog opens on the latter.
        EXPECT_EQ(at.world.Forms.Password.Label2.Caption(), locking ? "System Lock" : "System Unlock");
    };
    return operation;
}

FaultOperation Password() {
    FaultOperation operation;
    operation.Name = "Password";
    operation.Exchanges = 6;
    operation.Called = "the new password";
    operation.Counted = true;
    static const std::string Chosen = "Sesame";
    operation.Event = [](FaultWorld& at) {
        at.InToolDialog(controls::PasswordTool, [&at] {
            LogIn(at);
            at.InDialog([&] { at.world.Forms.Password.Command1[2].UserClick(); });
            at.world.Forms.Password.Text2.UserText(Chosen);
            at.world.Forms.Password.Text3.UserText(Chosen);
            at.InDialog([&] { at.world.Forms.Password.Command1[5].UserClick(); });
        });
    };
    operation.Steps = [](FaultWorld&) {
        std::vector<Frame> frames;
        for (int n = 0; n < 6; ++n) {
            frames.push_back(FrameTo(FaultWorld::Front, {0x11, 0, 26 + n, 0, 0, Chosen[static_cast<std::size_t>(n)]}));
        }
        return StepsOf(frames);
    };
    operation.Expect = [](Expectation& e) {
        for (int n = 0; n < 6; ++n) {
            if (e.Passed(n - 1)) {
                e.Values(FaultWorld::Front).DevicePassword[static_cast<std::size_t>(n)] =
                    Chosen[static_cast<std::size_t>(n)];
            }
        }
        if (!e.Stopped) {
            e.After.Status = "The new password of ID:5 is set.";
        }
    };
    operation.AlsoSee = [](FaultWorld& at, const Expectation& e) {
        EXPECT_EQ(at.world.Forms.Password.Frame3.Visible(), !e.Stopped) << "the login page";
    };
    return operation;
}

FaultOperation Unconnect() {
    FaultOperation operation;
    operation.Name = "Unconnect";
    operation.Answered = false;
    operation.Event = [](FaultWorld& at) {
        at.InWindow(FaultWorld::FrontSlot,
                    [&] { at.Window(FaultWorld::FrontSlot).Command2[controls::UnconnectTool].UserClick(); });
    };
    operation.Steps = [](FaultWorld&) { return OneStep(FaultWorld::Front, {0x0F}, Exchange::WithoutReply); };
    operation.Expect = [](Expectation& e) {
        if (!e.Stopped) {
            e.After.Unconnected[FaultWorld::Front] = true;
            e.After.Rows[1] = " Unconnected      ID:5";
            e.Remove(FaultWorld::FrontSlot);
            e.After.Status = "ID:5 is unconnected. Double-click its row to connect it again. The meters rest until "
                             "the next change.";
        }
    };
    operation.Questions = {{"Unconnect device", "Do you want unconnect this device, are you sure ? "}};
    return operation;
}

/// Nothing is sent, so nothing can fail; the faults only show that.
FaultOperation Close(int slot, int id, const std::string& name) {
    FaultOperation operation;
    operation.Name = name;
    operation.Exchanges = 0;
    operation.Event = [slot](FaultWorld& at) {
        at.InWindow(slot, [&] { EXPECT_TRUE(at.program.Control.QueryUnload(slot)); });
    };
    operation.Steps = [](FaultWorld&) { return std::vector<Step>{}; };
    operation.Expect = [slot](Expectation& e) {
        e.After.CurrentWindow = slot;
        e.Remove(slot);
    };
    operation.Questions = {{"ID:" + std::to_string(id) + " - Close window", AreYouSure}};
    operation.Slot = slot;
    operation.Device = id;
    return operation;
}

/// The levels that bytes 4 to 11 of an answer tell; those of muted outputs are nothing.
void ExpectLamps(const controls::FrmCtrl& form, const Bytes& answer, int mutes) {
    for (int channel = 0; channel < 8; ++channel) {
        const bool silenced = channel >= 2 && ((mutes >> channel) & 1) != 0;
        const int level = silenced ? 0 : answer[static_cast<std::size_t>(channel) + 4];
        if (level > 6) {
            continue; // the lamps stay
        }
        for (int lamp = 0; lamp < 6; ++lamp) {
            EXPECT_EQ(form.Shape1[static_cast<std::size_t>(6 * channel + lamp)].Lit(), lamp < level)
                << "channel " << channel << ", lamp " << lamp;
        }
    }
}

/// Every window's timer polls for the window in front.
FaultOperation Meters(const std::string& name, std::function<void(FaultWorld&)> tick) {
    FaultOperation operation;
    operation.Name = name;
    operation.Called = "the meters";
    operation.ByUser = false;
    operation.Prepare = [](FaultWorld& at) { at.Window(FaultWorld::FrontSlot).SSTab1.SetTab(controls::GainsTab); };
    operation.Event = std::move(tick);
    operation.Steps = [](FaultWorld&) { return OneStep(FaultWorld::Front, {0x12}); };
    operation.Expect = [](Expectation&) {};
    operation.AlsoSee = [](FaultWorld& at, const Expectation& e) {
        if (!e.Stopped) {
            const Bytes answer =
                e.Met.Kind == Fault::OtherAnswers ? WrongAnswer : Bytes{0, 0, 0, 0, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0};
            ExpectLamps(at.Window(FaultWorld::FrontSlot), answer, 0x19);
        }
    };
    return operation;
}

FaultOperation MetersBesideADialog() {
    FaultOperation operation = Meters("MetersBesideADialog", [](FaultWorld& at) {
        at.InToolDialog(controls::StorePresetTool, [&at] {
            EXPECT_TRUE(at.program.Events.Run(MeterTick(FaultWorld::FrontSlot),
                                              [&] { at.Window(FaultWorld::FrontSlot).Timer1.Tick(); }));
        });
    });
    operation.ByUser = true; // the dialog was
    return operation;
}

FaultOperation TickOf(int slot, const std::string& name) {
    return Meters(name, [slot](FaultWorld& at) {
        EXPECT_TRUE(at.program.Events.Run(MeterTick(slot), [&] { at.Window(slot).Timer1.Tick(); }));
    });
}

FaultOperation Exit() {
    FaultOperation operation;
    operation.Name = "Exit";
    operation.Called = "the leaving";
    operation.Answered = false;
    operation.Event = [](FaultWorld& at) {
        EXPECT_TRUE(at.program.Events.Run(UserOutside(), [&] { at.program.Main.Exit.UserClick(); }));
    };
    operation.Steps = [](FaultWorld&) { return OneStep(0, {0x8F}, Exchange::WithoutReply); };
    operation.Expect = [](Expectation& e) { e.After.Ended = !e.Stopped; };
    operation.Questions = {{"Exit", AreYouSure}};
    return operation;
}

} // namespace

std::vector<FaultOperation> ToolOperations() {
    return {Names(),
            Lock(true),
            Lock(false),
            Password(),
            Unconnect(),
            Close(FaultWorld::FrontSlot, FaultWorld::Front, "CloseTheFrontWindow"),
            Close(FaultWorld::BehindSlot, FaultWorld::Behind, "CloseTheWindowBehind"),
            TickOf(FaultWorld::FrontSlot, "Meters"),
            TickOf(FaultWorld::BehindSlot, "MetersByTheOtherTimer"),
            MetersBesideADialog(),
            Exit()};
}

} // namespace nrv::testing
