// What a user presses and clicks while the program waits for an answer waits in the window system, and comes out on
// whatever lies there then.

#include "rack_test.h"
#include "ui_test.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QProgressBar>
#include <QTimer>
#include <QWindow>

#include <thread>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using driver::FindAs;
using std::chrono::milliseconds;

namespace {

constexpr milliseconds LongWait{700}; ///< what comes in it is thrown away
constexpr milliseconds ShortWait{150};

/// Real mouse events on a window of the system, at the middle of what lies there.
void PostClick(QWidget* widget) {
    QWidget* window = widget->window();
    const QPointF place = widget->mapTo(window, widget->rect().center());
    const QPointF screen = widget->mapToGlobal(widget->rect().center());
    for (const auto& [type, buttons] : {std::pair(QEvent::MouseButtonPress, Qt::MouseButtons(Qt::LeftButton)),
                                        std::pair(QEvent::MouseButtonRelease, Qt::MouseButtons())}) {
        QCoreApplication::postEvent(window->windowHandle(),
                                    new QMouseEvent(type, place, screen, Qt::LeftButton, buttons, Qt::NoModifier));
    }
}

/// What is modal has the keyboard.
void KeyToWhatHasTheFocus(Qt::Key key) {
    QWidget* window =
        QApplication::activeModalWidget() != nullptr ? QApplication::activeModalWidget() : QApplication::activeWindow();
    if (window != nullptr) {
        QTest::keyClick(window->focusWidget() != nullptr ? window->focusWidget() : window, key);
    }
}

class ShowWatch : public QObject {
  public:
    std::function<void()> OnShow;
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Show && OnShow) {
            OnShow();
        }
        return false;
    }
};

} // namespace

class InputWhileStandingStillTest : public RackTest {
    Q_OBJECT

    /// Holds back what is done to the windows until events are served, as the window system does.
    class WindowSystemQueue : public QObject {
      public:
        ~WindowSystemQueue() override {
            for (std::thread& user : users_) {
                user.join();
            }
        }
        void Post(std::function<void()> deed) {
            QMetaObject::invokeMethod(
                this,
                [this, deed = std::move(deed)] {
                    deed();
                    ++served_;
                },
                Qt::QueuedConnection);
        }
        /// While the program stands still there is nobody of its own to do it.
        void PostAfter(milliseconds time, std::function<void()> deed) {
            users_.emplace_back([this, time, deed = std::move(deed)] {
                std::this_thread::sleep_for(time);
                Post(deed);
            });
        }
        int Served() const { return served_; }

      private:
        std::vector<std::thread> users_;
        int served_ = 0;
    };

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId}), controls::GainsTab));
        desk_->BringForward(0);
        QTest::qWait(10);
        StandReady();
        queue_ = std::make_unique<WindowSystemQueue>();
    }
    void cleanup() {
        queue_.reset();
        TakeDown();
    }

    void ClicksDuringAStoreDoNotLandOnWhatLiesBehind();
    void AClickInALongWaitIsThrownAwayAndOneInAShortWaitIsNot_data();
    void AClickInALongWaitIsThrownAwayAndOneInAShortWaitIsNot();
    void AClosingInALongWaitIsThrownAway();
    void AKeyInALongWaitDoesNotAnswerTheBoxAfterIt();
    void TheQuestionIsOffTheScreenBeforeTheFirstFrame();

  private:
    QWidget* Mute(int slot = 0) { return desk_->Control("Check1", 2, slot); }
    bool Store(const std::function<void(QProgressBar&)>& before) {
        return desk_->WithTool(controls::StorePresetTool, "FrmStore", [&](QWidget& dialog) {
            before(*FindAs<QProgressBar>(QStringLiteral("ProgressBar1"), &dialog));
            driver::Click(In(dialog, "Command1(1)"));
        });
    }
    /// That nothing is held, and that the mouse works.
    void CheckOrdinaryClick() {
        desk_->TakeFrames();
        const int before = desk_->Form().Check1[2].Value();
        driver::Click(Mute());
        QCOMPARE(desk_->Form().Check1[2].Value(), 1 - before);
        QCOMPARE(FramesTo(desk_->TakeFrames(), Id).size(), std::size_t{2});
    }

    std::unique_ptr<WindowSystemQueue> queue_;
};

void InputWhileStandingStillTest::ClicksDuringAStoreDoNotLandOnWhatLiesBehind() {
    BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")}));
    Mute()->setFocus();
    int posted = 0;
    QVERIFY(Store([&](QProgressBar& bar) {
        QObject::connect(&bar, &QProgressBar::valueChanged, &bar, [&](int value) {
            if (value == 10) {
                desk_->Line().Order(simulator::Fault::Late(Id, 1, LongWait));
            }
            if (value == 10 || value == 100) {
                ++posted;
                // Straight at it, as a window that is not asked; and by way of the system.
                driver::Click(Mute());
                driver::Click(desk_->Control("Check1", 3, 1));
                PostClick(Mute());
                queue_->Post([this] { driver::Click(Mute()); });
                queue_->Post([] { KeyToWhatHasTheFocus(Qt::Key_Space); });
                queue_->Post([this] { driver::Click(desk_->Control("Check1", 3, 1)); });
                queue_->Post([this] { driver::Click(desk_->Control("Command2", controls::UnconnectTool)); });
                queue_->Post([this] { QTest::mousePress(desk_->Control("Combo4"), Qt::LeftButton); });
                queue_->Post([this] { desk_->Window(0)->close(); });
                queue_->Post([this] { desk_->Window(1)->close(); });
            }
        });
    }));
    QCOMPARE(posted, 2);
    QTRY_COMPARE(queue_->Served(), 14);
    QTest::qWait(100);
    QVERIFY(QApplication::activePopupWidget() == nullptr);
    QCOMPARE(desk_->Form().Check1[2].Value(), 0);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    const std::vector<simulator::Frame> frames = desk_->TakeFrames();
    QCOMPARE(frames.size(), std::size_t{450});
    QVERIFY(std::all_of(frames.begin(), frames.end(), [](const auto& frame) { return frame[3] == 0x11; }));
    QVERIFY(desk_->IsOpen(0));
    QCOMPARE(other_->Difference(), QString());
    CheckOrdinaryClick();
}

void InputWhileStandingStillTest::AClickInALongWaitIsThrownAwayAndOneInAShortWaitIsNot_data() {
    QTest::addColumn<bool>("a_long_one");
    QTest::newRow("long") << true;
    QTest::newRow("short") << false;
}

void InputWhileStandingStillTest::AClickInALongWaitIsThrownAwayAndOneInAShortWaitIsNot() {
    QFETCH(bool, a_long_one);
    BoxAnswers boxes(AnyNumberOfOk());
    desk_->Line().Order(simulator::Fault::Late(Id, 1, a_long_one ? LongWait : ShortWait));
    queue_->PostAfter(milliseconds(60), [this] { driver::Click(Mute()); });
    driver::Press(desk_->Control("Slider1", 0), Qt::Key_Up);
    QTRY_COMPARE(queue_->Served(), 1);
    QCOMPARE(desk_->Form().Check1[2].Value(), a_long_one ? 0 : 1);
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{a_long_one ? 1U : 3U});
    QCOMPARE(boxes.Seen().size(), std::size_t{0});
    QCOMPARE(other_->Difference(), QString());
    CheckOrdinaryClick();
}

void InputWhileStandingStillTest::AClosingInALongWaitIsThrownAway() {
    bool stays = false;
    bool goes = false;
    QVERIFY(desk_->WithTool(controls::PasswordTool, "FrmPassword", [&](QWidget& dialog) {
        Type(In(dialog, "Text1"), QStringLiteral("000000"));
        driver::Click(In(dialog, "Command1(0)"));
        driver::Click(In(dialog, "Check1"));
        desk_->Line().Order(simulator::Fault::Late(Id, 1, LongWait));
        const QPointer<QWidget> watched = &dialog;
        queue_->PostAfter(milliseconds(60), [watched] {
            if (watched != nullptr) {
                watched->close();
            }
        });
        driver::Click(In(dialog, "Command1(3)"));
        QTest::qWait(30);
        stays = watched != nullptr && watched->isVisible();
        if (stays) {
            goes = watched->close();
        }
    }));
    QCOMPARE(queue_->Served(), 1);
    QVERIFY(stays);
    QVERIFY(goes);
    QVERIFY(desk_->Line().WithRack([](simulator::Rack& rack) { return rack.At(Id).Locked(); }));
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
    QCOMPARE(other_->Difference(), QString());
}

void InputWhileStandingStillTest::AKeyInALongWaitDoesNotAnswerTheBoxAfterIt() {
    desk_->Line().Order(simulator::Fault::Die(Id));
    desk_->Clock().RunFaster(60.0); // five waits of a sixth of a second
    for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Space, Qt::Key_Escape}) {
        queue_->PostAfter(milliseconds(300), [key] { KeyToWhatHasTheFocus(key); });
    }
    // The box is left alone for a while.
    constexpr int looks = 10;
    int stood = 0;
    QTimer watch;
    QObject::connect(&watch, &QTimer::timeout, &watch, [&] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
            if (++stood == looks) {
                driver::Click(box->button(QMessageBox::Ok));
            }
        }
    });
    watch.start(15);
    driver::Click(Mute());
    QCOMPARE(stood, looks);
    QCOMPARE(queue_->Served(), 3);
    QCOMPARE(desk_->TakeFrames().size(), Transmissions);
    QVERIFY(!desk_->IsOpen(0));
    QTest::qWait(50);
    QCOMPARE(stood, looks);
    QCOMPARE(other_->Difference(), QString());
}

void InputWhileStandingStillTest::TheQuestionIsOffTheScreenBeforeTheFirstFrame() {
    BoxAnswers boxes({QStringLiteral("Yes")});
    boxes.OnBox = [this](QWidget&) { queue_->Post([] {}); };
    ShowWatch watch;
    bool covered = true;
    int served = -1;
    std::size_t frames = 99;
    watch.OnShow = [&] {
        covered = QApplication::activeModalWidget() != nullptr &&
                  QApplication::activeModalWidget()->objectName() == QStringLiteral("MessageBox");
        for (const QWidget* window : QApplication::topLevelWidgets()) {
            covered = covered || (window->objectName() == QStringLiteral("MessageBox") && window->isVisible());
        }
        served = queue_->Served();
        frames = desk_->Line().Frames().size();
    };
    QVERIFY(Store([&](QProgressBar& bar) { bar.installEventFilter(&watch); }));
    QCOMPARE(frames, std::size_t{0});
    QVERIFY(!covered);
    // What waited when it was answered, repaints above all, was served before the work began.
    QCOMPARE(served, 1);
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{450});
    QCOMPARE(other_->Difference(), QString());
}

NRV_UI_TEST(InputWhileStandingStillTest);
#include "input_while_standing_still_test.moc"
