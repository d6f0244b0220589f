#include "ui/windows/splash_window.h"

#include "ui/binding/binding.h"
#include "ui/windows/form_binding.h"
#include "ui/windows/splash_picture.h"

#include <QCloseEvent>
#include <QGuiApplication>
#include <QLabel>
#include <QPainter>
#include <QScreen>
#include <QTimer>

namespace nrv::ui {
namespace {

constexpr QSize WindowSize(480, 330);
constexpr int SplashMargin = 20;
constexpr QRect PictureArea(SplashMargin, 108, 440, 176);

QLabel* AddLabel(QWidget* parent, const QString& text, const QRect& place, int pixels, QFont::Weight weight) {
    auto* label = new QLabel(text, parent);
    QFont font = label->font();
    font.setPixelSize(pixels);
    font.setWeight(weight);
    label->setFont(font);
    label->setGeometry(place);
    return label;
}

} // namespace

SplashWindow::SplashWindow(controls::FrmSplash& record, const controls::EventEntry& entry)
    : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint) {
    setObjectName(QStringLiteral("frmSplash"));
    setFixedSize(WindowSize);
    BindForm(record.Window, *this, *this);
    setWindowTitle(QStringLiteral("NRV-718"));

    AddLabel(this, QStringLiteral("NRV-718"), {SplashMargin, 16, 260, 46}, 34, QFont::DemiBold);
    QLabel* kind = AddLabel(this, QStringLiteral("X-over"), {300, 30, 160, 30}, 18, QFont::Normal);
    kind->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    AddLabel(this, QStringLiteral("Multi device remote control"), {SplashMargin, 64, 440, 26}, 15, QFont::Normal);

    // Places of their own, so that a repaint in the middle of an exchange finds them laid out.
    QLabel* searching = AddLabel(this, QString(), {SplashMargin, 294, 220, 22}, 12, QFont::Normal);
    searching->setObjectName(QStringLiteral("Searching"));
    Bind(record.Searching, *searching);
    QLabel* progress = AddLabel(this, QString(), {240, 294, 220, 22}, 12, QFont::DemiBold);
    progress->setObjectName(QStringLiteral("Progress"));
    progress->setAlignment(Qt::AlignRight | Qt::AlignVCenter);
    Bind(record.Progress, *progress);

    QLabel* reason = AddLabel(this, QString(), {SplashMargin, 287, 440, 40}, 12, QFont::Normal);
    reason->setObjectName(QStringLiteral("Reason"));
    reason->setWordWrap(true);
    Bind(record.Reason, *reason);

    auto* timer = new QTimer(this);
    timer->setObjectName(QStringLiteral("Timer1"));
    Bind(record.Timer1, *timer, entry.As(controls::EventSource::Kind::Tick));

    if (const QScreen* screen = QGuiApplication::primaryScreen()) {
        move(screen->availableGeometry().center() - rect().center());
    }
}

void SplashWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Window));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
    PaintSplashPicture(painter, PictureArea, palette());
}

void SplashWindow::closeEvent(QCloseEvent* event) {
    event->ignore();
}

} // namespace nrv::ui
