#include "model/decimal_text.h"
#include "model/encodings.h"
#include "model/number_text.h"
#include "model/tables.h"
#include "ports/numbering.h"

#include <array>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <limits>
#include <string>
#include <vector>

namespace nrv::model {
namespace {

/// The value shows as that decimal, is the double nearest to it, and is what is read back from its text.
void ExpectDecimal(double value, const std::string& decimal) {
    EXPECT_EQ(NumberText(value), decimal);
    EXPECT_EQ(value, std::strtod(decimal.c_str(), nullptr)) << decimal;
    EXPECT_EQ(value, ParseNumber(NumberText(value))) << decimal;
}

/// The nearest code by looking at all of them: the least distance, the lower of two; above the table 0.
int NearestByBruteForce(double hz) {
    if (hz > 20000.0) {
        return 0;
    }
    int best = 0;
    for (int code = 1; code <= 120; ++code) {
        const auto entry = [](int i) { return FrequencyTable[static_cast<std::size_t>(i)]; };
        if (std::abs(entry(code) - hz) < std::abs(entry(best) - hz)) {
            best = code;
        }
    }
    return best;
}

TEST(ChannelGain, EveryCodeOfAByteIsAFifthOfADecibel) {
    for (int code = 0; code <= 255; ++code) {
        ExpectDecimal(ChannelGainFromCode(code), DecimalText(2L * code - 120, 1));
    }
}

TEST(ChannelGain, KnownCodesReadAsAPersonExpects) {
    ExpectDecimal(ChannelGainFromCode(0), "-12");
    ExpectDecimal(ChannelGainFromCode(41), "-3.8");
    ExpectDecimal(ChannelGainFromCode(60), "0");
    ExpectDecimal(ChannelGainFromCode(61), "0.2");
    ExpectDecimal(ChannelGainFromCode(120), "12");
}

TEST(PeqGain, EveryCodeOfAByteIsAFifthOfADecibel) {
    for (int code = 0; code <= 255; ++code) {
        ExpectDecimal(PeqGainFromCode(code), DecimalText(2L * code - 150, 1));
    }
    ExpectDecimal(PeqGainFromCode(68), "-1.4");
    ExpectDecimal(PeqGainFromCode(75), "0");
    ExpectDecimal(PeqGainFromCode(138), "12.6");
}

TEST(ToneGain, EveryCodeIsHalfADecibel) {
    for (int code = 0; code <= 255; ++code) {
        ExpectDecimal(ToneGainFromCode(code), DecimalText(5L * code - 120, 1));
    }
    ExpectDecimal(ToneGainFromCode(24), "0");
    ExpectDecimal(ToneGainFromCode(36), "6");
}

TEST(Bandwidth, EveryCodeIsATwentiethOfAnOctave) {
    for (int code = 0; code <= 255; ++code) {
        ExpectDecimal(BandwidthFromCode(code), DecimalText(5L * code + 5, 2));
    }
    ExpectDecimal(BandwidthFromCode(2), "0.15");
    ExpectDecimal(BandwidthFromCode(8), "0.45");
    ExpectDecimal(BandwidthFromCode(59), "3");
}

TEST(LimiterThreshold, EveryCodeIsHalfADecibel) {
    for (int code = 0; code <= 255; ++code) {
        ExpectDecimal(LimiterThresholdFromCode(code), DecimalText(5L * code - 100, 1));
    }
    ExpectDecimal(LimiterThresholdFromCode(0), "-10");
    ExpectDecimal(LimiterThresholdFromCode(58), "19");
    ExpectDecimal(LimiterThresholdFromCode(60), "20");
}

TEST(Delay, EveryPositionReadsInMillisecondsAndMetres) {
    for (int coarse = 0; coarse <= 2500; ++coarse) {
        for (int fine = 0; fine <= 47; ++fine) {
            const long microseconds = 1000L * coarse + 21L * fine;
            const std::string ms = DecimalText(microseconds, 3);
            const std::string metres = DecimalText(34L * microseconds, 5);
            ASSERT_EQ(NumberText(DelayInMs(coarse, fine)), ms);
            ASSERT_EQ(DelayInMs(coarse, fine), std::strtod(ms.c_str(), nullptr));
            ASSERT_EQ(NumberText(DelayInMetres(coarse, fine)), metres);
            ASSERT_EQ(DelayInMetres(coarse, fine), std::strtod(metres.c_str(), nullptr));
        }
    }
}

TEST(Delay, KnownPositionsReadAsAPersonExpects) {
    ExpectDecimal(DelayInMs(0, 1), "0.021");
    ExpectDecimal(DelayInMs(2500, 47), "2500.987");
    ExpectDecimal(DelayInMetres(0, 1), "0.00714");
    ExpectDecimal(DelayInMetres(10, 0), "3.4");
    ExpectDecimal(DelayInMetres(2500, 47), "850.33558");
}

TEST(Delay, BytesBeyondTheRangeStillReadAsDecimals) {
    ExpectDecimal(DelayInMs(65535, 255), "65540.355");
    ExpectDecimal(DelayInMetres(65535, 255), "22283.7207");
    ExpectDecimal(DelayInMs(-3, -2), "-3.042");
}

TEST(FrequencyCode, GivesTheTableAndRefusesWhatLiesBeyond) {
    EXPECT_EQ(FrequencyFromCode(0), 20.0);
    EXPECT_EQ(FrequencyFromCode(68), 1000.0);
    EXPECT_EQ(FrequencyFromCode(120), 20000.0);
    EXPECT_THROW(FrequencyFromCode(121), RuntimeError);
    EXPECT_THROW(FrequencyFromCode(255), RuntimeError);
    EXPECT_THROW(FrequencyFromCode(-1), RuntimeError);
}

TEST(NearestFrequency, AnEntrySnapsToItself) {
    for (int code = 0; code <= 120; ++code) {
        const double hz = FrequencyTable[static_cast<std::size_t>(code)];
        EXPECT_EQ(NearestFrequencyCode(hz), code);
        EXPECT_EQ(SnapToFrequencyTable(hz), hz);
    }
}

TEST(NearestFrequency, MidwayBetweenTwoEntriesIsTheLower) {
    for (int code = 0; code < 120; ++code) {
        const double low = FrequencyTable[At(code)];
        const double high = FrequencyTable[At(code + 1)];
        const double middle = (low + high) / 2.0;
        EXPECT_EQ(NearestFrequencyCode(middle), code);
        EXPECT_EQ(NearestFrequencyCode(std::nextafter(middle, 1e9)), code + 1);
        EXPECT_EQ(NearestFrequencyCode(std::nextafter(middle, 0.0)), code);
        EXPECT_EQ(SnapToFrequencyTable(middle), low);
        EXPECT_EQ(SnapToFrequencyTable(std::nextafter(middle, 1e9)), high);
    }
}

TEST(NearestFrequency, AgreesWithLookingAtEveryEntry) {
    for (int quarter = -100; quarter <= 4 * 20100; ++quarter) {
        const double hz = quarter / 4.0;
        const int code = NearestByBruteForce(hz);
        ASSERT_EQ(NearestFrequencyCode(hz), code) << hz;
        ASSERT_EQ(SnapToFrequencyTable(hz), FrequencyTable[static_cast<std::size_t>(code)]) << hz;
    }
}

TEST(NearestFrequency, AboveTheTableFallsToItsBottom) {
    for (const double hz :
         {std::nextafter(20000.0, 1e9), 20000.5, 20001.0, 1e9, std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(SnapToFrequencyTable(hz), 20.0) << hz;
        EXPECT_EQ(NearestFrequencyCode(hz), 0) << hz;
    }
}

TEST(NearestFrequency, BelowTheTableIsItsBottom) {
    for (const double hz : {19.999, 1.0, 0.0, -5.0, -1e300, -std::numeric_limits<double>::infinity()}) {
        EXPECT_EQ(SnapToFrequencyTable(hz), 20.0) << hz;
        EXPECT_EQ(NearestFrequencyCode(hz), 0) << hz;
    }
    EXPECT_EQ(NearestFrequencyCode(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(NearestFrequency, ATyped1010ComesOutAs1000) {
    EXPECT_EQ(SnapToFrequencyTable(1010.0), 1000.0);
    EXPECT_EQ(NearestFrequencyCode(1010.0), 68);
}

TEST(BandwidthCode, GivesBackEveryCode) {
    for (int code = 0; code <= 59; ++code) {
        EXPECT_EQ(BandwidthCode(BandwidthFromCode(code)), code);
        EXPECT_EQ(BandwidthCode(BandwidthFromCode(code) + 0.02), code);
        EXPECT_EQ(BandwidthCode(BandwidthFromCode(code) - 0.02), code);
    }
}

TEST(BandwidthCode, TakesEveryHalfToTheEvenNeighbour) {
    for (int lower = 0; lower < 59; ++lower) {
        // Code n is 50 n + 50 thousandths of an octave, so the half above it lies at 50 n + 75.
        const int thousandths = 50 * lower + 75;
        const std::string digits = std::to_string(1000 + thousandths % 1000);
        const double half = ParseNumber(std::to_string(thousandths / 1000) + '.' + digits.substr(1));
        SCOPED_TRACE(half);
        EXPECT_EQ(BandwidthCode(half), lower % 2 == 0 ? lower : lower + 1);
        EXPECT_EQ(BandwidthCode(std::nextafter(half, 0.0)), lower);
        EXPECT_EQ(BandwidthCode(std::nextafter(half, 4.0)), lower + 1);
    }
    EXPECT_EQ(BandwidthCode(0.125), 2);
    EXPECT_EQ(BandwidthCode(0.175), 2);
    EXPECT_EQ(BandwidthCode(0.225), 4);
}

TEST(BandwidthCode, IsHeldToItsRange) {
    EXPECT_EQ(BandwidthCode(0.01), 0);
    EXPECT_EQ(BandwidthCode(10.0), 59);
    EXPECT_EQ(BandwidthCode(-1e300), 0);
    EXPECT_EQ(BandwidthCode(1e300), 59);
    EXPECT_EQ(BandwidthCode(std::numeric_limits<double>::quiet_NaN()), 0);
}

TEST(RoundHalfEven, TakesAHalfToTheEvenNeighbour) {
    EXPECT_EQ(RoundHalfEven(0.5), 0.0);
    EXPECT_EQ(RoundHalfEven(1.5), 2.0);
    EXPECT_EQ(RoundHalfEven(2.5), 2.0);
    EXPECT_EQ(RoundHalfEven(-0.5), 0.0);
    EXPECT_EQ(RoundHalfEven(-1.5), -2.0);
    EXPECT_EQ(RoundHalfEven(-2.5), -2.0);
    EXPECT_EQ(RoundHalfEven(2.5000001), 3.0);
    EXPECT_EQ(RoundHalfEven(0.49999999999999994), 0.0);
    EXPECT_EQ(RoundHalfEven(1e300), 1e300);
}

TEST(ToDecimal, LeavesNoTraceOfASubtraction) {
    EXPECT_EQ(ToDecimal(12.2 - 12.0, 1), 0.2);
    EXPECT_EQ(ToDecimal(13.6 - 15.0, 1), -1.4);
    EXPECT_EQ(ToDecimal(0.1 + 0.2, 1), 0.3);
    EXPECT_EQ(ToDecimal(1234.0, 0), 1234.0);
    EXPECT_THROW(ToDecimal(1.0, 10), RuntimeError);
}

TEST(ToByte, RoundsAndRefusesWhatIsNoByte) {
    EXPECT_EQ(ToByte(0.0), 0);
    EXPECT_EQ(ToByte(254.5), 254);
    EXPECT_EQ(ToByte(255.0), 255);
    for (const double value : {-1.0, 256.0, 255.6, 1e300, std::numeric_limits<double>::quiet_NaN()}) {
        try {
            ToByte(value);
            ADD_FAILURE() << value;
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::Overflow);
            EXPECT_STREQ(error.what(), "A value does not fit into a byte.");
        }
    }
}

TEST(DecodeBit, TellsEveryBitOfEveryByte) {
    for (int byte = 0; byte <= 255; ++byte) {
        int rest = byte;
        for (int bit = 0; bit < 8; ++bit) {
            EXPECT_EQ(DecodeBit(static_cast<std::uint8_t>(byte), bit), rest % 2);
            rest /= 2;
        }
    }
    EXPECT_THROW(DecodeBit(1, 8), RuntimeError);
    EXPECT_THROW(DecodeBit(1, -1), RuntimeError);
}

TEST(SplitBytes, PutsADelayPositionIntoTheThirdAndFourthByte) {
    for (int position = 0; position <= DelayCoarseTop; ++position) {
        SplitBuffer buffer;
        buffer.SplitBytes(position, 0);
        EXPECT_EQ(buffer.Bytes[0], 0);
        EXPECT_EQ(buffer.Bytes[1], 0);
        EXPECT_EQ(buffer.Bytes[2], position / 256);
        EXPECT_EQ(buffer.Bytes[3], position % 256);
    }
}

TEST(SplitBytes, WritesTheHighByteFirstAndNothingAround) {
    SplitBuffer buffer;
    buffer.Bytes.fill(0xEE);
    buffer.SplitBytes(0x12345678, 5);
    const std::array<std::uint8_t, 6> expected{0xEE, 0x12, 0x34, 0x56, 0x78, 0xEE};
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(buffer.Bytes[4 + i], expected[i]) << i;
    }
}

TEST(SplitBytes, RoundsHalfToEvenAndKeepsTheLowestFourBytes) {
    const auto split = [](double value) {
        SplitBuffer buffer;
        buffer.SplitBytes(value, 27);
        return std::vector<int>(buffer.Bytes.begin() + 27, buffer.Bytes.end());
    };
    EXPECT_EQ(split(2.5), (std::vector<int>{0, 0, 0, 2}));
    EXPECT_EQ(split(3.5), (std::vector<int>{0, 0, 0, 4}));
    EXPECT_EQ(split(255.5), (std::vector<int>{0, 0, 1, 0}));
    EXPECT_EQ(split(4294967295.0), (std::vector<int>{255, 255, 255, 255}));
    EXPECT_EQ(split(4294967296.0 + 7.0), (std::vector<int>{0, 0, 0, 7}));
    EXPECT_EQ(split(-1.0), (std::vector<int>{255, 255, 255, 255}));
    EXPECT_EQ(split(-256.0), (std::vector<int>{255, 255, 255, 0}));
}

TEST(SplitBytes, RefusesAPlaceOutsideTheBufferAndWhatIsNoNumber) {
    SplitBuffer buffer;
    const auto refused = [&buffer](double value, int start) -> std::string {
        try {
            buffer.SplitBytes(value, start);
        } catch (const RuntimeError& error) {
            return error.what();
        }
        return {};
    };
    EXPECT_EQ(refused(1.0, 28), "A number does not fit into the buffer at this place.");
    EXPECT_EQ(refused(1.0, -1), "A number does not fit into the buffer at this place.");
    EXPECT_EQ(refused(std::numeric_limits<double>::infinity(), 0), "A number that is not finite has no bytes.");
    EXPECT_EQ(buffer.Bytes, SplitBuffer{}.Bytes);
}

TEST(Log10, IsTheLogarithmToBaseTen) {
    EXPECT_DOUBLE_EQ(Log10(1000.0), 3.0);
    EXPECT_EQ(Log10(1.0), 0.0);
    EXPECT_DOUBLE_EQ(Log10(20.0), 1.3010299956639812);
}

} // namespace
} // namespace nrv::model
