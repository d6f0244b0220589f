#pragma once

#include "controls/control.h"
#include "ports/runtime_error.h"

#include <string>
#include <vector>

namespace nrv::controls {

/// The pages of a window. `Changed` runs when another tab comes to the top, whoever brought it there.
class TabControl : public Control {
  public:
    std::function<void()> Changed;

    int Tab() const { return tab_; }
    void SetTab(int tab) {
        if (tab_ != tab) {
            tab_ = tab;
            Notify(Aspect::Value);
            Run(Changed);
        }
    }
    const std::vector<std::string>& TabCaptions() const { return captions_; }
    void SetTabCaptions(std::vector<std::string> captions) {
        captions_ = std::move(captions);
        Notify(Aspect::Items);
    }
    void SetTabCaption(int tab, const std::string& caption) {
        captions_.at(static_cast<std::size_t>(tab)) = caption;
        Notify(Aspect::Items);
    }

  private:
    std::vector<std::string> captions_;
    int tab_ = 0;
};

/// Rows and columns of text.
class Grid : public Control {
  public:
    std::function<void(int row)> DoubleClicked;
    void UserDoubleClick(int row) {
        if (DoubleClicked) {
            DoubleClicked(row);
        }
    }

    int Rows() const { return static_cast<int>(cells_.size()); }
    int Columns() const { return columns_; }
    /// The width of every column in twips.
    int ColumnWidth() const { return column_width_; }
    void SetSize(int rows, int columns, int column_width_twips) {
        cells_.assign(static_cast<std::size_t>(rows), std::vector<std::string>(static_cast<std::size_t>(columns)));
        notes_.assign(cells_.size(), {});
        columns_ = columns;
        column_width_ = column_width_twips;
        Notify(Aspect::Items);
    }
    const std::string& Cell(int row, int column) const {
        Require(row, column);
        return cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
    }
    /// Throws RuntimeError of kind IndexOutOfRange when there is no such row or column.
    void SetCell(int row, int column, const std::string& text) {
        Require(row, column);
        cells_[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)] = text;
        Notify(Aspect::Text);
    }
    /// What is told of a row besides the list's own tool tip; empty where there is nothing to tell.
    const std::string& RowNote(int row) const { return notes_[static_cast<std::size_t>(row)]; }
    void SetRowNote(int row, const std::string& note) {
        Require(row, 0);
        if (notes_[static_cast<std::size_t>(row)] != note) {
            notes_[static_cast<std::size_t>(row)] = note;
            Notify(Aspect::Text);
        }
    }
    static constexpr int NoRow = -1;
    /// The row of what is worked on; NoRow when there is none.
    int MarkedRow() const { return marked_row_; }
    void MarkRow(int row) { Assign(marked_row_, row, Aspect::Colour); }

  private:
    void Require(int row, int column) const {
        if (row < 0 || row >= Rows() || column < 0 || column >= columns_) {
            throw RuntimeError(ErrorKind::IndexOutOfRange, "The list has no row " + std::to_string(row) + ", column " +
                                                               std::to_string(column) + ".");
        }
    }

    std::vector<std::vector<std::string>> cells_;
    std::vector<std::string> notes_;
    int columns_ = 0;
    int column_width_ = 0;
    int marked_row_ = NoRow;
};

enum class Pointer { Default, ArrowAndHourglass, Hourglass };

/// A window itself: its title, its pointer, its size in twips where the code decides it.
class Form : public Control {
  public:
    /// A word beside the title that is no part of it; empty where there is nothing to say.
    const std::string& Mark() const { return mark_; }
    void SetMark(const std::string& mark) { Assign(mark_, mark, Aspect::Text); }
    Pointer MousePointer() const { return pointer_; }
    void SetMousePointer(Pointer pointer) { Assign(pointer_, pointer, Aspect::Value); }
    int Width() const { return width_; }
    int Height() const { return height_; }
    void SetSize(int width_twips, int height_twips) {
        width_ = width_twips;
        height_ = height_twips;
        Notify(Aspect::Place);
    }

  private:
    std::string mark_;
    Pointer pointer_ = Pointer::Default;
    int width_ = 0;
    int height_ = 0;
};

/// Ticks every so many milliseconds while it is on.
class Timer : public Control {
  public:
    std::function<void()> Tick;

    int Interval() const { return interval_; }
    bool Running() const { return running_; }
    void SetInterval(int milliseconds) {
        interval_ = milliseconds;
        Notify(Aspect::Value);
    }
    /// Ticks a whole interval from now, also when it is on already.
    void Start(int milliseconds) {
        if (running_) {
            Stop();
        }
        interval_ = milliseconds;
        running_ = true;
        Notify(Aspect::Value);
    }
    void Stop() {
        running_ = false;
        Notify(Aspect::Value);
    }

  private:
    int interval_ = 0;
    bool running_ = false;
};

} // namespace nrv::controls
