// What the desk draws over the game.

#include "selvane/desk/Desk.h"
#include "selvane/desk/worldOverlay.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/Overlay.h"
#include "selvane/display/ScreenCapture.h"
#include "selvane/loop/GameManager.h"
#include "selvane/platform/system.h"
#include "selvane/world/WorldManager.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <utility>

namespace sv {

namespace {

std::string numbersText(const StepTimes &times) {
    std::array<char, 200> text{};
    std::snprintf(text.data(), text.size(),
                  "%.0f frames/s   ms a step: events %.1f  world %.1f  drawing %.1f  paths %.1f  "
                  "sleep %.1f   %d objects",
                  times.getRate(), times.getTime(Piece::EVENTS), times.getTime(Piece::WORLD),
                  times.getTime(Piece::DRAWING), times.getTime(Piece::PATHS),
                  times.getTime(Piece::SLEEP),
                  WorldManager::getInstance().getAllObjects(true).getCount());
    return text.data();
}

/// By its exponent.
std::string speedText(int speed) {
    const std::string factor = std::to_string(1 << std::abs(speed));
    return speed < 0 ? "1/" + factor : factor;
}

} // namespace

/// A picture shows no line that comes and goes.
void Desk::drawOver() {
    Overlay overlay;
    if (has_overlay) {
        addWorld(overlay);
        overlay.addText({}, numbersText(times), WHITE);
    }
    overlay.draw();
    drawAtBottom();
    if (!picture_text.empty())
        std::ofstream(std::exchange(picture_text, "")) << screenText() << "\n";
    captureIfNeeded();
}

void Desk::drawAtBottom() const {
    auto y = static_cast<float>(display().getVerticalPixels());
    const auto add = [&](Overlay &overlay, const std::string &text, Color color) {
        if (text.empty())
            return;
        y -= overlay.getTextHeight();
        overlay.addText({0, y}, text, color);
    };
    if (!display().isPictureDue()) {
        Overlay large(true);
        add(large, statusText(), WHITE);
        add(large, files->getFault(), RED);
        large.draw();
    }
    Overlay small;
    for (auto line = log_lines.rbegin(); has_overlay && line != log_lines.rend(); ++line)
        add(small, *line, CYAN);
    small.draw();
}

std::string Desk::statusText() const {
    if (!message.empty() && platform::timeSource().steadyTime() < message_end)
        return message;
    if (is_paused)
        return "Paused in step " + std::to_string(GameManager::getInstance().getStepCount()) +
               "   F5 go on   F6 one step";
    if (speed != 0)
        return "Speed " + speedText(speed) + "   F7 slower   F8 faster";
    return has_overlay ? KEYS_TEXT : "";
}

} // namespace sv
