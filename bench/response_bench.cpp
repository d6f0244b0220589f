// The response display: what a change of one part and the filling of a window cost. Counters: best_us, the shortest run
// in microseconds; of_limit, that over what was aimed at; times_faster, against the plain way in the same run (30 was
// aimed at). Here a graph takes strokes and no toolkit paints them.

#include "response_bench_desk.h"

namespace {

using namespace nrv::bench;

void PlainStrokes(const PlainRedraw& plain, nrv::controls::Picture& graph) {
    graph.Clear();
    graph.MoveTo(-10, 0);
    plain([&graph](int x, int y) { graph.LineTo(x, y); });
}

/// A section of In A, of 12 parts, or of Out 6, of 7.
void UpdateSection(benchmark::State& state) {
    ResponseDesk desk;
    const int channel = static_cast<int>(state.range(0));
    const int section = nrv::FirstPeqOf(channel) + 1;
    const PlainRedraw plain(desk, channel);
    nrv::controls::Picture plain_graph;
    AgainstPlain(
        state, UpdateLimit, [&] { desk.Display.UpdatePeqCurve(section); }, [&] { PlainStrokes(plain, plain_graph); });
}
BENCHMARK(UpdateSection)->Arg(0)->Arg(7)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(500);

void UpdateShelf(benchmark::State& state) {
    ResponseDesk desk;
    const PlainRedraw plain(desk, 0);
    nrv::controls::Picture plain_graph;
    AgainstPlain(
        state, UpdateLimit, [&] { desk.Display.UpdateShelfCurve(1); }, [&] { PlainStrokes(plain, plain_graph); });
}
BENCHMARK(UpdateShelf)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(500);

void UpdateCrossover(benchmark::State& state) {
    ResponseDesk desk;
    const PlainRedraw plain(desk, 7);
    nrv::controls::Picture plain_graph;
    AgainstPlain(
        state, UpdateLimit, [&] { desk.Display.UpdateCrossoverCurve(11); }, [&] { PlainStrokes(plain, plain_graph); });
}
BENCHMARK(UpdateCrossover)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(500);

/// The totals too, which wait until they are read.
void WholeImage(benchmark::State& state) {
    ResponseDesk desk;
    WithinLimit(state, WholeImageLimit, [&] {
        desk.UpdateAll();
        for (int channel = 0; channel < nrv::ChannelCount; ++channel) {
            benchmark::DoNotOptimize(desk.Display.ChannelTotal(channel).data());
        }
    });
}
BENCHMARK(WholeImage)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(500);

void EightRedraws(benchmark::State& state) {
    ResponseDesk desk;
    WithinLimit(state, RedrawsLimit, [&] {
        for (int channel = 0; channel < nrv::ChannelCount; ++channel) {
            desk.Display.RedrawChannel(channel);
        }
    });
}
BENCHMARK(EightRedraws)->UseManualTime()->Unit(benchmark::kMicrosecond)->Iterations(500);

} // namespace
