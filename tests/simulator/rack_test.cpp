#include "simulator/meters.h"
#include "simulator/rack.h"
#include "terminal.h"

#include <gtest/gtest.h>
#include <stdexcept>

namespace nrv::simulator {
namespace {

TEST(Rack, OnlyTheDeviceAddressedAnswers) {
    Rack rack;
    rack.Add(5);
    rack.Add(9);
    const auto reply = rack.Handle(Request(9, {}));
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ((*reply)[2], 9);
    EXPECT_FALSE(rack.Handle(Request(6, {})).has_value());
    EXPECT_FALSE(rack.Handle(Request(200, {})).has_value());
}

TEST(Rack, CommandsReachOneDeviceAlone) {
    Rack rack;
    rack.Add(5);
    rack.Add(9);
    rack.Handle(Request(9, {1, 3, 0, 0, 0, 0, 0, 0, 61}));
    EXPECT_EQ(rack.At(9).LiveImage()[232], 61);
    EXPECT_EQ(rack.At(5).LiveImage()[232], 60);
}

TEST(Rack, AnotherDeviceMayAnswerInItsPlace) {
    Rack rack;
    rack.Add(5);
    rack.Add(9).SetMemory(16, 77);
    const auto reply = rack.Handle(Request(5, {0x10, 0, 16}), 9);
    ASSERT_TRUE(reply.has_value());
    EXPECT_EQ((*reply)[2], 9);
    EXPECT_EQ((*reply)[8], 77);
}

TEST(Rack, MetersFollowTheInjectedClock) {
    milliseconds now(0);
    Rack rack(42, [&now] { return now; });
    rack.Add(5);
    for (int ms : {0, 1000, 2500}) {
        now = milliseconds(ms);
        const auto reply = rack.Handle(Request(5, {0x12}));
        ASSERT_TRUE(reply.has_value());
        Levels levels;
        std::copy_n(reply->begin() + 4, levels.size(), levels.begin());
        EXPECT_EQ(levels, MovingLevels(42, 5, milliseconds(ms)));
    }
}

TEST(Rack, HoldsEachIdOnce) {
    Rack rack;
    for (int id = 0; id <= 32; ++id) {
        rack.Add(id);
    }
    EXPECT_EQ(rack.Ids().size(), 33U);
    EXPECT_THROW(rack.Add(5), std::invalid_argument);
    EXPECT_THROW(rack.Add(33), std::invalid_argument);
    rack.Remove(5);
    EXPECT_EQ(rack.Find(5), nullptr);
    EXPECT_THROW(rack.At(5), std::out_of_range);
    EXPECT_FALSE(rack.Handle(Request(5, {})).has_value());
    EXPECT_EQ(rack.Add(5, "Back").Label(), "Back            ");
}

TEST(Rack, TwoDevicesOfOneIdObeyAndAnswerTogether) {
    Rack rack;
    rack.Add(5);
    EXPECT_THROW(rack.AddTwin(6, 0), std::out_of_range);
    Device& second = rack.AddTwin(5, 0);
    EXPECT_THROW(rack.AddTwin(5, 0), std::invalid_argument);
    EXPECT_EQ(rack.FindTwin(5), &second);
    EXPECT_EQ(rack.Handle(Request(5, {}))->at(4), 0xC3);
    rack.Handle(Request(5, {1, 3, 0, 0, 0, 0, 0, 0, 61}));
    EXPECT_EQ(second.LiveImage(), rack.At(5).LiveImage());
    rack.At(5).SetMemory(300, 0x33);
    second.SetMemory(300, 0x0F);
    EXPECT_EQ(rack.Handle(Request(5, {0x10, 1, 44}))->at(8), 0x03);
    rack.RemoveTwin(5);
    EXPECT_EQ(rack.Handle(Request(5, {0x10, 1, 44}))->at(8), 0x33);
    rack.AddTwin(5, 3);
    EXPECT_NE(rack.Handle(Request(5, {})), (Reply{0xF0, 0xC3, 5, 0, 0xC3, 0, 0, 0, 0, 0, 0, 0, 0xF7}));
    rack.Remove(5);
    EXPECT_EQ(rack.FindTwin(5), nullptr);
}

TEST(Rack, ADeviceThatRebootsIsSilentForAWhile) {
    milliseconds now{1000};
    Rack rack(718, [&now] { return now; });
    rack.Add(5);
    rack.Add(6);
    rack.Handle(Request(5, {1, 3, 0, 0, 0, 0, 0, 0, 61}));
    rack.Reboot(5, milliseconds(3000), true);
    EXPECT_TRUE(rack.Rebooting(5));
    EXPECT_EQ(rack.Handle(Request(5, {})), std::nullopt);
    EXPECT_NE(rack.Handle(Request(6, {})), std::nullopt);
    now = milliseconds(4000);
    EXPECT_FALSE(rack.Rebooting(5));
    EXPECT_NE(rack.Handle(Request(5, {})), std::nullopt);
    EXPECT_EQ(rack.At(5).LiveImage(), FactoryPreset());
    EXPECT_THROW(rack.Reboot(7, {}, true), std::out_of_range);
}

} // namespace
} // namespace nrv::simulator
