// An editor in an ordinary window of its own. The list of open editors keeps it alive until the window has
// closed; others may hold it longer. Image points for the size, DesktopRect for the place. Main thread.
#pragma once

#include "imaging/Image.h"

#include <QObject>
#include <QSize>
#include <QSizeF>
#include <functional>
#include <memory>
#include <vector>

class QWidget;

namespace marrowfin::editor {

class EditorRootView;

// The image at its own scale between the chrome, within fixed limits; the screen plays no part.
QSize editorWindowSize(const QSizeF& imageSize);
constexpr QSize minimumEditorWindowSize{760, 520};
constexpr QSize maximumFirstEditorWindowSize{1280, 900};

// What an editor asks of the rest of the program, which hands it in.
struct EditorRequests {
    std::function<void(const imaging::Image& flattened)> pin;
};

class EditorWindowController : public QObject, public std::enable_shared_from_this<EditorWindowController> {
    Q_OBJECT
public:
    // Builds the window, not shown yet, and enters the list of open editors.
    static std::shared_ptr<EditorWindowController> make(const imaging::Image& image,
                                                        const EditorRequests& requests = {});
    ~EditorWindowController() override;

    // The list, in the order of making.
    static const std::vector<std::shared_ptr<EditorWindowController>>& openEditors();

    // What it was made from.
    const imaging::Image& image() const { return original; }
    // Both null once the window has closed: it doesn't come back.
    QWidget* window() const { return frame.get(); }
    EditorRootView* rootView() const { return root; }

    // In front of the other windows and with the keyboard. Nothing once the window has closed.
    void showWindow();

Q_SIGNALS:
    // Nobody is asked, and what wasn't copied, pinned or saved is lost with it.
    void windowWillClose();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    explicit EditorWindowController(const imaging::Image& image);
    void buildWindow();
    void connectRootView(const EditorRequests& requests);
    void leaveOpenEditors();

    imaging::Image original;
    std::unique_ptr<QWidget> frame;
    EditorRootView* root = nullptr;
    bool isClosing = false;
};

} // namespace marrowfin::editor
