#pragma once

#include <QColor>
#include <QPolygon>
#include <QWidget>

#include <vector>

namespace nrv::ui {

/// The paper of a channel's graph and the curves drawn on it with a pen. Coordinates are whole pixels from the top
/// left.
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

    /// Takes everything off the paper.
    void Clear();
    /// The pen's colour for the lines that follow.
    void SetPen(const QColor& colour);
    void MoveTo(int x, int y);
    /// Draws from the pen to a point and leaves the pen there; shown at the next painting, however many lines there
    /// are.
    void LineTo(int x, int y);

    QSize sizeHint() const override { return {GraphWidth, GraphHeight}; }

  protected:
    void paintEvent(QPaintEvent*) override;

  private:
    struct Stroke {
        QColor Colour;
        QPolygon Points;
    };
    std::vector<Stroke> strokes_;
    QColor pen_ = Qt::black;
    QPoint place_;
    bool pen_lifted_ = true;
};

} // namespace nrv::ui
