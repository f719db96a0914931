#include "selvane/platform/logFile.h"

#include "support/EngineTest.h"

#include <filesystem>

namespace sv::platform {
namespace {

/// Each opening counts as another program.
class SharedLog : public test::EngineTest {
  protected:
    /// Opens the log and writes a line to it. Whether others have it open too.
    bool open(std::FILE *&file, const char *line) {
        const LogFile opened = openLog(name);
        file = opened.p_file;
        EXPECT_NE(file, nullptr);
        write(file, line);
        return opened.is_shared;
    }

    static void write(std::FILE *file, const char *line) {
        std::fputs(line, file);
        std::fflush(file);
    }

    std::string name = "selvane.log";
    std::FILE *files[3] = {};
};

TEST_F(SharedLog, is_emptied_only_by_its_sole_writer) {
    writeFile(name, "of an earlier game\n");
    EXPECT_FALSE(open(files[0], "first\n"));
    EXPECT_TRUE(open(files[1], "second\n"));
    write(files[0], "first again\n");
    std::fclose(files[0]);
    EXPECT_TRUE(open(files[2], "third\n")) << "the second still writes";
    EXPECT_EQ(logText(), "first\nsecond\nfirst again\nthird\n");
    std::fclose(files[1]);
    std::fclose(files[2]);
    EXPECT_FALSE(open(files[0], "alone\n"));
    EXPECT_EQ(logText(), "alone\n");
}

TEST_F(SharedLog, is_shared_when_new_too) {
    files[0] = openNewLog(name);
    ASSERT_NE(files[0], nullptr);
    EXPECT_EQ(openNewLog(name), nullptr) << "its name is taken";
    EXPECT_TRUE(open(files[1], "second\n"));
}

TEST_F(SharedLog, is_never_shared_when_a_device) {
    // Under Wine these files exist, but are another program's.
    if (std::filesystem::path::preferred_separator != '/')
        GTEST_SKIP() << "no /dev here";
    name = "/dev/null";
    EXPECT_FALSE(open(files[0], "first\n"));
    EXPECT_FALSE(open(files[1], "second\n"));

    test::CapturedErrors errors;
    std::fputs("first\n", stderr);
    name = "/dev/stderr";
    EXPECT_FALSE(open(files[2], "second\n"));
    std::fputs("third\n", stderr);
    write(files[2], "fourth\n");
    EXPECT_EQ(errors.take(), "first\nsecond\nthird\nfourth\n");
}

} // namespace
} // namespace sv::platform
