// Every enabled text of every window, light and dark, against the ground it stands on.

#include "contrast.h"
#include "rack_test.h"
#include "ui/windows/connection_dialog.h"
#include "ui/windows/splash_window.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QAbstractItemView>
#include <QLabel>
#include <QTabBar>

#include <map>

using namespace nrv;
using namespace nrv::test;

namespace {

constexpr int Scale = 4; // thin strokes cover whole pixels
constexpr double Readable = 4.5;

QImage Painted(QWidget& window) {
    QImage image(window.size() * Scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(Scale);
    image.fill(Qt::magenta);
    window.render(&image);
    return image;
}

/// The most that any ink of a place stands out from its ground, which is its most frequent colour. Colours of a few
/// pixels only are no ink.
double ContrastIn(const QImage& image, const QRect& place) {
    const QImage part = image.copy(QRect(place.topLeft() * Scale, place.size() * Scale));
    std::map<QRgb, int> counts;
    for (int y = 0; y < part.height(); ++y) {
        auto last = counts.end(); // most pixels have their neighbour's colour
        for (int x = 0; x < part.width(); ++x) {
            const QRgb pixel = part.pixel(x, y);
            if (last == counts.end() || last->first != pixel) {
                last = counts.try_emplace(pixel, 0).first;
            }
            ++last->second;
        }
    }
    const auto ground = std::max_element(counts.begin(), counts.end(),
                                         [](const auto& one, const auto& other) { return one.second < other.second; });
    double most = 1.0;
    for (const auto& [colour, count] : counts) {
        if (count >= 6) {
            most = std::max(most, Contrast(QColor(colour), QColor(ground->first)));
        }
    }
    return most;
}

/// The text that a widget shows, and where: borders, marks and arrows left out.
struct Shown {
    QString Text;
    QRect Place;
};
std::vector<Shown> TextsOf(const QWidget& widget) {
    const QRect all = widget.rect();
    if (const auto* label = qobject_cast<const QLabel*>(&widget)) {
        return {{label->text(), all}};
    }
    if (const auto* tabs = qobject_cast<const QTabBar*>(&widget)) {
        std::vector<Shown> shown;
        for (int tab = 0; tab < tabs->count(); ++tab) {
            shown.push_back({tabs->tabText(tab), tabs->tabRect(tab).adjusted(16, 4, -3, -3)});
        }
        return shown;
    }
    if (const auto* button = qobject_cast<const QAbstractButton*>(&widget)) {
        const bool with_mark = widget.inherits("QCheckBox") || widget.inherits("QRadioButton");
        return {{button->text(), all.adjusted(with_mark ? 17 : 5, 4, -4, -4)}};
    }
    if (const auto* edit = qobject_cast<const QLineEdit*>(&widget)) {
        return {{edit->text(), all.adjusted(4, 3, -4, -3)}};
    }
    if (const auto* list = qobject_cast<const QComboBox*>(&widget)) {
        return {{list->currentText(), all.adjusted(4, 4, -20, -4)}};
    }
    return {};
}

} // namespace

class ContrastTest : public RackTest {
    Q_OBJECT

    /// The texts of a window that cannot be read, in words; empty when all can.
    QString Unreadable(QWidget& window) {
        const QImage image = Painted(window);
        const int seen_before = seen_;
        QString unreadable;
        for (const QWidget* widget : window.findChildren<QWidget*>()) {
            if (!widget->isVisibleTo(&window) || !widget->isEnabled() || widget->visibleRegion().isEmpty()) {
                continue;
            }
            for (const Shown& shown : TextsOf(*widget)) {
                const QRect place(widget->mapTo(&window, shown.Place.topLeft()), shown.Place.size());
                if (shown.Text.trimmed().isEmpty() || !window.rect().contains(place)) {
                    continue;
                }
                ++seen_;
                const double contrast = ContrastIn(image, place);
                if (contrast < Readable) {
                    unreadable += QStringLiteral("%1 \"%2\" %3; ").arg(widget->objectName(), shown.Text).arg(contrast);
                }
            }
        }
        return seen_ == seen_before ? QStringLiteral("no text was looked at") : unreadable;
    }
    int seen_ = 0;

  private slots:
    void init() { seen_ = 0; }
    void cleanup() {
        TakeDown();
        UseGround(Qt::white);
    }

    void EveryEnabledTextCanBeRead_data() {
        QTest::addColumn<QColor>("ground");
        QTest::newRow("light") << QColor(Qt::white);
        QTest::newRow("dark") << QColor(Qt::black);
    }
    void EveryEnabledTextCanBeRead() {
        QFETCH(QColor, ground);
        UseGround(ground);
        QVERIFY(ConnectAndOpenAll(RandomRack({Id})));
        QWidget& window = *desk_->Window()->widget();
        for (int tab = 0; tab < controls::TabCount; ++tab) {
            desk_->ShowTab(tab);
            QCOMPARE(Unreadable(window), QString());
        }
        desk_->ShowTab(2);
        driver::ClickMark(desk_->Control("Check1", 10)); // muted
        desk_->Form().Text9[2].SetMarked(true);          // limiting
        QCOMPARE(Unreadable(window), QString());
        QVERIFY(seen_ > 400);
        QCOMPARE(Unreadable(*driver::Find(QStringLiteral("MDIFrmMain"))), QString());
        for (const auto& [tool, name] : DialogsOfTools) {
            QString said;
            QVERIFY2(desk_->WithTool(tool, name, [&](QWidget& dialog) { said = Unreadable(dialog); }), name);
            QCOMPARE(said, QString());
        }
        driver::BoxAnswers boxes({QStringLiteral("No")});
        QString question;
        boxes.OnBox = [&](QWidget& box) { question = Unreadable(box); };
        driver::Click(desk_->Control("Command1", 2));
        QCOMPARE(question, QString());
        QVERIFY(!boxes.Seen().empty());
    }

    void TheWindowsOfTheStartCanBeRead_data() { EveryEnabledTextCanBeRead_data(); }
    void TheWindowsOfTheStartCanBeRead() {
        QFETCH(QColor, ground);
        UseGround(ground);
        controls::Windows windows;
        controls::EventBoundary events(windows);
        controls::FrmSelect select;
        select.Window.SetSize(controls::FrmSelect::TwentyWidth, controls::FrmSelect::Height);
        for (controls::List& id : select.DeviceIds) {
            id.Select(5);
        }
        select.EqualIds.SetCaption("Device2 and Device7 have one ID.");
        ui::ConnectionDialog dialog(
            select, {events, controls::EventSource::Kind::Dialog}, [] { return true; }, nullptr);
        dialog.show();
        QCOMPARE(Unreadable(dialog), QString());
        QVERIFY(seen_ > 45); // twenty lines of two, and the left column
        seen_ = 0;
        controls::FrmSplash splash;
        splash.Progress.SetCaption("Searching ID:17");
        ui::SplashWindow window(splash, {events, controls::EventSource::Kind::Program});
        window.show();
        QCOMPARE(Unreadable(window), QString());
        QVERIFY(seen_ > 0);
    }

    void ATextThatIsTooDimIsFound() {
        UseGround(Qt::white);
        QVERIFY(ConnectAndOpenAll(RandomRack({Id})));
        QLabel label(QStringLiteral("Name"), desk_->Window()->widget());
        label.setGeometry(500, 4, 60, 16);
        QPalette palette;
        palette.setColor(QPalette::WindowText, QColor(0xA0, 0xA0, 0xA0));
        label.setPalette(palette);
        label.show();
        QVERIFY(Unreadable(*desk_->Window()->widget()).contains(QStringLiteral("\"Name\"")));
    }
};

NRV_UI_TEST(ContrastTest);
#include "contrast_test.moc"
