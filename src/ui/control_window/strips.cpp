#include "ui/control_window/page_builder.h"
#include "ui/control_window/pages.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/text_field.h"
#include "ui/widgets/up_down_arrows.h"

#include <QCheckBox>

namespace nrv::ui {

void FillDelayStrip(PageBuilder& builder, Panel& panel, int index, QPoint field, QPoint adjust, QPoint fine) {
    constexpr QSize field_size(84, 20);
    constexpr QSize label_size(32, 13);
    constexpr QSize arrows_size(18, 24);
    builder.Add<TextField>(panel, "Text2", index, QRect(field, field_size));
    const auto arrows = [&](std::string_view name, QPoint place) {
        builder.AddCaption(panel, name, index, QRect(place, label_size));
        const QPoint below(place.x() + (label_size.width() - arrows_size.width()) / 2,
                           place.y() + label_size.height() + 1);
        builder.Add<UpDownArrows>(panel, name, index, QRect(below, arrows_size));
    };
    arrows("UpDown2", adjust);
    arrows("UpDown1", fine);
}

void AddPhase(PageBuilder& builder, Panel& panel, int index, QPoint place) {
    constexpr QSize size(48, 32);
    auto& frame = builder.Add<Panel>(panel, "Frame2", index, QRect(place, size), Panel::Kind::Bare);
    builder.Add<QCheckBox>(frame, "Check2", index, QRect(0, 15, size.width(), 16));
}

} // namespace nrv::ui
