#include "ui/windows/main_window.h"

#include "ui/binding/binding.h"
#include "ui/binding/subscription.h"
#include "ui/binding/text.h"
#include "ui/look/painting.h"
#include "ui/look/theme.h"
#include "ui/windows/about_window.h"
#include "ui/windows/form_binding.h"
#include "ui/windows/full_text_label.h"

#include <QAction>
#include <QCloseEvent>
#include <QGuiApplication>
#include <QMdiArea>
#include <QMenu>
#include <QMenuBar>
#include <QRegularExpression>
#include <QScreen>
#include <QStatusBar>
#include <QTimer>

#include <algorithm>
#include <tuple>
#include <utility>

namespace nrv::ui {
namespace {

/// The device list and one control window side by side, with room for a few more behind it.
constexpr QSize StartSize(1120, 720);
/// What a desktop puts around a window, before it is known.
constexpr QMargins ExpectedFrame(4, 36, 4, 4);

} // namespace

MainWindow::MainWindow(controls::MDIFrmMain& record, const controls::EventEntry& entry,
                       std::function<bool()> query_unload)
    : record_(record), entry_(entry), query_unload_(std::move(query_unload)), area_(new QMdiArea) {
    setObjectName(QStringLiteral("MDIFrmMain"));
    area_->setHorizontalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    area_->setVerticalScrollBarPolicy(Qt::ScrollBarAsNeeded);
    // The toolkit's own order is that of creation; a window that closes is to give way to the one used before it.
    area_->setActivationOrder(QMdiArea::ActivationHistoryOrder);
    area_->setOption(QMdiArea::DontMaximizeSubWindowOnActivation);
    area_->setBackground(Mixed(palette().color(QPalette::Window), CurrentTheme().Groove, 0.35));
    setCentralWidget(area_);
    BuildMenu();
    BuildStatusLine();
    BindTimers();
    BindForm(record.Window, *this, *this);
    Place();
}

void MainWindow::BuildMenu() {
    QMenu* file = menuBar()->addMenu(QStringLiteral("&File"));
    file->setObjectName(QStringLiteral("File"));
    QAction* exit = file->addAction(WithoutMnemonic(record_.Exit.Caption()));
    exit->setObjectName(QStringLiteral("Exit"));
    exit->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_Q));
    exit->setEnabled(record_.Exit.Enabled());
    Subscribe(*exit, record_.Exit, [this, exit](controls::Aspect) { exit->setEnabled(record_.Exit.Enabled()); });
    QObject::connect(exit, &QAction::triggered, this, [this] { entry_.Run([&] { record_.Exit.UserClick(); }); });
    BuildEditMenu();
    BuildHelpMenu();
}

/// Its windows are no part of an operation.
void MainWindow::BuildHelpMenu() {
    QMenu* help = menuBar()->addMenu(QStringLiteral("&Help"));
    help->setObjectName(QStringLiteral("Help"));
    // The key is the guide's own, in dialogs too; here it is told.
    QAction* guide = help->addAction(QStringLiteral("&Guide\tF1"));
    guide->setObjectName(QStringLiteral("Guide"));
    QObject::connect(guide, &QAction::triggered, this, [this] {
        if (OpenGuide) {
            OpenGuide();
        }
    });
    QAction* about = help->addAction(QStringLiteral("&About"));
    about->setObjectName(QStringLiteral("OpenAbout"));
    QObject::connect(about, &QAction::triggered, this, &MainWindow::OpenAbout);
}

void MainWindow::OpenAbout() {
    if (about_ == nullptr) {
        about_ = new AboutWindow(Folder, this);
    }
    about_->show();
    about_->raise();
    about_->activateWindow();
}

void MainWindow::BuildEditMenu() {
    QMenu* edit = menuBar()->addMenu(QStringLiteral("&Edit"));
    edit->setObjectName(QStringLiteral("Edit"));
    const auto add = [this, edit](controls::Button& button, const QString& name, const QList<QKeySequence>& keys) {
        QAction* entry = edit->addAction(QString());
        entry->setObjectName(name);
        entry->setShortcuts(keys);
        const auto show = [entry, &button] {
            entry->setText(WithoutMnemonic(button.Caption()));
            entry->setEnabled(button.Enabled());
            entry->setChecked(button.InForce());
        };
        show();
        Subscribe(*entry, button, [show](controls::Aspect) { show(); });
        QObject::connect(entry, &QAction::triggered, this, [this, &button, show] {
            entry_.Run([&] { button.UserClick(); });
            show(); // a mark that the toolkit set by itself
        });
        return entry;
    };
    add(record_.Undo, QStringLiteral("Undo"), {QKeySequence(Qt::CTRL | Qt::Key_Z)});
    add(record_.Redo, QStringLiteral("Redo"),
        {QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    edit->addSeparator();
    QAction* compare = add(record_.Compare, QStringLiteral("Compare"), {QKeySequence(Qt::CTRL | Qt::Key_Space)});
    compare->setCheckable(true);
    compare->setAutoRepeat(false);
    QObject::connect(compare, &QAction::triggered, this, [this] {
        if (record_.Compare.InForce()) {
            compare_key_.Arm();
        }
    });
    compare_key_.LetGo = [this] {
        if (record_.Compare.InForce()) {
            entry_.Run([&] { record_.Compare.UserClick(); });
        }
    };
    add(record_.Revert, QStringLiteral("Revert"), {});
}

void MainWindow::BuildStatusLine() {
    auto* line = new FullTextLabel;
    line->setObjectName(QStringLiteral("StatusLine"));
    line->setContentsMargins(6, 0, 6, 0);
    Bind(record_.StatusLine, *line);
    statusBar()->addWidget(line, 1);
}

void MainWindow::BindTimers() {
    using enum controls::EventSource::Kind;
    for (const auto& [timer, name, kind] :
         {std::tuple(&record_.SerialTimer, "SerialTimer", Always), std::tuple(&record_.Timer1, "Timer1", Tick),
          // Writes files alone, and a question that stands must not keep it waiting.
          std::tuple(&record_.AutosaveTimer, "AutosaveTimer", Always)}) {
        auto* toolkit_timer = new QTimer(this);
        toolkit_timer->setObjectName(QLatin1String(name));
        toolkit_timer->setTimerType(Qt::PreciseTimer);
        Bind(*timer, *toolkit_timer, entry_.As(kind));
    }
}

void MainWindow::Place() {
    resize(StartSize);
    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        const QRect room = screen->availableGeometry();
        resize(StartSize.boundedTo(room.marginsRemoved(ExpectedFrame).size()));
        QRect whole = rect().marginsAdded(ExpectedFrame);
        whole.moveCenter(room.center());
        move(whole.topLeft());
    }
}

void MainWindow::KeepOnScreen() {
    const QRect room = screen()->availableGeometry();
    if (isMaximized() || isFullScreen() || room.contains(frameGeometry())) {
        return;
    }
    const QSize frame = frameGeometry().size() - size();
    resize(size().boundedTo(room.size() - frame));
    const QSize whole = size() + frame;
    move(std::clamp(x(), room.left(), std::max(room.left(), room.right() + 1 - whole.width())),
         std::clamp(y(), room.top(), std::max(room.top(), room.bottom() + 1 - whole.height())));
}

void MainWindow::showEvent(QShowEvent* event) {
    QMainWindow::showEvent(event);
    if (!event->spontaneous()) {
        // What frame the desktop puts around it is known from now on.
        QTimer::singleShot(0, this, [this] { KeepOnScreen(); });
    }
}

void MainWindow::changeEvent(QEvent* event) {
    QMainWindow::changeEvent(event);
    // The toolkit joins the title of a maximised window to this one's, with the blanks that pad a name.
    if (event->type() == QEvent::WindowTitleChange) {
        static const QRegularExpression padding(QStringLiteral("(?<= - \\[)\\s+|\\s+(?=\\]$)"));
        setWindowTitle(windowTitle().remove(padding));
    }
}

void MainWindow::closeEvent(QCloseEvent* event) {
    bool may_close = false;
    entry_.Run([&] { may_close = query_unload_(); });
    event->setAccepted(may_close);
}

} // namespace nrv::ui
