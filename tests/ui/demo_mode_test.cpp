// Demo mode stands in the status line of the real main window for as long as nothing else is said there.

#include "rack_test.h"
#include "ui_test.h"

#include <QLabel>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;

namespace {

constexpr std::size_t RecordSize = 128;
constexpr std::size_t FoundFlag = 20;

/// The demo devices of a list of IDs.
std::vector<std::uint8_t> SpeakersFile(const std::vector<int>& ids) {
    std::vector<std::uint8_t> bytes(33 * RecordSize);
    for (const int id : ids) {
        const std::size_t record = static_cast<std::size_t>(id) * RecordSize;
        bytes[record] = static_cast<std::uint8_t>(id);
        bytes[record + FoundFlag] = 1;
    }
    return bytes;
}

} // namespace

class DemoModeTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() { SetUp(FactoryRack({Id})); }
    void cleanup() { TakeDown(); }

    void StandsAtTheFootAndComesBack();

  private:
    static QString AtTheFoot() { return driver::FindAs<QLabel>(QStringLiteral("StatusLine"))->text(); }
};

void DemoModeTest::StandsAtTheFootAndComesBack() {
    const QString demo = QStringLiteral("Demo mode: nothing is sent");
    desk_->Folder().Write("Speakers.cfg", SpeakersFile({Id}));
    BoxAnswers boxes({QStringLiteral("Yes")});
    const driver::WhenShown shown(QStringLiteral("FrmSelect"), [](QWidget& dialog) {
        driver::Click(driver::Find(QStringLiteral("Proceed"), &dialog));
    });
    desk_->Application().Start();
    QVERIFY(driver::WaitUntil(
        [&] { return desk_->Logic().State.FoundLast == 0 && !desk_->Logic().Splash.Timer1.Running(); }));
    QVERIFY(driver::WaitUntil([] { return driver::Find(QStringLiteral("Devices")) != nullptr; }));
    QVERIFY(driver::WaitUntil([&] { return !desk_->Logic().List.Timer1.Running(); }));
    // The one demo device of a USB line has the ID 0. Why there is no line comes first.
    QCOMPARE(AtTheFoot(), QStringLiteral("No serial port is chosen."));
    QVERIFY(desk_->Open(0, 0));
    QCOMPARE(AtTheFoot(), demo);

    // A sentence comes over it, and it comes back with what the user does next.
    std::string asked;
    boxes.Next(QStringLiteral("No"));
    boxes.OnBox = [&](QWidget&) { asked = AtTheFoot().toStdString(); };
    QVERIFY(desk_->WithTool(controls::StorePresetTool, "FrmStore", [](QWidget& dialog) {
        Type(In(dialog, "Text1"), QStringLiteral("Hall"));
        driver::Click(In(dialog, "Command1(1)"));
    }));
    QCOMPARE(asked, std::string("Stores \"Hall\" into position 1, which is empty"));
    QCOMPARE(AtTheFoot(), demo);
    WritePresetFile("short.n91", {1, 2, 3});
    QVERIFY(LoadFile(QString::fromStdString((PresetFolder() / "short.n91").string())));
    QVERIFY2(AtTheFoot().startsWith(QStringLiteral("\"short.n91\" holds 3 of the 771 bytes of a preset;")),
             qPrintable(AtTheFoot()));
    QVERIFY(AtTheFoot().contains(QStringLiteral("All outputs are muted, for ID:0 takes no mutes from a preset.")));
    desk_->ShowTab(controls::GainsTab);
    driver::Click(desk_->Control("Check1", 2));
    QCOMPARE(AtTheFoot(), demo);
    QVERIFY(desk_->TakeFrames().empty());
}

NRV_UI_TEST(DemoModeTest);
#include "demo_mode_test.moc"
