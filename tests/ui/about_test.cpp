// "About" in the menu Help, by keys.

#include "rack_test.h"
#include "ui_test.h"

#include <QDialog>
#include <QLabel>

using namespace nrv;
using namespace nrv::test;
using driver::Press;

class AboutTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId})));
        StandReady();
        QVERIFY(TakeKeyboard());
    }
    void cleanup() { TakeDown(); }

    void TheMenuOpensIt() {
        Open();
        QVERIFY(About() != nullptr);
        QCOMPARE(Text("Name"), QStringLiteral("NRV-718 remote control"));
        QCOMPARE(Text("Version"), QStringLiteral("Version " NRV718_VERSION));
        QCOMPARE(Text("Folder"),
                 QStringLiteral("Its files are in %1").arg(QString::fromStdString(desk_->Folder().Path().string())));
        QVERIFY(Text("Licences").contains(QStringLiteral("Qt %1").arg(QLatin1String(qVersion()))));
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    }

    void EscapeAndEnterCloseIt() {
        for (const Qt::Key key : {Qt::Key_Escape, Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space}) {
            QVERIFY(TakeKeyboard());
            Open();
            QVERIFY(About() != nullptr);
            QVERIFY(driver::WaitUntil([] { return QApplication::activeWindow() == About(); }));
            QTest::keyClick(About()->focusWidget(), key);
            QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
            QVERIFY2(About() == nullptr, QByteArray::number(key).constData());
        }
    }

    void ASecondOneIsTheFirst() {
        Open();
        const QPointer<QWidget> first = About();
        QVERIFY(first != nullptr);
        QVERIFY(TakeKeyboard());
        Open();
        QCOMPARE(About(), first.data());
        QCOMPARE(
            std::ranges::count_if(QApplication::topLevelWidgets(),
                                  [](const QWidget* window) { return window->objectName() == QLatin1String("About"); }),
            1);
    }

    void TheProgramGoesOnBesideIt() {
        Open();
        desk_->ShowTab(controls::GainsTab);
        auto* const gain = desk_->Control("Slider2", 0);
        gain->window()->activateWindow();
        gain->setFocus();
        Press(gain, Qt::Key_Up);
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{1});
        QVERIFY(About() != nullptr);
        QVERIFY(!About()->isModal());
    }

    void NoTextIsCutOff() {
        Open();
        for (const char* const name : {"Name", "Version", "Purpose", "Folder", "Licences"}) {
            const auto* const label = driver::FindAs<QLabel>(QLatin1String(name), About());
            if (label == nullptr) {
                QFAIL(name);
            }
            QVERIFY2(!label->text().isEmpty(), name);
            QVERIFY2(label->wordWrap() && label->height() >= label->heightForWidth(label->width()), name);
        }
    }

    void WhatTheGateHoldsBackDoesNotOpenIt() {
        desk_->Logic().Events.Run({controls::EventSource::Kind::Program}, [&] { Open(); });
        QVERIFY(About() == nullptr);
    }

  private:
    /// Alt+H, then the key of the entry.
    void Open() {
        QWidget* const main = desk_->Window()->window();
        QTest::keyClick(main, Qt::Key_H, Qt::AltModifier);
        if (QWidget* const menu = QApplication::activePopupWidget()) {
            QTest::keyClick(menu, Qt::Key_A);
        }
    }
    static QWidget* About() {
        QWidget* const found = driver::Find(QStringLiteral("About"));
        return found != nullptr && found->isVisible() ? found : nullptr;
    }
    static QString Text(const char* name) {
        const auto* const label = driver::FindAs<QLabel>(QLatin1String(name), About());
        return label != nullptr ? label->text() : QString();
    }
};

NRV_UI_TEST(AboutTest);
#include "about_test.moc"
