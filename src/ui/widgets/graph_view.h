#pragma once

#include "controls/control.h"
#include "model/graph_scale.h"

#include <QLine>
#include <QList>
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

    /// The lines that a stroke's picture needs: one for each level, upright or unseen run of points. Drawn one by one
    /// they ink every point of the stroke; as one polyline the toolkit would leave out some at the turns.
    static void Thin(const controls::Picture::Stroke& stroke, QList<QLine>& lines);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    void PaintStrokes(QPainter& painter);

    const controls::Picture* picture_ = nullptr;
    QList<QLine> lines_; ///< kept for its room
};

} // namespace nrv::ui
