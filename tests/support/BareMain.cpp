// main() of the tests that make and destroy the application themselves, on the offscreen plugin.
#include "support/OffscreenWorld.h"

#include <gtest/gtest.h>

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    marrowfin::test::chooseOffscreenWorld();
    return RUN_ALL_TESTS();
}
