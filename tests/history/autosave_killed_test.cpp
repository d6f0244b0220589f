#include "history/autosave.h"
#include "support/test_folder.h"

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <sys/wait.h>
#include <unistd.h>

namespace nrv::testing {
namespace {

using history::AutosaveFile;

/// Killed anywhere, every copy that is there is a whole one, and the newest is not older than the last but one written.
TEST(AutosaveUnderFire, EveryCopyIsWholeWheneverTheProcessIsKilled) {
    TestFolder folder;
    const auto stores = std::make_unique<model::DeviceStores>();
    controls::Timer clock;
    history::Autosave autosave({*stores, folder.Path(), clock, [](const std::string&) {}});
    autosave.Write(5); // a child may be killed before its first one
    std::mt19937 random(5);
    for (int round = 0; round < 60; ++round) {
        const pid_t child = fork();
        if (child == 0) {
            for (unsigned n = 0;; ++n) {
                stores->PresetImage[5].PresetBody.fill(static_cast<std::uint8_t>(n));
                stores->PresetImage[5].SystemPage.fill(static_cast<std::uint8_t>(n));
                stores->PresetImage[5].ViewState.fill(static_cast<std::uint8_t>(n));
                autosave.Write(5);
            }
        }
        usleep(static_cast<useconds_t>(2000 + random() % 8000));
        kill(child, SIGKILL);
        waitpid(child, nullptr, 0);
        int whole = 0;
        for (int copy = 0; copy <= 9; ++copy) {
            const auto file = AutosaveFile(folder.Path(), 5, copy);
            if (!std::filesystem::exists(file)) {
                continue;
            }
            std::ifstream in(file, std::ios::binary);
            const std::string bytes((std::istreambuf_iterator<char>(in)), {});
            ASSERT_EQ(bytes.size(), 771U) << file;
            ASSERT_EQ(bytes.find_first_not_of(bytes.front()), std::string::npos) << file;
            ++whole;
        }
        EXPECT_GE(whole, 1);
    }
}

} // namespace
} // namespace nrv::testing
