#include "annotation/AnnotationDocument.h"

#include "annotation/CropGeometry.h"
#include "annotation/ImageCompositor.h"
#include "base/Geometry.h"
#include "base/Invariant.h"

#include <algorithm>
#include <limits>

namespace marrowfin::annotation {

using namespace imaging;

class AnnotationDocument::Changes {
public:
    explicit Changes(AnnotationDocument& document) : document(document) {}
    ~Changes() {
        if (annotations)
            Q_EMIT document.annotationsChanged();
        if (baseImage)
            Q_EMIT document.baseImageChanged();
        if (selection)
            Q_EMIT document.selectedAnnotationIDChanged();
        if (undoState)
            Q_EMIT document.undoStateChanged();
    }
    Changes(const Changes&) = delete;
    Changes& operator=(const Changes&) = delete;

    bool annotations = false;
    bool baseImage = false;
    bool selection = false;
    bool undoState = false;

private:
    AnnotationDocument& document;
};

namespace {

qint64 takeFrom(qint64& counter) {
    MARROWFIN_INVARIANT(counter < std::numeric_limits<qint64>::max());
    return counter++;
}

// QRectF's own == forgives small differences; a crop that is a little smaller than the image is an edit.
bool isExactly(const QRectF& a, const QRectF& b) {
    return a.x() == b.x() && a.y() == b.y() && a.width() == b.width() && a.height() == b.height();
}

} // namespace

AnnotationDocument::AnnotationDocument(Image baseImage, QObject* parent)
    : QObject(parent), base(std::move(baseImage)) {}

void AnnotationDocument::setSelectedAnnotationID(std::optional<QUuid> id) {
    Changes changes(*this);
    select(id, changes);
}

const AnyAnnotation* AnnotationDocument::annotation(const QUuid& id) const {
    const auto found =
        std::find_if(ink.cbegin(), ink.cend(), [&](const AnyAnnotation& one) { return one.id() == id; });
    return found == ink.cend() ? nullptr : &*found;
}

// Gives write access, and with it the one copy of the list that a snapshot still shares.
AnyAnnotation* AnnotationDocument::find(const QUuid& id) {
    const AnyAnnotation* found = annotation(id);
    return found ? &ink[found - ink.constData()] : nullptr;
}

qint64 AnnotationDocument::takeZIndex() {
    return takeFrom(nextZ);
}
qint64 AnnotationDocument::takeNumber() {
    return takeFrom(nextBadge);
}

void AnnotationDocument::pushUndoSnapshot() {
    Changes changes(*this);
    push(changes);
}

void AnnotationDocument::push(Changes& changes) {
    undoable.append(currentState());
    if (undoable.size() > maxUndoLevels)
        undoable.removeFirst();
    redoable.clear();
    changes.undoState = true;
}

void AnnotationDocument::add(AnyAnnotation annotation) {
    Changes changes(*this);
    push(changes);
    annotation.setZIndex(takeZIndex());
    ink.append(std::move(annotation));
    changes.annotations = true;
}

void AnnotationDocument::select(std::optional<QUuid> id, Changes& changes) {
    changes.selection |= selected != id;
    selected = id;
}

std::optional<QUuid> AnnotationDocument::selectAnnotation(const QPointF& point, double tolerance) {
    Changes changes(*this);
    const auto hit = std::find_if(ink.crbegin(), ink.crend(), [&](const AnyAnnotation& annotation) {
        return annotation.hitTest(point, tolerance);
    });
    select(hit == ink.crend() ? std::nullopt : std::optional(hit->id()), changes);
    return selected;
}

void AnnotationDocument::moveSelected(double dx, double dy) {
    AnyAnnotation* annotation = selected ? find(*selected) : nullptr;
    if (!annotation)
        return;
    Changes changes(*this);
    annotation->translate(dx, dy);
    changes.annotations = true;
}

void AnnotationDocument::resizeSelected(ResizeHandle handle, const QPointF& point) {
    AnyAnnotation* annotation = selected ? find(*selected) : nullptr;
    if (!annotation)
        return;
    Changes changes(*this);
    *annotation = annotation->resized(handle, point);
    changes.annotations = true;
}

void AnnotationDocument::remove(const QUuid& id, Changes& changes) {
    push(changes);
    ink.removeIf([&](const AnyAnnotation& annotation) { return annotation.id() == id; });
    changes.annotations = true;
}

void AnnotationDocument::deleteSelected() {
    if (!selected)
        return;
    Changes changes(*this);
    remove(*selected, changes);
    select(std::nullopt, changes);
}

void AnnotationDocument::deleteAnnotation(const QUuid& id) {
    if (!annotation(id))
        return;
    Changes changes(*this);
    const QUuid removed = id; // the caller's reference may be to the annotation itself
    remove(removed, changes);
    if (selected == removed)
        select(std::nullopt, changes);
}

void AnnotationDocument::updateText(const QUuid& id, const QString& text) {
    const AnyAnnotation* present = annotation(id);
    const TextAnnotation* words = present ? present->as<TextAnnotation>() : nullptr;
    if (!words || words->text == text)
        return;
    Changes changes(*this);
    push(changes);
    find(id)->as<TextAnnotation>()->text = text;
    changes.annotations = true;
}

void AnnotationDocument::crop(const QRectF& rect) {
    const QRectF whole(QPointF(0, 0), base.size());
    if (base.isNull() || !isFinite(rect))
        return;
    const std::optional<QRectF> kept = intersection(rect, whole);
    if (!kept || kept->width() < minimumCommittedCrop || kept->height() < minimumCommittedCrop ||
        isExactly(*kept, whole))
        return;
    Image cut = ImageCompositor::cropImage(base, *kept);
    if (cut.isNull())
        return;
    Changes changes(*this);
    push(changes);
    base = std::move(cut);
    for (AnyAnnotation& annotation : ink)
        annotation.translate(-kept->x(), -kept->y());
    changes.annotations = changes.baseImage = true;
    select(std::nullopt, changes);
}

void AnnotationDocument::undo() {
    if (undoable.isEmpty())
        return;
    Changes changes(*this);
    const Snapshot snapshot = undoable.takeLast();
    redoable.append(currentState());
    restore(snapshot, changes);
}

void AnnotationDocument::redo() {
    if (redoable.isEmpty())
        return;
    Changes changes(*this);
    const Snapshot snapshot = redoable.takeLast();
    undoable.append(currentState()); // the two stacks together never hold more than the bound
    restore(snapshot, changes);
}

void AnnotationDocument::restore(const Snapshot& snapshot, Changes& changes) {
    ink = snapshot.annotations;
    changes.annotations = true;
    // The same image is left alone, so that its observers, and their blurred copies of it, stay quiet.
    if (!(base == snapshot.baseImage)) {
        base = snapshot.baseImage;
        changes.baseImage = true;
    }
    select(std::nullopt, changes);
    changes.undoState = true;
}

} // namespace marrowfin::annotation
