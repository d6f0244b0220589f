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
constexpr int DistanceFromPoint = 14; // clear of the hand that holds it
constexpr int DistanceFromEdge = 2;

} // namespace

ValuePlate::ValuePlate(const QWidget& graph) : QWidget(graph.parentWidget()), graph_(graph) {
    setAttribute(Qt::WA_TransparentForMouseEvents);
    setFont(TextFont());
    hide();
}

void ValuePlate::ShowAt(QPoint place, const QString& text) {
    text_ = text;
    const QRect field =
        graph_.geometry().adjusted(DistanceFromEdge, DistanceFromEdge, -DistanceFromEdge, -DistanceFromEdge);
    const int wanted = QFontMetrics(font()).horizontalAdvance(text) + 2 * SideMargin;
    QRect plate(0, 0, std::min(wanted, field.width()), PlateHeight);
    plate.moveCenter(place);
    plate.moveBottom(place.y() - DistanceFromPoint);
    if (plate.top() < field.top()) {
        plate.moveTop(place.y() + DistanceFromPoint);
    }
    plate.moveLeft(std::clamp(plate.left(), field.left(), field.right() + 1 - plate.width()));
    setGeometry(plate);
    show();
    raise();
    update();
}

void ValuePlate::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    const QColor fill(0x1B, 0x20, 0x26);
    DrawBox(painter, rect(), fill, CurrentTheme().Dark ? CurrentTheme().Dim : fill, 3.0);
    painter.setPen(Qt::white);
    DrawFitted(painter, QRectF(rect()).adjusted(SideMargin, 0, -SideMargin, 0), Qt::AlignCenter, text_);
}

} // namespace nrv::ui
