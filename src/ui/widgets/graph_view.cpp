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

void GraphView::Clear() {
    strokes_.clear();
    pen_lifted_ = true;
    update();
}

void GraphView::SetPen(const QColor& colour) {
    if (pen_ != colour) {
        pen_ = colour;
        pen_lifted_ = true;
    }
}

void GraphView::MoveTo(int x, int y) {
    place_ = QPoint(x, y);
    pen_lifted_ = true;
}

void GraphView::LineTo(int x, int y) {
    if (pen_lifted_) {
        strokes_.push_back({pen_, QPolygon({place_})});
        pen_lifted_ = false;
    }
    place_ = QPoint(x, y);
    strokes_.back().Points.append(place_);
    update();
}

void GraphView::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.drawPixmap(0, 0, PaperFor(devicePixelRatioF()));
    painter.setRenderHint(QPainter::Antialiasing);
    // Whole coordinates mean the middle of a pixel.
    painter.translate(0.5, 0.5);
    for (const Stroke& stroke : strokes_) {
        painter.setPen(QPen(stroke.Colour, 1.0));
        painter.drawPolyline(stroke.Points);
    }
    if (!isEnabled()) {
        painter.resetTransform();
        QColor veil = GraphPaper().Ground;
        veil.setAlpha(130);
        painter.fillRect(rect(), veil);
    }
}

} // namespace nrv::ui
