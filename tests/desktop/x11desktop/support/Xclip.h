// The clipboard as another program sees it. Tests only.
#pragma once

#include "desktop/support/Waiting.h"

#include <QByteArray>
#include <QProcess>
#include <QStringList>
#include <gtest/gtest.h>

namespace marrowfin::testsupport {

struct ProgramResult {
    int exitCode = -1;
    QByteArray output;
};

// Runs the program while our own event loop goes on serving it.
inline ProgramResult runProgram(const QString& program, const QStringList& arguments,
                                const QByteArray& input = {}) {
    QProcess process;
    process.start(program, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!waitUntil([&process] { return process.state() == QProcess::NotRunning; }))
        process.kill();
    EXPECT_EQ(process.exitStatus(), QProcess::NormalExit) << program.toStdString();
    return {process.exitCode(), process.readAllStandardOutput()};
}

inline ProgramResult paste(const QString& type) {
    return runProgram(QStringLiteral("xclip"), {QStringLiteral("-selection"), QStringLiteral("clipboard"),
                                                QStringLiteral("-t"), type, QStringLiteral("-o")});
}

// Another program that owns the clipboard while it lives.
class OtherOwner {
public:
    OtherOwner(const QString& type, const QByteArray& contents) {
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        process.setStandardOutputFile(QProcess::nullDevice());
        // "-quiet" keeps it in the foreground and makes it say on standard error what it waits for.
        process.start(QStringLiteral("xclip"),
                      {QStringLiteral("-quiet"), QStringLiteral("-selection"), QStringLiteral("clipboard"),
                       QStringLiteral("-t"), type, QStringLiteral("-i")});
        process.write(contents);
        process.closeWriteChannel();
    }
    ~OtherOwner() {
        process.terminate();
        waitUntil([this] { return process.state() == QProcess::NotRunning; });
    }

private:
    QProcess process;
};

} // namespace marrowfin::testsupport
