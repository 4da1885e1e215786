// The shapes that a crop can be held to, in the order of the crop bar's chips. Any thread.
#pragma once

#include <QSizeF>
#include <QString>
#include <array>
#include <optional>

namespace marrowfin::annotation {

enum class CropAspect { freeform, original, square, wide, standard, classic };

inline constexpr std::array allCropAspects{CropAspect::freeform, CropAspect::original, CropAspect::square,
                                           CropAspect::wide,     CropAspect::standard, CropAspect::classic};

// "freeform", "original" and so on: the name of the case.
QString rawValue(CropAspect aspect);
// Nothing for an unknown string.
std::optional<CropAspect> cropAspect(const QString& rawValue);
// "Free", "Original", "1:1", "16:9", "4:3", "3:2".
QString chipTitle(CropAspect aspect);

// Width over height; nothing where the aspect doesn't constrain, as the original one of an image without
// area.
std::optional<double> aspectRatio(CropAspect aspect, const QSizeF& image);

} // namespace marrowfin::annotation
