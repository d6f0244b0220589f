#pragma once

#include "ui/look/theme.h"

#include <QApplication>
#include <QColor>
#include <QPalette>

#include <algorithm>
#include <cmath>

namespace nrv::test {

/// The contrast of two colours as WCAG 2 has it, 1 to 21.
inline double Contrast(const QColor& one, const QColor& other) {
    const auto luminance = [](const QColor& colour) {
        const auto linear = [](double part) {
            return part <= 0.04045 ? part / 12.92 : std::pow((part + 0.055) / 1.055, 2.4);
        };
        return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
    };
    const auto [dark, light] = std::minmax(luminance(one), luminance(other));
    return (light + 0.05) / (dark + 0.05);
}

/// From now on the windows are those of a desktop with this ground.
inline void UseGround(const QColor& window) {
    QPalette palette;
    palette.setColor(QPalette::Window, window);
    QApplication::setPalette(palette);
    ui::ApplyTheme(*qApp);
}

} // namespace nrv::test
