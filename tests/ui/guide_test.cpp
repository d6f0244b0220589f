// F1: the guide at the page of what has the keyboard.

#include "rack_test.h"
#include "ui_test.h"

#include <QMenuBar>
#include <QScrollBar>
#include <QTextBlock>
#include <QTextBrowser>

using namespace nrv;
using namespace nrv::test;

namespace {

QTextBrowser* OpenGuide() {
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (auto* guide = qobject_cast<QTextBrowser*>(window); guide != nullptr && guide->isVisible()) {
            return guide;
        }
    }
    return nullptr;
}

void CloseGuide() {
    if (QTextBrowser* const guide = OpenGuide()) {
        QTest::keyClick(guide, Qt::Key_Escape);
    }
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

/// The heading that the guide was turned to, if it is the topmost line that can be seen.
QString Page() {
    const QTextBrowser* const guide = OpenGuide();
    if (guide == nullptr) {
        return QStringLiteral("(closed)");
    }
    const QTextBlock block = guide->textCursor().block();
    const bool seen = guide->viewport()->rect().contains(guide->cursorRect());
    return block.blockFormat().headingLevel() > 0 && seen ? block.text() : QStringLiteral("(no heading)");
}

/// What F1 shows while `widget` has the keyboard.
QString PageOf(QWidget* widget) {
    CloseGuide();
    widget->window()->activateWindow();
    widget->setFocus();
    QTest::keyClick(widget, Qt::Key_F1);
    return Page();
}

} // namespace

class GuideTest : public RackTest {
    Q_OBJECT

  private slots:
    void init() {
        QVERIFY(ConnectAndOpenAll(FactoryRack({Id, OtherId})));
        StandReady();
    }
    void cleanup() {
        CloseGuide();
        TakeDown();
    }

    void EveryTabAndToolHasItsPage() {
        for (int tab = 0; tab < controls::TabCount; ++tab) {
            desk_->ShowTab(tab);
            const QString page = tab == controls::GainsTab      ? QStringLiteral("Gains")
                                 : tab == controls::DelaysTab   ? QStringLiteral("Delays")
                                 : tab == controls::OverviewTab ? QStringLiteral("Overview")
                                 : tab < 2                      ? QStringLiteral("In A and In B")
                                                                : QStringLiteral("Out 1 to Out 6");
            QCOMPARE(PageOf(desk_->Control("SSTab1")), page);
        }
        desk_->ShowTab(3);
        QCOMPARE(PageOf(desk_->Control("Slider2", 26)), QStringLiteral("Out 1 to Out 6"));
        QCOMPARE(PageOf(desk_->Control("Command2", controls::SavePresetTool)), QStringLiteral("Presets on the PC"));
        QCOMPARE(PageOf(desk_->Control("Command2", controls::ReadPresetTool)), QStringLiteral("Presets in the device"));
        QCOMPARE(PageOf(desk_->Control("Command2", controls::PasswordTool)), QStringLiteral("Password"));
        QCOMPARE(PageOf(desk_->Control("Command2", controls::UnconnectTool)), QStringLiteral("Unconnect device"));
        QCOMPARE(PageOf(desk_->Control("Command2", controls::EditNamesTool)), QStringLiteral("Edit Names"));
        QCOMPARE(PageOf(desk_->Control("Command2", controls::CopyOutputTool)),
                 QStringLiteral("Copy Input, Copy Output"));
        QCOMPARE(desk_->TakeFrames().size(), std::size_t{0});
    }

    void InADialogItOpensOverItAndGoesWithIt() {
        QString page;
        bool owned = false;
        QVERIFY(desk_->WithTool(controls::EditNamesTool, "FrmEditLabel", [&](QWidget& dialog) {
            QTest::keyClick(driver::Find(QStringLiteral("Text1(2)"), &dialog), Qt::Key_F1);
            page = Page();
            owned = OpenGuide()->parentWidget() == &dialog; // or the dialog would keep the keyboard from it
        }));
        QCOMPARE(page, QStringLiteral("Edit Names"));
        QVERIFY(owned);
        QCOMPARE(Page(), QStringLiteral("(closed)"));
    }

    void TheOpenGuideTurnsItsPagesAndEveryPictureIsThere() {
        desk_->ShowTab(controls::GainsTab);
        QCOMPARE(PageOf(desk_->Control("SSTab1")), QStringLiteral("Gains"));
        QPointer<QTextBrowser> guide = OpenGuide();
        desk_->ShowTab(controls::DelaysTab);
        desk_->Control("SSTab1")->window()->activateWindow();
        desk_->Control("SSTab1")->setFocus();
        QTest::keyClick(desk_->Control("SSTab1"), Qt::Key_F1);
        QCOMPARE(Page(), QStringLiteral("Delays"));
        QCOMPARE(OpenGuide(), guide.data());
        int pictures = 0;
        for (QTextBlock block = guide->document()->begin(); block.isValid(); block = block.next()) {
            for (QTextBlock::iterator part = block.begin(); !part.atEnd(); ++part) {
                const QTextImageFormat image = part.fragment().charFormat().toImageFormat();
                if (image.isValid()) {
                    ++pictures;
                    const QVariant found = guide->document()->resource(QTextDocument::ImageResource, image.name());
                    QVERIFY2(!found.isNull(), qPrintable(image.name()));
                }
            }
        }
        QCOMPARE(pictures, 26);
    }

    void AskedForInItselfItKeepsItsPage() {
        desk_->ShowTab(controls::GainsTab);
        QCOMPARE(PageOf(desk_->Control("SSTab1")), QStringLiteral("Gains"));
        QPointer<QTextBrowser> guide = OpenGuide();
        QTest::keyClick(guide, Qt::Key_F1);
        QCOMPARE(Page(), QStringLiteral("Gains"));
        QCOMPARE(OpenGuide(), guide.data());
    }

    void ItsLinksTurnToTheirPages() {
        desk_->ShowTab(controls::GainsTab);
        QCOMPARE(PageOf(desk_->Control("SSTab1")), QStringLiteral("Gains"));
        QTextBrowser* const guide = OpenGuide();
        guide->moveCursor(QTextCursor::Start);
        QTest::keyClick(guide, Qt::Key_Tab);
        QTest::keyClick(guide, Qt::Key_Tab);
        QTest::keyClick(guide, Qt::Key_Return);
        QCOMPARE(Page(), QStringLiteral("The list of devices")); // the second line of the contents
    }

    void NothingInItIsCutOffAtItsSides() {
        desk_->ShowTab(controls::GainsTab);
        PageOf(desk_->Control("SSTab1"));
        QCOMPARE(OpenGuide()->horizontalScrollBar()->maximum(), 0);
    }

    void TheMenuOpensItAndWhatTheGateHoldsBackDoesNot() {
        CloseGuide();
        QWidget* const main = desk_->Window()->window();
        auto* const entry = main->findChild<QAction*>(QStringLiteral("Guide"));
        QVERIFY(entry != nullptr);
        entry->trigger();
        QVERIFY(OpenGuide() != nullptr);
        CloseGuide();
        desk_->Logic().Events.Run({controls::EventSource::Kind::Program}, [&] { QTest::keyClick(main, Qt::Key_F1); });
        QVERIFY(OpenGuide() == nullptr);
    }
};

NRV_UI_TEST(GuideTest);
#include "guide_test.moc"
