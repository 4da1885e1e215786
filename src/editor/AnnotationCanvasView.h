// The drawing surface of the editor: fits the base image into its bounds, paints image, ink and crop, and
// turns presses and keys into operations on the document and the tool state. It owns no ink but the record
// being dragged out. View points, y down. Owned by the editor's root view. Main thread.
#pragma once

#include "annotation/AnnotationDocument.h"
#include "annotation/ToolState.h"
#include "editor/CanvasCrop.h"
#include "editor/CanvasFit.h"
#include "editor/CanvasInteraction.h"
#include "editor/InlineTextEditor.h"
#include "editor/TextSession.h"

#include <QMarginsF>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <optional>
#include <vector>

namespace marrowfin::editor {

class CanvasPainter;
class TextClickMonitor;

class AnnotationCanvasView : public QWidget {
    Q_OBJECT
public:
    explicit AnnotationCanvasView(QWidget* parent = nullptr);
    ~AnnotationCanvasView() override;

    // Neither is owned; either may go before the canvas does.
    annotation::AnnotationDocument* document() const { return doc; }
    void setDocument(annotation::AnnotationDocument* document);
    annotation::ToolState* toolState() const { return tools; }
    void setToolState(annotation::ToolState* toolState);
    // Space kept free of the image for the floating chrome.
    const QMarginsF& contentInsets() const { return insets; }
    void setContentInsets(const QMarginsF& insets);

    // Where the image stands, always of the present size and image.
    const QRectF& imageRect() const { return fit.imageRect; }
    double displayScale() const { return fit.scale; }

    // Ends an open edit of text and keeps what was typed; nothing without one. The chrome calls it before it
    // copies, saves or pins, so that text being typed is in the output.
    void commitTextEdit();
    // Return and Escape in the crop tool, and the buttons of the crop bar.
    void applyCrop();
    void cancelCrop();

    // What the view shows, text being typed too, in a painter whose space is view points: for whoever shows a
    // copy of it. Cheap at the pixels of the view's own screen only.
    void paintContents(QPainter& painter, const QRegion& region);

    // The open edit; null and none without one.
    InlineTextEditor* textEditor() const { return editor; }
    const std::optional<TextSession>& textSession() const { return session; }
    const CanvasInteraction& interaction() const { return pointer; }
    const CanvasCrop& cropInteraction() const { return crop; }

Q_SIGNALS:
    // This part will be painted anew: whoever shows a copy of what is beneath it (the translucent plates of
    // the chrome) is out of date there. View points.
    void contentsChanged(const QRegion& region);

protected:
    void paintEvent(QPaintEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void showEvent(QShowEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

private:
    // What is on the screen of that which comes and goes without being ink, so that a change repaints no more
    // than it must.
    struct Shown {
        QList<annotation::AnyAnnotation> annotations;
        std::optional<annotation::AnyAnnotation> inProgress;
        std::optional<QUuid> selected;
        std::optional<QUuid> hidden; // stands in the inline editor instead
        std::optional<QRectF> crop;
    };

    void mouseDown(const QPointF& viewPoint, ClickCount clicks);
    bool isCropping() const;
    bool cropKey(int key);
    QSizeF imageSize() const;
    void refit();

    // What should be on the screen now, against what is.
    Shown present() const;
    QRegion damageBetween(const Shown& before, const Shown& after) const;
    void contentsDidChange();
    void everythingDidChange();
    void invalidate(const QRegion& region);
    std::optional<QRectF> visibleCrop() const;

    void beginTextEdit(const TextSession& newSession, const QString& text);
    void layoutTextEditor();
    QRegion textEditorRegion() const;
    void storeTyped(const TextSession& ended, const QString& typed);
    void paintTextEditor(QPainter& painter) const;

    QPointer<annotation::AnnotationDocument> doc;
    QPointer<annotation::ToolState> tools;
    std::vector<QMetaObject::Connection> documentConnections;
    std::vector<QMetaObject::Connection> toolConnections;
    QMarginsF insets;
    CanvasFit fit;
    CanvasInteraction pointer;
    CanvasCrop crop;
    std::optional<TextSession> session;
    InlineTextEditor* editor = nullptr;
    std::unique_ptr<TextClickMonitor> clickMonitor;
    QRegion editorShownIn;
    Shown shown;
    std::unique_ptr<CanvasPainter> painting;
};

} // namespace marrowfin::editor
