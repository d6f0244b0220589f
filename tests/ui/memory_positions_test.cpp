// The choice of a memory position: one choice in list and box, lines that tell their numbers, and what is read is what
// is highlighted.

#include "rack_test.h"
#include "ui_test.h"

#include <QHelpEvent>
#include <QListWidget>
#include <QMessageBox>
#include <QToolTip>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;

namespace {

constexpr int UsedMark = 0x55;

simulator::Rack RackWithPresets() {
    simulator::Rack rack = RandomRack({Id, OtherId});
    simulator::Device& device = rack.At(Id);
    for (const auto& [position, name] :
         {std::pair(std::size_t{0}, "Club Main       "), std::pair(std::size_t{2}, "Hall            ")}) {
        device.SetMemory(48 + position, UsedMark);
        for (std::size_t n = 0; n < 16; ++n) {
            device.SetMemory(64 + 16 * position + n, static_cast<simulator::Byte>(name[n]));
        }
    }
    return rack;
}

void ClickLine(QListWidget& list, int row, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mouseClick(list.viewport(), Qt::LeftButton, modifiers, list.visualItemRect(list.item(row)).center());
}

/// The one highlighted line, -1 when there is none.
int Highlighted(const QListWidget& list) {
    const QModelIndexList rows = list.selectionModel()->selectedRows();
    return rows.size() == 1 ? rows.front().row() : -1;
}

QString TipAt(QWidget& widget, QPoint place) {
    QHelpEvent event(QEvent::ToolTip, place, widget.mapToGlobal(place));
    QApplication::sendEvent(&widget, &event);
    return QToolTip::text();
}

} // namespace

class MemoryPositionsTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(RackWithPresets()));
        StandReady();
    }
    void cleanup() {
        QToolTip::hideText();
        TakeDown();
    }

    void LineAndPositionAreOneChoice();
    void TheStatusLineNamesBothPresetsWhileTheQuestionStands();
    void ADeviceThatDiesInTheStoreHasTheLastWord();
    void WhatIsReadIsTheHighlightedLine();
    void LinesTellTheirNumbersAndEmptyOnesAreDim_data();
    void LinesTellTheirNumbersAndEmptyOnesAreDim();
    void OutputsOfOneNameAreToldApart();
};

void MemoryPositionsTest::LineAndPositionAreOneChoice() {
    QVERIFY(desk_->WithTool(controls::StorePresetTool, "FrmStore", [&](QWidget& dialog) {
        auto& list = *qobject_cast<QListWidget*>(In(dialog, "List1"));
        auto& position = *qobject_cast<QComboBox*>(In(dialog, "Combo1"));
        const auto& name = *qobject_cast<QLineEdit*>(In(dialog, "Text1"));
        QCOMPARE(name.text(), QStringLiteral("Club Main       "));
        ClickLine(list, 2);
        QCOMPARE(position.currentText(), QStringLiteral("3"));
        QCOMPARE(name.text(), QStringLiteral("Club Main       "));
        driver::Choose(&position, 5);
        QCOMPARE(Highlighted(list), 5);
        QCOMPARE(name.text(), QStringLiteral("Club Main       "));
        driver::Press(&list, Qt::Key_Up);
        QCOMPARE(position.currentText(), QStringLiteral("5"));
        QTest::mouseDClick(list.viewport(), Qt::LeftButton, Qt::NoModifier, list.visualItemRect(list.item(2)).center());
        QCOMPARE(position.currentText(), QStringLiteral("3"));
        QCOMPARE(name.text(), QStringLiteral("Hall            "));
    }));
    QCOMPARE(other_->Difference(), QString());
}

void MemoryPositionsTest::TheStatusLineNamesBothPresetsWhileTheQuestionStands() {
    std::vector<std::string> told;
    BoxAnswers boxes({QStringLiteral("No"), QStringLiteral("Yes")});
    boxes.OnBox = [&](QWidget&) { told.push_back(desk_->Status()); };
    QVERIFY(desk_->WithTool(controls::StorePresetTool, "FrmStore", [&](QWidget& dialog) {
        Type(In(dialog, "Text1"), QStringLiteral("Arena"));
        driver::Click(In(dialog, "Command1(1)"));
        QCOMPARE(desk_->Status(), std::string());
        QVERIFY(dialog.isVisible());
        ClickLine(*qobject_cast<QListWidget*>(In(dialog, "List1")), 1);
        driver::Click(In(dialog, "Command1(1)"));
    }));
    QCOMPARE(told, (std::vector<std::string>{"Stores \"Arena\" into position 1, over \"Club Main\"",
                                             "Stores \"Arena\" into position 2, which is empty"}));
    QCOMPARE(desk_->Status(), std::string());
    QCOMPARE(int(desk_->Memory(Id, 49)), UsedMark);
    QCOMPARE(char(desk_->Memory(Id, 80)), 'A');
    QCOMPARE(other_->Difference(), QString());
}

void MemoryPositionsTest::ADeviceThatDiesInTheStoreHasTheLastWord() {
    BoxAnswers boxes({QStringLiteral("Yes"), QStringLiteral("OK")});
    boxes.OnBox = [&](QWidget& box) {
        if (box.windowTitle() == QStringLiteral("Store Preset")) {
            desk_->LetDie(Id);
        }
    };
    QVERIFY(desk_->WithTool(controls::StorePresetTool, "FrmStore",
                            [&](QWidget& dialog) { driver::Click(In(dialog, "Command1(1)")); }));
    QVERIFY(driver::WaitUntil([&] { return !desk_->IsOpen(0); }));
    QVERIFY2(desk_->Status().starts_with("ID:5 does not answer; the store stopped after 0 of 450 frames."),
             desk_->Status().c_str());
    QCOMPARE(other_->Difference(), QString());
}

void MemoryPositionsTest::WhatIsReadIsTheHighlightedLine() {
    BoxAnswers boxes({QStringLiteral("Yes")});
    QVERIFY(desk_->WithTool(controls::ReadPresetTool, "FrmRead", [&](QWidget& dialog) {
        auto& list = *qobject_cast<QListWidget*>(In(dialog, "List1"));
        ClickLine(list, 2);
        ClickLine(list, 2, Qt::ControlModifier);
        QCOMPARE(Highlighted(list), 2);
        QTest::keyClick(&list, Qt::Key_Space, Qt::ControlModifier); // goes on to the next name that begins so
        QCOMPARE(Highlighted(list), list.currentRow());
        ClickLine(list, 0, Qt::ControlModifier);
        QCOMPARE(Highlighted(list), 0);
        ClickLine(list, 2, Qt::ControlModifier);
        desk_->TakeFrames();
        driver::Click(In(dialog, "Command1(1)"));
    }));
    const std::vector<simulator::Frame> frames = desk_->TakeFrames();
    QVERIFY(std::find(frames.begin(), frames.end(), Request(Id, {0x0B, 2})) != frames.end());
    QCOMPARE(desk_->Status(), std::string("All outputs are muted, for ID:5 takes no mutes from a preset. \"Gains\" "
                                          "unmutes them."));
    QCOMPARE(other_->Difference(), QString());
}

void MemoryPositionsTest::LinesTellTheirNumbersAndEmptyOnesAreDim_data() {
    QTest::addColumn<int>("tool");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("hint");
    QTest::newRow("store") << int(controls::StorePresetTool) << QStringLiteral("FrmStore")
                           << QStringLiteral("Double click to copy name");
    QTest::newRow("read") << int(controls::ReadPresetTool) << QStringLiteral("FrmRead")
                          << QStringLiteral("Select a preset");
}

void MemoryPositionsTest::LinesTellTheirNumbersAndEmptyOnesAreDim() {
    QFETCH(int, tool);
    QFETCH(QString, name);
    QFETCH(QString, hint);
    QVERIFY(desk_->WithTool(tool, name.toLatin1().constData(), [&](QWidget& dialog) {
        auto& list = *qobject_cast<QListWidget*>(In(dialog, "List1"));
        QCOMPARE(TipAt(*list.viewport(), list.visualItemRect(list.item(2)).center()),
                 QStringLiteral("Position 3\n") + hint);
        QToolTip::hideText();
        QCOMPARE(TipAt(*list.viewport(), list.visualItemRect(list.item(7)).center()),
                 QStringLiteral("Position 8, empty\n") + hint);
        QVERIFY(list.item(0)->data(Qt::ForegroundRole).isNull());
        QVERIFY(list.item(2)->data(Qt::ForegroundRole).isNull());
        for (const int empty : {1, 3, 4, 5, 6, 7}) {
            QCOMPARE(list.item(empty)->foreground().color(), ui::CurrentTheme().Dim);
        }
    }));
}

void MemoryPositionsTest::OutputsOfOneNameAreToldApart() {
    for (const std::size_t channel : {3U, 4U}) {
        desk_->Form().Label300[channel].SetCaption("Sub");
    }
    QVERIFY(desk_->WithTool(controls::CopyOutputTool, "FrmCopyOut", [&](QWidget& dialog) {
        auto& source = *qobject_cast<QComboBox*>(In(dialog, "Combo1(0)"));
        driver::Choose(&source, 1);
        QCOMPARE(source.currentText(), QStringLiteral("Sub"));
        QCOMPARE(TipAt(source, source.rect().center()), QStringLiteral("Out 2"));
        const QImage second = source.grab().toImage();
        driver::Choose(&source, 2);
        QCOMPARE(source.currentText(), QStringLiteral("Sub"));
        QCOMPARE(TipAt(source, source.rect().center()), QStringLiteral("Out 3"));
        QVERIFY(source.grab().toImage() != second); // the note beside the name is another
    }));
}

NRV_UI_TEST(MemoryPositionsTest);
#include "memory_positions_test.moc"
