#pragma once

#include "presets/load_trace.h"
#include "session/program_fixture.h"

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace nrv::testing {

/// What goes wrong with one exchange, and with those after it where it lasts.
enum class Fault {
    None,
    Silent,         ///< the device says nothing from there on
    GoneBefore,     ///< the port is away when the frame is to go out
    GoneWaiting,    ///< the port goes away while the answer is waited for
    OtherAnswers,   ///< 13 bytes of another device come in place of the answer
    SixSecondsLate, ///< the answer takes that long
    AfterTheWait,   ///< the answer comes while the next transmission waits for its own
};

enum class Exchange { Ordinary, WithoutReply, Bulk, Probe, Check };

/// One exchange of an operation without faults.
struct Step {
    Frame Sent{};
    Exchange Kind = Exchange::Ordinary;
};

/// The exchange, counted from 0, that the fault meets.
struct Trial {
    Fault Kind = Fault::None;
    int At = 0;
};

/// How often the faulty exchange goes out, and whether the operation goes on after it.
struct Course {
    int Transmissions = 1;
    bool GoesThrough = true;
};
Course CourseOf(Exchange kind, Fault fault);

/// What another device answers; byte 8 is a character, byte 4 no answer to a probe.
inline const Bytes WrongAnswer{0xF0, 0xC3, 9, 0x12, 7, 1, 3, 5, 'B', 2, 4, 6, 0xF7};

struct ShownBox {
    std::string Title;
    std::string Text;
    bool operator==(const ShownBox&) const = default;
};
void PrintTo(const ShownBox& box, std::ostream* stream);

/// All that an operation leaves behind, as it is or as it should be.
struct Outcome {
    std::vector<Frame> Sent;
    std::vector<ShownBox> Boxes;
    std::array<bool, controls::SlotCount> Loaded{};
    std::array<bool, controls::SlotCount> InUse{};
    std::array<int, controls::SlotCount> SlotDevices{};
    int OpenWindowTop = 0;
    int CurrentWindow = 0;
    std::vector<std::string> Titles; ///< of the first three slots
    std::vector<std::string> Rows;
    std::array<bool, nrv::DeviceCount> Unconnected{};
    std::array<bool, nrv::DeviceCount> Checked{};
    std::array<bool, nrv::DeviceCount> Found{};
    std::array<int, nrv::DeviceCount> DeviceRow{};
    std::array<std::string, nrv::DeviceCount> Labels{};
    std::string Status;
    std::vector<int> Removed; ///< slots whose window was taken away
    bool Ended = false;
    bool LinkReady = true;
    bool TransactionDone = true;
    bool LoadingNotice = false;
    int InputLen = link::FrameLength;
    std::vector<std::string> NotAtRest; ///< flags, pointers and dialogs that were left as they are only in between
    std::shared_ptr<model::DeviceStores> Stores;
};

/// What differs between two sets of stores, in words; empty when every byte is the same.
std::string Differences(const model::DeviceStores& expected, const model::DeviceStores& actual);

/// The program with four devices listed and two windows open.
class FaultWorld final : public ProgramTest {
  public:
    static constexpr int FirstListed = 2; ///< in row 0; never opened
    static constexpr int Front = 5;
    static constexpr int Closed = 7;
    static constexpr int Behind = 9;
    static constexpr int BehindSlot = 0;
    static constexpr int FrontSlot = 1;
    static constexpr int NewSlot = 2;
    static constexpr int UsedPosition = 2;

    FaultWorld();

    using ProgramTest::DoubleClick;
    using ProgramTest::Forget;
    using ProgramTest::line;
    using ProgramTest::program;
    using ProgramTest::Window;
    using ProgramTest::world;

    /// What stands in the status line before the event.
    static constexpr const char* ToldBefore = "Told before.";

    void Meet(const Trial& trial, Exchange kind, int device);
    Outcome Look();

    model::PresetImageRow& Image(int id) { return program.Stores.PresetImage[static_cast<std::size_t>(id)]; }
    model::ParamRow& Values(int id) { return program.Stores.ParamValues[static_cast<std::size_t>(id)]; }
    /// A user's event in a window, in a dialog of the operation, or elsewhere.
    template <class Event>
    void InWindow(int slot, Event event) {
        EXPECT_TRUE(program.Events.Run(UserIn(slot), event));
    }
    template <class Event>
    void InDialog(Event event) {
        EXPECT_TRUE(program.Events.Run(UserInDialog(), event));
    }
    /// Clicks a tool button of the front window; the script is what the user does in the dialog.
    void InToolDialog(controls::ToolButton tool, std::function<void()> in_dialog);

  private:
    void TestBody() override {}
    Bytes AnswerFor(const Frame& frame, const Trial& trial, Exchange kind, int device);
};

/// A preset of which any part may stand anywhere in another and still be codes that every setting has.
Bytes ShiftablePreset(int seed);

inline Frame FrameTo(int id, const std::vector<int>& payload) {
    Frame frame{0xF0, 0xC3, static_cast<std::uint8_t>(id)};
    std::copy(payload.begin(), payload.end(), frame.begin() + 3);
    frame[12] = 0xF7;
    return frame;
}

} // namespace nrv::testing
