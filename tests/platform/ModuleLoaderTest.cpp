#include "platform/ModuleLoader.h"
#include "platform/module/PlayedModule.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <gtest/gtest.h>

using namespace marrowfin;
using namespace marrowfin::platform;
using marrowfin::testsupport::PlayedModule;

namespace {

const QString package = QStringLiteral("marrowfin-played");

Result<PlayedModule*> load(ModuleLoader& loader, const QString& library) {
    std::optional<Result<PlayedModule*>> answer;
    loader.load<PlayedModule>({library, package}).then([&](Result<PlayedModule*> result) {
        answer = result;
    });
    while (!answer)
        QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
    return *answer;
}

class ModuleLoaderTest : public testing::Test {
protected:
    ModuleLoader loader{QStringLiteral(MARROWFIN_TEST_MODULES)};
};

} // namespace

TEST_F(ModuleLoaderTest, aModuleIsLoadedAwayFromTheMainThread) {
    const Result<PlayedModule*> module = load(loader, QStringLiteral("played"));
    ASSERT_TRUE(module) << module.error().message.toStdString();
    EXPECT_EQ((*module)->answer, 42);
    EXPECT_NE((*module)->madeOn, QThread::currentThread());
    EXPECT_EQ(load(loader, QStringLiteral("played")), *module) << "it is loaded once";
}

TEST_F(ModuleLoaderTest, anAbsentModuleNamesItsPackage) {
    const Result<PlayedModule*> module = load(loader, QStringLiteral("absent"));
    ASSERT_FALSE(module);
    EXPECT_EQ(module.error().kind, Error::Kind::Unavailable);
    EXPECT_TRUE(module.error().message.contains(package));
}

TEST_F(ModuleLoaderTest, aDamagedModuleNamesItsPackageAndTellsTheLogWhy) {
    testing::internal::CaptureStderr();
    const Result<PlayedModule*> module = load(loader, QStringLiteral("damaged"));
    EXPECT_NE(testing::internal::GetCapturedStderr().find("[Marrowfin] "), std::string::npos);
    ASSERT_FALSE(module);
    EXPECT_EQ(module.error().kind, Error::Kind::Unavailable);
    EXPECT_TRUE(module.error().message.contains(package));
}

TEST(ModuleLoader, modulesOfThisProgramLieBesideItsLibraries) {
    EXPECT_TRUE(
        QFileInfo::exists(ModuleLoader::ownDirectory() + QStringLiteral("/libmarrowfin_platform.so")));
}
