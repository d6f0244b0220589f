// Files that cannot be loaded, and one that would lock the device: what is told, and what reaches the device.

#include "rack_test.h"
#include "ui_test.h"

#include <clocale>
#include <filesystem>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using testing::ImageLayout;
namespace fs = std::filesystem;

namespace {

constexpr int LockBit = 128;
constexpr int UnitBit = 64;
constexpr std::size_t OptionBitsAt = 433 + 16;

} // namespace

class RefusedFilesTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(RandomRack({Id, OtherId}, MutesWithPreset)));
        fs::create_directory(PresetFolder());
        StandReady();
    }
    void cleanup() { TakeDown(); }

    void ANameThatIsNoFileIsRefused_data();
    void ANameThatIsNoFileIsRefused();
    void ALinkToItselfIsToldInTheStatusLine();
    void TheSystemsReasonsAreInEnglish();
    void AFileWithTheLockBitDoesNotLock_data();
    void AFileWithTheLockBitDoesNotLock();
};

void RefusedFilesTest::ANameThatIsNoFileIsRefused_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("a link into a folder that is not there") << QStringLiteral("dangling.n91");
    QTest::newRow("a name where nothing can be made") << QStringLiteral("/proc/missing.n91");
}

void RefusedFilesTest::ANameThatIsNoFileIsRefused() {
    QFETCH(QString, name);
    fs::create_symlink(PresetFolder() / "nowhere" / "target.n91", PresetFolder() / "dangling.n91");
    const Witness own(*desk_, Id, 0);
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(LoadFile(name));
    QTest::qWait(30);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral(" Error"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral(" File not found. Try again."));
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    QCOMPARE(own.Difference(), QString());
    QCOMPARE(other_->Difference(), QString());
    QCOMPARE(desk_->Logic().Main.Window.MousePointer(), controls::Pointer::Default);
    QVERIFY(fs::is_symlink(PresetFolder() / "dangling.n91"));
    QVERIFY(!fs::exists(PresetFolder() / "nowhere"));
}

void RefusedFilesTest::TheSystemsReasonsAreInEnglish() {
    QVERIFY(std::setlocale(LC_MESSAGES, "C.UTF-8") != nullptr);
    const test::RackDesk another(test::FactoryRack({Id}));
    QCOMPARE(std::setlocale(LC_MESSAGES, nullptr), "C");
}

void RefusedFilesTest::ALinkToItselfIsToldInTheStatusLine() {
    fs::create_symlink(PresetFolder() / "circle.n91", PresetFolder() / "circle.n91");
    const Witness own(*desk_, Id, 0);
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(LoadFile(QStringLiteral("circle.n91")));
    QTest::qWait(30);
    QCOMPARE(boxes.Seen().size(), std::size_t{0});
    QVERIFY(desk_->Status().starts_with("The preset was not loaded. circle.n91 could not be read: "));
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    QCOMPARE(own.Difference(), QString());
    QCOMPARE(other_->Difference(), QString());
}

void RefusedFilesTest::AFileWithTheLockBitDoesNotLock_data() {
    QTest::addColumn<bool>("other_unit");
    QTest::newRow("the whole byte goes to the device") << true;
    QTest::newRow("the byte stays here") << false;
}

void RefusedFilesTest::AFileWithTheLockBitDoesNotLock() {
    QFETCH(bool, other_unit);
    const int unit = other_unit ? UnitBit : 0;
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(&desk_->Image(Id));
    std::vector<std::uint8_t> file(bytes, bytes + 771);
    file[ImageLayout::Gain(3)] = 33;
    file[OptionBitsAt] = static_cast<std::uint8_t>(MutesWithPreset + LockBit + unit);
    WritePresetFile("locked.n91", file);
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(LoadFile(QStringLiteral("locked.n91")));
    QCOMPARE(boxes.Seen().size(), std::size_t{0});
    const std::vector<simulator::Frame> frames = desk_->TakeFrames();
    // It was loaded, between its two marks.
    QCOMPARE(frames.front(), Request(Id, {0x0A}));
    QCOMPARE(frames.back(), Request(Id, {0x0A, 1}));
    QCOMPARE(int(desk_->Live(Id)[ImageLayout::Gain(3)]), 33);
    const auto option_bits = WriteRequest(Id, 16, MutesWithPreset + unit);
    QCOMPARE(std::count(frames.begin(), frames.end(), option_bits), std::ptrdiff_t{other_unit ? 1 : 0});
    QVERIFY(std::none_of(frames.begin(), frames.end(), [&](const auto& frame) {
        return frame[3] == 0x11 && frame[4] == 0 && frame[5] == 16 && frame != option_bits;
    }));
    QVERIFY(!desk_->Line().WithRack([](simulator::Rack& rack) { return rack.At(Id).Locked(); }));
    QCOMPARE(int(desk_->Image(Id).SystemPage[16]), MutesWithPreset + unit);
    QCOMPARE(desk_->Logic().Stores.ParamValues[Id].LockFlag, 0.0);
    desk_->ShowTab(controls::GainsTab);
    QVERIFY(desk_->Control("Slider1", 2)->isEnabled());
    driver::Click(desk_->Control("Check1", 2));
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{2});
    QCOMPARE(other_->Difference(), QString());
}

NRV_UI_TEST(RefusedFilesTest);
#include "refused_files_test.moc"
