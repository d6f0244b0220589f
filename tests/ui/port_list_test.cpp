// The list of ports of the connection dialog: what it tells of ports that are there and of those that are not.

#include "rack_test.h"
#include "ui_test.h"

#include <QHelpEvent>
#include <QLabel>
#include <QToolTip>

using namespace nrv;
using namespace nrv::test;
using driver::BoxAnswers;

class PortListTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() { SetUp(FactoryRack({Id})); }
    void cleanup() {
        QToolTip::hideText();
        TakeDown();
    }

    void PortsThatAreNotThereAreDimAndCanBeChosen();
    void ThePortsAreLookedUpWhenTheListOpens();
    void TheClosedListTellsWhatItsEntryIs();
    void TheEqualIdsAreNamed();

  private:
    void InDialog(const std::function<void(QWidget&)>& work) {
        desk_->Logic().State.AppFolder = desk_->Folder().Path();
        desk_->Logic().Connection.Load();
        const driver::WhenShown shown(QStringLiteral("FrmSelect"), [&](QWidget& dialog) {
            work(dialog);
            if (dialog.isVisible()) {
                desk_->Logic().State.SelectExitPending = false;
                dialog.close();
            }
        });
        desk_->Application().Host().RunConnectionDialog();
        QVERIFY(shown.Done());
    }
    static QComboBox& Ports(QWidget& dialog) { return *qobject_cast<QComboBox*>(In(dialog, "ComSelect")); }
    static bool Dim(const QComboBox& ports, int entry) {
        return ports.itemData(entry, Qt::ForegroundRole).value<QBrush>().color() == ui::CurrentTheme().Dim;
    }
};

void PortListTest::PortsThatAreNotThereAreDimAndCanBeChosen() {
    InDialog([&](QWidget& dialog) {
        QComboBox& ports = Ports(dialog);
        ports.showPopup();
        QVERIFY(!Dim(ports, 0));
        QVERIFY(!Dim(ports, 1)); // the rack's
        QVERIFY(Dim(ports, 32));
        QCOMPARE(ports.itemData(32, Qt::ToolTipRole).toString(),
                 QStringLiteral("COM 32 stands for nothing: no such serial port is plugged in."));
        ports.hidePopup();
        driver::Choose(&ports, 32);
        QCOMPARE(desk_->Logic().Link.ComIndex, 32);
        QCOMPARE(ports.currentText(), QStringLiteral("COM 32"));
    });
    QCOMPARE(desk_->Folder().Read("init.cfg")[0], std::uint8_t{32});
}

void PortListTest::ThePortsAreLookedUpWhenTheListOpens() {
    InDialog([&](QWidget& dialog) {
        QComboBox& ports = Ports(dialog);
        QVERIFY(desk_->Logic().Select.ComSelect.ItemToolTips().empty());
        ports.showPopup();
        QVERIFY(!Dim(ports, 1));
        ports.hidePopup();
        // Unplugged since, and gone with its link: the next look tells.
        desk_->Unplug();
        std::filesystem::remove(desk_->Folder().Path() / "com1");
        const QString before = ports.itemData(1, Qt::ToolTipRole).toString();
        ports.showPopup();
        QVERIFY(ports.itemData(1, Qt::ToolTipRole).toString() != before);
        ports.hidePopup();
    });
}

void PortListTest::TheClosedListTellsWhatItsEntryIs() {
    InDialog([&](QWidget& dialog) {
        QComboBox& ports = Ports(dialog);
        const auto tip = [&ports] {
            QToolTip::hideText();
            QHelpEvent event(QEvent::ToolTip, ports.rect().center(), ports.mapToGlobal(ports.rect().center()));
            QApplication::sendEvent(&ports, &event);
            return QToolTip::text();
        };
        QCOMPARE(tip(), QStringLiteral("No serial port: the program goes on without a line."));
        driver::Choose(&ports, 1);
        QVERIFY(tip().startsWith(QStringLiteral("COM 1 is \"com1\" in the program's folder, a link to ")));
        driver::Choose(&ports, 32);
        QCOMPARE(tip(), QStringLiteral("COM 32 stands for nothing: no such serial port is plugged in."));
    });
}

void PortListTest::TheEqualIdsAreNamed() {
    InDialog([&](QWidget& dialog) {
        driver::ClickMark(In(dialog, "Link(1)"));
        driver::ClickMark(In(dialog, "Connection(2)"));
        for (int line = 0; line < 10; ++line) {
            driver::Choose(qobject_cast<QComboBox*>(In(dialog, qPrintable(QStringLiteral("DeviceIds(%1)").arg(line)))),
                           line == 6 ? 2 : line + 1);
        }
        auto* told = qobject_cast<QLabel*>(In(dialog, "EqualIds"));
        QString while_it_stood;
        BoxAnswers boxes({QStringLiteral("OK")});
        boxes.OnBox = [&](QWidget&) { while_it_stood = told->text(); };
        driver::Click(In(dialog, "Proceed"));
        QCOMPARE(boxes.Seen().size(), std::size_t{1});
        QCOMPARE(while_it_stood, QStringLiteral("Device2 and Device7 both have ID 2."));
        QVERIFY(dialog.isVisible());
        // All of it can be read.
        QVERIFY(told->isVisible());
        QVERIFY(told->heightForWidth(told->width()) <= told->height());
        QVERIFY(dialog.rect().contains(QRect(told->mapTo(&dialog, QPoint()), told->size())));
        driver::Choose(qobject_cast<QComboBox*>(In(dialog, "DeviceIds(6)")), 7);
        QCOMPARE(told->text(), QString());
    });
}

NRV_UI_TEST(PortListTest);
#include "port_list_test.moc"
