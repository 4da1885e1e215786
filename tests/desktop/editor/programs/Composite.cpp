// composite BASE.png OUT.png < steps.json: puts the records, in this order, on the base and writes the
// composite. A step is an object with a "kind" and its places in image points, as in
//     [{"kind": "rectangle", "from": [10, 20], "to": [110, 90], "color": "#ff3b30", "width": 3},
//      {"kind": "text", "at": [40, 200], "text": "two\nlines"}, {"kind": "crop", "rect": [0, 0, 160, 90]}]
#include "annotation/AnnotationDocument.h"
#include "annotation/HighlightDarkness.h"
#include "annotation/ImageCompositor.h"
#include "annotation/Records.h"
#include "base/Geometry.h"
#include "base/SystemColors.h"

#include <QFile>
#include <QGuiApplication>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <cstdio>

using namespace marrowfin;
using namespace annotation;
using namespace imaging;

namespace {

QPointF point(const QJsonValue& pair) {
    return {pair.toArray().at(0).toDouble(), pair.toArray().at(1).toDouble()};
}

template <class Box>
Box boxBetween(const QJsonObject& step) {
    Box record;
    record.setBox(rectBetween(point(step["from"]), point(step["to"])));
    return record;
}

template <class Segment>
Segment segmentBetween(const QJsonObject& step) {
    return test::segment<Segment>(point(step["from"]), point(step["to"]));
}

template <class Record>
AnyAnnotation styled(Record record, const QJsonObject& step) {
    record.strokeColor = step.contains("color") ? QColor(step["color"].toString()) : test::red;
    record.strokeWidth = step["width"].toDouble(3);
    return record;
}

AnyAnnotation highlight(const QJsonObject& step, const Image& base) {
    auto record = boxBetween<HighlightAnnotation>(step);
    record.backdropIsDark = isDarkBackdrop(base, record.box()).value_or(record.backdropIsDark);
    AnyAnnotation made = styled(record, step);
    made.as<HighlightAnnotation>()->strokeColor = systemColor(SystemColor::yellow);
    return made;
}

FreehandAnnotation pen(const QJsonObject& step) {
    QList<QPointF> points;
    for (const QJsonValue& one : step["points"].toArray())
        points.append(point(one));
    return test::pen(points);
}

AnyAnnotation record(const QJsonObject& step, AnnotationDocument& document) {
    const QString kind = step["kind"].toString();
    if (kind == "rectangle")
        return styled(boxBetween<RectangleAnnotation>(step), step);
    if (kind == "ellipse")
        return styled(boxBetween<EllipseAnnotation>(step), step);
    if (kind == "arrow")
        return styled(segmentBetween<ArrowAnnotation>(step), step);
    if (kind == "line")
        return styled(segmentBetween<LineAnnotation>(step), step);
    if (kind == "pen")
        return styled(pen(step), step);
    if (kind == "highlight")
        return highlight(step, document.baseImage());
    if (kind == "blur")
        return styled(boxBetween<BlurAnnotation>(step), step);
    if (kind == "text")
        return styled(test::text(point(step["at"]), step["text"].toString()), step);
    if (kind == "number")
        return styled(test::badge(point(step["at"]), document.takeNumber()), step);
    qFatal("no record is called %s", qPrintable(kind));
}

void take(const QJsonObject& step, AnnotationDocument& document) {
    if (step["kind"].toString() != "crop") {
        document.add(record(step, document));
        return;
    }
    const QJsonArray rect = step["rect"].toArray();
    document.crop({rect[0].toDouble(), rect[1].toDouble(), rect[2].toDouble(), rect[3].toDouble()});
}

} // namespace

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    if (argc != 3)
        qFatal("composite BASE.png OUT.png < steps.json");
    const QImage base(QString::fromLocal8Bit(argv[1]));
    QFile input;
    if (base.isNull() || !input.open(stdin, QIODevice::ReadOnly))
        qFatal("nothing to read");
    AnnotationDocument document(Image::captured(base.convertToFormat(QImage::Format_RGB32)));
    for (const QJsonValue& step : QJsonDocument::fromJson(input.readAll()).array())
        take(step.toObject(), document);
    const Image made = ImageCompositor::composite(document);
    return made.pixels().save(QString::fromLocal8Bit(argv[2]), "PNG") ? 0 : 1;
}
