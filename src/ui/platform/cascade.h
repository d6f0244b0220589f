#pragma once

#include <QPoint>
#include <QSize>

#include <algorithm>

namespace nrv::ui {

/// Where a window stands that comes after others: a step further than each, so that the title of the one behind stays
/// in sight. `left` is where the first stands, and stepping begins anew where `room` ends.
inline QPoint CascadePlace(int before, int left, const QSize& room) {
    constexpr int step = 26; // pixels
    const int first = std::min(left, room.width());
    const int steps = std::min(room.width() - first, room.height()) / step + 1;
    const int offset = before % steps * step;
    return {first + offset, offset};
}

} // namespace nrv::ui
