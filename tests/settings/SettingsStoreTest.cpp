#include "settings/SettingsStore.h"

#include "settings/HintCounters.h"
#include "settings/SettingsFixture.h"

#include <functional>
#include <vector>

using namespace marrowfin;
using namespace settings;
using namespace imaging;

namespace {

class Settings : public test::SettingsFixture {
protected:
    // What a fresh start would see.
    SettingsStore& relaunched() {
        store.reset();
        defaults = std::make_unique<Defaults>(file());
        store = std::make_unique<SettingsStore>(*defaults);
        return *store;
    }

private:
    std::unique_ptr<Defaults> defaults;
    std::unique_ptr<SettingsStore> store;
};

void expectAllDefaults(const SettingsStore& store) {
    EXPECT_EQ(store.saveFormat(), ImageFormat::png);
    EXPECT_EQ(store.jpegQuality(), 0.85);
    EXPECT_EQ(store.postCaptureAction(), PostCaptureAction::openEditor);
    EXPECT_EQ(store.panelAutoClose(), PanelAutoClose::fifteenSeconds);
    EXPECT_TRUE(store.showCursor());
    EXPECT_TRUE(store.captureSystemAudio());
    EXPECT_EQ(store.historyRetentionDays(), 30);
}

// Everything that the store emits meanwhile, in order.
QStringList emissionsDuring(SettingsStore& store, const std::function<void()>& act) {
    QStringList seen;
    QObject watcher;
    const auto watch = [&](auto signal, auto show) {
        QObject::connect(&store, signal, &watcher, [&seen, show](auto value) { seen << show(value); });
    };
    const auto raw = [](auto value) { return rawValue(value); };
    const auto number = [](auto value) { return QString::number(value); };
    watch(&SettingsStore::saveFormatChanged, raw);
    watch(&SettingsStore::jpegQualityChanged, number);
    watch(&SettingsStore::postCaptureActionChanged, raw);
    watch(&SettingsStore::panelAutoCloseChanged, raw);
    watch(&SettingsStore::showCursorChanged, number);
    watch(&SettingsStore::captureSystemAudioChanged, number);
    watch(&SettingsStore::historyRetentionDaysChanged, number);
    act();
    return seen;
}

} // namespace

TEST_F(Settings, freshAccountHasDefaultsAndWritesNothing) {
    expectAllDefaults(relaunched());
    EXPECT_FALSE(QFileInfo::exists(folder()));
}

TEST_F(Settings, unknownStringsGiveTheDefault) {
    put(R"({"saveFormat":"TIFF","postCaptureAction":"Open editor","panelAutoClose":"20 seconds"})");
    expectAllDefaults(relaunched());
}

TEST_F(Settings, valuesOfOtherTypesGiveTheDefault) {
    put(R"({"saveFormat":7,"jpegQuality":"0.5","postCaptureAction":null,"panelAutoClose":["Never"],)"
        R"("showCursor":0,"captureSystemAudio":"false","historyRetentionDays":7.5})");
    expectAllDefaults(relaunched());
    put(R"({"saveFormat":{},"jpegQuality":true,"postCaptureAction":true,"panelAutoClose":5,)"
        R"("showCursor":{},"captureSystemAudio":0.0,"historyRetentionDays":1e300})");
    expectAllDefaults(relaunched());
    put(R"({"jpegQuality":null,"showCursor":null,"captureSystemAudio":[],"historyRetentionDays":"7"})");
    expectAllDefaults(relaunched());
}

TEST_F(Settings, storedValuesAreNotClamped) {
    put(R"({"jpegQuality":3,"historyRetentionDays":-12})");
    EXPECT_EQ(relaunched().jpegQuality(), 3.0);
    EXPECT_EQ(relaunched().historyRetentionDays(), -12);
}

TEST_F(Settings, storedFalseStaysFalseThoughTheDefaultIsTrue) {
    relaunched().setShowCursor(false);
    EXPECT_FALSE(relaunched().showCursor());
    EXPECT_TRUE(relaunched().captureSystemAudio());
}

TEST_F(Settings, everySetIsInTheFileAtOnce) {
    SettingsStore& store = relaunched();
    store.setSaveFormat(ImageFormat::jpeg);
    EXPECT_EQ(inFile(), (QJsonObject{{"saveFormat", "JPEG"}}));
    store.setJpegQuality(0.3);
    EXPECT_EQ(inFile().value("jpegQuality"), 0.3);
    store.setPostCaptureAction(PostCaptureAction::saveToFile);
    EXPECT_EQ(inFile().value("postCaptureAction"), "Save to File");
    store.setPanelAutoClose(PanelAutoClose::never);
    EXPECT_EQ(inFile().value("panelAutoClose"), "Never");
    store.setShowCursor(false);
    EXPECT_EQ(inFile().value("showCursor"), false);
    store.setCaptureSystemAudio(true);
    EXPECT_EQ(inFile().value("captureSystemAudio"), true);
    store.setHistoryRetentionDays(90);
    EXPECT_EQ(inFile().value("historyRetentionDays"), 90);

    const SettingsStore& later = relaunched();
    EXPECT_EQ(later.saveFormat(), ImageFormat::jpeg);
    EXPECT_EQ(later.jpegQuality(), 0.3);
    EXPECT_EQ(later.postCaptureAction(), PostCaptureAction::saveToFile);
    EXPECT_EQ(later.panelAutoClose(), PanelAutoClose::never);
    EXPECT_FALSE(later.showCursor());
    EXPECT_TRUE(later.captureSystemAudio());
    EXPECT_EQ(later.historyRetentionDays(), 90);
}

TEST_F(Settings, everySetPublishesAlsoAnEqualValue) {
    SettingsStore& store = relaunched();
    const QStringList seen = emissionsDuring(store, [&] {
        store.setSaveFormat(ImageFormat::png);
        store.setJpegQuality(0.85);
        store.setPostCaptureAction(PostCaptureAction::openEditor);
        store.setPanelAutoClose(PanelAutoClose::fifteenSeconds);
        store.setShowCursor(true);
        store.setCaptureSystemAudio(true);
        store.setHistoryRetentionDays(30);
        store.setHistoryRetentionDays(30);
    });
    EXPECT_EQ(seen, QStringList({"PNG", "0.85", "Open Editor", "15 seconds", "1", "1", "30", "30"}));
}

TEST_F(Settings, anEqualValueIsWrittenAgain) {
    SettingsStore& store = relaunched();
    store.setShowCursor(true);
    EXPECT_EQ(inFile(), (QJsonObject{{"showCursor", true}}));
    QFile::remove(file());
    store.setShowCursor(true);
    EXPECT_EQ(inFile(), (QJsonObject{{"showCursor", true}}));
}

TEST_F(Settings, publishesBeforeWritingAndWritesWhatTheFieldHoldsThen) {
    SettingsStore& store = relaunched();
    bool wasInFile = true;
    QObject::connect(&store, &SettingsStore::jpegQualityChanged, &store, [&](double value) {
        wasInFile = QFileInfo::exists(file());
        if (value == 0.2)
            store.setJpegQuality(0.4);
    });
    store.setJpegQuality(0.5);
    EXPECT_FALSE(wasInFile);
    store.setJpegQuality(0.2);
    EXPECT_EQ(store.jpegQuality(), 0.4);
    EXPECT_EQ(inFile().value("jpegQuality"), 0.4);
}

TEST_F(Settings, aBadStoredValueStaysUntilItsSettingChanges) {
    put(R"({"saveFormat":"TIFF","showCursor":"yes"})");
    SettingsStore& store = relaunched();
    store.setShowCursor(true);
    EXPECT_EQ(inFile(), (QJsonObject{{"saveFormat", "TIFF"}, {"showCursor", true}}));
    store.setSaveFormat(ImageFormat::png);
    EXPECT_EQ(inFile().value("saveFormat"), "PNG");
}

TEST_F(Settings, theSharedStoreUsesTheInstalledFile) {
    Defaults::useFile(file());
    put(R"({"panelAutoClose":"1 minute"})");
    EXPECT_EQ(SettingsStore::shared().panelAutoClose(), PanelAutoClose::oneMinute);
    SettingsStore::shared().setPanelAutoClose(PanelAutoClose::never);
    EXPECT_EQ(inFile().value("panelAutoClose"), "Never");
    EXPECT_EQ(&SettingsStore::shared(), &SettingsStore::shared());
}

TEST_F(Settings, withoutAFileTheValuesLastForTheRun) {
    SettingsStore::shared().setShowCursor(false);
    EXPECT_FALSE(SettingsStore::shared().showCursor());
    EXPECT_EQ(Defaults::shared().boolForKey("showCursor"), false);
    SharedObjects::destroyAll();
    EXPECT_TRUE(SettingsStore::shared().showCursor());
}

TEST_F(Settings, titlesAndOrderOfTheEnumerations) {
    QStringList actions;
    for (const PostCaptureAction action : allPostCaptureActions) {
        actions << rawValue(action);
        EXPECT_EQ(postCaptureAction(rawValue(action)), action);
    }
    EXPECT_EQ(actions, QStringList({"Open Editor", "Copy to Clipboard", "Save to File"}));
    QStringList intervals;
    std::vector<std::optional<int>> lengths;
    for (const PanelAutoClose interval : allPanelAutoCloses) {
        intervals << rawValue(interval);
        lengths.push_back(seconds(interval));
        EXPECT_EQ(panelAutoClose(rawValue(interval)), interval);
    }
    EXPECT_EQ(intervals,
              QStringList({"5 seconds", "10 seconds", "15 seconds", "30 seconds", "1 minute", "Never"}));
    EXPECT_EQ(lengths, (std::vector<std::optional<int>>{5, 10, 15, 30, 60, std::nullopt}));
    EXPECT_EQ(postCaptureAction("open editor"), std::nullopt);
    EXPECT_EQ(panelAutoClose(""), std::nullopt);
}

TEST_F(Settings, hintCountersCountAndLast) {
    Defaults defaults(file());
    HintCounters counters(defaults);
    EXPECT_EQ(counters.panelCompletedDragOuts(), 0);
    EXPECT_EQ(counters.panelDragHintExposures(), 0);
    EXPECT_FALSE(QFileInfo::exists(folder()));
    counters.countCompletedDragOut();
    counters.countDragHintExposure();
    counters.countDragHintExposure();
    EXPECT_EQ(inFile(), (QJsonObject{{"panelCompletedDragOuts", 1}, {"panelDragHintExposures", 2}}));

    Defaults later(file());
    EXPECT_EQ(HintCounters(later).panelCompletedDragOuts(), 1);
    EXPECT_EQ(HintCounters(later).panelDragHintExposures(), 2);
}

TEST_F(Settings, hintCountersOfTwoProcessesAddUp) {
    Defaults one(file());
    Defaults other(file());
    HintCounters(one).countDragHintExposure();
    HintCounters(other).countDragHintExposure();
    HintCounters(one).countDragHintExposure();
    EXPECT_EQ(inFile().value("panelDragHintExposures"), 3);
    EXPECT_EQ(HintCounters(one).panelDragHintExposures(), 3);
}

TEST_F(Settings, aHintCounterThatIsNoNumberCountsFromZero) {
    put(R"({"panelCompletedDragOuts":"many"})");
    Defaults defaults(file());
    EXPECT_EQ(HintCounters(defaults).panelCompletedDragOuts(), 0);
    HintCounters(defaults).countCompletedDragOut();
    EXPECT_EQ(HintCounters(defaults).panelCompletedDragOuts(), 1);
}
