#include "simulator/wire.h"

#include <gtest/gtest.h>

namespace nrv::simulator {
namespace {

TEST(Wire, EqualAnswersAtOnceAreSound) {
    const Reply answer{0xF0, 0xC3, 5, 0, 0xC3, 0xF7};
    EXPECT_EQ(Collide(answer, answer, 0), answer);
}

TEST(Wire, AZeroWins) {
    EXPECT_EQ(Collide({0xF0, 0x0F, 0xFF}, {0xAA, 0xAA, 0x12}, 0), (Reply{0xA0, 0x0A, 0x12}));
    EXPECT_EQ(Collide({0x3C}, {0xFF, 0x55}, 0), (Reply{0x3C, 0x55}));
}

TEST(Wire, ShiftedAnswersAreReadFromTheFirstStartBitOn) {
    // 0 11111111 1 with 0 11111111 1 two bits behind it: one byte with a hole, and no second start bit.
    EXPECT_EQ(Collide({0xFF}, {0xFF}, 2), Reply{0xFD});
    // 0 00000000 1 twice, five bits apart: the stop bit is pulled down, and one byte is all that is left.
    EXPECT_EQ(Collide({0x00}, {0x00}, 5), Reply{0x00});
    // A whole byte apart they do not meet.
    EXPECT_EQ(Collide({0x12}, {0x34}, 10), (Reply{0x12, 0x34}));
}

TEST(Wire, AnAnswerAloneIsHeardAsItIs) {
    const Reply answer{0x00, 0x80, 0x01, 0xFF};
    EXPECT_EQ(Collide(answer, {}, 3), answer);
    EXPECT_EQ(Collide({}, answer, 3), answer);
    EXPECT_EQ(Collide({}, {}, 0), Reply{});
}

} // namespace
} // namespace nrv::simulator
