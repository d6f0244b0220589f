#pragma once

#include <QColor>
#include <QImage>
#include <QString>

#include <algorithm>
#include <cmath>
#include <set>
#include <vector>

/// Whether a picture of a graph shows the curve that it should.
namespace nrv::test {

/// The frequencies of a curve by the rule of the walk.
inline std::vector<double> WalkedFrequencies() {
    std::vector<double> all;
    for (int f = 10; f <= 20000; ++f) {
        if (f > 799 && f < 20000) {
            f = std::min(f + 20, 20000);
        }
        all.push_back(f);
    }
    return all;
}

/// Whether a smoothed curve's colour makes up more than half of a pixel.
inline bool IsMostly(const QColor& pixel, const QColor& ink) {
    return std::abs(pixel.red() - ink.red()) < 128 && std::abs(pixel.green() - ink.green()) < 128 &&
           std::abs(pixel.blue() - ink.blue()) < 128;
}

/// Checks a drawn curve against levels in dB over the walk: every point lies on its pixel, and no column has ink
/// outside what lies between its points and their neighbours.
inline QString CurveFault(const QImage& picture, const QColor& ink, const std::vector<double>& levels) {
    const std::vector<double> frequencies = WalkedFrequencies();
    std::vector<std::set<int>> rows(576);
    int last_column = -1;
    int last_row = 0;
    for (std::size_t i = 0; i < frequencies.size(); ++i) {
        if (frequencies[i] < 20.0) {
            continue;
        }
        const int x = static_cast<int>(std::nearbyint(575.0 / 3.0 * std::log10(frequencies[i] / 20.0)));
        const int y = static_cast<int>(std::nearbyint(95.4 - levels[i] * 191.0 / 60.0));
        if (y >= 0 && y < 192 && !IsMostly(picture.pixelColor(x, y), ink)) {
            return QStringLiteral("%1 Hz is not on (%2, %3)").arg(frequencies[i]).arg(x).arg(y);
        }
        for (int column = std::max(last_column, 0); column <= x; ++column) {
            rows[static_cast<std::size_t>(column)].insert(y);
            if (last_column >= 0) {
                rows[static_cast<std::size_t>(column)].insert(last_row);
            }
        }
        last_column = x;
        last_row = y;
    }
    for (int column = 0; column < 576; ++column) {
        int inked = 0;
        const std::set<int>& wanted = rows[static_cast<std::size_t>(column)];
        for (int row = 0; row < 192; ++row) {
            if (IsMostly(picture.pixelColor(column, row), ink)) {
                ++inked;
            }
            if (picture.pixelColor(column, row) == ink && (row < *wanted.begin() || row > *wanted.rbegin())) {
                return QStringLiteral("ink at (%1, %2)").arg(column).arg(row);
            }
        }
        if (inked == 0 && *wanted.begin() < 192 && *wanted.rbegin() >= 0) {
            return QStringLiteral("no ink in column %1").arg(column);
        }
    }
    return {};
}

inline std::vector<double> Flat(double level) {
    std::vector<double> levels(WalkedFrequencies().size(), level);
    return levels;
}

} // namespace nrv::test
