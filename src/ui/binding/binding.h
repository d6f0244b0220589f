#pragma once

#include "controls/containers.h"
#include "controls/control.h"
#include "controls/event_boundary.h"
#include "controls/value_controls.h"

class QAbstractButton;
class QComboBox;
class QGroupBox;
class QLabel;
class QTimer;
class QWidget;

namespace nrv::ui {

// One connection for each kind of control: the widget shows the control, and what the user does to the widget becomes
// the control's event, run through the boundary. The control outlives neither connection nor widget's events: a view
// that goes away first calls Observe({}) on its controls.

/// Visible, enabled and tool tip, which every widget shows alike; true when the aspect was one of them.
bool ShowCommon(const controls::Control& control, QWidget& widget, controls::Aspect aspect);
void ShowAllCommon(const controls::Control& control, QWidget& widget);

void Bind(controls::Label& label, QLabel& widget);
void Bind(controls::Button& button, QAbstractButton& widget, controls::EventBoundary& boundary);
void Bind(controls::Option& option, QAbstractButton& widget, controls::EventBoundary& boundary);
void Bind(controls::CheckBox& box, QAbstractButton& widget, controls::EventBoundary& boundary);
void Bind(controls::List& list, QComboBox& widget, controls::EventBoundary& boundary);
/// A timer of the control runs on a timer of the toolkit.
void Bind(controls::Timer& timer, QTimer& toolkit_timer, controls::EventBoundary& boundary);

} // namespace nrv::ui
