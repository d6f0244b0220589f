#include "controls/frm_ctrl.h"
#include "ui/control_window/channel_layout.h"
#include "ui/control_window/page_builder.h"
#include "ui/control_window/pages.h"
#include "ui/look/theme.h"
#include "ui/widgets/fader.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/list_box.h"
#include "ui/widgets/mute_button.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/value_text.h"

#include <array>

namespace nrv::ui {
namespace {

constexpr int GainStripWidth = 75;
constexpr int GainStripHeight = PanelsBottom - PanelsTop;
constexpr int FadersTop = 38;
constexpr int FadersBottom = 372;
constexpr int LampSize = 22;
constexpr int LampPitch = 50;

void AddLamps(PageBuilder& builder, Panel& strip, int channel) {
    // Top to bottom; the fifth lamp of an output tells that its limiter works.
    const std::array<const char*, controls::LampsPerChannel> labels = {
        " Clip", IsInput(channel) ? "- 2 dB" : "  Limit", "- 6 dB", "-12 dB", "-18 dB", "-24dB"};
    constexpr int width = 37;
    auto& frame = builder.Add<Panel>(
        strip, "Frame11", channel,
        QRect(GainStripWidth - width - 2, FadersTop + 20, width, LampPitch * controls::LampsPerChannel),
        Panel::Kind::Bare);
    for (int row = 0; row < controls::LampsPerChannel; ++row) {
        const int lamp = controls::LampsPerChannel * channel + controls::LampsPerChannel - 1 - row;
        builder.Add<Lamp>(frame, "Shape1", lamp, QRect((width - LampSize) / 2, row * LampPitch, LampSize, LampSize),
                          CurrentTheme().Unlit, 3.0);
        builder.AddText(frame, QRect(0, row * LampPitch + LampSize + 2, width, 12),
                        QLatin1String(labels[static_cast<std::size_t>(row)]), TextRole::Scale);
    }
}

void AddStrip(PageBuilder& builder, QWidget& page, int channel) {
    const QRect place(PanelsLeft + channel * (GainStripWidth + Gap), PanelsTop, GainStripWidth, GainStripHeight);
    auto& strip = builder.Add<Panel>(page, "Frame1", channel, place);
    strip.SetAccent(ChannelColour(channel));
    builder.Add<ValueText>(strip, "Text1", channel, QRect(3, 20, 36, 15));
    auto& fader = builder.Add<Fader>(strip, "Slider1", channel, QRect(4, FadersTop, 32, FadersBottom - FadersTop));
    fader.SetColour(ChannelColour(channel));
    fader.SetReachesEndsByKey(false);
    AddLamps(builder, strip, channel);
    builder.Add<MuteButton>(strip, "Check1", channel, QRect(8, 382, GainStripWidth - 16, 24));
    AddPhase(builder, strip, channel, QPoint(9, 416));
}

void AddMaster(PageBuilder& builder, QWidget& page) {
    constexpr int left = PanelsLeft + ChannelCount * (GainStripWidth + Gap);
    constexpr int width = PanelsRight - left;
    constexpr int input_height = 62;
    constexpr int master_height = GainStripHeight - Gap - input_height;
    auto& master = builder.Add<Panel>(page, "Frame1", 16, QRect(left, PanelsTop, width, master_height));
    master.SetAccent(CurrentTheme().Dim);
    builder.Add<ValueText>(master, "Text100", controls::NoIndex, QRect(width / 2 - 18, 20, 36, 15));
    auto& fader = builder.Add<Fader>(master, "Slider100", controls::NoIndex,
                                     QRect(width / 2 - 16, FadersTop, 32, FadersBottom - FadersTop));
    fader.SetReachesEndsByKey(false);

    auto* ground = new Panel(&page);
    ground->setGeometry(left, PanelsTop + master_height + Gap, width, input_height);
    ground->SetAccent(CurrentTheme().Dim);
    auto& label = builder.Add<QLabel>(*ground, "Label6", controls::NoIndex, QRect(7, 6, width - 14, 14));
    label.setFont(CaptionFont());
    label.setForegroundRole(QPalette::PlaceholderText);
    builder.Add<ListBox>(*ground, "Combo4", controls::NoIndex, QRect(7, 28, width - 14, FieldHeight));
}

} // namespace

void BuildGainsPage(PageBuilder& builder, QWidget& page) {
    for (int channel = 0; channel < ChannelCount; ++channel) {
        AddStrip(builder, page, channel);
    }
    AddMaster(builder, page);
}

} // namespace nrv::ui
