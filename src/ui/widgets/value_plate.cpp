#include "ui/widgets/value_plate.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QFontMetrics>
#include <QPainter>

#include <algorithm>

namespace nrv::ui {
namespace {

constexpr int PlateHeight = 17;
constexpr int SideMargin = 6;
constexpr int DistanceFromPoint = 10;

} // namespace

ValuePlate::ValuePlate(QWidget* parent) : QWidget(parent) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    hide();
}

void ValuePlate::ShowAt(QPoint place, const QString& text) {
    text_ = text;
    const int plate_width = QFontMetrics(TextFont()).horizontalAdvance(text) + 2 * SideMargin;
    const int left = std::clamp(place.x() - plate_width / 2, 2, std::max(2, parentWidget()->width() - plate_width - 2));
    const int above = place.y() - DistanceFromPoint - PlateHeight;
    setGeometry(left, above >= 2 ? above : place.y() + DistanceFromPoint, plate_width, PlateHeight);
    show();
    raise();
    update();
}

void ValuePlate::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    DrawBox(painter, rect(), QColor(0x1B, 0x20, 0x26), QColor(0x1B, 0x20, 0x26), 3.0);
    painter.setPen(Qt::white);
    DrawFitted(painter, QRectF(rect()).adjusted(SideMargin, 0, -SideMargin, 0), Qt::AlignCenter, text_);
}

} // namespace nrv::ui
