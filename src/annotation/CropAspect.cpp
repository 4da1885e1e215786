#include "annotation/CropAspect.h"

namespace marrowfin::annotation {

QString rawValue(CropAspect aspect) {
    switch (aspect) {
    case CropAspect::freeform:
        return QStringLiteral("freeform");
    case CropAspect::original:
        return QStringLiteral("original");
    case CropAspect::square:
        return QStringLiteral("square");
    case CropAspect::wide:
        return QStringLiteral("wide");
    case CropAspect::standard:
        return QStringLiteral("standard");
    case CropAspect::classic:
        return QStringLiteral("classic");
    }
    return {};
}

std::optional<CropAspect> cropAspect(const QString& raw) {
    for (const CropAspect aspect : allCropAspects)
        if (rawValue(aspect) == raw)
            return aspect;
    return std::nullopt;
}

QString chipTitle(CropAspect aspect) {
    switch (aspect) {
    case CropAspect::freeform:
        return QStringLiteral("Free");
    case CropAspect::original:
        return QStringLiteral("Original");
    case CropAspect::square:
        return QStringLiteral("1:1");
    case CropAspect::wide:
        return QStringLiteral("16:9");
    case CropAspect::standard:
        return QStringLiteral("4:3");
    case CropAspect::classic:
        return QStringLiteral("3:2");
    }
    return {};
}

std::optional<double> aspectRatio(CropAspect aspect, const QSizeF& image) {
    switch (aspect) {
    case CropAspect::freeform:
        return std::nullopt;
    case CropAspect::original:
        if (image.width() > 0 && image.height() > 0)
            return image.width() / image.height();
        return std::nullopt;
    case CropAspect::square:
        return 1.0;
    case CropAspect::wide:
        return 16.0 / 9.0;
    case CropAspect::standard:
        return 4.0 / 3.0;
    case CropAspect::classic:
        return 1.5;
    }
    return std::nullopt;
}

} // namespace marrowfin::annotation
