// How long a frame takes while a hand draws on a 4K capture with 50 records in an editor of 1280x900: one
// pointer event and the painting of everything it changed, the chrome above it included, into the window's
// own backing store.
#include "base/SystemColors.h"
#include "editor/AnnotationCanvasView.h"
#include "editor/EditorRootView.h"
#include "platform/fake/FakeDesktop.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>
#include <benchmark/benchmark.h>
#include <cmath>
#include <ctime>
#include <numbers>

namespace marrowfin::editor {

using namespace annotation;
using namespace imaging;
namespace {

QImage desktopPicture() {
    QImage pixels(3840, 2160, QImage::Format_RGB32);
    pixels.fill(QColor(236, 238, 241));
    QPainter painter(&pixels);
    QLinearGradient sky(0, 0, 0, 1200);
    sky.setColorAt(0, QColor(60, 90, 160));
    sky.setColorAt(1, QColor(230, 190, 150));
    painter.fillRect(1800, 200, 1900, 1200, sky);
    for (int y = 60; y < 2100; y += 34)
        for (int x = 80; x < 1700; x += 26 + (x * 7 + y) % 40)
            painter.fillRect(x, y, 18 + (x + y) % 20, 14, QColor(60, 64, 72));
    return pixels;
}

template <class Record>
Record styled(int index) {
    Record record;
    record.strokeColor = systemColor(index % 2 ? SystemColor::red : SystemColor::blue);
    record.strokeWidth = 3 + index % 3;
    return record;
}

template <class Record>
Record box(int index, QRectF place) {
    auto record = styled<Record>(index);
    record.setBox(place);
    return record;
}

template <class Record>
Record segment(int index, QRectF place) {
    auto record = styled<Record>(index);
    record.startPoint = place.topLeft();
    record.endPoint = place.bottomRight();
    return record;
}

FreehandAnnotation stroke(int index, QRectF place) {
    auto record = styled<FreehandAnnotation>(index);
    for (int i = 0; i < 200; ++i)
        record.points.append({place.x() + place.width() * i / 200,
                              place.center().y() + place.height() / 2 * std::sin(i / 12.0)});
    return record;
}

AnyAnnotation recordNumber(int index) {
    const double x = 100 + (index * 977) % 3000;
    const double y = 100 + (index * 613) % 1500;
    const QRectF place(x, y, 260 + index * 37 % 500, 180 + index * 53 % 300);
    switch (index % 9) {
    case 0:
        return box<RectangleAnnotation>(index, place);
    case 1:
        return box<EllipseAnnotation>(index, place);
    case 2:
        return segment<ArrowAnnotation>(index, place);
    case 3:
        return segment<LineAnnotation>(index, place);
    case 4:
        return stroke(index, place);
    case 5: {
        auto text = styled<TextAnnotation>(index);
        text.position = place.topLeft();
        text.text = QStringLiteral("A note about this\nin two lines");
        text.fontSize = 48;
        return text;
    }
    case 6:
        return box<BlurAnnotation>(index, place);
    case 7: {
        auto marker = box<HighlightAnnotation>(index, place);
        marker.strokeColor = systemColor(SystemColor::yellow);
        return marker;
    }
    default: {
        auto badge = styled<NumberAnnotation>(index);
        badge.center = place.center();
        badge.number = index;
        return badge;
    }
    }
}

class Editor {
public:
    Editor()
        : window(Image::captured(desktopPicture())), document(*window.document()), tools(*window.toolState()),
          canvas(*window.canvas()) {
        for (int i = 0; i < 50; ++i)
            document.add(recordNumber(i));
        window.resize(1280, 900);
        QObject::connect(&canvas, &AnnotationCanvasView::contentsChanged, &canvas,
                         [this](const QRegion& region) {
                             for (const QRect& part : region)
                                 repainted += part.width() * part.height();
                         });
        window.show();
        QCoreApplication::processEvents();
        paint();
    }
    void choose(ToolType tool) {
        tools.setCurrentTool(tool);
        paint();
    }
    void press(QPointF at) { send(QEvent::MouseButtonPress, at, Qt::LeftButton); }
    void release(QPointF at) { send(QEvent::MouseButtonRelease, at, Qt::LeftButton); }
    // One frame, in milliseconds.
    void moveTo(QPointF at) {
        QElapsedTimer timer;
        timer.start();
        const double before = processorMilliseconds();
        send(QEvent::MouseMove, at, Qt::NoButton);
        paint();
        processor.push_back(processorMilliseconds() - before);
        frames.push_back(static_cast<double>(timer.nsecsElapsed()) / 1e6);
    }
    // By the clock, and by this thread's own time, which other programs on the machine don't lengthen.
    void report(benchmark::State& state) {
        state.counters["frames"] = static_cast<double>(frames.size());
        state.counters["pixels"] = repainted / static_cast<double>(frames.size());
        state.counters["median_ms"] = quantile(frames, 0.5);
        state.counters["p99_ms"] = quantile(frames, 0.99);
        state.counters["cpu_median_ms"] = quantile(processor, 0.5);
        state.counters["cpu_p99_ms"] = quantile(processor, 0.99);
        state.counters["cpu_worst_ms"] = quantile(processor, 1);
    }

    fake::FakeDesktop desktop;
    EditorRootView window;
    AnnotationDocument& document;
    ToolState& tools;
    AnnotationCanvasView& canvas;

private:
    void send(QEvent::Type type, QPointF at, Qt::MouseButton button) {
        QMouseEvent event(type, at, canvas.mapToGlobal(at), button, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(&canvas, &event);
    }
    void paint() {
        QEvent request(QEvent::UpdateRequest);
        QApplication::sendEvent(&window, &request);
    }
    static double processorMilliseconds() {
        timespec now{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
        return static_cast<double>(now.tv_sec) * 1e3 + static_cast<double>(now.tv_nsec) / 1e6;
    }
    static double quantile(std::vector<double>& values, double share) {
        std::sort(values.begin(), values.end());
        return values[static_cast<size_t>(share * static_cast<double>(values.size() - 1))];
    }

    std::vector<double> frames;
    std::vector<double> processor;
    double repainted = 0;
};

// A drag along a loop through most of the image.
QPointF onLoop(int step, int steps) {
    const double turn = 2 * std::numbers::pi * step / steps;
    return {640 + 420 * std::cos(turn), 440 + 250 * std::sin(turn)};
}

void dragLoop(benchmark::State& state, ToolType tool) {
    for (auto _ : state) {
        Editor editor;
        editor.choose(tool);
        editor.press({300, 250});
        for (int i = 0; i < 600; ++i)
            editor.moveTo(onLoop(i, 600));
        editor.report(state);
    }
}

void drawBox(benchmark::State& state) {
    dragLoop(state, ToolType::rectangle);
}
void drawEllipse(benchmark::State& state) {
    dragLoop(state, ToolType::ellipse);
}
void drawArrow(benchmark::State& state) {
    dragLoop(state, ToolType::arrow);
}
void drawBlur(benchmark::State& state) {
    dragLoop(state, ToolType::blur);
}

void moveBox(benchmark::State& state) {
    for (auto _ : state) {
        Editor editor;
        const auto record = box<RectangleAnnotation>(0, {1200, 800, 900, 600});
        editor.document.add(record);
        for (int i = 0; i < 10; ++i) // and some ink above it
            editor.document.add(recordNumber(50 + i));
        editor.choose(ToolType::select);
        const QPointF edge =
            editor.canvas.imageRect().topLeft() + QPointF(1200, 1100) * editor.canvas.displayScale();
        editor.press(edge);
        if (editor.canvas.interaction().interaction().kind != InteractionState::Kind::moving)
            state.SkipWithError("the press missed the box");
        for (int i = 0; i < 600; ++i)
            editor.moveTo(edge + (onLoop(i, 600) - onLoop(0, 600)) * 0.6);
        editor.report(state);
    }
}

// Along the edges of the window: a box goes through beneath every plate, which shows it blurred.
void moveBeneathTheChrome(benchmark::State& state) {
    for (auto _ : state) {
        Editor editor;
        editor.document.add(box<RectangleAnnotation>(0, {1200, 800, 900, 600}));
        editor.choose(ToolType::select);
        const QPointF edge =
            editor.canvas.imageRect().topLeft() + QPointF(1200, 1100) * editor.canvas.displayScale();
        editor.press(edge);
        editor.choose(ToolType::rectangle); // the style bar is up, too
        for (int i = 0; i < 600; ++i) {
            const double turn = 2 * std::numbers::pi * i / 600;
            editor.moveTo({500 + 600 * std::cos(turn), 440 + 420 * std::sin(turn)});
        }
        editor.report(state);
    }
}

void drawStroke(benchmark::State& state) {
    for (auto _ : state) {
        Editor editor;
        editor.choose(ToolType::pen);
        editor.press(onLoop(0, 250));
        for (int i = 0; i < 2000; ++i)
            editor.moveTo(onLoop(i, 250) * (1 - i / 4000.0) + QPointF(160, 110) * (i / 2000.0));
        editor.report(state);
    }
}

void moveCrop(benchmark::State& state) {
    for (auto _ : state) {
        Editor editor;
        editor.choose(ToolType::crop);
        editor.tools.setCropRect(QRectF(900, 600, 1600, 900));
        const QPointF middle = editor.canvas.imageRect().center();
        editor.press(middle);
        for (int i = 0; i < 600; ++i)
            editor.moveTo(middle + (onLoop(i, 600) - QPointF(640, 440)) * 0.5);
        editor.report(state);
    }
}

void typeText(benchmark::State& state) {
    for (auto _ : state) {
        Editor editor;
        editor.choose(ToolType::text);
        editor.press({400, 400});
        editor.release({400, 400});
        QWidget* target = editor.canvas.textEditor();
        if (!target)
            state.SkipWithError("no edit began");
        for (int i = 0; i < 200 && target; ++i) {
            QKeyEvent key(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
            QApplication::sendEvent(target, &key);
            editor.moveTo({900, 700});
        }
        editor.report(state);
    }
}

// The whole picture at once, as after a resize of the window: the base is resampled and all ink painted.
void firstFrame(benchmark::State& state) {
    for (auto _ : state) {
        state.PauseTiming();
        Editor editor;
        state.ResumeTiming();
        editor.window.resize(1270, 890);
        editor.moveTo({0, 0});
        editor.report(state);
    }
}

BENCHMARK(drawBox)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(moveBox)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(moveBeneathTheChrome)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(drawStroke)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(drawBlur)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(moveCrop)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(drawEllipse)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(drawArrow)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(typeText)->Iterations(1)->Unit(benchmark::kMillisecond);
BENCHMARK(firstFrame)->Iterations(5)->Unit(benchmark::kMillisecond);

} // namespace
} // namespace marrowfin::editor

int main(int argc, char** argv) {
    benchmark::Initialize(&argc, argv);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::RunSpecifiedBenchmarks();
}
