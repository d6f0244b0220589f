#include "response/filters.h"

#include "model/tables.h"

#include <array>
#include <cmath>
#include <numbers>

namespace nrv::response {
namespace {

/// 20 log10 x is this times the natural logarithm of x, and 10 log10 x half of it.
constexpr double DbPerNeper = 20.0 / std::numbers::ln10;

/// Each number of a curve becomes a level. A loop of its own, so that the formula before it can run on vectors.
void TakeLogarithms(Curve& curve, double db_per_neper) {
    for (double& value : curve) {
        value = std::log(value) * db_per_neper;
    }
}

} // namespace

double BellDivisor(double absolute_gain) {
    // The bounds descend, so that no range ever matches and only 15.5 exactly is told apart; that is meant.
    struct Range {
        double AtLeast;
        double AtMost;
        double Divisor;
    };
    static constexpr std::array<Range, 9> Ranges{{{16.0, 15.6, 2.8571},
                                                  {15.5, 15.5, 2.6315},
                                                  {15.0, 14.6, 2.5},
                                                  {14.5, 14.1, 2.22},
                                                  {14.0, 13.6, 2.2},
                                                  {13.5, 12.6, 2.1739},
                                                  {12.5, 11.1, 2.083},
                                                  {11.0, 9.1, 2.0},
                                                  {9.0, 0.0, 1.5384}}};
    for (const Range& range : Ranges) {
        if (absolute_gain >= range.AtLeast && absolute_gain <= range.AtMost) {
            return range.Divisor;
        }
    }
    return 1.0;
}

void Evaluate(const Bell& bell, Curve& curve) {
    const double gain = bell.GainDb;
    const double centre = bell.CentreHz;
    const double inverse_centre = 1.0 / centre;
    const double q = bell.Q / BellDivisor(std::abs(gain));
    const double q2 = q * q;
    for (std::size_t point = 0; point < GridPoints; ++point) {
        const double detuning = centre * GridInverse[point] - PlotGrid[point] * inverse_centre;
        curve[point] = gain / (1.0 + q2 * (detuning * detuning));
    }
}

namespace {

/// Visits with the ratio N / D' of a shelf over f; c is the corner, A = 10^(G/20).
template <class Visit>
void WithShelfRatio(const Shelf& shelf, Visit visit) {
    const double c = shelf.CornerHz;
    const double a = std::pow(10.0, shelf.GainDb / 20.0);
    const double root_a = std::sqrt(a);
    const double c2 = c * c;
    const double cross = std::numbers::sqrt2 * c;
    switch (shelf.Kind) {
    case ShelfKind::FirstOrderLow:
        return visit([=](double f) { return (c + f) / (c / a + f); });
    case ShelfKind::SecondOrderLow:
        return visit([=](double f) { return (c2 + f * f + cross * f) / (c2 / a + f * f + cross * f / root_a); });
    case ShelfKind::FirstOrderHigh:
        return visit([=](double f) { return (c + f) * a / (c * a + f); });
    case ShelfKind::SecondOrderHigh:
        return visit([=](double f) { return (c2 + f * f + cross * f) * a / (c2 * a + f * f + cross * f * root_a); });
    case ShelfKind::Bypass:
        break;
    }
    visit([](double) { return 1.0; });
}

} // namespace

double Level(const Shelf& shelf, double hz) {
    double level = 0.0;
    WithShelfRatio(shelf, [&](auto ratio) { level = std::log(ratio(hz)) * DbPerNeper; });
    return level;
}

void Evaluate(const Shelf& shelf, Curve& curve) {
    WithShelfRatio(shelf, [&](auto ratio) {
        for (std::size_t point = 0; point < GridPoints; ++point) {
            curve[point] = ratio(PlotGrid[point]);
        }
    });
    TakeLogarithms(curve, DbPerNeper);
}

namespace {

/// Walks a prototype by 1 / H^2 over the normalised frequency squared: a low pass sees (f/c)^2, a high pass (c/f)^2,
/// which is what dividing the one's formula out into the other's comes to.
template <class InverseSquared>
void WalkPrototype(const Crossover& crossover, Curve& curve, InverseSquared inverse_squared) {
    const double corner_squared = crossover.CornerHz * crossover.CornerHz;
    if (crossover.PassSide == Side::LowPass) {
        const double scale = 1.0 / corner_squared;
        for (std::size_t point = 0; point < GridPoints; ++point) {
            curve[point] = inverse_squared(GridSquare[point] * scale);
        }
    } else {
        for (std::size_t point = 0; point < GridPoints; ++point) {
            curve[point] = inverse_squared(GridInverseSquare[point] * corner_squared);
        }
    }
    TakeLogarithms(curve, -DbPerNeper / 2.0);
}

/// A pair of Chebyshev poles, a^2 p + (1 - p)^2, with p the frequency squared over the pole's own.
double PolePair(double w2, double pole, double a) {
    const double p = w2 / (pole * pole);
    return a * a * p + (1.0 - p) * (1.0 - p);
}

// Chebyshev of 3 dB ripple by its poles; the even orders stand at -3.01 dB in their pass band, which is meant.

double Chebyshev2(double w2) {
    return 2.0 * PolePair(w2, 0.8409, 0.7654);
}

double Chebyshev3(double w2) {
    return (1.0 + w2 / (0.298 * 0.298)) * PolePair(w2, 0.9159, 0.3254);
}

double Chebyshev4(double w2) {
    return 2.0 * PolePair(w2, 0.9502, 0.1789) * PolePair(w2, 0.4425, 0.9276);
}

/// Second-order Bessel, s^2 + 3 s + 3, with its corner pulled to 0.7532.
double Bessel2(double w2) {
    const double v2 = w2 / (0.7532 * 0.7532);
    return v2 + (1.0 - v2 / 3.0) * (1.0 - v2 / 3.0);
}

double Square(double x) {
    return x * x;
}

} // namespace

void Evaluate(const Crossover& crossover, Curve& curve) {
    if (model::Entry(model::SlopeStageTable, crossover.SlopeCode) == 0) {
        curve.fill(0.0); // bypass, no logarithm taken
        return;
    }
    switch (crossover.SlopeCode) {
    case 1: // Butterworth, first order
        return WalkPrototype(crossover, curve, [](double w2) { return 1.0 + w2; });
    case 2: // Butterworth, second order
        return WalkPrototype(crossover, curve, [](double w2) { return 1.0 + w2 * w2; });
    case 3: // Linkwitz-Riley, two first-order halves
        return WalkPrototype(crossover, curve, [](double w2) { return Square(1.0 + w2); });
    case 4:
        return WalkPrototype(crossover, curve, Bessel2);
    case 5:
        return WalkPrototype(crossover, curve, Chebyshev2);
    case 6: // Butterworth, third order
        return WalkPrototype(crossover, curve, [](double w2) { return 1.0 + w2 * w2 * w2; });
    case 7:
        return WalkPrototype(crossover, curve, Chebyshev3);
    case 8: // Butterworth, fourth order
        return WalkPrototype(crossover, curve, [](double w2) { return 1.0 + Square(w2 * w2); });
    case 9: // Linkwitz-Riley, two second-order halves
        return WalkPrototype(crossover, curve, [](double w2) { return Square(1.0 + w2 * w2); });
    default: // 10
        return WalkPrototype(crossover, curve, Chebyshev4);
    }
}

} // namespace nrv::response
