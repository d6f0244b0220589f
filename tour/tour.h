#pragma once

#include "driver/driver.h"
#include "ui/application.h"

#include <filesystem>
#include <string>

namespace nrv::tour {

/// Goes through the program's main job as a user would, on whatever answers on COM 1, and takes a picture of each step.
class Tour {
  public:
    Tour(ui::Application& application, std::filesystem::path pictures);

    /// From the splash window to the exit; true when every step worked. A step that did not is told on standard error.
    bool Run();

  private:
    bool ChooseConnection();
    bool WaitForList();
    bool OpenDevice();
    bool LookAtTabs();
    bool MoveGain();
    bool CloseWindow();
    void LeaveProgram();

    /// Tells a step that did not work.
    bool Check(bool worked, const std::string& step);
    void Picture(QWidget& window, const std::string& name);

    ui::Application& application_;
    std::filesystem::path pictures_;
    int number_ = 0;
    driver::BoxAnswers boxes_;
};

} // namespace nrv::tour
