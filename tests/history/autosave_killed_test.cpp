#include "history/autosave.h"
#include "support/test_folder.h"

#include <csignal>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <random>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

namespace nrv::testing {
namespace {

using history::AutosaveFile;

/// Killed anywhere, every copy that is there is a whole one, and the newest is the last one written or the one begun.
TEST(AutosaveUnderFire, EveryCopyIsWholeWheneverTheProcessIsKilled) {
    // What the child has written so far, counted in memory that outlives it.
    auto* const written = static_cast<volatile unsigned*>(
        mmap(nullptr, sizeof(unsigned), PROT_READ | PROT_WRITE, MAP_SHARED | MAP_ANONYMOUS, -1, 0));
    ASSERT_NE(written, MAP_FAILED);
    TestFolder folder;
    const auto stores = std::make_unique<model::DeviceStores>();
    controls::Timer clock;
    history::Autosave autosave({*stores, folder.Path(), clock, [](const std::string&) {}});
    autosave.Write(5); // a child may be killed before its first one
    std::mt19937 random(5);
    int newest_seen = 0;
    for (int round = 0; round < 60; ++round) {
        *written = 0;
        const pid_t child = fork();
        if (child == 0) {
            for (unsigned n = 1;; ++n) {
                stores->PresetImage[5].PresetBody.fill(static_cast<std::uint8_t>(n));
                stores->PresetImage[5].SystemPage.fill(static_cast<std::uint8_t>(n));
                stores->PresetImage[5].ViewState.fill(static_cast<std::uint8_t>(n));
                autosave.Write(5);
                *written = n;
            }
        }
        // Every other one is let come to its first copy, however little of the processor it is given.
        for (int waits = 0; round % 2 == 1 && *written == 0 && waits < 5000; ++waits) {
            usleep(1000);
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
            if (++whole == 1 && *written > 0) {
                const auto newest = static_cast<std::uint8_t>(bytes.front());
                EXPECT_TRUE(newest == static_cast<std::uint8_t>(*written) ||
                            newest == static_cast<std::uint8_t>(*written + 1))
                    << int{newest} << " and not " << *written;
                ++newest_seen;
            }
        }
        EXPECT_GE(whole, 1);
    }
    EXPECT_GT(newest_seen, 0);
    munmap(const_cast<unsigned*>(written), sizeof(unsigned));
}

} // namespace
} // namespace nrv::testing
