#include "base/SystemFonts.h"

#include "base/Geometry.h"
#include "base/Log.h"

#include <QFontDatabase>
#include <algorithm>
#include <optional>

namespace marrowfin {

namespace {

struct Families {
    QString sans;
    QString mono;
};
std::optional<Families> families;

// The usual units of a face divide evenly here, so that advances stay whole in the layout's 1/64 of a pixel.
constexpr int exactReference = 128;

QString familyOr(const QString& wanted, QFontDatabase::SystemFont fallback) {
    if (QFontDatabase::hasFamily(wanted))
        return wanted;
    const QString instead = QFontDatabase::systemFont(fallback).family();
    logLine(QStringLiteral("[Marrowfin] font %1 is not installed, using %2").arg(wanted, instead));
    return instead;
}

const Families& chosenFamilies() {
    if (!families)
        families = Families{familyOr(QStringLiteral("Inter"), QFontDatabase::GeneralFont),
                            familyOr(QStringLiteral("JetBrains Mono"), QFontDatabase::FixedFont)};
    return *families;
}

QFont makeFont(const QString& family, int pixels, QFont::Weight weight) {
    QFont font(family);
    font.setPixelSize(pixels);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

int wholePixels(double size) {
    return std::clamp(roundedToInt(size), 1, 4096);
}

ExactFont makeExact(const QString& family, double size, QFont::Weight weight) {
    return {makeFont(family, exactReference, weight), size / exactReference};
}

} // namespace

QFont systemFont(double size, QFont::Weight weight) {
    return makeFont(chosenFamilies().sans, wholePixels(size), weight);
}

QFont monospacedSystemFont(double size, QFont::Weight weight) {
    return makeFont(chosenFamilies().mono, wholePixels(size), weight);
}

QFont monospacedDigitSystemFont(double size, QFont::Weight weight) {
    return makeFont(chosenFamilies().mono, wholePixels(size), weight);
}

ExactFont exactSystemFont(double size, QFont::Weight weight) {
    return makeExact(chosenFamilies().sans, size, weight);
}

ExactFont exactMonospacedSystemFont(double size, QFont::Weight weight) {
    return makeExact(chosenFamilies().mono, size, weight);
}

} // namespace marrowfin
