#pragma once

#include "controls/containers.h"
#include "controls/control.h"
#include "controls/text_box.h"
#include "controls/value_controls.h"
#include "ports/channels.h"

#include <array>
#include <string_view>

namespace nrv::controls {

inline constexpr int LampsPerChannel = 6;

/// The tabs of a control window that are no channel's.
enum ControlTab : int { GainsTab = 8, DelaysTab = 9, OverviewTab = 10, TabCount = 11 };

/// The tool buttons of a control window by index; 6 does not exist.
enum ToolButton : int {
    LoadPresetTool = 0,
    SavePresetTool = 1,
    StorePresetTool = 2,
    ReadPresetTool = 3,
    PasswordTool = 4,
    UnconnectTool = 5,
    EditNamesTool = 7,
    CopyInputTool = 8,
    CopyOutputTool = 9,
    ToolButtonCount = 10
};

/// The window of one device: every control by the name and index under which the commands know it, as it stands at
/// design.
struct FrmCtrl {
    static constexpr int WidthTwips = 10920;
    static constexpr int HeightTwips = 8220;

    FrmCtrl();

    Form Window;
    Frame Toolbar1;
    std::array<Button, ToolButtonCount> Command2;
    TabControl SSTab1;
    Timer Timer1;
    std::array<Shape, ChannelCount> Shape2;

    // A channel's strips: index c on "Gains" or "Delays", c + 8 on the channel's own tab.
    std::array<Frame, StripCount + 2> Frame1; ///< 16 "Master", 17 the block diagram
    std::array<Fader, StripCount> Slider1;
    std::array<TextBox, StripCount> Text1;
    std::array<CheckBox, StripCount> Check1;
    std::array<Frame, StripCount> Frame2;
    std::array<CheckBox, StripCount> Check2;
    std::array<Frame, ChannelCount> Frame11;
    std::array<Shape, std::size_t{ChannelCount} * LampsPerChannel> Shape1; ///< lamp 0 of a channel at the bottom
    std::array<Frame, StripCount> Frame3;
    std::array<TextBox, StripCount> Text2;
    std::array<UpDown, StripCount> UpDown2;
    std::array<UpDown, StripCount> UpDown1;
    Fader Slider100;
    TextBox Text100;
    Label Label6;
    List Combo4;
    Frame Frame4;
    std::array<Option, 2> Option1;

    // Equaliser: sections and tone filters by number.
    std::array<Frame, ChannelCount> Frame5;
    std::array<Fader, PeqCount> Slider2;
    std::array<TextBox, PeqCount> Text3;
    std::array<TextBox, PeqCount> Text4;
    std::array<UpDown, PeqCount> UpDown3;
    std::array<TextBox, PeqCount> Text5;
    std::array<Button, ChannelCount> Command1;
    std::array<Frame, ToneCount> Frame6;
    std::array<Fader, ToneCount> Slider3;
    std::array<TextBox, ToneCount> Text6;
    std::array<TextBox, ToneCount> Text7;
    std::array<List, ToneCount> Combo1;

    // Crossover sides, dynamics and routing.
    std::array<Frame, CrossoverCount> Frame7;
    std::array<TextBox, CrossoverCount> Text8;
    std::array<List, CrossoverCount> Combo2;
    std::array<Frame, ChannelCount> Frame8;
    std::array<Fader, ChannelCount> Slider4;
    std::array<Fader, ChannelCount> Slider5;
    std::array<Fader, ChannelCount> Slider6;
    std::array<TextBox, ChannelCount> Text9;
    std::array<TextBox, ChannelCount> Text10;
    std::array<TextBox, ChannelCount> Text11;
    std::array<Frame, OutputCount> Frame9;
    std::array<List, OutputCount> Combo3;

    // The graph of each channel.
    std::array<Frame, ChannelCount> Frame10;
    std::array<Picture, ChannelCount> Picture1;
    std::array<Marker, PeqCount> Label5;
    std::array<CheckBox, ChannelCount> Check3;
    std::array<Option, std::size_t{OutputCount} * SumsPerOutput> Option2;
    std::array<CheckBox, OutputCount> Check4;
    std::array<CheckBox, OutputCount> Check5;
    std::array<CheckBox, OutputCount> Check6;
    std::array<CheckBox, OutputCount> Check7;
    std::array<CheckBox, OutputCount> Check8;

    // The block diagram.
    std::array<Label, 42> Label100;
    std::array<Label, OutputCount> Label200;
    std::array<Label, ChannelCount> Label300;
    std::array<Label, 2> Label400;
    std::array<Picture, ChannelCount> Image1;
    std::array<Line, ChannelCount> Line6;
    std::array<Line, ChannelCount> Line7;
    std::array<Line, OutputCount> Line1000;
    std::array<Line, OutputCount> Line1100;
    std::array<Line, OutputCount> Line1;
    std::array<Line, OutputCount> Line2;

    // A marker's button is down, and the mouse has moved since; both end with the window.
    std::array<bool, PeqCount> MarkerDragging{};
    std::array<bool, PeqCount> MarkerMoved{};

    /// The view box of a row, 0 to 4, on the tab of an output, 0 to 5.
    CheckBox& ViewBox(int row, int output);
};

inline constexpr int NoIndex = -1;

/// Walks the inventory: `visit(name, index, control)` for every control; index is NoIndex for one that is no array's.
template <class Form, class Visitor>
void ForEachControl(Form& form, Visitor&& visit) {
    const auto each = [&visit](std::string_view name, auto& controls) {
        for (std::size_t i = 0; i < controls.size(); ++i) {
            visit(name, static_cast<int>(i), controls[i]);
        }
    };
    visit("Toolbar1", NoIndex, form.Toolbar1);
    each("Command2", form.Command2);
    visit("SSTab1", NoIndex, form.SSTab1);
    visit("Timer1", NoIndex, form.Timer1);
    each("Shape2", form.Shape2);
    each("Frame1", form.Frame1);
    each("Slider1", form.Slider1);
    each("Text1", form.Text1);
    each("Check1", form.Check1);
    each("Frame2", form.Frame2);
    each("Check2", form.Check2);
    each("Frame11", form.Frame11);
    each("Shape1", form.Shape1);
    each("Frame3", form.Frame3);
    each("Text2", form.Text2);
    each("UpDown2", form.UpDown2);
    each("UpDown1", form.UpDown1);
    visit("Slider100", NoIndex, form.Slider100);
    visit("Text100", NoIndex, form.Text100);
    visit("Label6", NoIndex, form.Label6);
    visit("Combo4", NoIndex, form.Combo4);
    visit("Frame4", NoIndex, form.Frame4);
    each("Option1", form.Option1);
    each("Frame5", form.Frame5);
    each("Slider2", form.Slider2);
    each("Text3", form.Text3);
    each("Text4", form.Text4);
    each("UpDown3", form.UpDown3);
    each("Text5", form.Text5);
    each("Command1", form.Command1);
    each("Frame6", form.Frame6);
    each("Slider3", form.Slider3);
    each("Text6", form.Text6);
    each("Text7", form.Text7);
    each("Combo1", form.Combo1);
    each("Frame7", form.Frame7);
    each("Text8", form.Text8);
    each("Combo2", form.Combo2);
    each("Frame8", form.Frame8);
    each("Slider4", form.Slider4);
    each("Slider5", form.Slider5);
    each("Slider6", form.Slider6);
    each("Text9", form.Text9);
    each("Text10", form.Text10);
    each("Text11", form.Text11);
    each("Frame9", form.Frame9);
    each("Combo3", form.Combo3);
    each("Frame10", form.Frame10);
    each("Picture1", form.Picture1);
    each("Label5", form.Label5);
    each("Check3", form.Check3);
    each("Option2", form.Option2);
    each("Check4", form.Check4);
    each("Check5", form.Check5);
    each("Check6", form.Check6);
    each("Check7", form.Check7);
    each("Check8", form.Check8);
    each("Label100", form.Label100);
    each("Label200", form.Label200);
    each("Label300", form.Label300);
    each("Label400", form.Label400);
    each("Image1", form.Image1);
    each("Line6", form.Line6);
    each("Line7", form.Line7);
    each("Line1000", form.Line1000);
    each("Line1100", form.Line1100);
    each("Line1", form.Line1);
    each("Line2", form.Line2);
}

} // namespace nrv::controls
