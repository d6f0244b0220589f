#include "ui/widgets/routing_drawing.h"

#include "ui/widgets/wire.h"

#include <QPainter>

#include <algorithm>

namespace nrv::ui {

RoutingDrawing::RoutingDrawing(QWidget* parent, Kind kind) : Panel(parent, kind) {}

void RoutingDrawing::AddWire(QPoint from, int right, const QColor& colour) {
    wires_.push_back({from.x(), right, from.y(), colour});
}

void RoutingDrawing::AddBus(Bus bus) {
    buses_.push_back(std::move(bus));
}

void RoutingDrawing::paintEvent(QPaintEvent* event) {
    Panel::paintEvent(event);
    QPainter painter(this);
    for (const FixedWire& wire : wires_) {
        painter.fillRect(QRect(wire.Left, wire.Y - 1, wire.Right - wire.Left, 2), wire.Colour);
    }
    for (const Bus& bus : buses_) {
        int top = bus.FeedsFrom.y();
        int bottom = top;
        for (const QWidget* branch : bus.Branches) {
            if (!branch->isHidden()) {
                const int y = branch->y() + Wire::DotCentre;
                top = std::min(top, y);
                bottom = std::max(bottom, y);
            }
        }
        painter.fillRect(QRect(bus.FeedsFrom.x(), bus.FeedsFrom.y() - 1, bus.X + 1 - bus.FeedsFrom.x(), 2), bus.Colour);
        painter.fillRect(QRect(bus.X - 1, top - 1, 2, bottom - top + 2), bus.Colour);
    }
}

} // namespace nrv::ui
