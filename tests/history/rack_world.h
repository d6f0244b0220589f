#pragma once

#include "model/any_edit.h"
#include "presets/load_trace.h"
#include "session/program_fixture.h"
#include "simulator/rack.h"

#include <cstring>
#include <random>
#include <string>
#include <vector>

namespace nrv::testing {

/// What a control shows, in words.
inline std::string Shown(const controls::Control&) {
    return {};
}
inline std::string Shown(const controls::Fader& fader) {
    return std::to_string(fader.Position());
}
inline std::string Shown(const controls::UpDown& arrows) {
    return std::to_string(arrows.Position());
}
inline std::string Shown(const controls::List& list) {
    return std::to_string(list.Index());
}
inline std::string Shown(const controls::CheckBox& box) {
    return std::to_string(box.Value());
}
inline std::string Shown(const controls::Option& option) {
    return option.Selected() ? "selected" : "";
}
inline std::string Shown(const controls::Marker& marker) {
    return std::to_string(marker.Left()) + ' ' + std::to_string(marker.Top());
}
inline std::string Shown(const controls::TextBox& box) {
    return box.Text();
}
inline std::string Shown(const controls::TabControl& tabs) {
    std::string captions;
    for (const std::string& caption : tabs.TabCaptions()) {
        captions += caption + '|';
    }
    return captions;
}

inline std::string Drawing(const controls::Picture& picture) {
    std::size_t sum = 0;
    for (const controls::Picture::Stroke& stroke : picture.Strokes()) {
        sum = 31 * sum + static_cast<std::size_t>(stroke.Pen.Red) * 3 + static_cast<std::size_t>(stroke.Pen.Blue);
        for (const controls::Picture::Point& point : stroke.Points) {
            sum = 31 * sum + static_cast<std::size_t>(point.X) * 7 + static_cast<std::size_t>(point.Y);
        }
    }
    return std::to_string(sum);
}

/// The program with the windows of three devices of a virtual rack.
class RackWorld : public ProgramTest {
  protected:
    static constexpr int Windows = 3;
    static constexpr std::array<int, Windows> Ids = {2, 5, 9};

    RackWorld() {
        for (const int id : Ids) {
            simulator::Device& device = rack.Add(id, "Device " + std::to_string(id));
            simulator::PresetBody body = AnyPreset();
            body[simulator::PresetMutesOffset] = 0;
            device.SetLiveImage(body);
            for (const int position : {0, 3}) {
                device.PutPreset(position, "Stored " + std::to_string(position), AnyPreset());
            }
        }
        world.Port.Answer = [this](const Frame& frame) { return Answer(frame); };
        Start([this] { ProceedWith(controls::MoreDevices, 1); });
        program.List.Timer1.Tick();
        for (int row = 0; row < Windows; ++row) {
            DoubleClick(row);
        }
        Forget();
    }

    Bytes Answer(const Frame& frame) {
        if (answers_left == 0) {
            return {};
        }
        answers_left -= answers_left > 0 ? 1 : 0;
        simulator::Frame request;
        std::ranges::copy(frame, request.begin());
        const auto reply = rack.Handle(request);
        return reply ? Bytes(reply->begin(), reply->end()) : Bytes();
    }
    /// With every code inside its range.
    simulator::PresetBody AnyPreset() {
        const Body body = RandomPreset(random);
        simulator::PresetBody preset{};
        std::copy_n(body.begin(), preset.size(), preset.begin());
        return preset;
    }
    /// A preset file of the folder.
    std::filesystem::path AnyFile(const std::string& name) {
        const simulator::PresetBody body = AnyPreset();
        Bytes bytes(771, 0);
        std::ranges::copy(body, bytes.begin());
        bytes[433 + 16] = 64; // shows metres
        world.Folder.Write(name, bytes);
        return world.Folder.Path() / name;
    }

    /// What a window shows but for its graphs, and the stores of its device.
    struct Settled {
        std::vector<std::uint8_t> Image;
        std::vector<double> Values;
        std::vector<std::string> Controls;
    };
    /// Everything that a step of one window may touch.
    struct All : Settled {
        std::vector<double> Curves;
        std::vector<std::uint8_t> Live;
        std::vector<std::uint8_t> Memory;
        double LastInputType = 0.0;
    };
    Settled SettledIn(int slot) {
        const std::size_t id = At(Ids[At(slot)]);
        Settled settled;
        const model::PresetImageRow& image = program.Stores.PresetImage[id];
        const auto* const bytes = reinterpret_cast<const std::uint8_t*>(&image);
        settled.Image.assign(bytes, bytes + sizeof image);
        const model::ParamRow& values = program.Stores.ParamValues[id];
        const auto* const numbers = reinterpret_cast<const double*>(&values);
        settled.Values.assign(numbers, numbers + offsetof(model::ParamRow, PresetNames) / sizeof(double));
        controls::ForEachControl(Window(slot), [&](std::string_view name, int index, const auto& control) {
            settled.Controls.push_back(std::string(name) + '(' + std::to_string(index) + ") " + Shown(control) + " \"" +
                                       control.Caption() + "\" \"" + control.ToolTip() + "\" " +
                                       std::to_string(control.Visible()) + std::to_string(control.Enabled()));
        });
        settled.Controls.push_back(Window(slot).Window.Caption());
        for (const std::string& name : program.Stores.ChannelNames[id]) {
            settled.Controls.push_back(name);
        }
        return settled;
    }
    All Look(int slot) {
        const int id = Ids[At(slot)];
        program.Windows.CurrentWindow = slot;
        for (int channel = 0; channel < ChannelCount; ++channel) {
            program.Response.RedrawChannel(channel); // an image that is applied draws its graphs before its master gain
        }
        All all{SettledIn(slot), {}, {}, {}, 0.0};
        const std::vector<std::string> drawn = Drawn(slot);
        all.Controls.insert(all.Controls.end(), drawn.begin(), drawn.end());
        for (int channel = 0; channel < ChannelCount; ++channel) {
            const auto& curve = program.Response.ChannelTotal(channel);
            all.Curves.insert(all.Curves.end(), curve.begin(), curve.end());
        }
        all.Live.assign(rack.At(id).LiveImage().begin(), rack.At(id).LiveImage().end());
        for (std::size_t address = 0; address < 257; ++address) {
            all.Memory.push_back(rack.At(id).Memory(address));
        }
        all.LastInputType = program.Stores.LastInputType;
        return all;
    }
    void ExpectSame(const All& now, const All& before, const std::string& when) {
        EXPECT_EQ(now.Image, before.Image) << when;
        EXPECT_EQ(now.Values, before.Values) << when;
        ASSERT_EQ(now.Controls.size(), before.Controls.size()) << when;
        for (std::size_t n = 0; n < before.Controls.size(); ++n) {
            EXPECT_EQ(now.Controls[n], before.Controls[n]) << when;
        }
        EXPECT_EQ(now.Curves, before.Curves) << when;
        EXPECT_EQ(now.Live, before.Live) << when;
        EXPECT_EQ(now.Memory, before.Memory) << when;
        EXPECT_EQ(now.LastInputType, before.LastInputType) << when;
    }

    std::vector<std::string> Drawn(int slot) {
        std::vector<std::string> drawn;
        for (const controls::Picture& graph : Window(slot).Picture1) {
            drawn.push_back(Drawing(graph));
        }
        return drawn;
    }
    /// What is drawn is what would be drawn now.
    void ExpectDrawn(int slot, const std::string& when) {
        const std::vector<std::string> drawn = Drawn(slot);
        Look(slot);
        EXPECT_EQ(Drawn(slot), drawn) << when;
    }

    void By(int slot, const std::function<void()>& event) { program.Events.Run(UserIn(slot), event); }
    void Undo(int slot) {
        program.Windows.CurrentWindow = slot;
        program.Events.Run(UserOutside(), [this] { program.Main.Undo.UserClick(); });
    }
    void Redo(int slot) {
        program.Windows.CurrentWindow = slot;
        program.Events.Run(UserOutside(), [this] { program.Main.Redo.UserClick(); });
    }
    void Compare(int slot) {
        program.Windows.CurrentWindow = slot;
        program.Events.Run(UserOutside(), [this] { program.Main.Compare.UserClick(); });
    }
    void Revert(int slot) {
        program.Windows.CurrentWindow = slot;
        program.Events.Run(UserOutside(), [this] { program.Main.Revert.UserClick(); });
    }
    std::size_t Depth(int slot) { return program.History.Depth(slot); }
    std::size_t FramesSent() {
        const std::size_t sent = world.Port.Sent.size();
        world.Port.Sent.clear();
        return sent;
    }

    int Pick(int count) { return static_cast<int>(random() % static_cast<unsigned>(count)); }
    /// A single edit of any kind by a window's controls.
    void Edit(int slot) {
        controls::FrmCtrl& form = Window(slot);
        By(slot, [&] { EditAnyParameter(form, random); });
    }
    /// Opens a dialog by its tool button, which it has to, and does something in it.
    void InDialog(int slot, controls::ToolButton tool, const std::function<void()>& script) {
        bool stood = false;
        world.Host.WhileToolDialogStands = [&] { stood = program.Events.Run(UserInDialog(), script); };
        By(slot, [&] { Window(slot).Command2[At(tool)].UserClick(); });
        world.Host.WhileToolDialogStands = nullptr;
        EXPECT_TRUE(stood) << "the dialog did not open";
    }
    void Load(int slot, const std::filesystem::path& file) {
        world.Files.File = file;
        By(slot, [&] { Window(slot).Command2[controls::LoadPresetTool].UserClick(); });
    }
    void Read(int slot, int position) {
        InDialog(slot, controls::ReadPresetTool, [&] {
            world.Forms.Read.List1.UserSelect(position);
            world.Forms.Read.Command1[1].UserClick();
        });
    }
    void CopyOutput(int slot, int from, int to) {
        InDialog(slot, controls::CopyOutputTool, [&] {
            world.Forms.CopyOut.Combo1[0].UserSelect(from);
            world.Forms.CopyOut.Combo1[1].UserSelect(to);
            world.Forms.CopyOut.Command1.UserClick();
        });
    }
    void CopyInput(int slot, int from) {
        InDialog(slot, controls::CopyInputTool, [&] { world.Forms.CopyIn.Command1[At(from)].UserClick(); });
    }
    void Flat(int slot, int channel) {
        By(slot, [&] { Window(slot).Command1[At(channel)].UserClick(); });
    }
    void Rename(int slot, int channel, const std::string& name) {
        InDialog(slot, controls::EditNamesTool, [&] {
            world.Forms.EditNames.Text1[At(channel)].UserText(name);
            world.Forms.EditNames.Command1[0].UserClick();
        });
    }

    simulator::Rack rack;
    long answers_left = -1; ///< how often the line answers yet; less than 0 for ever
    std::mt19937 random{718};
};

} // namespace nrv::testing
