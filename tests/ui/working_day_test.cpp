// A working day in one process: eleven windows, edits by every widget, windows closed and opened, presets loaded,
// saved, stored and read, meters, answers that are lost, late or wrong, devices that die and a plug that is pulled. At
// its end the devices and the program say the same and the process has grown by nothing.
//
// NRV718_DAY is the number of edits; 10 000 are a whole day.

#include "rack_test.h"
#include "ui_test.h"
#include "widget_edits.h"

#include <QPixmapCache>

#include <malloc.h>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using simulator::Fault;
using std::chrono::milliseconds;

namespace {

constexpr int Devices = 11;
constexpr int ShortDay = 700;

int EditsOfTheDay() {
    bool given = false;
    const int edits = qEnvironmentVariableIntValue("NRV718_DAY", &given);
    return given ? edits : ShortDay;
}

int OpenDescriptors() {
    return static_cast<int>(std::distance(std::filesystem::directory_iterator("/proc/self/fd"), {}));
}

} // namespace

class WorkingDayTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        std::vector<int> ids(Devices);
        std::iota(ids.begin(), ids.end(), 1);
        QVERIFY(ConnectAndOpenAll(RandomRack(ids)));
        edits_ = std::make_unique<WidgetEdits>(*desk_, 718U);
        desk_->TakeFrames();
    }
    void cleanup() {
        edits_.reset();
        TakeDown();
    }

    void HoldsAllDay();

  private:
    static int IdOf(int slot) { return slot + 1; } // each window opened in the slot of its row
    int AnySlot() { return edits_->Below(Devices); }

    void CloseAndOpen(int slot) {
        {
            BoxAnswers boxes({QStringLiteral("Yes")});
            desk_->Window(slot)->close();
            QCOMPARE(boxes.Seen().size(), std::size_t{1});
        }
        QVERIFY(!desk_->IsOpen(slot));
        OpenAgain(slot);
    }
    void OpenAgain(int slot) {
        BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")})); // where it must be connected first
        const bool open = desk_->Open(slot, slot);
        QString said = QString::fromStdString(desk_->Status());
        for (const driver::SeenBox& box : boxes.Seen()) {
            said += QStringLiteral(" [%1: %2]").arg(box.Title, box.Text);
        }
        QVERIFY2(open, qPrintable(said));
        ++openings_;
    }
    void SaveAndLoad(int slot) {
        const QString name = QStringLiteral("day%1.n91").arg(edits_->Below(5));
        {
            BoxAnswers boxes(AnyNumberOfOk({QStringLiteral("Yes")})); // over a file that is there
            QVERIFY(ChooseFileOf(slot, controls::SavePresetTool, name));
        }
        testing::Body saved = Body(IdOf(slot));
        Edit(slot);
        QVERIFY(ChooseFileOf(slot, controls::LoadPresetTool, name));
        const simulator::PresetBody live = desk_->Live(IdOf(slot));
        saved[simulator::PresetMutesOffset] = live[simulator::PresetMutesOffset]; // not of the preset in these devices
        QCOMPARE(ImageDifference(live, saved), QString());
        ++loads_;
    }
    bool ChooseFileOf(int slot, int tool, const QString& name) {
        return desk_->WithDialog(desk_->Control("Command2", tool, slot), "FileDialog", [&](QWidget& dialog) {
            auto* edit = dialog.findChild<QLineEdit*>();
            edit->setText(name);
            driver::Press(edit, Qt::Key_Return);
        });
    }
    void StoreAndRead(int slot) {
        BoxAnswers boxes({QStringLiteral("Yes"), QStringLiteral("Yes")});
        QVERIFY(desk_->WithDialog(desk_->Control("Command2", controls::StorePresetTool, slot), "FrmStore",
                                  [&](QWidget& dialog) {
                                      driver::Choose(driver::FindAs<QComboBox>(QStringLiteral("Combo1"), &dialog), 0);
                                      Type(In(dialog, "Text1"), QStringLiteral("Day"));
                                      driver::Click(In(dialog, "Command1(1)"));
                                  }));
        Edit(slot);
        QVERIFY(desk_->WithDialog(desk_->Control("Command2", controls::ReadPresetTool, slot), "FrmRead",
                                  [](QWidget& dialog) { driver::Click(In(dialog, "Command1(1)")); }));
        ++stores_;
        SaveAndLoad(slot); // a read is shown and not sent
    }
    /// Some answers that go wrong on the way; each is asked for again.
    void Disturb(int slot) {
        const int id = IdOf(slot);
        const std::array faults{Fault::Lose(id), Fault::Late(id, 1, milliseconds(30)), Fault::Cut(id, 1, 7),
                                Fault::Double(id), Fault::Drip(id, 1, milliseconds(2))};
        desk_->Clock().RunFaster(60.0); // a wait that is let go by takes a sixth of a second
        desk_->Line().Order(faults[static_cast<std::size_t>(edits_->Below(int(faults.size())))]);
        driver::Press(FaderOf(slot), Qt::Key_Up);
        driver::Press(FaderOf(slot), Qt::Key_Down);
        desk_->Clock().RunFaster(1.0);
        QVERIFY(desk_->IsOpen(slot));
    }
    QWidget* FaderOf(int slot) {
        desk_->ShowTab(controls::GainsTab, slot);
        return desk_->Control("Slider1", 8, slot);
    }
    void DieAndComeBack(int slot) {
        desk_->LetDie(IdOf(slot));
        {
            BoxAnswers boxes(AnyNumberOfOk());
            QWidget* fader = FaderOf(slot);
            driver::Press(fader, Qt::Key_Up);
            if (desk_->IsOpen(slot)) { // it stood at the end of its way
                driver::Press(fader, Qt::Key_Down);
            }
            QCOMPARE(boxes.Seen().size(), std::size_t{1});
        }
        QVERIFY(!desk_->IsOpen(slot));
        desk_->Line().Revive(IdOf(slot));
        desk_->Clock().RunFaster(1.0);
        OpenAgain(slot);
        ++deaths_;
    }
    /// Every device is lost with the port, each at its next use, and comes back by its row.
    void PullThePlug() {
        simulator::Rack rack = desk_->Line().WithRack([](simulator::Rack& all) { return all; });
        desk_->Unplug();
        for (int slot = 0; slot < Devices; ++slot) {
            BoxAnswers boxes(AnyNumberOfOk());
            desk_->BringForward(slot);
            QWidget* fader = FaderOf(slot);
            driver::Press(fader, Qt::Key_Up);
            if (desk_->IsOpen(slot)) {
                driver::Press(fader, Qt::Key_Down);
            }
            QVERIFY2(!desk_->IsOpen(slot), qPrintable(QString::fromStdString(desk_->Status())));
            QCOMPARE(boxes.Seen().size(), std::size_t{1});
        }
        desk_->PlugIn(std::move(rack));
        for (int slot = 0; slot < Devices; ++slot) {
            OpenAgain(slot);
        }
    }
    void RunMeters(int slot) {
        desk_->ShowTab(controls::GainsTab, slot);
        desk_->Form(slot).Timer1.Start(5);
        QTest::qWait(30);
        desk_->Form(slot).Timer1.Stop();
    }
    void Edit(int slot) {
        last_ = edits_->Edit(slot);
        ++edited_;
        QVERIFY2(desk_->IsOpen(slot), qPrintable(last_ + QString::fromStdString(desk_->Status())));
    }
    void Happen(int slot) {
        switch (happened_++ % 10) {
        case 0:
            return SaveAndLoad(slot);
        case 1:
            return StoreAndRead(slot);
        case 2:
            return DieAndComeBack(slot);
        case 3:
            return RunMeters(slot);
        case 4:
        case 5:
        case 6:
            return CloseAndOpen(slot);
        default:
            return Disturb(slot);
        }
    }
    /// What the program has taken from the heap and not given back, with every graph as crowded as it can be, for a
    /// graph keeps the room of the strokes that it once had, and without the toolkit's cache of pictures.
    std::size_t HeapInUse() {
        constexpr std::size_t curves = 7;
        const std::vector<controls::Picture::Point> line(1705);
        for (int slot = 0; slot < Devices; ++slot) {
            for (controls::Picture& graph : desk_->Form(slot).Picture1) {
                graph.Clear();
                for (std::uint8_t curve = 0; curve < curves; ++curve) {
                    graph.SetPen({curve, 0, 1});
                    graph.LinesTo(line);
                }
                graph.Clear();
            }
        }
        QPixmapCache::clear();
        malloc_trim(0);
        const struct mallinfo2 heap = mallinfo2();
        return heap.uordblks + heap.hblkhd;
    }
    QString Disagreement() {
        for (int slot = 0; slot < Devices; ++slot) {
            simulator::PresetBody live = desk_->Live(IdOf(slot));
            const testing::Body image = Body(IdOf(slot));
            // Loads, reads and stores have their own ways with the mutes.
            live[simulator::PresetMutesOffset] = image[simulator::PresetMutesOffset];
            const QString fault = ImageDifference(image, live);
            if (!fault.isEmpty()) {
                return QStringLiteral("ID:%1 %2 after edit %3 of %4")
                    .arg(IdOf(slot))
                    .arg(fault)
                    .arg(edited_)
                    .arg(last_);
            }
        }
        return {};
    }

    std::unique_ptr<WidgetEdits> edits_;
    QString last_;
    int edited_ = 0;
    int happened_ = 0;
    int openings_ = 0;
    int loads_ = 0;
    int stores_ = 0;
    int deaths_ = 0;
};

void WorkingDayTest::HoldsAllDay() {
    const int day = EditsOfTheDay();
    std::size_t heap = 0;
    int descriptors = 0;
    std::size_t frames = 0;
    int rounds = 0;
    int quarter = 1;
    // No window remembers a step when the plug was pulled, so what the heap holds then can be compared.
    const auto end_quarter = [&] {
        PullThePlug();
        edited_ += 5;
        ++quarter;
    };
    while (edited_ < day) {
        const int slot = AnySlot();
        desk_->BringForward(slot);
        for (int edits = 0; edits < 5 && !QTest::currentTestFailed(); ++edits) {
            Edit(slot);
        }
        if (QTest::currentTestFailed()) {
            return;
        }
        QCOMPARE(Disagreement(), QString());
        if (++rounds % 4 == 0) {
            Happen(slot);
        }
        if (quarter < 4 && edited_ >= quarter * day / 4) {
            end_quarter();
        }
        if (QTest::currentTestFailed()) {
            return;
        }
        frames += desk_->TakeFrames().size();
        if (heap == 0 && quarter == 3) { // by then each thing has happened, and caches are full
            heap = HeapInUse();
            descriptors = OpenDescriptors();
        }
    }
    end_quarter();
    if (QTest::currentTestFailed()) {
        return;
    }
    QCOMPARE(Disagreement(), QString());
    const double grown = static_cast<double>(HeapInUse()) - static_cast<double>(heap);
    qInfo(
        "%d edits, %zu frames, %d openings, %d loads, %d stores and reads, %d deaths; heap %.0f KiB, grown by %.0f KiB",
        edited_, frames, openings_, loads_, stores_, deaths_, static_cast<double>(heap) / 1024.0, grown / 1024.0);
    QVERIFY(frames > static_cast<std::size_t>(day) / 2);
    QVERIFY(openings_ > 0 && loads_ > 0 && stores_ > 0 && deaths_ > 0);
    QCOMPARE(OpenDescriptors(), descriptors);
    QVERIFY2(grown < 1024.0 * 1024.0, QByteArray::number(grown));
    QVERIFY(!desk_->Logic().Windows.ControlEventsOff);
    QVERIFY(!desk_->Logic().Link.Current.Running());
}

NRV_UI_TEST(WorkingDayTest);
#include "working_day_test.moc"
