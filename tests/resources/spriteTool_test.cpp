// selvane-sprite, as a person or an editor runs it.

#include "support/EngineTest.h"

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <tuple>

namespace {

struct SpriteTool : test::EngineTest {
    SpriteTool() {
        writeFile("good.txt", "2\n3\n1\n4\nred\n<->\n<=>\n");
        writeFile("bad.txt", "2\n3\n1\n4\nred\n<->\n<=\n");
        writeFile("none.txt", "ship\n");
    }

    /// The exit status of the tool; `said` is what it writes, errors first.
    int run(const std::string &arguments) {
        const int status =
            std::system(("'" SPRITE_TOOL "' " + arguments + " > out.txt 2> errors.txt").c_str());
        said = textOf("errors.txt") + textOf("out.txt");
        return WEXITSTATUS(status);
    }

    static std::string textOf(const std::string &file) {
        std::ifstream stream(file);
        return {std::istreambuf_iterator<char>(stream), {}};
    }

    std::string said;
};

const std::string robust = "<HEADER>\nframes 2\nwidth 3\nheight 1\ncolor red\nslowdown 4\n"
                           "</HEADER>\n<BODY>\n<->\nend\n<=>\nend\n</BODY>\n"
                           "<FOOTER>\nversion 1\n</FOOTER>\n";

} // namespace

TEST_F(SpriteTool, answers_as_a_compiler_does) {
    const std::string bad = "bad.txt:7: Width is 2, expected 3.\n";
    writeFile("odd.txt", "1\n3\n1\n1\nred\n\033m\x9b\n");
    const std::tuple<const char *, int, std::string> cases[] = {
        {"check good.txt", 0, ""},
        {"check bad.txt good.txt none.txt gone.txt", 1,
         bad + "none.txt:1: Unknown sprite file format.\n"
               "gone.txt:1: Cannot open file 'gone.txt'.\n"},
        {"show good.txt", 0, "<->\n\n<=>\n"},
        {"show odd.txt", 0, "?m?\n"}, // A terminal would take it for a command.
        {"show --once bad.txt", 1, bad},
        {"convert good.txt", 0, robust},
        {"convert bad.txt", 1, bad},
        {"convert good.txt /dev/full", 1, "selvane-sprite: '/dev/full' cannot be written\n"},
        {"new 2 1 1000000000", 1,
         "selvane-sprite: no sprite is 2 wide and 1 high and has 1000000000 frames\n"},
    };
    for (const auto &[arguments, status, answer] : cases) {
        EXPECT_EQ(run(arguments), status) << arguments;
        EXPECT_EQ(said, answer) << arguments;
    }
    for (const char *arguments : {"", "check", "show a b", "convert", "new 1 2", "draw"})
        EXPECT_EQ(run(arguments), 2) << arguments;
}

TEST_F(SpriteTool, new_sprites_are_valid_and_empty) {
    EXPECT_EQ(run("new 3 2 2"), 0);
    writeFile("new.txt", said);
    EXPECT_EQ(run("check new.txt"), 0);
    EXPECT_EQ(run("show new.txt"), 0);
    EXPECT_EQ(said, "...\n...\n\n...\n...\n");
}

TEST_F(SpriteTool, formats_convert_there_and_back) {
    for (const char *art : {TREE "/sprites", TREE "/examples/sprites"})
        for (const auto &entry : std::filesystem::directory_iterator(art)) {
            SCOPED_TRACE(entry.path());
            const std::string file = "'" + entry.path().string() + "'";
            EXPECT_EQ(run("show " + file), 0);
            const std::string shown = said;
            EXPECT_EQ(run("convert " + file + " once.txt"), 0);
            EXPECT_EQ(run("convert once.txt twice.txt"), 0);
            EXPECT_EQ(run("convert twice.txt thrice.txt"), 0);
            EXPECT_EQ(textOf("thrice.txt"), textOf("once.txt"));
            EXPECT_EQ(run("show twice.txt"), 0);
            EXPECT_EQ(said, shown);
        }
    run("convert good.txt robust.txt");
    EXPECT_EQ(run("convert robust.txt"), 0);
    EXPECT_EQ(said, textOf("good.txt"));
    const std::string ends = "\nend\n</BODY>\n<COLORS>\n.gr\nend\n</COLORS>\n<FOOTER>\n"
                             "version 1\n</FOOTER>\n";
    writeFile("art.txt", "<HEADER>\nframes 1\nwidth 3\nheight 1\ncolor blue\n</HEADER>\n<BODY>\n"
                         "\u2588ab" +
                             ends);
    writeFile("sv-config.txt", "utf8:true,\n");
    EXPECT_EQ(run("convert art.txt"), 0);
    EXPECT_EQ(said, "art.txt: warning: the simple format has no colors of cells\n"
                    "1\n3\n1\n0\nblue\n\u2588ab\n");
    writeFile("end.txt", "1\n7\n1\n0\nred\n</BODY>\n");
    EXPECT_EQ(run("convert end.txt"), 1);
    EXPECT_EQ(said, "selvane-sprite: end.txt: the other format cannot hold this sprite\n");
}

TEST_F(SpriteTool, terminals_play_it) {
    // The pipe is a keyboard that nobody touches.
    std::system("sleep 3 | script -qec \"'" SPRITE_TOOL "' show --once good.txt\" /dev/null > "
                "played.txt");
    EXPECT_EQ(textOf("played.txt"), "\x1b[?25l\x1b[38;2;255;0;0;40m<->\x1b[0m\r\n"
                                    "\x1b[1A\x1b[38;2;255;0;0;40m<=>\x1b[0m\r\n\x1b[?25h");
}
