// The user's seven preferences, mirrored from the defaults: read once when the store is made, each written
// through on every set, also when the value is the same. Nothing is clamped. Main thread only.
//
// showCursor, captureSystemAudio and historyRetentionDays are recorded preferences and nothing else: captures
// and recordings have fixed values of their own, and the history is limited by number alone.
#pragma once

#include "imaging/ImageFormat.h"
#include "settings/PanelAutoClose.h"
#include "settings/PostCaptureAction.h"

#include <QObject>

namespace marrowfin::settings {

class Defaults;

class SettingsStore : public QObject {
    Q_OBJECT

public:
    static SettingsStore& shared();
    // Over Defaults::shared().
    SettingsStore();
    explicit SettingsStore(Defaults& defaults);

    imaging::ImageFormat saveFormat() const { return saveFormatValue; }
    double jpegQuality() const {
        return jpegQualityValue;
    } // 0.1 to 1.0 from the form; a stored one is taken as it is
    PostCaptureAction postCaptureAction() const { return postCaptureActionValue; }
    PanelAutoClose panelAutoClose() const { return panelAutoCloseValue; }
    bool showCursor() const { return showCursorValue; }
    bool captureSystemAudio() const { return captureSystemAudioValue; }
    qint64 historyRetentionDays() const { return historyRetentionDaysValue; }

    // Each publishes, then writes the field's value as it is by then.
    void setSaveFormat(imaging::ImageFormat value);
    void setJpegQuality(double value);
    void setPostCaptureAction(PostCaptureAction value);
    void setPanelAutoClose(PanelAutoClose value);
    void setShowCursor(bool value);
    void setCaptureSystemAudio(bool value);
    void setHistoryRetentionDays(qint64 value);

Q_SIGNALS:
    // On every set, also for an equal value.
    void saveFormatChanged(imaging::ImageFormat value);
    void jpegQualityChanged(double value);
    void postCaptureActionChanged(marrowfin::settings::PostCaptureAction value);
    void panelAutoCloseChanged(marrowfin::settings::PanelAutoClose value);
    void showCursorChanged(bool value);
    void captureSystemAudioChanged(bool value);
    void historyRetentionDaysChanged(qint64 value);

private:
    Defaults& defaults;
    imaging::ImageFormat saveFormatValue;
    double jpegQualityValue;
    PostCaptureAction postCaptureActionValue;
    PanelAutoClose panelAutoCloseValue;
    bool showCursorValue;
    bool captureSystemAudioValue;
    qint64 historyRetentionDaysValue;
};

} // namespace marrowfin::settings
