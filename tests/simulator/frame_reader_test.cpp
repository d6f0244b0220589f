#include "simulator/frame_reader.h"
#include "terminal.h"

#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

/// All frames that a run of bytes holds.
std::vector<Frame> FramesIn(const Bytes& bytes) {
    FrameReader reader;
    std::vector<Frame> frames;
    for (Byte byte : bytes) {
        if (const auto frame = reader.Take(byte)) {
            frames.push_back(*frame);
        }
    }
    return frames;
}

Bytes Join(std::initializer_list<Bytes> parts) {
    Bytes all;
    for (const Bytes& part : parts) {
        all.insert(all.end(), part.begin(), part.end());
    }
    return all;
}

const Frame Good = Request(5, {1, 3, 0, 0, 0, 0, 0, 0, 61});
const Bytes GoodBytes(Good.begin(), Good.end());
using Found = std::vector<Frame>;

TEST(FrameReader, TakesFramesBackToBack) {
    EXPECT_EQ(FramesIn(Join({GoodBytes, GoodBytes})), (Found{Good, Good}));
}

TEST(FrameReader, PassesOverWhatIsNoFrame) {
    EXPECT_EQ(FramesIn(Join({{0x00, 0xF7, 0xC3, 0x12}, GoodBytes})), Found{Good});
    EXPECT_EQ(FramesIn(Join({{0xF0, 0x12, 0xF0, 0xF0}, GoodBytes})), Found{Good});
    EXPECT_EQ(FramesIn(Join({{0xF0}, GoodBytes})), Found{Good});
}

TEST(FrameReader, DropsAFrameThatDoesNotEndInItsTail) {
    Bytes bad = GoodBytes;
    bad.back() = 0xF6;
    EXPECT_EQ(FramesIn(bad), Found{});
    EXPECT_EQ(FramesIn(Join({bad, GoodBytes})), Found{Good});
}

TEST(FrameReader, FindsTheFrameBehindACutOne) {
    for (std::ptrdiff_t size = 1; size < 13; ++size) {
        const Bytes cut(GoodBytes.begin(), GoodBytes.begin() + size);
        EXPECT_EQ(FramesIn(Join({cut, GoodBytes, GoodBytes})), (Found{Good, Good})) << size;
    }
}

TEST(FrameReader, LeavesHeadsAndTailsInsideAFrameAlone) {
    const Frame tricky = Request(5, {0x0E, 2, 0, 0xF0, 0xC3, 0xF7, 0xF7, 0xF0, 0xC3});
    EXPECT_EQ(FramesIn({tricky.begin(), tricky.end()}), Found{tricky});
}

TEST(FrameReader, HoldsNoMoreThanAFrameOfNoise) {
    FrameReader reader;
    for (int i = 0; i < 10000; ++i) {
        reader.Take(static_cast<Byte>(i % 3 == 0 ? 0xF0 : 0xC3));
        ASSERT_LT(reader.Pending(), 13U);
    }
}

} // namespace
} // namespace nrv::simulator
