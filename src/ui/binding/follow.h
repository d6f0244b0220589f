#pragma once

#include "ui/binding/binding.h"
#include "ui/binding/subscription.h"

namespace nrv::ui {

/// Shows what all widgets show alike, and lets `show` show the rest: once now and at each change.
template <class Control, class Show>
void Follow(Control& control, QWidget& widget, Show show) {
    ShowAllCommon(control, widget);
    show();
    Subscribe(widget, control, [&control, &widget, show](controls::Aspect aspect) {
        if (!ShowCommon(control, widget, aspect)) {
            show();
        }
    });
}

} // namespace nrv::ui
