// The tool dialogs in the program's own windows, worked by mouse and keys, with a virtual rack at the other end of the
// line: presets in the device and on disk, copies, and a device that goes away in the middle.

#include "presets/copy_trace.h"
#include "rack_test.h"
#include "ui_test.h"

#include <QComboBox>
#include <QProgressBar>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;
using driver::FindAs;
using testing::CopyTrace;
using testing::ImageLayout;
using testing::LoadTrace;

namespace {

/// Every place of a channel that a copy reaches, but for its mute.
std::vector<std::size_t> CopiedPlaces(int channel) {
    const std::size_t delay = ImageLayout::Delay(channel);
    const std::size_t dynamics = ImageLayout::Dynamics(channel);
    std::vector<std::size_t> places{ImageLayout::Gain(channel),  delay,    delay + 1,    delay + 2,
                                    ImageLayout::Phase(channel), dynamics, dynamics + 1, dynamics + 3};
    const auto add_filter = [&](std::size_t block, std::initializer_list<std::size_t> codes) {
        for (const std::size_t code : codes) {
            places.push_back(block + code);
        }
    };
    for (int section = 0; section < ImageLayout::PeqCount(channel); ++section) {
        add_filter(ImageLayout::Peq(channel, section), {1, 2, 4});
    }
    for (int filter = 0; filter < ImageLayout::ToneCount(channel); ++filter) {
        add_filter(ImageLayout::Tone(channel, filter), {1, 2, 4});
    }
    if (channel >= 2) {
        places.push_back(ImageLayout::Source(channel - 2));
        add_filter(ImageLayout::Crossover(channel - 2, 0), {1, 2});
        add_filter(ImageLayout::Crossover(channel - 2, 1), {1, 2});
    }
    return places;
}

/// Makes two channels differ in all that a copy takes over.
void SetApart(simulator::PresetBody& body, int source, int destination) {
    const std::vector<std::size_t> from = CopiedPlaces(source);
    const std::vector<std::size_t> to = CopiedPlaces(destination);
    for (std::size_t n = 0; n < from.size(); ++n) {
        simulator::Byte& byte = body[to[n]];
        if (byte == body[from[n]]) {
            byte = byte == 0 ? simulator::Byte{1} : static_cast<simulator::Byte>(byte - 1);
        }
    }
    const int mute = (body[ImageLayout::Mutes] >> source) & 1;
    const int others = body[ImageLayout::Mutes] & ~(1 << destination);
    body[ImageLayout::Mutes] = static_cast<simulator::Byte>(others | ((1 - mute) << destination));
}

/// Device 5 takes its mutes from presets and device 9 does not.
simulator::Rack TwoDevices() {
    simulator::PresetBody apart = RandomPreset(1);
    SetApart(apart, 0, 1);
    SetApart(apart, 2, 5);
    simulator::Rack rack;
    Furnish(rack.Add(Id, "Left top        "), apart);
    rack.At(Id).SetMemory(simulator::OptionBitsAddress, MutesWithPreset);
    Furnish(rack.Add(OtherId, "Right top       "), RandomPreset(2));
    rack.At(OtherId).SetMemory(simulator::OptionBitsAddress, PlainOptions);
    rack.At(OtherId).PutPreset(4, "Filled elsewhere", RandomPreset(3));
    return rack;
}

/// Keeps what a bar shows from step to step, and when it goes.
class BarWatch : public QObject {
  public:
    explicit BarWatch(QProgressBar& bar) : bar_(bar) {
        bar.installEventFilter(this);
        connect(&bar, &QProgressBar::valueChanged, this, [this](int value) {
            Values.push_back(value);
            AlwaysVisible = AlwaysVisible && bar_.isVisible();
            if (OnValue) {
                OnValue(value);
            }
        });
    }
    bool eventFilter(QObject*, QEvent* event) override {
        if (event->type() == QEvent::Hide && ValueAtHiding < 0) {
            ValueAtHiding = bar_.value();
            MaximumAtHiding = bar_.maximum();
        }
        return false;
    }
    std::vector<int> Values;
    bool AlwaysVisible = true;
    int ValueAtHiding = -1;
    int MaximumAtHiding = -1;
    std::function<void(int)> OnValue;

  private:
    QProgressBar& bar_;
};

} // namespace

class ToolsOnTheRackTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        Connect(TwoDevices());
        QVERIFY(desk_->Open(0));
    }
    void cleanup() { TakeDown(); }

    void AStoreIntoPosition3Is450FramesInTheirOrder();
    void WhatWasStoredIsReadBackAfterEditing();
    void AReadTakesWhatTheMemoryOfAnotherDeviceHolds();
    void AnEmptyPositionSaysSoAndSendsNothing();
    void AStoreThatIsRefusedAtItsQuestionSendsNothing();
    void ALoadBringsTheDeviceBackToWhatWasSaved();
    void ACancelledFileDialogChangesNothing();
    void ACopyOfAnInputIsItsWholeTrace();
    void ACopyOfAnOutputIsItsWholeTrace();
    void EqualListPositionsOfACopySendNothing();
    void ADeviceThatDiesDuringAStoreTakesItsWindowAndTheDialogAlong();

  private:
    controls::FrmCtrl& Form() { return desk_->Form(); }
    QString Title(int slot = 0) { return desk_->Window(slot)->windowTitle(); }
    void EditGain(int channel, Qt::Key key) {
        desk_->ShowTab(controls::GainsTab);
        driver::Press(desk_->Control("Slider1", channel), key);
    }
    /// Stores into a position, counted from 0, under a name, with an eye on the bar before it and after.
    bool Store(int position, const QString& name, const std::function<void(BarWatch&)>& before = {},
               const std::function<void(BarWatch&)>& after = {}) {
        return desk_->WithTool(controls::StorePresetTool, "FrmStore", [&](QWidget& dialog) {
            driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1"), &dialog), position);
            Type(In(dialog, "Text1"), name);
            BarWatch watch(*FindAs<QProgressBar>(QStringLiteral("ProgressBar1"), &dialog));
            if (before) {
                before(watch);
            }
            driver::Click(In(dialog, "Command1(1)"));
            if (after) {
                after(watch);
            }
        });
    }
    bool Read(int position) {
        return desk_->WithTool(controls::ReadPresetTool, "FrmRead", [&](QWidget& dialog) {
            for (int line = 0; line < position; ++line) {
                driver::Press(In(dialog, "List1"), Qt::Key_Down);
            }
            driver::Click(In(dialog, "Command1(1)"));
        });
    }
};

void ToolsOnTheRackTest::AStoreIntoPosition3Is450FramesInTheirOrder() {
    // The first box of the fourth row of view boxes, which goes to the live mute byte in place of the mutes: that is
    // meant.
    desk_->ShowTab(2);
    driver::ClickMark(desk_->Control("Check7", 0));
    desk_->TakeFrames();
    const simulator::PresetBody body = desk_->Live(Id);
    const std::string name = "Stage night     ";

    BoxAnswers boxes({QStringLiteral("Yes")});
    std::vector<int> values;
    int at_hiding = -1;
    int maximum = -1;
    bool visible = false;
    QVERIFY(Store(2, QStringLiteral("Stage night"), {}, [&](const BarWatch& bar) {
        values = bar.Values;
        at_hiding = bar.ValueAtHiding;
        maximum = bar.MaximumAtHiding;
        visible = bar.AlwaysVisible;
    }));
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Store Preset"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("               Are you sure ? "));

    std::vector<simulator::Frame> expected{WriteRequest(Id, 18, 1), WriteRequest(Id, 48 + 2, 0x55)};
    for (int i = 0; i < 16; ++i) {
        expected.push_back(WriteRequest(Id, 64 + 16 * 2 + i, name[static_cast<std::size_t>(i)]));
    }
    for (int i = 0; i < 432; ++i) {
        expected.push_back(WriteRequest(Id, 640 + 432 * 2 + i, body[static_cast<std::size_t>(i)]));
    }
    QCOMPARE(expected.size(), std::size_t{450});
    QCOMPARE(Difference(desk_->TakeFrames(), expected), QString());

    // The bar goes up by one with each frame and vanishes at 450 of 480, which is meant.
    QCOMPARE(values.size(), std::size_t{450});
    for (int step = 0; step < 450; ++step) {
        QCOMPARE(values[static_cast<std::size_t>(step)], step + 1);
    }
    QVERIFY(visible);
    QCOMPARE(at_hiding, 450);
    QCOMPARE(maximum, 480);

    desk_->Line().WithRack([&](simulator::Rack& rack) {
        const simulator::Device& device = rack.At(Id);
        QVERIFY(device.PresetUsed(2));
        QCOMPARE(device.PresetName(2), name);
        QCOMPARE(ImageDifference(device.Preset(2), body), QString());
        QCOMPARE(ImageDifference(device.LiveImage(), body), QString());
        QCOMPARE(int(device.Memory(18)), 1);
        for (const int other : {0, 1, 3, 4, 5, 6, 7}) {
            QVERIFY(!device.PresetUsed(other));
        }
    });
    QCOMPARE(Title(), QStringLiteral("ID:5 NRV-718 - Last preset loaded: come from DEVICE - Stage night     "));
}

void ToolsOnTheRackTest::WhatWasStoredIsReadBackAfterEditing() {
    BoxAnswers boxes({QStringLiteral("Yes"), QStringLiteral("Yes")});
    QVERIFY(Store(2, QStringLiteral("Stage night")));
    const testing::Body stored = Body();
    const int position = Form().Slider1[3].Position();
    EditGain(3, position > 60 ? Qt::Key_PageUp : Qt::Key_PageDown);
    driver::Click(desk_->Control("Check1", 4));
    QVERIFY(Body() != stored);
    desk_->TakeFrames();

    QVERIFY(Read(2));
    QCOMPARE(boxes.Seen()[1].Title, QStringLiteral("Read Preset"));
    QCOMPARE(boxes.Seen()[1].Text, QStringLiteral("Overwrite current editing, are you sure ? "));
    QCOMPARE(ImageDifference(Body(), stored), QString());
    QCOMPARE(Form().Slider1[3].Position(), position);
    QCOMPARE(FindAs<QSlider>(QStringLiteral("Slider1(3)"), desk_->Window())->value(), position);
    QCOMPARE(Form().Check1[4].Value(), (stored[71] >> 4) & 1);
    // The parameters are not sent back.
    QCOMPARE(Difference(desk_->TakeFrames(), {Request(Id, {0x10, 0, 18}), Request(Id, {0x0B, 2})}), QString());
    QCOMPARE(Title(), QStringLiteral("ID:5 NRV-718 - Last preset loaded: come from DEVICE - Stage night     "));
}

void ToolsOnTheRackTest::AReadTakesWhatTheMemoryOfAnotherDeviceHolds() {
    BoxAnswers boxes({QStringLiteral("Yes"), QStringLiteral("Yes")});
    desk_->Window()->close();
    QVERIFY(desk_->Open(1));
    const std::uint8_t beyond = Body(OtherId)[432];
    QVERIFY(Read(4));
    QCOMPARE(Difference(desk_->TakeFrames(), {Request(OtherId, {0x10, 0, 18}), Request(OtherId, {0x0B, 4})}),
             QString());
    // Without the option the inputs come up sounding and the outputs muted, whatever the preset says.
    simulator::PresetBody expected = RandomPreset(3);
    expected[71] = 0xFC;
    QCOMPARE(ImageDifference(Body(OtherId), expected), QString());
    QCOMPARE(Body(OtherId)[432], beyond);
    QCOMPARE(Form().Slider1[7].Position(), 120 - expected[ImageLayout::Gain(7)]);
    for (std::size_t channel = 0; channel < 8; ++channel) {
        QCOMPARE(Form().Check1[channel].Value(), channel < 2 ? 0 : 1);
    }
    QCOMPARE(Title(), QStringLiteral("ID:9 NRV-718 - Last preset loaded: come from DEVICE - Filled elsewhere"));
}

void ToolsOnTheRackTest::AnEmptyPositionSaysSoAndSendsNothing() {
    const testing::Body before = Body();
    BoxAnswers boxes({QStringLiteral("OK")});
    bool stays = false;
    QVERIFY(desk_->WithTool(controls::ReadPresetTool, "FrmRead", [&](QWidget& dialog) {
        driver::Click(In(dialog, "Command1(1)"));
        stays = dialog.isVisible();
        driver::Click(In(dialog, "Command1(0)"));
        QVERIFY(!dialog.isVisible());
    }));
    QVERIFY(stays);
    QCOMPARE(boxes.Seen().size(), std::size_t{1});
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Read Preset"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("Preset empty"));
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(Body(), before);
}

void ToolsOnTheRackTest::AStoreThatIsRefusedAtItsQuestionSendsNothing() {
    BoxAnswers boxes({QStringLiteral("No")});
    const QString title = Title();
    bool stays = false;
    QVERIFY(desk_->WithTool(controls::StorePresetTool, "FrmStore", [&](QWidget& dialog) {
        driver::Click(In(dialog, "Command1(1)"));
        stays = dialog.isVisible();
    }));
    QVERIFY(stays);
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(Title(), title);
}

void ToolsOnTheRackTest::ALoadBringsTheDeviceBackToWhatWasSaved() {
    std::filesystem::create_directory(PresetFolder());
    const simulator::PresetBody live = desk_->Live(Id);
    const model::PresetImageRow image = desk_->Image(Id);
    QVERIFY(ChooseFile(controls::SavePresetTool, QStringLiteral("club.n91")));
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(Title(), QStringLiteral("ID:5 NRV-718 - Last preset loaded: come from PC - club.n91"));
    const auto* bytes = reinterpret_cast<const std::uint8_t*>(&image);
    QCOMPARE(desk_->Folder().Read("preset/club.n91"), std::vector<std::uint8_t>(bytes, bytes + 771));

    EditGain(0, Form().Slider1[0].Position() > 60 ? Qt::Key_PageUp : Qt::Key_PageDown);
    EditGain(6, Form().Slider1[6].Position() > 60 ? Qt::Key_PageUp : Qt::Key_PageDown);
    driver::Click(desk_->Control("Check1", 2));
    desk_->ShowTab(controls::DelaysTab);
    driver::ClickMark(desk_->Control("Option1", 1));
    Type(desk_->Control("Text2", 3), QStringLiteral("3.4"));
    driver::Press(desk_->Control("Text2", 3), Qt::Key_Return);
    desk_->ShowTab(4);
    driver::Choose(qobject_cast<QComboBox*>(desk_->Control("Combo3", 2)), (Form().Combo3[2].Index() + 1) % 3);
    driver::Press(desk_->Control("Slider2", 30),
                  Form().Slider2[30].Position() > 75 ? Qt::Key_PageUp : Qt::Key_PageDown);
    const bool at_1_khz = image.PresetBody[ImageLayout::Crossover(2, 1) + 1] == 68;
    Type(desk_->Control("Text8", 5), at_1_khz ? QStringLiteral("500") : QStringLiteral("1000"));
    driver::Press(desk_->Control("Text8", 5), Qt::Key_Return);
    const simulator::PresetBody edited = desk_->Live(Id);
    QCOMPARE(ImageDifference(Body(), edited), QString());
    for (const std::size_t place :
         {ImageLayout::Gain(0), ImageLayout::Gain(6), ImageLayout::Mutes, ImageLayout::Delay(3) + 1,
          ImageLayout::Source(2), ImageLayout::Peq(4, 2) + 4, ImageLayout::Crossover(2, 1) + 1}) {
        QVERIFY2(edited[place] != live[place], QByteArray::number(int(place)));
    }

    testing::LoadSituation situation{.Id = Id, .OptionBits = MutesWithPreset, .OptionOn = true};
    situation.SourcesBefore = Sources();
    situation.UnitBefore = 1;
    const LoadTrace trace(image.PresetBody, situation);
    // One source changed, which its own event sends once more, and so did the unit.
    QCOMPARE(trace.Frames.size(), std::size_t{153 + 1 + 1});
    desk_->TakeFrames();
    QVERIFY(LoadFile(QStringLiteral("club.n91")));
    QCOMPARE(Difference(desk_->TakeFrames(), trace.Frames), QString());
    QCOMPARE(ImageDifference(desk_->Live(Id), live), QString());
    QCOMPARE(int(desk_->Memory(Id, 18)), int(live[71]));
    QCOMPARE(Body(), image.PresetBody);
    // Another model than after the saving, which is meant.
    QCOMPARE(Title(), QStringLiteral("ID:5 NRV 916 - Last preset loaded: come from PC - club.n91"));
    QCOMPARE(Form().SSTab1.Tab(), 4);
}

void ToolsOnTheRackTest::ACancelledFileDialogChangesNothing() {
    const QString title = Title();
    const testing::Body before = Body();
    for (const int tool : {controls::SavePresetTool, controls::LoadPresetTool}) {
        QVERIFY(desk_->WithTool(tool, "FileDialog", [](QWidget& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); }));
    }
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(Title(), title);
    QCOMPARE(Body(), before);
}

void ToolsOnTheRackTest::ACopyOfAnInputIsItsWholeTrace() {
    // First every value differs, the second time they are equal already.
    std::vector<std::size_t> lengths;
    for (int round = 0; round < 2; ++round) {
        CopyTrace trace(Body(), Id);
        trace.CopyInput(0, 1);
        lengths.push_back(trace.Frames.size());
        BoxAnswers boxes({QStringLiteral("Yes")});
        QVERIFY(desk_->WithTool(controls::CopyInputTool, "FrmCopyIn",
                                [](QWidget& dialog) { driver::Click(In(dialog, "Command1(0)")); }));
        QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Copy InA to InB"));
        QCOMPARE(Difference(desk_->TakeFrames(), trace.Frames), QString());
        QCOMPARE(Body(), trace.After);
        QCOMPARE(ImageDifference(desk_->Live(Id), trace.After), QString());
        QVERIFY(!desk_->Logic().Windows.ControlEventsOff);
    }
    // What runs its event when code changes it sends its frame twice: ten sections, two shelves, phase, mute.
    QCOMPARE(lengths[0], lengths[1] + 10 + 2 + 1 + 2);
    // Gain, ten sections, two shelves, phase, delay, three of the noise gate, two of the mute.
    QCOMPARE(lengths[1], std::size_t{1 + 10 + 2 + 1 + 1 + 3 + 2});
    const testing::Body after = Body();
    QCOMPARE(after[ImageLayout::Gain(1)], after[ImageLayout::Gain(0)]);
    // The master gain stands among the bytes of In B and is none of them.
    QCOMPARE(after[143], RandomPreset(1)[143]);
}

void ToolsOnTheRackTest::ACopyOfAnOutputIsItsWholeTrace() {
    std::vector<std::size_t> lengths;
    for (int round = 0; round < 2; ++round) {
        CopyTrace trace(Body(), Id);
        trace.CopyOutput(0, 3);
        lengths.push_back(trace.Frames.size());
        BoxAnswers boxes({QStringLiteral("Yes")});
        QVERIFY(desk_->WithTool(controls::CopyOutputTool, "FrmCopyOut", [&](QWidget& dialog) {
            auto* source = FindAs<QComboBox>(QStringLiteral("Combo1(0)"), &dialog);
            auto* destination = FindAs<QComboBox>(QStringLiteral("Combo1(1)"), &dialog);
            QCOMPARE(source->currentIndex(), 0);
            QCOMPARE(destination->currentIndex(), 1);
            driver::Choose(destination, 3);
            driver::Click(In(dialog, "Command1"));
        }));
        QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Copy Output"));
        const std::vector<simulator::Frame> frames = desk_->TakeFrames();
        QCOMPARE(Difference(frames, trace.Frames), QString());
        // The phase command goes two channels off, to Out 2, which is meant; the box of Out 4 sends its own when it
        // changes.
        const simulator::Frame phase_of_out_2 = Request(Id, {3, 3, 0, 0, 0, 0, 0, 0, Body()[ImageLayout::Phase(3)]});
        QCOMPARE(std::count(frames.begin(), frames.end(), phase_of_out_2), 1);
        QCOMPARE(Body(), trace.After);
        QCOMPARE(ImageDifference(desk_->Live(Id), trace.After), QString());
    }
    // The same for the source, two sides, four sections, a shelf, phase, mute.
    QCOMPARE(lengths[0], lengths[1] + 1 + 2 + 4 + 1 + 1 + 2);
    // Gain, source, three of the limiter, two sides, four sections, a shelf, phase, delay, two of the mute.
    QCOMPARE(lengths[1], std::size_t{1 + 1 + 3 + 2 + 4 + 1 + 1 + 1 + 2});
}

void ToolsOnTheRackTest::EqualListPositionsOfACopySendNothing() {
    const testing::Body before = Body();
    BoxAnswers boxes({QStringLiteral("OK")});
    bool stays = false;
    QVERIFY(desk_->WithTool(controls::CopyOutputTool, "FrmCopyOut", [&](QWidget& dialog) {
        driver::Choose(FindAs<QComboBox>(QStringLiteral("Combo1(1)"), &dialog), 0);
        driver::Click(In(dialog, "Command1"));
        stays = dialog.isVisible();
    }));
    QVERIFY(stays);
    QCOMPARE(boxes.Seen()[0].Title, QStringLiteral("Copy Output"));
    QCOMPARE(boxes.Seen()[0].Text, QStringLiteral("Copy not possible, Source=Dest"));
    QVERIFY(desk_->TakeFrames().empty());
    QCOMPARE(Body(), before);
}

void ToolsOnTheRackTest::ADeviceThatDiesDuringAStoreTakesItsWindowAndTheDialogAlong() {
    BoxAnswers boxes({QStringLiteral("Yes"), QStringLiteral("OK")});
    std::vector<int> values;
    QVERIFY(Store(
        6, QStringLiteral("Never whole"),
        [&](BarWatch& bar) {
            // The port goes away, so that no time limit has to run out.
            bar.OnValue = [this](int value) {
                if (value == 100) {
                    desk_->Unplug();
                }
            };
        },
        [&](const BarWatch& bar) { values = bar.Values; }));
    QVERIFY(driver::WaitUntil([&] { return !desk_->IsOpen(0); }));
    QCOMPARE(boxes.Seen().size(), std::size_t{2});
    QCOMPARE(boxes.Seen()[1].Title, QLatin1String(DeathTitle));
    QCOMPARE(boxes.Seen()[1].Text, QStringLiteral(" The system will be close the communication with this device"));
    QCOMPARE(values.back(), 100);
    QWidget* dialog = driver::Find(QStringLiteral("FrmStore"));
    QVERIFY(dialog == nullptr || !dialog->isVisible());
    QVERIFY(QApplication::activeModalWidget() == nullptr);
    QVERIFY(desk_->Logic().State.DeviceUnconnected[Id]);
    QCOMPARE(desk_->Logic().Windows.OpenWindowTop, -1);
    QCOMPARE(RowText(0), QStringLiteral(" Unconnected      ID:5"));
    QCOMPARE(desk_->Logic().Main.Window.MousePointer(), controls::Pointer::Default);
    QVERIFY(!desk_->Process().Ended);

    // The rack comes back, and the row connects its device anew.
    desk_->PlugIn(TwoDevices());
    BoxAnswers again({QStringLiteral("Yes")});
    QVERIFY(desk_->Open(0));
    QCOMPARE(again.Seen()[0].Title, QLatin1String(ConnectTitle));
    QCOMPARE(ImageDifference(Body(), desk_->Live(Id)), QString());
    EditGain(1, Form().Slider1[1].Position() > 60 ? Qt::Key_Up : Qt::Key_Down);
    QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
    QCOMPARE(ImageDifference(Body(), desk_->Live(Id)), QString());
}

NRV_UI_TEST(ToolsOnTheRackTest);
#include "tools_on_the_rack_test.moc"
