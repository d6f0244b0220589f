#include "session/discovery.h"
#include "session/program_fixture.h"

namespace nrv::testing {
namespace {

class DiscoveryTest : public ProgramTest {
  protected:
    DiscoveryTest() {
        program.Link.ComIndex = 1;
        program.Link.OpenPort();
        program.Link.ReopenPort(13);
    }
    /// Runs the search and keeps each text that the progress label was repainted with.
    bool Search() {
        program.Splash.Progress.SetVisible(false);
        program.Splash.Searching.SetVisible(false);
        program.Splash.Progress.Observe([this](controls::Aspect aspect) {
            if (aspect == controls::Aspect::Repaint) {
                EXPECT_TRUE(program.Splash.Progress.Visible());
                EXPECT_FALSE(program.Splash.Searching.Visible());
                texts.push_back(program.Splash.Progress.Caption());
                sent_before.push_back(world.Port.Sent.size());
            }
        });
        const bool found = program.Devices.SearchDevices();
        EXPECT_FALSE(program.Splash.Progress.Visible());
        return found;
    }
    std::vector<int> IdsProbed() const {
        std::vector<int> ids;
        for (const Frame& frame : world.Port.Sent) {
            EXPECT_EQ(frame, ProbeFrame(frame[2]));
            ids.push_back(frame[2]);
        }
        return ids;
    }
    void Configure(const std::vector<int>& ids) { std::ranges::copy(ids, program.State.ConfiguredIds.begin()); }

    std::vector<std::string> texts;
    std::vector<std::size_t> sent_before;
};

TEST_F(DiscoveryTest, ListOfTenIsProbedInItsOwnOrder) {
    program.State.ListOfTen = true;
    Configure({31, 2, 17, 4, 5, 6, 7, 8, 9, 1, 20, 21});
    line.Add(9, "a");
    line.Add(2, "b");
    line.Add(21, "not in the list");
    EXPECT_TRUE(Search());
    EXPECT_THAT(IdsProbed(), ::testing::ElementsAre(31, 2, 17, 4, 5, 6, 7, 8, 9, 1));
    EXPECT_EQ(program.State.FoundLast, 1);
    EXPECT_EQ(program.State.FoundDevices[0], 2);
    EXPECT_EQ(program.State.FoundDevices[1], 9);
    EXPECT_EQ(program.Main.StatusLine.Caption(),
              "No answer came from ID:31, ID:17, ID:4, ID:5, ID:6, ID:7, ID:8, ID:1.");
}

TEST_F(DiscoveryTest, AListOfWhichAllAnswerIsNotTalkedAbout) {
    program.State.ListOfTen = true;
    Configure({31, 2, 17, 4, 5, 6, 7, 8, 9, 1});
    for (const int id : {31, 2, 17, 4, 5, 6, 7, 8, 9, 1}) {
        line.Add(id, "a");
    }
    EXPECT_TRUE(Search());
    EXPECT_EQ(program.Main.StatusLine.Caption(), "");
}

TEST_F(DiscoveryTest, ANumberInTheListThatIsNoIdIsNotAskedFor) {
    program.State.ListOfTen = true;
    Configure({31, 40, -1, 33});
    line.Add(31, "a");
    Search();
    for (const int id : IdsProbed()) {
        EXPECT_TRUE(id == 31 || id == 0) << id;
    }
    EXPECT_EQ(program.State.FoundLast, 0);
}

TEST_F(DiscoveryTest, AListOfNumbersThatAreNoIdsFindsNothing) {
    program.State.ListOfTen = true;
    Configure({40, -1, 33, 34, 35, 36, 37, 38, 39, 99});
    EXPECT_FALSE(Search());
    EXPECT_THAT(IdsProbed(), ::testing::IsEmpty());
    EXPECT_EQ(program.Main.StatusLine.Caption(), "No answer came from any ID of the list.");
}

TEST_F(DiscoveryTest, ProgressOfTenGoesByNinths) {
    program.State.ListOfTen = true;
    Configure(Range(1, 20));
    Search();
    EXPECT_THAT(texts, ::testing::ElementsAre("0 %", "11.1 %", "22.2 %", "33.3 %", "44.4 %", "55.5 %", "66.6 %",
                                              "77.7 %", "88.8 %", "100 %"));
    EXPECT_THAT(sent_before, ::testing::ElementsAre(0, 1, 2, 3, 4, 5, 6, 7, 8, 9)); // each before its probe
}

TEST_F(DiscoveryTest, ProgressOfTwentyGoesByNineteenths) {
    program.State.ListOfTwenty = true;
    Configure(Range(1, 20));
    Search();
    EXPECT_THAT(texts, ::testing::ElementsAre("0 %", "5.2 %", "10.5 %", "15.7 %", "21 %", "26.3 %", "31.5 %", "36.8 %",
                                              "42.1 %", "47.3 %", "52.6 %", "57.8 %", "63.1 %", "68.4 %", "73.6 %",
                                              "78.9 %", "84.2 %", "89.4 %", "94.7 %", "100 %"));
    EXPECT_EQ(IdsProbed(), Range(1, 20));
}

TEST_F(DiscoveryTest, ScanOfAllProbesEveryIdWithZeroFirst) {
    line.Add(0, "zero");
    line.Add(32, "last");
    EXPECT_TRUE(Search());
    EXPECT_EQ(IdsProbed(), Range(0, 32));
    EXPECT_EQ(program.State.FoundLast, 1);
    EXPECT_EQ(program.State.FoundDevices[0], 0);
    EXPECT_EQ(program.State.FoundDevices[1], 32);
    EXPECT_EQ(program.Main.StatusLine.Caption(), ""); // of all IDs most are empty
    ASSERT_EQ(texts.size(), 33U);
    EXPECT_EQ(texts[0], "0 %");
    EXPECT_EQ(texts[1], "3.1 %");   // 31.25 tenths
    EXPECT_EQ(texts[2], "6.2 %");   // 62.5
    EXPECT_EQ(texts[3], "9.3 %");   // 93.75
    EXPECT_EQ(texts[8], "25 %");    // 250
    EXPECT_EQ(texts[31], "96.8 %"); // 968.75
    EXPECT_EQ(texts[32], "100 %");
}

TEST_F(DiscoveryTest, ListOfTenGoesBeforeListOfTwenty) {
    program.State.ListOfTen = program.State.ListOfTwenty = true;
    Configure(Range(1, 20));
    Search();
    EXPECT_EQ(IdsProbed(), Range(1, 10));
}

TEST_F(DiscoveryTest, RecordsTellFoundFromAbsent) {
    for (session::SpeakerRecord& record : program.State.SpeakerRecords) {
        record.SetDeviceId(99);
        record.SetFound(true);
    }
    program.State.DeviceUnconnected.fill(false);
    line.Add(6, "six");
    Search();
    for (std::size_t id = 0; id < 33; ++id) {
        EXPECT_EQ(program.State.SpeakerRecords[id].Words[10], id == 6 ? 1 : 0) << id;
        EXPECT_EQ(program.State.SpeakerRecords[id].Words[0], id == 6 ? 6 : 99) << id;
        EXPECT_TRUE(program.State.DeviceUnconnected[id]) << id;
    }
}

TEST_F(DiscoveryTest, NothingFoundIsFalseWithAnEmptyList) {
    program.State.FoundLast = 5;
    EXPECT_FALSE(Search());
    EXPECT_EQ(program.State.FoundLast, -1);
}

TEST_F(DiscoveryTest, AnswerThatIsNoProbesAnswerIsNoDevice) {
    world.Port.Answer = [](const Frame&) { return Bytes(13, 0); };
    EXPECT_FALSE(Search());
}

TEST_F(DiscoveryTest, AllThirtyThreeDevicesAreFound) {
    for (const int id : Range(0, 32)) {
        line.Add(id, "x");
    }
    EXPECT_TRUE(Search());
    EXPECT_EQ(program.State.FoundLast, 32);
    for (int id = 0; id <= 32; ++id) {
        EXPECT_EQ(session::FoundId(program.State, id), id);
    }
}

TEST_F(DiscoveryTest, PortThatWentAwayFindsNothing) {
    line.Add(3, "x");
    world.Port.Gone = true;
    EXPECT_FALSE(Search());
    EXPECT_TRUE(world.Boxes.Shown.empty());
}

} // namespace
} // namespace nrv::testing
