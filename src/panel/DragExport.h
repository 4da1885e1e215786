// The PNG file that a card is dragged out as. Its name is chosen when the card is made, the file written in
// the background from the image's one encoding. Every failure is silent: then there is no file. Main
// thread; the writing runs on the folder's queue.
#pragma once

#include "imaging/CaptureFile.h"

#include <QString>
#include <QStringList>
#include <functional>
#include <memory>
#include <optional>

namespace marrowfin::panel {

class DragExport {
public:
    // Makes the folder, prunes it, chooses the name.
    explicit DragExport(const imaging::Image& image);
    ~DragExport();
    DragExport(const DragExport&) = delete;
    DragExport& operator=(const DragExport&) = delete;

    // Writes the file in the background; the block gets the number of bytes once it is there, unless this
    // object has gone by then.
    void start(std::function<void(qint64)> ready);
    // The file, written now if it isn't there yet or no longer. Nothing when that fails.
    std::optional<QString> file();

    const QString& destination() const { return path; }
    bool isReady() const { return written; }

private:
    imaging::CaptureFile asked() const;
    void finish(qint64 bytes);

    imaging::Image image;
    QString path;
    std::shared_ptr<QStringList> claimed; // the paths that no other card may take
    bool written = false;
    std::function<void(qint64)> whenReady;
    // Gone with this object; blocks under way look at it.
    std::shared_ptr<DragExport*> life;
};

// "Marrowfin 2026-11-21 at 10.41.37.png", with " 2", " 3" and so on before the dot while a file or another
// card has the name.
QString newDragExportPath(const QString& folder);

} // namespace marrowfin::panel
