// Every command of a control window from its own widget by a real event: what the device hears, what it makes of it,
// and that window, stores and device agree after any series of edits.

#include "model/any_edit.h"
#include "model/tables.h"
#include "rack_test.h"
#include "ui_test.h"

#include <QComboBox>

#include <random>

using namespace nrv;
using namespace nrv::test;
using testing::ImageLayout;

namespace {

constexpr std::array<int, 16> TabOfCopy{8, 8, 8, 8, 8, 8, 8, 8, 0, 1, 2, 3, 4, 5, 6, 7};

/// Hertz and code of some entries of the frequency scale.
struct Entry {
    const char* Hertz;
    int Code;
};
constexpr std::array<Entry, 4> Entries{{{"20", 0}, {"100", 28}, {"1000", 68}, {"20000", 120}}};

} // namespace

class CommandsOnTheRackTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        simulator::Rack rack;
        body_ = RandomPreset(11);
        Furnish(rack.Add(Id, "Every command   "), body_);
        QVERIFY(ConnectAndOpenAll(std::move(rack)));
    }
    void cleanup() { TakeDown(); }

    void OpeningAWindowLeavesTheImageAsItIs();
    void EveryGainFaderIsOneFrame();
    void EveryCrossoverSideIsOneFrameByItsFrequencyAndByItsSlope();
    void EveryFaderOfTheDynamicsSendsAllThreeCodes();
    void EverySourceIsOneFrame();
    void EveryMuteIsTwoFrames();
    void EveryPhaseIsOneFrame();
    void EveryDelayIsOneFrameByArrowsAndByTyping();
    void TheDelayUnitWritesTheOptionBits();
    void TheInputTypeIsOneFrame();
    void AfterAnyEditsTheWindowTheStoresAndTheDeviceAgree();

  private:
    controls::FrmCtrl& Form() { return desk_->Form(); }
    void Expect(std::size_t place, int value) { body_[place] = static_cast<simulator::Byte>(value); }
    int At(std::size_t place) const { return body_[place]; }
    /// Moves a fader one step by a key, away from its nearer end; gives its new position.
    int Step(const char* name, int index, int position, int middle) {
        const bool down = position < middle;
        driver::Press(desk_->Control(name, index), down ? Qt::Key_Down : Qt::Key_Up);
        return down ? position + 1 : position - 1;
    }
    /// The arrows of an up-down, away from its nearer end; gives its new position.
    int Click(const char* name, int index, int position, int middle) {
        QWidget* arrows = desk_->Control(name, index);
        const bool up = position < middle;
        QTest::mouseClick(arrows, Qt::LeftButton, {}, QPoint(arrows->width() / 2, up ? 4 : arrows->height() - 4));
        return up ? position + 1 : position - 1;
    }
    void TypeAndEnter(const char* name, int index, const QString& text) {
        QWidget* box = desk_->Control(name, index);
        Type(box, text);
        driver::Press(box, Qt::Key_Return);
    }
    /// What the last event made the device hear and hold, against what it should.
    QString Fault(const std::vector<simulator::Frame>& expected) {
        QString frames = Difference(desk_->TakeFrames(), expected);
        if (!frames.isEmpty()) {
            return frames;
        }
        const QString live = ImageDifference(desk_->Live(Id), body_);
        return live.isEmpty() ? ImageDifference(desk_->Image(Id).PresetBody, body_) : live;
    }
    simulator::Frame Gain(int channel) {
        return Request(Id, {1, channel, 0, 0, 0, 0, 0, 0, At(ImageLayout::Gain(channel))});
    }
    simulator::Frame Dynamics(int channel) {
        const std::size_t d = ImageLayout::Dynamics(channel);
        return Request(Id, {7, channel, 0, 0, 0, At(d), At(d + 1), 0, At(d + 3)});
    }
    simulator::Frame Crossover(int side) {
        const std::size_t x = ImageLayout::Crossover(side / 2, side % 2);
        return Request(Id, {4, side / 2 + 2, side % 2, 0, 0, 0, 0, At(x + 1), At(x + 2)});
    }
    simulator::Frame Delay(int channel) {
        const std::size_t d = ImageLayout::Delay(channel);
        return Request(Id, {2, channel, 0, 0, 0, 0, At(d), At(d + 1), At(d + 2)});
    }
    void ExpectDelay(int channel, int coarse, int fine) {
        const std::size_t d = ImageLayout::Delay(channel);
        Expect(d, coarse / 256);
        Expect(d + 1, coarse % 256);
        Expect(d + 2, fine);
    }
    QString Disagreement();

    simulator::PresetBody body_{}; ///< what the device's image should be
};

void CommandsOnTheRackTest::OpeningAWindowLeavesTheImageAsItIs() {
    // Every byte, of master, noise gate, names and of no use alike.
    QCOMPARE(ImageDifference(desk_->Image(Id).PresetBody, body_), QString());
    QCOMPARE(ImageDifference(desk_->Live(Id), body_), QString());
    // Again, with an eye on the line: nothing but questions.
    {
        driver::BoxAnswers boxes({QStringLiteral("Yes")});
        desk_->Window()->close();
    }
    desk_->TakeFrames();
    desk_->DoubleClick(0);
    QVERIFY(driver::WaitUntil([&] { return desk_->IsOpen(0); }));
    const std::vector<simulator::Frame> frames = desk_->TakeFrames();
    QCOMPARE(frames.size(), std::size_t{32});
    for (const simulator::Frame& frame : frames) {
        QCOMPARE(frame[3], simulator::Byte{0x10});
    }
    desk_->Image(Id).PresetBody.fill(0xAA);
    desk_->Logic().Devices.ReadDeviceImage(Id);
    QCOMPARE(ImageDifference(desk_->Image(Id).PresetBody, body_), QString());
}

void CommandsOnTheRackTest::EveryGainFaderIsOneFrame() {
    for (int i = 0; i < 16; ++i) {
        desk_->ShowTab(TabOfCopy[static_cast<std::size_t>(i)]);
        const int channel = i % 8;
        const std::size_t place = ImageLayout::Gain(channel);
        Expect(place, 120 - Step("Slider1", i, 120 - At(place), 60));
        QCOMPARE(Fault({Gain(channel)}), QString());
        QCOMPARE(Form().Slider1[static_cast<std::size_t>((i + 8) % 16)].Position(), 120 - At(place));
    }
    desk_->ShowTab(controls::GainsTab);
    Expect(ImageLayout::Master, 120 - Step("Slider100", controls::NoIndex, 120 - At(ImageLayout::Master), 60));
    QCOMPARE(Fault({Request(Id, {12, 0, 0, 0, 0, 0, 0, 0, At(ImageLayout::Master)})}), QString());
}

void CommandsOnTheRackTest::EveryCrossoverSideIsOneFrameByItsFrequencyAndByItsSlope() {
    for (int side = 0; side < 12; ++side) {
        desk_->ShowTab(side / 2 + 2);
        const std::size_t block = ImageLayout::Crossover(side / 2, side % 2);
        const Entry& entry = Entries[static_cast<std::size_t>(side) % Entries.size()];
        TypeAndEnter("Text8", side, QLatin1String(entry.Hertz));
        Expect(block + 1, entry.Code);
        QCOMPARE(Fault({Crossover(side)}), QString());
        const bool down = At(block + 2) < 5;
        driver::Press(desk_->Control("Combo2", side), down ? Qt::Key_Down : Qt::Key_Up);
        Expect(block + 2, At(block + 2) + (down ? 1 : -1));
        QCOMPARE(Fault({Crossover(side)}), QString());
    }
}

void CommandsOnTheRackTest::EveryFaderOfTheDynamicsSendsAllThreeCodes() {
    for (int channel = 0; channel < 8; ++channel) {
        desk_->ShowTab(channel);
        const std::size_t block = ImageLayout::Dynamics(channel);
        const int top = channel < 2 ? 10 : 60;
        Expect(block + 3, top - Step("Slider4", channel, top - At(block + 3), top / 2));
        QCOMPARE(Fault({Dynamics(channel)}), QString());
        Expect(block + 1, 18 - Step("Slider5", channel, 18 - At(block + 1), 9));
        QCOMPARE(Fault({Dynamics(channel)}), QString());
        Expect(block, 29 - Step("Slider6", channel, 29 - At(block), 15));
        QCOMPARE(Fault({Dynamics(channel)}), QString());
    }
}

void CommandsOnTheRackTest::EverySourceIsOneFrame() {
    for (int output = 0; output < 6; ++output) {
        desk_->ShowTab(output + 2);
        const std::size_t place = ImageLayout::Source(output);
        const bool down = At(place) < 2;
        driver::Press(desk_->Control("Combo3", output), down ? Qt::Key_Down : Qt::Key_Up);
        Expect(place, At(place) + (down ? 1 : -1));
        QCOMPARE(Fault({Request(Id, {8, output + 2, 0, 0, 0, 0, 0, 0, At(place)})}), QString());
    }
}

void CommandsOnTheRackTest::EveryMuteIsTwoFrames() {
    for (int i = 0; i < 16; ++i) {
        desk_->ShowTab(TabOfCopy[static_cast<std::size_t>(i)]);
        const int channel = i % 8;
        driver::Click(desk_->Control("Check1", i));
        Expect(ImageLayout::Mutes, At(ImageLayout::Mutes) ^ (1 << channel));
        const int muted = (At(ImageLayout::Mutes) >> channel) & 1;
        QCOMPARE(
            Fault({Request(Id, {9, channel, 0, 0, 0, 0, 0, 0, muted}), WriteRequest(Id, 18, At(ImageLayout::Mutes))}),
            QString());
        QCOMPARE(int(desk_->Memory(Id, 18)), At(ImageLayout::Mutes));
        QCOMPARE(Form().Check1[static_cast<std::size_t>((i + 8) % 16)].Value(), muted);
    }
}

void CommandsOnTheRackTest::EveryPhaseIsOneFrame() {
    for (int i = 0; i < 16; ++i) {
        desk_->ShowTab(TabOfCopy[static_cast<std::size_t>(i)]);
        const int channel = i % 8;
        const std::size_t place = ImageLayout::Phase(channel);
        driver::ClickMark(desk_->Control("Check2", i));
        Expect(place, 1 - At(place));
        QCOMPARE(Fault({Request(Id, {3, channel, 0, 0, 0, 0, 0, 0, At(place)})}), QString());
        QCOMPARE(Form().Check2[static_cast<std::size_t>((i + 8) % 16)].Value(), At(place));
    }
}

void CommandsOnTheRackTest::EveryDelayIsOneFrameByArrowsAndByTyping() {
    for (int i = 0; i < 16; ++i) {
        const int tab = TabOfCopy[static_cast<std::size_t>(i)];
        desk_->ShowTab(tab == controls::GainsTab ? int(controls::DelaysTab) : tab);
        const int channel = i % 8;
        const std::size_t place = ImageLayout::Delay(channel);
        const auto twin = static_cast<std::size_t>((i + 8) % 16);
        int coarse = 256 * At(place) + At(place + 1);
        int fine = At(place + 2);
        coarse = Click("UpDown2", i, coarse, 1250);
        ExpectDelay(channel, coarse, fine);
        QCOMPARE(Fault({Delay(channel)}), QString());
        fine = Click("UpDown1", i, fine, 24);
        ExpectDelay(channel, coarse, fine);
        QCOMPARE(Fault({Delay(channel)}), QString());
        QCOMPARE(Form().UpDown2[twin].Position(), coarse);
        QCOMPARE(Form().UpDown1[twin].Position(), fine);
        // 300 + i ms and two fine steps.
        TypeAndEnter("Text2", i, QStringLiteral("%1,042 ms").arg(300 + i));
        ExpectDelay(channel, 300 + i, 2);
        QCOMPARE(Fault({Delay(channel)}), QString());
        QCOMPARE(Form().Text2[twin].Text(), std::to_string(300 + i) + ".042 ms");
    }
}

void CommandsOnTheRackTest::TheDelayUnitWritesTheOptionBits() {
    desk_->ShowTab(controls::DelaysTab);
    driver::ClickMark(desk_->Control("Option1", 1));
    QCOMPARE(Fault({WriteRequest(Id, 16, PlainOptions + 64)}), QString());
    QCOMPARE(int(desk_->Memory(Id, 16)), PlainOptions + 64);
    QVERIFY(Form().Text2[0].Text().ends_with(" m"));
    QVERIFY(!Form().Text2[8].Text().ends_with("m")); // a bare number, which is meant
    driver::ClickMark(desk_->Control("Option1", 0));
    QCOMPARE(Fault({WriteRequest(Id, 16, PlainOptions)}), QString());
    QCOMPARE(int(desk_->Memory(Id, 16)), PlainOptions);
    QVERIFY(Form().Text2[0].Text().ends_with(" ms"));
}

void CommandsOnTheRackTest::TheInputTypeIsOneFrame() {
    desk_->ShowTab(controls::GainsTab);
    driver::Press(desk_->Control("Combo4"), Qt::Key_Down);
    QCOMPARE(Fault({Request(Id, {13, 0, 0, 0, 0, 0, 0, 0, 1})}), QString());
    QCOMPARE(int(desk_->Memory(Id, 16)), PlainOptions + 16);
    QCOMPARE(int(desk_->Image(Id).SystemPage[16]), PlainOptions + 16);
    QCOMPARE(Form().Label400[0].Caption(), std::string(" SPDIF "));
    driver::Press(desk_->Control("Combo4"), Qt::Key_Up);
    QCOMPARE(Fault({Request(Id, {13})}), QString());
    QCOMPARE(int(desk_->Memory(Id, 16)), PlainOptions);
    QCOMPARE(Form().Label400[0].Caption(), std::string("Input 1"));
}

/// Where the window, the stores and the device do not say the same, by the layout of the image; empty when they do.
QString CommandsOnTheRackTest::Disagreement() {
    const simulator::PresetBody live = desk_->Live(Id);
    QString stores = ImageDifference(desk_->Image(Id).PresetBody, live);
    if (!stores.isEmpty()) {
        return stores;
    }
    const model::ParamRow& values = desk_->Logic().Stores.ParamValues[Id];
    controls::FrmCtrl& form = Form();
    const auto agree = [](double one, double other) { return std::abs(one - other) < 1e-9; };
    for (int channel = 0; channel < 8; ++channel) {
        const auto c = static_cast<std::size_t>(channel);
        const int gain = live[ImageLayout::Gain(channel)];
        const std::size_t delay = ImageLayout::Delay(channel);
        const int coarse = 256 * live[delay] + live[delay + 1];
        const int phase = live[ImageLayout::Phase(channel)];
        const int muted = (live[ImageLayout::Mutes] >> channel) & 1;
        const std::size_t dynamics = ImageLayout::Dynamics(channel);
        const int top = channel < 2 ? 10 : 60;
        for (const std::size_t i : {c, c + 8}) {
            if (form.Slider1[i].Position() != 120 - gain || form.UpDown2[i].Position() != coarse ||
                form.UpDown1[i].Position() != live[delay + 2] || form.Check2[i].Value() != phase ||
                form.Check1[i].Value() != muted) {
                return QStringLiteral("the controls %1").arg(i);
            }
        }
        if (!agree(values.ChannelGain[c], gain / 5.0 - 12.0) || values.DelayCoarse[c] != coarse ||
            values.DelayFine[c] != live[delay + 2] || values.ChannelPhase[c] != phase ||
            values.ChannelMute[c] != muted || values.LimiterThreshold[c] != live[dynamics + 3] ||
            values.LimiterRelease[c] != live[dynamics + 1] || values.LimiterAttack[c] != live[dynamics] ||
            form.Slider4[c].Position() != top - live[dynamics + 3] ||
            form.Slider5[c].Position() != 18 - live[dynamics + 1] ||
            form.Slider6[c].Position() != 29 - live[dynamics]) {
            return QStringLiteral("the values of channel %1").arg(channel);
        }
        for (int section = 0; section < ImageLayout::PeqCount(channel); ++section) {
            const std::size_t p = ImageLayout::Peq(channel, section);
            const int number = (channel < 2 ? 10 * channel : 20 + 4 * (channel - 2)) + section;
            const auto s = static_cast<std::size_t>(number);
            if (!agree(values.PeqGain[s], live[p + 4] / 5.0 - 15.0) ||
                !agree(values.PeqBandwidth[s], (live[p + 2] + 1) / 20.0) ||
                values.PeqFrequency[s] != model::FrequencyTable[live[p + 1]] ||
                form.Slider2[s].Position() != 150 - live[p + 4] || form.UpDown3[s].Position() != live[p + 2] ||
                form.Text4[s].Text() != std::to_string(int(model::FrequencyTable[live[p + 1]]))) {
                return QStringLiteral("section %1").arg(s);
            }
        }
    }
    for (int filter = 0; filter < 10; ++filter) {
        const auto f = static_cast<std::size_t>(filter);
        const std::size_t t = filter < 4 ? ImageLayout::Tone(filter / 2, filter % 2) : ImageLayout::Tone(filter - 2, 0);
        if (form.Slider3[f].Position() != 36 - live[t + 4] || form.Combo1[f].Index() != live[t + 2] ||
            form.Text7[f].Text() != std::to_string(int(model::FrequencyTable[live[t + 1]])) ||
            !agree(values.ToneGain[f], live[t + 4] / 2.0 - 12.0) || values.ToneType[f] != live[t + 2]) {
            return QStringLiteral("tone filter %1").arg(f);
        }
    }
    for (int side = 0; side < 12; ++side) {
        const auto s = static_cast<std::size_t>(side);
        const std::size_t x = ImageLayout::Crossover(side / 2, side % 2);
        if (form.Combo2[s].Index() != live[x + 2] ||
            form.Text8[s].Text() != std::to_string(int(model::FrequencyTable[live[x + 1]])) ||
            values.CrossoverSlope[s] != live[x + 2] ||
            values.CrossoverFrequency[s] != model::FrequencyTable[live[x + 1]]) {
            return QStringLiteral("crossover side %1").arg(s);
        }
    }
    for (int output = 0; output < 6; ++output) {
        const int source = live[ImageLayout::Source(output)];
        if (form.Combo3[static_cast<std::size_t>(output)].Index() != source ||
            values.OutputSource[static_cast<std::size_t>(output)] != source) {
            return QStringLiteral("the source of Out %1").arg(output + 1);
        }
    }
    if (desk_->Memory(Id, 18) != live[ImageLayout::Mutes]) {
        return QStringLiteral("the device's mute byte");
    }
    return agree(values.MasterGain, live[143] / 5.0 - 12.0) && form.Slider100.Position() == 120 - live[143]
               ? QString()
               : QStringLiteral("the master gain");
}

void CommandsOnTheRackTest::AfterAnyEditsTheWindowTheStoresAndTheDeviceAgree() {
    std::mt19937 random(718);
    QCOMPARE(Disagreement(), QString());
    std::size_t frames = 0;
    for (int edit = 0; edit < 500; ++edit) {
        testing::EditAnyParameter(Form(), random);
        frames += desk_->TakeFrames().size();
        if (edit % 10 == 9) {
            const QString fault = Disagreement();
            QVERIFY2(fault.isEmpty(), (fault + QStringLiteral(" after edit %1").arg(edit)).toLatin1());
        }
    }
    QVERIFY(frames > 450);
    QVERIFY(ImageDifference(desk_->Live(Id), body_) != QString());
    QVERIFY(!desk_->Logic().Windows.ControlEventsOff);
    // A window opened anew on what has become of it says the same.
    {
        driver::BoxAnswers boxes({QStringLiteral("Yes")});
        desk_->Window()->close();
    }
    QVERIFY(desk_->Open(0));
    QCOMPARE(Disagreement(), QString());
}

NRV_UI_TEST(CommandsOnTheRackTest);
#include "commands_on_the_rack_test.moc"
