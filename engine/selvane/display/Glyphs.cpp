#include "selvane/display/Glyphs.h"

#include "selvane/core/Config.h"
#include "selvane/core/LogManager.h"
#include "selvane/core/utf8.h"

#include <SFML/Graphics/Font.hpp>
#include <SFML/Graphics/Image.hpp>
#include <SFML/Graphics/Text.hpp>
#include <algorithm>

namespace sv {

namespace {

constexpr int most_missing = 100; // That are logged.
constexpr char broad_letter = 'W';
constexpr char32_t last_of_latin_1 = 0xFF;

/// sf::Text draws a glyph with this much of its surroundings, in pixels of the window and of the
/// font's texture, which are not quite as large as each other.
constexpr float glyph_padding = 1;

/// The outer part of it, in pixels of the texture, shows nothing: a glyph's edge fades out within
/// half a pixel.
constexpr float invisible_padding = 0.5F;

PixelArea padded(float left, float top, float width, float height) {
    return {left - glyph_padding, top - glyph_padding, left + width + glyph_padding,
            top + height + glyph_padding};
}

PixelArea inkOf(const PixelArea &place, const PixelArea &texture) {
    const float x = invisible_padding * (place.right - place.left) / (texture.right - texture.left);
    const float y = invisible_padding * (place.bottom - place.top) / (texture.bottom - texture.top);
    return {place.left + x, place.top + y, place.right - x, place.bottom - y};
}

const sf::Glyph &glyphIn(const sf::Font &font, char32_t ch, unsigned size, const sf::Text &text) {
    return font.getGlyph(ch, size, (text.getStyle() & sf::Text::Bold) != 0);
}

/// What fonts have no ink for.
bool isSpace(char32_t ch) {
    return ch == 0xA0 || (0x2000 <= ch && ch <= 0x200A) || ch == 0x202F || ch == 0x3000;
}

/// Empty for control characters, which could change what a terminal shows.
std::string quoted(char32_t ch) {
    constexpr char32_t first_letter_of_latin_1 = 0xA0;
    const bool is_control = ch < U' ' || (0x7F <= ch && ch < first_letter_of_latin_1);
    return is_control ? "" : ", '" + toUtf8({&ch, 1}) + "'";
}

bool looksAlike(const sf::Image &image, const sf::IntRect &a, const sf::IntRect &b) {
    for (int y = 0; y < a.height; ++y)
        for (int x = 0; x < a.width; ++x) {
            const auto pixel = [&](const sf::IntRect &rect) {
                return image.getPixel(static_cast<unsigned>(rect.left + x),
                                      static_cast<unsigned>(rect.top + y));
            };
            if (pixel(a) != pixel(b))
                return false;
        }
    return true;
}

/// SFML does not say so: what a font lacks looks like what no font has.
bool hasGlyph(const sf::Font &font, char32_t ch, unsigned size, const sf::Text &text) {
    constexpr char32_t no_character = 0x10FFFF;
    const sf::Glyph sign = glyphIn(font, no_character, size, text);
    const sf::Glyph found = glyphIn(font, ch, size, text);
    return sign.bounds != found.bounds || sign.advance != found.advance ||
           !looksAlike(font.getTexture(size).copyToImage(), sign.textureRect, found.textureRect);
}

float advanceIn(const sf::Font &font, unsigned size, const sf::Text &text) {
    return glyphIn(font, broad_letter, size, text).advance;
}

} // namespace

Glyphs::Glyphs(const sf::Text &new_text, const sf::Font *new_fallback, float cell_width)
    : text(new_text), fallback(new_fallback), is_utf8(Config::getInstance().getUtf8()) {
    if (!is_utf8)
        return;
    const unsigned size = text.getCharacterSize();
    widest = std::max(cell_width, advanceIn(*text.getFont(), size, text));
    fallback_size = size;
    if (!fallback)
        return;
    const float scale = widest / std::max(advanceIn(*fallback, size, text), 1.0F);
    fallback_size =
        std::max(1U, static_cast<unsigned>(static_cast<float>(size) * std::min(scale, 1.0F)));
}

char32_t Glyphs::ofByte(char byte) {
    const auto [found, is_new] = bytes.try_emplace(byte);
    if (is_new)
        found->second = sf::String(byte)[0];
    return found->second;
}

const sf::Texture &Glyphs::texture(bool is_fallback) const {
    return is_fallback ? fallback->getTexture(fallback_size)
                       : text.getFont()->getTexture(text.getCharacterSize());
}

void Glyphs::load(char32_t ch, Glyph &glyph) {
    const unsigned size = text.getCharacterSize();
    glyph.is_fallback = isInFallback(ch);
    const sf::Glyph &found = glyph.is_fallback ? glyphIn(*fallback, ch, fallback_size, text)
                                               : glyphIn(*text.getFont(), ch, size, text);
    const sf::FloatRect &bounds = found.bounds;
    const sf::FloatRect texture(found.textureRect);
    // A glyph is placed from its baseline, which lies a character size below the text's top.
    glyph.place =
        padded(bounds.left, bounds.top + static_cast<float>(size), bounds.width, bounds.height);
    glyph.texture = padded(texture.left, texture.top, texture.width, texture.height);
    glyph.is_known = true;
    if (is_utf8 && ch > last_of_latin_1)
        fitIntoCell(found, glyph.place);
    // Without ink of its own it shows a corner of SFML's white square all over its place.
    const bool has_ink = found.textureRect.width > 0;
    glyph.ink = has_ink ? inkOf(glyph.place, glyph.texture) : glyph.place;
}

/// Whether the second font is to show it: it has it, and the first has not. What neither has is
/// logged, and the second font has the better sign for that.
bool Glyphs::isInFallback(char32_t ch) {
    if (!is_utf8 || isSpace(ch) || hasGlyph(*text.getFont(), ch, text.getCharacterSize(), text))
        return false;
    if (fallback && hasGlyph(*fallback, ch, fallback_size, text))
        return true;
    if (missing++ < most_missing)
        logLine("DisplayManager: Warning! No font has the character U+%04X%s.",
                static_cast<unsigned>(ch), quoted(ch).c_str());
    return fallback != nullptr;
}

/// Wide characters are made as narrow as a cell. Marks that fonts place over the character before
/// them stand in their own cell.
void Glyphs::fitIntoCell(const sf::Glyph &found, PixelArea &place) const {
    if (found.bounds.left + found.bounds.width <= 0) {
        place.left += widest;
        place.right += widest;
    }
    const float scale = std::min(widest / std::max(found.advance, 1.0F), 1.0F);
    place.left *= scale;
    place.right *= scale;
}

} // namespace sv
