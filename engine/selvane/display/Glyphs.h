/// Where the characters are in the textures of the fonts, and where they stand in their cells:
/// those of the first font and, with `utf8:true,`, of a second one for what the first lacks.
///
/// Borrows the text, which says with which font, style and size, and the second font. Game-loop
/// thread only.
#pragma once

#include "selvane/core/Vector.h"
#include "selvane/display/InkMap.h"

#include <array>
#include <unordered_map>

namespace sf {
class Font;
class Glyph;
class Text;
class Texture;
} // namespace sf

namespace sv {

class Glyphs {
  public:
    struct Glyph {
        PixelArea place;   // From the character's position.
        PixelArea ink;     // The part of it that shows anything.
        PixelArea texture; // In the texture of its font.
        bool is_fallback = false;
        bool is_known = false;
    };

    /// REQUIRES: the text has a font. `new_fallback`: null for none. `cell_width`: pixels.
    Glyphs(const sf::Text &new_text, const sf::Font *new_fallback, float cell_width);

    const Glyph &of(char32_t ch) {
        Glyph &glyph = ch < common.size() ? common[ch] : others[ch];
        if (!glyph.is_known)
            load(ch, glyph);
        return glyph;
    }

    /// The character that sf::Text makes of a byte, which depends on the program's locale above
    /// 127.
    char32_t ofByte(char byte);

    /// It may be another one after each new character.
    const sf::Texture &texture(bool is_fallback) const;

  private:
    void load(char32_t ch, Glyph &glyph);
    bool isInFallback(char32_t ch);
    void fitIntoCell(const sf::Glyph &found, PixelArea &place) const;

    const sf::Text &text;
    const sf::Font *fallback;
    bool is_utf8;
    float widest = 0; // Pixels. A broader character is made narrower.
    unsigned fallback_size = 0;
    int missing = 0;
    std::array<Glyph, 256> common;
    std::unordered_map<char32_t, Glyph> others;
    std::unordered_map<char, char32_t> bytes;
};

} // namespace sv
