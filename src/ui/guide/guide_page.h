#pragma once

#include <QString>

class QWidget;

namespace nrv::ui {

/// The heading of the guide that tells of a widget; empty for no widget, or for one that it does not tell of.
QString GuidePageOf(const QWidget* widget);

} // namespace nrv::ui
