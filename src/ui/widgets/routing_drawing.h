#pragma once

#include "ui/widgets/panel.h"

#include <vector>

namespace nrv::ui {

/// A drawing of signal ways: fixed wires, and a bus for each input that reaches as far as its branches that are shown.
class RoutingDrawing : public Panel {
    Q_OBJECT
  public:
    RoutingDrawing(QWidget* parent, Kind kind);

    struct Bus {
        QColor Colour;
        int X = 0;        ///< of the bus
        QPoint FeedsFrom; ///< where its input comes from
        std::vector<const QWidget*> Branches;
    };

    /// A level wire from a point to the right.
    void AddWire(QPoint from, int right, const QColor& colour);
    void AddBus(Bus bus);

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    struct FixedWire {
        int Left = 0;
        int Right = 0;
        int Y = 0;
        QColor Colour;
    };
    std::vector<FixedWire> wires_;
    std::vector<Bus> buses_;
};

} // namespace nrv::ui
