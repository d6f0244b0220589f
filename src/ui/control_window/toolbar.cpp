#include "controls/frm_ctrl.h"
#include "ui/control_window/channel_layout.h"
#include "ui/control_window/page_builder.h"
#include "ui/control_window/pages.h"
#include "ui/look/theme.h"
#include "ui/look/tool_icons.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/tab_strip.h"

#include <QToolButton>

#include <array>
#include <vector>

namespace nrv::ui {
namespace {

constexpr int ButtonSize = 28;
constexpr int ButtonPitch = 32;
constexpr int GroupGap = 12;
constexpr int ToolbarHeight = 31;
constexpr int TabsTop = 32;

const std::vector<std::vector<int>>& ToolGroups() {
    using namespace controls;
    static const std::vector<std::vector<int>> groups = {
        {LoadPresetTool, SavePresetTool, StorePresetTool, ReadPresetTool},
        {PasswordTool, UnconnectTool},
        {EditNamesTool, CopyInputTool, CopyOutputTool}};
    return groups;
}

} // namespace

void BuildToolbar(PageBuilder& builder, QWidget& window) {
    auto& toolbar = builder.Add<Panel>(window, "Toolbar1", controls::NoIndex, QRect(0, 0, PageWidth, ToolbarHeight),
                                       Panel::Kind::Bare);
    int x = 6;
    for (const std::vector<int>& group : ToolGroups()) {
        for (const int tool : group) {
            auto& button = builder.Add<QToolButton>(toolbar, "Command2", tool, QRect(x, 2, ButtonSize, ButtonSize));
            button.setAutoRaise(true);
            button.setIconSize(QSize(ToolIconSize, ToolIconSize));
            button.setToolButtonStyle(Qt::ToolButtonIconOnly);
            button.setFocusPolicy(Qt::TabFocus);
            x += ButtonPitch;
        }
        x += GroupGap;
    }
}

void BuildTabs(PageBuilder& builder, QWidget& window) {
    constexpr int channel_tab_width = 69;
    constexpr std::array<int, 3> other_tab_widths = {52, 54, 62};
    auto& strip = builder.Add<TabStrip>(window, "SSTab1", controls::NoIndex,
                                        QRect(PanelsLeft, TabsTop, PanelsRight - PanelsLeft, TabStrip::StripHeight));
    for (int channel = 0; channel < ChannelCount; ++channel) {
        strip.AddTab(channel_tab_width, true);
    }
    for (const int width : other_tab_widths) {
        strip.AddTab(width, false);
    }
    for (int channel = 0; channel < ChannelCount; ++channel) {
        const QRect place = strip.MarkPlace(channel).translated(strip.pos());
        auto& mark = builder.Add<Lamp>(window, "Shape2", channel, place, ChannelColour(channel), 1.0);
        mark.setAttribute(Qt::WA_TransparentForMouseEvents);
    }
}

} // namespace nrv::ui
