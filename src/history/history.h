#pragma once

#include "controls/forms.h"
#include "controls/windows.h"
#include "history/changes.h"
#include "presets/parameter_places.h"

#include <array>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace nrv::history {

/// The steps that the user went in each control window, taken back and gone again. A step is what one gesture changed:
/// a click, a key that was entered, a drag from press to release, a run of one key, a whole operation. What a window
/// does that its device does not hear, such as a curve laid over another, is none; storing, saving, locking and
/// passwords are none either.
class History {
  public:
    static constexpr std::size_t Deepest = 200; ///< steps of a window that can be taken back

    struct Parts {
        model::CommandContext Commands;
        response::Response& Curves;
        controls::MDIFrmMain& Main;                                ///< holds the menu and shows the wait cursor
        std::function<void(const std::string&)> Tell;              ///< the status line
        std::function<void(int device)> Changed;                   ///< an image is another one now
        std::function<void(int device)> Keep;                      ///< an image is about to give way
        std::function<void(int device, std::size_t count)> Edited; ///< so many settings differ from what is kept
    };
    explicit History(Parts parts);
    History(const History&) = delete;
    History& operator=(const History&) = delete;

    /// A number that stays the same for as long as the user is at one gesture; empty where every operation is one.
    std::function<long()> Gesture;

    void OperationBegins();
    void OperationEnds();
    /// The current window was filled from what its device holds.
    void WindowOpened();
    void WindowGone(int slot);
    /// What plays is the user's own again; a store, a save or a closing is never to take the other.
    void EndComparison();
    /// Brings the menu into line with the current window.
    void ShowMenu();

    // Each is a whole operation on the current window, and does nothing where its menu entry is disabled.
    void Undo();
    void Redo();
    /// Plays the settings as they were last loaded, read or opened, or goes back to those of now.
    void Compare();
    /// Goes back to them for good, as a step of its own.
    void Revert();

    bool Comparing() const { return Current().Compared.has_value(); }
    std::size_t Depth(int slot) const { return windows_[At(slot)].Done.size(); }
    /// What the steps of a window take, in bytes.
    std::size_t Size(int slot) const;

  private:
    struct Step {
        std::string Words;
        Changes What;
        std::vector<presets::Parameter> Parameters;
        long Gesture;
        bool Whole = true; ///< false of an operation that broke off, which is not gone again
    };
    struct OfWindow {
        std::vector<Step> Done;
        std::vector<Step> Undone;
        Snapshot Preset;                 ///< as last loaded, read or opened
        model::PresetImageRow Kept;      ///< as last loaded, read, opened, stored or saved
        std::optional<Changes> Compared; ///< from the user's settings to the preset's, while those play
    };

    OfWindow& Current() { return windows_[At(parts_.Commands.Windows.CurrentWindow)]; }
    const OfWindow& Current() const { return windows_[At(parts_.Commands.Windows.CurrentWindow)]; }
    bool Rests() const;
    void Record(const Snapshot& before, const Snapshot& now);
    bool GoesOn(const Step& step, const std::vector<presets::Parameter>& parameters, long gesture);
    void Push(Step step);
    Step StepOf(const Snapshot& before, const Snapshot& after, const std::string& title, long gesture) const;
    /// False when a frame failed and the window is gone.
    bool Play(const std::string& name, const Snapshot& from, const Snapshot& to);
    enum class Way { Back, Forward };
    std::optional<Step> Go(std::vector<Step> OfWindow::*steps, Way way);
    std::optional<Snapshot> OtherSettings(const Snapshot& now) const;
    void KeepComparison();
    void TellEdits(const model::PresetImageRow& now);

    Parts parts_;
    std::array<OfWindow, controls::SlotCount> windows_;
    struct Begun {
        int Slot;
        Snapshot Before;
    };
    std::optional<Begun> begun_;
    bool own_ = false; ///< the running operation is the history's own
    long gestures_ = 0;
};

} // namespace nrv::history
