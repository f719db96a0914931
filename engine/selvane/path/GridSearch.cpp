#include "selvane/path/GridSearch.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdlib>

namespace sv {

namespace {

/// Left of the grid or above it, a coordinate wraps around to a value beyond any grid.
Cell beside(Cell cell, int dx, int dy) {
    return {cell.x + static_cast<std::uint32_t>(dx), cell.y + static_cast<std::uint32_t>(dy)};
}

/// 0 to 8, from up left to down right.
constexpr std::uint32_t stepCode(int dx, int dy) {
    return static_cast<std::uint32_t>((dy + 1) * 3 + dx + 1);
}

Cell beforeStep(Cell cell, std::uint32_t code) {
    return {cell.x + 1 - code % 3, cell.y + 1 - code / 3};
}

// Costs and distances stay in single precision: whether two ways cost the same depends on it.

float stepLength(int dx, int dy) {
    static const float diagonal = std::sqrt(2.0F);
    return dx != 0 && dy != 0 ? diagonal : 1;
}

float straightLine(Cell from, Cell to) {
    const float dx = static_cast<float>(from.x) - static_cast<float>(to.x);
    const float dy = static_cast<float>(from.y) - static_cast<float>(to.y);
    return std::sqrt(dx * dx + dy * dy);
}

/// What orders the candidates, as one number: a lower cost counts more, and then a higher rank. The
/// bits of floats that are not negative are in the order of the floats.
std::uint64_t promise(float f, std::uint32_t rank) {
    return std::uint64_t{~std::bit_cast<std::uint32_t>(f)} << 32U | rank;
}

std::uint32_t rankOf(std::uint64_t promise) {
    return static_cast<std::uint32_t>(promise);
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
    enum class Answer : unsigned char { UNKNOWN, FREE, BLOCKED };

    bool isBlocked(int dx, int dy) {
        Answer &answer = answers[stepCode(dx, dy)];
        if (answer == Answer::UNKNOWN)
            answer = is_blocked(beside(centre, dx, dy)) ? Answer::BLOCKED : Answer::FREE;
        return answer == Answer::BLOCKED;
    }

    Cell centre;
    const CellTest &is_blocked;
    std::array<Answer, 9> answers{};
};

} // namespace

void GridSearch::Free::operator()(Node *block) const {
    std::free(block);
}

GridSearch::GridSearch(Cell new_size, Cell new_start, Cell new_goal)
    : size(new_size), start(new_start), goal(new_goal) {
    const std::uint64_t cells = std::uint64_t{size.x} * size.y;
    // All zero is a cell never seen. The system zeroes each page of a large block when it is first
    // touched, so that starting a search does not delay its step.
    if (cells > 0 && cells <= MAX_CELLS)
        nodes.reset(static_cast<Node *>(std::calloc(cells, sizeof(Node))));
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

/// The start if nothing is open. Closes the cell that it returns.
Cell GridSearch::takeMostPromising() {
    Cell taken = start;
    while (!candidates.empty()) {
        std::pop_heap(candidates.begin(), candidates.end());
        const std::uint32_t index = opened[rankOf(candidates.back()) - 1];
        candidates.pop_back();
        if (nodes[index].is_closed)
            continue;
        taken = {index % size.x, index / size.x};
        --open_count;
        break;
    }
    nodes[indexOf(taken)].is_closed = 1;
    return taken;
}

void GridSearch::openNeighbours(Cell current, const CellTest &is_blocked) {
    Surroundings around(current, is_blocked);
    const float g = nodes[indexOf(current)].g;
    for (int dy = -1; dy <= 1; ++dy) {
        for (int dx = -1; dx <= 1; ++dx) {
            const Cell neighbour = beside(current, dx, dy);
            const float new_g = g + stepLength(dx, dy);
            // What is blocked is asked last: it is the most expensive.
            if (isOnGrid(neighbour) && isWorth(nodes[indexOf(neighbour)], new_g) &&
                !around.stop(dx, dy))
                open(neighbour, new_g, stepCode(dx, dy));
        }
    }
}

/// Of equal ways the last one counts.
bool GridSearch::isWorth(const Node &node, float new_g) {
    return !node.is_closed && (node.rank == 0 || new_g <= node.g);
}

/// Opens a cell, or reroutes it.
void GridSearch::open(Cell cell, float g, std::uint32_t came_by) {
    const std::uint32_t index = indexOf(cell);
    Node &node = nodes[index];
    const bool was_open = node.rank != 0;
    const float rest = straightLine(cell, goal);
    const float f = g + rest;
    const bool is_more_promising = !was_open || f < node.g + rest;
    if (!was_open) {
        opened.push_back(index);
        node.rank = static_cast<std::uint32_t>(opened.size()) & (MAX_CELLS - 1);
        ++open_count;
    }
    node.g = g;
    node.came_by = came_by & 0xFU;
    if (!is_more_promising)
        return;
    candidates.push_back(promise(f, node.rank));
    std::push_heap(candidates.begin(), candidates.end());
}

std::vector<Cell> GridSearch::path() const {
    std::vector<Cell> way;
    if (!is_found)
        return way;
    for (Cell cell = goal; cell != start; cell = beforeStep(cell, nodes[indexOf(cell)].came_by))
        way.push_back(cell);
    way.push_back(start);
    std::reverse(way.begin(), way.end());
    return way;
}

} // namespace sv
