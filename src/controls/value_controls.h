#pragma once

#include "controls/control.h"

#include <algorithm>
#include <string>
#include <vector>

namespace nrv::controls {

/// A position with a range. What code sets is held even outside the range and shown at the nearest position inside, so
/// that a code computed back from it is the byte that was there.
class Ranged : public Control {
  public:
    int Position() const { return position_; }
    int Shown() const { return std::clamp(position_, minimum_, maximum_); }
    int Minimum() const { return minimum_; }
    int Maximum() const { return maximum_; }
    void SetRange(int minimum, int maximum) {
        minimum_ = minimum;
        maximum_ = maximum;
        Notify(Aspect::Items);
    }

  protected:
    /// True when the held position changed.
    bool Hold(int position) {
        if (position_ == position) {
            return false;
        }
        position_ = position;
        Notify(Aspect::Value);
        return true;
    }

  private:
    int position_ = 0;
    int minimum_ = 0;
    int maximum_ = 0;
};

/// Vertical, position 0 at the top. Setting it in code runs nothing; each step of a user's move runs `Moved` once.
class Fader : public Ranged {
  public:
    static constexpr int SmallStep = 1;
    static constexpr int LargeStep = 5;

    std::function<void()> Moved;

    int TickSpacing() const { return tick_spacing_; }
    /// The position that stands for 0 dB, marked by a longer tick; -1 where there is none.
    int ZeroPosition() const { return zero_position_; }
    void SetUp(int maximum, int tick_spacing, int zero_position = -1) {
        SetRange(0, maximum);
        tick_spacing_ = tick_spacing;
        zero_position_ = zero_position;
    }
    void SetPosition(int position) { Hold(position); }
    /// Moving to the place that shows is a move when the one held lies outside the range.
    void UserMove(int position) {
        const int target = std::clamp(position, Minimum(), Maximum());
        if (target != Position()) {
            Hold(target);
            Run(Moved);
        }
    }

  private:
    int tick_spacing_ = 1;
    int zero_position_ = -1;
};

/// Two arrows over a position. `Changed` runs on any change, whoever made it; `Clicked` on the user's arrows alone.
class UpDown : public Ranged {
  public:
    std::function<void()> Changed;
    std::function<void()> Clicked;

    void SetPosition(int position) {
        if (Hold(position)) {
            Run(Changed);
        }
    }
    /// Moves by a number of steps, up when positive, as far as the range goes; a click at its end moves nothing.
    void UserStep(int steps) {
        const int target = std::clamp(Shown() + steps, Minimum(), Maximum());
        if (target != Shown()) {
            SetPosition(target);
        }
        Run(Clicked);
    }
};

/// A drop-down list, with no selection at first. `Chosen` runs when the selection changes, whoever changed it.
class List : public Control {
  public:
    static constexpr int None = -1;

    std::function<void()> Chosen;
    /// Runs before a view shows the entries or tells of the chosen one: what is told of them may be brought up to date.
    std::function<void()> Looked;

    const std::vector<std::string>& Items() const { return items_; }
    void SetItems(std::vector<std::string> items) {
        items_ = std::move(items);
        Notify(Aspect::Items);
    }
    /// Tool tips by entry; empty where there are none.
    const std::vector<std::string>& ItemToolTips() const { return item_tool_tips_; }
    void SetItemToolTips(std::vector<std::string> tips) {
        item_tool_tips_ = std::move(tips);
        Notify(Aspect::Items);
    }
    /// What stands dim beside an entry and is no part of its text; empty where there is nothing to tell.
    const std::vector<std::string>& ItemNotes() const { return item_notes_; }
    void SetItemNotes(std::vector<std::string> notes) {
        item_notes_ = std::move(notes);
        Notify(Aspect::Items);
    }
    /// Entries that lead nowhere as yet, shown dim; they can be chosen like any other.
    const std::vector<bool>& DimItems() const { return dim_items_; }
    void SetDimItems(std::vector<bool> dim) {
        dim_items_ = std::move(dim);
        Notify(Aspect::Items);
    }
    /// The position that was set, held even past the list's end.
    int Index() const { return index_; }
    /// The nearest entry to the position set; None before the first selection or in an empty list.
    int Shown() const {
        return index_ == None || items_.empty() ? None : std::clamp(index_, 0, static_cast<int>(items_.size()) - 1);
    }
    std::string ShownText() const {
        return Shown() == None ? std::string() : items_[static_cast<std::size_t>(Shown())];
    }
    void Select(int index) {
        if (index_ != index) {
            Show(index);
            Run(Chosen);
        }
    }
    /// Shows a selection that stands already, somewhere else in the program; runs nothing.
    void Show(int index) {
        if (index_ != index) {
            index_ = index;
            Notify(Aspect::Value);
        }
    }
    /// The user's choice of an entry; choosing the one that shows is a change when the one held lies past the end.
    void UserSelect(int index) { Select(index); }

  private:
    std::vector<std::string> items_;
    std::vector<std::string> item_tool_tips_;
    std::vector<std::string> item_notes_;
    std::vector<bool> dim_items_;
    int index_ = None;
};

/// A box that is clear at 0 and set otherwise. `Clicked` runs when its value changes, whoever changed it.
class CheckBox : public Control {
  public:
    std::function<void()> Clicked;

    int Value() const { return value_; }
    bool Checked() const { return value_ != 0; }
    void SetValue(int value) {
        if (value_ != value) {
            ShowValue(value);
            Run(Clicked);
        }
    }
    /// Shows a value that stands already, somewhere else in the program; runs nothing.
    void ShowValue(int value) { Assign(value_, value, Aspect::Value); }
    void UserToggle() { SetValue(Checked() ? 0 : 1); }

  private:
    int value_ = 0;
};

/// One of a group of options of which at most one is selected. `Clicked` runs when it becomes selected, whoever did it.
class Option : public Control {
  public:
    std::function<void()> Clicked;

    bool Selected() const { return selected_; }
    void Select() {
        if (!selected_) {
            ShowSelected();
            Run(Clicked);
        }
    }
    /// Shows a selection that is there at first or stands already, somewhere else in the program; runs nothing.
    void ShowSelected() {
        for (Option* sibling : siblings_) {
            sibling->Set(sibling == this);
        }
        Set(true);
    }

    /// Makes a run of options one group.
    template <class Range>
    static void Group(Range&& options) {
        std::vector<Option*> all;
        for (Option& option : options) {
            all.push_back(&option);
        }
        for (Option* option : all) {
            option->siblings_ = all;
        }
    }

  private:
    void Set(bool selected) { Assign(selected_, selected, Aspect::Value); }

    std::vector<Option*> siblings_;
    bool selected_ = false;
};

} // namespace nrv::controls
