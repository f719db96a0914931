// The packed game as a program of its own, and the hands and eyes of the person in front of it.

#include "selvane/core/LogManager.h"
#include "support/EngineTest.h"
#include "support/environment.h"
#include "support/waitUntil.h"

#include <SFML/Graphics/Image.hpp>
#include <cstdlib>
#include <vector>
#include <windows.h>

namespace {

constexpr DWORD longest_wait_ms = 30000;

/// The pixels of a rectangle of the screen: blue, green, red and a fourth byte, row by row.
std::vector<sf::Uint8> screenPixels(POINT corner, int width, int height) {
    std::vector<sf::Uint8> pixels(static_cast<std::size_t>(width) *
                                  static_cast<std::size_t>(height) * 4);
    BITMAPINFO form{};
    form.bmiHeader = {sizeof form.bmiHeader, width, -height, 1, 32, BI_RGB, 0, 0, 0, 0, 0};
    const HDC screen = GetDC(nullptr);
    const HDC memory = CreateCompatibleDC(screen);
    const HBITMAP bitmap = CreateCompatibleBitmap(screen, width, height);
    const HGDIOBJ before = SelectObject(memory, bitmap);
    BitBlt(memory, 0, 0, width, height, screen, corner.x, corner.y, SRCCOPY);
    SelectObject(memory, before);
    GetDIBits(memory, bitmap, 0, static_cast<UINT>(height), pixels.data(), &form, DIB_RGB_COLORS);
    DeleteObject(bitmap);
    DeleteDC(memory);
    ReleaseDC(nullptr, screen);
    return pixels;
}

/// The game's folder as a person unpacks it, with a log of level 10.
class GameProgram : public test::EngineTest {
  protected:
    void SetUp() override {
        const char *folder_of_game = std::getenv("SELVANE_TEST_GAME");
        ASSERT_NE(folder_of_game, nullptr) << "no folder with a game to start";
        std::filesystem::copy(folder_of_game, "game", std::filesystem::copy_options::recursive);
        std::filesystem::current_path("game");
        test::setEnvironment(sv::LOG_LEVEL_VARIABLE, "10");
        test::setEnvironment("ALSOFT_DRIVERS", "null"); // The packed OpenAL's device without sound.
        STARTUPINFOW startup{};
        startup.cb = sizeof startup;
        ASSERT_TRUE(CreateProcessW(L"selvane_game.exe", nullptr, nullptr, nullptr, FALSE, 0,
                                   nullptr, nullptr, &startup, &process));
    }

    ~GameProgram() override {
        if (WaitForSingleObject(process.hProcess, 0) == WAIT_TIMEOUT) {
            TerminateProcess(process.hProcess, 1);
            WaitForSingleObject(process.hProcess, longest_wait_ms);
        }
        CloseHandle(process.hThread);
        CloseHandle(process.hProcess);
        std::filesystem::current_path("..");
    }

    /// What the screen shows inside of the window's frame; empty without a window.
    sf::Image picture() const {
        sf::Image image;
        const HWND window = FindWindowW(nullptr, L"Afterimage");
        RECT inside{};
        POINT corner{};
        if (!GetClientRect(window, &inside) || !ClientToScreen(window, &corner))
            return image;
        std::vector<sf::Uint8> pixels = screenPixels(corner, inside.right, inside.bottom);
        for (std::size_t i = 0; i < pixels.size(); i += 4) {
            std::swap(pixels[i], pixels[i + 2]);
            pixels[i + 3] = 255;
        }
        image.create(static_cast<unsigned>(inside.right), static_cast<unsigned>(inside.bottom),
                     pixels.data());
        return image;
    }

    /// Waits until the window shows enough pixels of that colour. Saves the picture for a person to
    /// look at, if SELVANE_TEST_PICTURES names a folder.
    void see(const sf::Color &color, const std::string &name) const {
        constexpr int enough = 1000; // Both titles have hundreds of letters in their colour.
        sf::Image image;
        EXPECT_TRUE(test::waitUntil([&] {
            image = picture();
            int count = 0;
            for (unsigned y = 0; y < image.getSize().y; ++y)
                for (unsigned x = 0; x < image.getSize().x; ++x)
                    count += image.getPixel(x, y) == color ? 1 : 0;
            return count > enough;
        })) << name;
        if (const char *pictures = std::getenv("SELVANE_TEST_PICTURES"))
            image.saveToFile(std::string(pictures) + "/" + name + ".png");
    }

    /// A capital letter or a blank.
    static void sendKey(char key, DWORD flags = 0) {
        INPUT input{};
        input.type = INPUT_KEYBOARD;
        input.ki.wVk = static_cast<WORD>(key);
        input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(input.ki.wVk, MAPVK_VK_TO_VSC));
        input.ki.dwFlags = flags;
        SendInput(1, &input, sizeof input);
    }

    PROCESS_INFORMATION process{};
};

TEST_F(GameProgram, shows_both_titles_and_quits_on_q) {
    see(sf::Color::Green, "sequence");
    sendKey(' ');
    see(sf::Color::Cyan, "title");
    sendKey(' ', KEYEVENTF_KEYUP);
    EXPECT_EQ(WaitForSingleObject(process.hProcess, 0), DWORD{WAIT_TIMEOUT}) << "it runs on";
    sendKey('Q');
    EXPECT_EQ(WaitForSingleObject(process.hProcess, longest_wait_ms), WAIT_OBJECT_0);
    DWORD status = 1;
    EXPECT_TRUE(GetExitCodeProcess(process.hProcess, &status));
    EXPECT_EQ(status, 0U) << logText();
    EXPECT_EQ(logText().find("Warning!"), std::string::npos) << logText();
    EXPECT_EQ(logText().find("No audio device"), std::string::npos) << "OpenAL was not packed";
}

} // namespace
