#include "ui/control_window/reading_order.h"

#include "ui/widgets/graph_view.h"
#include "ui/widgets/marker_dot.h"
#include "ui/widgets/panel.h"

#include <QRect>
#include <QWidget>

#include <algorithm>
#include <utility>

namespace nrv::ui {
namespace {

/// Controls that stand at one place, in their order.
struct Group {
    QRect Place;
    std::vector<QWidget*> Controls;
};
using Groups = std::vector<Group>;

/// Cuts where a gap goes all the way through; one part when there is none.
std::vector<Groups> Cut(Groups groups, int (QRect::*start)() const, int (QRect::*end)() const) {
    std::ranges::stable_sort(groups, {}, [start](const Group& group) { return (group.Place.*start)(); });
    std::vector<Groups> parts;
    int reached = 0;
    for (Group& group : groups) {
        const int last = (group.Place.*end)();
        if (parts.empty() || (group.Place.*start)() > reached) {
            parts.emplace_back();
            reached = last;
        }
        reached = std::max(reached, last);
        parts.back().push_back(std::move(group));
    }
    return parts;
}

std::vector<QWidget*> Ordered(const Groups& groups) {
    std::vector<Groups> parts = Cut(groups, &QRect::top, &QRect::bottom);
    if (parts.size() < 2) {
        parts = Cut(groups, &QRect::left, &QRect::right);
    }
    std::vector<QWidget*> order;
    for (const Groups& part : parts) {
        // What nothing parts stands in the order of its left edges.
        const bool whole = parts.size() < 2 || part.size() < 2;
        for (const Group& group : whole ? part : Groups{}) {
            order.insert(order.end(), group.Controls.begin(), group.Controls.end());
        }
        if (!whole) {
            const std::vector<QWidget*> inner = Ordered(part);
            order.insert(order.end(), inner.begin(), inner.end());
        }
    }
    return order;
}

/// What of a panel's own groups and of those that lie on it, such as a button of the page.
void Collect(const QWidget& parent, QPoint origin, Groups& groups) {
    Group points;
    for (QObject* const child : parent.children()) {
        auto* const widget = qobject_cast<QWidget*>(child);
        if (widget == nullptr) {
            continue;
        }
        const QRect place = widget->geometry().translated(origin);
        if (qobject_cast<MarkerDot*>(widget) != nullptr) {
            points.Controls.push_back(widget);
        } else if (qobject_cast<GraphView*>(widget) != nullptr) {
            points.Place = place;
        } else if (qobject_cast<Panel*>(widget) != nullptr) {
            Groups inner;
            Collect(*widget, place.topLeft(), inner);
            groups.push_back({place, Ordered(inner)});
        } else if ((widget->focusPolicy() & Qt::TabFocus) != 0) {
            groups.push_back({place, {widget}});
        }
    }
    if (!points.Controls.empty()) {
        groups.push_back(std::move(points));
    }
}

/// A control of the page that lies on a panel is read before what lies in it.
void PutOnPanels(Groups& groups) {
    for (auto small = groups.begin(); small != groups.end();) {
        const auto on = std::ranges::find_if(groups, [&small](const Group& group) {
            return group.Place != small->Place && group.Place.contains(small->Place);
        });
        if (on == groups.end()) {
            ++small;
            continue;
        }
        on->Controls.insert(on->Controls.begin(), small->Controls.begin(), small->Controls.end());
        small = groups.erase(small);
    }
}

} // namespace

std::vector<QWidget*> InReadingOrder(const QWidget& parent) {
    Groups groups;
    Collect(parent, {}, groups);
    PutOnPanels(groups);
    return Ordered(groups);
}

void SetTabOrder(const std::vector<QWidget*>& widgets) {
    for (std::size_t next = 1; next < widgets.size(); ++next) {
        QWidget::setTabOrder(widgets[next - 1], widgets[next]);
    }
}

} // namespace nrv::ui
