#include "ui/widgets/graph_view.h"

#include "ui/look/theme.h"

#include <QPainter>
#include <QPixmap>
#include <QPixmapCache>

#include <algorithm>
#include <array>
#include <cmath>

namespace nrv::ui {
namespace {

constexpr int FineLevelStep = 2; // dB
constexpr int LevelStep = 10;    // dB
constexpr int LevelRange = 30;   // dB
constexpr int ArrowPitch = 24;   // pixels from one arrow at the edge to the next
constexpr int ArrowWidth = 8;

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
            if (hertz >= model::LowestHz && hertz <= model::HighestHz) {
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

/// -1 above the paper, 1 below it, 0 beside or on it.
int SideOf(QPoint point) {
    return point.y() < 0 ? -1 : point.y() >= GraphView::GraphHeight ? 1 : 0;
}

/// Small arrows along the edge beyond which a curve runs: a graph with nothing else on it is no riddle.
void PaintArrows(QPainter& painter, int from, int to, int side, int shift) {
    constexpr double half_width = ArrowWidth / 2.0 - 0.5;
    constexpr double height = 5.0;
    const double tip = side < 0 ? 1.0 : GraphView::GraphHeight - 2.0;
    const auto arrow = [&](double x) {
        const double base = tip - side * height;
        const std::array corners{QPointF(x, tip), QPointF(x - half_width, base), QPointF(x + half_width, base)};
        painter.drawPolygon(corners.data(), static_cast<int>(corners.size()));
    };
    from = std::max(from, 0);
    to = std::min(to, GraphView::GraphWidth - 1);
    if (to - from < ArrowPitch) {
        arrow((from + to) / 2.0);
        return;
    }
    for (int x = (from + ArrowPitch - 1) / ArrowPitch * ArrowPitch + shift; x <= to; x += ArrowPitch) {
        arrow(x);
    }
}

/// Where a stroke runs above or below the paper.
void PaintLeaving(const controls::Picture::Stroke& stroke, QPainter& painter, int shift) {
    int side = 0;
    int from = 0;
    int at = 0;
    const auto end = [&] {
        if (side != 0 && at >= 0 && from < GraphView::GraphWidth) {
            PaintArrows(painter, from, at, side, shift);
        }
    };
    for (const controls::Picture::Point& point : stroke.Points) {
        const int now = point.X < 0 ? 0 : SideOf({point.X, point.Y});
        if (now != side) {
            end();
            side = now;
            from = point.X;
        }
        at = point.X;
    }
    end();
}

/// The points that a stroke needs: the ends of each level, upright or unseen run.
void Thin(const controls::Picture::Stroke& stroke, QList<QPointF>& points) {
    const auto runs_on = [](int from, int by, int to) { return (from < by && by < to) || (from > by && by > to); };
    points.clear();
    QPoint from;
    QPoint at;
    for (const controls::Picture::Point& point : stroke.Points) {
        const QPoint next(point.X, point.Y);
        if (!points.empty() && next == at) {
            continue;
        }
        if (points.size() > 1) {
            const bool level = from.y() == at.y() && at.y() == next.y() && runs_on(from.x(), at.x(), next.x());
            const bool upright = from.x() == at.x() && at.x() == next.x() && runs_on(from.y(), at.y(), next.y());
            // Nothing shows of a run above or below the paper.
            const bool unseen = SideOf(from) != 0 && SideOf(from) == SideOf(at) && SideOf(at) == SideOf(next);
            if (level || upright || unseen) {
                points.back() = next;
                at = next;
                continue;
            }
        }
        if (points.size() > 1 && from.x() == at.x() && at.x() == next.x()) {
            // Back the way it came: a line covers the end it stops at by half only.
            points.back().ry() += from.y() < at.y() ? 0.5 : -0.5;
        }
        points.append(next);
        from = at;
        at = next;
    }
}

/// Painted once for each pixel ratio and shared by all graphs.
QPixmap PaperFor(double pixel_ratio) {
    const QString key = QStringLiteral("graph paper %1 %2").arg(pixel_ratio).arg(GraphPaper().Ground.name());
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
    return std::log10(hertz / model::LowestHz) * model::PixelsPerDecade;
}

double GraphView::PlaceOfLevel(double decibels) {
    return model::ZeroDbRow - decibels * model::PixelsPerDb;
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
        Paint(*picture_, painter, points_);
        painter.restore();
    }
    if (!isEnabled()) {
        QColor veil = GraphPaper().Ground;
        veil.setAlpha(130);
        painter.fillRect(rect(), veil);
    }
}

void GraphView::Paint(const controls::Picture& picture, QPainter& painter, QList<QPointF>& points) {
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(0.5, 0.5); // the middle of a pixel is meant
    painter.setPen(Qt::NoPen);
    int shift = 0; // so that two curves' arrows stand side by side
    for (const controls::Picture::Stroke& stroke : picture.Strokes()) {
        painter.setBrush(QColor(stroke.Pen.Red, stroke.Pen.Green, stroke.Pen.Blue));
        PaintLeaving(stroke, painter, shift);
        shift = (shift + ArrowWidth) % ArrowPitch;
    }
    painter.setBrush(Qt::NoBrush);
    for (const controls::Picture::Stroke& stroke : picture.Strokes()) {
        Thin(stroke, points);
        painter.setPen(QPen(QColor(stroke.Pen.Red, stroke.Pen.Green, stroke.Pen.Blue), 1.0));
        painter.drawPolyline(points.data(), static_cast<int>(points.size()));
    }
}

} // namespace nrv::ui
