#include "control_window_fixture.h"
#include "ui/binding/text.h"
#include "ui/widgets/block.h"
#include "ui/widgets/fader.h"
#include "ui/widgets/graph_view.h"
#include "ui/widgets/lamp.h"
#include "ui/widgets/list_box.h"
#include "ui/widgets/marker_dot.h"
#include "ui/widgets/panel.h"
#include "ui/widgets/tab_strip.h"
#include "ui/widgets/text_field.h"
#include "ui/widgets/value_plate.h"
#include "ui/widgets/value_text.h"
#include "ui/widgets/wire.h"
#include "ui_test.h"

#include <QAbstractButton>
#include <QApplication>
#include <QImage>
#include <QLabel>
#include <QLineEdit>
#include <QPainter>
#include <QTabBar>
#include <QTest>
#include <QTextDocument>
#include <QTextDocumentFragment>
#include <QTimer>
#include <QToolButton>

#include <cmath>
#include <map>
#include <memory>
#include <random>
#include <string>
#include <vector>

using namespace nrv;

namespace {

/// What may lie over another widget of the same parent: strokes, points, the plate, and the button on its panel.
bool LiesOverOthers(const QWidget& widget) {
    return qobject_cast<const ui::Wire*>(&widget) != nullptr ||
           qobject_cast<const ui::MarkerDot*>(&widget) != nullptr ||
           qobject_cast<const ui::ValuePlate*>(&widget) != nullptr ||
           widget.objectName().startsWith(QStringLiteral("Command1(")) ||
           widget.objectName().startsWith(QStringLiteral("Shape2(")) ||
           widget.objectName().startsWith(QStringLiteral("Page("));
}

QList<QWidget*> ChildrenOf(const QWidget& parent) {
    return parent.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
}

bool IsShown(const QWidget& widget) {
    return !widget.isHidden();
}

} // namespace

/// How much of white paper is left, 0 to 255, where most red ink lies on a point; 0 beside the image.
static int LeastPaper(const QImage& image, const QRectF& point) {
    int paper = image.rect().contains(point.toRect()) ? 255 : 0;
    for (int x = static_cast<int>(point.left()); x < point.right(); ++x) {
        for (int y = static_cast<int>(point.top()); y < point.bottom(); ++y) {
            paper = std::min(paper, image.rect().contains(x, y) ? image.pixelColor(x, y).green() : paper);
        }
    }
    return paper;
}

class ControlWindowViewTest : public test::ControlWindowFixture {
    Q_OBJECT

  private slots:
    void initTestCase() { ui::ApplyTheme(*qApp); }
    void init() { OpenWindow(); }
    void cleanup() { view_.reset(); }

    void EveryControlHasExactlyOneWidgetUnderItsName() {
        std::map<QString, int> count;
        for (const QObject* object : view_->findChildren<QObject*>()) {
            ++count[object->objectName()];
        }
        int controls_seen = 0;
        controls::ForEachControl(*form_, [&](std::string_view name, int index, controls::Control&) {
            ++controls_seen;
            const QString object_name = ui::ControlName(name, index);
            // Tool 6 does not exist.
            const int expected = object_name == QStringLiteral("Command2(6)") ? 0 : 1;
            QVERIFY2(count[object_name] == expected, qPrintable(object_name));
        });
        // Counted by hand: toolbar, tabs, timer and marks 21; strips with master and units 225; equaliser and shelving
        // 286; crossover, dynamics and routing 104; graphs 116; block diagram and wires 106.
        QCOMPARE(controls_seen, 21 + 225 + 286 + 104 + 116 + 106);
        QVERIFY(Find<QTimer>("Timer1") != nullptr);
        QVERIFY(Find<QWidget>("Timer1") == nullptr);
    }

    void WidgetsAreOfTheKindOfTheirControls() {
        QVERIFY(Find<ui::Fader>("Slider2(43)") != nullptr);
        QVERIFY(Find<ui::ValueText>("Text3(0)") != nullptr);
        QVERIFY(Find<ui::ValueText>("Text9(7)") != nullptr);
        QVERIFY(Find<ui::TextField>("Text4(0)") != nullptr);
        QVERIFY(Find<ui::TextField>("Text2(15)") != nullptr);
        QVERIFY(Find<ui::ListBox>("Combo2(11)") != nullptr);
        QVERIFY(Find<QTabBar>("SSTab1") != nullptr);
    }

    void AFramesContentIsItsChild_data() {
        QTest::addColumn<QString>("content");
        QTest::addColumn<QString>("frame");
        const std::vector<std::pair<const char*, const char*>> pairs = {
            {"Slider1(0)", "Frame1(0)"},   {"Check1(13)", "Frame1(13)"}, {"Check2(9)", "Frame2(9)"},
            {"Frame2(9)", "Frame1(9)"},    {"Shape1(47)", "Frame11(7)"}, {"Slider100", "Frame1(16)"},
            {"UpDown1(15)", "Frame3(15)"}, {"Option1(1)", "Frame4"},     {"Slider2(19)", "Frame5(1)"},
            {"Text5(20)", "Frame5(2)"},    {"Combo1(9)", "Frame6(9)"},   {"Text8(11)", "Frame7(11)"},
            {"Text11(7)", "Frame8(7)"},    {"Combo3(5)", "Frame9(5)"},   {"Label5(43)", "Frame10(7)"},
            {"Option2(17)", "Frame10(7)"}, {"Check8(0)", "Frame10(2)"},  {"Label100(41)", "Frame1(17)"},
            {"Command2(9)", "Toolbar1"}};
        for (const auto& [content, frame] : pairs) {
            QTest::newRow(content) << QString(QLatin1String(content)) << QString(QLatin1String(frame));
        }
    }
    void AFramesContentIsItsChild() {
        QFETCH(const QString, content);
        QFETCH(const QString, frame);
        const auto* widget = view_->findChild<QWidget*>(content);
        QVERIFY(widget != nullptr);
        QCOMPARE(widget->parentWidget()->objectName(), frame);
    }

    void EveryWidgetLiesInsideItsParent() {
        view_->resize(ui::ControlWindowView::ViewWidth, ui::ControlWindowView::ViewHeight);
        QCOMPARE(view_->size(), QSize(728, 522));
        for (const QWidget* widget : view_->findChildren<QWidget*>()) {
            // Lists pop up in windows of their own; the toolkit's tab bar keeps scroll buttons, which never show.
            if (widget->window() != view_.get() || qobject_cast<const QTabBar*>(widget->parentWidget()) != nullptr) {
                continue;
            }
            const bool inside = widget->parentWidget()->rect().contains(widget->geometry());
            QVERIFY2(inside,
                     qPrintable(widget->objectName() + QStringLiteral(" in ") + widget->parentWidget()->objectName()));
        }
    }

    void SiblingsDoNotOverlap() {
        std::vector<const QWidget*> parents = {view_.get()};
        for (const QWidget* widget : view_->findChildren<QWidget*>()) {
            const QString name = widget->objectName();
            if (qobject_cast<const ui::Panel*>(widget) != nullptr || name.startsWith(QStringLiteral("Page("))) {
                parents.push_back(widget);
            }
        }
        QVERIFY(parents.size() > 100);
        for (const QWidget* parent : parents) {
            const QList<QWidget*> children = ChildrenOf(*parent);
            for (qsizetype i = 0; i < children.size(); ++i) {
                for (qsizetype j = i + 1; j < children.size(); ++j) {
                    if (LiesOverOthers(*children[i]) || LiesOverOthers(*children[j])) {
                        continue;
                    }
                    QVERIFY2(!children[i]->geometry().intersects(children[j]->geometry()),
                             qPrintable(children[i]->objectName() + u'/' + children[j]->objectName() +
                                        QStringLiteral(" in ") + parent->objectName()));
                }
            }
        }
    }

    void PagesFillTheSamePlaceBelowTheTabs() {
        const QRect strip = Find<QTabBar>("SSTab1")->geometry();
        for (int tab = 0; tab < controls::TabCount; ++tab) {
            const auto* page = view_->findChild<QWidget*>(QStringLiteral("Page(%1)").arg(tab));
            if (page == nullptr) {
                QFAIL("a page is missing");
            }
            QVERIFY(page->y() >= strip.bottom());
            QVERIFY(view_->rect().contains(page->geometry()));
        }
    }

    void EveryLabelsTextFits() {
        int seen = 0;
        for (const QLabel* label : view_->findChildren<QLabel*>()) {
            const QFontMetrics metrics(label->font());
            QVERIFY2(metrics.horizontalAdvance(label->text().trimmed()) <= label->width(), qPrintable(label->text()));
            seen += label->text().isEmpty() ? 0 : 1;
        }
        QVERIFY(seen > 200);
    }

    void EveryButtonsTextFits() {
        int seen = 0;
        for (const QAbstractButton* button : view_->findChildren<QAbstractButton*>()) {
            const int indicator = button->inherits("QCheckBox") || button->inherits("QRadioButton") ? 17 : 0;
            const int wanted = QFontMetrics(button->font()).horizontalAdvance(button->text().trimmed());
            QVERIFY2(button->text().isEmpty() || wanted + indicator <= button->width(), qPrintable(button->text()));
            seen += button->text().isEmpty() ? 0 : 1;
        }
        // Mutes and phases, view boxes and options, cursors, units, "Flat" and the block diagram's labels.
        QVERIFY(seen > 100);
    }

    void LongestValuesFitTheirFields_data() {
        QTest::addColumn<QString>("field");
        QTest::addColumn<QString>("text");
        QTest::newRow("frequency") << QStringLiteral("Text4(9)") << QStringLiteral("20000");
        QTest::newRow("bandwidth") << QStringLiteral("Text5(9)") << QStringLiteral("2.95");
        QTest::newRow("shelving") << QStringLiteral("Text7(0)") << QStringLiteral("20000");
        QTest::newRow("crossover") << QStringLiteral("Text8(0)") << QStringLiteral("20000");
        QTest::newRow("delay") << QStringLiteral("Text2(8)") << QStringLiteral("2500.987 ms");
    }
    void LongestValuesFitTheirFields() {
        QFETCH(const QString, field);
        QFETCH(const QString, text);
        const auto* widget = view_->findChild<QLineEdit*>(field);
        const int room = widget->width() - 4;
        QVERIFY(QFontMetrics(widget->font()).horizontalAdvance(text) <= room);
    }

    void GraphIs576By192AndItsZeroLineIsWhereCurvesHaveIt() {
        auto* graph = Find<ui::GraphView>("Picture1(3)");
        QCOMPARE(graph->size(), QSize(576, 192));
        form_->SSTab1.SetTab(3);
        const QImage paper = graph->grab().toImage();
        QCOMPARE(paper.pixelColor(5, 95), ui::GraphPaper().Zero);
        // 1 kHz is log10(50) * 575/3 = 325.6 from the left.
        QCOMPARE(paper.pixelColor(326, 93), ui::GraphPaper().Decades);
    }

    void ACurveShowsWhereThePenWentAndIsGoneWhenCleared() {
        form_->SSTab1.SetTab(0);
        ui::GraphView& graph = view_->Graph(0);
        controls::Picture& picture = form_->Picture1[0];
        const QColor red(255, 0, 0);
        picture.SetPen({255, 0, 0});
        picture.MoveTo(20010, 600);
        picture.MoveTo(0, 40);
        picture.LineTo(300, 40);
        picture.LineTo(300, 60);
        const QImage drawn = graph.grab().toImage();
        QCOMPARE(drawn.pixelColor(150, 40), red);
        QCOMPARE(drawn.pixelColor(300, 50), red);
        QVERIFY(drawn.pixelColor(301, 40) != red);
        picture.Clear();
        const QImage cleared = graph.grab().toImage();
        QVERIFY(cleared.pixelColor(150, 40) != red);
    }

    void ALineDrawnWhileThePenIsElsewhereDoesNotJoin() {
        form_->SSTab1.SetTab(0);
        ui::GraphView& graph = view_->Graph(0);
        controls::Picture& picture = form_->Picture1[0];
        const QColor ink(0, 0, 192);
        picture.SetPen({0, 0, 192});
        picture.MoveTo(0, 20);
        picture.LineTo(100, 20);
        picture.MoveTo(200, 20);
        picture.LineTo(300, 20);
        const QImage drawn = graph.grab().toImage();
        QCOMPARE(drawn.pixelColor(50, 20), ink);
        QVERIFY(drawn.pixelColor(150, 20) != ink);
        QCOMPARE(drawn.pixelColor(250, 20), ink);
    }

    void ACurveIsSmoothedAndInksEachOfItsPoints_data() {
        QTest::addColumn<qreal>("scale");
        for (const qreal scale : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            QTest::addRow("%g", scale) << scale;
        }
    }

    void ACurveIsSmoothedAndInksEachOfItsPoints() {
        QFETCH(qreal, scale);
        std::mt19937 random(718);
        QList<QPointF> room;
        bool between = false;
        for (int round = 0; round < 200; ++round) {
            controls::Picture picture;
            picture.SetPen({255, 0, 0});
            picture.MoveTo(-10, 0);
            std::vector<QPoint> points;
            const int step = round % 7 * (round % 5 == 0 ? 20 : 1);
            int y = static_cast<int>(random() % 192);
            for (int x = 0; x < 576; x += static_cast<int>(random() % 3)) {
                y += static_cast<int>(random() % static_cast<unsigned>(2 * step + 1)) - step;
                points.emplace_back(x, y);
                picture.LineTo(x, y);
            }
            QImage image((QSizeF(576, 192) * scale).toSize(), QImage::Format_ARGB32_Premultiplied);
            image.setDevicePixelRatio(scale);
            image.fill(Qt::white);
            QPainter painter(&image);
            ui::GraphView::Paint(picture, painter, room);
            painter.end();
            for (const QPoint point : points) {
                const int paper = LeastPaper(image, QRectF(QPointF(point) * scale, QSizeF(scale, scale)));
                QVERIFY2(paper < 128, qPrintable(QStringLiteral("%1 %2 %3").arg(round).arg(point.x()).arg(paper)));
            }
            for (int x = 0; x < image.width() && !between; ++x) {
                for (int row = 0; row < image.height(); ++row) {
                    const int paper = image.pixelColor(x, row).green();
                    between |= paper > 20 && paper < 235;
                }
            }
        }
        QVERIFY(between);
    }

    void EveryGraphHasItsScales() {
        for (int channel = 0; channel < 8; ++channel) {
            const auto* panel = view_->findChild<QWidget*>(QStringLiteral("Frame10(%1)").arg(channel));
            const QPoint graph = view_->findChild<QWidget*>(QStringLiteral("Picture1(%1)").arg(channel))->pos();
            std::map<QString, QRect> texts;
            for (const QLabel* label : panel->findChildren<QLabel*>(QString(), Qt::FindDirectChildrenOnly)) {
                texts[label->text()] = label->geometry();
            }
            QCOMPARE(texts.size(), 11U);
            const std::vector<std::pair<const char*, int>> levels = {{"+30", 30},  {"+20", 20},  {"+10", 10}, {" 0", 0},
                                                                     {"-10", -10}, {"-20", -20}, {"-30", -30}};
            for (const auto& [text, level] : levels) {
                const double row = graph.y() + 95.4 - level * 191.0 / 60.0;
                const QRect place = texts[QLatin1String(text)];
                QVERIFY2(std::abs(place.top() + place.height() / 2.0 - row) <= 1.5 && place.right() < graph.x(), text);
            }
            const std::vector<std::pair<const char*, double>> frequencies = {
                {"20Hz", 20.0}, {"100Hz", 100.0}, {"1KHz", 1000.0}, {"10KHz", 10000.0}};
            for (const auto& [text, hertz] : frequencies) {
                const double column = graph.x() + 575.0 / 3.0 * std::log10(hertz / 20.0);
                const QRect place = texts[QLatin1String(text)];
                // The first begins at its line, so that it does not run under the lowest level.
                const double at = hertz == 20.0 ? place.left() : place.left() + place.width() / 2.0;
                QVERIFY2(std::abs(at - column) <= 1.5 && place.top() >= graph.y() + 192, text);
            }
        }
    }

    void PositionZeroIsAtTheTop() {
        const auto* fader = Find<ui::Fader>("Slider1(0)");
        QVERIFY(fader->PlaceOf(0) < fader->PlaceOf(60));
        QVERIFY(fader->PlaceOf(60) < fader->PlaceOf(120));
    }

    void ADisabledFrameDisablesWhatLiesInIt() {
        form_->Frame5[0].SetEnabled(false);
        QVERIFY(!Find<QWidget>("Slider2(0)")->isEnabled());
        QVERIFY(!Find<QWidget>("Text4(9)")->isEnabled());
        QVERIFY(Find<QWidget>("Slider2(10)")->isEnabled());
        QVERIFY(form_->Slider2[0].Enabled());
        form_->Frame10[0].SetEnabled(false);
        QVERIFY(!Find<QWidget>("Label5(0)")->isEnabled());
        form_->Frame5[0].SetEnabled(true);
        QVERIFY(Find<QWidget>("Slider2(0)")->isEnabled());
    }

    void ATabBroughtForwardByCodeRunsItsEventOnce() {
        int changes = 0;
        form_->SSTab1.Changed = [&] { ++changes; };
        form_->SSTab1.SetTab(controls::OverviewTab);
        QCOMPARE(changes, 1);
        QCOMPARE(Find<ui::TabStrip>("SSTab1")->currentIndex(), 10);
    }

    void TabsAreWideEnoughAndCarryTheirCaptions() {
        auto* strip = Find<ui::TabStrip>("SSTab1");
        QCOMPARE(strip->count(), 11);
        QCOMPARE(strip->tabText(2), QStringLiteral("Out 1"));
        form_->SSTab1.SetTabCaption(2, "Sub");
        QCOMPARE(strip->tabText(2), QStringLiteral("Sub"));
        QVERIFY(strip->tabRect(10).right() < strip->width());
        for (int tab = 0; tab < strip->count(); ++tab) {
            const int mark = tab < 8 ? 16 : 4;
            QVERIFY(QFontMetrics(ui::StrongFont()).horizontalAdvance(strip->tabText(tab)) + mark <
                    strip->tabRect(tab).width());
        }
    }

    void ASourceWithoutACaptionReadsItsToolTip() {
        form_->Label200[1].SetToolTip("In A+B");
        QCOMPARE(Find<ui::Block>("Label200(1)")->Shown(), QStringLiteral("In A+B"));
    }

    void AnEmptyChannelNameShowsEmpty() {
        form_->Label300[2].SetToolTip("Unmute");
        form_->Label300[2].SetCaption("");
        QCOMPARE(Find<ui::Block>("Label300(2)")->Shown(), QString());
    }

    void ATabsCaptionIsNoKeyToPress() {
        auto* strip = Find<ui::TabStrip>("SSTab1");
        form_->SSTab1.SetTabCaption(2, "R&B");
        QCOMPARE(strip->Caption(2), QStringLiteral("R&B"));
        QTest::keyClick(view_.get(), Qt::Key_B, Qt::AltModifier);
        QCOMPARE(strip->currentIndex(), 0);
        QCOMPARE(form_->SSTab1.Tab(), 0);
    }

    void ToolTipsAreShownLiterally() {
        const auto* block = Find<ui::Block>("Label100(0)");
        auto* list = Find<ui::ListBox>("Combo4");
        for (const char* const text : {"\"com1\" & co", "&quot;", "5 > 3"}) {
            form_->Label100[0].SetToolTip(text);
            QCOMPARE(block->toolTip(), QLatin1String(text));
            QVERIFY(!Qt::mightBeRichText(block->toolTip()));
        }
        for (const char* const text : {"<b>", "<b>two  blanks</b> & \"more\"", "&lt;"}) {
            form_->Label100[0].SetToolTip(text);
            form_->Combo4.SetItemToolTips({text});
            for (const QString& tip : {block->toolTip(), list->itemData(0, Qt::ToolTipRole).toString()}) {
                QVERIFY(Qt::mightBeRichText(tip));
                QCOMPARE(QTextDocumentFragment::fromHtml(tip).toPlainText(), QLatin1String(text));
            }
        }
    }

    void ArrowsHaveTheirCaptionsFromTheRecord() {
        controls::FrmCtrl form;
        form.UpDown1[3].SetCaption("Micro");
        const ui::ControlWindowView view(form, Entry());
        QStringList captions;
        for (const QLabel* label : view.findChildren<QLabel*>()) {
            captions << label->text();
        }
        QCOMPARE(captions.count(QStringLiteral("Adj")), 16);
        QCOMPARE(captions.count(QStringLiteral("Fine")), 15);
        QCOMPARE(captions.count(QStringLiteral("Micro")), 1);
    }

    void ACaptionOfAnyBytesIsKeptAndEveryByteIsSeen() {
        const std::string name("\x01&\xE9\0\x9F&", 6);
        form_->Label300[0].SetCaption(name);
        const auto* block = Find<ui::Block>("Label300(0)");
        QCOMPARE(ui::ToBytes(block->text()), name);
        QVERIFY(block->shortcut().isEmpty());
        form_->Frame1[0].SetCaption(name);
        QCOMPARE(Find<ui::Panel>("Frame1(0)")->Caption().size(), 6);
    }

    void CrossesAndWiresFollowTheirLines() {
        form_->SSTab1.SetTab(controls::OverviewTab);
        QVERIFY(!IsShown(*Find<QWidget>("Line6(3)")));
        form_->Line6[3].SetVisible(true);
        QVERIFY(IsShown(*Find<QWidget>("Line6(3)")));
        form_->Line1000[0].SetVisible(false);
        QVERIFY(!IsShown(*Find<QWidget>("Line1000(0)")));
    }

    void LampsFollowTheirShapes() {
        auto* lamp = Find<ui::Lamp>("Shape1(6)");
        form_->Shape1[6].Light({0, 255, 0});
        QVERIFY(lamp->Lit());
        form_->SSTab1.SetTab(controls::GainsTab);
        QCOMPARE(lamp->grab().toImage().pixelColor(10, 10), QColor(0, 255, 0));
        form_->Shape1[6].Extinguish();
        QVERIFY(!lamp->Lit());
    }

    void TheMarkOfALimitIsYellow() {
        form_->Text9[0].SetMarked(true);
        form_->SSTab1.SetTab(0);
        auto* text = Find<ui::ValueText>("Text9(0)");
        QCOMPARE(text->grab().toImage().pixelColor(4, text->height() / 2), QColor(Qt::yellow));
    }

    void AMarkerStandsAtItsPlaceOnTheGraph() {
        // 1000 Hz lies log10(50) * 2885 = 4901.5 units from the left; 0 dB at 1447.5 - 0.1 * 48 + 60 for the corner.
        form_->Label5[0].MoveTo(4901.5 - 60.0, 1502.7);
        const auto* graph = Find<QWidget>("Picture1(0)");
        const QPoint centre = Find<QWidget>("Label5(0)")->geometry().center() - graph->pos();
        QCOMPARE(centre, QPoint(327, 104));
    }

    void AHiddenMarkerIsHidden() {
        QVERIFY(IsShown(*Find<QWidget>("Label5(0)")));
        form_->Label5[0].SetVisible(false);
        QVERIFY(!IsShown(*Find<QWidget>("Label5(0)")));
    }

    void AToolThatIsNotVisibleIsNotShown() {
        QVERIFY(IsShown(*Find<QToolButton>("Command2(0)")));
        form_->Command2[0].SetVisible(false);
        QVERIFY(!IsShown(*Find<QToolButton>("Command2(0)")));
        QCOMPARE(Find<QToolButton>("Command2(5)")->toolTip(), QStringLiteral("Unconnect device"));
    }

    void TheTimerTicksWhileItRuns() {
        int ticks = 0;
        form_->Timer1.Tick = [&] { ++ticks; };
        form_->Timer1.Start(5);
        QTRY_VERIFY(ticks >= 2);
        form_->Timer1.Stop();
        QVERIFY(!Find<QTimer>("Timer1")->isActive());
    }

    void ADetachedViewIsSilent() {
        int moves = 0;
        int ticks = 0;
        auto* fader = Find<ui::Fader>("Slider2(3)");
        form_->Slider2[3].SetPosition(75);
        form_->Slider2[3].Moved = [&] { ++moves; };
        form_->Timer1.Tick = [&] { ++ticks; };
        form_->Timer1.Start(1);
        Focus(0, fader);
        view_->Detach();
        form_->Slider2[3].SetPosition(10);
        form_->SSTab1.SetTab(3);
        form_->Text3[0].SetText("5");
        QCOMPARE(fader->value(), 75);
        QCOMPARE(Find<ui::TabStrip>("SSTab1")->currentIndex(), 0);
        QCOMPARE(Find<ui::ValueText>("Text3(0)")->text(), QString());
        QTest::keyClick(fader, Qt::Key_Up);
        ticks = 0;
        QTest::qWait(20);
        QCOMPARE(moves, 0);
        QCOMPARE(ticks, 0);
    }

    void ANewViewOfTheRecordSurvivesTheOldOne() {
        auto old_view = std::move(view_);
        old_view->Detach();
        view_ = std::make_unique<ui::ControlWindowView>(*form_, Entry());
        old_view.reset();
        form_->Slider2[3].SetPosition(33);
        QCOMPARE(Find<ui::Fader>("Slider2(3)")->value(), 33);
    }
};

NRV_UI_TEST(ControlWindowViewTest);
#include "control_window_view_test.moc"
