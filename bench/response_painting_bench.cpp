// The same work with the graph painted as the window paints it: one-pixel lines on a raster of the graph's size.
// The plain way draws line by line.

#include "response_bench_desk.h"
#include "ui/widgets/graph_view.h"

#include <QImage>
#include <QPainter>

namespace {

using namespace nrv::bench;

class Surface {
  public:
    void Paint(const nrv::controls::Picture& picture) {
        QPainter painter(&image_);
        nrv::ui::GraphView::Paint(picture, painter, points_);
    }
    void PaintLineByLine(const PlainRedraw& plain) {
        QPainter painter(&image_);
        painter.setPen(QPen(QColor(255, 0, 0), 1.0));
        QPoint at(-10, 0);
        plain([&](int x, int y) {
            const QPoint next(x, y);
            painter.drawLine(at, next);
            at = next;
        });
    }

  private:
    QImage image_{576, 192, QImage::Format_ARGB32_Premultiplied};
    QList<QPointF> points_;
};

void PaintedUpdate(benchmark::State& state) {
    ResponseDesk desk;
    Surface surface;
    const int channel = static_cast<int>(state.range(0));
    const int section = nrv::FirstPeqOf(channel) + 1;
    const PlainRedraw plain(desk, channel);
    AgainstPlain(
        state, UpdateLimit,
        [&] {
            desk.Display.UpdatePeqCurve(section);
            surface.Paint(desk.Graph(channel));
        },
        [&] { surface.PaintLineByLine(plain); });
}
BENCHMARK(PaintedUpdate)->Arg(0)->Arg(7)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(500);

void EightPaintedRedraws(benchmark::State& state) {
    ResponseDesk desk;
    Surface surface;
    WithinLimit(state, RedrawsLimit, [&] {
        for (int channel = 0; channel < nrv::ChannelCount; ++channel) {
            desk.Display.RedrawChannel(channel);
            surface.Paint(desk.Graph(channel));
        }
    });
}
BENCHMARK(EightPaintedRedraws)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(500);

} // namespace
