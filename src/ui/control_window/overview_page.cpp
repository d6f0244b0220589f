#include "controls/frm_ctrl.h"
#include "ui/control_window/channel_layout.h"
#include "ui/control_window/page_builder.h"
#include "ui/control_window/pages.h"
#include "ui/look/theme.h"
#include "ui/widgets/block.h"
#include "ui/widgets/channel_picture.h"
#include "ui/widgets/routing_drawing.h"
#include "ui/widgets/wire.h"

#include <array>

namespace nrv::ui {
namespace {

// The diagram reads from left to right: sockets, the inputs' chains, buses, sources, the outputs' chains, outputs.
constexpr int BlockHeight = 26;
constexpr int RowPitch = 72;
constexpr int FirstRow = 50; // the middle of Out 1
constexpr int SocketLeft = 8;
constexpr int SocketWidth = 46;
constexpr int InputChainLeft = 61;
constexpr int InputBlockWidth = 41;
constexpr int InputBlockPitch = 44;
constexpr int InputChainRight = InputChainLeft + 5 * InputBlockPitch + InputBlockWidth;
constexpr std::array<int, 2> BusAt = {334, 347};
constexpr int SourceLeft = 361;
constexpr int SourceWidth = 43;
constexpr int OutputChainLeft = 409;
constexpr int OutputBlockWidth = 42;
constexpr int OutputBlockPitch = 45;
constexpr int OutputLeft = 640;
constexpr int ChannelWidth = 54;
constexpr int PictureSize = 18;
constexpr int BlockBranchOffset = 5;
constexpr std::array<int, 2> GateLabels = {40, 41};

constexpr int BlockRowMiddle(int row) {
    return FirstRow + row * RowPitch;
}

class Diagram {
  public:
    Diagram(PageBuilder& builder, QWidget& page)
        : builder_(builder),
          drawing_(builder.Add<RoutingDrawing>(
              page, "Frame1", 17, QRect(PanelsLeft, PanelsTop, PanelsRight - PanelsLeft, PanelsBottom - PanelsTop),
              Panel::Kind::Framed)) {}

    void Build() {
        for (int input = 0; input < 2; ++input) {
            AddInput(input);
        }
        for (int output = 0; output < OutputCount; ++output) {
            AddOutput(output);
        }
        for (int input = 0; input < 2; ++input) {
            AddBus(input);
        }
    }

  private:
    static QRect Around(int left, int middle, int width) {
        return {left, middle - BlockHeight / 2, width, BlockHeight};
    }
    static int InputMiddle(int input) { return BlockRowMiddle(InputRows[static_cast<std::size_t>(input)]); }

    void AddChannel(int channel, const QRect& place, QPoint picture) {
        const QColor colour = ChannelColour(channel);
        builder_.Add<Block>(drawing_, "Label300", channel, place, Block::Kind::Channel, colour);
        // A mute crosses out the picture, and the name stays to be read.
        const QRect picture_place(picture, QSize(PictureSize, PictureSize));
        builder_.Add<ChannelPicture>(drawing_, "Image1", channel, picture_place,
                                     IsInput(channel) ? ChannelPicture::Kind::Socket
                                                      : ChannelPicture::Kind::Loudspeaker);
        builder_.Add<Wire>(drawing_, "Line6", channel, picture_place, Wire::Shape::Falling, CurrentTheme().Muted);
        builder_.Add<Wire>(drawing_, "Line7", channel, picture_place, Wire::Shape::Rising, CurrentTheme().Muted);
    }

    void AddInput(int input) {
        const int middle = InputMiddle(input);
        const int name_middle = middle - 44;
        AddChannel(input, Around(InputChainLeft, name_middle, ChannelWidth),
                   QPoint(SocketLeft + (SocketWidth - PictureSize) / 2, name_middle - PictureSize / 2));
        builder_.Add<Block>(drawing_, "Label400", input, Around(SocketLeft, middle, SocketWidth), Block::Kind::Socket);
        // In the order of the signal: master, gate, equaliser, gain, delay, phase.
        const int first = 5 * input;
        const std::array<int, 6> chain = {
            first, GateLabels[static_cast<std::size_t>(input)], first + 2, first + 1, first + 3, first + 4};
        int x = InputChainLeft;
        for (const int label : chain) {
            builder_.Add<Block>(drawing_, "Label100", label, Around(x, middle, InputBlockWidth), Block::Kind::Stage);
            x += InputBlockPitch;
        }
        drawing_.AddWire(QPoint(SocketLeft + SocketWidth, middle), InputChainRight, ChannelColour(input));
    }

    void AddOutput(int output) {
        const int middle = BlockRowMiddle(output);
        builder_.Add<Block>(drawing_, "Label200", output, Around(SourceLeft, middle, SourceWidth), Block::Kind::Source);
        int x = OutputChainLeft;
        for (int stage = 0; stage < 5; ++stage) {
            builder_.Add<Block>(drawing_, "Label100", 10 + 5 * output + stage, Around(x, middle, OutputBlockWidth),
                                Block::Kind::Stage);
            x += OutputBlockPitch;
        }
        AddChannel(ChannelOfOutput(output), Around(OutputLeft, middle, ChannelWidth),
                   QPoint(OutputLeft + ChannelWidth + 4, middle - PictureSize / 2));
        drawing_.AddWire(QPoint(SourceLeft + SourceWidth, middle), OutputLeft, CurrentTheme().Groove);
    }

    void AddBus(int input) {
        constexpr std::array<std::string_view, 2> names = {"Line1000", "Line1100"};
        const QColor colour = ChannelColour(input);
        RoutingDrawing::Bus bus{.Colour = colour,
                                .X = BusAt[static_cast<std::size_t>(input)],
                                .FeedsFrom = QPoint(InputChainRight, InputMiddle(input)),
                                .Branches = {}};
        for (int output = 0; output < OutputCount; ++output) {
            const int y = BlockRowMiddle(output) + (input == 0 ? -BlockBranchOffset : BlockBranchOffset);
            const QRect place(bus.X - Wire::DotCentre, y - Wire::DotCentre, SourceLeft - bus.X + Wire::DotCentre,
                              Wire::BranchHeight);
            bus.Branches.push_back(&builder_.Add<Wire>(drawing_, names[static_cast<std::size_t>(input)], output, place,
                                                       Wire::Shape::Branch, colour));
        }
        drawing_.AddBus(std::move(bus));
    }

    PageBuilder& builder_;
    RoutingDrawing& drawing_;
};

} // namespace

void BuildOverviewPage(PageBuilder& builder, QWidget& page) {
    Diagram(builder, page).Build();
}

} // namespace nrv::ui
