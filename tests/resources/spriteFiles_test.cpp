#include "core/LogManager.h"
#include "resources/ResourceManager.h"
#include "support/EngineTest.h"

#include <stdexcept>

namespace {

using test::EngineTest;
using Log = std::vector<std::string>;

class SpriteFiles : public EngineTest {
  protected:
    /// Loads `text` as a file and returns the answer; said() is what the log says about it.
    int load(const std::string &text, int log_level = 0) {
        auto &resources = sv::ResourceManager::getInstance();
        if (!resources.isStarted()) {
            resources.startUp();
            startLog();
        }
        sv::LogManager::getInstance().setLogLevel(log_level);
        writeFile("spr.txt", text);
        before = logLines().size();
        const int result = resources.loadSprite("spr.txt", "it");
        const Log all = logLines();
        lines.assign(all.begin() + static_cast<std::ptrdiff_t>(before), all.end());
        return result;
    }

    /// The lines that the last load wrote, those that every load writes left out.
    Log said() const {
        Log rest;
        for (const std::string &line : lines)
            if (line != "RM::loadSprite(): Loading sprite 'spr.txt'." &&
                line != "RM::loadSprite(): Sprite 'it' NOT loaded.")
                rest.push_back(line);
        return rest;
    }

    Log lines;

  private:
    std::size_t before = 0;
};

struct Case {
    const char *what;
    std::string text;
    Log log;
};

const std::string valid_colors = "  Valid colors are: black, red, green, yellow,";
const std::string end_of_file = "getLine(): Error! Unexpected end of file.";
const std::string simple = "RM::loadSimpleSprite(): ";
const std::string robust = "RM::loadRobustSprite(): ";

std::string robustFile(const std::string &header, const std::string &body,
                       const std::string &footer = "version 1\n") {
    return "<HEADER>\n" + header + "</HEADER>\n<BODY>\n" + body + "</BODY>\n<FOOTER>\n" + footer +
           "</FOOTER>\n";
}

const std::string two_by_one = "frames 1\nwidth 2\nheight 1\n";

} // namespace

TEST_F(SpriteFiles, good_files_load_without_a_complaint) {
    const Case cases[] = {
        {"simple", "2\n3\n2\n4\ncyan\nabc\ndef\nghi\njkl\n", {}},
        {"simple with CR LF", "1\r\n2\r\n1\r\n0\r\nred\r\nab\r\n", {}},
        {"simple without a last newline", "1\n2\n1\n0\nred\nab", {}},
        {"simple that ends in a lone CR", "1\n2\n1\n0\nred\nab\n\r", {}},
        {"numbers with text around", "  1 frame\n2 wide\n +1\n0x\nred\nab\n", {}},
        {"robust", robustFile(two_by_one + "color red\n", "ab\nend\n"), {}},
        {"robust with CR LF",
         "<HEADER>\r\nframes 1\r\nwidth 1\r\nheight 1\r\n</HEADER>\r\n<BODY>\r\n"
         "a\r\nend\r\n</BODY>\r\n<FOOTER>\r\nversion 1\r\n</FOOTER>\r\n",
         {}},
        {"any separator",
         robustFile("frames:1\nwidth=2\nheight\t1\n", "ab\nend\n", "version:x\n"),
         {}},
        {"a row that reads 'end'", robustFile("frames 1\nwidth 3\nheight 1\n", "end\nend\n"), {}},
        {"something behind the footer", robustFile(two_by_one, "ab\nend\n") + "\nmore\n", {}},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(load(c.text), 0) << c.what;
        EXPECT_EQ(said(), Log{}) << c.what;
    }
}

TEST_F(SpriteFiles, a_bad_simple_file_is_refused_with_the_line_at_fault) {
    const Case cases[] = {
        {"empty",
         "",
         {end_of_file, "RM::loadSprite(): Error! Unknown sprite file format.",
          "RM::loadSprite(): First line is ''."}},
        {"no frames",
         "0\n1\n",
         {"RM::loadSprite(): Error! Unknown sprite file format.",
          "RM::loadSprite(): First line is '0'."}},
        {"a blank behind the tag",
         "<HEADER> \n",
         {"RM::loadSprite(): Error! Unknown sprite file format.",
          "RM::loadSprite(): First line is '<HEADER> '."}},
        {"no width",
         "1\n",
         {end_of_file, simple + "Error! Unexpected end of file.", "\tMissing width (an integer)."}},
        {"no height",
         "1\n1\n",
         {end_of_file, simple + "Error! Unexpected end of file.",
          "\tMissing height (an integer)."}},
        {"no slowdown",
         "1\n1\n1\n",
         {end_of_file, simple + "Error! Unexpected end of file.",
          "\tMissing slowdown (an integer)."}},
        {"no color",
         "1\n1\n1\n1\n",
         {end_of_file, simple + "Error! Unexpected end of file.", "\tMissing color (a string)."}},
        {"width 0", "1\n0 wide\n", {simple + "Error line 2! Width is '0 wide'."}},
        {"height missing on its line", "1\n1\n\n", {simple + "Error line 3! Height is ''."}},
        {"slowdown below 0", "1\n1\n1\n-1\n", {simple + "Error line 4! Slowdown is '-1'."}},
        {"a blank behind the color",
         "1\n1\n1\n0\nred \n",
         {simple + "Error line 5! Unrecognized color 'red '.", valid_colors,
          "                    blue, magenta, cyan or white."}},
        {"a row too short",
         "1\n3\n2\n0\nred\nabc\nab\n",
         {simple + "Error line 7!", "\tLine  7: 'ab'", "\tWidth is 2, expected 3."}},
        {"a row too long",
         "1\n1\n1\n0\nred\nab\n",
         {simple + "Error line 6!", "\tLine  6: 'ab'", "\tWidth is 2, expected 1."}},
        {"an empty row",
         "2\n1\n2\n0\nred\na\nb\n\nd\n",
         {simple + "Error! Unexpected end of file.", "\tReading frame 2 of 2, row 1 of 2."}},
        {"rows missing",
         "2\n1\n2\n0\nred\na\nb\nc\n",
         {end_of_file, simple + "Error! Unexpected end of file.",
          "\tReading frame 2 of 2, row 2 of 2."}},
        {"an empty line behind the rows",
         "1\n1\n1\n0\nred\na\n\n",
         {simple + "Error line 7!", "\tExtra file data: ''"}},
        {"a row too many",
         "1\n1\n1\n0\nred\na\nb\r\n",
         {simple + "Error line 7!", "\tExtra file data: 'b'"}},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(load(c.text), -1) << c.what;
        EXPECT_EQ(said(), c.log) << c.what;
        EXPECT_EQ(lines.back(), "RM::loadSprite(): Sprite 'it' NOT loaded.") << c.what;
    }
    EXPECT_EQ(sv::ResourceManager::getInstance().getSprite("it"), nullptr);
}

TEST_F(SpriteFiles, a_bad_robust_file_is_refused_with_the_reason) {
    const std::string no_more = ": No more frame data before 'end'.";
    const Case cases[] = {
        {"a blank line in the header",
         "<HEADER>\nframes 1\n\nwidth 1\n",
         {"readData(): Error! Never encountered '</HEADER>'."}},
        {"the header does not end",
         "<HEADER>\nframes 1\n",
         {end_of_file, "readData(): Error! Never encountered '</HEADER>'."}},
        {"an empty header", "<HEADER>\n</HEADER>\n<BODY>\n", {}},
        {"no frames",
         robustFile("width 1\nheight 1\n", "a\nend\n"),
         {robust + "Error! Missing 'frames' in header."}},
        {"width -1",
         robustFile("frames 1\nwidth -1\nheight 1\n", "a\nend\n"),
         {robust + "Error! Missing 'width' in header."}},
        {"no height",
         robustFile("frames 1\nwidth 1\n", "a\nend\n"),
         {robust + "Error! Missing 'height' in header."}},
        {"a line before the body",
         "<HEADER>\n" + two_by_one + "</HEADER>\n\n<BODY>\n",
         {"readData(): Error line 6! Expected '<BODY>', have ''."}},
        {"an unknown color",
         robustFile(two_by_one + "color Red\n", "ab\nend\n"),
         {robust + "Error! Unrecognized color 'Red'.", valid_colors,
          "                    blue, magenta, cyan and white."}},
        {"a row too short",
         robustFile(two_by_one, "a\nend\n"),
         {"\tError! Line 8: Line length is 1 (frame width is 2).", "\tLine 8: 'a'",
          robust + "Error! No frame data to add."}},
        {"a row of the second frame too long",
         robustFile("frames 2\nwidth 2\nheight 1\n", "ab\nend\ncde\nend\n"),
         {"\tError! Line 9: Line length is 3 (frame width is 2).", "\tLine 9: 'cde'",
          robust + "Error! No frame data to add."}},
        {"rows missing",
         robustFile("frames 1\nwidth 2\nheight 3\n", "ab\ncd\n"),
         {"\tError! Line 11" + no_more, robust + "Error! No frame data to add."}},
        {"a missing end",
         robustFile("frames 2\nwidth 2\nheight 1\n", "ab\ncd\nend\n"),
         {"\tError! Line 10: Expected 'end'.", "\tLine 9: 'cd'",
          robust + "Error! No frame data to add."}},
        {"the last end missing",
         robustFile(two_by_one, "ab\n"),
         {"\tError! Line 9" + no_more, robust + "Error! No frame data to add."}},
        {"frames without rows",
         robustFile("frames 1\nwidth 2\nheight 0\n", "end\n"),
         {robust + "Error! No frame data to add."}},
        {"no footer",
         "<HEADER>\n" + two_by_one + "</HEADER>\n<BODY>\nab\nend\n</BODY>\n",
         {end_of_file, "readData(): Error line 9! Expected '<FOOTER>', have ''.",
          robust + "Error! Missing 'version' in FOOTER (line 9)."}},
        {"no version",
         robustFile(two_by_one, "ab\nend\n", "author me\n"),
         {robust + "Error! Missing 'version' in FOOTER (line 12)."}},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(load(c.text), -1) << c.what;
        EXPECT_EQ(said(), c.log) << c.what;
        EXPECT_EQ(lines.back(), "RM::loadSprite(): Sprite 'it' NOT loaded.") << c.what;
    }
    EXPECT_EQ(sv::ResourceManager::getInstance().getSprite("it"), nullptr);
}

TEST_F(SpriteFiles, counts_are_believed_only_as_far_as_the_file_goes) {
    const std::string billions = "2000000000";
    const std::string no_room = "Sprite::Sprite(): Error! Unable to allocate ";
    const Case cases[] = {
        {"frames",
         billions + "\n1\n1\n0\nred\na\n",
         {no_room + billions + " frames.", simple + "Error! Unable to create Sprite."}},
        {"width",
         "1\n" + billions + "\n1\n0\nred\na\n",
         {simple + "Error line 6!", "\tLine  6: 'a'", "\tWidth is 1, expected " + billions + "."}},
        {"height",
         "1\n1\n" + billions + "\n0\nred\na\nb\n",
         {end_of_file, simple + "Error! Unexpected end of file.",
          "\tReading frame 1 of 1, row 3 of " + billions + "."}},
        {"a number beyond an int",
         "99999999999\n1\n1\n0\nred\na\n",
         {no_room + "2147483647 frames.", simple + "Error! Unable to create Sprite."}},
        {"robust frames",
         robustFile("frames " + billions + "\nwidth 1\nheight 1\n", "a\nend\n"),
         {no_room + billions + " frames.", robust + "Error! Unable to create Sprite."}},
        {"fewer than no robust frames",
         robustFile("frames -2\nwidth 1\nheight 1\n", "a\nend\n"),
         {no_room + "-2 frames.", robust + "Error! Unable to create Sprite."}},
        {"robust width",
         robustFile("frames 1\nwidth " + billions + "\nheight 1\n", "a\nend\n"),
         {"\tError! Line 8: Line length is 1 (frame width is " + billions + ").", "\tLine 8: 'a'",
          robust + "Error! No frame data to add."}},
        {"robust height",
         robustFile("frames 1\nwidth 1\nheight " + billions + "\n", "a\n"),
         {"\tError! Line 10: No more frame data before 'end'.",
          robust + "Error! No frame data to add."}},
        {"robust height below 0",
         robustFile("frames 1\nwidth 1\nheight -2147483648\n", "end\n"),
         {robust + "Error! No frame data to add."}},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(load(c.text), -1) << c.what;
        EXPECT_EQ(said(), c.log) << c.what;
    }
}

TEST_F(SpriteFiles, a_line_without_end_is_refused_where_it_stands) {
    const std::string endless(8'000'000, 'x');
    const Case cases[] = {
        {"first",
         endless,
         {end_of_file, "RM::loadSprite(): Error! Unknown sprite file format.",
          "RM::loadSprite(): First line is ''."}},
        {"in the header",
         "1\n" + endless,
         {end_of_file, simple + "Error! Unexpected end of file.", "\tMissing width (an integer)."}},
        {"a row",
         "1\n8000000\n1\n0\nred\n" + endless + "\n",
         {end_of_file, simple + "Error! Unexpected end of file.",
          "\tReading frame 1 of 1, row 1 of 1."}},
        {"in a section",
         "<HEADER>\n" + endless + "\n</HEADER>\n",
         {end_of_file, "readData(): Error! Never encountered '</HEADER>'."}},
    };
    for (const Case &c : cases) {
        EXPECT_EQ(load(c.text), -1) << c.what;
        EXPECT_EQ(said(), c.log) << c.what;
    }

    const std::string longest(65535, 'x');
    EXPECT_EQ(load("1\n65535\n1\n0\nred\n" + longest + "\n"), 0);
    EXPECT_EQ(load("1\n65536\n1\n0\nred\n" + longest + "x\n"), -1);
}

TEST_F(SpriteFiles, a_simple_file_is_told_line_by_line_at_the_highest_levels) {
    EXPECT_EQ(load("2\n2\n1\n3\nmagenta\nab\ncd\n", 20), 0);
    EXPECT_EQ(lines, (Log{"RM::loadSprite(): Loading sprite 'spr.txt'.",
                          "RM::loadSprite(): assuming simple sprite file format.",
                          "\tLine  1: '2'",
                          "\tLine  2: '2'",
                          "\tLine  3: '1'",
                          "\tLine  4: '3'",
                          "\tLine  5: 'magenta'",
                          "\t      Frames: 2",
                          "\t       Width: 2",
                          "\t      Height: 1",
                          "\t    Slowdown: 3",
                          "\t       Color: magenta",
                          "RM::loadSimpleSprite(): Reading frame 0 of 2.",
                          "\tLine  6: 'ab'",
                          "RM::loadSimpleSprite(): Reading frame 1 of 2.",
                          "\tLine  7: 'cd'",
                          "RM::loadSprite(): Sprite 'it' frames:",
                          "\tFrame 1:",
                          "\tab",
                          "\tFrame 2:",
                          "\tcd",
                          "RM::loadSprite(): Sprite 'it' loaded."}));
}

TEST_F(SpriteFiles, a_robust_file_is_told_with_what_it_leaves_out_and_has_too_much) {
    EXPECT_EQ(load(robustFile("frames 7\nwidth 2\nframes 1\nheight 2\nmood good\nslowdown -1\n",
                              "ab\ncd\nend\n", "date today\nversion 1\n"),
                   20),
              0);
    EXPECT_EQ(lines, (Log{"RM::loadSprite(): Loading sprite 'spr.txt'.",
                          "RM::loadSprite(): assuming robust sprite file format.",
                          "\tAfter reading header: line number is '8'",
                          "matchLineInt(): Warning! 'frames 1' matches multiple lines.",
                          "RM::loadRobustSprite(): Warning! No 'color' in header.",
                          "RM::loadRobustSprite(): Note! No 'transparency' in header.",
                          "RM::loadRobustSprite(): Note! No 'slowdown' in header.",
                          "RM::loadRobustSprite(): Warning! Unused HEADER lines:",
                          "\t'mood good'",
                          "\t      Frames: 1",
                          "\t       Width: 2",
                          "\t      Height: 2",
                          "\t    Slowdown: 0",
                          "\tTransparency: (none)",
                          "\tAfter reading body: line number is '13'",
                          "\t       Color: default",
                          "\tLine 11: 'ab'",
                          "\tLine 12: 'cd'",
                          "RM::loadRobustSprite(): Warning! Unused FOOTER lines:",
                          "\t'date today'",
                          "RM::loadSprite(): Sprite 'it' frames:",
                          "\tFrame 1:",
                          "\tab",
                          "\tcd",
                          "RM::loadSprite(): Sprite 'it' loaded."}));

    EXPECT_EQ(load(robustFile(two_by_one + "color red\ncolor blue\ntransparency #x\nslowdown 3\n",
                              "ab\nend\ncd\nend\n"),
                   5),
              -1);
    EXPECT_EQ(said(), (Log{"RM::loadSprite(): assuming robust sprite file format.",
                           "matchLineStr(): Warning! 'color blue' matches multiple lines.",
                           "\t      Frames: 1", "\t       Width: 2", "\t      Height: 1",
                           "\t    Slowdown: 3", "\tTransparency: #", "\t       Color: blue",
                           "RM::loadRobustSprite(): Error! Extra BODY:", "\tLine 15: cd",
                           "\tLine 16: end"}));
}

TEST_F(SpriteFiles, what_the_file_says_reaches_the_sprite) {
    auto &resources = sv::ResourceManager::getInstance();
    EXPECT_EQ(load("2\n3\n2\n4\ncyan\nabc\ndef\nghi\njkl\n"), 0);
    const sv::Sprite *sprite = resources.getSprite("it");
    ASSERT_NE(sprite, nullptr);
    EXPECT_EQ(sprite->getFrameCount(), 2);
    EXPECT_EQ(sprite->getFrame(1).getString(), "ghijkl");
    EXPECT_EQ(sprite->getFrame(1).getWidth(), 3);
    EXPECT_EQ(sprite->getFrame(1).getHeight(), 2);
    EXPECT_EQ(sprite->getWidth(), 3);
    EXPECT_EQ(sprite->getHeight(), 2);
    EXPECT_EQ(sprite->getSlowdown(), 4);
    EXPECT_EQ(sprite->getColor(), sv::CYAN);
    EXPECT_EQ(sprite->getTransparency(), sv::NO_TRANSPARENCY);

    resources.shutDown();
    sv::LogManager::getInstance().shutDown();
    EXPECT_EQ(load(robustFile("frames 1\nwidth 2\nheight 1\ntransparency  \n", "a \nend\n")), 0);
    sprite = resources.getSprite("it");
    ASSERT_NE(sprite, nullptr);
    EXPECT_EQ(sprite->getFrame(0).getString(), "a ");
    EXPECT_EQ(sprite->getSlowdown(), 0);
    EXPECT_EQ(sprite->getColor(), sv::WHITE);
    EXPECT_EQ(sprite->getTransparency(), ' ');
}

TEST_F(SpriteFiles, every_color_name_is_known_to_both_formats) {
    const char *const names[] = {"black", "red",     "green", "yellow",
                                 "blue",  "magenta", "cyan",  "white"};
    auto &resources = sv::ResourceManager::getInstance();
    for (int color = sv::BLACK; color <= sv::WHITE; ++color) {
        const std::string name = names[color];
        for (const std::string &text :
             {"1\n1\n1\n0\n" + name + "\na\n",
              robustFile("frames 1\nwidth 1\nheight 1\ncolor " + name + "\n", "a\nend\n")}) {
            ASSERT_EQ(load(text), 0) << name;
            EXPECT_EQ(resources.getSprite("it")->getColor(), color) << name;
            resources.shutDown();
            sv::LogManager::getInstance().shutDown();
        }
    }
}

TEST_F(SpriteFiles, a_key_without_a_value_goes_through_as_an_error_and_loads_nothing) {
    EXPECT_THROW(load(robustFile("frames\nwidth 1\nheight 1\n", "a\nend\n")), std::out_of_range);
    EXPECT_THROW(load(robustFile(two_by_one, "ab\nend\n", "version\n")), std::out_of_range);
    EXPECT_EQ(sv::ResourceManager::getInstance().getSprite("it"), nullptr);
    EXPECT_EQ(load(robustFile(two_by_one, "ab\nend\n")), 0);
}
