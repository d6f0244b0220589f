#pragma once

#include "controls/containers.h"
#include "controls/control.h"
#include "controls/dialog_forms.h"
#include "controls/event_boundary.h"
#include "controls/text_box.h"
#include "controls/value_controls.h"

class QAbstractButton;
class QComboBox;
class QLabel;
class QListWidget;
class QProgressBar;
class QTimer;
class QWidget;

namespace nrv::ui {

class Panel;
class TextField;

// One connection for each kind of control: the widget shows the control, and what the user does to the widget becomes
// the control's event, run through its entry; one that may not run leaves the widget as the control is. The control
// outlives the widget, and the connection goes with the widget.

/// Visible, enabled and tool tip, which every widget shows alike; true when the aspect was one of them.
bool ShowCommon(const controls::Control& control, QWidget& widget, controls::Aspect aspect);
void ShowAllCommon(const controls::Control& control, QWidget& widget);

void Bind(controls::Label& label, QLabel& widget);
/// The panel disables what lies in it.
void Bind(controls::Frame& frame, Panel& panel);
void Bind(controls::Button& button, QAbstractButton& widget, const controls::EventEntry& entry);
/// The click alone, for a button that shows a picture.
void BindClick(controls::Button& button, QAbstractButton& widget, const controls::EventEntry& entry);
void Bind(controls::Option& option, QAbstractButton& widget, const controls::EventEntry& entry);
void Bind(controls::CheckBox& box, QAbstractButton& widget, const controls::EventEntry& entry);
void Bind(controls::List& list, QComboBox& widget, const controls::EventEntry& entry);
/// What stands typed in a field waits for Enter, and is marked until then, or is read whenever it is wanted.
enum class Typing { ReadAtAnyTime, WaitsForEnter };
/// Keys go through the box's event before they enter; a locked box shows characters that cannot be seen as dots.
void Bind(controls::TextBox& box, TextField& field, const controls::EventEntry& entry,
          Typing typing = Typing::ReadAtAnyTime);
/// Lines keep their blanks, and show characters that cannot be seen as dots.
void Bind(controls::LineList& list, QListWidget& widget, const controls::EventEntry& entry);
/// A refresh of the bar paints it at once, with no turn of the event loop.
void Bind(controls::ProgressBar& bar, QProgressBar& widget);
/// A timer of the control runs on a timer of the toolkit.
void Bind(controls::Timer& timer, QTimer& toolkit_timer, const controls::EventEntry& entry);

} // namespace nrv::ui
