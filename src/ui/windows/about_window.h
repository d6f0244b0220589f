#pragma once

#include <QDialog>

namespace nrv::ui {

/// Name and version of the program, the folder that it works in, and what it stands on. Escape or Enter closes it.
class AboutWindow : public QDialog {
  public:
    AboutWindow(const QString& folder, QWidget* owner);
};

} // namespace nrv::ui
