#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace nrv {

/// All that one event of a user or one tick of a timer sets going, boxes, questions and dialogs included. One runs at a
/// time; it belongs to the window and device that it began with, and reports one final failure at most.
class Operation {
  public:
    static constexpr int NoSlot = -1;
    /// What the operation is about: the slot of a control window, NoSlot for none, and a device.
    struct Subject {
        int Slot = NoSlot;
        int Device = 0;
    };
    /// What waits for the user in an event loop of its own.
    enum class Loop { Dialog, Box };
    /// What the outer layer does as an operation goes its way; every hook may be empty.
    struct Hooks {
        std::function<void()> Began;      ///< an operation or a part of one
        std::function<void()> LoopBegins; ///< a box or dialog is about to show
        std::function<void()> LoopEnds;   ///< it is closed, and the work goes on
        std::function<void()> Ending;     ///< the last thing that happens in an operation or a part
        std::function<void()> Over;       ///< nothing of it is on the stack but the widget that began it
    };
    Hooks Watch;

    bool Running() const { return subject_.has_value(); }
    /// Its code runs now; false while it waits for the user in a dialog of its own.
    bool Busy() const { return busy_; }
    /// It waits for the user in a dialog, with no box or question over it.
    bool DialogStands() const { return dialogs_ > 0 && boxes_ == 0 && !busy_; }
    bool BoxStands() const { return boxes_ > 0; }

    void Begin(const Subject& subject);
    void End();
    /// A part of it that a dialog's control or a meter's tick runs.
    void BeginPart();
    void EndPart();

    /// Nothing outside an operation.
    const std::optional<Subject>& Of() const { return subject_; }
    /// From here on it is about this; without effect when none runs.
    void BelongTo(const Subject& subject);

    /// What it is called in the status line, such as "the copy", and how many frames it is made of.
    static constexpr int Uncounted = 0; ///< that shows only as they go
    static constexpr int Untold = 1;    ///< nobody would ask
    void Call(std::string name, int frames = Uncounted);
    const std::string& Name() const { return name_; }
    /// What the user would call it, such as: load of "Hall.n91". Empty where its changes say enough.
    void Title(std::string title) { title_ = std::move(title); }
    const std::string& Title() const { return title_; }
    /// What it means for the settings as a whole.
    enum class Leaves {
        Edits,  ///< nothing more than what it changed
        Pieces, ///< less than it was to change: it broke off
        Preset, ///< they come from a preset now, or from the device
        Copy,   ///< they are kept somewhere now
    };
    void Leave(Leaves what) { leaves_ = what; }
    Leaves WhatItLeaves() const { return leaves_; }
    /// How far it is in words, such as "byte 3 of 16"; empty when nobody would ask.
    void At(std::string progress) { progress_ = std::move(progress); }
    const std::string& Progress() const { return progress_; }
    void CountAnswered() { ++answered_; }
    void CountUnsent(int frames) { unsent_ += frames; }
    int Answered() const { return answered_; }
    int Frames() const { return frames_ > 0 ? frames_ : answered_ + unsent_; }

    /// A frame failed for good. Why, as the start of a sentence: "ID:5 does not answer".
    void Fail(std::string reason) { reason_ = std::move(reason); }
    const std::string& Reason() const { return reason_; }
    /// The user was told: from here on it sends nothing and shows no further box. Outside an operation there is nothing
    /// that would have to stop.
    void Report() { reported_ = Running(); }
    bool Reported() const { return reported_; }

    /// Holds for as long as a box or a dialog stands.
    class Standing {
      public:
        Standing(Operation& operation, Loop loop);
        ~Standing();
        Standing(const Standing&) = delete;
        Standing& operator=(const Standing&) = delete;

      private:
        Operation& operation_;
        Loop loop_;
        bool was_busy_;
    };

  private:
    static void Run(const std::function<void()>& hook) {
        if (hook) {
            hook();
        }
    }

    std::optional<Subject> subject_;
    bool busy_ = false;
    int dialogs_ = 0;
    int boxes_ = 0;
    bool reported_ = false;
    std::string reason_;
    std::string name_;
    std::string progress_;
    std::string title_;
    Leaves leaves_ = Leaves::Edits;
    int frames_ = 0;
    int answered_ = 0;
    int unsent_ = 0;
};

} // namespace nrv
