#include "settings/SettingsStore.h"

#include "base/Shared.h"
#include "settings/Defaults.h"

namespace marrowfin::settings {

using namespace imaging;

namespace {

const QString saveFormatKey = QStringLiteral("saveFormat");
const QString jpegQualityKey = QStringLiteral("jpegQuality");
const QString postCaptureActionKey = QStringLiteral("postCaptureAction");
const QString panelAutoCloseKey = QStringLiteral("panelAutoClose");
const QString showCursorKey = QStringLiteral("showCursor");
const QString captureSystemAudioKey = QStringLiteral("captureSystemAudio");
const QString historyRetentionDaysKey = QStringLiteral("historyRetentionDays");

// The case that a stored string names; nothing when there is none or it names no case.
template <class Case>
std::optional<Case> stored(const Defaults& defaults, const QString& key,
                           std::optional<Case> (*named)(const QString&)) {
    const std::optional<QString> raw = defaults.stringForKey(key);
    return raw ? named(*raw) : std::nullopt;
}

} // namespace

SettingsStore& SettingsStore::shared() {
    return Shared<SettingsStore>::instance();
}

SettingsStore::SettingsStore() : SettingsStore(Defaults::shared()) {}

SettingsStore::SettingsStore(Defaults& from)
    : defaults(from), saveFormatValue(stored(from, saveFormatKey, imageFormat).value_or(ImageFormat::png)),
      jpegQualityValue(from.doubleForKey(jpegQualityKey).value_or(0.85)),
      postCaptureActionValue(stored(from, postCaptureActionKey, marrowfin::settings::postCaptureAction)
                                 .value_or(PostCaptureAction::openEditor)),
      panelAutoCloseValue(stored(from, panelAutoCloseKey, marrowfin::settings::panelAutoClose)
                              .value_or(PanelAutoClose::fifteenSeconds)),
      showCursorValue(from.boolForKey(showCursorKey).value_or(true)),
      captureSystemAudioValue(from.boolForKey(captureSystemAudioKey).value_or(true)),
      historyRetentionDaysValue(from.integerForKey(historyRetentionDaysKey).value_or(30)) {}

void SettingsStore::setSaveFormat(ImageFormat value) {
    saveFormatValue = value;
    Q_EMIT saveFormatChanged(value);
    defaults.setString(saveFormatKey, rawValue(saveFormatValue));
}

void SettingsStore::setJpegQuality(double value) {
    jpegQualityValue = value;
    Q_EMIT jpegQualityChanged(value);
    defaults.setDouble(jpegQualityKey, jpegQualityValue);
}

void SettingsStore::setPostCaptureAction(PostCaptureAction value) {
    postCaptureActionValue = value;
    Q_EMIT postCaptureActionChanged(value);
    defaults.setString(postCaptureActionKey, rawValue(postCaptureActionValue));
}

void SettingsStore::setPanelAutoClose(PanelAutoClose value) {
    panelAutoCloseValue = value;
    Q_EMIT panelAutoCloseChanged(value);
    defaults.setString(panelAutoCloseKey, rawValue(panelAutoCloseValue));
}

void SettingsStore::setShowCursor(bool value) {
    showCursorValue = value;
    Q_EMIT showCursorChanged(value);
    defaults.setBool(showCursorKey, showCursorValue);
}

void SettingsStore::setCaptureSystemAudio(bool value) {
    captureSystemAudioValue = value;
    Q_EMIT captureSystemAudioChanged(value);
    defaults.setBool(captureSystemAudioKey, captureSystemAudioValue);
}

void SettingsStore::setHistoryRetentionDays(qint64 value) {
    historyRetentionDaysValue = value;
    Q_EMIT historyRetentionDaysChanged(value);
    defaults.setInteger(historyRetentionDaysKey, historyRetentionDaysValue);
}

} // namespace marrowfin::settings
