#include "support/WindowedProgram.h"

#include <vector>
#include <windows.h>

namespace test {

namespace {

constexpr DWORD longest_wait_ms = 30000;

struct Search {
    DWORD process = 0;
    HWND found = nullptr;
};

BOOL CALLBACK lookAt(HWND window, LPARAM parameter) {
    Search &search = *reinterpret_cast<Search *>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    if (owner != search.process || !IsWindowVisible(window) || GetWindowTextLengthW(window) == 0)
        return TRUE;
    search.found = window;
    return FALSE;
}

void sendKey(char key, DWORD flags) {
    INPUT input{};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = static_cast<WORD>(key);
    input.ki.wScan = static_cast<WORD>(MapVirtualKeyW(input.ki.wVk, MAPVK_VK_TO_VSC));
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof input);
}

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

} // namespace

struct WindowedProgram::Process {
    PROCESS_INFORMATION information{};

    HWND window() const {
        Search search{information.dwProcessId};
        EnumWindows(&lookAt, reinterpret_cast<LPARAM>(&search));
        return search.found;
    }
};

WindowedProgram::WindowedProgram(const std::filesystem::path &program)
    : process(std::make_unique<Process>()) {
    STARTUPINFOW startup{};
    startup.cb = sizeof startup;
    CreateProcessW(program.c_str(), nullptr, nullptr, nullptr, FALSE, 0, nullptr,
                   program.parent_path().c_str(), &startup, &process->information);
}

WindowedProgram::~WindowedProgram() {
    if (isRunning()) {
        TerminateProcess(process->information.hProcess, 1);
        WaitForSingleObject(process->information.hProcess, longest_wait_ms);
    }
    CloseHandle(process->information.hThread);
    CloseHandle(process->information.hProcess);
}

bool WindowedProgram::isRunning() const {
    return WaitForSingleObject(process->information.hProcess, 0) == WAIT_TIMEOUT;
}

bool WindowedProgram::hasWindow() const {
    return process->window() != nullptr;
}

sf::Image WindowedProgram::picture() const {
    sf::Image image;
    const HWND window = process->window();
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

void WindowedProgram::pressKey(char key) {
    sendKey(key, 0);
}

void WindowedProgram::releaseKey(char key) {
    sendKey(key, KEYEVENTF_KEYUP);
}

int WindowedProgram::waitForEnd() const {
    DWORD status = 0;
    const bool has_ended =
        WaitForSingleObject(process->information.hProcess, longest_wait_ms) == WAIT_OBJECT_0 &&
        GetExitCodeProcess(process->information.hProcess, &status);
    return has_ended ? static_cast<int>(status) : -1;
}

} // namespace test
