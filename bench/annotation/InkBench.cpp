// Painting: the shadow beside the bare record, the smoothing over its length, the whole flattening, hit
// tests.
#include "annotation/Pictures.h"
#include "annotation/Ratio.h"

#include "annotation/AnnotationDocument.h"
#include "annotation/ImageCompositor.h"
#include "annotation/InkPen.h"
#include "annotation/PenSmoothing.h"

#include <QPainter>
#include <benchmark/benchmark.h>
#include <cmath>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;
using namespace marrowfin::bench;

namespace {

const QColor red(255, 59, 48);

template <class R>
R boxRecord(QRectF box) {
    R record;
    record.strokeColor = red;
    record.setBox(box);
    return record;
}

QList<QPointF> scribble(int count, QPointF origin) {
    QList<QPointF> points;
    for (int i = 0; i < count; ++i)
        points.append(origin + QPointF(i * 0.9 + 3 * std::sin(i * 1.7), 60 * std::sin(i / 25.0) + (i % 3)));
    return points;
}

// 50 records of every kind, blurs of 400x300 among them, at the same places whatever the picture's size.
void addMixedInk(AnnotationDocument& document) {
    for (int i = 0; i < 5; ++i) {
        const QPointF at(40.0 + 350 * i, 30.0 + 130 * i);
        document.add(boxRecord<RectangleAnnotation>({at, QSizeF(300, 200)}));
        document.add(boxRecord<EllipseAnnotation>({at + QPointF(20, 150), QSizeF(300, 200)}));
        auto arrow = ArrowAnnotation();
        arrow.strokeColor = red;
        arrow.startPoint = at;
        arrow.endPoint = at + QPointF(300, 200);
        document.add(arrow);
        auto line = LineAnnotation();
        line.strokeColor = red;
        line.startPoint = at + QPointF(0, 200);
        line.endPoint = at + QPointF(300, 0);
        document.add(line);
        auto pen = FreehandAnnotation();
        pen.strokeColor = red;
        pen.points = scribble(300, at + QPointF(0, 100));
        document.add(pen);
        auto words = TextAnnotation();
        words.strokeColor = red;
        words.position = at + QPointF(0, 250);
        words.text = QStringLiteral("Words on the picture\nof two lines");
        document.add(words);
        document.add(boxRecord<BlurAnnotation>({at + QPointF(-30, 20), QSizeF(400, 300)}));
        auto highlight = boxRecord<HighlightAnnotation>({at + QPointF(0, 230), QSizeF(250, 40)});
        highlight.strokeColor = QColor(255, 204, 0);
        document.add(highlight);
        for (int n = 0; n < 2; ++n) {
            auto badge = NumberAnnotation();
            badge.strokeColor = red;
            badge.center = at + QPointF(60 * n, 20);
            badge.number = document.takeNumber();
            document.add(badge);
        }
    }
}

// The bare copy of the base is the reference: what is beyond it is the ink's.
void flatten(benchmark::State& state) {
    const QSize size(static_cast<int>(state.range(0)), static_cast<int>(state.range(1)));
    const QImage screen = screenful(size.width(), size.height());
    AnnotationDocument document(Image::captured(screen));
    addMixedInk(document);
    Times times;
    for (auto _ : state) {
        times.take([&] { benchmark::DoNotOptimize(ImageCompositor::composite(document)); },
                   [&] { benchmark::DoNotOptimize(screen.copy()); });
        state.SetIterationTime(times.ours);
    }
    state.counters["records"] = static_cast<double>(document.annotations().size());
    state.counters["ms"] = times.ours * 1e3;
    state.counters["copy_ms"] = times.reference * 1e3;
    state.counters["ink_ms"] = (times.ours - times.reference) * 1e3;
}
BENCHMARK(flatten)
    ->Name("composite_50_records")
    ->Args({1920, 1080})
    ->Args({3840, 2160})
    ->Args({7680, 4320})
    ->UseManualTime()
    ->Iterations(10)
    ->Unit(benchmark::kMillisecond);

// A box of 300x200 points painted bare and with its shadow, at density 1 and 2.
template <class R, class Bare>
void shadow(benchmark::State& state, Bare bare) {
    const double density = static_cast<double>(state.range(0));
    QImage picture(1000, 700, QImage::Format_RGB32);
    picture.fill(Qt::white);
    const auto record = boxRecord<R>({40, 40, 300, 200});
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.scale(density, density);
    Times times;
    for (auto _ : state) {
        times.take(
            [&] {
                for (int i = 0; i < 50; ++i)
                    record.draw(painter);
            },
            [&] {
                for (int i = 0; i < 50; ++i) {
                    painter.setPen(inkPen(record, Qt::FlatCap, Qt::MiterJoin));
                    bare(painter, record.box());
                }
            });
        state.SetIterationTime(times.ours);
    }
    state.counters["us"] = times.ours / 50 * 1e6;
    state.counters["bare_us"] = times.reference / 50 * 1e6;
    state.counters["times_the_bare"] = times.ours / times.reference;
}
void shadowOfRectangle(benchmark::State& state) {
    shadow<RectangleAnnotation>(state, [](QPainter& painter, const QRectF& box) { painter.drawRect(box); });
}
BENCHMARK(shadowOfRectangle)
    ->Name("shadow_rectangle_300x200/density")
    ->Arg(1)
    ->Arg(2)
    ->UseManualTime()
    ->Iterations(40);
void shadowOfEllipse(benchmark::State& state) {
    shadow<EllipseAnnotation>(state, [](QPainter& painter, const QRectF& box) { painter.drawEllipse(box); });
}
BENCHMARK(shadowOfEllipse)
    ->Name("shadow_ellipse_300x200/density")
    ->Arg(1)
    ->Arg(2)
    ->UseManualTime()
    ->Iterations(40);

void smoothing(benchmark::State& state) {
    const QList<QPointF> points = scribble(static_cast<int>(state.range(0)), {0, 0});
    for (auto _ : state)
        benchmark::DoNotOptimize(smoothedPath(points));
    state.counters["ns_per_point"] =
        benchmark::Counter(static_cast<double>(state.range(0)) * 1e-9,
                           benchmark::Counter::kIsIterationInvariantRate | benchmark::Counter::kInvert);
}
BENCHMARK(smoothing)->Name("smoothedPath/points")->RangeMultiplier(10)->Range(100, 100000);

// The worst press: it hits nothing, so every record is asked.
void hitTests(benchmark::State& state) {
    QImage pixels(3840, 2160, QImage::Format_RGB32);
    AnnotationDocument document(Image::captured(pixels));
    AnnotationDocument pattern(Image::captured(pixels));
    addMixedInk(pattern);
    for (int i = 0; i < 10000; ++i) {
        AnyAnnotation one = pattern.annotations()[i % pattern.annotations().size()];
        one.translate((i * 37) % 2000, (i * 53) % 1000);
        if (auto* pen = one.as<FreehandAnnotation>())
            pen->points = pen->points.mid(0, 40);
        document.add(one);
    }
    for (auto _ : state)
        benchmark::DoNotOptimize(document.selectAnnotation({3800, 20}, 6));
}
BENCHMARK(hitTests)->Name("hit_test_10000_records")->Unit(benchmark::kMicrosecond);

} // namespace
