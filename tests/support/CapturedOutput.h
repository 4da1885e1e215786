// Collects what the program prints on standard output while it lives. Tests only.
#pragma once

#include <QString>
#include <gtest/gtest.h>

namespace marrowfin::testsupport {

class CapturedOutput {
public:
    CapturedOutput() { testing::internal::CaptureStdout(); }
    ~CapturedOutput() {
        if (!taken)
            testing::internal::GetCapturedStdout();
    }
    // Once.
    QString text() {
        taken = true;
        return QString::fromStdString(testing::internal::GetCapturedStdout());
    }

private:
    bool taken = false;
};

} // namespace marrowfin::testsupport
