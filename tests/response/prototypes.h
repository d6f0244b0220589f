#pragma once

#include <cmath>
#include <complex>
#include <numbers>
#include <ostream>
#include <vector>

/// The filters worked out a second way: analogue transfer functions over s = j w, built from their poles.
namespace nrv::testing {

using Complex = std::complex<double>;
using LongComplex = std::complex<long double>;

/// A low pass of corner 1 rad/s: gain / product of (1 - s / pole). The high pass is the same function of 1/s.
struct Prototype {
    double Gain = 1.0;
    std::vector<Complex> Poles;

    Complex At(Complex s) const {
        Complex divisor = 1.0;
        for (const Complex& pole : Poles) {
            divisor *= 1.0 - s / pole;
        }
        return Gain / divisor;
    }
    Complex LowPass(double f, double corner) const { return At({0.0, f / corner}); }
    /// j w becomes 1 / (j w) = -j / w.
    Complex HighPass(double f, double corner) const { return At({0.0, -corner / f}); }
};

inline double LevelOf(Complex response) {
    return 10.0 * std::log10(std::norm(response));
}

/// The poles of a Butterworth low pass lie at equal angles on the left half of the unit circle.
inline Prototype Butterworth(int order) {
    Prototype filter;
    for (int k = 0; k < order; ++k) {
        filter.Poles.push_back(std::polar(1.0, std::numbers::pi * (2 * k + order + 1) / (2.0 * order)));
    }
    return filter;
}

inline Prototype TwoOf(const Prototype& half) {
    Prototype filter = half;
    filter.Poles.insert(filter.Poles.end(), half.Poles.begin(), half.Poles.end());
    return filter;
}

/// The roots of s^2 + 3 s + 3, scaled by 0.7532.
inline Prototype Bessel() {
    const Complex root = Complex(-1.5, std::sqrt(3.0) / 2.0);
    return {1.0, {0.7532 * root, 0.7532 * std::conj(root)}};
}

/// A pair of poles by its radius and its damping: the roots of s^2 + damping radius s + radius^2.
inline std::vector<Complex> PolePairOf(double radius, double damping) {
    const Complex pole = radius * Complex(-damping / 2.0, std::sqrt(1.0 - damping * damping / 4.0));
    return {pole, std::conj(pole)};
}

inline Prototype Chebyshev(int order) {
    switch (order) {
    case 2:
        return {std::sqrt(0.5), PolePairOf(0.8409, 0.7654)};
    case 3: {
        Prototype filter{1.0, PolePairOf(0.9159, 0.3254)};
        filter.Poles.emplace_back(-0.298);
        return filter;
    }
    default: {
        Prototype filter{std::sqrt(0.5), PolePairOf(0.9502, 0.1789)};
        for (const Complex& pole : PolePairOf(0.4425, 0.9276)) {
            filter.Poles.push_back(pole);
        }
        return filter;
    }
    }
}

struct Slope {
    int Code;
    const char* Name;
    int Order;
    double CornerLevel; ///< dB, to two decimals
    double PassLevel;   ///< dB far inside the pass band, to two decimals
    Prototype Filter;
};
/// Named in the list of tests; by itself it would be printed byte by byte, with the bytes between its members.
inline void PrintTo(const Slope& slope, std::ostream* out) {
    *out << "slope " << slope.Code;
}

inline const std::vector<Slope>& Slopes() {
    static const std::vector<Slope> slopes{
        {1, "Butterworth6", 1, -3.01, 0.0, Butterworth(1)},
        {2, "Butterworth12", 2, -3.01, 0.0, Butterworth(2)},
        {3, "LinkwitzRiley12", 2, -6.02, 0.0, TwoOf(Butterworth(1))},
        {4, "Bessel12", 2, -2.86, 0.0, Bessel()},
        {5, "Chebyshev12", 2, -3.01, -3.01, Chebyshev(2)},
        {6, "Butterworth18", 3, -3.01, 0.0, Butterworth(3)},
        {7, "Chebyshev18", 3, -3.01, 0.0, Chebyshev(3)},
        {8, "Butterworth24", 4, -3.01, 0.0, Butterworth(4)},
        {9, "LinkwitzRiley24", 4, -6.02, 0.0, TwoOf(Butterworth(2))},
        {10, "Chebyshev24", 4, -3.01, -3.01, Chebyshev(4)},
    };
    return slopes;
}

/// The bell as G times the squared magnitude of a band pass (s/q) / (s^2 + s/q + 1) at s = j f/f0.
inline long double BellLevel(long double gain, long double centre, long double q, long double f) {
    const LongComplex s(0.0L, f / centre);
    const LongComplex band_pass = (s / q) / (s * s + s / q + 1.0L);
    return gain * std::norm(band_pass);
}

/// A shelf of a kind, 0 to 4, from the sums as they are told. Slow functions of a long double are called once.
struct ReferenceShelf {
    int Kind;
    long double C;
    long double A;
    long double RootA;

    ReferenceShelf(int kind, long double gain, long double c)
        : Kind(kind), C(c), A(std::pow(10.0L, gain / 20.0L)), RootA(std::sqrt(A)) {}

    double At(long double f) const {
        const long double root_2 = std::numbers::sqrt2_v<long double>;
        long double n = 1.0L;
        long double d = 1.0L;
        if (Kind == 1) {
            n = C + f;
            d = C / A + f;
        } else if (Kind == 2) {
            n = C * C + f * f + root_2 * C * f;
            d = C * C / A + f * f + root_2 * C * f / RootA;
        } else if (Kind == 3) {
            n = (C + f) * A;
            d = C * A + f;
        } else if (Kind == 4) {
            n = (C * C + f * f + root_2 * C * f) * A;
            d = C * C * A + f * f + root_2 * C * f * RootA;
        }
        return 20.0 * std::log10(static_cast<double>(n / d));
    }
};

inline double ShelfLevel(int kind, long double gain, long double c, long double f) {
    return ReferenceShelf(kind, gain, c).At(f);
}

/// The frequencies of the grid in whole hertz, counted and not walked.
inline std::vector<int> GridHertz() {
    std::vector<int> grid;
    for (int f = 10; f < 800; ++f) {
        grid.push_back(f);
    }
    for (int k = 0; k <= 913; ++k) {
        grid.push_back(820 + 21 * k);
    }
    grid.push_back(20000);
    return grid;
}

} // namespace nrv::testing
