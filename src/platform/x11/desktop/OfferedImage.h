// What other programs find on the clipboard after a copy of an image. QClipboard owns it. Main thread.
#pragma once

#include "imaging/Image.h"

#include <QMimeData>

namespace marrowfin::x11 {

class OfferedImage : public QMimeData {
    Q_OBJECT
public:
    // Its encoding is finished by the time that this goes onto the clipboard.
    explicit OfferedImage(imaging::Image image);

    const imaging::Image& image() const { return offered; }

    QStringList formats() const override;
    bool hasFormat(const QString& mimeType) const override;

protected:
    QVariant retrieveData(const QString& mimeType, QMetaType type) const override;

private:
    imaging::Image offered;
};

} // namespace marrowfin::x11
