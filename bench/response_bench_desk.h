#pragma once

#include "controls/windows.h"
#include "model/device_stores.h"
#include "model/tables.h"
#include "response/response.h"

#include <algorithm>
#include <benchmark/benchmark.h>
#include <chrono>
#include <cmath>
#include <complex>
#include <limits>
#include <memory>

namespace nrv::bench {

/// A window in which every part of every channel is in use.
struct ResponseDesk {
    controls::Windows Windows;
    std::unique_ptr<model::DeviceStores> Stores = std::make_unique<model::DeviceStores>();
    response::Response Display{Windows, *Stores};

    ResponseDesk() {
        model::ParamRow& values = Values();
        for (std::size_t s = 0; s < values.PeqGain.size(); ++s) {
            values.PeqGain[s] = s % 2 == 0 ? 9.0 : -7.0;
            values.PeqFrequency[s] = model::FrequencyTable[(37 * s + 11) % 121];
            Windows.Current().UpDown3[s].SetPosition(static_cast<int>(s));
        }
        for (std::size_t h = 0; h < values.ToneGain.size(); ++h) {
            values.ToneType[h] = 2.0;
            values.ToneGain[h] = 4.5;
            values.ToneFrequency[h] = 500.0;
        }
        for (std::size_t x = 0; x < values.CrossoverSlope.size(); ++x) {
            values.CrossoverSlope[x] = 10.0;
            values.CrossoverFrequency[x] = x % 2 == 0 ? 100.0 : 5000.0;
        }
        UpdateAll();
    }

    model::ParamRow& Values() { return Stores->ParamValues[0]; }
    controls::Picture& Graph(int channel) { return Windows.Current().Picture1[static_cast<std::size_t>(channel)]; }

    /// What filling a window computes: 12 crossover sides, 44 PEQ sections, 10 tone filters, nothing drawn.
    void UpdateAll() {
        Display.PlotSuspended = true;
        for (int side = 0; side < CrossoverCount; ++side) {
            Display.UpdateCrossoverCurve(side);
        }
        for (int section = 0; section < PeqCount; ++section) {
            Display.UpdatePeqCurve(section);
        }
        for (int filter = 0; filter < ToneCount; ++filter) {
            Display.UpdateShelfCurve(filter);
        }
        Display.PlotSuspended = false;
    }
};

/// The plain way: at each frequency every part of the channel anew as a complex transfer function, their levels added,
/// a logarithm for the column, and one line to the next pixel.
class PlainRedraw {
  public:
    PlainRedraw(ResponseDesk& desk, int channel) : values_(desk.Values()), channel_(channel) {
        const int first = FirstPeqOf(channel);
        for (int s = first; s < first + PeqCountOf(channel); ++s) {
            const auto at = static_cast<std::size_t>(s);
            q_[at] = model::QTable[static_cast<std::size_t>(desk.Windows.Current().UpDown3[at].Shown())];
        }
    }

    template <class LineTo>
    void operator()(LineTo line_to) const {
        for (const double f : response::PlotGrid) {
            const double level = LevelAt(f);
            const double gains = values_.MasterGain + values_.ChannelGain[static_cast<std::size_t>(channel_)];
            const double y = 95.4 - (gains + level) * 191.0 / 60.0;
            const double x = 575.0 / 3.0 * std::log10(f / 20.0);
            line_to(f < 20.0 ? -1 : static_cast<int>(std::lrint(x)), static_cast<int>(std::lrint(y)));
        }
    }

  private:
    using Complex = std::complex<double>;

    static double Decibels(Complex h) { return 20.0 * std::log10(std::abs(h)); }

    double LevelAt(double f) const {
        double level = 0.0;
        const auto c = static_cast<std::size_t>(channel_);
        for (std::size_t s = FirstPeqOf(c); s < FirstPeqOf(c) + PeqCountOf(c); ++s) {
            const Complex z(0.0, f / values_.PeqFrequency[s]);
            const double root_a = std::pow(10.0, values_.PeqGain[s] / 40.0);
            level += Decibels((z * z + z * (root_a / q_[s]) + 1.0) / (z * z + z / (root_a * q_[s]) + 1.0));
        }
        const auto shelf = [&](std::size_t h) {
            const Complex z(0.0, f / values_.ToneFrequency[h]);
            const double a = std::pow(10.0, values_.ToneGain[h] / 20.0);
            const double root_2 = std::sqrt(2.0);
            return Decibels((z * z + z * root_2 + 1.0) / (z * z + z * root_2 / std::sqrt(a) + 1.0 / a));
        };
        if (c < 2) {
            return level + shelf(2 * c) + shelf(2 * c + 1);
        }
        const auto pole_pair = [](Complex z, double pole, double damping) {
            const Complex p = z / pole;
            return 1.0 / (p * p + damping * p + 1.0);
        };
        const auto crossover = [&](Complex z) {
            return Decibels(std::sqrt(0.5) * pole_pair(z, 0.9502, 0.1789) * pole_pair(z, 0.4425, 0.9276));
        };
        const std::size_t side = 2 * (c - 2);
        return level + shelf(c + 2) + crossover({0.0, -values_.CrossoverFrequency[side] / f}) +
               crossover({0.0, f / values_.CrossoverFrequency[side + 1]});
    }

    const model::ParamRow& values_;
    int channel_;
    std::array<double, PeqCount> q_{};
};

/// The shortest of many runs: what the work takes when nothing else runs on the machine.
class BestTime {
  public:
    template <class Work>
    double Measure(Work work) {
        const auto before = std::chrono::steady_clock::now();
        work();
        const std::chrono::duration<double> took = std::chrono::steady_clock::now() - before;
        best_ = std::min(best_, took.count());
        return took.count();
    }
    double Seconds() const { return best_; }

  private:
    double best_ = std::numeric_limits<double>::infinity();
};

/// Runs `work`, and reports its best time in microseconds and as a share of the limit.
template <class Work>
void WithinLimit(benchmark::State& state, double limit_us, Work work) {
    BestTime time;
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(time.Measure(work));
    }
    state.counters["best_us"] = 1e6 * time.Seconds();
    state.counters["of_limit"] = 1e6 * time.Seconds() / limit_us;
}

/// Runs `work` and the plain way in turn, so that both see the same machine; times_faster is the ratio of their bests.
template <class Work, class Plain>
void AgainstPlain(benchmark::State& state, double limit_us, Work work, Plain plain) {
    BestTime time;
    BestTime plain_time;
    for ([[maybe_unused]] auto _ : state) {
        state.SetIterationTime(time.Measure(work));
        plain_time.Measure(plain);
    }
    state.counters["best_us"] = 1e6 * time.Seconds();
    state.counters["of_limit"] = 1e6 * time.Seconds() / limit_us;
    state.counters["plain_us"] = 1e6 * plain_time.Seconds();
    state.counters["times_faster"] = plain_time.Seconds() / time.Seconds();
}

inline constexpr double UpdateLimit = 150.0;     // us: one part, its channel's total, one curve
inline constexpr double WholeImageLimit = 600.0; // us: 66 parts, nothing drawn
inline constexpr double RedrawsLimit = 1200.0;   // us: eight graphs

} // namespace nrv::bench
