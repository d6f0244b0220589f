// The main window with its frame on a small screen, at every scale.

#include "controls/forms.h"
#include "ui/look/theme.h"
#include "ui/windows/main_window.h"
#include "ui_test.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QProcess>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

using namespace nrv;

namespace {

/// What a desktop puts around a window at the least: a title above it and a line on the other sides.
constexpr QMargins DesktopFrame(1, 28, 1, 1);

} // namespace

class SmallScreenTest : public QObject {
    Q_OBJECT

  private slots:
    void FitsThisScreen();
    void TheStatusLineIsOnTheScreen_data();
    void TheStatusLineIsOnTheScreen();
};

void SmallScreenTest::FitsThisScreen() {
    ui::ApplyTheme(*qApp);
    controls::Windows windows;
    controls::EventBoundary boundary(windows);
    controls::MDIFrmMain record;
    ui::MainWindow window(record, {boundary, controls::EventSource::Kind::Program}, [] { return true; });
    window.show();
    QTest::qWait(50);
    const QRect room = window.screen()->availableGeometry();
    const QRect whole =
        QRect(window.pos(), window.size() + QSize(DesktopFrame.left() + DesktopFrame.right(), DesktopFrame.top()));
    const auto* line = window.findChild<QLabel*>(QStringLiteral("StatusLine"));
    const QPoint foot = line->mapToGlobal(line->rect().bottomRight());
    const bool fits =
        room.contains(whole) && room.contains(window.frameGeometry()) && room.contains(foot) && line->height() > 10;
    if (!fits) {
        qWarning() << "room" << room << "window" << whole << "foot of the status line" << foot;
    }
    QVERIFY(fits);
    // One that stood beyond the edge comes back when it is shown.
    window.hide();
    window.setGeometry(room.adjusted(40, 60, 300, 300));
    window.show();
    QTest::qWait(50);
    const bool comes_back = room.contains(window.frameGeometry());
    if (!comes_back) {
        qWarning() << "room" << room << "window" << window.frameGeometry();
    }
    QVERIFY(comes_back);
}

void SmallScreenTest::TheStatusLineIsOnTheScreen_data() {
    QTest::addColumn<QSize>("screen");
    QTest::addColumn<QString>("scale");
    QTest::newRow("800 x 600") << QSize(800, 600) << QStringLiteral("1");
    QTest::newRow("1366 x 768") << QSize(1366, 768) << QStringLiteral("1");
    QTest::newRow("1366 x 768 at 125 %") << QSize(1366, 768) << QStringLiteral("1.25");
    QTest::newRow("1366 x 768 at 150 %") << QSize(1366, 768) << QStringLiteral("1.5");
    QTest::newRow("1920 x 1080 at 200 %") << QSize(1920, 1080) << QStringLiteral("2");
    QTest::newRow("2560 x 1440") << QSize(2560, 1440) << QStringLiteral("1");
}

void SmallScreenTest::TheStatusLineIsOnTheScreen() {
    QFETCH(QSize, screen);
    QFETCH(QString, scale);
    const QTemporaryDir folder;
    QFile config(folder.filePath(QStringLiteral("screens.json")));
    QVERIFY(config.open(QIODevice::WriteOnly));
    config.write(QStringLiteral("{\"screens\": [{\"name\": \"one\", \"x\": 0, \"y\": 0, \"width\": %1, \"height\": %2, "
                                "\"logicalDpi\": 96, \"logicalBaseDpi\": 96, \"dpr\": 1}]}")
                     .arg(screen.width())
                     .arg(screen.height())
                     .toLatin1());
    config.close();
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen:configfile=") + config.fileName());
    environment.insert(QStringLiteral("QT_SCALE_FACTOR"), scale);
    process.setProcessEnvironment(environment);
    // A screen is a process's own.
    process.start(QCoreApplication::applicationFilePath(),
                  {QStringLiteral("small_screen_test"), QStringLiteral("FitsThisScreen")});
    QVERIFY(process.waitForFinished(20000));
    const QByteArray said = process.readAllStandardOutput();
    QVERIFY2(process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0, said.constData());
    QVERIFY2(said.contains("PASS   : SmallScreenTest::FitsThisScreen()"), said.constData());
}

NRV_UI_TEST(SmallScreenTest);

#include "small_screen_test.moc"
