// A file on its way: it gets its bytes first and its name when it is whole. Any thread; one at a time.
#pragma once

#include <QByteArray>
#include <QString>
#include <sys/types.h>

namespace marrowfin {

// Who may read a new file: its owner, or whom the user lets read new files (umask).
enum class FileAccess { OwnerOnly, AsUsual };

// What the names of hidden neighbours begin with; a process id and a dot follow.
inline const QString draftPrefix = QStringLiteral(".marrowfin.");

class DraftFile {
public:
    // Where nobody sees it: the system clears it away when this process dies. Not every file system can.
    enum class Place { Nameless, HiddenNeighbour };

    // In the target's folder. A hidden neighbour's name carries our process id.
    DraftFile(const QString& target, Place place, FileAccess access);
    // Gone unless it took its final name.
    ~DraftFile();
    DraftFile(const DraftFile&) = delete;
    DraftFile& operator=(const DraftFile&) = delete;

    bool isOpen() const { return descriptor >= 0; }
    // Each leaves the reason in errno when it fails.
    bool write(const QByteArray& bytes) const;
    bool setMode(mode_t mode) const;
    // Waits for the disk, where it can.
    bool flush() const;
    // Replaces what has the name.
    bool becomes(const QString& target);

private:
    bool linkAs(const QByteArray& path) const;

    QByteArray name; // empty while nameless
    int descriptor = -1;
    bool renamed = false;
};

} // namespace marrowfin
