#pragma once

#include "fuzz/input.h"
#include "fuzz/watch.h"

#include <functional>
#include <memory>
#include <string>

namespace nrv::testing {
class FaultWorld;
}

namespace nrv::fuzz {

/// What the line does to the frame of a number, counted from the moment this is set.
struct Trouble {
    enum class Kind {
        None,
        Silent,      ///< no answer from there on
        GoneBefore,  ///< the port is away when the frame is to go out
        GoneWaiting, ///< the port goes away while the answer is waited for
        Other,       ///< 13 bytes of another device come first
        Late,        ///< the answer comes after some ticks
        Short,       ///< bytes of the answer are missing
        Long,        ///< bytes follow the answer
    };
    static constexpr int Kinds = 8;
    Kind Of = Kind::None;
    int At = 0;
    int Size = 0; ///< ticks or bytes
};

/// The program with four devices listed, 2, 5, 7 and 9, and the windows of 9 and 5 open in slots 0 and 1, made once for
/// all runs.
class Desk {
  public:
    static constexpr int BackSlot = 0;
    static constexpr int FrontSlot = 1;
    static constexpr int FrontDevice = 5;

    Desk();
    ~Desk();

    /// As it was when it was made.
    void Reset();

    testing::TestProgram& World();
    program::Program& Program() { return World().Program; }
    controls::FrmCtrl& Window(int slot) { return *Program().Windows.ControlWindows[At(slot)]; }
    bool Ended() { return World().Process.Ended; }
    Watch& Eyes() { return *watch_; }

    void Meet(const Trouble& trouble);
    /// Questions of the next event are answered by these bits, Yes for 0, and Yes when they are used up.
    void AnswerBoxes(std::uint8_t bits);
    /// An event, and not when the program has ended.
    bool Run(const controls::EventSource& source, const std::function<void()>& event);
    bool InWindow(int slot, const std::function<void()>& event) { return Run(testing::UserIn(slot), event); }
    bool InDialog(const std::function<void()>& event) { return Run(testing::UserInDialog(), event); }
    /// A tool button of a window; the script is what the user does while its dialog stands.
    bool UseTool(int slot, controls::ToolButton tool, std::function<void()> in_dialog = {});

    /// A key as a text box of the toolkit takes it in. False when it was refused.
    bool Key(const controls::EventSource& source, controls::TextBox& box, char key);
    /// A text as it is pasted: as far as the first refused character or line's end.
    void Paste(const controls::EventSource& source, controls::TextBox& box, const std::string& text);

  private:
    struct Snapshot;
    testing::Bytes Answer(const testing::Frame& frame);
    void Poll();
    bool CodesFit();
    void ResetStores();
    void RenewWindows();

    std::unique_ptr<testing::FaultWorld> world_;
    std::unique_ptr<Watch> watch_;
    std::unique_ptr<Snapshot> before_;
    Trouble trouble_;
    int frames_ = 0; ///< since the trouble was set
    long late_at_ = 0;
    testing::Bytes late_;
};

} // namespace nrv::fuzz
