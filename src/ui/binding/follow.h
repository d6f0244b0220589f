#pragma once

#include "ui/binding/binding.h"

namespace nrv::ui {

/// Shows what all widgets show alike, and lets `show` show the rest: once now and at each change.
template <class Control, class Show>
void Follow(Control& control, QWidget& widget, Show show) {
    ShowAllCommon(control, widget);
    show();
    control.Observe([&control, &widget, show](controls::Aspect aspect) {
        if (!ShowCommon(control, widget, aspect)) {
            show();
        }
    });
}

} // namespace nrv::ui
