#pragma once

#include <QIcon>

namespace nrv::ui {

/// The program's own picture: a crossover's two slopes on a dark front.
QIcon ProgramIcon();

} // namespace nrv::ui
