#pragma once

#include "find.h"
#include "support/scripted_ports.h"
#include "ui/look/theme.h"
#include "ui/platform/qt_window_host.h"
#include "ui/tool_dialogs/tool_dialogs.h"

#include <QApplication>
#include <QDialog>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>
#include <QTimer>

#include <array>
#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace nrv::test {

using namespace controls;

inline QRect PlaceIn(const QDialog& dialog, const QWidget& widget) {
    return {widget.mapTo(&dialog, QPoint()), widget.size()};
}

/// Fresh records for every test, and dialogs that show them.
class ToolDialogFixture : public QObject {
  protected:
    void FillForms() {
        boundary_.Set({.TellError = [this](const std::string& text) {
            boxes_.Show({text, "Error", BoxIcon::Critical});
        }});
        forms_ = std::make_unique<program::Forms>();
        boxes_.Shown.clear();
        for (std::size_t i = 0; i < 8; ++i) {
            forms_->EditNames.Text1[i].SetText("WWWWWW");
        }
        const std::vector<std::string> names = {"Club Main       ",
                                                "  Lead blanks   ",
                                                std::string("\0\x1F"
                                                            "a\x7F\xAD z",
                                                            7),
                                                "WWWWWWWWWWWWWWWW",
                                                "",
                                                "g\xE9n\xE9rique",
                                                "seven",
                                                "eight"};
        forms_->Store.List1.SetItems(names);
        forms_->Store.List1.Select(0);
        forms_->Store.Text1.SetText(names[0]);
        forms_->Store.Combo1.Select(0);
        forms_->Read.List1.SetItems(names);
        forms_->Read.List1.Select(0);
        for (int i = 0; i < 2; ++i) {
            forms_->CopyOut.Combo1[std::size_t(i)].SetItems(
                {"Out 1 ", "Out 2 ", "WWWWWW", "Out 4 ", "Out 5 ", "&Sub  "});
            forms_->CopyOut.Combo1[std::size_t(i)].Select(i);
        }
    }

    std::unique_ptr<QDialog> Open(ToolDialog dialog) {
        std::unique_ptr<QDialog> window(ui::MakeToolDialog(dialog, *forms_, entry_, nullptr));
        window->show();
        window->activateWindow();
        if (!QTest::qWaitForWindowActive(window.get())) {
            qFatal("the dialog does not become active");
        }
        QTest::qWait(10);
        return window;
    }

    /// 0 login, 1 settings, 2 new password.
    void ShowPage(int page) {
        const std::array<Frame*, 3> frames = {&forms_->Password.Frame3, &forms_->Password.Frame1,
                                              &forms_->Password.Frame4};
        frames[std::size_t(page)]->SetVisible(true);
        for (int other = 0; other < 3; ++other) {
            if (other != page) {
                frames[std::size_t(other)]->SetVisible(false);
            }
        }
    }

    QPoint Line(const QListWidget& list, int row) const { return list.visualItemRect(list.item(row)).center(); }

    /// Runs a dialog until an action closes it.
    void RunAndDo(ui::QtWindowHost& host, ToolDialog dialog, const std::function<void(QDialog&)>& action) {
        bool done = false;
        QTimer::singleShot(50, this, [&] {
            auto* window = qobject_cast<QDialog*>(QApplication::activeModalWidget());
            QVERIFY(window != nullptr);
            action(*window);
            done = true;
            if (window->isVisible()) {
                window->reject();
                QFAIL("the action did not close the dialog");
            }
        });
        host.RunDialog(dialog);
        QVERIFY(done);
        QVERIFY(QApplication::activeModalWidget() == nullptr);
    }

    testing::ScriptedBoxes boxes_;
    std::unique_ptr<Windows> windows_ = std::make_unique<Windows>();
    EventBoundary boundary_{*windows_};
    EventEntry entry_{boundary_, EventSource::Kind::Program};
    std::unique_ptr<program::Forms> forms_;
};

} // namespace nrv::test
