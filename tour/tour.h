#pragma once

#include "driver/driver.h"
#include "ui/application.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace nrv::tour {

/// A number on a picture, by the name of the widget that it stands at: beside an edge (`AlignRight`), inside it
/// (`AlignRight | AlignVCenter`), on a corner, or in the middle.
struct Mark {
    const char* Widget;
    Qt::Alignment Where;
};

/// Goes through the program's main job as a user would, on whatever answers on COM 1, and takes a picture of each step.
class Tour {
  public:
    Tour(ui::Application& application, std::filesystem::path pictures);

    /// From the splash window to the exit; false when a step did not work, which is told on standard error.
    bool Run();

  private:
    // A connection, a list, a window.
    bool Connect();
    void ChooseConnection(QWidget& dialog);
    bool OpenDevice(int id, const std::string& picture);
    // The window of a device.
    bool MoveGain();
    bool MuteAndRoute();
    bool ShapeResponse();
    bool SetDelays();
    bool TakeBack();
    bool LookAtTabs();
    // The tools.
    bool EditNames();
    bool SaveAndLoad();
    bool StoreAndRead();
    bool CopyOutput();
    bool LockAndUnlock();
    // The guide's example, on another device.
    bool WorkExample();
    bool NameWays();
    bool RouteAndCross();
    bool Equalise();
    bool AlignAndLimit();
    bool StoreExample();
    bool CloseWindow();
    void LeaveProgram();

    /// Clicks a tool button and does something in the dialog that it opens.
    bool WithTool(int tool, const QString& dialog, const std::function<void(QWidget&)>& action);
    void ShowTab(int tab);
    controls::FrmCtrl& Form() { return application_.Logic().Windows.Current(); }

    /// Tells of a step, once, whether it worked.
    bool Check(bool worked, const std::string& step);
    /// Of the whole window or of its upper `height` pixels. A mark whose widget the window does not show makes the tour
    /// fail at its end.
    void Picture(QWidget& window, const std::string& name, const std::vector<Mark>& marks = {}, int height = 0);

    ui::Application& application_;
    std::filesystem::path pictures_;
    int number_ = 0;
    bool pictures_whole_ = true;
    std::string told_;
    driver::BoxAnswers boxes_;
};

} // namespace nrv::tour
