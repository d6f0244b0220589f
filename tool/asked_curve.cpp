#include "model/encodings.h"
#include "model/number_text.h"
#include "tool/filter_text.h"

#include <cmath>
#include <complex>
#include <numbers>

// The filters that a text asks for, as analogue transfer functions.

namespace nrv::tool {
namespace {

using Complex = std::complex<double>;

double Decibels(const Complex& h) {
    return 10.0 * std::log10(std::norm(h));
}

/// a is the square root of the gain.
Complex LowShelfAt(const AskedFilter& filter, const Complex& s, double a) {
    if (filter.Order == 1) {
        return (s + a) / (s + 1.0 / a);
    }
    const Complex slope = s * std::sqrt(a) / filter.Q;
    return a * (s * s + slope + a) / (a * s * s + slope + 1.0);
}

Complex LowPassAt(const AskedFilter& filter, const Complex& s) {
    return filter.Order == 1 ? 1.0 / (s + 1.0) : 1.0 / (s * s + s / filter.Q + 1.0);
}

std::string NameOf(const AskedFilter& filter) {
    switch (filter.Kind) {
    case FilterKind::Peak:
        return "PK";
    case FilterKind::LowShelf:
        return filter.Order == 1 ? "LS 6dB" : "LS";
    case FilterKind::HighShelf:
        return filter.Order == 1 ? "HS 6dB" : "HS";
    case FilterKind::LowPass:
        return filter.Order == 1 ? "LP1" : "LP";
    case FilterKind::HighPass:
        return filter.Order == 1 ? "HP1" : "HP";
    }
    return {};
}

std::string Rounded(double value) {
    constexpr int places = 4;
    return model::NumberText(model::ToDecimal(value, places));
}

} // namespace

double QOfOctaves(double octaves) {
    return 1.0 / (2.0 * std::sinh(std::numbers::ln2 / 2.0 * octaves));
}

double OctavesOfQ(double q) {
    return 2.0 / std::numbers::ln2 * std::asinh(1.0 / (2.0 * q));
}

std::string InWords(const AskedFilter& filter) {
    std::string words = NameOf(filter) + " " + Rounded(filter.Hz) + " Hz";
    if (filter.Kind != FilterKind::LowPass && filter.Kind != FilterKind::HighPass) {
        words += " " + Rounded(filter.GainDb) + " dB";
    }
    return filter.Order == 1 ? words : words + " Q " + Rounded(filter.Q);
}

double LevelOf(const AskedFilter& filter, double hz) {
    const double a = std::pow(10.0, filter.GainDb / 40.0);
    const Complex s(0.0, hz / filter.Hz);
    switch (filter.Kind) {
    case FilterKind::Peak:
        return Decibels((s * s + s * (a / filter.Q) + 1.0) / (s * s + s / (a * filter.Q) + 1.0));
    case FilterKind::LowShelf:
        return Decibels(LowShelfAt(filter, s, a));
    case FilterKind::HighShelf:
        return Decibels(LowShelfAt(filter, 1.0 / s, a)); // the low one with the axis turned round
    case FilterKind::LowPass:
        return Decibels(LowPassAt(filter, s));
    case FilterKind::HighPass:
        return Decibels(LowPassAt(filter, 1.0 / s));
    }
    return 0.0;
}

} // namespace nrv::tool
