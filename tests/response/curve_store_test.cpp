#include "response/curve_store.h"
#include "response/curves.h"

#include <gtest/gtest.h>
#include <vector>

namespace nrv::testing {
namespace {

using namespace nrv::response;

struct Parts {
    int Channel;
    std::vector<int> Peq;
    std::vector<int> Shelves;
    std::vector<int> Sides;
};

const std::vector<Parts>& PartsOfChannels() {
    static const std::vector<Parts> parts{
        {0, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9}, {0, 1}, {}},
        {1, {10, 11, 12, 13, 14, 15, 16, 17, 18, 19}, {2, 3}, {}},
        {2, {20, 21, 22, 23}, {4}, {0, 1}},
        {3, {24, 25, 26, 27}, {5}, {2, 3}},
        {4, {28, 29, 30, 31}, {6}, {4, 5}},
        {5, {32, 33, 34, 35}, {7}, {6, 7}},
        {6, {36, 37, 38, 39}, {8}, {8, 9}},
        {7, {40, 41, 42, 43}, {9}, {10, 11}},
    };
    return parts;
}

TEST(CurveStore, PartsAndSumsThatWereNeverComputedAreZero) {
    CurveStore store;
    WindowCurves& curves = store.Of(10);
    for (int channel = 0; channel < 8; ++channel) {
        EXPECT_TRUE(IsFlat(curves.ChannelCurve(channel), 0.0));
        curves.FillPeq(FirstPeqOf(channel));
        EXPECT_TRUE(IsFlat(curves.ChannelCurve(channel), 0.0));
    }
    EXPECT_TRUE(IsFlat(curves.PeqCurve(43), 0.0));
    EXPECT_TRUE(IsFlat(curves.ShelfCurve(9), 0.0));
    EXPECT_TRUE(IsFlat(curves.CrossoverCurve(11), 0.0));
}

TEST(CurveStore, SumsEachPartIntoItsOwnChannelAlone) {
    CurveStore store;
    for (const Parts& parts : PartsOfChannels()) {
        const auto expect_alone = [&](const auto& fill, const char* kind, int index) {
            fill(index).fill(1.5);
            for (int channel = 0; channel < 8; ++channel) {
                EXPECT_TRUE(IsFlat(store.Of(0).ChannelCurve(channel), channel == parts.Channel ? 1.5 : 0.0))
                    << kind << " " << index << ", channel " << channel;
            }
            fill(index).fill(0.0);
        };
        WindowCurves& curves = store.Of(0);
        for (const int section : parts.Peq) {
            expect_alone([&](int s) -> Curve& { return curves.FillPeq(s); }, "section", section);
        }
        for (const int filter : parts.Shelves) {
            expect_alone([&](int h) -> Curve& { return curves.FillShelf(h); }, "tone filter", filter);
        }
        for (const int side : parts.Sides) {
            expect_alone([&](int x) -> Curve& { return curves.FillCrossover(x); }, "side", side);
        }
    }
}

TEST(CurveStore, AddsUpWhatAllPartsHoldAtEachPoint) {
    CurveStore store;
    WindowCurves& curves = store.Of(3);
    // Small whole numbers, so that every sum is exact.
    const auto level = [](int part, std::size_t point) {
        return static_cast<double>((7 * static_cast<std::size_t>(part) + point) % 101);
    };
    for (std::size_t point = 0; point < GridPoints; ++point) {
        for (int s = 0; s < 44; ++s) {
            curves.FillPeq(s)[point] = level(s, point);
        }
        for (int h = 0; h < 10; ++h) {
            curves.FillShelf(h)[point] = level(100 + h, point);
        }
        for (int x = 0; x < 12; ++x) {
            curves.FillCrossover(x)[point] = -level(200 + x, point);
        }
    }
    for (const Parts& parts : PartsOfChannels()) {
        const Curve& total = curves.ChannelCurve(parts.Channel);
        for (std::size_t point = 0; point < GridPoints; ++point) {
            double expected = 0.0;
            for (const int s : parts.Peq) {
                expected += level(s, point);
            }
            for (const int h : parts.Shelves) {
                expected += level(100 + h, point);
            }
            for (const int x : parts.Sides) {
                expected -= level(200 + x, point);
            }
            ASSERT_EQ(total[point], expected) << "channel " << parts.Channel << ", point " << point;
        }
    }
}

TEST(CurveStore, KeepsTheCurvesOfEachWindowApart) {
    CurveStore store;
    for (int slot = 0; slot < 11; ++slot) {
        store.Of(slot).FillPeq(0).fill(slot);
    }
    for (int slot = 0; slot < 11; ++slot) {
        EXPECT_TRUE(IsFlat(store.Of(slot).ChannelCurve(0), slot));
    }
}

} // namespace
} // namespace nrv::testing
