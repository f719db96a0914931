#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/resources/ResourceManager.h"
#include "selvane/resources/spriteFile.h"
#include "support/EngineTest.h"

#include <optional>
#include <regex>
#include <sstream>
#include <tuple>

namespace {

// The first line of every load, and the last one of those that fail.
const std::string loading = "RM::loadSprite(): Loading sprite 'spr.txt'.\n";
const std::string not_loaded = "RM::loadSprite(): Sprite 'it' NOT loaded.\n";

struct SpriteFiles : test::EngineTest {
    SpriteFiles() { startLog(); }

    /// Loads `text` as a file, with nothing loaded or logged before, and returns the answer.
    int load(const std::string &text, int log_level = 0) {
        log.setLogLevel(0);
        resources.shutDown();
        resources.startUp();
        writeFile("spr.txt", text);
        said();
        log.setLogLevel(log_level);
        return resources.loadSprite("spr.txt", "it");
    }

    /// Texts, and what is logged of them.
    void expectRefused(const std::vector<std::pair<std::string, std::string>> &cases) {
        for (const auto &[text, reason] : cases) {
            SCOPED_TRACE(text.substr(0, 100));
            EXPECT_EQ(load(text), -1);
            EXPECT_EQ(said(), loading + reason + "\n" + not_loaded);
            EXPECT_EQ(resources.getSprite("it"), nullptr);
        }
    }

    /// Its frames, their size in parentheses, and its other values.
    static std::string describe(const sv::Sprite &sprite) {
        std::ostringstream text;
        for (int i = 0; i < sprite.getFrameCount(); ++i)
            text << sprite.getFrame(i).getString() << " (" << sprite.getFrame(i).getWidth() << "x"
                 << sprite.getFrame(i).getHeight() << ") ";
        text << sprite.getWidth() << "x" << sprite.getHeight() << ", slowed by "
             << sprite.getSlowdown() << ", color " << sprite.getColor();
        if (sprite.getTransparency() != sv::NO_TRANSPARENCY)
            text << ", without '" << sprite.getTransparency() << "'";
        return text.str();
    }

    sv::LogManager &log = sv::LogManager::getInstance();
    sv::ResourceManager &resources = sv::ResourceManager::getInstance();
};

const std::string end_of_file = "getLine(): Error! Unexpected end of file.\n";
const std::string unknown = "RM::loadSprite(): Error! Unknown sprite file format.\n"
                            "RM::loadSprite(): First line is ";
const std::string simple = "RM::loadSimpleSprite(): Error";
const std::string cut_off = simple + "! Unexpected end of file.\n";
const std::string robust = "RM::loadRobustSprite(): Error! ";
const std::string no_data = robust + "No frame data to add.";
const std::string no_more = ": No more frame data before 'end'.\n";
const std::string no_room = "Sprite::Sprite(): Error! Unable to allocate ";
const std::string colors = "  Valid colors are: black, red, green, yellow,\n"
                           "                    blue, magenta, cyan ";

std::string robustFile(const std::string &header, const std::string &body,
                       const std::string &footer = "version 1\n") {
    return "<HEADER>\n" + header + "</HEADER>\n<BODY>\n" + body + "</BODY>\n<FOOTER>\n" + footer +
           "</FOOTER>\n";
}

const std::string two_by_one = "frames 1\nwidth 2\nheight 1\n";

} // namespace

TEST_F(SpriteFiles, good_files_load_without_log_lines) {
    const std::string one = "ab (2x1) 2x1, slowed by 0, color ";
    const std::pair<std::string, std::string> good[] = {
        {"2\n3\n2\n4\ncyan\nabc\ndef\nghi\njkl\n",
         "abcdef (3x2) ghijkl (3x2) 3x2, slowed by 4, color 6"},
        {"1\r\n2\r\n1\r\n0\r\nred\r\nab\r\n", one + "1"},
        {"\xEF\xBB\xBF"
         "1\n2\n1\n0\nred\nab",
         one + "1"},
        {"1\n2\n1\n0\nred\nab\n\r", one + "1"},
        {"  1 frame\n2 wide\n +1\n0x\nred\nab\n", one + "1"},
        {robustFile(two_by_one + "transparency  \nslowdown 3\ncolor red\ncolor blue\n",
                    "a \nend\n"),
         "a  (2x1) 2x1, slowed by 3, color 4, without ' '"},
        {"<HEADER>\r\nframes 1\r\nwidth 1\r\nheight 1\r\n</HEADER>\r\n<BODY>\r\n"
         "a\r\nend\r\n</BODY>\r\n<FOOTER>\r\nversion 1\r\n</FOOTER>\r\n",
         "a (1x1) 1x1, slowed by 0, color 7"},
        {robustFile("frames:1\nwidth=2\nheight\t1\n", "ab\nend\n", "version:x\n"), one + "7"},
        {robustFile("frames 1\nwidth 3\nheight 1\n", "end\nend\n"),
         "end (3x1) 3x1, slowed by 0, color 7"},
        {robustFile(two_by_one, "ab\nend\n") + "\nmore\n", one + "7"},
    };
    for (const auto &[text, sprite] : good) {
        EXPECT_EQ(load(text), 0) << text;
        EXPECT_EQ(said(), loading) << text;
        EXPECT_EQ(describe(*resources.getSprite("it")), sprite);
    }
}

TEST_F(SpriteFiles, rows_count_code_points_in_utf_8) {
    sv::Config::getInstance().loadConfig("utf8:true");
    const std::string warning = "RM::loadSprite(): Warning! File 'spr.txt', line ";
    const std::pair<std::string, std::string> cases[] = {
        {"1\n2\n2\n0\nred\n\u00FCb\na\u2500\n", ""},
        {robustFile("frames 1\nwidth 2\nheight 2\ntransparency b\n", "\u00FCb\na\u2500\nend\n"),
         ""},
        {"1\n3\n2\n0\nred\na\xFF"
         "b\nabc\n",
         warning + "6 is no UTF-8 from byte 2 on.\n"},
        {"1\n2\n1\n0\nr\xFF"
         "d\nab\n",
         warning + "5 is no UTF-8 from byte 2 on.\n" + simple +
             " line 5! Unrecognized color 'r\xFF"
             "d'.\n" +
             colors + "or white.\n" + not_loaded},
        {robustFile(two_by_one + "transparency \u2591\n", "ab\nend\n"),
         "RM::loadRobustSprite(): Warning! Transparency '\u2591' is no ASCII character, and "
         "nothing "
         "is left out.\n"},
    };
    for (const auto &[text, lines] : cases) {
        load(text);
        EXPECT_EQ(said(), loading + lines) << text;
    }
    load(cases[0].first, 15);
    EXPECT_NE(said().find("\tFrame 1:\n\t\u00FCb\n\ta\u2500\n"), std::string::npos);
}

TEST_F(SpriteFiles, bad_simple_files_are_logged) {
    expectRefused({
        {"", end_of_file + unknown + "''."},
        {"0\n1\n", unknown + "'0'."},
        {"<HEADER> \n", unknown + "'<HEADER> '."},
        {"1\n", end_of_file + cut_off + "\tMissing width (an integer)."},
        {"1\n1\n", end_of_file + cut_off + "\tMissing height (an integer)."},
        {"1\n1\n1\n", end_of_file + cut_off + "\tMissing slowdown (an integer)."},
        {"1\n1\n1\n1\n", end_of_file + cut_off + "\tMissing color (a string)."},
        {"1\n0 wide\n", simple + " line 2! Width is '0 wide'."},
        {"1\n1\n\n", simple + " line 3! Height is ''."},
        {"1\n1\n1\n-1\n", simple + " line 4! Slowdown is '-1'."},
        {"1\n1\n1\n0\nred \n",
         simple + " line 5! Unrecognized color 'red '.\n" + colors + "or white."},
        {"1\n3\n2\n0\nred\nabc\nab\n",
         simple + " line 7!\n\tLine  7: 'ab'\n\tWidth is 2, expected 3."},
        {"2\n1\n2\n0\nred\na\nb\n\nd\n", cut_off + "\tReading frame 2 of 2, row 1 of 2."},
        {"2\n1\n2\n0\nred\na\nb\nc\n",
         end_of_file + cut_off + "\tReading frame 2 of 2, row 2 of 2."},
        {"1\n1\n1\n0\nred\na\n\n", simple + " line 7!\n\tExtra file data: ''"},
        {"1\n1\n1\n0\nred\na\nb\r\n", simple + " line 7!\n\tExtra file data: 'b'"},
    });
}

TEST_F(SpriteFiles, bad_robust_files_are_logged) {
    const std::string endless_header = "readData(): Error! Never encountered '</HEADER>'.";
    const auto missing = [](int line, const std::string &key) {
        return "RM::loadSprite(): Error! File 'spr.txt', line " + std::to_string(line) + ": key '" +
               key + "' has no value.";
    };
    expectRefused({
        {"<HEADER>\nframes 1\n\nwidth 1\n", endless_header},
        {robustFile("width 1\nheight 1\n", "a\nend\n"), robust + "Missing 'frames' in header."},
        {robustFile("frames 1\nwidth -1\nheight 1\n", "a\nend\n"),
         robust + "Missing 'width' in header."},
        {robustFile("frames 1\nwidth 1\n", "a\nend\n"), robust + "Missing 'height' in header."},
        {"<HEADER>\n" + two_by_one + "</HEADER>\n\n<BODY>\n",
         "readData(): Error line 6! Expected '<BODY>', have ''."},
        {robustFile(two_by_one + "color Red\n", "ab\nend\n"),
         robust + "Unrecognized color 'Red'.\n" + colors + "and white."},
        {robustFile(two_by_one, "a\nend\n"),
         "\tError! Line 8: Line length is 1 (frame width is 2).\n\tLine 8: 'a'\n" + no_data},
        // Later frames are named without the "end" lines before them.
        {robustFile("frames 2\nwidth 2\nheight 1\n", "ab\nend\ncde\nend\n"),
         "\tError! Line 9: Line length is 3 (frame width is 2).\n\tLine 9: 'cde'\n" + no_data},
        {robustFile("frames 2\nwidth 2\nheight 1\n", "ab\ncd\nend\n"),
         "\tError! Line 10: Expected 'end'.\n\tLine 9: 'cd'\n" + no_data},
        {robustFile(two_by_one, "ab\n"), "\tError! Line 9" + no_more + no_data},
        {"<HEADER>\n" + two_by_one + "</HEADER>\n<BODY>\nab\nend\n</BODY>\n",
         end_of_file + "readData(): Error line 9! Expected '<FOOTER>', have ''.\n" + robust +
             "Missing 'version' in FOOTER (line 9)."},
        {robustFile(two_by_one, "ab\nend\n", "author me\n"),
         robust + "Missing 'version' in FOOTER (line 12)."},
        {robustFile("frames\nwidth 1\nheight 1\n", "a\nend\n"), missing(2, "frames")},
        {robustFile(two_by_one + "mood\ncolor\r\n", "ab\nend\n"), missing(6, "color")},
        {robustFile(two_by_one, "ab\nend\n", "author me\nversion\n"), missing(12, "version")},
    });
    EXPECT_EQ(load("<HEADER>\n</HEADER>\n<BODY>\n"), -1);
    EXPECT_EQ(said(), loading + not_loaded) << "an empty section is not logged";
}

/// A sprite of two frames, two wide and two high, with that section after its body.
std::string coloredFile(const std::string &section, const std::string &color = "white") {
    std::string text = robustFile("frames 2\nwidth 2\nheight 2\ncolor " + color + "\n",
                                  "ab\ncd\nend\nef\ngh\nend\n");
    return text.insert(text.find("<FOOTER>"), section);
}

TEST_F(SpriteFiles, cells_may_have_their_own_colors) {
    const std::string colored = "<COLORS>\nletter o #fF8000\nr.\n.o\nend\n..\nbb\nend\n</COLORS>\n";
    for (const std::string &text :
         {colored, std::regex_replace(colored, std::regex("\n"), "\r\n")}) {
        ASSERT_EQ(load(coloredFile(text, "#0000fe")), 0);
        const sv::Sprite &sprite = *resources.getSprite("it");
        EXPECT_EQ(sprite.getRgb(), sv::Rgb(0, 0, 254));
        const auto none = std::nullopt;
        using Colors = std::vector<std::optional<sv::Rgb>>;
        EXPECT_EQ(sprite.getFrame(0).getColors(),
                  (Colors{sv::Rgb(sv::RED), none, none, sv::Rgb(255, 128, 0)}));
        EXPECT_EQ(sprite.getFrame(1).getColors(),
                  (Colors{none, none, sv::Rgb(sv::BLUE), sv::Rgb(sv::BLUE)}));
    }
}

TEST_F(SpriteFiles, bad_colors_are_logged) {
    const std::string first = "<COLORS>\nrr\nrr\nend\n"; // Lines 15 to 18.
    const std::string no_colors = robust + "No colors for frame ";
    expectRefused({
        {coloredFile("", "#12345"),
         robust + "Unrecognized color '#12345'.\n" + colors + "and white."},
        {coloredFile("<COLORS>\n</COLORS>\n"),
         "\tError! Line 16" + no_more + no_colors + "1 of 2."},
        {coloredFile(first + "</COLORS>\n"), "\tError! Line 19" + no_more + no_colors + "2 of 2."},
        {coloredFile(first + "rr\nrx\nend\n</COLORS>\n"),
         robust + "Line 20: No color has the letter 'x'.\n" + no_colors + "2 of 2."},
        {coloredFile(first + "rr\nletter z #123456\nrx\nend\n</COLORS>\n"),
         robust + "Line 21: No color has the letter 'x'.\n" + no_colors + "2 of 2."},
        {coloredFile(first + "rr\nr\nend\n</COLORS>\n"),
         "\tError! Line 20: Line length is 1 (frame width is 2).\n\tLine 20: 'r'\n" + no_colors +
             "2 of 2."},
        {coloredFile(first + "letter x #12\nletter  #123456\nrr\nrx\nend\n</COLORS>\n"),
         robust + "Line 19: 'letter x #12' should be 'letter X #rrggbb'."},
        {coloredFile(first + "gg\ngg\nend\nbb\n</COLORS>\n"),
         robust + "Line 22: Extra COLORS: 'bb'"},
    });
}

TEST_F(SpriteFiles, false_counts_are_refused) {
    const std::string billions = "2000000000";
    const std::string too_short = "Line length is 1 (frame width is " + billions + ").";
    expectRefused({
        {"99999999999\n1\n1\n0\nred\na\n",
         no_room + "2147483647 frames.\n" + simple + "! Unable to create Sprite."},
        {"1\n" + billions + "\n1\n0\nred\na\n",
         simple + " line 6!\n\tLine  6: 'a'\n\tWidth is 1, expected " + billions + "."},
        {"1\n1\n" + billions + "\n0\nred\na\nb\n",
         end_of_file + cut_off + "\tReading frame 1 of 1, row 3 of " + billions + "."},
        {robustFile("frames -2\nwidth 1\nheight 1\n", "a\nend\n"),
         no_room + "-2 frames.\n" + robust + "Unable to create Sprite."},
        {robustFile("frames 1\nwidth " + billions + "\nheight 1\n", "a\nend\n"),
         "\tError! Line 8: " + too_short + "\n\tLine 8: 'a'\n" + no_data},
        {robustFile("frames 1\nwidth 1\nheight " + billions + "\n", "a\n"),
         "\tError! Line 10" + no_more + no_data},
        {robustFile("frames 1\nwidth 1\nheight -2147483648\n", "end\n"), no_data},
    });
}

TEST_F(SpriteFiles, faults_name_their_lines) {
    const std::string two_frames = "frames 2\nwidth 2\nheight 1\ncolor red\n";
    const std::tuple<std::string, int, std::string> faulty[] = {
        {"ship", 1, "Unknown sprite file format."},
        {"0x\n", 1, "Unknown sprite file format."},
        {"1\n2\n", 2, "Missing height (an integer)."},
        {"1\n2\n0 high\n", 3, "Height is '0 high'."},
        {"1\n2\n1\n0\npink\n", 5, "Unrecognized color 'pink'."},
        {"2\n2\n1\n0\nred\nab\nabc!\n", 7, "Width is 4, expected 2."},
        {"2\n2\n1\n0\nred\nab\n\nab\n", 7, "Empty line, row 1 of frame 2."},
        {"2\n2\n1\n0\nred\nab\n", 6, "Unexpected end of file, row 1 of frame 2."},
        {"1\n2\n1\n0\nred\nab\nHey! you\n", 7, "Extra file data: 'Hey! you'"},
        {"<HEADER>\nframes 1\n\nwidth 2\n", 3, "Empty line before '</HEADER>'."},
        {"<HEADER>\nframes 1\n", 2, "Never encountered '</HEADER>'."},
        {robustFile("frames 1\nwidth\n", ""), 3, "Key 'width' has no value."},
        {robustFile("frames 1\n", ""), 3, "Missing 'width' in header."},
        {robustFile("color pink\n" + two_by_one, "ab\nend\n"), 2, "Unrecognized color 'pink'."},
        {robustFile("frames -2\nwidth 2\nheight 1\n", "ab\n"), 2, "Unable to create Sprite."},
        // Behind the "end" of the first frame.
        {robustFile(two_frames, "ab\nend\nabc\nend\n"), 10, "Line length is 3 (frame width is 2)."},
        {robustFile(two_frames, "ab\nend\nab\nab\n"), 11, "Expected 'end'."},
        {robustFile(two_frames, "ab\nend\n"), 10, "No more frame data before 'end'."},
        {robustFile(two_by_one, "ab\nend\nmore\n"), 9, "Extra BODY: 'more'"},
        {robustFile(two_by_one, "ab\nend\n</BODY>\n<COLORS>\nr.\nend\nrx\n</COLORS>\n"), 13,
         "Extra COLORS: 'rx'"},
        {robustFile(two_by_one, "ab\nend\n</BODY>\n<COLORS>\nrx\nend\n</COLORS>\n"), 11,
         "No color has the letter 'x'."},
        {robustFile(two_by_one, "ab\nend\n", ""), 11, "Missing 'version' in FOOTER (line 11)."},
    };
    for (const auto &[text, line, reason] : faulty) {
        EXPECT_EQ(load(text), -1);
        EXPECT_EQ(sv::sprite_fault.line, line) << text;
        EXPECT_EQ(sv::sprite_fault.reason, reason) << text;
    }
    load(robustFile(two_by_one, "ab\nend\n"));
    EXPECT_EQ(sv::sprite_fault.reason, "");
}

TEST_F(SpriteFiles, lines_may_be_as_long_as_the_file) {
    const std::string header = "1\n16777197\n1\n0\nred\n";
    const std::string endless(sv::MAX_SPRITE_BYTES - header.size(), 'x');
    ASSERT_EQ(load(header + endless), 0);
    EXPECT_EQ(resources.getSprite("it")->getFrame(0).getString(), endless);
    EXPECT_EQ(load(header + endless + "\n"), -1);
    EXPECT_EQ(said(), loading +
                          "RM::loadSprite(): Error! File 'spr.txt' has more than 16777216 bytes.\n"
                          "RM::loadSprite(): Sprite 'it' not loaded.\n");
    expectRefused({{"<HEADER>\n" + endless,
                    end_of_file + "readData(): Error! Never encountered '</HEADER>'."}});
}

TEST_F(SpriteFiles, what_is_unused_or_extra_is_logged) {
    EXPECT_EQ(load(robustFile("frames 7\nwidth 2\nframes 1\nheight 2\nmood good\nslowdown -1\n",
                              "ab\ncd\nend\n", "date today\nversion 1\nversion 2\n"),
                   20),
              0);
    const std::string lines = said();
    for (const char *part :
         {"\tAfter reading header: line number is '8'\n"
          "matchLineInt(): Warning! 'frames 1' matches multiple lines.\n"
          "RM::loadRobustSprite(): Warning! No 'color' in header.\n"
          "RM::loadRobustSprite(): Note! No 'transparency' in header.\n"
          "RM::loadRobustSprite(): Note! No 'slowdown' in header.\n"
          "RM::loadRobustSprite(): Warning! Unused HEADER lines:\n\t'mood good'\n",
          "\t    Slowdown: 0\n\tTransparency: (none)\n"
          "\tAfter reading body: line number is '13'\n"
          "\t       Color: default\n\tLine 11: 'ab'\n\tLine 12: 'cd'\n"
          "matchLineStr(): Warning! 'version 2' matches multiple lines.\n"
          "RM::loadRobustSprite(): Warning! Unused FOOTER lines:\n\t'date today'\n"})
        EXPECT_NE(lines.find(part), std::string::npos) << lines;
    EXPECT_EQ(load(robustFile(two_by_one, "ab\nend\ncd\nend\n"), 5), -1);
    EXPECT_TRUE(
        said().ends_with(robust + "Extra BODY:\n\tLine 11: cd\n\tLine 12: end\n" + not_loaded));
}
