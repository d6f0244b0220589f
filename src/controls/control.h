#pragma once

#include <cstdint>
#include <functional>
#include <span>
#include <string>
#include <vector>

namespace nrv::controls {

/// What of a control changed; a view repaints only that.
enum class Aspect {
    Value,
    Text,
    Caption,
    ToolTip,
    Colour,
    Visible,
    Enabled,
    Items,
    Place,
    Drawing,
    Repaint,
    Attention
};

struct Colour {
    std::uint8_t Red = 0;
    std::uint8_t Green = 0;
    std::uint8_t Blue = 0;
    bool operator==(const Colour&) const = default;
};

/// What every control has. Texts are single bytes of the one-byte code page.
///
/// A control runs no view code of its own: one view may observe it, and is told after each change what changed.
class Control {
  public:
    using Observer = std::function<void(Aspect)>;

    Control() = default;
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    /// The last observer takes the place of the one before. Returns the observation's number.
    int Observe(Observer observer) {
        observer_ = std::move(observer);
        return ++observations_;
    }
    /// Does nothing when another observer has come since.
    void EndObservation(int number) {
        if (number == observations_) {
            observer_ = nullptr;
        }
    }

    const std::string& Caption() const { return caption_; }
    void SetCaption(const std::string& caption) { Assign(caption_, caption, Aspect::Caption); }
    const std::string& ToolTip() const { return tool_tip_; }
    void SetToolTip(const std::string& text) { Assign(tool_tip_, text, Aspect::ToolTip); }
    bool Visible() const { return visible_; }
    void SetVisible(bool visible) { Assign(visible_, visible, Aspect::Visible); }
    /// A disabled frame disables all that lies in it; the flags of what lies in it stay.
    bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled) { Assign(enabled_, enabled, Aspect::Enabled); }
    /// Asks the view to paint now and not at the next turn of the event loop.
    void Refresh() { Notify(Aspect::Repaint); }

  protected:
    void Notify(Aspect aspect) {
        if (observer_) {
            observer_(aspect);
        }
    }
    template <class T>
    void Assign(T& member, const T& value, Aspect aspect) {
        if (!(member == value)) {
            member = value;
            Notify(aspect);
        }
    }

  private:
    Observer observer_;
    int observations_ = 0;
    std::string caption_;
    std::string tool_tip_;
    bool visible_ = true;
    bool enabled_ = true;
};

inline void Run(const std::function<void()>& event) {
    if (event) {
        event();
    }
}

/// A frame holds other controls; which ones is the inventory's matter.
class Frame : public Control {};

/// A stroke or a fixed picture: shown or hidden.
class Line : public Control {};

/// A lamp or a mark, by its fill colour.
class Shape : public Control {
  public:
    Colour Fill() const { return fill_; }
    bool Lit() const { return lit_; }
    void Light(Colour colour) {
        if (lit_ && fill_ == colour) {
            return;
        }
        lit_ = true;
        fill_ = colour;
        Notify(Aspect::Colour);
    }
    /// The unlit colour is the window's own.
    void Extinguish() {
        if (lit_) {
            lit_ = false;
            Notify(Aspect::Colour);
        }
    }

  private:
    Colour fill_;
    bool lit_ = false;
};

class Label : public Control {
  public:
    std::function<void()> Clicked;
    void UserClick() { Run(Clicked); }
};

/// What of a point a key changes.
enum class PointStep { Frequency, Gain, Bandwidth };

/// A numbered point on a channel's graph, placed by its top left corner in position units, 15 to a pixel.
class Marker : public Control {
  public:
    double Left() const { return left_; }
    double Top() const { return top_; }
    void MoveTo(double left, double top) {
        left_ = left;
        top_ = top;
        Notify(Aspect::Place);
    }
    std::function<void()> Pressed;
    std::function<void(double x, double y)> Moved; ///< x, y in position units from the marker's own corner
    std::function<void()> Released;
    std::function<void()> GivenUp;                          ///< a drag that is not to count
    std::function<void(PointStep what, int steps)> Stepped; ///< by a key, upwards positive

  private:
    double left_ = 0.0;
    double top_ = 0.0;
};

class Button : public Control {
  public:
    std::function<void()> Clicked;
    void UserClick() { Run(Clicked); }

    /// What the button leads to is in force: its picture says so.
    bool InForce() const { return in_force_; }
    void SetInForce(bool in_force) { Assign(in_force_, in_force, Aspect::Value); }

  private:
    bool in_force_ = false;
};

/// A surface that is drawn on with a pen. It keeps the strokes, so that a view can paint them at any scale and at any
/// time.
class Picture : public Control {
  public:
    struct Point {
        int X = 0;
        int Y = 0;
        bool operator==(const Point&) const = default;
    };
    struct Stroke {
        Colour Pen;
        std::vector<Point> Points;
    };

    /// Back to the background image.
    void Clear() {
        stroke_count_ = 0;
        pen_down_ = false;
        Notify(Aspect::Drawing);
    }
    void SetPen(Colour colour) {
        if (!(colour == pen_)) {
            pen_ = colour;
            pen_down_ = false;
        }
    }
    void MoveTo(int x, int y) {
        at_ = {x, y};
        pen_down_ = false;
    }
    /// Draws from the pen to a point and leaves the pen there.
    void LineTo(int x, int y) {
        if (!pen_down_) {
            StartStroke();
        }
        at_ = {x, y};
        strokes_[stroke_count_ - 1].Points.push_back(at_);
    }
    /// The same as a line to each of the points in turn.
    void LinesTo(std::span<const Point> points) {
        if (points.empty()) {
            return;
        }
        if (!pen_down_) {
            StartStroke();
        }
        at_ = points.back();
        std::vector<Point>& drawn = strokes_[stroke_count_ - 1].Points;
        drawn.insert(drawn.end(), points.begin(), points.end());
    }
    /// In the order drawn.
    std::span<const Stroke> Strokes() const { return {strokes_.data(), stroke_count_}; }

  private:
    void StartStroke() {
        if (stroke_count_ == strokes_.size()) {
            strokes_.emplace_back();
        }
        Stroke& stroke = strokes_[stroke_count_++]; // an old one keeps its room
        stroke.Pen = pen_;
        stroke.Points.assign(1, at_);
        pen_down_ = true;
        Notify(Aspect::Drawing);
    }

    std::vector<Stroke> strokes_;
    std::size_t stroke_count_ = 0;
    Colour pen_;
    Point at_;
    bool pen_down_ = false;
};

} // namespace nrv::controls
