#include "support/Golden.h"

#include <QDir>
#include <QFileInfo>
#include <algorithm>
#include <cstdlib>
#include <ostream>

namespace marrowfin::test {

namespace {

int difference(QRgb a, QRgb b) {
    return std::max({std::abs(qRed(a) - qRed(b)), std::abs(qGreen(a) - qGreen(b)),
                     std::abs(qBlue(a) - qBlue(b)), std::abs(qAlpha(a) - qAlpha(b))});
}

struct Comparison {
    int largest = 0;
    qint64 differing = 0;
    QImage picture; // black where equal, red as far as it differs
};

Comparison compare(const QImage& expected, const QImage& actual) {
    Comparison result;
    result.picture = QImage(actual.size(), QImage::Format_RGB32);
    for (int y = 0; y < actual.height(); ++y) {
        for (int x = 0; x < actual.width(); ++x) {
            const int away = difference(expected.pixel(x, y), actual.pixel(x, y));
            result.largest = std::max(result.largest, away);
            result.differing += away > 0;
            result.picture.setPixel(x, y, away > 0 ? qRgb(128 + away / 2, 0, 0) : qRgb(0, 0, 0));
        }
    }
    return result;
}

testing::AssertionResult reportWithPictures(const QString& name, const QImage& actual, const QImage& diff,
                                            const QString& what) {
    const QDir out(QStringLiteral(MARROWFIN_OUT_DIR "/golden"));
    out.mkpath(QStringLiteral("."));
    actual.save(out.filePath(name + QStringLiteral(".actual.png")));
    if (!diff.isNull())
        diff.save(out.filePath(name + QStringLiteral(".diff.png")));
    return testing::AssertionFailure() << name.toStdString() << ": " << what.toStdString()
                                       << "; see out/golden/, `./dev golden` shows and accepts it";
}

} // namespace

testing::AssertionResult matchesGolden(const char* sourceDir, const QString& name, const QImage& actual,
                                       GoldenTolerance tolerance) {
    const QString path = QStringLiteral("%1/golden/%2.png").arg(QString::fromUtf8(sourceDir), name);
    const QImage picture = actual.convertToFormat(QImage::Format_ARGB32);
    if (qEnvironmentVariableIntValue("MARROWFIN_ACCEPT_GOLDEN") == 1) {
        QDir().mkpath(QFileInfo(path).path());
        return picture.save(path) ? testing::AssertionSuccess()
                                  : testing::AssertionFailure() << "can't write " << path.toStdString();
    }
    const QImage expected = QImage(path).convertToFormat(QImage::Format_ARGB32);
    if (expected.isNull())
        return reportWithPictures(name, picture, {}, QStringLiteral("there is no golden picture yet"));
    if (expected.size() != picture.size())
        return reportWithPictures(name, picture, {},
                                  QStringLiteral("%1x%2 pixels instead of %3x%4")
                                      .arg(picture.width())
                                      .arg(picture.height())
                                      .arg(expected.width())
                                      .arg(expected.height()));
    const Comparison result = compare(expected, picture);
    const double share = static_cast<double>(result.differing) / (picture.width() * picture.height());
    if (result.largest == 0 || (result.largest <= tolerance.perChannel && share <= tolerance.shareOfPixels))
        return testing::AssertionSuccess();
    return reportWithPictures(
        name, picture, result.picture,
        QStringLiteral("%1 pixels differ, by up to %2 of 255").arg(result.differing).arg(result.largest));
}

} // namespace marrowfin::test
