#include "ui/look/tool_icons.h"

#include "controls/frm_ctrl.h"
#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <QPixmap>

#include <cmath>
#include <initializer_list>

namespace nrv::ui {
namespace {

// All icons are drawn on a field of 18 by 18, strokes on half pixels.

void Stroke(QPainterPath& path, std::initializer_list<QPointF> points) {
    const auto* point = points.begin();
    path.moveTo(*point);
    for (++point; point != points.end(); ++point) {
        path.lineTo(*point);
    }
}

void Arrow(QPainterPath& path, QPointF from, QPointF to) {
    const QPointF along = (from - to) / std::hypot(from.x() - to.x(), from.y() - to.y()) * 2.8;
    const QPointF across(along.y(), -along.x());
    Stroke(path, {from, to});
    Stroke(path, {to + along + across, to, to + along - across});
}

/// A folder that stands open.
QPainterPath Folder() {
    QPainterPath path;
    Stroke(path, {{2.5, 14.5}, {2.5, 4.0}, {6.8, 4.0}, {8.3, 5.8}, {13.5, 5.8}, {13.5, 8.0}});
    Stroke(path, {{2.5, 14.5}, {5.0, 8.0}, {16.3, 8.0}, {13.8, 14.5}, {2.5, 14.5}});
    return path;
}

/// A disk with its slider and its label.
QPainterPath Disk() {
    QPainterPath path;
    Stroke(path, {{2.5, 2.5}, {12.8, 2.5}, {15.5, 5.2}, {15.5, 15.5}, {2.5, 15.5}, {2.5, 2.5}});
    Stroke(path, {{6.0, 2.5}, {6.0, 6.5}, {11.5, 6.5}, {11.5, 2.5}});
    Stroke(path, {{5.0, 15.5}, {5.0, 10.0}, {13.0, 10.0}, {13.0, 15.5}});
    return path;
}

QPainterPath Chip() {
    QPainterPath path;
    path.addRoundedRect(QRectF(3.5, 9.5, 11.0, 5.0), 1.0, 1.0);
    for (const double x : {5.5, 9.0, 12.5}) {
        Stroke(path, {{x, 14.5}, {x, 16.5}});
    }
    return path;
}

QPainterPath Padlock(bool shut) {
    const double lift = shut ? 0.0 : -1.2;
    QPainterPath path;
    path.addRoundedRect(QRectF(3.5, 8.5, 11.0, 7.0), 1.5, 1.5);
    path.moveTo(5.5, 8.5);
    path.lineTo(5.5, 6.0 + lift);
    path.arcTo(QRectF(5.5, 2.5 + lift, 7.0, 7.0), 180.0, -180.0);
    path.lineTo(12.5, shut ? 8.5 : 6.0);
    Stroke(path, {{9.0, 11.2}, {9.0, 12.8}});
    return path;
}

/// A plug, crossed out.
QPainterPath PulledPlug() {
    QPainterPath path;
    Stroke(path, {{6.5, 1.8}, {6.5, 5.5}});
    Stroke(path, {{11.5, 1.8}, {11.5, 5.5}});
    path.moveTo(4.0, 5.5);
    path.lineTo(14.0, 5.5);
    path.lineTo(14.0, 8.0);
    path.arcTo(QRectF(4.0, 3.0, 10.0, 10.0), 0.0, -180.0);
    path.closeSubpath();
    Stroke(path, {{9.0, 13.0}, {9.0, 16.5}});
    Stroke(path, {{2.5, 15.0}, {15.8, 1.7}});
    return path;
}

/// A name plate and a pencil.
QPainterPath Pencil() {
    QPainterPath path;
    Stroke(path, {{3.5, 14.5}, {4.3, 11.2}, {12.0, 3.5}, {14.5, 6.0}, {6.8, 13.7}, {3.5, 14.5}});
    Stroke(path, {{10.2, 5.3}, {12.7, 7.8}});
    Stroke(path, {{9.5, 15.5}, {15.5, 15.5}});
    return path;
}

/// Two sheets; the arrow goes into the front one for an input and comes out of it for an output.
QPainterPath Sheets(bool input) {
    QPainterPath path;
    Stroke(path, {{5.5, 12.5}, {2.5, 12.5}, {2.5, 2.5}, {11.5, 2.5}, {11.5, 4.5}});
    path.addRoundedRect(QRectF(6.5, 5.5, 9.0, 10.0), 1.0, 1.0);
    if (input) {
        Arrow(path, {8.3, 10.5}, {13.3, 10.5});
        Stroke(path, {{13.6, 8.2}, {13.6, 12.8}});
    } else {
        Arrow(path, {9.2, 10.5}, {14.0, 10.5});
        Stroke(path, {{8.6, 8.2}, {8.6, 12.8}});
    }
    return path;
}

QPainterPath PathOf(int tool, bool in_force) {
    QPainterPath path;
    switch (tool) {
    case controls::LoadPresetTool:
        path = Folder();
        break;
    case controls::SavePresetTool:
        path = Disk();
        break;
    case controls::StorePresetTool:
        path = Chip();
        Arrow(path, {9.0, 1.0}, {9.0, 7.5});
        break;
    case controls::ReadPresetTool:
        path = Chip();
        Arrow(path, {9.0, 7.5}, {9.0, 1.0});
        break;
    case controls::PasswordTool:
        path = Padlock(in_force);
        break;
    case controls::UnconnectTool:
        path = PulledPlug();
        break;
    case controls::EditNamesTool:
        path = Pencil();
        break;
    case controls::CopyInputTool:
        path = Sheets(true);
        break;
    case controls::CopyOutputTool:
        path = Sheets(false);
        break;
    default:
        break;
    }
    return path;
}

class LineIconEngine : public QIconEngine {
  public:
    LineIconEngine(int tool, bool in_force) : tool_(tool), in_force_(in_force) {}

    void paint(QPainter* painter, const QRect& place, QIcon::Mode mode, QIcon::State) override {
        const Theme& theme = CurrentTheme();
        painter->save();
        painter->setRenderHint(QPainter::Antialiasing);
        painter->translate(place.topLeft());
        painter->scale(place.width() / double(ToolIconSize), place.height() / double(ToolIconSize));
        painter->setPen(QPen(mode == QIcon::Disabled ? Mixed(theme.Disabled, theme.Window, 0.5) : theme.Text, 1.3,
                             Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        painter->drawPath(PathOf(tool_, in_force_));
        painter->restore();
    }
    QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
        QPixmap pixmap(size);
        pixmap.fill(Qt::transparent);
        QPainter painter(&pixmap);
        paint(&painter, QRect(QPoint(), size), mode, state);
        return pixmap;
    }
    QIconEngine* clone() const override { return new LineIconEngine(tool_, in_force_); }

  private:
    int tool_;
    bool in_force_;
};

} // namespace

QIcon ToolIcon(int tool, bool in_force) {
    return QIcon(new LineIconEngine(tool, in_force));
}

} // namespace nrv::ui
