#include "find.h"
#include "ui/look/theme.h"
#include "ui/platform/qt_file_dialogs.h"
#include "ui_test.h"

#include <QApplication>
#include <QDialogButtonBox>
#include <QFile>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

using namespace nrv;
using test::Name;

namespace {

constexpr const char* Filter = "file preset (*.n91)|*.n91";

} // namespace

class FileDialogsTest : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { ui::ApplyTheme(*qApp); }

    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
    }

    void both_dialogs_are_set_up_alike() {
        MakePresetFolder();
        for (const bool save : {false, true}) {
            const auto file = Ask(save, [&](QFileDialog& dialog) {
                QCOMPARE(dialog.windowTitle(), save ? Name("Save As") : Name("Open"));
                QCOMPARE(dialog.acceptMode(), save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
                QCOMPARE(dialog.fileMode(), QFileDialog::AnyFile);
                QCOMPARE(dialog.nameFilters(), QStringList{Name("file preset (*.n91)")});
                QCOMPARE(dialog.directory().absolutePath(), folder_->filePath(Name("preset")));
                QVERIFY(!dialog.testOption(QFileDialog::DontConfirmOverwrite));
                QVERIFY(dialog.testOption(QFileDialog::DontUseNativeDialog));
                dialog.reject();
            });
            QVERIFY(!file.has_value());
        }
    }

    void without_the_preset_folder_it_starts_in_the_folder_above() {
        const auto file = Ask(false, [this](QFileDialog& dialog) {
            QCOMPARE(dialog.directory().absolutePath(), QDir(folder_->path()).absolutePath());
            dialog.reject();
        });
        QVERIFY(!file.has_value());
        // Nothing is created by asking.
        QVERIFY(!QFile::exists(folder_->filePath(Name("preset"))));
    }

    void opening_takes_a_name_that_does_not_exist() {
        MakePresetFolder();
        const auto file = Ask(false, [this](QFileDialog& dialog) { Accept(dialog, "nothing.n91"); });
        QVERIFY(file.has_value());
        QCOMPARE(QString::fromStdString(file->string()), folder_->filePath(Name("preset/nothing.n91")));
        QVERIFY(!std::filesystem::exists(*file));
    }

    void a_name_without_an_ending_gets_it_data() {
        QTest::addColumn<bool>("save");
        QTest::newRow("open") << false;
        QTest::newRow("save") << true;
    }
    void a_name_without_an_ending_gets_it() {
        QFETCH(bool, save);
        MakePresetFolder();
        const auto file = Ask(save, [this](QFileDialog& dialog) { Accept(dialog, "club \xE9t\xE9"); });
        QVERIFY(file.has_value());
        QCOMPARE(QString::fromStdString(file->string()), folder_->filePath(Name("preset/club \xE9t\xE9.n91")));
    }

    void saving_asks_before_it_takes_an_existing_file_data() {
        QTest::addColumn<bool>("overwrite");
        QTest::newRow("yes") << true;
        QTest::newRow("no") << false;
    }
    void saving_asks_before_it_takes_an_existing_file() {
        QFETCH(bool, overwrite);
        MakePresetFolder();
        MakeFile("preset/club.n91");
        int asked = 0;
        const auto file = Ask(true, [&](QFileDialog& dialog) {
            QTimer::singleShot(30, &dialog, [&] {
                auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
                QVERIFY(box != nullptr);
                ++asked;
                box->button(overwrite ? QMessageBox::Yes : QMessageBox::No)->click();
            });
            Accept(dialog, "club.n91");
            if (dialog.isVisible()) {
                dialog.reject();
            }
        });
        QCOMPARE(asked, 1);
        QCOMPARE(file.has_value(), overwrite);
    }

    void opening_an_existing_file_asks_nothing() {
        MakePresetFolder();
        MakeFile("preset/club.n91");
        const auto file = Ask(false, [this](QFileDialog& dialog) { Accept(dialog, "club.n91"); });
        QVERIFY(file.has_value());
        QCOMPARE(file->filename().string(), std::string("club.n91"));
    }

  private:
    void MakePresetFolder() { QVERIFY(QDir(folder_->path()).mkdir(Name("preset"))); }
    void MakeFile(const char* name) {
        QFile file(folder_->filePath(Name(name)));
        QVERIFY(file.open(QIODevice::WriteOnly));
    }

    std::optional<std::filesystem::path> Ask(bool save, const std::function<void(QFileDialog&)>& action) {
        QString seen;
        QTimer::singleShot(50, this, [&] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            QVERIFY(dialog != nullptr);
            seen = dialog->objectName();
            action(*dialog);
            if (dialog->isVisible()) {
                dialog->reject();
                QFAIL("the action did not close the dialog");
            }
        });
        const FileRequest request{Filter, std::filesystem::path(folder_->path().toStdString()) / "preset"};
        Operation operation;
        ui::QtFileDialogs dialogs(operation);
        auto file = save ? dialogs.AskSave(request) : dialogs.AskOpen(request);
        [&] { QCOMPARE(seen, Name("FileDialog")); }();
        return file;
    }

    /// Types a name and presses the button, as a user does.
    void Accept(QFileDialog& dialog, const char* name) {
        auto* edit = dialog.findChild<QLineEdit*>(Name("fileNameEdit"));
        QVERIFY(edit != nullptr);
        edit->setText(Name(name));
        auto* buttons = dialog.findChild<QDialogButtonBox*>(Name("buttonBox"));
        QVERIFY(buttons != nullptr);
        QPushButton* button = buttons->button(dialog.acceptMode() == QFileDialog::AcceptSave ? QDialogButtonBox::Save
                                                                                             : QDialogButtonBox::Open);
        QVERIFY(button != nullptr && button->isEnabled());
        QTest::mouseClick(button, Qt::LeftButton);
    }

    std::unique_ptr<QTemporaryDir> folder_;
};

NRV_UI_TEST(FileDialogsTest);
#include "file_dialogs_test.moc"
