#include "support/EngineTest.h"
#include "support/environment.h"

#include <cstdlib>

namespace {

using Globals = test::EngineTest;

TEST_F(Globals, may_use_the_engine_around_main) {
    for (const char *way : {"engine", "exit", "atexit", "late"}) {
        test::setEnvironment("SELVANE_TEST_WAY", way);
        test::CapturedErrors errors;
        EXPECT_EQ(std::system("\"" GLOBALS_PROGRAM "\""), 0) << way;
        EXPECT_NE(errors.take().find("last words"), std::string::npos) << way;
        EXPECT_NE(logText().find("** Game engine stopped **"), std::string::npos) << way;
    }
}

} // namespace
