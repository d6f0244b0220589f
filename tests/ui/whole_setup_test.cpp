// One set-up from the unpacked adapter to the stored preset - find, open, route, cross over, equalise, delay, limit,
// name, store - by mouse, by the keyboard alone, and through the accessibility tree alone. The device ends with the
// same bytes.

#include "rack_test.h"
#include "ui/widgets/fader.h"
#include "ui_test.h"

#include <QAccessible>
#include <QPushButton>
#include <QTabBar>
#include <QTableWidget>
#include <QTimer>

#include <memory>

using namespace nrv;
using namespace nrv::test;
using driver::Find;

namespace {

/// What does the work: every control is found by its name in a window.
class Hands {
  public:
    Hands() = default;
    virtual ~Hands() = default;
    Hands(const Hands&) = delete;
    Hands& operator=(const Hands&) = delete;

    virtual void Press(QWidget& button) = 0;
    virtual void MoveTo(ui::Fader& fader, int position) = 0;
    virtual void Enter(QWidget& field, const QString& text) = 0;
    virtual void Choose(QComboBox& list, int entry) = 0;
    virtual void ShowTab(QTabBar& tabs, int tab) = 0;
    virtual void OpenRow(QTableWidget& table, int row) = 0;
};

class MouseHands : public Hands {
  public:
    void Press(QWidget& button) override { driver::ClickMark(&button); }
    void MoveTo(ui::Fader& fader, int position) override {
        const QPoint cap(fader.width() / 2, qRound(fader.PlaceOf(fader.value())));
        QTest::mousePress(&fader, Qt::LeftButton, {}, cap);
        QTest::mouseMove(&fader, QPoint(cap.x(), qRound(fader.PlaceOf(position))));
        QTest::mouseRelease(&fader, Qt::LeftButton, {}, QPoint(cap.x(), qRound(fader.PlaceOf(position))));
        for (int tries = 0; tries < 40 && fader.value() != position; ++tries) { // a pixel is not a position
            QTest::keyClick(&fader, fader.value() > position ? Qt::Key_Up : Qt::Key_Down);
        }
    }
    void Enter(QWidget& field, const QString& text) override {
        QTest::mouseClick(&field, Qt::LeftButton);
        Type(&field, text);
        QTest::keyClick(&field, Qt::Key_Return);
    }
    void Choose(QComboBox& list, int entry) override { driver::Choose(&list, entry); }
    void ShowTab(QTabBar& tabs, int tab) override { driver::ShowTab(&tabs, tab); }
    void OpenRow(QTableWidget& table, int row) override { driver::DoubleClickRow(&table, row); }
};

class KeyboardHands : public Hands {
  public:
    void Press(QWidget& button) override {
        if (GoTo(button)) {
            Key(Qt::Key_Space);
        }
    }
    void MoveTo(ui::Fader& fader, int position) override {
        GoTo(fader);
        for (int tries = 0; tries < 300 && fader.value() != position; ++tries) {
            const bool up = fader.value() > position;
            const bool far = std::abs(fader.value() - position) >= 5;
            Key(far ? (up ? Qt::Key_PageUp : Qt::Key_PageDown) : (up ? Qt::Key_Up : Qt::Key_Down));
        }
    }
    void Enter(QWidget& field, const QString& text) override {
        GoTo(field);
        Key(Qt::Key_A, Qt::ControlModifier);
        QTest::keyClicks(QApplication::focusWidget(), text);
        Key(Qt::Key_Return);
    }
    void Choose(QComboBox& list, int entry) override {
        GoTo(list);
        for (int tries = 0; tries < 60 && list.currentIndex() != entry; ++tries) {
            Key(list.currentIndex() > entry ? Qt::Key_Up : Qt::Key_Down);
        }
    }
    void ShowTab(QTabBar& tabs, int tab) override {
        Q_UNUSED(tabs);
        Key(static_cast<Qt::Key>(Qt::Key_1 + tab), Qt::ControlModifier);
    }
    void OpenRow(QTableWidget& table, int row) override {
        GoTo(table);
        for (int tries = 0; tries < 40 && table.currentRow() != row; ++tries) {
            Key(table.currentRow() > row ? Qt::Key_Up : Qt::Key_Down);
        }
        Key(Qt::Key_Return);
    }

  private:
    static void Key(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        if (QWidget* const there = QApplication::focusWidget()) {
            QTest::keyClick(there, key, modifiers);
        }
    }
    /// What a window manager does when a window comes up or another goes.
    static void TakeKeyboardTo(QWidget& window) {
        const auto has_it = [&window] {
            const QWidget* const there = QApplication::focusWidget();
            return there != nullptr && there->window() == &window;
        };
        for (int tries = 0; tries < 250 && !has_it(); ++tries) {
            window.activateWindow();
            QTest::qWait(20);
        }
    }
    /// By Tab alone, as far as it takes, and by the arrows within a group of options.
    bool GoTo(QWidget& widget) {
        TakeKeyboardTo(*widget.window());
        for (int steps = 0; steps < 300 && QApplication::focusWidget() != &widget; ++steps) {
            QWidget* const there = QApplication::focusWidget();
            const bool same_group = there != nullptr && there->inherits("QRadioButton") &&
                                    widget.inherits("QRadioButton") && there->parentWidget() == widget.parentWidget();
            Key(same_group ? Qt::Key_Down : Qt::Key_Tab);
        }
        if (QApplication::focusWidget() != &widget) {
            const QWidget* const there = QApplication::focusWidget();
            qWarning("the Tab key does not lead to %s but to %s", qPrintable(widget.objectName()),
                     there != nullptr ? qPrintable(there->objectName()) : "nothing");
            return false;
        }
        return true;
    }
};

class ReaderHands : public Hands {
  public:
    void Press(QWidget& button) override {
        QAccessibleActionInterface& actions = *Told(button).actionInterface();
        const QStringList names = actions.actionNames();
        actions.doAction(names.contains(QAccessibleActionInterface::pressAction())
                             ? QAccessibleActionInterface::pressAction()
                             : QAccessibleActionInterface::toggleAction());
        QTest::qWait(200); // the toolkit's own buttons are seen to go down first
    }
    void MoveTo(ui::Fader& fader, int position) override {
        Told(fader).valueInterface()->setCurrentValue(fader.maximum() - position);
    }
    void Enter(QWidget& field, const QString& text) override { Told(field).setText(QAccessible::Value, text); }
    void Choose(QComboBox& list, int entry) override { Told(list).valueInterface()->setCurrentValue(entry); }
    void ShowTab(QTabBar& tabs, int tab) override {
        Told(tabs).child(tab)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }
    void OpenRow(QTableWidget& table, int row) override {
        Told(table).child(row)->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
    }

  private:
    static QAccessibleInterface& Told(QWidget& widget) { return *QAccessible::queryAccessibleInterface(&widget); }
};

} // namespace

class WholeSetupTest : public RackTest {
    Q_OBJECT

    struct Ended {
        simulator::PresetBody Live{};
        std::vector<simulator::Byte> Memory;
    };

    QWidget& In(QWidget& window, const char* name) {
        QWidget* const widget = Find(QLatin1String(name), &window);
        if (widget == nullptr) {
            qFatal("there is no %s", name);
        }
        return *widget;
    }
    template <class Widget>
    Widget& As(const char* name, int index = controls::NoIndex) {
        return *qobject_cast<Widget*>(desk_->Control(name, index));
    }
    /// Answers the questions that come up, by the same hands.
    std::unique_ptr<QTimer> AnswerWithYes(Hands& hands) {
        auto timer = std::make_unique<QTimer>();
        connect(timer.get(), &QTimer::timeout, timer.get(), [&hands] {
            QWidget* const box = QApplication::activeModalWidget();
            if (box == nullptr || box->objectName() != QLatin1String("MessageBox")) {
                return;
            }
            for (QPushButton* button : box->findChildren<QPushButton*>()) {
                if (button->text().remove(u'&') == QLatin1String("Yes")) {
                    hands.Press(*button);
                    return;
                }
            }
        });
        timer->start(20);
        return timer;
    }
    /// Works a dialog when it shows.
    bool InDialog(Hands& hands, int tool, const char* name, const std::function<void(QWidget&)>& work) {
        const driver::WhenShown shown(QLatin1String(name), work);
        hands.Press(*desk_->Control("Command2", tool));
        return driver::WaitUntil([&] { return shown.Done(); });
    }

    void FindTheDevice(Hands& hands) {
        bool worked = false;
        QTimer watch;
        connect(&watch, &QTimer::timeout, &watch, [&] {
            QWidget* dialog = Find(QStringLiteral("FrmSelect"));
            if (dialog == nullptr || !dialog->isVisible()) {
                return;
            }
            watch.stop();
            hands.Choose(static_cast<QComboBox&>(In(*dialog, "ComSelect")), 1);
            worked = true;
            hands.Press(In(*dialog, "Proceed"));
        });
        watch.start(20);
        desk_->Application().Start();
        QVERIFY(driver::WaitUntil([&] { return worked; }, 10000));
        QVERIFY(driver::WaitUntil([&] { return desk_->Logic().State.FoundLast == 0; }, 10000));
        QVERIFY(driver::WaitUntil([&] { return !desk_->Logic().List.Timer1.Running(); }, 10000));
    }

    void SetUpTheDevice(Hands& hands) {
        FindTheDevice(hands);
        auto& table = *driver::FindAs<QTableWidget>(QStringLiteral("Devices"));
        hands.OpenRow(table, 0);
        QVERIFY(driver::WaitUntil([&] { return desk_->IsOpen(0); }));
        hands.ShowTab(As<QTabBar>("SSTab1"), 2);
        QVERIFY(desk_->Control("Combo3", 0)->isVisible());
        hands.Choose(As<QComboBox>("Combo3", 0), 1);
        hands.Choose(As<QComboBox>("Combo2", 0), 8);
        hands.Enter(*desk_->Control("Text8", 0), QStringLiteral("100"));
        hands.Choose(As<QComboBox>("Combo2", 1), 9);
        hands.Enter(*desk_->Control("Text8", 1), QStringLiteral("2000"));
        hands.Enter(*desk_->Control("Text4", 21), QStringLiteral("1010"));
        hands.MoveTo(As<ui::Fader>("Slider2", 21), 60);
        hands.Enter(*desk_->Control("Text5", 21), QStringLiteral("1.05"));
        hands.Enter(*desk_->Control("Text2", 10), QStringLiteral("2.5"));
        hands.MoveTo(As<ui::Fader>("Slider4", 2), 20);
        hands.Press(*desk_->Control("Check2", 10));
        const auto questions = AnswerWithYes(hands);
        QVERIFY(InDialog(hands, controls::EditNamesTool, "FrmEditLabel", [&](QWidget& dialog) {
            hands.Enter(In(dialog, "Text1(2)"), QStringLiteral("Subs"));
            if (dialog.isVisible()) {
                hands.Press(In(dialog, "Command1(0)"));
            }
        }));
        QVERIFY(driver::WaitUntil([&] { return QApplication::activeModalWidget() == nullptr; }));
        QVERIFY(InDialog(hands, controls::StorePresetTool, "FrmStore", [&](QWidget& dialog) {
            hands.Choose(static_cast<QComboBox&>(In(dialog, "Combo1")), 2);
            hands.Enter(In(dialog, "Text1"), QStringLiteral("Hall"));
            if (dialog.isVisible()) {
                hands.Press(In(dialog, "Command1(1)"));
            }
        }));
        QVERIFY(driver::WaitUntil([&] { return QApplication::activeModalWidget() == nullptr; }, 20000));
    }

    Ended EndOf(Hands& hands) {
        simulator::Rack rack = FactoryRack({0});
        SetUp(std::move(rack));
        SetUpTheDevice(hands);
        Ended ended;
        ended.Live = desk_->Live(0);
        for (std::size_t address = 0; address < simulator::MemorySize; ++address) {
            ended.Memory.push_back(desk_->Memory(0, address));
        }
        TakeDown();
        return ended;
    }

  private slots:
    void initTestCase() {
        MouseHands mouse;
        by_mouse_ = EndOf(mouse);
        // What the set-up means, by the places of the image.
        using testing::ImageLayout;
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Source(0)]), 1);
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Crossover(0, 0) + 2]), 8);
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Crossover(0, 1) + 2]), 9);
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Peq(2, 1) + 4]), 90); // 150 - 60
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Peq(2, 1) + 1]), 68); // 1000 Hz
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Peq(2, 1) + 2]), 20); // 1.05 octaves
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Phase(2)]), 1);
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Dynamics(2) + 3]), 40);     // 60 - 20
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Crossover(0, 0) + 1]), 28); // 100 Hz
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Crossover(0, 1) + 1]), 80); // 2000 Hz
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Delay(2) + 1]), 2);
        QCOMPARE(int(by_mouse_.Live[ImageLayout::Delay(2) + 2]), 24); // 0.5 ms in steps of 0.021 ms
        const auto text = [](const auto& bytes, std::size_t first, std::size_t size) {
            return std::string(bytes.begin() + std::ptrdiff_t(first), bytes.begin() + std::ptrdiff_t(first + size));
        };
        QCOMPARE(text(by_mouse_.Live, ImageLayout::Name(2), 6), std::string(" Subs "));
        // Stored into the third position: its mark, its name, and the preset as it is live but for its mutes.
        QCOMPARE(int(by_mouse_.Memory[48 + 2]), 0x55);
        QCOMPARE(text(by_mouse_.Memory, 64 + 16 * 2, 16), std::string("Hall            "));
        simulator::PresetBody stored{};
        constexpr std::ptrdiff_t third = 640 + 432 * 2;
        std::copy_n(by_mouse_.Memory.begin() + third, stored.size(), stored.begin());
        QCOMPARE(ImageDifference(stored, by_mouse_.Live), QString());
    }
    void cleanup() { TakeDown(); }

    void TheKeyboardAloneLeavesTheSameBytes() {
        KeyboardHands keys;
        ExpectSame(EndOf(keys));
    }

    void TheAccessibilityTreeAloneLeavesTheSameBytes() {
        ReaderHands reader;
        ExpectSame(EndOf(reader));
    }

  private:
    void ExpectSame(const Ended& ended) {
        QCOMPARE(ImageDifference(ended.Live, by_mouse_.Live), QString());
        for (std::size_t address = 0; address < ended.Memory.size(); ++address) {
            QVERIFY2(ended.Memory[address] == by_mouse_.Memory[address], qPrintable(QString::number(address)));
        }
    }

    Ended by_mouse_;
};

NRV_UI_TEST(WholeSetupTest);
#include "whole_setup_test.moc"
