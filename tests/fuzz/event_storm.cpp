#include "fuzz/desk.h"

#include <algorithm>
#include <array>
#include <filesystem>

// Whatever a user does in two windows, the list and the dialogs, with the timers between, on a line that now and then
// fails.

namespace nrv::fuzz {
namespace {

using controls::FrmCtrl;

class Storm {
  public:
    Storm(Desk& desk, Input& input) : desk_(desk), input_(input) {}

    void Rage() {
        desk_.Reset();
        std::error_code ignored;
        std::filesystem::remove(PresetFile(), ignored);
        for (int n = 0; n < MostEvents && !input_.Empty() && !desk_.Ended(); ++n) {
            desk_.AnswerBoxes(0);
            desk_.World().Files.File.reset();
            Event();
        }
    }

  private:
    static constexpr int MostEvents = 24;

    std::filesystem::path PresetFile() { return desk_.World().Folder / "preset" / "storm.n91"; }
    program::Program& Program() { return desk_.Program(); }

    void Event() {
        const std::uint8_t kind = input_.Byte();
        if (kind < 160) {
            InAWindow(kind % 10);
            return;
        }
        switch (kind % 10) {
        case 0:
            desk_.AnswerBoxes(input_.Byte());
            Tool();
            break;
        case 1:
            desk_.AnswerBoxes(input_.Byte());
            OpenRow();
            break;
        case 2:
            desk_.Meet({static_cast<Trouble::Kind>(input_.Below(Trouble::Kinds)), input_.Byte(), input_.Byte() % 32});
            break;
        case 3:
            TickMeters();
            break;
        case 4:
            TickList();
            break;
        case 5:
            CloseWindow();
            break;
        case 6:
            Port();
            break;
        case 7:
            desk_.Meet({});
            break;
        case 8:
            desk_.AnswerBoxes(input_.Byte());
            Step();
            break;
        default:
            desk_.AnswerBoxes(input_.Byte());
            Leave();
            break;
        }
    }

    /// The menu "Edit", and the timer that keeps copies.
    void Step() {
        controls::MDIFrmMain& main = Program().Main;
        const std::array<controls::Button*, 6> entries = {&main.Undo, &main.Undo,    &main.Redo,
                                                          &main.Redo, &main.Compare, &main.Revert};
        const std::size_t entry = input_.Below(entries.size() + 1);
        if (entry == entries.size()) {
            main.AutosaveTimer.Tick();
        } else if (entries[entry]->Enabled()) {
            desk_.Run(testing::UserOutside(), [&] { entries[entry]->UserClick(); });
        }
    }

    int AnyWindow() {
        const int slot = static_cast<int>(input_.Below(3));
        return Program().Windows.Loaded[At(slot)] ? slot : Program().Windows.CurrentWindow;
    }

    /// A user's event on a control that can be used.
    template <class Control, class Act>
    void On(int slot, Control& control, Act act) {
        if (control.Enabled() && control.Visible()) {
            desk_.InWindow(slot, [&] { act(control); });
        }
    }
    template <class Controls>
    auto& AnyOf(Controls& controls) {
        return controls[input_.Below(controls.size())];
    }

    void InAWindow(int kind) {
        const int slot = AnyWindow();
        if (!Program().Windows.Loaded[At(slot)]) {
            return;
        }
        FrmCtrl& form = desk_.Window(slot);
        switch (kind) {
        case 0:
        case 1: {
            controls::Fader& fader = AnyFader(form);
            const int position = input_.Byte();
            On(slot, fader, [position](controls::Fader& it) { it.UserMove(position); });
            break;
        }
        case 2: {
            controls::List& list = AnyList(form);
            const int line = static_cast<int>(input_.Below(list.Items().size()));
            On(slot, list, [line](controls::List& it) { it.UserSelect(line); });
            break;
        }
        case 3:
            On(slot, AnyBox(form), [](controls::CheckBox& it) { it.UserToggle(); });
            break;
        case 4: {
            controls::Option& option = input_.Flag() ? AnyOf(form.Option1) : AnyOf(form.Option2);
            On(slot, option, [](controls::Option& it) { it.Select(); });
            break;
        }
        case 5: {
            controls::UpDown& arrows = AnyArrows(form);
            const int steps = input_.Signed();
            On(slot, arrows, [steps](controls::UpDown& it) { it.UserStep(steps); });
            break;
        }
        case 6:
            Drag(slot, form);
            break;
        case 7: {
            const int tab = static_cast<int>(input_.Below(controls::TabCount));
            On(slot, form.SSTab1, [tab](controls::TabControl& it) { it.SetTab(tab); });
            break;
        }
        case 8: {
            controls::Label& label = AnyLabel(form);
            On(slot, label, [](controls::Label& it) { it.UserClick(); });
            break;
        }
        default:
            TypeOrFlatten(slot, form);
            break;
        }
    }

    controls::Fader& AnyFader(FrmCtrl& form) {
        switch (input_.Below(7)) {
        case 0:
            return AnyOf(form.Slider1);
        case 1:
            return AnyOf(form.Slider2);
        case 2:
            return AnyOf(form.Slider3);
        case 3:
            return AnyOf(form.Slider4);
        case 4:
            return AnyOf(form.Slider5);
        case 5:
            return AnyOf(form.Slider6);
        default:
            return form.Slider100;
        }
    }
    controls::List& AnyList(FrmCtrl& form) {
        switch (input_.Below(4)) {
        case 0:
            return AnyOf(form.Combo1);
        case 1:
            return AnyOf(form.Combo2);
        case 2:
            return AnyOf(form.Combo3);
        default:
            return form.Combo4;
        }
    }
    controls::CheckBox& AnyBox(FrmCtrl& form) {
        switch (input_.Below(4)) {
        case 0:
            return AnyOf(form.Check1);
        case 1:
            return AnyOf(form.Check2);
        case 2:
            return AnyOf(form.Check3);
        default: {
            const int row = static_cast<int>(input_.Below(ViewsPerOutput));
            return form.ViewBox(row, static_cast<int>(input_.Below(OutputCount)));
        }
        }
    }
    controls::UpDown& AnyArrows(FrmCtrl& form) {
        switch (input_.Below(3)) {
        case 0:
            return AnyOf(form.UpDown1);
        case 1:
            return AnyOf(form.UpDown2);
        default:
            return AnyOf(form.UpDown3);
        }
    }
    controls::Label& AnyLabel(FrmCtrl& form) {
        switch (input_.Below(3)) {
        case 0:
            return AnyOf(form.Label100);
        case 1:
            return AnyOf(form.Label200);
        default:
            return AnyOf(form.Label400);
        }
    }

    void Drag(int slot, FrmCtrl& form) {
        controls::Marker& marker = AnyOf(form.Label5);
        const std::uint8_t what = input_.Byte();
        if ((what & 1) != 0) {
            On(slot, marker, [](controls::Marker& it) { it.Pressed(); });
        }
        for (int moves = (what >> 1) & 3; moves > 0; --moves) {
            const int x = input_.Word();
            const int y = input_.Word();
            On(slot, marker, [x, y](controls::Marker& it) { it.Moved(x, y); });
        }
        if ((what & 8) != 0) {
            On(slot, marker, [](controls::Marker& it) { it.Released(); });
        }
    }

    void TypeOrFlatten(int slot, FrmCtrl& form) {
        const std::size_t what = input_.Below(6);
        if (what == 5) {
            desk_.AnswerBoxes(input_.Byte() & 1);
            On(slot, AnyOf(form.Command1), [](controls::Button& it) { it.UserClick(); });
            return;
        }
        controls::TextBox& box = what == 0   ? AnyOf(form.Text2)
                                 : what == 1 ? AnyOf(form.Text4)
                                 : what == 2 ? AnyOf(form.Text5)
                                 : what == 3 ? AnyOf(form.Text7)
                                             : AnyOf(form.Text8);
        desk_.Paste(testing::UserIn(slot), box, input_.Text(input_.Below(6)));
        if (input_.Flag()) {
            desk_.Key(testing::UserIn(slot), box, controls::EnterKey);
        }
    }

    void Tool() {
        const int slot = AnyWindow();
        if (!Program().Windows.Loaded[At(slot)]) {
            return;
        }
        const std::array<controls::ToolButton, 9> tools{
            controls::LoadPresetTool, controls::SavePresetTool, controls::StorePresetTool,
            controls::ReadPresetTool, controls::PasswordTool,   controls::UnconnectTool,
            controls::EditNamesTool,  controls::CopyInputTool,  controls::CopyOutputTool};
        const controls::ToolButton tool = tools[input_.Below(tools.size())];
        if (input_.Flag()) {
            desk_.World().Files.File = PresetFile();
        }
        desk_.UseTool(slot, tool, [this, tool] { InDialog(tool); });
    }

    /// What the user does while a dialog stands; the meters go on beside it.
    void InDialog(controls::ToolButton tool) {
        for (std::size_t n = input_.Below(4) + 1; n > 0 && !desk_.Ended(); --n) {
            const std::uint8_t what = input_.Byte();
            if (what % 5 == 4) {
                TickMeters();
            } else if (what % 5 == 3) {
                InAWindow(what % 10); // passed over
            } else {
                Click(tool, what / 5);
            }
        }
    }
    void Click(controls::ToolButton tool, int what) {
        program::Forms& forms = desk_.World().Forms;
        const auto click = [this](controls::Button& button) {
            if (button.Enabled() && button.Visible()) {
                desk_.InDialog([&button] { button.UserClick(); });
            }
        };
        const auto number = static_cast<std::size_t>(what);
        switch (tool) {
        case controls::StorePresetTool:
            desk_.InDialog([&] { forms.Store.List1.UserDoubleClick(what % MemoryPositions); });
            click(forms.Store.Command1[number % 2]);
            break;
        case controls::ReadPresetTool:
            desk_.InDialog([&] { forms.Read.List1.UserSelect(what % MemoryPositions); });
            click(forms.Read.Command1[number % 2]);
            break;
        case controls::PasswordTool:
            if (what % 3 == 0) {
                forms.Password.Text1.UserText("pass0" + std::to_string(Program().Commands.DeviceId()));
            }
            if (what % 3 == 1) {
                desk_.InDialog([&] { forms.Password.Check1.UserToggle(); });
            }
            click(forms.Password.Command1[number % 7]);
            break;
        case controls::EditNamesTool:
            click(forms.EditNames.Command1[number % 2]);
            break;
        case controls::CopyInputTool:
            click(forms.CopyIn.Command1[number % 2]);
            break;
        case controls::CopyOutputTool:
            desk_.InDialog([&] { forms.CopyOut.Combo1[number % 2].UserSelect(what % OutputCount); });
            click(forms.CopyOut.Command1);
            break;
        default:
            break;
        }
    }

    void OpenRow() {
        const int row = static_cast<int>(input_.Below(5));
        desk_.Run(testing::UserOutside(), [this, row] { Program().List.Devices.UserDoubleClick(row); });
    }
    void TickMeters() {
        const int slot = AnyWindow();
        controls::Timer& timer = desk_.Window(slot).Timer1;
        if (timer.Running()) {
            desk_.Run(testing::MeterTick(slot), [&timer] { timer.Tick(); });
        }
    }
    void TickList() {
        if (input_.Byte() < 8) {
            Program().List.Timer1.Start(1000);
        }
        if (Program().List.Timer1.Running()) {
            desk_.Run(testing::TimerTick(), [this] { Program().List.Timer1.Tick(); });
        }
    }
    void CloseWindow() {
        const int slot = AnyWindow();
        desk_.AnswerBoxes(input_.Byte());
        if (Program().Windows.Loaded[At(slot)]) {
            desk_.InWindow(slot, [this, slot] { Program().Control.QueryUnload(slot); });
        }
    }
    void Port() {
        testing::ScriptedPort& port = desk_.World().Port;
        if (input_.Flag()) {
            port.ComeBack();
        } else if (!port.Gone) {
            port.GoAway();
            Program().Events.RunWhenOver([this] { Program().TellPortWentAway("The port went away."); });
        }
    }
    void Leave() {
        if (input_.Byte() < 32) {
            desk_.Run(testing::UserOutside(), [this] { Program().Main.Exit.UserClick(); });
        } else {
            desk_.Run(testing::UserOutside(), [this] { Program().DeviceList.QueryUnload(); });
        }
    }

    Desk& desk_;
    Input& input_;
};

} // namespace
} // namespace nrv::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* bytes, std::size_t count) {
    static nrv::fuzz::Desk desk;
    nrv::fuzz::Input input(bytes, count);
    nrv::fuzz::Storm(desk, input).Rage();
    return 0;
}
