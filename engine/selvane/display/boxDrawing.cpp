#include "selvane/display/boxDrawing.h"

#include <algorithm>
#include <cmath>
#include <numbers>
#include <string_view>

namespace sv {

namespace {

constexpr char32_t first_block = 0x2580;
constexpr char32_t first_double = 0x2550;
constexpr char32_t last_double = 0x256C;
constexpr char32_t first_arc = 0x256D;
constexpr char32_t last_arc = 0x2570;
constexpr char32_t rising_diagonal = 0x2571;
constexpr char32_t falling_diagonal = 0x2572;

/// The four arms of each character from U+2500 on, left, up, right and down: 0 none, 1 light,
/// 2 heavy, 3 double. The diagonals have none.
constexpr std::string_view arm_digits = "1010 2020 0101 0202 1010 2020 0101 0202 "
                                        "1010 2020 0101 0202 0011 0021 0012 0022 "
                                        "1001 2001 1002 2002 0110 0120 0210 0220 "
                                        "1100 2100 1200 2200 0111 0121 0211 0112 "
                                        "0212 0221 0122 0222 1101 2101 1201 1102 "
                                        "1202 2201 2102 2202 1011 2011 1021 2021 "
                                        "1012 2012 1022 2022 1110 2110 1120 2120 "
                                        "1210 2210 1220 2220 1111 2111 1121 2121 "
                                        "1211 1112 1212 2211 1221 2112 1122 2221 "
                                        "2122 2212 1222 2222 1010 2020 0101 0202 "
                                        "3030 0303 0031 0013 0033 3001 1003 3003 "
                                        "0130 0310 0330 3100 1300 3300 0131 0313 "
                                        "0333 3101 1303 3303 3031 1013 3033 3130 "
                                        "1310 3330 3131 1313 3333 0011 1001 1100 "
                                        "0110 0000 0000 0000 1000 0100 0010 0001 "
                                        "2000 0200 0020 0002 1020 0102 2010 0201 ";

/// The middle of each character with a double line, three tiles by three: a digit is a row, and
/// its bits are the tiles from left to right.
constexpr std::array<unsigned, last_double - first_double + 1> double_middles = {
    0707, 0555, 0323, 0075, 0745, 0626, 0075, 0715, 0323, 0570, 0547, 0626, 0570, 0517, 0323,
    0555, 0545, 0626, 0555, 0515, 0707, 0075, 0705, 0707, 0570, 0507, 0727, 0575, 0505};

/// Which of three tiles side by side a line covers, by its digit.
constexpr unsigned tiles_across[] = {0b000, 0b010, 0b111, 0b101};
constexpr std::size_t heavy = 2;

struct Arms {
    std::size_t left, up, right, down;
};

Arms armsOf(char32_t ch) {
    const auto digit = [&](std::size_t arm) {
        return static_cast<std::size_t>(arm_digits[(ch - 0x2500) * 5 + arm] - '0');
    };
    return {digit(0), digit(1), digit(2), digit(3)};
}

void addRectangle(std::vector<BoxPiece> &pieces, float left, float top, float right, float bottom,
                  float opacity = 1) {
    if (left < right && top < bottom)
        pieces.push_back({{{{left, top}, {right, top}, {right, bottom}, {left, bottom}}},
                          {opacity, opacity, opacity, opacity}});
}

/// A cell's lines lie on a grid of five tiles by five. A light line covers the middle tile, a
/// double one those beside it, a heavy one all three; the outer tiles reach to the edges.
struct Grid {
    std::array<float, 6> x;
    std::array<float, 6> y;

    Grid(const PixelArea &cell, float light)
        : x(edges(cell.left, cell.right, light)), y(edges(cell.top, cell.bottom, light)) {}

    static std::array<float, 6> edges(float from, float to, float light) {
        const float side = std::ceil(light / 2);
        const float middle = from + std::floor((to - from - light) / 2);
        std::array<float, 6> all{from,           middle - side,         middle,
                                 middle + light, middle + light + side, to};
        for (float &edge : all)
            edge = std::clamp(edge, from, to);
        return all;
    }
};

/// Lines that are not double reach as far into the middle as the one that crosses them is thick.
std::array<unsigned, 3> middleOf(const Arms &arms) {
    const bool is_upright_heavy = std::max(arms.up, arms.down) == heavy;
    const bool is_level_heavy = std::max(arms.left, arms.right) == heavy;
    std::array<unsigned, 3> rows{};
    for (unsigned row = 0; row < rows.size(); ++row) {
        const unsigned bit = 0b100U >> row;
        if ((tiles_across[arms.left] & bit) != 0)
            rows[row] |= is_upright_heavy ? 0b111U : 0b110U;
        if ((tiles_across[arms.right] & bit) != 0)
            rows[row] |= is_upright_heavy ? 0b111U : 0b011U;
        if (row < 2 || is_level_heavy)
            rows[row] |= tiles_across[arms.up];
        if (row > 0 || is_level_heavy)
            rows[row] |= tiles_across[arms.down];
    }
    return rows;
}

std::array<unsigned, 3> middleOf(char32_t ch, const Arms &arms) {
    if (ch < first_double || ch > last_double)
        return middleOf(arms);
    const unsigned middle = double_middles[ch - first_double];
    return {middle >> 6U, middle >> 3U & 7U, middle & 7U};
}

void addLines(std::vector<BoxPiece> &pieces, char32_t ch, const Grid &grid) {
    const Arms arms = armsOf(ch);
    const std::array<unsigned, 3> middle = middleOf(ch, arms);
    std::array<unsigned, 5> rows{tiles_across[arms.up] << 1U, 0, 0, 0,
                                 tiles_across[arms.down] << 1U};
    for (unsigned i = 0; i < middle.size(); ++i) {
        const unsigned bit = 0b100U >> i;
        rows[i + 1] = middle[i] << 1U | ((tiles_across[arms.left] & bit) != 0 ? 0b10000U : 0U) |
                      ((tiles_across[arms.right] & bit) != 0 ? 1U : 0U);
    }
    const auto is_set = [&](std::size_t row, std::size_t column) {
        return column < 5 && (rows[row] & 0b10000U >> column) != 0;
    };
    for (std::size_t row = 0, end_row = 0; row < rows.size(); row = end_row) {
        end_row = row + 1;
        while (end_row < rows.size() && rows[end_row] == rows[row])
            ++end_row; // Rows that are alike are one piece: fewer are faster.
        for (std::size_t column = 0, end = 0; column < 5; column = end + 1) {
            for (end = column; is_set(row, end);)
                ++end;
            addRectangle(pieces, grid.x[column], grid.y[row], grid.x[end], grid.y[end_row]);
        }
    }
}

/// How many dashes a line is broken into; 0 for a line that is whole.
int dashesOf(char32_t ch) {
    if (0x2504 <= ch && ch <= 0x250B)
        return ch < 0x2508 ? 3 : 4;
    return 0x254C <= ch && ch <= 0x254F ? 2 : 0;
}

void addDashes(std::vector<BoxPiece> &pieces, char32_t ch, const Grid &grid) {
    const Arms arms = armsOf(ch);
    const bool is_level = arms.left != 0;
    const bool is_heavy = std::max(arms.left, arms.up) == heavy;
    const auto &along = is_level ? grid.x : grid.y;
    const auto &across = is_level ? grid.y : grid.x;
    const float from = across[is_heavy ? 1 : 2];
    const float to = across[is_heavy ? 4 : 3];
    const float dash = (along[5] - along[0]) / static_cast<float>(dashesOf(ch)); // And its gap.
    const float length = std::max(1.0F, std::floor(dash * 2 / 3));
    for (int i = 0; i < dashesOf(ch); ++i) {
        const float middle = along[0] + (static_cast<float>(i) + 0.5F) * dash;
        const float begin = std::round(middle - length / 2);
        const float end = begin + length;
        if (is_level)
            addRectangle(pieces, begin, from, end, to);
        else
            addRectangle(pieces, from, begin, to, end);
    }
}

/// A stretch of a line that is `light` thick, with edges that fade out over a pixel. At each end,
/// `across` is the way from edge to edge, of length 1.
void addStretch(std::vector<BoxPiece> &pieces, const std::array<Vector, 2> &ends,
                const std::array<Vector, 2> &across, float light) {
    const float half = light / 2;
    const std::array<float, 4> edges{-half - 0.5F, -half + 0.5F, half - 0.5F, half + 0.5F};
    constexpr std::array<float, 4> opacity{0, 1, 1, 0};
    for (std::size_t i = 0; i + 1 < edges.size(); ++i)
        pieces.push_back({{ends[0] + across[0] * edges[i], ends[0] + across[0] * edges[i + 1],
                           ends[1] + across[1] * edges[i + 1], ends[1] + across[1] * edges[i]},
                          {opacity[i], opacity[i + 1], opacity[i + 1], opacity[i]}});
}

void addDiagonal(std::vector<BoxPiece> &pieces, Vector from, Vector to, float light) {
    const Vector way = to - from;
    const float length = std::hypot(way.x, way.y);
    const Vector across{-way.y / length, way.x / length};
    addStretch(pieces, {from, to}, {across, across}, light);
}

/// A quarter of a circle in the middle of the cell, and lines from its ends to the edges.
void addArc(std::vector<BoxPiece> &pieces, char32_t ch, const Grid &grid, float light) {
    constexpr int stretches = 8;
    const Arms arms = armsOf(ch);
    const Vector way{arms.right != 0 ? 1.0F : -1.0F, arms.down != 0 ? 1.0F : -1.0F};
    const Vector middle{(grid.x[2] + grid.x[3]) / 2, (grid.y[2] + grid.y[3]) / 2};
    const float radius = std::floor(std::min(grid.x[5] - grid.x[0], grid.y[5] - grid.y[0]) / 2);
    const Vector center = middle + way * radius;
    const auto outwards = [&](int i) {
        const float angle = static_cast<float>(i) / stretches * std::numbers::pi_v<float> / 2;
        return Vector{-way.x * std::cos(angle), -way.y * std::sin(angle)};
    };
    for (int i = 0; i < stretches; ++i)
        addStretch(pieces, {center + outwards(i) * radius, center + outwards(i + 1) * radius},
                   {outwards(i), outwards(i + 1)}, light);
    if (arms.down != 0)
        addRectangle(pieces, grid.x[2], center.y, grid.x[3], grid.y[5]);
    else
        addRectangle(pieces, grid.x[2], grid.y[0], grid.x[3], center.y);
    if (arms.right != 0)
        addRectangle(pieces, center.x, grid.y[2], grid.x[5], grid.y[3]);
    else
        addRectangle(pieces, grid.x[0], grid.y[2], center.x, grid.y[3]);
}

void addCurved(std::vector<BoxPiece> &pieces, char32_t ch, const PixelArea &cell, float light) {
    if (first_arc <= ch && ch <= last_arc)
        return addArc(pieces, ch, Grid(cell, light), light);
    if (ch != falling_diagonal)
        addDiagonal(pieces, {cell.left, cell.bottom}, {cell.right, cell.top}, light);
    if (ch != rising_diagonal)
        addDiagonal(pieces, {cell.left, cell.top}, {cell.right, cell.bottom}, light);
}

/// A part of the cell in eighths of its sides.
void addEighths(std::vector<BoxPiece> &pieces, const PixelArea &cell, std::array<int, 4> part,
                float opacity = 1) {
    const auto at = [](float from, float to, int eighths) {
        return from + std::round((to - from) * static_cast<float>(eighths) / 8);
    };
    addRectangle(pieces, at(cell.left, cell.right, part[0]), at(cell.top, cell.bottom, part[1]),
                 at(cell.left, cell.right, part[2]), at(cell.top, cell.bottom, part[3]), opacity);
}

void addBlock(std::vector<BoxPiece> &pieces, char32_t ch, const PixelArea &cell) {
    // Of U+2596 to U+259F, which quarters: 1 and 2 the upper, 4 and 8 the lower ones.
    constexpr int quarters[] = {4, 8, 1, 13, 9, 7, 11, 2, 6, 14};
    const int number = static_cast<int>(ch - first_block);
    if (number == 0)
        return addEighths(pieces, cell, {0, 0, 8, 4});
    if (number <= 8)
        return addEighths(pieces, cell, {0, 8 - number, 8, 8});
    if (number <= 15)
        return addEighths(pieces, cell, {0, 0, 16 - number, 8});
    if (number == 16)
        return addEighths(pieces, cell, {4, 0, 8, 8});
    if (number <= 19)
        return addEighths(pieces, cell, {0, 0, 8, 8}, static_cast<float>(number - 16) / 4);
    if (number == 20)
        return addEighths(pieces, cell, {0, 0, 8, 1});
    if (number == 21)
        return addEighths(pieces, cell, {7, 0, 8, 8});
    for (int quarter = 0; quarter < 4; ++quarter) {
        const int left = quarter % 2 * 4;
        const int top = quarter / 2 * 4;
        if ((quarters[number - 22] >> quarter & 1) != 0)
            addEighths(pieces, cell, {left, top, left + 4, top + 4});
    }
}

} // namespace

float lightLine(Vector cell_size) {
    constexpr float lines_across = 7;
    return std::max(1.0F, std::round(std::min(cell_size.x, cell_size.y) / lines_across));
}

void addBoxDrawing(std::vector<BoxPiece> &pieces, char32_t ch, const PixelArea &cell, float light) {
    if (ch >= first_block)
        addBlock(pieces, ch, cell);
    else if (dashesOf(ch) != 0)
        addDashes(pieces, ch, Grid(cell, light));
    else if ((first_arc <= ch && ch <= last_arc) || isDiagonal(ch))
        addCurved(pieces, ch, cell, light);
    else
        addLines(pieces, ch, Grid(cell, light));
}

} // namespace sv
