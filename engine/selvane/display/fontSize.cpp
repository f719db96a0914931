#include "selvane/display/fontSize.h"

#include "selvane/core/LogManager.h"
#include "selvane/display/DisplayManager.h"
#include "selvane/display/SfmlMessages.h"

#include <SFML/Graphics/Font.hpp>
#include <algorithm>
#include <cmath>

namespace sv {

namespace {

/// Pixels. Every glyph stays in the font's texture, so text this high must be bounded.
constexpr float largest_text = 1000;

float shorterCellSide() {
    return std::min(charWidth(), charHeight());
}

bool hasSize(const sf::Font &font, unsigned size) {
    return font.getGlyph('A', size, true).bounds.width > 0;
}

/// A bitmap font has only a few sizes; at others no text is visible. SFML would say so on standard
/// error only.
bool logIfSizeIsMissing(const sf::Font &font, unsigned size) {
    const SfmlMessages messages;
    return !hasSize(font, size);
}

/// How much larger than at that size a character may be before more than a tenth of a cell is cut
/// off it: the rectangles behind the characters to the right and below are drawn later and cover
/// what reaches into them. A broad letter and one with a tail stand for all.
float roomLeft(const sf::Font &font, unsigned size) {
    constexpr float rim = 1; // Bounds are whole pixels around what is drawn.
    const sf::FloatRect broad = font.getGlyph('W', size, true).bounds;
    const sf::FloatRect tailed = font.getGlyph('g', size, true).bounds;
    const float right = broad.left + broad.width - rim;
    const float bottom = static_cast<float>(size) + tailed.top + tailed.height - rim;
    const float lowest = 1 + 1 / RECTANGLE_DOWN + 1 / RECTANGLE_LEFT;
    return std::min(charWidth() / std::max(right, rim),
                    charHeight() * lowest / std::max(bottom, rim));
}

/// The size itself if it leaves room, or the largest below it that the font has and that does.
unsigned fittingSize(const sf::Font &font, unsigned size) {
    SfmlMessages messages;
    for (float room = roomLeft(font, size); room < 1 && size > 1; room = roomLeft(font, size)) {
        size = std::clamp(static_cast<unsigned>(room * static_cast<float>(size)), 1U, size - 1);
        while (size > 1 && !hasSize(font, size))
            --size;
    }
    messages.take(); // They are about sizes that nobody asked for.
    return size;
}

} // namespace

unsigned characterSize(float font_scale) {
    const float wanted = font_scale * shorterCellSide();
    if (wanted >= 1 && wanted <= largest_text)
        return static_cast<unsigned>(wanted);
    const float nearest = wanted > largest_text ? largest_text : 1;
    logLine("DisplayManager::startUp(): Warning! Font scale %g makes "
            "text %g pixels high. Using %g.",
            font_scale, wanted, nearest);
    return static_cast<unsigned>(nearest);
}

void warnIfSizeMisfits(const sf::Font &font, unsigned size) {
    if (logIfSizeIsMissing(font, size))
        return;
    const unsigned fitting = fittingSize(font, size);
    if (fitting == size)
        return;
    const float scale = static_cast<float>(fitting) / shorterCellSide();
    logLine(
        "DisplayManager::startUp(): Warning! The font's characters are larger than their cells and "
        "cut by their neighbours. A font_scale of %.2f would fit.",
        std::ceil(scale * 100) / 100);
}

} // namespace sv
