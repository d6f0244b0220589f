#pragma once

#include "ports/record_file.h"
#include "ports/runtime_error.h"
#include "support/test_folder.h"

#include <cstdint>
#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace nrv::testing {

using Bytes = std::vector<std::uint8_t>;

/// A record's file in a folder of its own.
class RecordFile : public ::testing::Test {
  protected:
    std::filesystem::path File() const { return folder.Path() / "init.cfg"; }
    void ExpectRefused(const std::function<void()>& job, const std::string& text) {
        try {
            job();
            FAIL() << "not refused";
        } catch (const RuntimeError& error) {
            EXPECT_EQ(error.Kind(), ErrorKind::FileAccess);
            EXPECT_EQ(std::string(error.what()), text);
        }
    }

    TestFolder folder;
};

} // namespace nrv::testing
