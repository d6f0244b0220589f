#include "ui/windows/splash_picture.h"

#include "ui/look/theme.h"

#include <QLinearGradient>
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

void PaintKnob(QPainter& painter, const QPointF& centre, double radius) {
    QLinearGradient metal(centre - QPointF(0, radius), centre + QPointF(0, radius));
    metal.setColorAt(0.0, QColor(0x6B, 0x76, 0x84));
    metal.setColorAt(1.0, QColor(0x39, 0x41, 0x4B));
    painter.setPen(QPen(QColor(0x14, 0x18, 0x1C), 1.0));
    painter.setBrush(metal);
    painter.drawEllipse(centre, radius, radius);
    painter.setPen(QPen(QColor(0xE6, 0xEA, 0xEE), 2.0, Qt::SolidLine, Qt::RoundCap));
    painter.drawLine(centre + QPointF(radius * 0.35, -radius * 0.35), centre + QPointF(radius * 0.62, -radius * 0.62));
}

/// Eight channels of six lamps each, the two inputs apart from the six outputs.
void PaintLamps(QPainter& painter, const QRectF& area) {
    constexpr std::array<int, 8> lit = {3, 4, 4, 3, 2, 4, 5, 1};
    const double column = area.width() / 8.6;
    const double row = area.height() / 6.0;
    painter.setPen(Qt::NoPen);
    for (std::size_t channel = 0; channel < lit.size(); ++channel) {
        const double x = area.left() + column * (static_cast<double>(channel) + (channel >= 2 ? 0.6 : 0.0));
        for (int lamp = 0; lamp < 6; ++lamp) {
            const QRectF spot(x, area.bottom() - row * (lamp + 1), column - 5.0, row - 3.0);
            const QColor on = lamp == 5   ? QColor(0xD4, 0x2A, 0x2A)
                              : lamp == 4 ? QColor(0xF2, 0xC0, 0x1E)
                                          : QColor(0x2F, 0xB8, 0x55);
            painter.setBrush(lamp < lit[channel] ? on : QColor(0x3B, 0x43, 0x4D));
            painter.drawRoundedRect(spot, 1.0, 1.0);
        }
    }
}

void PaintFront(QPainter& painter, const QRectF& front) {
    QLinearGradient steel(front.topLeft(), front.bottomLeft());
    steel.setColorAt(0.0, QColor(0x31, 0x38, 0x41));
    steel.setColorAt(1.0, QColor(0x20, 0x25, 0x2B));
    painter.setPen(QPen(QColor(0x14, 0x18, 0x1C), 1.0));
    painter.setBrush(steel);
    painter.drawRoundedRect(front, 3.0, 3.0);
    for (const double x : {front.left() + 9.0, front.right() - 9.0}) {
        for (const double y : {front.top() + 13.0, front.bottom() - 13.0}) {
            painter.setPen(Qt::NoPen);
            painter.setBrush(QColor(0x12, 0x15, 0x19));
            painter.drawRoundedRect(QRectF(x - 4.0, y - 2.5, 8.0, 5.0), 2.5, 2.5);
        }
    }
    const QRectF display(front.left() + 26.0, front.top() + 14.0, 104.0, front.height() - 28.0);
    painter.setPen(QPen(QColor(0x0E, 0x11, 0x14), 1.0));
    painter.setBrush(QColor(0x16, 0x2B, 0x3C));
    painter.drawRoundedRect(display, 2.0, 2.0);
    painter.setClipRect(display.adjusted(6, 6, -6, -6));
    for (const Way& way : Ways()) {
        const QPainterPath trace = CurveOf(way, display.adjusted(6, 4, -6, -6));
        painter.strokePath(trace, QPen(QColor(0x9C, 0xD3, 0xFF), 1.2));
    }
    painter.setClipping(false);
    PaintKnob(painter, QPointF(display.right() + 34.0, front.center().y()), 17.0);
    const double lamps_left = display.right() + 68.0;
    PaintLamps(painter,
               QRectF(lamps_left, front.top() + 13.0, front.right() - 24.0 - lamps_left, front.height() - 25.0));
}

} // namespace

void PaintSplashPicture(QPainter& painter, const QRectF& area, const QPalette& palette) {
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    const double front_height = 72.0;
    PaintGraph(painter, QRectF(area.left(), area.top(), area.width(), area.height() - front_height - 10.0));
    const QRectF front(area.left(), area.bottom() - front_height, area.width(), front_height);
    painter.setPen(Qt::NoPen);
    QColor shade = palette.color(QPalette::Shadow);
    shade.setAlpha(40);
    painter.setBrush(shade);
    painter.drawRoundedRect(front.translated(0.0, 2.0), 3.0, 3.0);
    PaintFront(painter, front);
    painter.restore();
}

} // namespace nrv::ui
