// A test on the session's own desktop as the program finds it: its services are installed, and another
// program stands beside it.
#pragma once

#include "base/Shared.h"
#include "desktop/x11surfaces/Desk.h"
#include "session/Session.h"

#include <gtest/gtest.h>

namespace marrowfin {

class SessionTest : public testing::Test {
protected:
    void SetUp() override {
        auto opened = session::Session::open();
        ASSERT_TRUE(opened) << qPrintable(opened.error().message);
        session = std::move(*opened);
        platform::install(session->services());
    }
    void TearDown() override {
        if (!session)
            return;
        SharedObjects::destroyAll();
        platform::uninstall();
    }

    std::unique_ptr<session::Session> session;
    desk::OtherProgram other;
};

} // namespace marrowfin
