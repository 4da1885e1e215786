// The model of one open editor: the base image, the ink on it, the selection and what undo knows. Image
// points, origin top left, y down. Owned by the editor window's controller, shared with its canvas and
// chrome. Main thread. A missing id, an empty stack or no base image is no error: the operation does nothing.
#pragma once

#include "annotation/AnyAnnotation.h"
#include "annotation/Snapshot.h"
#include "imaging/Image.h"

#include <QObject>
#include <optional>

namespace marrowfin::annotation {

class AnnotationDocument : public QObject {
    Q_OBJECT
public:
    static constexpr int maxUndoLevels = 50;

    // A null image is a document without pixels.
    explicit AnnotationDocument(imaging::Image baseImage, QObject* parent = nullptr);

    // In order of insertion.
    const QList<AnyAnnotation>& annotations() const { return ink; }
    const std::optional<QUuid>& selectedAnnotationID() const { return selected; }
    void setSelectedAnnotationID(std::optional<QUuid> id);
    const imaging::Image& baseImage() const { return base; }
    // Null when there is none with this id.
    const AnyAnnotation* annotation(const QUuid& id) const;

    // Oldest first.
    const QList<Snapshot>& undoStack() const { return undoable; }
    const QList<Snapshot>& redoStack() const { return redoable; }

    // The next paint order and badge number. Both only grow, also across undo: none is given out twice.
    qint64 nextZIndex() const { return nextZ; }
    qint64 nextNumber() const { return nextBadge; }
    qint64 takeZIndex();
    qint64 takeNumber();

    // Remembers the present state as one step of undo, and forgets what could be redone. The canvas calls it
    // at the start of a resize; the operations that push do so themselves.
    void pushUndoSnapshot();

    // Pushes. Gives the annotation its z index; the selection stays.
    void add(AnyAnnotation annotation);
    // Selects the youngest annotation that is hit, or nothing; returns its id.
    std::optional<QUuid> selectAnnotation(const QPointF& point, double tolerance);
    // Never pushes: undoing after a move goes back to the state before the last pushed edit, the move with
    // it.
    void moveSelected(double dx, double dy);
    // Doesn't push: a whole drag of a handle is one step, pushed when it began.
    void resizeSelected(ResizeHandle handle, const QPointF& point);
    // These push if they act.
    void deleteSelected();
    void deleteAnnotation(const QUuid& id);
    void updateText(const QUuid& id, const QString& text);
    // Cuts the base image to the rectangle and carries all ink along, also what is outside then. Less than
    // one point, or the whole image, is no edit.
    void crop(const QRectF& rect);

    // Both clear the selection.
    void undo();
    void redo();

Q_SIGNALS:
    // Each is sent after the whole operation, so that a receiver sees the document as it will stay.
    void annotationsChanged();
    void selectedAnnotationIDChanged();
    void baseImageChanged();
    // What can be undone or redone.
    void undoStateChanged();

private:
    // Tells the observers what was touched, when the operation that owns it ends.
    class Changes;

    AnyAnnotation* find(const QUuid& id);
    Snapshot currentState() const { return {ink, base}; }
    void push(Changes& changes);
    void select(std::optional<QUuid> id, Changes& changes);
    void remove(const QUuid& id, Changes& changes);
    void restore(const Snapshot& snapshot, Changes& changes);

    QList<AnyAnnotation> ink;
    std::optional<QUuid> selected;
    imaging::Image base;
    QList<Snapshot> undoable;
    QList<Snapshot> redoable;
    qint64 nextZ = 0;
    qint64 nextBadge = 1;
};

} // namespace marrowfin::annotation
