// What the program remembers between runs: typed values under names, in one JSON file that several processes
// may share. Read once; every set goes to the file at once, and on to the disk on a queue. A file that can't
// be used never stops anything: values of this run are then kept in memory and one line in the log says why.
// Main thread only.
#pragma once

#include "base/Result.h"
#include "base/SerialQueue.h"

#include <QJsonObject>
#include <QString>
#include <chrono>
#include <functional>
#include <optional>

namespace marrowfin::settings {

class Defaults {
public:
    // The one instance, over the file that useFile() named; in memory alone without one.
    static Defaults& shared();
    // Called once at start, before the first use of shared(). Tests call it with their own and reset shared
    // objects.
    static void useFile(const QString& path);

    Defaults();
    // Nothing is written and no folder is made until the first set. An empty path: memory alone.
    explicit Defaults(QString path);

    bool holds(const QString& key) const;
    // Each gives nothing for a missing key and for a value of another type.
    std::optional<QString> stringForKey(const QString& key) const;
    std::optional<double> doubleForKey(const QString& key) const;  // any number
    std::optional<bool> boolForKey(const QString& key) const;      // true and false alone
    std::optional<qint64> integerForKey(const QString& key) const; // a number without a fraction

    void setString(const QString& key, const QString& value);
    void setDouble(const QString& key, double value);
    void setBool(const QString& key, bool value);
    void setInteger(const QString& key, qint64 value);
    // Adds to the integer in the file, so that two processes that count don't lose each other's counts.
    // The sum stays within what an integer holds.
    void addInteger(const QString& key, qint64 amount);

    // Tries once more to write what no set could, then waits until the disk has the file, no longer than
    // this; false when the time was up.
    bool finish(std::chrono::milliseconds patience);
    // The shared one's; nothing to do when no defaults were used yet.
    static bool finishSets(std::chrono::milliseconds patience);

private:
    using Change = std::function<QJsonValue(const QJsonValue& now)>;
    void change(const QString& key, const Change& change);
    Result<void> changeFile(const std::function<void(QJsonObject&)>& change,
                            std::chrono::milliseconds patience);
    QJsonValue value(const QString& key) const;

    QString path;
    QJsonObject stored;  // as last seen in the file
    QJsonObject unsaved; // set in this run, but the file could not be written
    QString lastComplaint;
    SerialQueue flushing{QStringLiteral("io.tessaly.marrowfin.settings"),
                         SerialQueue::QualityOfService::Default};
};

} // namespace marrowfin::settings
