/// UTF-8, and how many cells a text takes: with `utf8:true,` in the configuration a cell is a code
/// point, and otherwise a byte.
///
/// What is no UTF-8 (overlong forms, halves of surrogate pairs, numbers above U+10FFFF, cut ends)
/// counts as replacement characters: one for bytes that begin like a character and break off, and
/// one for each other byte.
#pragma once

#include "selvane/core/Config.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace sv {

inline constexpr char32_t REPLACEMENT_CHARACTER = U'\uFFFD';

/// What a text begins with.
struct CodePoint {
    char32_t value = REPLACEMENT_CHARACTER;
    std::size_t bytes = 1; ///< That it takes in the text.
    bool is_valid = false;
};

/// REQUIRES: the text is not empty.
CodePoint firstCodePoint(std::string_view text);

std::u32string fromUtf8(std::string_view text);

/// The replacement character for numbers that are no code points.
std::string toUtf8(std::u32string_view text);

/// How many bytes of the text are valid before the first that are not; the whole length if all are.
std::size_t validUtf8Length(std::string_view text);

/// How many cells a text takes.
std::size_t cellCount(std::string_view text);

/// Removes that many cells from the front of the text, or as many as there are, and returns them.
std::string_view takeCells(std::string_view &text, std::size_t count);

/// Calls `visit` with what stands in each cell, a char32_t or, without `utf8:true,`, a char; until
/// it returns false.
template<typename Visit>
void forEachCell(std::string_view text, Visit visit) {
    if (!Config::getInstance().getUtf8()) {
        for (std::size_t i = 0; i < text.size() && visit(text[i]); ++i) {
        }
        return;
    }
    while (!text.empty()) {
        const CodePoint first = firstCodePoint(text);
        text.remove_prefix(first.bytes);
        if (!visit(first.value))
            return;
    }
}

} // namespace sv
