#pragma once

#include "controls/event_boundary.h"
#include "controls/forms.h"

#include <QDialog>

#include <array>
#include <functional>

namespace nrv::ui {

class Panel;

/// The connection dialog. Its width, which the record decides, shows one, two or three columns.
class ConnectionDialog : public QDialog {
  public:
    /// `query_unload` says whether the dialog may close, by whatever means it is closed.
    ConnectionDialog(controls::FrmSelect& record, const controls::EventEntry& entry, std::function<bool()> query_unload,
                     QWidget* parent = nullptr);

    void reject() override;

  protected:
    void closeEvent(QCloseEvent* event) override;

  private:
    QWidget* MakeLeftColumn();
    Panel* MakeDeviceFrame(std::size_t frame);
    QWidget* MakeButtons();
    void FollowWidth();

    controls::FrmSelect& record_;
    controls::EventEntry entry_;
    std::function<bool()> query_unload_;
    std::array<Panel*, 2> device_frames_{};
};

} // namespace nrv::ui
