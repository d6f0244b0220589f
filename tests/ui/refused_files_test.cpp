// Files that cannot be loaded, and one that would lock the device: what is told, and what reaches the device.

#include "rack_witness.h"
#include "ui/look/theme.h"

#include <filesystem>
#include <optional>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using testing::ImageLayout;
namespace fs = std::filesystem;

namespace {

constexpr int Id = 5;
constexpr int OtherId = 9;
constexpr int MutesWithPreset = 32 + 4;
constexpr int LockBit = 128;
constexpr int UnitBit = 64;
constexpr std::size_t OptionBitsAt = 433 + 16;

simulator::Rack TwoDevices() {
    simulator::Rack rack;
    unsigned seed = 1;
    for (const int id : {Id, OtherId}) {
        Furnish(rack.Add(id, "Top             "), RandomPreset(seed++));
        rack.At(id).SetMemory(simulator::OptionBitsAddress, MutesWithPreset);
    }
    return rack;
}

} // namespace

class RefusedFilesTest : public QObject {
    Q_OBJECT

  private slots:
    void initTestCase() { ui::ApplyTheme(*qApp); }
    void init() {
        impatience_.emplace();
        desk_ = std::make_unique<RackDesk>(TwoDevices());
        desk_->Connect();
        for (const int slot : {0, 1}) {
            QVERIFY(desk_->Open(slot, slot));
        }
        BringForward(*desk_, 0);
        presets_ = desk_->Folder().Path() / "preset";
        fs::create_directory(presets_);
        desk_->TakeFrames();
        other_ = std::make_unique<Witness>(*desk_, OtherId, 1);
    }
    void cleanup() {
        other_.reset();
        desk_.reset();
    }

    void ANameThatIsNoFileIsRefused_data();
    void ANameThatIsNoFileIsRefused();
    void ALinkToItselfIsToldInTheStatusLine();
    void AFileWithTheLockBitDoesNotLock_data();
    void AFileWithTheLockBitDoesNotLock();

  private:
    bool Load(const QString& name) {
        return desk_->WithTool(controls::LoadPresetTool, "FileDialog", [&](QWidget& dialog) {
            auto* edit = dialog.findChild<QLineEdit*>();
            edit->setText(name);
            driver::Press(edit, Qt::Key_Return);
        });
    }

    std::optional<Impatience> impatience_;
    std::unique_ptr<RackDesk> desk_;
    std::unique_ptr<Witness> other_;
    fs::path presets_;
};

void RefusedFilesTest::ANameThatIsNoFileIsRefused_data() {
    QTest::addColumn<QString>("name");
    QTest::newRow("a link into a folder that is not there") << QStringLiteral("dangling.n91");
    QTest::newRow("a name where nothing can be made") << QStringLiteral("/proc/missing.n91");
}

void RefusedFilesTest::ANameThatIsNoFileIsRefused() {
    QFETCH(QString, name);
    fs::create_symlink(presets_ / "nowhere" / "target.n91", presets_ / "dangling.n91");
    const Witness own(*desk_, Id, 0);
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(Load(name));
    QTest::qWait(30);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral(" Error"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral(" File not found. Try again."));
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    QCOMPARE(own.Difference(), QString());
    QCOMPARE(other_->Difference(), QString());
    QCOMPARE(desk_->Logic().Main.Window.MousePointer(), controls::Pointer::Default);
    QVERIFY(fs::is_symlink(presets_ / "dangling.n91"));
    QVERIFY(!fs::exists(presets_ / "nowhere"));
}

void RefusedFilesTest::ALinkToItselfIsToldInTheStatusLine() {
    fs::create_symlink(presets_ / "circle.n91", presets_ / "circle.n91");
    const Witness own(*desk_, Id, 0);
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(Load(QStringLiteral("circle.n91")));
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
    desk_->Folder().Write("preset/locked.n91", file);
    BoxAnswers boxes(AnyNumberOfOk());
    QVERIFY(Load(QStringLiteral("locked.n91")));
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

QTEST_MAIN(RefusedFilesTest)
#include "refused_files_test.moc"
