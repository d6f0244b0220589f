#include "ui/widgets/graph_view.h"

#include "ui/look/theme.h"

#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>

#include <cmath>

namespace nrv::ui {
namespace {

constexpr double LowestFrequency = 20.0;   // Hz
constexpr double HighestFrequency = 20000; // Hz
constexpr int FineLevelStep = 2;           // dB
constexpr int LevelStep = 10;              // dB
constexpr int LevelRange = 30;             // dB

// A curve's point lies on a whole pixel; a grid line of the same place covers that pixel.

void VerticalLine(QPainter& painter, double hertz, const QColor& colour) {
    painter.fillRect(QRectF(std::round(GraphView::PlaceOfFrequency(hertz)), 0.0, 1.0, GraphView::GraphHeight), colour);
}

void HorizontalLine(QPainter& painter, double decibels, const QColor& colour) {
    painter.fillRect(QRectF(0.0, std::round(GraphView::PlaceOfLevel(decibels)), GraphView::GraphWidth, 1.0), colour);
}

void PaintPaper(QPainter& painter) {
    const Paper& paper = GraphPaper();
    painter.fillRect(QRectF(0.0, 0.0, GraphView::GraphWidth, GraphView::GraphHeight), paper.Ground);
    for (int level = -LevelRange; level <= LevelRange; level += FineLevelStep) {
        HorizontalLine(painter, level, paper.FineLevels);
    }
    for (const double decade : {10.0, 100.0, 1000.0, 10000.0}) {
        for (int multiple = 1; multiple < 10; ++multiple) {
            const double hertz = decade * multiple;
            if (hertz >= LowestFrequency && hertz <= HighestFrequency) {
                VerticalLine(painter, hertz, paper.FineFrequencies);
            }
        }
    }
    for (int level = -LevelRange; level <= LevelRange; level += LevelStep) {
        HorizontalLine(painter, level, paper.TenDecibels);
    }
    for (const double decade : {100.0, 1000.0, 10000.0}) {
        VerticalLine(painter, decade, paper.Decades);
    }
    HorizontalLine(painter, 0.0, paper.Zero);
}

/// Painted once for each pixel ratio and shared by all graphs.
QPixmap PaperFor(double pixel_ratio) {
    const QString key = QStringLiteral("graph paper %1").arg(pixel_ratio);
    QPixmap pixmap;
    if (!QPixmapCache::find(key, &pixmap)) {
        const QSizeF size = QSizeF(GraphView::GraphWidth, GraphView::GraphHeight) * pixel_ratio;
        pixmap = QPixmap(size.toSize());
        pixmap.setDevicePixelRatio(pixel_ratio);
        QPainter painter(&pixmap);
        PaintPaper(painter);
        painter.end();
        QPixmapCache::insert(key, pixmap);
    }
    return pixmap;
}

} // namespace

GraphView::GraphView(QWidget* parent) : QWidget(parent) {
    setFixedSize(GraphWidth, GraphHeight);
    setAttribute(Qt::WA_OpaquePaintEvent);
}

double GraphView::PlaceOfFrequency(double hertz) {
    return std::log10(hertz / LowestFrequency) * PixelsPerDecade;
}

double GraphView::PlaceOfLevel(double decibels) {
    return ZeroLevelAt - decibels * PixelsPerDb;
}

void GraphView::ShowPicture(const controls::Picture* picture) {
    picture_ = picture;
    update();
}

void GraphView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(0, 0, PaperFor(devicePixelRatioF()));
    if (picture_ != nullptr) {
        painter.save();
        PaintStrokes(painter);
        painter.restore();
    }
    if (!isEnabled()) {
        QColor veil = GraphPaper().Ground;
        veil.setAlpha(130);
        painter.fillRect(rect(), veil);
    }
}

void GraphView::Thin(const controls::Picture::Stroke& stroke, QPolygon& points) {
    const auto runs_on = [](int from, int by, int to) { return (from < by && by < to) || (from > by && by > to); };
    points.clear();
    for (const controls::Picture::Point& point : stroke.Points) {
        const QPoint next(point.X, point.Y);
        const qsizetype count = points.size();
        if (count > 0 && points[count - 1] == next) {
            continue;
        }
        if (count > 1) {
            const QPoint from = points[count - 2];
            const QPoint by = points[count - 1];
            const bool level = from.y() == by.y() && by.y() == next.y() && runs_on(from.x(), by.x(), next.x());
            const bool upright = from.x() == by.x() && by.x() == next.x() && runs_on(from.y(), by.y(), next.y());
            if (level || upright) {
                points[count - 1] = next;
                continue;
            }
        }
        points.append(next);
    }
}

void GraphView::PaintStrokes(QPainter& painter) {
    if (devicePixelRatioF() > 1.0) {
        // Where a point is more than one pixel its middle is meant, and edges are smoothed.
        painter.setRenderHint(QPainter::Antialiasing);
        painter.translate(0.5, 0.5);
    }
    for (const controls::Picture::Stroke& stroke : picture_->Strokes()) {
        Thin(stroke, points_);
        painter.setPen(QPen(QColor(stroke.Pen.Red, stroke.Pen.Green, stroke.Pen.Blue), 1.0));
        painter.drawPolyline(points_);
    }
}

} // namespace nrv::ui
