#pragma once

#include "response/plot_grid.h"

// The formulas of the response display: level in dB at f hertz. They are the device's analogue prototypes worked out on
// the PC: no sampling rate, no phase.

namespace nrv::response {

/// A PEQ section, a bell written in dB: G / (1 + q^2 (f0/f - f/f0)^2) with q = Q / D.
struct Bell {
    double GainDb;
    double CentreHz;
    double Q;
};
void Evaluate(const Bell& bell, Curve& curve);

/// The divisor D of a bell's Q, from the absolute value of its gain in dB.
double BellDivisor(double absolute_gain);

/// The kinds of shelf by their number.
enum class ShelfKind { Bypass = 0, FirstOrderLow = 1, SecondOrderLow = 2, FirstOrderHigh = 3, SecondOrderHigh = 4 };

/// A shelving filter: a ratio of plain real sums, the same form for boost and cut.
struct Shelf {
    ShelfKind Kind;
    double GainDb;
    double CornerHz;
};
/// For `Response::ShelfResponse`; the curves take their logarithms all at once.
double Level(const Shelf& shelf, double hz);
void Evaluate(const Shelf& shelf, Curve& curve);

enum class Side { HighPass, LowPass };

/// One side of a crossover: the magnitude of a prototype by its slope code, 0 (bypass) to 10.
struct Crossover {
    Side PassSide;
    int SlopeCode;
    double CornerHz;
};
/// Throws `RuntimeError` of kind IndexOutOfRange for a slope code outside 0 to 10; the curve is then as it was.
void Evaluate(const Crossover& crossover, Curve& curve);

} // namespace nrv::response
