#include "base/SystemFonts.h"

#include "base/Log.h"

#include <QFontDatabase>
#include <QFontInfo>
#include <cmath>
#include <optional>

namespace marrowfin {

namespace {

struct Families {
    QString sans;
    QString mono;
};
std::optional<Families> families;

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

QFont makeFont(const QString& family, double size, QFont::Weight weight) {
    QFont font(family);
    // A whole pixel size is set as pixels. QFont knows no fractional pixel size, and its point size goes
    // through the screen's DPI, which the program pins to 96 at start; 72 points are 96 pixels then.
    if (size == std::floor(size))
        font.setPixelSize(static_cast<int>(size));
    else
        font.setPointSizeF(size * 72.0 / 96.0);
    font.setWeight(weight);
    font.setHintingPreference(QFont::PreferNoHinting);
    font.setStyleStrategy(QFont::PreferAntialias);
    return font;
}

} // namespace

QFont systemFont(double size, QFont::Weight weight) {
    return makeFont(chosenFamilies().sans, size, weight);
}

QFont monospacedSystemFont(double size, QFont::Weight weight) {
    return makeFont(chosenFamilies().mono, size, weight);
}

QFont monospacedDigitSystemFont(double size, QFont::Weight weight) {
    return makeFont(chosenFamilies().mono, size, weight);
}

} // namespace marrowfin
