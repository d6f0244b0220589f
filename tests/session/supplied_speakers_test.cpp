#include "session/config_files.h"

#include <filesystem>
#include <gtest/gtest.h>

namespace nrv::session {
namespace {

TEST(SuppliedSpeakers, AreAllIdsInTheirRecordsAndEightOfThemInTheDemoList) {
    const std::filesystem::path file = NRV718_SPEAKERS_CFG;
    ASSERT_EQ(std::filesystem::file_size(file), 4224U);
    const auto records = ReadSpeakerRecords(file.parent_path());
    int flagged = 0;
    for (std::size_t i = 0; i < records.size(); ++i) {
        EXPECT_EQ(records[i].DeviceId(), static_cast<int>(i));
        for (std::size_t word = 1; word < 10; ++word) {
            EXPECT_EQ(records[i].Words[word], 0);
        }
        flagged += records[i].Found() ? 1 : 0;
    }
    EXPECT_EQ(flagged, 8);
}

} // namespace
} // namespace nrv::session
