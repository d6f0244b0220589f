#pragma once

#include "support/scripted_ports.h"
#include "ui/control_window/control_window_view.h"
#include "ui/look/theme.h"

#include <QTest>

#include <memory>

namespace nrv::test {

/// A fresh record in a view on the screen for every test.
class ControlWindowFixture : public QObject {
  protected:
    template <class Widget>
    Widget* Find(const char* name) const {
        return view_->findChild<Widget*>(QLatin1String(name));
    }
    /// Brings a tab to the top and gives one of its widgets the keyboard.
    void Focus(int tab, QWidget* widget) {
        form_->SSTab1.SetTab(tab);
        widget->setFocus();
        QTRY_VERIFY(widget->hasFocus());
    }

    controls::EventEntry Entry() { return {*boundary_, controls::EventSource::Kind::Program}; }

    void OpenWindow() {
        form_ = std::make_unique<controls::FrmCtrl>();
        boxes_ = std::make_unique<testing::ScriptedBoxes>();
        windows_ = std::make_unique<controls::Windows>();
        boundary_ = std::make_unique<controls::EventBoundary>(*windows_);
        boundary_->Set({.TellError = [this](const std::string& text) {
            boxes_->Show({text, "Error", BoxIcon::Critical});
        }});
        view_ = std::make_unique<ui::ControlWindowView>(*form_, Entry());
        view_->show();
        view_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(view_.get()));
    }

    std::unique_ptr<controls::FrmCtrl> form_;
    std::unique_ptr<testing::ScriptedBoxes> boxes_;
    std::unique_ptr<controls::Windows> windows_;
    std::unique_ptr<controls::EventBoundary> boundary_;
    std::unique_ptr<ui::ControlWindowView> view_;
};

} // namespace nrv::test
