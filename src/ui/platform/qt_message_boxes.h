#pragma once

#include "ports/message_boxes.h"

namespace nrv::ui {

/// Message boxes of the toolkit, modal over a window of ours, each named "MessageBox". Texts are shown as they stand.
class QtMessageBoxes : public MessageBoxes {
  public:
    BoxAnswer Show(const MessageBox& box) override;
};

} // namespace nrv::ui
