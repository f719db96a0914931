#include "selvane/path/GridSearch.h"

#include <algorithm>
#include <cmath>
#include <gtest/gtest.h>
#include <ostream>
#include <random>
#include <string>
#include <vector>

namespace sv {

static void PrintTo(Cell cell, std::ostream *out) {
    *out << "(" << cell.x << ", " << cell.y << ")";
}

namespace {

using Cells = std::vector<Cell>;

/// A map of free and blocked ('#') cells, and where the search starts and ends.
struct Map {
    std::vector<std::string> rows;
    Cell start;
    Cell goal;

    Cell size() const {
        return {static_cast<std::uint32_t>(rows[0].size()),
                static_cast<std::uint32_t>(rows.size())};
    }
    bool isBlocked(Cell cell) const { return rows.at(cell.y).at(cell.x) == '#'; }
};

struct Result {
    Cells path;
    std::size_t expansions;
};

bool never(Cell /*cell*/) {
    return false;
}

Result search(const Map &map, const CellTest &is_end) {
    GridSearch search(map.size(), map.start, map.goal);
    const CellTest is_blocked = [&](Cell cell) { return map.isBlocked(cell); };
    std::size_t expansions = 1;
    while (search.expand(is_blocked, is_end))
        ++expansions;
    return {search.path(), expansions};
}

/// The same search without a heap: it scans a list of open cells from its end, and keeps a list of
/// closed ones.
class Scan {
  public:
    explicit Scan(const Map &new_map) : map(new_map), open{map.start} {}

    Result run(const CellTest &is_end) {
        while (!open.empty()) {
            const Cell current = takeBest();
            closed.push_back(current);
            if (current == map.goal || is_end(current))
                return {pathTo(current), closed.size()};
            for (int i = 0; i < 9; ++i)
                if (i != 4)
                    step(current, i % 3 - 1, i / 3 - 1);
        }
        return {{}, closed.size()};
    }

  private:
    struct Node {
        float g = 0;
        float f = 0;
        Cell parent;
    };

    static bool has(const Cells &list, Cell cell) {
        return std::ranges::find(list, cell) != list.end();
    }

    Node &at(Cell cell) { return nodes[cell.y * map.size().x + cell.x]; }

    Cell takeBest() {
        const auto f_at = [&](Cell cell) { return at(cell).f; };
        const Cell best = *std::ranges::min_element(open.rbegin(), open.rend(), {}, f_at);
        std::erase(open, best);
        return best;
    }

    void step(Cell from, int dx, int dy) {
        const Cell to{from.x + static_cast<unsigned>(dx), from.y + static_cast<unsigned>(dy)};
        if (to.x >= map.size().x || to.y >= map.size().y || has(closed, to) || map.isBlocked(to))
            return;
        if (dx != 0 && dy != 0 && map.isBlocked({to.x, from.y}) && map.isBlocked({from.x, to.y}))
            return;
        const float g = at(from).g + std::sqrt(static_cast<float>(dx * dx + dy * dy));
        if (has(open, to) && g > at(to).g)
            return;
        if (!has(open, to))
            open.push_back(to);
        const float x = static_cast<float>(to.x) - static_cast<float>(map.goal.x);
        const float y = static_cast<float>(to.y) - static_cast<float>(map.goal.y);
        at(to) = {g, g + std::sqrt(x * x + y * y), from};
    }

    Cells pathTo(Cell end) {
        Cells path{end};
        while (path.back() != map.start)
            path.push_back(at(path.back()).parent);
        std::reverse(path.begin(), path.end());
        return path;
    }

    const Map &map;
    std::vector<Node> nodes = std::vector<Node>(std::size_t{map.size().x} * map.size().y);
    Cells open;
    Cells closed;
};

Map randomMap(std::mt19937 &random) {
    const auto below = [&](std::size_t limit) {
        return static_cast<std::uint32_t>(random() % limit);
    };
    const std::uint32_t percent_blocked = below(6) * 10;
    Map map;
    map.rows.assign(1 + below(24), std::string(1 + below(48), '.'));
    for (std::string &row : map.rows)
        for (char &cell : row)
            cell = below(100) < percent_blocked ? '#' : '.';
    const auto place = [&] { return Cell{below(map.rows[0].size()), below(map.rows.size())}; };
    map.start = place();
    map.goal = place();
    map.rows[map.goal.y][map.goal.x] = '.';
    return map;
}

TEST(GridSearch, matches_a_plain_scan_on_any_map) {
    std::mt19937 random(4);
    int found = 0;
    for (int i = 0; i < 600; ++i) {
        SCOPED_TRACE(i);
        const Map map = randomMap(random);
        // Every third search may end near the goal, as with a target larger than a cell.
        const CellTest near = [&](Cell cell) {
            return std::hypot(static_cast<double>(cell.x) - map.goal.x,
                              static_cast<double>(cell.y) - map.goal.y) < 2.5;
        };
        const CellTest is_end = i % 3 == 0 ? near : never;
        const Result result = search(map, is_end);
        const Result expected = Scan(map).run(is_end);
        ASSERT_EQ(result.path, expected.path);
        ASSERT_EQ(result.expansions, expected.expansions);
        found += result.path.empty() ? 0 : 1;
    }
    EXPECT_GT(found, 300);
    EXPECT_LT(found, 600);
}

TEST(GridSearch, allocates_no_empty_or_too_large_grid) {
    EXPECT_TRUE(GridSearch({1, GridSearch::MAX_CELLS}, {}, {}).isAllocated());
    for (const Cell size :
         {Cell{}, Cell{0, 5}, Cell{1, GridSearch::MAX_CELLS + 1}, Cell{4097, 4096}, Cell{~0U, ~0U}})
        EXPECT_FALSE(GridSearch(size, {}, {}).isAllocated());
}

} // namespace
} // namespace sv
