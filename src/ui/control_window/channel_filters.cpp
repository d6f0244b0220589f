#include "controls/frm_ctrl.h"
#include "ui/control_window/channel_layout.h"
#include "ui/control_window/page_builder.h"
#include "ui/control_window/pages.h"
#include "ui/look/theme.h"
#include "ui/widgets/fader.h"
#include "ui/widgets/list_box.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/text_field.h"
#include "ui/widgets/up_down_arrows.h"
#include "ui/widgets/value_text.h"

#include <QPushButton>

#include <array>

namespace nrv::ui {
namespace {

/// The rows that all panels of the lower row share, in pixels from their top.
struct Rows {
    explicit Rows(int panel_height)
        : SecondField(panel_height - 7 - FieldHeight), FirstField(SecondField - 3 - FieldHeight),
          FadersBottom(FirstField - 2) {}

    static constexpr int Numbers = 20;
    static constexpr int NumberHeight = 13;
    static constexpr int Values = 33;
    static constexpr int ValueHeight = 15;
    static constexpr int FadersTop = 48;

    int SecondField;
    int FirstField;
    int FadersBottom;
};

/// The widths of the panels from left to right.
struct Columns {
    int Crossover;
    int Equaliser;
    int Shelving;
    int Dynamics;
};
constexpr Columns InputColumns{0, 444, 68, 128};
constexpr Columns OutputColumns{186, 234, 96, 192};

constexpr int UnitWidth = 19;
constexpr int FaderWidth = 30;

class FilterRow {
  public:
    FilterRow(PageBuilder& builder, QWidget& page, int channel)
        : builder_(builder), page_(page), channel_(channel), top_(GraphPanelBottom(channel) + Gap),
          height_(PanelsBottom - top_), rows_(height_), columns_(IsInput(channel) ? InputColumns : OutputColumns) {}

    void Build() {
        if (!IsInput(channel_)) {
            AddCrossoverAndRouting();
        }
        AddEqualiser();
        for (int filter = 0; filter < ToneCountOf(channel_); ++filter) {
            AddToneFilter(FirstToneOf(channel_) + filter);
        }
        AddDynamics();
    }

  private:
    Panel& NextPanel(std::string_view name, int index, int width) {
        auto& panel = builder_.Add<Panel>(page_, name, index, QRect(left_, top_, width, height_));
        panel.SetAccent(ChannelColour(channel_));
        left_ += width + Gap;
        return panel;
    }

    void AddFader(Panel& panel, std::string_view name, int index, int centre, int bottom) {
        auto& fader = builder_.Add<Fader>(
            panel, name, index, QRect(centre - FaderWidth / 2, Rows::FadersTop, FaderWidth, bottom - Rows::FadersTop));
        fader.SetColour(ChannelColour(channel_));
    }

    void AddCrossoverAndRouting() {
        const int output = OutputOf(channel_);
        const int panel_height = (height_ - 2 * Gap) / 3;
        constexpr int slope_width = 94;
        const int frequency_left = 8 + slope_width + 6;
        const int frequency_width = columns_.Crossover - frequency_left - 8;
        for (int side = 0; side < 2; ++side) {
            const int index = 2 * output + side;
            auto& panel = builder_.Add<Panel>(
                page_, "Frame7", index,
                QRect(PanelsLeft, top_ + side * (panel_height + Gap), columns_.Crossover, panel_height));
            panel.SetAccent(ChannelColour(channel_));
            builder_.AddText(panel, QRect(8, 19, slope_width, 13), QStringLiteral("Slope"), TextRole::Scale,
                             Qt::AlignLeft | Qt::AlignVCenter);
            builder_.AddText(panel, QRect(frequency_left, 19, frequency_width, 13), QStringLiteral("Frequency [Hz]"),
                             TextRole::Scale, Qt::AlignLeft | Qt::AlignVCenter);
            builder_.Add<ListBox>(panel, "Combo2", index, QRect(8, 34, slope_width, FieldHeight));
            builder_.Add<TextField>(panel, "Text8", index, QRect(frequency_left, 34, frequency_width, FieldHeight));
        }
        const int routing_top = top_ + 2 * (panel_height + Gap);
        auto& routing = builder_.Add<Panel>(
            page_, "Frame9", output, QRect(PanelsLeft, routing_top, columns_.Crossover, PanelsBottom - routing_top));
        routing.SetAccent(ChannelColour(channel_));
        builder_.Add<ListBox>(routing, "Combo3", output, QRect(8, 26, slope_width, FieldHeight));
        left_ += columns_.Crossover + Gap;
    }

    void AddEqualiser() {
        auto& panel = NextPanel("Frame5", channel_, columns_.Equaliser);
        const int count = PeqCountOf(channel_);
        const int pitch = (columns_.Equaliser - UnitWidth - 5) / count;
        const auto unit = [&](int y, int text_height, const QString& text) {
            builder_.AddText(panel, QRect(4, y, UnitWidth - 2, text_height), text, TextRole::Scale,
                             Qt::AlignLeft | Qt::AlignVCenter);
        };
        unit(Rows::Values, Rows::ValueHeight, QStringLiteral("dB"));
        unit(rows_.FirstField, FieldHeight, QStringLiteral("Hz"));
        unit(rows_.SecondField, FieldHeight, QStringLiteral("Oct"));
        for (int number = 0; number < count; ++number) {
            AddSection(panel, number, QRect(UnitWidth + 2 + number * pitch, 0, pitch, height_));
        }
        // The button belongs to the tab and not to the panel, which it lies on.
        const QRect place = panel.geometry();
        builder_.Add<QPushButton>(page_, "Command1", channel_, QRect(place.right() - 65, place.top() + 3, 60, 18));
    }

    void AddSection(Panel& panel, int number, const QRect& column) {
        const int section = FirstPeqOf(channel_) + number;
        const int left = column.left() + 1;
        const int width = column.width() - 2;
        constexpr int arrows_width = 12;
        builder_.AddText(panel, QRect(left, Rows::Numbers, width, Rows::NumberHeight), QString::number(number + 1),
                         TextRole::Caption);
        builder_.Add<ValueText>(panel, "Text3", section, QRect(left, Rows::Values, width, Rows::ValueHeight));
        AddFader(panel, "Slider2", section, column.center().x(), rows_.FadersBottom);
        builder_.Add<TextField>(panel, "Text4", section, QRect(left, rows_.FirstField, width, FieldHeight));
        builder_.Add<TextField>(panel, "Text5", section,
                                QRect(left, rows_.SecondField, width - arrows_width, FieldHeight));
        builder_.Add<UpDownArrows>(panel, "UpDown3", section,
                                   QRect(left + width - arrows_width, rows_.SecondField, arrows_width, FieldHeight));
    }

    void AddToneFilter(int filter) {
        auto& panel = NextPanel("Frame6", filter, columns_.Shelving);
        const int width = columns_.Shelving - 12;
        constexpr int unit_width = 14;
        const int centre = columns_.Shelving / 2;
        builder_.Add<ValueText>(panel, "Text6", filter, QRect(6, Rows::Values, width, Rows::ValueHeight));
        AddFader(panel, "Slider3", filter, centre, rows_.FadersBottom);
        builder_.Add<TextField>(panel, "Text7", filter,
                                QRect(6, rows_.FirstField, width - unit_width - 2, FieldHeight));
        builder_.AddText(panel, QRect(6 + width - unit_width, rows_.FirstField, unit_width, FieldHeight),
                         QStringLiteral("Hz"), TextRole::Scale, Qt::AlignRight | Qt::AlignVCenter);
        builder_.Add<ListBox>(panel, "Combo1", filter, QRect(6, rows_.SecondField, width, FieldHeight));
    }

    void AddDynamics() {
        auto& panel = NextPanel("Frame8", channel_, columns_.Dynamics);
        struct Control {
            const char* Label;
            std::string_view Fader;
            std::string_view Text;
        };
        constexpr std::array<Control, 3> dynamics = {
            {{"Thr [dBu]", "Slider4", "Text9"}, {"Release", "Slider5", "Text10"}, {"Attack", "Slider6", "Text11"}}};
        const int pitch = (columns_.Dynamics - 6) / 3;
        int x = 3;
        for (const Control& control : dynamics) {
            builder_.AddText(panel, QRect(x, Rows::Numbers, pitch, Rows::NumberHeight), QLatin1String(control.Label),
                             TextRole::Scale);
            builder_.Add<ValueText>(panel, control.Text, channel_,
                                    QRect(x + 1, Rows::Values, pitch - 2, Rows::ValueHeight));
            AddFader(panel, control.Fader, channel_, x + pitch / 2, height_ - 5);
            x += pitch;
        }
    }

    PageBuilder& builder_;
    QWidget& page_;
    int channel_;
    int top_;
    int height_;
    Rows rows_;
    Columns columns_;
    int left_ = PanelsLeft;
};

} // namespace

void BuildChannelFilters(PageBuilder& builder, QWidget& page, int channel) {
    FilterRow(builder, page, channel).Build();
}

} // namespace nrv::ui
