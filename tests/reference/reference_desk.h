#pragma once

#include "model/any_edit.h"
#include "model/command_window.h"
#include "reference/page.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace nrv::testing {

inline const std::vector<Section>& LinePage() {
    static const std::vector<Section> page = SectionsOf(TextOfFile(NRV718_SOURCES "/docs/line.md"));
    return page;
}

/// The codes of commands, in hex as the page heads its sections, with what their answers are told to be.
struct ToldAnswer {
    std::size_t Length = 0;
    std::set<int> LookedAt;
};
inline std::map<int, ToldAnswer> ToldAnswers(const std::vector<Section>& page) {
    std::map<int, ToldAnswer> told;
    for (const Row& row : SectionNamed(page, "Commands").Tables.at(0)) {
        ToldAnswer& answer = told[std::stoi(row.at(0), nullptr, 16)];
        answer.Length = row.at(2) == "none" ? 0 : std::stoul(row.at(2));
        if (const std::size_t number = row.at(3).find_first_of("0123456789"); number != std::string::npos) {
            const std::vector<int> bytes = SpanOf(row.at(3).substr(number));
            answer.LookedAt.insert(bytes.begin(), bytes.end());
        }
    }
    return told;
}

/// The window of device 9, with every way there is to make the program send.
class ReferenceDesk : public CommandWindow {
  public:
    ReferenceDesk() { values.DevicePassword.fill(' '); }
    void TestBody() override {}

    const std::vector<Frame>& Sent() const { return world.Port.Sent; }
    /// Plays the far end: the given answers first, then the line's own.
    void AnswerWith(std::vector<Bytes> answers) {
        world.Port.Answer = [this, answers = std::move(answers), next = std::size_t{0}](const Frame& frame) mutable {
            return next < answers.size() ? answers[next++] : line.Answer(frame);
        };
    }
    /// Answers of the right length and of nothing but ones, where the page says that they are not looked at.
    void AnswerNonsense() {
        world.Port.Answer = [this, told = ToldAnswers(LinePage())](const Frame& frame) {
            const ToldAnswer& answer = told.at(frame[3]);
            return answer.LookedAt.empty() ? Bytes(answer.Length, 0xFF) : line.Answer(frame);
        };
    }
    void ByUser(const std::function<void()>& event) { program.Events.Run(UserIn(0), event); }
    void ClickTool(controls::ToolButton tool) {
        ByUser([&] { form.Command2.at(At(tool)).UserClick(); });
    }
    void PollMeters() {
        form.SSTab1.SetTab(controls::GainsTab);
        program.Events.Run(MeterTick(0), [this] { form.Timer1.Tick(); });
    }
    int LampsOf(int channel) {
        int lit = 0;
        for (int lamp = 0; lamp < controls::LampsPerChannel; ++lamp) {
            lit += form.Shape1[At(controls::LampsPerChannel * channel + lamp)].Lit() ? 1 : 0;
        }
        return lit;
    }
    /// What the window holds, saved and loaded.
    void LoadOwnFile(bool mutes_with_preset) {
        values.MuteWithPreset = mutes_with_preset ? 1.0 : 0.0;
        world.Files.File = world.Folder / "own.n91";
        ClickTool(controls::SavePresetTool);
        TakeSent();
        ClickTool(controls::LoadPresetTool);
    }
    void ReadPosition(int position) {
        values.PresetUsed[At(position)] = model::PresetUsedMark;
        InDialog(controls::ReadPresetTool, [&] {
            world.Forms.Read.List1.UserSelect(position);
            world.Forms.Read.Command1[1].UserClick();
        });
    }
    void Store(int position) {
        InDialog(controls::StorePresetTool, [&] {
            world.Forms.Store.List1.UserSelect(position);
            world.Forms.Store.Command1[1].UserClick();
        });
    }
    void Lock(bool locked) {
        InDialog(controls::PasswordTool, [&] {
            controls::FrmPassword& dialog = world.Forms.Password;
            dialog.Command1[0].UserClick(); // the password is blanks
            dialog.Check1.SetValue(locked ? 1 : 0);
            dialog.Command1[3].UserClick();
        });
    }
    void SetPassword(const std::string& password) {
        InDialog(controls::PasswordTool, [&] {
            controls::FrmPassword& dialog = world.Forms.Password;
            dialog.Command1[2].UserClick();
            dialog.Text2.UserText(password);
            dialog.Text3.UserText(password);
            dialog.Command1[5].UserClick();
        });
    }
    void NameChannel(int channel, const std::string& name) {
        InDialog(controls::EditNamesTool, [&] {
            world.Forms.EditNames.Text1[At(channel)].UserText(name);
            world.Forms.EditNames.Command1[0].UserClick();
        });
    }
    void Unconnect() { ClickTool(controls::UnconnectTool); }
    void Leave() {
        program.Events.Run(UserOutside(), [this] { program.Main.Exit.UserClick(); });
        EXPECT_TRUE(world.Process.Ended);
    }

    using CommandWindow::form;
    using CommandWindow::image;
    using CommandWindow::line;
    using CommandWindow::program;
    using CommandWindow::TakeSent;
    using CommandWindow::values;
    using CommandWindow::world;
};

} // namespace nrv::testing
