#include "ui/platform/qt_file_dialogs.h"

#include "ui/binding/text.h"

#include <QApplication>
#include <QComboBox>
#include <QDir>
#include <QEvent>
#include <QFileDialog>
#include <QFileInfo>
#include <QPointer>

#include <optional>

namespace nrv::ui {
namespace {

/// "file preset (*.n91)|*.n91" as the toolkit writes it: the text before the bar names the pattern already.
QString NameFilter(const std::string& filter) {
    return FromBytes(filter.substr(0, filter.find('|')));
}

/// "n91": what a name typed without an ending gets.
QString Suffix(const std::string& filter) {
    return FromBytes(filter.substr(filter.rfind('.') + 1));
}

/// The folder itself, or the nearest above it that is there: the toolkit would open just anywhere.
QDir Existing(std::filesystem::path folder) {
    std::error_code ignored;
    while (!std::filesystem::is_directory(folder, ignored) && folder.has_relative_path()) {
        folder = folder.parent_path();
    }
    return {folder};
}

/// Knows of the toolkit's own question over a file dialog by the dialog being blocked.
class QuestionWatch : public QObject {
  public:
    explicit QuestionWatch(Operation& operation) : operation_(operation) {}

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::WindowBlocked) {
            standing_.emplace(operation_, Operation::Loop::Box);
        } else if (event->type() == QEvent::WindowUnblocked) {
            standing_.reset();
        }
        return QObject::eventFilter(watched, event);
    }

  private:
    Operation& operation_;
    std::optional<Operation::Standing> standing_;
};

/// A list of the toolkit's dialog turns under any wheel: another folder, another kind of file.
class WheelRest : public QObject {
  protected:
    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() == QEvent::Wheel && !static_cast<QWidget*>(watched)->hasFocus()) {
            event->accept();
            return true;
        }
        return QObject::eventFilter(watched, event);
    }
};

std::optional<std::filesystem::path> Ask(Operation& operation, const FileRequest& request, QFileDialog::AcceptMode mode,
                                         const QString& title) {
    // On the heap and watched: the window it belongs to may go while it stands.
    const QPointer<QFileDialog> dialog = new QFileDialog(QApplication::activeWindow());
    dialog->setObjectName(QStringLiteral("FileDialog"));
    // Without a screen there is no other than the toolkit's own.
    dialog->setOption(QFileDialog::DontUseNativeDialog, QGuiApplication::platformName() == QLatin1String("offscreen"));
    dialog->setWindowTitle(title);
    dialog->setAcceptMode(mode); // saving asks before it takes an existing file
    dialog->setFileMode(QFileDialog::AnyFile);
    dialog->setNameFilter(NameFilter(request.Filter));
    dialog->setDefaultSuffix(Suffix(request.Filter));
    dialog->setDirectory(Existing(request.StartFolder));
    QuestionWatch questions(operation);
    dialog->installEventFilter(&questions);
    WheelRest wheel_rest;
    for (QComboBox* const list : dialog->findChildren<QComboBox*>()) {
        list->setFocusPolicy(Qt::StrongFocus); // the wheel gives no keyboard either
        list->installEventFilter(&wheel_rest);
    }
    const bool accepted = dialog->exec() == QDialog::Accepted;
    const QStringList chosen = accepted && dialog != nullptr ? dialog->selectedFiles() : QStringList();
    delete dialog.data();
    if (chosen.isEmpty()) {
        return std::nullopt;
    }
    return QFileInfo(chosen.constFirst()).filesystemFilePath();
}

} // namespace

std::optional<std::filesystem::path> QtFileDialogs::AskOpen(const FileRequest& request) {
    return Ask(operation_, request, QFileDialog::AcceptOpen, QStringLiteral("Open"));
}

std::optional<std::filesystem::path> QtFileDialogs::AskSave(const FileRequest& request) {
    return Ask(operation_, request, QFileDialog::AcceptSave, QStringLiteral("Save As"));
}

} // namespace nrv::ui
