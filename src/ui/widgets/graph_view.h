#pragma once

#include "controls/control.h"
#include "model/graph_scale.h"

#include <QList>
#include <QPointF>
#include <QWidget>

namespace nrv::ui {

/// The paper of a channel's graph and the strokes drawn on it. Coordinates are whole pixels from the top left.
class GraphView : public QWidget {
    Q_OBJECT
  public:
    explicit GraphView(QWidget* parent);

    static constexpr int GraphWidth = model::GraphWidth;
    static constexpr int GraphHeight = model::GraphHeight;

    static double PlaceOfFrequency(double hertz);
    static double PlaceOfLevel(double decibels);

    /// Shows the strokes of a picture, and no more when it is null. The picture outlives the view or is taken away
    /// first.
    void ShowPicture(const controls::Picture* picture);

    QSize sizeHint() const override { return {GraphWidth, GraphHeight}; }

    /// Paints a picture's strokes, smoothed. `points` is their room, kept from one painting to the next.
    static void Paint(const controls::Picture& picture, QPainter& painter, QList<QPointF>& points);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    const controls::Picture* picture_ = nullptr;
    QList<QPointF> points_; ///< kept for its room
};

} // namespace nrv::ui
