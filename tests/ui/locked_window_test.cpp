// The window of a locked device says that it is locked, and what it shows can still be read.

#include "contrast.h"
#include "rack_test.h"
#include "ui_test.h"

#include <QToolButton>

#include <algorithm>
#include <map>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;

namespace {

constexpr int LockedOptions = PlainOptions + 128;

/// The text's ink against its ground, by the pixels inside a widget's border, drawn large so that strokes are full.
double ContrastOf(QWidget& widget) {
    QImage image(widget.size() * 4, QImage::Format_RGB32);
    image.setDevicePixelRatio(4.0);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawWindowBackground | QWidget::DrawChildren);
    std::map<QRgb, int> counts;
    for (int y = 16; y < image.height() - 16; ++y) {
        for (int x = 16; x < image.width() - 16; ++x) {
            ++counts[image.pixel(x, y)];
        }
    }
    const auto ground = std::max_element(counts.begin(), counts.end(),
                                         [](const auto& a, const auto& b) { return a.second < b.second; });
    double contrast = 1.0;
    for (const auto& [colour, count] : counts) {
        contrast = std::max(contrast, Contrast(QColor(colour), QColor(ground->first)));
    }
    return contrast;
}

} // namespace

class LockedWindowTest : public RackTest {
    Q_OBJECT

  private slots:
    void cleanup() {
        TakeDown();
        QApplication::setPalette(QPalette());
        ui::ApplyTheme(*qApp);
    }

    void SaysThatItIsLocked();
    void NothingCanBeSetButTheUnitAndTwoLimiters();
    void LockingAndUnlockingIsToldWithItsWayBack();
    void ADeviceThatDiesWhileItIsLockedSaysSoAndNothingElse();
    void ItsValuesStayReadable_data();
    void ItsValuesStayReadable();

  private:
    void OpenDevices(int option_bits) {
        simulator::Rack rack = RandomRack({Id, OtherId});
        rack.At(Id).SetMemory(simulator::OptionBitsAddress, static_cast<simulator::Byte>(option_bits));
        QVERIFY(ConnectAndOpenAll(std::move(rack)));
        StandReady();
    }
    QImage TitleBar(int slot) {
        QImage image = desk_->Window(slot)->grab().toImage();
        return image.copy(0, 0, image.width(), 26);
    }
    QImage Padlock(int slot) {
        auto* button = qobject_cast<QToolButton*>(desk_->Control("Command2", controls::PasswordTool, slot));
        return button->icon().pixmap(18).toImage();
    }
    QString Password() {
        QString text;
        for (const double code : desk_->Logic().Stores.ParamValues[Id].DevicePassword) {
            text += QLatin1Char(static_cast<char>(code));
        }
        return text;
    }
};

void LockedWindowTest::SaysThatItIsLocked() {
    OpenDevices(LockedOptions);
    const QImage open = Padlock(1);
    QVERIFY(Padlock(0) != open);
    const QString title = desk_->Window(0)->windowTitle();
    QVERIFY(title.startsWith(QStringLiteral("ID:5 NRV-718 - Name Preset loaded from device: ")));
    const QImage locked_bar = TitleBar(0);
    desk_->Form(0).Window.SetMark("");
    QVERIFY(TitleBar(0) != locked_bar);
    desk_->Form(0).Window.SetMark("Locked");
    QCOMPARE(TitleBar(0), locked_bar);
    QCOMPARE(desk_->Window(0)->property("TitleMark").toString(), QStringLiteral("Locked"));
    QCOMPARE(desk_->Window(1)->property("TitleMark").toString(), QString());
    QCOMPARE(other_->Difference(), QString());
}

void LockedWindowTest::NothingCanBeSetButTheUnitAndTwoLimiters() {
    OpenDevices(LockedOptions);
    QStringList open;
    int shut = 0;
    controls::ForEachControl(desk_->Form(0), [&]<class Control>(std::string_view name, int index, const Control&) {
        constexpr bool buttons = std::is_same_v<Control, controls::Button> ||
                                 std::is_same_v<Control, controls::Label> ||
                                 std::is_same_v<Control, controls::TabControl>;
        const QWidget* const widget = desk_->Control(std::string(name).c_str(), index, 0);
        if (buttons || widget == nullptr || widget->focusPolicy() == Qt::NoFocus) {
            return;
        }
        widget->isEnabled() ? void(open << widget->objectName()) : void(++shut);
    });
    QCOMPARE(open,
             QStringList({QStringLiteral("Option1(0)"), QStringLiteral("Option1(1)"), QStringLiteral("Slider4(6)"),
                          QStringLiteral("Slider4(7)"), QStringLiteral("Slider5(6)"), QStringLiteral("Slider5(7)"),
                          QStringLiteral("Slider6(6)"), QStringLiteral("Slider6(7)")}));
    QVERIFY(shut > 300);
}

void LockedWindowTest::LockingAndUnlockingIsToldWithItsWayBack() {
    OpenDevices(PlainOptions);
    const QImage open = Padlock(0);
    std::vector<std::string> told;
    const QString password = Password();
    QVERIFY(desk_->WithTool(controls::PasswordTool, "FrmPassword", [&](QWidget& dialog) {
        Type(In(dialog, "Text1"), password);
        driver::Press(In(dialog, "Text1"), Qt::Key_Return);
        driver::Click(In(dialog, "Check1"));
        driver::Click(In(dialog, "Command1(3)"));
        told.push_back(desk_->Status());
        QVERIFY(Padlock(0) != open);
        QCOMPARE(desk_->Window(0)->property("TitleMark").toString(), QStringLiteral("Locked"));
        driver::Click(In(dialog, "Command1(2)"));
        Type(In(dialog, "Text2"), QStringLiteral("Sesame"));
        Type(In(dialog, "Text3"), QStringLiteral("Sesame"));
        driver::Press(In(dialog, "Text3"), Qt::Key_Return);
        told.push_back(desk_->Status());
        Type(In(dialog, "Text1"), QStringLiteral("Sesame"));
        driver::Press(In(dialog, "Text1"), Qt::Key_Return);
        driver::Click(In(dialog, "Check1"));
        driver::Click(In(dialog, "Command1(3)"));
        told.push_back(desk_->Status());
    }));
    QCOMPARE(told, (std::vector<std::string>{"ID:5 is locked. \"Password\" in its tool bar unlocks it.",
                                             "The new password of ID:5 is set.", "ID:5 is unlocked."}));
    QCOMPARE(Padlock(0), open);
    QCOMPARE(desk_->Window(0)->property("TitleMark").toString(), QString());
    QCOMPARE(desk_->Control("Command2", controls::PasswordTool)->toolTip(), QStringLiteral("Password"));
    QCOMPARE(other_->Difference(), QString());
}

void LockedWindowTest::ADeviceThatDiesWhileItIsLockedSaysSoAndNothingElse() {
    OpenDevices(PlainOptions);
    BoxAnswers boxes({QStringLiteral("OK")});
    const QString password = Password();
    QVERIFY(desk_->WithTool(controls::PasswordTool, "FrmPassword", [&](QWidget& dialog) {
        Type(In(dialog, "Text1"), password);
        driver::Press(In(dialog, "Text1"), Qt::Key_Return);
        driver::Click(In(dialog, "Check1"));
        desk_->LetDie(Id);
        driver::Click(In(dialog, "Command1(3)"));
    }));
    QVERIFY(driver::WaitUntil([&] { return !desk_->IsOpen(0); }));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Title, QLatin1String(DeathTitle));
    QVERIFY2(desk_->Status().starts_with("ID:5 does not answer; the change of the lock stopped"),
             desk_->Status().c_str());
    QCOMPARE(other_->Difference(), QString());
}

void LockedWindowTest::ItsValuesStayReadable_data() {
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << false;
    QTest::newRow("dark") << true;
}

void LockedWindowTest::ItsValuesStayReadable() {
    QFETCH(bool, dark);
    if (dark) {
        QPalette palette;
        palette.setColor(QPalette::Window, QColor(30, 30, 30));
        QApplication::setPalette(palette);
        ui::ApplyTheme(*qApp);
    }
    QCOMPARE(ui::CurrentTheme().Dark, dark);
    OpenDevices(LockedOptions);
    const std::array<std::tuple<int, const char*, int>, 12> values{
        std::tuple(2, "Text4", 20), std::tuple(2, "Text3", 20), std::tuple(2, "Text7", 4),
        std::tuple(2, "Text8", 0),  std::tuple(2, "Text1", 10), std::tuple(2, "Text2", 10),
        std::tuple(2, "Combo2", 0), std::tuple(2, "Text9", 2),  std::tuple(8, "Text1", 0),
        std::tuple(8, "Check1", 0), std::tuple(8, "Check1", 2), std::tuple(8, "Combo4", controls::NoIndex)};
    for (const auto& [tab, name, index] : values) {
        desk_->ShowTab(tab);
        QWidget* value = desk_->Control(name, index);
        QVERIFY2(value != nullptr && value->isVisible() && !value->isEnabled(), name);
        const double contrast = ContrastOf(*value);
        QVERIFY2(contrast >= 4.5, qPrintable(QStringLiteral("%1: %2").arg(QLatin1String(name)).arg(contrast)));
    }
}

NRV_UI_TEST(LockedWindowTest);
#include "locked_window_test.moc"
