#pragma once

#include "controls/event_boundary.h"
#include "controls/forms.h"
#include "ui/windows/mdi_child.h"

#include <functional>

class QLabel;
class QVBoxLayout;

namespace nrv::ui {

class DeviceRows;

/// The device list inside the main window. Closing it is always refused; what happens instead is `query_unload`'s.
class DeviceListWindow : public MdiChild {
  public:
    DeviceListWindow(controls::FrmSearchNet& record, const controls::EventEntry& entry,
                     const std::function<void()>& query_unload);

    /// Makes the window wide enough for its widest row and as high as a control window; for when its frame is known,
    /// which is inside the main window.
    void FitContent();
    /// Gives the keyboard to the list.
    void FocusGrid();

  private:
    void BuildGrid(const controls::EventEntry& entry);
    void BindCaption();
    void AddNotice(controls::Label& notice, const QString& name, QVBoxLayout& column);
    void FollowSize();
    void FollowCells();
    void FollowMark();

    controls::FrmSearchNet& record_;
    DeviceRows* grid_;
};

} // namespace nrv::ui
