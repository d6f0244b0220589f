#pragma once

#include <vector>

class QWidget;

namespace nrv::ui {

/// The controls below a widget that take the keyboard, as one reads: bands from top to bottom, in each the columns from
/// left to right. What lies in or on a panel stays together, and the points of a graph follow their numbers.
std::vector<QWidget*> InReadingOrder(const QWidget& parent);

/// The Tab key goes through the widgets in this order.
void SetTabOrder(const std::vector<QWidget*>& widgets);

} // namespace nrv::ui
