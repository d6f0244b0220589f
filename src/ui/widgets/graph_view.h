#pragma once

#include "controls/control.h"

#include <QPolygon>
#include <QWidget>

namespace nrv::ui {

/// The paper of a channel's graph and the strokes drawn on it. Coordinates are whole pixels from the top left.
class GraphView : public QWidget {
    Q_OBJECT
  public:
    explicit GraphView(QWidget* parent);

    static constexpr int GraphWidth = 576;
    static constexpr int GraphHeight = 192;
    static constexpr double PixelsPerDecade = 575.0 / 3.0;
    static constexpr double PixelsPerDb = 191.0 / 60.0;
    static constexpr double ZeroLevelAt = 95.4;

    static double PlaceOfFrequency(double hertz);
    static double PlaceOfLevel(double decibels);

    /// Shows the strokes of a picture, and no more when it is null. The picture outlives the view or is taken away first.
    void ShowPicture(const controls::Picture* picture);

    QSize sizeHint() const override { return {GraphWidth, GraphHeight}; }

    /// The points that a stroke's picture needs: not those that repeat the one before or lie within a level or upright
    /// run. Pixel for pixel the same line, in half the time.
    static void Thin(const controls::Picture::Stroke& stroke, QPolygon& points);

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    void PaintStrokes(QPainter& painter);

    const controls::Picture* picture_ = nullptr;
    QPolygon points_; ///< kept for its room
};

} // namespace nrv::ui
