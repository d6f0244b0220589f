#include "simulator/device.h"
#include "terminal.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>
#include <stdexcept>

namespace nrv::simulator {
namespace {

using Changes = std::map<int, int>;

/// Sends one command to a fresh device and gives back which bytes of the live image changed, and to what. Every byte
/// starts at 0xEE, so that a value that happens to be the factory's shows as well.
Changes ChangesBy(std::initializer_list<int> payload) {
    Device device(5);
    PresetBody before;
    before.fill(0xEE);
    device.SetLiveImage(before);
    const auto reply = device.Handle(Request(5, payload), {});
    EXPECT_TRUE(reply.has_value());
    if (reply) {
        EXPECT_EQ(reply->size(), 13U);
        EXPECT_EQ((*reply)[0], 0xF0);
        EXPECT_EQ((*reply)[1], 0xC3);
        EXPECT_EQ((*reply)[2], 5);
        EXPECT_EQ((*reply)[3], *payload.begin());
        EXPECT_EQ(reply->back(), 0xF7);
    }
    Changes changes;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (device.LiveImage()[i] != before[i]) {
            changes[static_cast<int>(i)] = device.LiveImage()[i];
        }
    }
    return changes;
}

/// The bytes of an answer, -1 for none.
int AnswerByte(Device& device, std::initializer_list<int> payload, std::size_t index) {
    const auto reply = device.Handle(Request(device.Id(), payload), {});
    return reply ? (*reply)[index] : -1;
}

TEST(Device, GainGoesToTheSecondByteOfTheGainField) {
    for (int channel = 0; const int at : {1, 73, 184, 232, 280, 328, 376, 424}) {
        EXPECT_EQ(ChangesBy({1, channel, 0, 0, 0, 0, 0, 0, 61}), (Changes{{at, 61}}));
        ++channel;
    }
}

TEST(Device, DelayGoesHighLowFine) {
    for (int channel = 0; const int at : {2, 74, 175, 223, 271, 319, 367, 415}) {
        EXPECT_EQ(ChangesBy({2, channel, 0, 0, 0, 0, 9, 196, 47}), (Changes{{at, 9}, {at + 1, 196}, {at + 2, 47}}));
        ++channel;
    }
}

TEST(Device, PhaseGoesToThePhaseByte) {
    for (int channel = 0; const int at : {65, 137, 182, 230, 278, 326, 374, 422}) {
        EXPECT_EQ(ChangesBy({3, channel, 0, 0, 0, 0, 0, 0, 1}), (Changes{{at, 1}}));
        ++channel;
    }
}

TEST(Device, CrossoverGoesToTheSideNamed) {
    for (int side = 0; const int at : {144, 147, 192, 195, 240, 243, 288, 291, 336, 339, 384, 387}) {
        EXPECT_EQ(ChangesBy({4, side / 2 + 2, side % 2, 0, 0, 0, 0, 68, 9}), (Changes{{at + 1, 68}, {at + 2, 9}}));
        ++side;
    }
}

TEST(Device, PeqSectionGoesToItsBlock) {
    EXPECT_EQ(ChangesBy({5, 0, 0, 0, 0, 68, 19, 0, 80}), (Changes{{6, 68}, {7, 19}, {9, 80}}));
    EXPECT_EQ(ChangesBy({5, 0, 9, 0, 0, 68, 19, 0, 80}), (Changes{{51, 68}, {52, 19}, {54, 80}}));
    EXPECT_EQ(ChangesBy({5, 1, 3, 0, 0, 68, 19, 0, 80}), (Changes{{93, 68}, {94, 19}, {96, 80}}));
    EXPECT_EQ(ChangesBy({5, 2, 1, 0, 0, 68, 19, 0, 80}), (Changes{{156, 68}, {157, 19}, {159, 80}}));
    EXPECT_EQ(ChangesBy({5, 7, 3, 0, 0, 68, 19, 0, 80}), (Changes{{406, 68}, {407, 19}, {409, 80}}));
}

TEST(Device, ToneFilterGoesToItsBlock) {
    EXPECT_EQ(ChangesBy({6, 0, 0, 0, 0, 30, 2, 0, 20}), (Changes{{56, 30}, {57, 2}, {59, 20}}));
    EXPECT_EQ(ChangesBy({6, 0, 1, 0, 0, 30, 2, 0, 20}), (Changes{{61, 30}, {62, 2}, {64, 20}}));
    EXPECT_EQ(ChangesBy({6, 1, 0, 0, 0, 30, 2, 0, 20}), (Changes{{128, 30}, {129, 2}, {131, 20}}));
    EXPECT_EQ(ChangesBy({6, 1, 1, 0, 0, 30, 2, 0, 20}), (Changes{{133, 30}, {134, 2}, {136, 20}}));
    for (int output = 0; const int at : {170, 218, 266, 314, 362, 410}) {
        EXPECT_EQ(ChangesBy({6, output + 2, 0, 0, 0, 30, 4, 0, 20}),
                  (Changes{{at + 1, 30}, {at + 2, 4}, {at + 4, 20}}));
        ++output;
    }
}

TEST(Device, LimiterAndNoiseGateGoToAttackReleaseThreshold) {
    for (int channel = 0; const int at : {66, 138, 178, 226, 274, 322, 370, 418}) {
        EXPECT_EQ(ChangesBy({7, channel, 0, 0, 0, 29, 18, 0, 10}), (Changes{{at, 29}, {at + 1, 18}, {at + 3, 10}}));
        ++channel;
    }
}

TEST(Device, SourceGoesToTheSourceByteOfAnOutput) {
    for (int output = 0; const int at : {185, 233, 281, 329, 377, 425}) {
        EXPECT_EQ(ChangesBy({8, output + 2, 0, 0, 0, 0, 0, 0, 2}), (Changes{{at, 2}}));
        ++output;
    }
}

TEST(Device, MuteIsTheChannelsBitOfByteSeventyOne) {
    Device device(5);
    ASSERT_EQ(device.LiveImage()[71], 0x20); // the factory's name byte doubles as mutes
    AnswerByte(device, {9, 0, 0, 0, 0, 0, 0, 0, 1}, 3);
    EXPECT_EQ(device.LiveImage()[71], 0x21);
    AnswerByte(device, {9, 7, 0, 0, 0, 0, 0, 0, 1}, 3);
    EXPECT_EQ(device.LiveImage()[71], 0xA1);
    AnswerByte(device, {9, 5, 0, 0, 0, 0, 0, 0, 0}, 3);
    EXPECT_EQ(device.LiveImage()[71], 0x81);
    EXPECT_EQ(device.Memory(18), 0); // the remote control writes the mute bits in a frame of its own
}

TEST(Device, MasterGainGoesToTheLastByteOfInputB) {
    EXPECT_EQ(ChangesBy({0x0C, 0, 0, 0, 0, 0, 0, 0, 61}), (Changes{{143, 61}}));
}

TEST(Device, ChannelNameGoesToTheNameOfAnOutput) {
    for (int output = 0; const int at : {186, 234, 282, 330, 378, 426}) {
        EXPECT_EQ(ChangesBy({0x0E, output + 2, 0, 'a', 'b', 'c', 'd', 'e', 'f'}),
                  (Changes{{at, 'a'}, {at + 1, 'b'}, {at + 2, 'c'}, {at + 3, 'd'}, {at + 4, 'e'}, {at + 5, 'f'}}));
        ++output;
    }
}

TEST(Device, IndicesOutOfRangeAreAcknowledgedAndChangeNothing) {
    const Changes none;
    for (int command = 1; command <= 9; ++command) {
        EXPECT_EQ(ChangesBy({command, 8, 0, 1, 1, 1, 1, 1, 1}), none) << command;
    }
    EXPECT_EQ(ChangesBy({5, 0, 10, 0, 0, 1, 1, 0, 1}), none);
    EXPECT_EQ(ChangesBy({5, 2, 4, 0, 0, 1, 1, 0, 1}), none);
    EXPECT_EQ(ChangesBy({6, 0, 2, 0, 0, 1, 1, 0, 1}), none);
    EXPECT_EQ(ChangesBy({6, 2, 1, 0, 0, 1, 1, 0, 1}), none);
    EXPECT_EQ(ChangesBy({4, 1, 0, 0, 0, 0, 0, 1, 1}), none);
    EXPECT_EQ(ChangesBy({4, 2, 2, 0, 0, 0, 0, 1, 1}), none);
    EXPECT_EQ(ChangesBy({8, 1, 0, 0, 0, 0, 0, 0, 1}), none);
    EXPECT_EQ(ChangesBy({0x0E, 1, 0, 1, 1, 1, 1, 1, 1}), none);
    EXPECT_EQ(ChangesBy({0x0E, 255, 0, 1, 1, 1, 1, 1, 1}), none);
}

TEST(Device, InputTypeIsBitFourOfTheOptionBits) {
    Device device(5);
    AnswerByte(device, {0x0D, 0, 0, 0, 0, 0, 0, 0, 1}, 3);
    EXPECT_EQ(device.Memory(16), 48);
    AnswerByte(device, {0x0D, 0, 0, 0, 0, 0, 0, 0, 0}, 3);
    EXPECT_EQ(device.Memory(16), 32);
    EXPECT_EQ(ChangesBy({0x0D, 0, 0, 0, 0, 0, 0, 0, 1}), Changes{});
}

TEST(Device, BulkUpdateBeginsWithZeroAndEndsWithOne) {
    Device device(5);
    EXPECT_FALSE(device.BulkUpdating());
    EXPECT_EQ(AnswerByte(device, {0x0A}, 3), 0x0A);
    EXPECT_TRUE(device.BulkUpdating());
    EXPECT_EQ(AnswerByte(device, {0x0A, 1}, 3), 0x0A);
    EXPECT_FALSE(device.BulkUpdating());
}

TEST(Device, AnswersThePresenceQuestion) {
    Device device(5);
    EXPECT_EQ(device.Handle(Request(5, {}), {}), (Reply{0xF0, 0xC3, 5, 0, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    EXPECT_EQ(AnswerByte(device, {0, 0, 0, 0, 0, 0, 0, 0, 1}, 0), -1); // not all zeros: no question
}

TEST(Device, DoesNotAnswerNoticesAndUnknownCommands) {
    Device device(5);
    for (int command : {0x0F, 0x8F, 0x70, 0x7F, 0xFF}) {
        EXPECT_FALSE(device.Handle(Request(5, {command}), {}).has_value()) << command;
    }
}

TEST(Device, MemoryIsReadAndWrittenByteByByte) {
    Device device(5);
    EXPECT_EQ(AnswerByte(device, {0x10, 0, 16}, 8), 32);
    EXPECT_EQ(AnswerByte(device, {0x10, 0, 33}, 8), 'N');
    EXPECT_EQ(AnswerByte(device, {0x11, 0, 16, 0, 0, 160}, 3), 0x11);
    EXPECT_EQ(AnswerByte(device, {0x10, 0, 16}, 8), 160);
    // 640 + 432 * 2 + 5 = 1509 = 5 * 256 + 229
    AnswerByte(device, {0x11, 5, 229, 0, 0, 77}, 3);
    EXPECT_EQ(device.Preset(2)[5], 77);
    EXPECT_EQ(device.Memory(1509), 77);
}

TEST(Device, MemoryEndsWithTheLastPosition) {
    Device device(5);
    // The last byte is 640 + 9 * 432 - 1 = 4527 = 17 * 256 + 175.
    AnswerByte(device, {0x11, 17, 175, 0, 0, 1}, 3);
    AnswerByte(device, {0x11, 17, 176, 0, 0, 2}, 3);
    AnswerByte(device, {0x11, 255, 255, 0, 0, 3}, 3);
    EXPECT_EQ(AnswerByte(device, {0x10, 17, 175}, 8), 1);
    EXPECT_EQ(AnswerByte(device, {0x10, 17, 176}, 8), 0);
    EXPECT_EQ(AnswerByte(device, {0x10, 255, 255}, 8), 0);
}

TEST(Device, LevelsStandInBytesFourToEleven) {
    Device device(5);
    const Levels moving{0, 1, 2, 3, 4, 5, 6, 0};
    EXPECT_EQ(device.Handle(Request(5, {0x12}), moving), (Reply{0xF0, 0xC3, 5, 0x12, 0, 1, 2, 3, 4, 5, 6, 0, 0xF7}));
    device.SetLevels(Levels{6, 6, 6, 6, 7, 6, 6, 6});
    EXPECT_EQ(device.Handle(Request(5, {0x12}), moving), (Reply{0xF0, 0xC3, 5, 0x12, 6, 6, 6, 6, 7, 6, 6, 6, 0xF7}));
    device.SetLevels(std::nullopt);
    EXPECT_EQ(AnswerByte(device, {0x12}, 4), 0);
}

TEST(Device, PresetReadGivesLiveImageOrMemoryPosition) {
    Device device(5);
    PresetBody body;
    for (std::size_t i = 0; i < body.size(); ++i) {
        body[i] = static_cast<Byte>(i * 7);
    }
    device.PutPreset(8, "Ninth", body);
    const PresetBody factory = FactoryPreset();
    EXPECT_EQ(device.Handle(Request(5, {0x0B, 0xFF}), {}), Reply(factory.begin(), factory.end()));
    EXPECT_EQ(device.Handle(Request(5, {0x0B, 8}), {}), Reply(body.begin(), body.end()));
    EXPECT_EQ(device.Handle(Request(5, {0x0B, 0}), {}), Reply(432, 0));
    EXPECT_FALSE(device.Handle(Request(5, {0x0B, 9}), {}).has_value());
    EXPECT_EQ(device.LiveImage(), factory);
}

TEST(Device, PutPresetMarksNamesAndStores) {
    Device device(5);
    device.PutPreset(3, "Club", FactoryPreset());
    EXPECT_TRUE(device.PresetUsed(3));
    EXPECT_FALSE(device.PresetUsed(2));
    EXPECT_EQ(device.Memory(51), 0x55);
    EXPECT_EQ(device.PresetName(3), "Club            ");
    EXPECT_EQ(device.Memory(112), 'C');
    EXPECT_EQ(device.Memory(640 + 432 * 3 + 1), 60);
    EXPECT_THROW(device.PutPreset(9, "x", FactoryPreset()), std::invalid_argument);
    EXPECT_THROW(device.PutPreset(-1, "x", FactoryPreset()), std::invalid_argument);
}

TEST(Device, NinthPresetLeavesTheActiveNameAlone) {
    Device device(5);
    device.PutPreset(8, "Ninth", FactoryPreset());
    EXPECT_TRUE(device.PresetUsed(8));
    EXPECT_EQ(device.Memory(192), 'F');
}

TEST(Device, LabelPasswordAndLockLiveInMemory) {
    Device device(5, "A label that is far too long");
    EXPECT_EQ(device.Label(), "A label that is ");
    device.SetLabel("Bar");
    EXPECT_EQ(device.Label(), "Bar             ");
    EXPECT_EQ(device.Password(), "000000");
    device.SetPassword("abc");
    EXPECT_EQ(device.Password(), "abc   ");
    EXPECT_EQ(device.Memory(26), 'a');
    EXPECT_FALSE(device.Locked());
    device.SetLocked(true);
    EXPECT_EQ(device.Memory(16), 160);
    EXPECT_TRUE(device.Locked());
    device.SetLocked(false);
    EXPECT_EQ(device.Memory(16), 32);
}

TEST(Device, RefusesAnIdOutsideTheLine) {
    EXPECT_THROW(Device(33), std::invalid_argument);
    EXPECT_THROW(Device(-1), std::invalid_argument);
    EXPECT_EQ(Device(0).Id(), 0);
    EXPECT_EQ(Device(32).Id(), 32);
}

} // namespace
} // namespace nrv::simulator
