#include "ui/windows/splash_picture.h"

#include "ui/look/picture.h"
#include "ui/look/theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QPalette>

#include <array>
#include <cmath>

namespace nrv::ui {
namespace {

constexpr double LowestHz = 20.0;
constexpr double Decades = 3.0;
constexpr double HighestDecibels = 6.0;
constexpr double LowestDecibels = -30.0;
constexpr double FrontHeight = 72.0;
constexpr double ShadowHeight = 2.0; // of the picture, below the front

/// A band of a crossover, 24 dB an octave at both of its corners.
struct Way {
    double LowCorner = 0.0;
    double HighCorner = 0.0;
    QColor Colour;
};

const std::array<Way, 3>& Ways() {
    static const std::array<Way, 3> ways = {{{32.0, 180.0, QColor(0xD4, 0x2A, 0x2A)},
                                             {180.0, 2200.0, QColor(0x1F, 0x7A, 0x5C)},
                                             {2200.0, 17000.0, QColor(0x25, 0x63, 0xD9)}}};
    return ways;
}

double Decibels(const Way& way, double hertz) {
    const double rise = 1.0 + std::pow(way.LowCorner / hertz, 8.0);
    const double fall = 1.0 + std::pow(hertz / way.HighCorner, 8.0);
    return -10.0 * std::log10(rise * fall);
}

double YOf(const QRectF& paper, double decibels) {
    return paper.bottom() - paper.height() * (decibels - LowestDecibels) / (HighestDecibels - LowestDecibels);
}

void PaintGrid(QPainter& painter, const QRectF& paper) {
    for (int decade = 1; decade <= 4; ++decade) {
        for (int step = 1; step <= 9; ++step) {
            const double x =
                paper.left() + paper.width() * std::log10(std::pow(10.0, decade) * step / LowestHz) / Decades;
            if (x > paper.left() && x < paper.right()) {
                painter.setPen(QPen(step == 1 ? GraphPaper().Decades : GraphPaper().FineFrequencies, 1.0));
                painter.drawLine(QLineF(x, paper.top(), x, paper.bottom()));
            }
        }
    }
    for (int decibels = -24; decibels <= 0; decibels += 6) {
        const double y = YOf(paper, decibels);
        painter.setPen(QPen(decibels == 0 ? GraphPaper().Zero : GraphPaper().FineLevels, 1.0));
        painter.drawLine(QLineF(paper.left(), y, paper.right(), y));
    }
}

QPainterPath CurveOf(const Way& way, const QRectF& paper) {
    QPainterPath curve;
    for (int x = 0; x <= paper.width(); ++x) {
        const double hertz = LowestHz * std::pow(10.0, Decades * x / paper.width());
        const QPointF point(paper.left() + x, YOf(paper, Decibels(way, hertz)));
        x == 0 ? curve.moveTo(point) : curve.lineTo(point);
    }
    return curve;
}

void PaintWay(QPainter& painter, const QRectF& paper, const Way& way) {
    const QPainterPath curve = CurveOf(way, paper);
    QPainterPath body = curve;
    body.lineTo(paper.right(), paper.bottom() + paper.height());
    body.lineTo(paper.left(), paper.bottom() + paper.height());
    constexpr int lighter = 145; // per cent; on the dark paper the colours of the light one look dull
    const QColor colour = CurrentTheme().Dark ? way.Colour.lighter(lighter) : way.Colour;
    QColor tint = colour;
    tint.setAlpha(26);
    painter.fillPath(body, tint);
    painter.strokePath(curve, QPen(colour, 1.8));
}

void PaintGraph(QPainter& painter, const QRectF& paper) {
    painter.save();
    QPainterPath outline;
    outline.addRoundedRect(paper, 4.0, 4.0);
    painter.fillPath(outline, GraphPaper().Ground);
    painter.setClipPath(outline);
    PaintGrid(painter, paper);
    for (const Way& way : Ways()) {
        PaintWay(painter, paper, way);
    }
    painter.restore();
    painter.setPen(QPen(GraphPaper().Decades, 1.0));
    painter.drawRoundedRect(paper, 4.0, 4.0);
}

} // namespace

void PaintSplashPicture(QPainter& painter, const QRectF& area, const QPalette& palette) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF front(area.left(), area.bottom() - FrontHeight, area.width(), FrontHeight);
    PaintGraph(painter, QRectF(area.topLeft(), front.topRight() - QPointF(0.0, 10.0)));
    DrawPicture(painter, front.adjusted(0.0, 0.0, 0.0, ShadowHeight), QStringLiteral("front"),
                palette.color(QPalette::Shadow));
    painter.restore();
}

} // namespace nrv::ui
