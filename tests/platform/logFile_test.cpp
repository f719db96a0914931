#include "selvane/platform/logFile.h"

#include "support/EngineTest.h"

#include <filesystem>
#include <memory>

namespace sv::platform {
namespace {

struct Closer {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Closer>;

/// False for Windows programs: under Wine these files exist, but are another program's.
bool hasDeviceFiles() {
    return std::filesystem::path::preferred_separator == '/';
}

/// Each opening counts as another program.
class SharedLog : public test::EngineTest {
  protected:
    /// Opens the log and writes a line to it. Whether others have it open too.
    bool open(File &file, const char *line) {
        const LogFile opened = openLog(name);
        EXPECT_NE(opened.p_file, nullptr);
        file.reset(opened.p_file);
        write(file, line);
        return opened.is_shared;
    }

    static void write(const File &file, const char *line) {
        std::fputs(line, file.get());
        std::fflush(file.get());
    }

    std::string name = "selvane.log";
    File files[3];
};

TEST_F(SharedLog, is_emptied_only_by_its_sole_writer) {
    writeFile(name, "of an earlier game\n");
    EXPECT_FALSE(open(files[0], "first\n"));
    EXPECT_TRUE(open(files[1], "second\n"));
    write(files[0], "first again\n");
    files[0].reset();
    EXPECT_TRUE(open(files[2], "third\n")) << "the second still writes";
    EXPECT_EQ(logText(), "first\nsecond\nfirst again\nthird\n");
    files[1].reset();
    files[2].reset();
    EXPECT_FALSE(open(files[0], "alone\n"));
    EXPECT_EQ(logText(), "alone\n");
}

TEST_F(SharedLog, is_shared_when_new_too) {
    files[0].reset(openNewLog(name));
    ASSERT_NE(files[0], nullptr);
    EXPECT_EQ(openNewLog(name), nullptr) << "its name is taken";
    EXPECT_TRUE(open(files[1], "second\n"));
}

TEST_F(SharedLog, keeps_the_lines_of_standard_error) {
    if (!hasDeviceFiles())
        GTEST_SKIP() << "no /dev/stderr here";
    test::CapturedErrors errors;
    std::fputs("first\n", stderr);
    name = "/dev/stderr";
    EXPECT_FALSE(open(files[0], "second\n"));
    std::fputs("third\n", stderr);
    write(files[0], "fourth\n");
    EXPECT_EQ(errors.take(), "first\nsecond\nthird\nfourth\n");
}

TEST_F(SharedLog, is_never_shared_when_a_device) {
    if (!hasDeviceFiles())
        GTEST_SKIP() << "no /dev/null here";
    name = "/dev/null";
    EXPECT_FALSE(open(files[0], "first\n"));
    EXPECT_FALSE(open(files[1], "second\n"));
    EXPECT_EQ(openLog("missing/x.log").p_file, nullptr);
}

} // namespace
} // namespace sv::platform
