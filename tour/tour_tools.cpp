#include "hands.h"
#include "tour.h"

#include <QComboBox>
#include <QLineEdit>
#include <QTest>

#include <system_error>

namespace nrv::tour {
namespace {

using driver::Find;
using driver::FindAs;

const QString Yes = QStringLiteral("Yes");

} // namespace

bool Tour::EditNames() {
    boxes_.Next(Yes);
    return WithTool(controls::EditNamesTool, QStringLiteral("FrmEditLabel"),
                    [this](QWidget& dialog) {
                        Type(Find(QStringLiteral("Text1(3)"), &dialog), QStringLiteral("Sub L"));
                        Picture(dialog, "names");
                        driver::Click(Find(QStringLiteral("Command1(0)"), &dialog));
                    }) &&
           Check(Form().Label300[3].Caption() == "Sub L", "a channel takes its new name");
}

bool Tour::SaveAndLoad() {
    const QString file = QStringLiteral("tour.n91");
    const auto choose = [&](const char* name) {
        return [this, file, name](QWidget& dialog) {
            dialog.findChild<QLineEdit*>()->setText(file);
            Picture(dialog, name);
            driver::Press(dialog.findChild<QLineEdit*>(), Qt::Key_Return);
        };
    };
    const std::filesystem::path saved = application_.Logic().State.AppFolder / "preset" / file.toStdString();
    std::error_code ignored;
    std::filesystem::remove(saved, ignored);
    const auto image = application_.Logic().Stores.PresetImage[5].PresetBody;
    if (!WithTool(controls::SavePresetTool, QStringLiteral("FileDialog"), choose("save")) ||
        !Check(std::filesystem::file_size(saved, ignored) == sizeof(model::PresetImageRow), "a preset is saved")) {
        return false;
    }
    ShowTab(controls::GainsTab);
    driver::Press(Control("Slider1(0)"), Qt::Key_PageUp);
    return WithTool(controls::LoadPresetTool, QStringLiteral("FileDialog"), choose("load")) &&
           Check(application_.Logic().Stores.PresetImage[5].PresetBody[1] == image[1], "a load brings the gain back");
}

bool Tour::StoreAndRead() {
    boxes_.Next(Yes);
    const bool stored = WithTool(controls::StorePresetTool, QStringLiteral("FrmStore"), [this](QWidget& dialog) {
        driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1"), &dialog), 2);
        Type(Find(QStringLiteral("Text1"), &dialog), QStringLiteral("Tour"));
        Picture(dialog, "store",
                {{"List1", Qt::AlignRight | Qt::AlignTop},
                 {"Text1", Qt::AlignRight},
                 {"Combo1", Qt::AlignRight},
                 {"Command1(1)", Qt::AlignRight}});
        driver::Click(Find(QStringLiteral("Command1(1)"), &dialog));
    });
    if (!stored || !Check(application_.Logic().Stores.ParamValues[5].PresetUsed[2] == 85.0, "a preset is stored")) {
        return false;
    }
    boxes_.Next(Yes);
    return WithTool(controls::ReadPresetTool, QStringLiteral("FrmRead"),
                    [this](QWidget& dialog) {
                        QWidget* list = Find(QStringLiteral("List1"), &dialog);
                        driver::Press(list, Qt::Key_Down);
                        driver::Press(list, Qt::Key_Down);
                        Picture(dialog, "read");
                        driver::Click(Find(QStringLiteral("Command1(1)"), &dialog));
                    }) &&
           Check(Form().Window.Caption().ends_with("come from DEVICE - Tour            "), "a preset is read back");
}

bool Tour::CopyOutput() {
    boxes_.Next(Yes);
    const bool copied = WithTool(controls::CopyOutputTool, QStringLiteral("FrmCopyOut"), [this](QWidget& dialog) {
        driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1(0)"), &dialog), 1);
        driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1(1)"), &dialog), 4);
        Picture(dialog, "copy-output");
        driver::Click(Find(QStringLiteral("Command1"), &dialog));
    });
    const bool shown = WithTool(controls::CopyInputTool, QStringLiteral("FrmCopyIn"), [this](QWidget& dialog) {
        Picture(dialog, "copy-input");
        dialog.close();
    });
    return copied && shown &&
           Check(Form().Slider1[6].Position() == Form().Slider1[3].Position(), "an output is copied");
}

bool Tour::LockAndUnlock() {
    for (const bool lock : {true, false}) {
        const bool done =
            WithTool(controls::PasswordTool, QStringLiteral("FrmPassword"), [this, lock](QWidget& dialog) {
                QTest::keyClicks(Find(QStringLiteral("Text1"), &dialog), QStringLiteral("000000"));
                Picture(dialog, "password");
                driver::Click(Find(QStringLiteral("Command1(0)"), &dialog));
                driver::Click(Find(QStringLiteral("Check1"), &dialog));
                driver::Click(Find(QStringLiteral("Command1(3)"), &dialog));
                Picture(dialog, lock ? "password-lock" : "password-unlock");
                dialog.close();
            });
        if (!done || !Check((application_.Logic().Stores.ParamValues[5].LockFlag == 1.0) == lock, "the lock changes")) {
            return false;
        }
        Picture(*ControlWindow(), lock ? "locked" : "unlocked");
    }
    return true;
}

bool Tour::WithTool(int tool, const QString& dialog, const std::function<void(QWidget&)>& action) {
    std::string title;
    const driver::WhenShown shown(dialog, [&](QWidget& window) {
        title = window.windowTitle().trimmed().toStdString();
        action(window);
    });
    driver::Click(Find(QStringLiteral("Command2(%1)").arg(tool), ControlWindow()));
    return Check(shown.Done(), "a tool button opens \"" + title + "\"");
}

} // namespace nrv::tour
