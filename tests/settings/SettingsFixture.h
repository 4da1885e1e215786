// A settings file of its own for each test, in a folder that doesn't exist before.
#pragma once

#include "base/Shared.h"
#include "settings/Defaults.h"
#include "settings/SettingsStore.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonDocument>
#include <QJsonObject>
#include <QTemporaryDir>
#include <gtest/gtest.h>
#include <sys/stat.h>

namespace marrowfin::test {

class SettingsFixture : public testing::Test {
protected:
    // The world may be read by others, so that a test that becomes another user still finds its way.
    void SetUp() override { ::chmod(QFile::encodeName(root.path()).constData(), 0755); }
    void TearDown() override {
        SharedObjects::destroyAll();
        settings::Defaults::useFile({});
    }

    QString folder() const { return root.filePath(QStringLiteral("Marrowfin")); }
    QString file() const { return folder() + QStringLiteral("/defaults.json"); }
    QString badFile() const { return file() + QStringLiteral(".bad"); }

    void put(const QByteArray& content) const {
        QDir().mkpath(folder());
        QFile at(file());
        ASSERT_TRUE(at.open(QIODevice::WriteOnly));
        at.write(content);
    }
    static QByteArray contentOf(const QString& path) {
        QFile at(path);
        return at.open(QIODevice::ReadOnly) ? at.readAll() : QByteArray();
    }
    QJsonObject inFile() const { return QJsonDocument::fromJson(contentOf(file())).object(); }
    QStringList names() const {
        return QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::System |
                                        QDir::NoDotAndDotDot);
    }
    static int modeOf(const QString& path) {
        struct stat found {};
        return ::stat(QFile::encodeName(path).constData(), &found) == 0
                   ? static_cast<int>(found.st_mode & 0777)
                   : -1;
    }

    QTemporaryDir root;
};

} // namespace marrowfin::test
