#pragma once

#include "controls/event_boundary.h"
#include "controls/frm_ctrl.h"

#include <string_view>

namespace nrv::ui {

class PageBuilder;

/// Binds each control of a window to its widget as the inventory is walked: one operation for each kind of control.
///
/// The tabs, the timer and the points of the graphs are the window's own matter and are passed over.
class ControlBinder {
  public:
    ControlBinder(const PageBuilder& widgets, const controls::EventEntry& entry) : widgets_(widgets), entry_(entry) {}

    void operator()(std::string_view name, int index, controls::Frame& frame);
    void operator()(std::string_view name, int index, controls::Button& button);
    void operator()(std::string_view name, int index, controls::Shape& shape);
    void operator()(std::string_view name, int index, controls::Fader& fader);
    void operator()(std::string_view name, int index, controls::TextBox& box);
    void operator()(std::string_view name, int index, controls::CheckBox& box);
    void operator()(std::string_view name, int index, controls::UpDown& up_down);
    void operator()(std::string_view name, int index, controls::List& list);
    void operator()(std::string_view name, int index, controls::Label& label);
    void operator()(std::string_view name, int index, controls::Option& option);
    void operator()(std::string_view name, int index, controls::Picture& picture);
    void operator()(std::string_view name, int index, controls::Line& line);
    void operator()(std::string_view, int, controls::TabControl&) {}
    void operator()(std::string_view, int, controls::Timer&) {}
    void operator()(std::string_view, int, controls::Marker&) {}

  private:
    /// The control's widget as the kind that shows it; null when there is none.
    template <class Widget>
    Widget* WidgetOf(std::string_view name, int index) const;

    const PageBuilder& widgets_;
    controls::EventEntry entry_;
};

} // namespace nrv::ui
