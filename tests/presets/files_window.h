#pragma once

#include "presets/load_window.h"
#include "presets/preset_files.h"

#include <array>
#include <cstring>
#include <string>
#include <vector>

namespace nrv::testing {

/// Presets between the window of device 9 and files in a folder.
class PresetFilesTest : public LoadWindow {
  protected:
    using Image = std::array<std::uint8_t, 771>;
    static constexpr std::size_t OptionBits = 433 + 16;
    static constexpr std::size_t MuteBits = 433 + 18;
    static constexpr std::size_t SumButtons = 690 + 40;

    PresetFilesTest() {
        Choose("a.n91");
        const auto answer = world.Port.Answer;
        world.Port.Answer = [this, answer](const Frame& frame) {
            pointers.push_back(program.Main.Window.MousePointer());
            return answer(frame);
        };
    }
    void Choose(const std::string& name) { world.Files.File = world.Folder.Path() / name; }
    void Save() {
        program.Events.Run(UserIn(0), [this] { form.Command2[1].UserClick(); });
    }
    void Load() {
        program.Events.Run(UserIn(0), [this] { form.Command2[0].UserClick(); });
    }
    Image Bytes771() const {
        Image bytes{};
        std::memcpy(bytes.data(), &image, bytes.size());
        return bytes;
    }
    void Put(const Image& bytes) { std::memcpy(static_cast<void*>(&image), bytes.data(), bytes.size()); }
    static Bytes AsFile(const Image& bytes) { return {bytes.begin(), bytes.end()}; }
    /// Any image that a window can hold: any byte, but frequencies that the table has, one mute byte in both of its
    /// places and the same sum button on every output.
    Image RandomImage() {
        Image bytes{};
        for (std::uint8_t& byte : bytes) {
            byte = static_cast<std::uint8_t>(random() % 256);
        }
        const Body body = RandomBody(random);
        std::ranges::copy(body, bytes.begin());
        bytes[MuteBits] = bytes[71];
        std::fill_n(bytes.begin() + SumButtons, 6, static_cast<std::uint8_t>(random() % 3));
        return bytes;
    }
    void ExpectSame(const Image& bytes, const Image& expected) {
        for (std::size_t n = 0; n < bytes.size(); ++n) {
            ASSERT_EQ(bytes[n], expected[n]) << "byte " << n;
        }
    }
    std::string Status() const { return program.Main.StatusLine.Caption(); }
    void ExpectAtRest() const {
        EXPECT_EQ(program.Main.Window.MousePointer(), controls::Pointer::Default);
        EXPECT_FALSE(program.Windows.ControlEventsOff);
        EXPECT_FALSE(program.Link.TxSuppressed);
        EXPECT_FALSE(program.Link.CheckSuppressed);
        EXPECT_FALSE(program.Response.PlotSuspended);
    }
    /// Their list's own event sends a frame more.
    int SourcesThatDiffer(const Image& file) const {
        int count = 0;
        for (std::size_t output = 0; output < 6; ++output) {
            count += form.Combo3[output].Index() != file[185 + 48 * output] ? 1 : 0;
        }
        return count;
    }
    static std::string StoppedLoad(int after, int changed_sources) {
        return "ID:9 does not answer; the load stopped after " + std::to_string(after) + " of " +
               std::to_string(BulkLoadFrames + changed_sources) + " frames. Double-click its row to connect it again.";
    }
    void ExpectNothingDone(const Image& before, const std::string& title) {
        ExpectSame(Bytes771(), before);
        EXPECT_EQ(form.Window.Caption(), title);
        EXPECT_TRUE(world.Port.Sent.empty());
        ExpectAtRest();
    }
    /// A load of that name is told to find nothing, and does nothing but what comes before it looks.
    void ExpectFileNotFound(const std::string& name, const Image& before, const std::string& title) {
        Choose(name);
        world.Boxes.Shown.clear();
        Load();
        ASSERT_EQ(world.Boxes.Shown.size(), 1U);
        ExpectBox(world.Boxes.Shown[0], " Error", " File not found. Try again.", BoxIcon::Exclamation, BoxButtons::Ok);
        ExpectNothingDone(before, title);
        EXPECT_EQ(program.Stores.ParamValues[0].InputType, 0.0);
        EXPECT_EQ(Status(), "");
    }

    std::vector<controls::Pointer> pointers; ///< at each frame
};

} // namespace nrv::testing
