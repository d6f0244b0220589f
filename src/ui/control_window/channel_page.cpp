#include "controls/frm_ctrl.h"
#include "ui/control_window/channel_layout.h"
#include "ui/control_window/page_builder.h"
#include "ui/control_window/pages.h"
#include "ui/look/theme.h"
#include "ui/widgets/fader.h"
#include "ui/widgets/graph_view.h"
#include "ui/widgets/marker_dot.h"
#include "ui/widgets/mute_button.h"
#include "ui/widgets/option_button.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/value_text.h"

#include <QCheckBox>

#include <array>
#include <cmath>

namespace nrv::ui {
namespace {

constexpr int GraphPanelWidth = 620;
constexpr QPoint GraphOrigin(36, 8);
constexpr int ScaleHeight = 11;
constexpr int SideLeft = PanelsLeft + GraphPanelWidth + Gap;
constexpr int SideWidth = PanelsRight - SideLeft;
constexpr int DelayPanelHeight = 88;

void AddScales(PageBuilder& builder, Panel& panel) {
    constexpr std::array<std::pair<int, const char*>, 7> levels = {
        {{30, "+30"}, {20, "+20"}, {10, "+10"}, {0, " 0"}, {-10, "-10"}, {-20, "-20"}, {-30, "-30"}}};
    for (const auto& [level, text] : levels) {
        const int y = GraphOrigin.y() + static_cast<int>(std::lround(GraphView::PlaceOfLevel(level)));
        builder.AddText(panel, QRect(6, y - ScaleHeight / 2, GraphOrigin.x() - 6 - 4, ScaleHeight), QLatin1String(text),
                        TextRole::Scale, Qt::AlignRight | Qt::AlignVCenter);
    }
    constexpr std::array<std::pair<int, const char*>, 4> frequencies = {
        {{20, "20Hz"}, {100, "100Hz"}, {1000, "1KHz"}, {10000, "10KHz"}}};
    constexpr int width = 40;
    const int y = GraphOrigin.y() + GraphView::GraphHeight + 2;
    for (const auto& [hertz, text] : frequencies) {
        const int x = GraphOrigin.x() + static_cast<int>(std::lround(GraphView::PlaceOfFrequency(hertz)));
        // The first would run under the lowest level if it stood in the middle of its line.
        const bool first = hertz == 20;
        builder.AddText(panel, QRect(first ? x : x - width / 2, y, width, ScaleHeight), QLatin1String(text),
                        TextRole::Scale, first ? Qt::AlignLeft | Qt::AlignVCenter : Qt::AlignCenter);
    }
}

void AddViewChoices(PageBuilder& builder, Panel& panel, int output, int y) {
    constexpr std::array<QRect, 3> options = {QRect(128, 0, 84, CheckHeight), QRect(220, 0, 130, CheckHeight),
                                              QRect(360, 0, 130, CheckHeight)};
    for (int choice = 0; choice < 3; ++choice) {
        builder.Add<OptionButton>(panel, "Option2", SumsPerOutput * output + choice,
                                  options[static_cast<std::size_t>(choice)].translated(0, y));
    }
    constexpr std::array<std::string_view, 5> boxes = {"Check4", "Check5", "Check6", "Check7", "Check8"};
    constexpr int pitch = 120;
    for (int row = 0; row < 5; ++row) {
        builder.Add<QCheckBox>(panel, boxes[static_cast<std::size_t>(row)], output,
                               QRect(8 + row * pitch, y + 17, pitch - 4, CheckHeight));
    }
}

void AddGraph(PageBuilder& builder, QWidget& page, int channel) {
    const QRect place(PanelsLeft, PanelsTop, GraphPanelWidth, GraphPanelBottom(channel) - PanelsTop);
    auto& panel = builder.Add<Panel>(page, "Frame10", channel, place);
    panel.SetAccent(ChannelColour(channel));
    AddScales(builder, panel);
    builder.Add<GraphView>(panel, "Picture1", channel,
                           QRect(GraphOrigin, QSize(GraphView::GraphWidth, GraphView::GraphHeight)));
    for (int section = FirstPeqOf(channel); section < FirstPeqOf(channel) + PeqCountOf(channel); ++section) {
        builder.Add<MarkerDot>(panel, "Label5", section, QRect(0, 0, MarkerDot::Extent, MarkerDot::Extent),
                               ChannelColour(channel), GraphOrigin);
    }
    const int choices = GraphOrigin.y() + GraphView::GraphHeight + ScaleHeight + 5;
    builder.Add<QCheckBox>(panel, "Check3", channel, QRect(8, choices, 112, CheckHeight));
    if (!IsInput(channel)) {
        AddViewChoices(builder, panel, OutputOf(channel), choices);
    }
}

void AddGain(PageBuilder& builder, QWidget& page, int channel) {
    const int index = channel + ChannelCount;
    const int panel_height = GraphPanelBottom(channel) - PanelsTop - Gap - DelayPanelHeight;
    auto& panel = builder.Add<Panel>(page, "Frame1", index, QRect(SideLeft, PanelsTop, SideWidth, panel_height));
    panel.SetAccent(ChannelColour(channel));
    builder.Add<ValueText>(panel, "Text1", index, QRect(6, 18, 36, 15));
    auto& fader = builder.Add<Fader>(panel, "Slider1", index, QRect(8, 33, 32, panel_height - 36));
    fader.SetColour(ChannelColour(channel));
    fader.SetReachesEndsByKey(false);
    builder.Add<MuteButton>(panel, "Check1", index, QRect(46, 28, 43, 22));
    AddPhase(builder, panel, index, QPoint(46, 60));
}

void AddDelay(PageBuilder& builder, QWidget& page, int channel) {
    const int index = channel + ChannelCount;
    auto& panel =
        builder.Add<Panel>(page, "Frame3", index,
                           QRect(SideLeft, GraphPanelBottom(channel) - DelayPanelHeight, SideWidth, DelayPanelHeight));
    panel.SetAccent(ChannelColour(channel));
    FillDelayStrip(builder, panel, index, QPoint(6, 20), QPoint(12, 44), QPoint(52, 44));
}

} // namespace

void BuildChannelPage(PageBuilder& builder, QWidget& page, int channel) {
    AddGraph(builder, page, channel);
    AddGain(builder, page, channel);
    AddDelay(builder, page, channel);
    BuildChannelFilters(builder, page, channel);
}

} // namespace nrv::ui
