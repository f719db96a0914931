#include "selvane/core/LogManager.h"
#include "selvane/resources/Sound.h"
#include "selvane/resources/audioDevice.h"
#include "support/EngineTest.h"
#include "support/waveFile.h"

#include <algorithm>
#include <fstream>

namespace {

class OpenAL : public test::EngineTest {
  protected:
    static std::vector<std::string> asked() {
        std::ifstream file("openal.txt");
        std::vector<std::string> lines;
        for (std::string line; std::getline(file, line);)
            lines.push_back(line.substr(0, line.find_last_not_of(' ') + 1));
        return lines;
    }
};

} // namespace

TEST_F(OpenAL, whose_library_lies_beside_the_program_is_asked_to_play) {
    startLog();
    writeFile("beep.wav", test::waveFile(std::vector<std::int16_t>(800, 9000), 8000));
    ASSERT_TRUE(sv::hasAudioDevice());
    const std::vector<std::string> opening{"open the default", "context 1 1", "current 1",
                                           "listen at 0 0 0"};
    const auto first = asked();
    ASSERT_GE(first.size(), opening.size());
    EXPECT_TRUE(std::equal(opening.begin(), opening.end(), first.begin()))
        << testing::PrintToString(first);
    sv::Sound sound;
    ASSERT_EQ(sound.loadSound("beep.wav"), 0);
    sound.play();
    const auto lines = asked();
    for (const std::string wanted : {"samples 11 9000 1600 8000", "sources 1", "play 22"})
        EXPECT_EQ(std::count(lines.begin(), lines.end(), wanted), 1)
            << wanted << " in " << testing::PrintToString(lines);
}
