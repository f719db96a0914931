#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waveFile.h"

#include <cstdlib>

namespace {

using Globals = test::EngineTest;

TEST_F(Globals, may_use_the_engine_around_main) {
    test::setEnvironment("ALSOFT_DRIVERS", "null");
    writeFile("beep.wav", test::waveFile(std::vector<std::int16_t>(400, 9000)));
    for (const char *way : {"engine", "exit", "atexit", "late"}) {
        test::setEnvironment("SELVANE_TEST_WAY", way);
        test::CapturedErrors errors;
        EXPECT_EQ(std::system("\"" GLOBALS_PROGRAM "\""), 0) << way;
        const std::string text = errors.take();
        EXPECT_NE(text.find("last words"), std::string::npos) << way;
        EXPECT_EQ(text.find("device not closed"), std::string::npos) << "OpenAL's complaint";
        EXPECT_NE(logText().find("** Game engine stopped **"), std::string::npos) << way;
    }
}

} // namespace
