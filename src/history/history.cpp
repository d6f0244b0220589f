#include "history/history.h"

#include "controls/busy_pointer.h"
#include "ports/numbering.h"
#include "presets/parameter_words.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace nrv::history {
namespace {

using presets::Parameter;

constexpr const char* ToPreset = "revert to the last preset";
constexpr std::size_t LongestWords = 90; // of a menu entry
constexpr int MostAtOnce = 10;           // frames that nobody waits for
constexpr long NoGesture = -1;           // nothing goes on from it

/// Of a switch every turn is a step of its own.
bool IsSwitch(Parameter parameter) {
    using enum presets::ParameterKind;
    return parameter.Kind == Mute || parameter.Kind == Phase || parameter.Kind == InputType ||
           parameter.Kind == DelayUnit;
}

bool Same(const model::PresetImageRow& one, const model::PresetImageRow& other) {
    return std::memcmp(&one, &other, sizeof one) == 0;
}

} // namespace

History::History(Parts parts) : parts_(std::move(parts)) {
    parts_.Main.Undo.Clicked = [this] { Undo(); };
    parts_.Main.Redo.Clicked = [this] { Redo(); };
    parts_.Main.Compare.Clicked = [this] { Compare(); };
    parts_.Main.Revert.Clicked = [this] { Revert(); };
}

bool History::Rests() const {
    const controls::Windows& windows = parts_.Commands.Windows;
    return !windows.Loaded[At(windows.CurrentWindow)] || parts_.Commands.Values().LockFlag == 1.0;
}

void History::OperationBegins() {
    own_ = false;
    const controls::Windows& windows = parts_.Commands.Windows;
    if (windows.Loaded[At(windows.CurrentWindow)]) {
        begun_ = Begun{windows.CurrentWindow, Take(parts_.Commands, parts_.Curves)};
    }
}

void History::OperationEnds() {
    const controls::Windows& windows = parts_.Commands.Windows;
    const auto leaves = parts_.Commands.Link.Current.WhatItLeaves();
    const bool same_window = begun_ && begun_->Slot == windows.CurrentWindow && windows.Loaded[At(begun_->Slot)];
    const bool changed = same_window && !Same(begun_->Before.Image, parts_.Commands.Image());
    if (changed || (same_window && leaves != Operation::Leaves::Edits)) {
        const Snapshot now = Take(parts_.Commands, parts_.Curves);
        if (!own_) {
            Record(begun_->Before, now);
        }
        if (leaves == Operation::Leaves::Preset) {
            Current().Preset = now;
        }
        if (leaves == Operation::Leaves::Preset || leaves == Operation::Leaves::Copy) {
            Current().Kept = now.Image;
        }
        if (changed) {
            parts_.Changed(parts_.Commands.DeviceId());
        }
        TellEdits(now.Image);
    }
    begun_.reset();
    ShowMenu();
}

void History::WindowOpened() {
    Snapshot now = Take(parts_.Commands, parts_.Curves);
    OfWindow& window = Current();
    window.Kept = now.Image;
    window.Preset = std::move(now);
    begun_.reset(); // what the window showed before is another's
    TellEdits(window.Kept);
}

void History::WindowGone(int slot) {
    windows_[At(slot)] = {};
}

void History::Record(const Snapshot& before, const Snapshot& now) {
    const std::vector<Parameter> parameters = presets::Differing(before.Image, now.Image);
    if (parameters.empty()) {
        return;
    }
    KeepComparison();
    OfWindow& window = Current();
    const std::string& title = parts_.Commands.Link.Current.Title();
    const long gesture = Gesture ? Gesture() : ++gestures_;
    if (window.Done.empty() || !GoesOn(window.Done.back(), parameters, gesture) || !title.empty()) {
        Step step = StepOf(before, now, title, gesture);
        step.Whole = parts_.Commands.Link.Current.WhatItLeaves() != Operation::Leaves::Pieces;
        Push(std::move(step));
        return;
    }
    window.Done.back() = StepOf(window.Done.back().What.Before(before), now, title, gesture);
    if (window.Done.back().Parameters.empty()) {
        window.Done.pop_back(); // it came back to where it began
    }
}

bool History::GoesOn(const Step& step, const std::vector<Parameter>& parameters, long gesture) {
    return step.Gesture == gesture && step.Parameters == parameters && std::ranges::none_of(parameters, IsSwitch) &&
           Current().Undone.empty();
}

void History::Push(Step step) {
    OfWindow& window = Current();
    window.Undone.clear();
    window.Done.push_back(std::move(step));
    if (window.Done.size() > Deepest) {
        window.Done.erase(window.Done.begin());
    }
}

History::Step History::StepOf(const Snapshot& before, const Snapshot& after, const std::string& title,
                              long gesture) const {
    Step step{title, Changes(before, after), presets::Differing(before.Image, after.Image), gesture};
    if (step.Words.empty() && !step.Parameters.empty()) {
        step.Words = presets::ChangeInWords(step.Parameters.front(), before.Image, after.Image,
                                            parts_.Commands.Windows.Current());
        if (step.Parameters.size() > 1) {
            step.Words += " and " + std::to_string(step.Parameters.size() - 1) + " more";
        }
    }
    if (step.Words.size() > LongestWords) {
        step.Words.replace(LongestWords - 3, std::string::npos, "...");
    }
    return step;
}

bool History::Play(const std::string& name, const Snapshot& from, const Snapshot& to) {
    own_ = true;
    Operation& operation = parts_.Commands.Link.Current;
    const int slot = parts_.Commands.Windows.CurrentWindow;
    operation.Call(name, FramesBetween(from, to));
    std::optional<controls::BusyPointer> busy;
    if (operation.Frames() > MostAtOnce) {
        busy.emplace(parts_.Main.Window);
    }
    Bring(parts_.Commands, parts_.Curves, from, to);
    return parts_.Commands.Windows.Loaded[At(slot)];
}

/// The last step of those, and there is none any more: it was taken back, or gone again. Nothing where there was none,
/// or where the device died on the way.
std::optional<History::Step> History::Go(std::vector<Step> OfWindow::*steps, Way way) {
    if (Rests() || (Current().*steps).empty()) {
        return std::nullopt;
    }
    EndComparison();
    if (Rests()) {
        return std::nullopt;
    }
    const Snapshot now = Take(parts_.Commands, parts_.Curves);
    Step step = (Current().*steps).back();
    const Snapshot before = step.What.Before(now);
    const Snapshot after = step.What.After(now);
    const bool gone = way == Way::Back ? Play("the undo", after, before) : Play("the redo", before, after);
    if (!gone) {
        return std::nullopt;
    }
    parts_.Tell((way == Way::Back ? "Undone: " : "Redone: ") + step.Words);
    (Current().*steps).pop_back();
    return step;
}

void History::Undo() {
    if (std::optional<Step> step = Go(&OfWindow::Done, Way::Back); step && step->Whole) {
        Current().Undone.push_back(std::move(*step));
    } else if (step) {
        Current().Undone.clear(); // what followed it has nothing to follow
    }
}

void History::Redo() {
    if (std::optional<Step> step = Go(&OfWindow::Undone, Way::Forward)) {
        Current().Done.push_back(std::move(*step));
    }
}

/// The last preset's settings; nothing, which is told, where none differs.
std::optional<Snapshot> History::OtherSettings(const Snapshot& now) const {
    Snapshot preset = SettingsOver(now, Current().Preset);
    if (presets::Differing(now.Image, preset.Image).empty()) {
        parts_.Tell("Nothing differs from the last preset.");
        return std::nullopt;
    }
    return preset;
}

void History::Compare() {
    if (Rests()) {
        return;
    }
    if (Comparing()) {
        EndComparison();
        return;
    }
    const Snapshot now = Take(parts_.Commands, parts_.Curves);
    const std::optional<Snapshot> preset = OtherSettings(now);
    if (!preset) {
        return;
    }
    parts_.Keep(parts_.Commands.DeviceId()); // the preset may play for long
    if (Play("the comparison", now, *preset)) {
        Current().Compared = Changes(now, *preset);
        parts_.Commands.Form().Window.SetMark("Last preset");
        parts_.Tell("The last preset plays. Ctrl+Space goes back to your settings; a change goes on from here.");
    }
}

void History::EndComparison() {
    if (!Comparing()) {
        return;
    }
    const Snapshot now = Take(parts_.Commands, parts_.Curves);
    const Changes changes = *std::exchange(Current().Compared, std::nullopt);
    parts_.Commands.Form().Window.SetMark({});
    if (Play("the comparison", changes.After(now), changes.Before(now))) {
        parts_.Tell("Your settings play again.");
    }
    if (begun_) { // what comes next in this operation is a step from here
        begun_->Before = Take(parts_.Commands, parts_.Curves);
    }
    own_ = false;
}

/// The preset that plays is what the user goes on from: the way there is a step.
void History::KeepComparison() {
    if (Comparing()) {
        const Changes changes = *std::exchange(Current().Compared, std::nullopt);
        const Snapshot now = begun_->Before;
        Push(StepOf(changes.Before(now), changes.After(now), ToPreset, NoGesture));
        parts_.Commands.Form().Window.SetMark({});
    }
}

void History::Revert() {
    if (Rests()) {
        return;
    }
    if (Comparing()) {
        KeepComparison();
    } else {
        const Snapshot now = Take(parts_.Commands, parts_.Curves);
        const std::optional<Snapshot> preset = OtherSettings(now);
        if (!preset || !Play("the revert", now, *preset)) {
            return;
        }
        Push(StepOf(now, *preset, ToPreset, NoGesture));
    }
    parts_.Tell("Back at the last preset; \"Undo\" brings your settings back.");
}

void History::TellEdits(const model::PresetImageRow& now) {
    parts_.Edited(parts_.Commands.DeviceId(), presets::Differing(Current().Kept, now).size());
}

void History::ShowMenu() {
    const bool rests = Rests();
    const OfWindow& window = Current();
    const auto show = [rests](controls::Button& entry, const char* name, const std::vector<Step>& steps) {
        const bool has = !rests && !steps.empty();
        entry.SetCaption(has ? std::string(name) + ' ' + steps.back().Words : name);
        entry.SetEnabled(has);
    };
    show(parts_.Main.Undo, "Undo", window.Done);
    show(parts_.Main.Redo, "Redo", window.Undone);
    parts_.Main.Compare.SetInForce(window.Compared.has_value());
    parts_.Main.Compare.SetEnabled(!rests);
    parts_.Main.Revert.SetEnabled(!rests);
}

std::size_t History::Size(int slot) const {
    std::size_t size = 0;
    for (const auto* const steps : {&windows_[At(slot)].Done, &windows_[At(slot)].Undone}) {
        for (const Step& step : *steps) {
            size +=
                sizeof step + step.Words.capacity() + step.What.Size() + step.Parameters.capacity() * sizeof(Parameter);
        }
    }
    return size;
}

} // namespace nrv::history
