#include "ui/widgets/tab_strip.h"

#include "ui/look/painting.h"
#include "ui/look/theme.h"

#include <QCursor>
#include <QPainter>
#include <QPainterPath>
#include <QWheelEvent>

namespace nrv::ui {
namespace {

constexpr int MarkSize = 8;
constexpr int MarkMargin = 6;

/// A box with round corners at its top alone.
QPainterPath TabOutline(const QRectF& place) {
    constexpr double radius = 3.0;
    QPainterPath path(place.bottomLeft());
    path.lineTo(place.left(), place.top() + radius);
    path.quadTo(place.topLeft(), place.topLeft() + QPointF(radius, 0.0));
    path.lineTo(place.right() - radius, place.top());
    path.quadTo(place.topRight(), place.topRight() + QPointF(0.0, radius));
    path.lineTo(place.bottomRight());
    return path;
}

} // namespace

TabStrip::TabStrip(QWidget* parent) : QTabBar(parent) {
    setDrawBase(false);
    setExpanding(false);
    setElideMode(Qt::ElideNone);
    setUsesScrollButtons(false);
    setFocusPolicy(Qt::StrongFocus);
    setFont(TextFont());
    setMouseTracking(true);
}

void TabStrip::AddTab(int tab_width, bool with_mark) {
    tabs_.push_back({tab_width, with_mark, {}});
    addTab(QString());
}

void TabStrip::SetCaption(int tab, const QString& caption) {
    tabs_[static_cast<std::size_t>(tab)].Caption = caption;
    setTabText(tab, QString(caption).replace(QLatin1Char('&'), QLatin1String("&&")));
}

QSize TabStrip::tabSizeHint(int tab) const {
    const auto place = static_cast<std::size_t>(tab);
    return {place < tabs_.size() ? tabs_[place].Width : 0, StripHeight};
}

QRect TabStrip::MarkPlace(int tab) const {
    const QRect place = tabRect(tab);
    return {place.left() + MarkMargin, place.top() + (StripHeight - MarkSize) / 2, MarkSize, MarkSize};
}

void TabStrip::paintEvent(QPaintEvent*) {
    const Theme& theme = CurrentTheme();
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const int hovered = tabAt(mapFromGlobal(QCursor::pos()));
    for (int tab = 0; tab < count(); ++tab) {
        const bool on_top = tab == currentIndex();
        const QRectF place = QRectF(tabRect(tab)).adjusted(0.5, on_top ? 0.5 : 1.5, -1.5, 0.5);
        QColor fill = on_top ? theme.Panel : Mixed(theme.Window, theme.Unlit, theme.Dark ? 0.6 : 0.8);
        if (!on_top && tab == hovered && underMouse()) {
            fill = Mixed(fill, theme.Panel, 0.5);
        }
        painter.setPen(QPen(theme.Line, 1.0));
        painter.setBrush(fill);
        painter.drawPath(TabOutline(place));
        const bool with_mark = tabs_[static_cast<std::size_t>(tab)].WithMark;
        const QRectF text_place = place.adjusted(with_mark ? MarkMargin + MarkSize + 2.0 : 2.0, 0.0, -2.0, -0.5);
        painter.setFont(on_top ? StrongFont() : TextFont());
        painter.setPen(theme.Text);
        DrawFitted(painter, text_place, Qt::AlignCenter, Caption(tab));
        if (on_top && hasFocus()) {
            DrawFocusFrame(painter, place.adjusted(2.0, 2.0, -2.0, -2.0), 2.0);
        }
    }
}

void TabStrip::wheelEvent(QWheelEvent* event) {
    if (hasFocus()) {
        QTabBar::wheelEvent(event);
    }
    event->accept(); // what lies behind would scroll
}

bool TabStrip::event(QEvent* event) {
    if (event->type() == QEvent::HoverMove || event->type() == QEvent::Leave || event->type() == QEvent::FocusIn ||
        event->type() == QEvent::FocusOut) {
        update();
    }
    return QTabBar::event(event);
}

} // namespace nrv::ui
