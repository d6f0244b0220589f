#pragma once

#include "controls/containers.h"
#include "controls/control.h"

#include <functional>

class QWidget;

namespace nrv::ui {

/// Twips of the records to pixels of the screen.
inline constexpr int TwipsPerPixel = 15;

/// The title of a window as its form and its state have it; for when its state changes.
void ShowTitle(const controls::Form& form, QWidget& window);

/// Shows a window's title on `window` and its mouse pointer over `area`; `place` runs when the code gave it another
/// size.
void BindForm(controls::Form& form, QWidget& window, QWidget& area, const std::function<void()>& place = {});

} // namespace nrv::ui
