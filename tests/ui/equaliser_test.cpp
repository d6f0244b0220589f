// The equaliser on the graph as a user touches it: points that are dragged, boxes that are typed in, and the pixels
// of the curves. Most of it on a scripted port; one test on a real serial line with the virtual rack behind it.

#include "drawn_curves.h"
#include "driver/driver.h"
#include "model/tables.h"
#include "rack_desk.h"
#include "rack_test.h"
#include "simulator/line.h"
#include "support/test_folder.h"
#include "support/test_program.h"
#include "ui/application.h"
#include "ui/control_window/control_window_view.h"
#include "ui/look/theme.h"
#include "ui/widgets/graph_view.h"
#include "ui/widgets/text_field.h"
#include "ui/widgets/value_plate.h"
#include "ui_test.h"

#include <QClipboard>
#include <QComboBox>
#include <QElapsedTimer>
#include <QGuiApplication>
#include <QMdiSubWindow>
#include <QScreen>
#include <QTest>
#include <QTimer>
#include <QWheelEvent>
#include <QWindow>

#include <algorithm>
#include <cmath>
#include <memory>
#include <set>
#include <vector>

using namespace nrv;
using namespace nrv::test;
using testing::Frame;

namespace {

Frame PeqFrame(int id, int channel, int section, int frequency, int bandwidth, int gain) {
    const auto byte = [](int value) { return static_cast<std::uint8_t>(value); };
    return {0xF0, 0xC3,       byte(id), 0x05, byte(channel), byte(section), 0, 0, byte(frequency), byte(bandwidth),
            0,    byte(gain), 0xF7};
}

/// Counts how often a widget was painted.
class PaintCounter : public QObject {
  public:
    int Count = 0;
    bool eventFilter(QObject*, QEvent* event) override {
        Count += event->type() == QEvent::Paint ? 1 : 0;
        return false;
    }
};

} // namespace

class EqualiserTest : public QObject {
    Q_OBJECT

  private:
    /// The window of a device with the factory's preset, on a port that answers at once.
    void Open() {
        world_ = std::make_unique<testing::TestProgram>();
        world_->Port.Answer = [](const Frame&) { return testing::Bytes(13, 0); };
        program::Program& program = world_->Program;
        program.Link.ComIndex = 1;
        program.Link.OpenPort();
        std::copy(model::FactoryImage.begin(), model::FactoryImage.end(),
                  program.Stores.PresetImage[Id].PresetBody.begin());
        program.Windows.WindowSlots[0] = {true, Id, 0};
        program.Windows.NewSlot = 0;
        program.Windows.OpenWindowTop = 0;
        program.Control.Load();
        ShowWindow();
    }
    void ShowWindow() {
        view_ = std::make_unique<ui::ControlWindowView>(
            Form(), controls::EventEntry(world_->Events, {controls::EventSource::Kind::Device, 0}));
        view_->show();
        view_->activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(view_.get()));
        Form().SSTab1.SetTab(0);
        Form().Check3[0].UserToggle();
        Form().Timer1.Stop();
        world_->Port.Sent.clear();
    }
    controls::FrmCtrl& Form() { return *world_->Program.Windows.ControlWindows[0]; }
    const std::vector<Frame>& Sent() { return world_->Port.Sent; }
    QWidget* Find(const char* name) { return view_->findChild<QWidget*>(QLatin1String(name)); }
    QPoint InWindow(const QWidget* widget, QPoint place) { return widget->mapTo(view_.get(), place); }
    QPoint CentreOf(const char* dot) { return InWindow(Find(dot), QPoint(7, 7)); }
    QPoint OnGraph(QPoint pixel, const char* graph = "Picture1(0)") { return InWindow(Find(graph), pixel); }
    /// Where a point's centre stands on its graph.
    QPoint PlaceOf(const char* dot, const char* graph = "Picture1(0)") {
        return Find(dot)->geometry().center() - Find(graph)->pos();
    }
    void PressAt(QPoint place) { QTest::mousePress(view_->windowHandle(), Qt::LeftButton, {}, place); }
    void MoveTo(QPoint place) { QTest::mouseMove(view_->windowHandle(), place); }
    void ReleaseAt(QPoint place) { QTest::mouseRelease(view_->windowHandle(), Qt::LeftButton, {}, place); }
    QImage GraphOf(int channel) { return view_->Graph(channel).grab().toImage(); }
    /// Where the first graph lies, what was painted there last, points and all.
    QImage GraphOnScreen() {
        const QWidget& graph = view_->Graph(0);
        const QRect place(graph.mapTo(view_.get(), QPoint()), graph.size());
        return view_->screen()->grabWindow(view_->winId()).toImage().copy(place).convertToFormat(QImage::Format_RGB32);
    }
    /// The same painted anew.
    QImage GraphAnew() {
        const QWidget& graph = view_->Graph(0);
        return graph.parentWidget()->grab(graph.geometry()).toImage().convertToFormat(QImage::Format_RGB32);
    }
    /// The largest difference of a colour between two pictures of one size.
    static int LargestDifference(const QImage& one, const QImage& other) {
        int largest = 0;
        for (int y = 0; y < one.height(); ++y) {
            for (int x = 0; x < one.width(); ++x) {
                const QRgb a = one.pixel(x, y);
                const QRgb b = other.pixel(x, y);
                largest = std::max({largest, std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                                    std::abs(qBlue(a) - qBlue(b))});
            }
        }
        return largest;
    }
    /// A place of a section's column that no control covers.
    QColor ColumnGround(int section) {
        const QWidget* text = view_->findChild<QWidget*>(QStringLiteral("Text3(%1)").arg(section));
        const QPoint free_place = text->geometry().bottomLeft() + QPoint(2, 14);
        return text->parentWidget()->grab().toImage().pixelColor(free_place);
    }
    void TypeInto(const char* name, const QString& text) {
        auto* field = view_->findChild<QLineEdit*>(QLatin1String(name));
        field->setFocus();
        field->selectAll();
        QTest::keyClicks(field, text);
    }

    std::unique_ptr<testing::TestProgram> world_;
    std::unique_ptr<ui::ControlWindowView> view_;

  private slots:
    void initTestCase() {
        qputenv("QT_QPA_UPDATE_IDLE_TIME", "0"); // the platform would wait before it paints
        ui::ApplyTheme(*qApp);
    }
    void init() { Open(); }
    void cleanup() {
        view_.reset();
        world_.reset();
    }

    void ADraggedPointSendsNothingUntilItIsDroppedAndThenOneFrame() {
        PressAt(CentreOf("Label5(0)"));
        for (int step = 1; step <= 40; ++step) {
            MoveTo(OnGraph(QPoint(40 + step * 7, 100 - step)));
        }
        MoveTo(OnGraph(QPoint(327, 62)));
        QVERIFY(Sent().empty());
        QCOMPARE(PlaceOf("Label5(0)"), QPoint(327, 62));
        // 62 pixels are 930 units for the centre: (1507.5 - 870) / 48 - 0.1 = 13.18 dB; 327 are 1002.7 Hz.
        QCOMPARE(Form().Text3[0].Text(), std::string("13.1"));
        QCOMPARE(Form().Text4[0].Text(), std::string("1000"));
        QCOMPARE(Form().Slider2[0].Position(), 10); // 9.5, a half to the even
        ReleaseAt(OnGraph(QPoint(327, 62)));
        QCOMPARE(Sent(), std::vector<Frame>{PeqFrame(Id, 0, 0, 68, 8, 140)});
        // It lands by its value: 13 dB has its centre at 878.7 + 60 units.
        QCOMPARE(Form().Text3[0].Text(), std::string("13"));
        QCOMPARE(PlaceOf("Label5(0)"), QPoint(327, 63));
        QVERIFY(!Form().MarkerDragging[0]);
    }

    void AnOffCentrePressPullsTheCentreToTheMouse() {
        const QPoint place = CentreOf("Label5(4)") + QPoint(5, -4);
        PressAt(place);
        MoveTo(place + QPoint(1, 0));
        QCOMPARE(PlaceOf("Label5(4)") + Find("Picture1(0)")->mapTo(view_.get(), QPoint()), place + QPoint(1, 0));
        ReleaseAt(place + QPoint(1, 0));
        QCOMPARE(Sent().size(), std::size_t{1});
    }

    void AClickWithoutMovementSendsNothing() {
        const QPoint place = CentreOf("Label5(0)") + QPoint(3, 3);
        const QPoint before = PlaceOf("Label5(0)");
        PressAt(place);
        QVERIFY(Form().MarkerDragging[0]);
        ReleaseAt(place);
        QVERIFY(!Form().MarkerDragging[0]);
        QVERIFY(Sent().empty());
        QCOMPARE(PlaceOf("Label5(0)"), before);
    }

    void ADragThatLeavesTheGraphStopsAtItsLimits_data() {
        QTest::addColumn<QPoint>("to");
        QTest::addColumn<QPoint>("centre");
        QTest::addColumn<int>("frequency");
        QTest::addColumn<int>("gain");
        // +15 dB is at (782.7 + 60) / 15 = 56.2, -15 dB at 152.2; 20 Hz at 0, 20 kHz at 8655 / 15 = 577.
        QTest::newRow("top left") << QPoint(-60, -70) << QPoint(0, 56) << 0 << 150;
        QTest::newRow("top right") << QPoint(900, -300) << QPoint(577, 56) << 120 << 150;
        QTest::newRow("bottom left") << QPoint(-500, 190) << QPoint(0, 152) << 0 << 0;
        QTest::newRow("bottom right") << QPoint(577, 700) << QPoint(577, 152) << 120 << 0;
    }
    void ADragThatLeavesTheGraphStopsAtItsLimits() {
        QFETCH(const QPoint, to);
        QFETCH(const QPoint, centre);
        QFETCH(const int, frequency);
        QFETCH(const int, gain);
        const auto* plate = Find("Label5(2)")->parentWidget()->findChild<ui::ValuePlate*>();
        PressAt(CentreOf("Label5(2)"));
        MoveTo(OnGraph(QPoint(300, 100)));
        MoveTo(OnGraph(to));
        QCOMPARE(PlaceOf("Label5(2)"), centre);
        QVERIFY(plate->isVisible());
        QVERIFY(Find("Picture1(0)")->geometry().contains(plate->geometry()));
        QVERIFY(!plate->geometry().intersects(Find("Label5(2)")->geometry()));
        ReleaseAt(OnGraph(to));
        QVERIFY(!plate->isVisible());
        QCOMPARE(Sent(), std::vector<Frame>{PeqFrame(Id, 0, 2, frequency, 8, gain)});
    }

    void TheWindowClosedDuringADragLeavesNothingBehind() {
        PressAt(CentreOf("Label5(0)"));
        MoveTo(OnGraph(QPoint(200, 62)));
        QVERIFY(world_->Program.Control.QueryUnload(0));
        view_->Detach();
        ReleaseAt(OnGraph(QPoint(200, 62)));
        QVERIFY(Sent().empty());
        view_.reset();
        world_->Program.Windows.WindowSlots[0].InUse = true;
        world_->Program.Control.Load();
        ShowWindow();
        const QPoint before = PlaceOf("Label5(0)");
        MoveTo(CentreOf("Label5(0)"));
        MoveTo(CentreOf("Label5(0)") + QPoint(3, 1));
        QCOMPARE(PlaceOf("Label5(0)"), before);
        QVERIFY(Sent().empty());
    }

    void APointWhoseButtonUpWasLostGoesOnWithTheMouse() {
        const QPoint start = CentreOf("Label5(0)");
        MoveTo(start);
        QCOMPARE(CentreOf("Label5(0)"), start);
        Form().Label5[0].Pressed(); // and its button-up comes to nobody
        for (int step = 1; step <= 10; ++step) {
            const QPoint mouse = start + QPoint(3 * step, 2 * step);
            MoveTo(mouse); // with no button down
            QVERIFY((CentreOf("Label5(0)") - mouse).manhattanLength() <= 2);
        }
        QVERIFY(Form().MarkerMoved[0]);
        QVERIFY(Sent().empty());
        Form().Label5[0].Released();
        QCOMPARE(Sent().size(), 1U);
    }

    void APointHiddenInTheHandTakesItsPlateAlong() {
        const auto* plate = Find("Label5(0)")->parentWidget()->findChild<ui::ValuePlate*>();
        PressAt(CentreOf("Label5(0)"));
        MoveTo(OnGraph(QPoint(200, 62)));
        QVERIFY(plate->isVisible());
        Form().Label5[0].SetVisible(false);
        QVERIFY(!plate->isVisible());
        QCOMPARE(Find("Label5(0)")->cursor().shape(), Qt::OpenHandCursor);
        ReleaseAt(OnGraph(QPoint(200, 62)));
    }

    void Typing1010AndEnterGives1000AndOneFrame() {
        TypeInto("Text4(0)", QStringLiteral("1010"));
        QVERIFY(Sent().empty());
        QTest::keyClick(Find("Text4(0)"), Qt::Key_Return);
        QCOMPARE(view_->findChild<QLineEdit*>(QStringLiteral("Text4(0)"))->text(), QStringLiteral("1000"));
        QCOMPARE(Sent(), std::vector<Frame>{PeqFrame(Id, 0, 0, 68, 8, 75)});
        QCOMPARE(PlaceOf("Label5(0)"), QPoint(327, 104));
    }

    void ALetterRaisesTheBoxAndLeavesAQuestionMark() {
        TypeInto("Text4(0)", QStringLiteral("12x"));
        QCOMPARE(world_->Boxes.Shown.size(), std::size_t{1});
        QCOMPARE(world_->Boxes.Shown[0].Title, std::string("Warning"));
        QCOMPARE(world_->Boxes.Shown[0].Text, std::string("  Incorrect frequency value"));
        QCOMPARE(Form().Text4[0].Text(), std::string("12?"));
        QTest::keyClick(Find("Text4(0)"), Qt::Key_Enter);
        QCOMPARE(world_->Boxes.Shown.size(), std::size_t{2});
        QCOMPARE(Form().Text4[0].Text(), std::string("12??"));
        QVERIFY(Sent().empty());
    }

    void ABandwidthIsTypedWithAComma() {
        TypeInto("Text5(0)", QStringLiteral("1,5"));
        QCOMPARE(Form().Text5[0].Text(), std::string("1.5"));
        QTest::keyClick(Find("Text5(0)"), Qt::Key_Return);
        QCOMPARE(Sent(), std::vector<Frame>{PeqFrame(Id, 0, 0, 10, 29, 75)});
    }

    void APasteEndsAtItsFirstRefusedCharacter() {
        QGuiApplication::clipboard()->setText(QStringLiteral("63") + QString(10'000, u'x'));
        TypeInto("Text4(0)", QString());
        QTest::keySequence(Find("Text4(0)"), QKeySequence(QKeySequence::Paste));
        QCOMPARE(Form().Text4[0].Text(), std::string("63?"));
        QCOMPARE(world_->Boxes.Shown.size(), std::size_t{1});
    }

    void TenThousandPastedDigitsAreTakenAndRefusedAtEnter() {
        for (const char* name : {"Text4(0)", "Text7(0)"}) {
            world_->Boxes.Shown.clear();
            QGuiApplication::clipboard()->setText(QString(10'000, u'9'));
            TypeInto(name, QString());
            QElapsedTimer timer;
            timer.start();
            QTest::keySequence(Find(name), QKeySequence(QKeySequence::Paste));
            QVERIFY(timer.elapsed() < 5000);
            QCOMPARE(view_->findChild<QLineEdit*>(QLatin1String(name))->text().size(), 10'000);
            QTest::keyClick(Find(name), Qt::Key_Return);
            QCOMPARE(world_->Boxes.Shown.size(), std::size_t{1});
            QCOMPARE(view_->findChild<QLineEdit*>(QLatin1String(name))->text(), QString(10'000, u'9') + u'?');
            QVERIFY(Sent().empty());
        }
    }

    void AFlatCurveLiesOnRow95InEveryColumn() {
        QCOMPARE(CurveFault(GraphOf(0), QColor(255, 0, 0), Flat(0.0)), QString());
        const QImage picture = GraphOf(0);
        for (int column = 0; column < 576; ++column) {
            QCOMPARE(picture.pixelColor(column, 95), QColor(255, 0, 0));
        }
    }

    void ABellIsDrawnWhereItsFormulaPutsIt() {
        TypeInto("Text4(0)", QStringLiteral("1000"));
        QTest::keyClick(Find("Text4(0)"), Qt::Key_Return);
        Find("Slider2(0)")->setFocus();
        QTest::keyClick(Find("Slider2(0)"), Qt::Key_Home);
        QCOMPARE(Form().Text3[0].Text(), std::string("15"));
        const double power = std::pow(2.0, 0.45); // of the bandwidth's octaves
        const double q = (power + 1.0) / (2.0 * (power - 1.0));
        std::vector<double> levels;
        for (const double f : WalkedFrequencies()) {
            const double detuned = 1000.0 / f - f / 1000.0;
            levels.push_back(15.0 / (1.0 + q * q * detuned * detuned));
        }
        QCOMPARE(CurveFault(GraphOf(0), QColor(255, 0, 0), levels), QString());
    }

    void OverlaysLieUnderTheOwnCurveInTheirChannelsColours() {
        Form().SSTab1.SetTab(2);
        Form().Combo2[1].Select(0); // no crossovers: straight lines
        Form().Combo2[2].Select(0);
        Form().Combo2[3].Select(0);
        Form().Slider1[3].UserMove(45); // Out 2 at +3 dB
        QVERIFY(GraphOf(2).pixelColor(300, 86) != QColor(192, 0, 0));
        driver::ClickMark(Find("Check4(0)"));
        const QImage both = GraphOf(2);
        QCOMPARE(CurveFault(both, QColor(192, 0, 0), Flat(3.0)), QString());
        QCOMPARE(CurveFault(both, QColor(255, 0, 255), Flat(0.0)), QString());
        Form().Slider1[2].UserMove(45);
        const QImage covered = GraphOf(2);
        QCOMPARE(CurveFault(covered, QColor(255, 0, 255), Flat(3.0)), QString());
        driver::ClickMark(Find("Check4(0)"));
        QVERIFY(GraphOf(2).pixelColor(300, 95) != QColor(192, 0, 0));
    }

    void AHoveredPointLightsItsColumnAndHasTheHand() {
        MoveTo(OnGraph(QPoint(300, 20)));
        const QColor plain = ColumnGround(3);
        const QImage dot_before = Find("Label5(3)")->grab().toImage();
        MoveTo(CentreOf("Label5(3)"));
        QVERIFY(ColumnGround(3) != plain);
        QCOMPARE(ColumnGround(4), plain);
        QVERIFY(Find("Label5(3)")->grab().toImage() != dot_before);
        QCOMPARE(Find("Label5(3)")->cursor().shape(), Qt::OpenHandCursor);
        PressAt(CentreOf("Label5(3)"));
        QCOMPARE(Find("Label5(3)")->cursor().shape(), Qt::ClosedHandCursor);
        MoveTo(OnGraph(QPoint(900, 300))); // held outside the point
        QVERIFY(ColumnGround(3) != plain);
        ReleaseAt(OnGraph(QPoint(900, 300)));
        MoveTo(OnGraph(QPoint(300, 20)));
        QVERIFY(ColumnGround(3) != plain); // the point that was held has the keyboard
        QCOMPARE(Find("Label5(3)")->cursor().shape(), Qt::OpenHandCursor);
        Find("Text4(7)")->setFocus();
        QCOMPARE(ColumnGround(3), plain);
    }

    void ControlsUnderThePointerOrWithTheKeyboardLightTheirPoint() {
        const QImage plain = Find("Label5(6)")->grab().toImage();
        MoveTo(InWindow(Find("Slider2(6)"), QPoint(15, 40)));
        const QImage lit = Find("Label5(6)")->grab().toImage();
        QVERIFY(lit != plain);
        MoveTo(OnGraph(QPoint(300, 20)));
        QCOMPARE(Find("Label5(6)")->grab().toImage(), plain);
        Find("Text4(6)")->setFocus();
        QCOMPARE(Find("Label5(6)")->grab().toImage(), lit);
        Find("Text5(6)")->setFocus();
        QCOMPARE(Find("Label5(6)")->grab().toImage(), lit);
        Find("Text4(7)")->setFocus();
        QCOMPARE(Find("Label5(6)")->grab().toImage(), plain);
        QVERIFY(Sent().empty());
    }

    void ThePointUnderThePointerLiesOnTop() {
        // Sections 2 and 3 on the same place, but for four pixels.
        TypeInto("Text4(2)", QStringLiteral("1000"));
        QTest::keyClick(Find("Text4(2)"), Qt::Key_Return);
        TypeInto("Text4(3)", QStringLiteral("1062"));
        QTest::keyClick(Find("Text4(3)"), Qt::Key_Return);
        Find("Text4(2)")->setFocus();
        MoveTo(CentreOf("Label5(3)") + QPoint(6, 0)); // its free edge
        const QPoint shared = (CentreOf("Label5(2)") + CentreOf("Label5(3)")) / 2;
        QCOMPARE(view_->childAt(shared), Find("Label5(3)"));
        Find("Text4(4)")->setFocus();
        Find("Text4(2)")->setFocus(); // lights the other
        QCOMPARE(view_->childAt(shared), Find("Label5(3)"));
        MoveTo(CentreOf("Label5(2)") - QPoint(6, 0));
        QCOMPARE(view_->childAt(shared), Find("Label5(2)"));
    }

    void AWheelOverWhatHasNotTheKeyboardChangesNothing() {
        world_->Port.Sent.clear();
        const auto body = world_->Program.Stores.PresetImage[Id].PresetBody;
        Find("Text4(9)")->setFocus();
        for (const char* name : {"Slider2(3)", "UpDown3(3)", "Text4(3)", "Label5(3)", "Picture1(0)", "Slider3(0)",
                                 "Combo1(0)", "Slider1(8)"}) {
            for (const int turn : {120, -120}) {
                const QPoint place = InWindow(Find(name), Find(name)->rect().center());
                QWheelEvent wheel(place, view_->mapToGlobal(place), {}, QPoint(0, turn), Qt::NoButton, {},
                                  Qt::NoScrollPhase, false);
                QCoreApplication::sendEvent(view_->windowHandle(), &wheel);
            }
        }
        QVERIFY(Sent().empty());
        QCOMPARE(world_->Program.Stores.PresetImage[Id].PresetBody, body);
    }

    void AMouseMoveFromEventToPixels() {
        PaintCounter painted;
        view_->Graph(0).installEventFilter(&painted);
        PressAt(CentreOf("Label5(0)"));
        std::vector<double> microseconds;
        constexpr int moves = 300;
        QImage last = GraphOnScreen();
        for (int move = 0; move < moves; ++move) {
            const QPoint to(20 + move, 60 + (move * 7) % 90);
            const int before = painted.Count;
            QElapsedTimer timer;
            timer.start();
            QTest::mouseMove(view_->windowHandle(), OnGraph(to));
            while (painted.Count == before && timer.elapsed() < 1000) {
                QCoreApplication::processEvents();
            }
            microseconds.push_back(static_cast<double>(timer.nsecsElapsed()) / 1000.0);
            QVERIFY2(painted.Count > before, QByteArray::number(move));
            // The screen shows the point under the mouse, and the curve that the record holds now.
            QCOMPARE(PlaceOf("Label5(0)"), to);
            const QImage now = GraphOnScreen();
            QVERIFY2(now != last, QByteArray::number(move));
            // Where a smoothed line is cut at the edge of what is painted, its shades shift by a few steps of 255.
            QVERIFY2(LargestDifference(now, GraphAnew()) < 16, QByteArray::number(move));
            last = now;
        }
        ReleaseAt(OnGraph(QPoint(300, 60)));
        std::ranges::sort(microseconds);
        qInfo("mouse move to painted pixels: median %.0f us, 95 of 100 below %.0f us, longest %.0f us",
              microseconds[moves / 2], microseconds[moves * 95 / 100], microseconds.back());
        QCOMPARE(Sent().size(), std::size_t{1});
        QVERIFY(microseconds[moves / 2] < 100'000.0);
    }

    void OnARealLineOneDragIsOneFrameAndClosingInTheMiddleSendsNone();
};

void EqualiserTest::OnARealLineOneDragIsOneFrameAndClosingInTheMiddleSendsNone() {
    view_.reset();
    const testing::TestFolder folder;
    simulator::Rack rack;
    rack.Add(7, "Stage left      ");
    simulator::Line line(std::move(rack));
    line.LinkAs(folder.Path() / "com1");
    line.Start();
    const ui::ComPortNames names{QString()};
    ui::QtSerialPort spare_port(names);
    ui::QtProcess real_process(spare_port);
    test::TestProcess process(real_process);
    ui::Application application(folder.Path(), ui::Application::Substitutes{.Run = &process});
    program::Program& logic = application.Logic();

    QTimer watch;
    connect(&watch, &QTimer::timeout, &watch, [&] {
        QWidget* dialog = driver::Find(QStringLiteral("FrmSelect"));
        if (dialog == nullptr || !dialog->isVisible()) {
            return;
        }
        watch.stop();
        driver::ClickMark(driver::Find(QStringLiteral("Link(1)"), dialog));
        driver::ClickMark(driver::Find(QStringLiteral("Connection(3)"), dialog));
        driver::Choose(driver::FindAs<QComboBox>(QStringLiteral("ComSelect"), dialog), 1);
        driver::Click(driver::Find(QStringLiteral("Proceed"), dialog));
    });
    watch.start(20);
    application.Start();
    QVERIFY(driver::WaitUntil([&] { return logic.State.FoundLast == 0 && logic.Link.PortOpened; }, 30000));
    QVERIFY(driver::WaitUntil([&] { return !logic.List.Timer1.Running() && logic.Link.TransactionDone; }, 30000));
    const auto open = [&] {
        driver::DoubleClickRow(driver::Find(QStringLiteral("Devices")), 0);
        const bool shown = driver::WaitUntil([&] {
            const QWidget* sub_window = driver::Find(QStringLiteral("FrmCtrl(0)"));
            return logic.Windows.Loaded[0] && sub_window != nullptr && sub_window->isVisible();
        });
        logic.Windows.ControlWindows[0]->Timer1.Stop(); // the meters would put frames between
        return shown ? driver::Find(QStringLiteral("FrmCtrl(0)")) : nullptr;
    };
    QWidget* sub_window = open();
    QVERIFY(sub_window != nullptr);
    const auto show_markers = [&] {
        driver::ShowTab(driver::Find(QStringLiteral("SSTab1"), sub_window), 0);
        driver::ClickMark(driver::Find(QStringLiteral("Check3(0)"), sub_window));
    };
    show_markers();
    QWidget* dot = driver::Find(QStringLiteral("Label5(9)"), sub_window);
    QWidget* graph = driver::Find(QStringLiteral("Picture1(0)"), sub_window);
    QVERIFY(dot->isVisible());
    QWindow* window = sub_window->window()->windowHandle();
    const auto in_window = [](const QWidget* widget, QPoint place) { return widget->mapTo(widget->window(), place); };

    line.ClearFrames();
    QTest::mousePress(window, Qt::LeftButton, {}, in_window(dot, QPoint(7, 7)));
    for (int x = 550; x >= 327; --x) {
        QTest::mouseMove(window, in_window(graph, QPoint(x, 62)));
    }
    QVERIFY(line.Frames().empty());
    QTest::mouseRelease(window, Qt::LeftButton, {}, in_window(graph, QPoint(327, 62)));
    const simulator::Frame expected = PeqFrame(7, 0, 9, 68, 8, 140);
    QCOMPARE(line.Frames(), std::vector<simulator::Frame>{expected});
    QCOMPARE(line.WithRack([](simulator::Rack& devices) { return devices.At(7).LiveImage()[5 + 9 * 5 + 4]; }),
             std::uint8_t{140});

    line.ClearFrames();
    QTest::mousePress(window, Qt::LeftButton, {}, in_window(dot, QPoint(7, 7)));
    QTest::mouseMove(window, in_window(graph, QPoint(100, 80)));
    {
        driver::BoxAnswers boxes({QStringLiteral("Yes")});
        sub_window->close();
        QVERIFY(driver::WaitUntil([&] { return !logic.Windows.Loaded[0]; }));
    }
    QTest::mouseRelease(window, Qt::LeftButton, {}, QPoint(5, 5));
    QTest::qWait(20);
    QVERIFY(line.Frames().empty());
    sub_window = open();
    QVERIFY(sub_window != nullptr);
    show_markers();
    line.ClearFrames();
    dot = driver::Find(QStringLiteral("Label5(9)"), sub_window);
    const QPoint before = dot->pos();
    QTest::mouseMove(window, in_window(dot, QPoint(7, 7)));
    QTest::mouseMove(window, in_window(dot, QPoint(10, 9)));
    QCOMPARE(dot->pos(), before);
    QVERIFY(line.Frames().empty());
}

NRV_UI_TEST(EqualiserTest);

#include "equaliser_test.moc"
