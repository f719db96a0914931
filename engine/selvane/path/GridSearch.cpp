#include "selvane/path/GridSearch.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>
#include <numbers>
#include <utility>

namespace sv {

namespace {

// Costs and distances stay in single precision: whether two ways cost the same depends on it.

constexpr float DIAGONAL = std::numbers::sqrt2_v<float>;

struct Step {
    int dx;
    int dy;
    float length;
};

/// In the order in which a cell's neighbours are opened.
constexpr std::array<Step, 8> STEPS{{{-1, -1, DIAGONAL},
                                     {0, -1, 1},
                                     {1, -1, DIAGONAL},
                                     {-1, 0, 1},
                                     {1, 0, 1},
                                     {-1, 1, DIAGONAL},
                                     {0, 1, 1},
                                     {1, 1, DIAGONAL}}};

/// Left of the grid or above it, a coordinate wraps around to a value beyond any grid.
Cell beside(Cell cell, int dx, int dy) {
    return {cell.x + static_cast<std::uint32_t>(dx), cell.y + static_cast<std::uint32_t>(dy)};
}

float straightLine(Cell from, Cell to) {
    const float dx = static_cast<float>(from.x) - static_cast<float>(to.x);
    const float dy = static_cast<float>(from.y) - static_cast<float>(to.y);
    return std::sqrt(dx * dx + dy * dy);
}

/// What is blocked around a cell. Asks about each neighbour at most once: those beside the cell
/// decide on the diagonal steps too, and the query may be expensive.
class Surroundings {
  public:
    Surroundings(Cell new_centre, const CellTest &new_is_blocked)
        : centre(new_centre), is_blocked(new_is_blocked) {}

    bool stop(int dx, int dy) {
        if (isBlocked(dx, dy))
            return true;
        return dx != 0 && dy != 0 && isBlocked(dx, 0) && isBlocked(0, dy);
    }

  private:
    bool isBlocked(int dx, int dy) {
        const unsigned bit = 1U << static_cast<unsigned>((dy + 1) * 3 + dx + 1);
        if ((asked & bit) == 0) {
            asked |= bit;
            blocked |= is_blocked(beside(centre, dx, dy)) ? bit : 0;
        }
        return (blocked & bit) != 0;
    }

    Cell centre;
    const CellTest &is_blocked;
    unsigned asked = 0;
    unsigned blocked = 0;
};

} // namespace

void GridSearch::Free::operator()(Node *block) const {
    std::free(block);
}

GridSearch::GridSearch(Cell new_size, Cell new_start, Cell new_goal)
    : size(new_size), start(new_start), goal(new_goal), candidates(straightLine(start, goal)) {
    const std::uint64_t cells = std::uint64_t{size.x} * size.y;
    // All zero is a cell never seen. Of a very large block the system zeroes each page when it is
    // first touched, so that starting a search does not delay its step.
    if (cells > 0 && cells <= MAX_CELLS)
        nodes.reset(static_cast<Node *>(std::calloc(cells, sizeof(Node))));
    if (nodes)
        nodes[indexOf(start)].merit = CLOSED;
}

bool GridSearch::expand(const CellTest &is_blocked, const CellTest &is_end) {
    const Cell current = takeMostPromising();
    if (current == goal || is_end(current)) {
        goal = current;
        is_found = true;
        return false;
    }
    openNeighbours(current, is_blocked);
    return open_count > 0;
}

/// The start if nothing is open.
Cell GridSearch::takeMostPromising() {
    if (open_count == 0)
        return start;
    --open_count;
    const std::uint32_t index =
        candidates.take([this](std::uint32_t i) { return nodes[i].merit == CLOSED; });
    return {index % size.x, index / size.x};
}

/// A bit for each of the steps that lead to a cell on the grid that is not closed, at no higher
/// cost than is known: of equal ways the last one counts.
unsigned GridSearch::worthwhileSteps(Cell from, float g) const {
    const std::uint32_t straight = meritOf(g + 1);
    const std::uint32_t diagonal = meritOf(g + DIAGONAL);
    const std::uint32_t own = indexOf(from); // Stands for what is off the grid: it is closed.
    const auto worth = [&](unsigned i) {
        const Step step = STEPS[i];
        const Cell to = beside(from, step.dx, step.dy);
        const std::uint32_t index = isOnGrid(to) ? indexOf(to) : own;
        return unsigned{nodes[index].merit <= (step.length > 1 ? diagonal : straight)} << i;
    };
    return worth(0) | worth(1) | worth(2) | worth(3) | worth(4) | worth(5) | worth(6) | worth(7);
}

/// Closes the cell itself.
void GridSearch::openNeighbours(Cell current, const CellTest &is_blocked) {
    const float g = costOf(std::exchange(nodes[indexOf(current)].merit, CLOSED));
    Surroundings around(current, is_blocked);
    for (unsigned steps = worthwhileSteps(current, g); steps != 0; steps &= steps - 1) {
        const auto number = static_cast<unsigned>(std::countr_zero(steps));
        const Step &step = STEPS[number];
        if (!around.stop(step.dx, step.dy))
            open(beside(current, step.dx, step.dy), g + step.length, number);
    }
}

/// Opens a cell, or reroutes it.
void GridSearch::open(Cell cell, float g, unsigned came_by) {
    const std::uint32_t index = indexOf(cell);
    Node &node = nodes[index];
    const bool was_open = node.rank != 0;
    const float rest = straightLine(cell, goal);
    const float f = g + rest;
    const bool is_more_promising = !was_open || f < costOf(node.merit) + rest;
    if (!was_open) {
        node.rank = ++opened_count & (MAX_CELLS - 1);
        ++open_count;
    }
    node.merit = meritOf(g);
    node.came_by = came_by & 0xFFU;
    if (is_more_promising)
        candidates.push(f, node.rank, index);
}

std::vector<Cell> GridSearch::path() const {
    std::vector<Cell> way;
    if (!is_found)
        return way;
    for (Cell cell = goal; cell != start;) {
        way.push_back(cell);
        const Step &step = STEPS[nodes[indexOf(cell)].came_by];
        cell = beside(cell, -step.dx, -step.dy);
    }
    way.push_back(start);
    std::reverse(way.begin(), way.end());
    return way;
}

} // namespace sv
