#include "controls/frm_ctrl.h"
#include "ui/control_window/channel_layout.h"
#include "ui/control_window/page_builder.h"
#include "ui/control_window/pages.h"
#include "ui/look/theme.h"
#include "ui/widgets/option_button.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/routing_drawing.h"
#include "ui/widgets/wire.h"

#include <array>

namespace nrv::ui {
namespace {

constexpr int DelayStripWidth = 200;
constexpr int DelayStripHeight = 73;
constexpr int StripPitch = DelayStripHeight + Gap;
constexpr int DrawingLeft = PanelsLeft + DelayStripWidth;
constexpr int DrawingRight = PanelsRight - DelayStripWidth;
constexpr int BranchOffset = 8; // an output's two branches lie this far above and below its middle

constexpr int UnitsRow = 5;

constexpr int RowTop(int row) {
    return PanelsTop + row * StripPitch;
}
constexpr int RowMiddle(int row) {
    return RowTop(row) + DelayStripHeight / 2;
}

void AddStrip(PageBuilder& builder, QWidget& page, int channel, QPoint place) {
    auto& strip = builder.Add<Panel>(page, "Frame3", channel, QRect(place, QSize(DelayStripWidth, DelayStripHeight)));
    strip.SetAccent(ChannelColour(channel));
    FillDelayStrip(builder, strip, channel, QPoint(10, 31), QPoint(110, 20), QPoint(154, 20));
}

void AddRouting(PageBuilder& builder, QWidget& page) {
    constexpr int width = DrawingRight - DrawingLeft;
    auto* drawing = new RoutingDrawing(&page, Panel::Kind::Bare);
    drawing->setGeometry(DrawingLeft, 0, width, PageHeight);
    constexpr std::array<std::string_view, 2> names = {"Line1", "Line2"};
    for (int input = 0; input < 2; ++input) {
        const QColor colour = ChannelColour(input);
        RoutingDrawing::Bus bus{.Colour = colour,
                                .X = width / 2 - 20 + 40 * input,
                                .FeedsFrom = QPoint(0, RowMiddle(InputRows[static_cast<std::size_t>(input)])),
                                .Branches = {}};
        for (int output = 0; output < OutputCount; ++output) {
            const int y = RowMiddle(output) + (input == 0 ? -BranchOffset : BranchOffset);
            const QRect place(bus.X - Wire::DotCentre, y - Wire::DotCentre, width - bus.X + Wire::DotCentre,
                              Wire::BranchHeight);
            bus.Branches.push_back(&builder.Add<Wire>(*drawing, names[static_cast<std::size_t>(input)], output, place,
                                                      Wire::Shape::Branch, colour));
        }
        drawing->AddBus(std::move(bus));
    }
}

} // namespace

void BuildDelaysPage(PageBuilder& builder, QWidget& page) {
    AddRouting(builder, page);
    for (int input = 0; input < 2; ++input) {
        AddStrip(builder, page, input, QPoint(PanelsLeft, RowTop(InputRows[static_cast<std::size_t>(input)])));
    }
    for (int output = 0; output < OutputCount; ++output) {
        AddStrip(builder, page, ChannelOfOutput(output), QPoint(DrawingRight, RowTop(output)));
    }
    auto& units = builder.Add<Panel>(page, "Frame4", controls::NoIndex,
                                     QRect(PanelsLeft, RowTop(UnitsRow) + 20, DelayStripWidth, DelayStripHeight - 20));
    builder.Add<OptionButton>(units, "Option1", 0, QRect(10, 25, 80, CheckHeight));
    builder.Add<OptionButton>(units, "Option1", 1, QRect(104, 25, 80, CheckHeight));
}

} // namespace nrv::ui
