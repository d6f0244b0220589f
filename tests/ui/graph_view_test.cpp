// The paper of a graph and the curves on it, light and dark.

#include "contrast.h"
#include "response/response.h"
#include "ui/look/theme.h"
#include "ui/widgets/graph_view.h"
#include "ui_test.h"

#include <QTest>

#include <algorithm>

using namespace nrv;
using namespace nrv::test;

namespace {

/// A curve at one height from edge to edge.
void DrawLevel(controls::Picture& picture, int y) {
    picture.Clear();
    picture.SetPen({255, 0, 0});
    picture.MoveTo(-10, y);
    for (int x = 0; x < ui::GraphView::GraphWidth; ++x) {
        picture.LineTo(x, y);
    }
}

/// How many pixels of rows are reddish.
int Red(const QImage& image, int top, int bottom) {
    int count = 0;
    for (int y = top; y <= bottom; ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QColor colour = image.pixelColor(x, y);
            count += colour.red() > colour.blue() + 60 && colour.red() > colour.green() + 60 ? 1 : 0;
        }
    }
    return count;
}

} // namespace

class GraphViewTest : public QObject {
    Q_OBJECT

    static constexpr int Height = ui::GraphView::GraphHeight;

  private slots:
    void init() { UseGround(Qt::white); }

    void ACurveAboveOrBelowThePaperLeavesArrowsAtItsEdge_data() {
        QTest::addColumn<int>("y");
        QTest::addColumn<bool>("above");
        QTest::addColumn<bool>("below");
        QTest::newRow("above") << -40 << true << false;
        QTest::newRow("one row above") << -1 << true << false;
        QTest::newRow("far above") << -16000 << true << false;
        QTest::newRow("below") << Height + 40 << false << true;
        QTest::newRow("one row below") << Height << false << true;
    }
    void ACurveAboveOrBelowThePaperLeavesArrowsAtItsEdge() {
        QFETCH(int, y);
        QFETCH(bool, above);
        QFETCH(bool, below);
        controls::Picture picture;
        ui::GraphView view(nullptr);
        view.ShowPicture(&picture);
        DrawLevel(picture, y);
        const QImage image = view.grab().toImage();
        QCOMPARE(Red(image, 0, 8) > 200, above);
        QCOMPARE(Red(image, Height - 9, Height - 1) > 200, below);
        QCOMPARE(Red(image, 12, Height - 13), 0);
    }

    void ACurveOnThePaperLeavesNone() {
        controls::Picture picture;
        ui::GraphView view(nullptr);
        view.ShowPicture(&picture);
        for (const int y : {20, 95, Height - 21}) {
            DrawLevel(picture, y);
            const QImage image = view.grab().toImage();
            QCOMPARE(Red(image, 0, 8) + Red(image, Height - 9, Height - 1), 0);
            QVERIFY(Red(image, y, y) > ui::GraphView::GraphWidth - 4);
        }
    }

    void AShortRunAboveHasOneArrowAtItsMiddle() {
        controls::Picture picture;
        ui::GraphView view(nullptr);
        view.ShowPicture(&picture);
        picture.SetPen({255, 0, 0});
        picture.MoveTo(300, 30);
        picture.LineTo(301, -20);
        picture.LineTo(309, -20);
        picture.LineTo(310, 30);
        const QImage image = view.grab().toImage();
        QVERIFY(Red(image.copy(303, 0, 5, 6), 0, 5) > 8);
        QCOMPARE(Red(image.copy(0, 0, 296, 8), 0, 7), 0);
        QCOMPARE(Red(image.copy(315, 0, 200, 8), 0, 7), 0);
    }

    void TheWorstCurveStandsOutFromDarkPaperAsWellAsTheWorstDoesFromWhite() {
        const auto worst = [] {
            double least = 21.0;
            for (int channel = 0; channel < 8; ++channel) {
                least = std::min(least, Contrast(ui::ChannelColour(channel), ui::GraphPaper().Ground));
            }
            return least;
        };
        const double on_white = worst();
        QVERIFY(!ui::CurrentTheme().Dark);
        UseGround(Qt::black);
        QVERIFY(ui::CurrentTheme().Dark);
        QVERIFY2(worst() >= std::max(on_white, 1.4), qPrintable(QString::number(worst())));
        QVERIFY(ui::GraphPaper().Ground.lightness() < 32);
    }

    void ThePaperChangesWithTheTheme() {
        ui::GraphView view(nullptr);
        QVERIFY(view.grab().toImage().pixelColor(3, 3).lightness() > 200);
        UseGround(Qt::black);
        QVERIFY(view.grab().toImage().pixelColor(3, 3).lightness() < 40);
    }
};

NRV_UI_TEST(GraphViewTest);
#include "graph_view_test.moc"
