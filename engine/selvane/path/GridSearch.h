/// A* search for the shortest path on a grid with eight neighbours per cell, one expansion a call.
/// It knows no world: it asks which cells are blocked, and asks again in every expansion, so that
/// they may change meanwhile.
///
/// Owns its nodes, eight bytes per cell; the system provides memory only for cells that are
/// reached. Any thread, one at a time.
#pragma once

#include "selvane/path/CandidateQueue.h"

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace sv {

/// A position on a grid, or its size; x counts to the right, y downwards, both from 0.
struct Cell {
    std::uint32_t x = 0;
    std::uint32_t y = 0;

    friend constexpr bool operator==(Cell, Cell) = default;
};

using CellTest = std::function<bool(Cell)>;

class GridSearch {
  public:
    /// Cells of the largest grid, for instance 4096 by 4096: a node counts cells in 24 bits, and
    /// the nodes take 128 MiB.
    static constexpr std::uint32_t MAX_CELLS = 1U << 24U;

    /// REQUIRES: start and goal are on the grid, unless it is empty or too large.
    GridSearch(Cell size, Cell new_start, Cell new_goal);

    /// Whether it can search: false if the grid is empty or too large, or the memory is short.
    bool isAllocated() const { return nodes != nullptr; }

    /// Expands the most promising cell: the one whose cost so far plus straight-line distance to
    /// the goal is least, and among equals the one seen last. True if the search goes on; false if
    /// it has found the goal or has nothing left to expand.
    ///
    /// A diagonal step passes one blocked corner, not two. If `is_end` is true for the expanded
    /// cell, the search ends there as if that were the goal.
    ///
    /// REQUIRES: isAllocated().
    bool expand(const CellTest &is_blocked, const CellTest &is_end);

    bool isFound() const { return is_found; }
    Cell getGoal() const { return goal; }

    /// From the start to the goal, both included; empty unless found.
    std::vector<Cell> path() const;

  private:
    struct Node {
        std::uint32_t merit;       // Of the cost of the way from the start; 0: never seen.
        std::uint32_t rank : 24;   // Counts the cells as they are first opened, from 1; 0: never.
        std::uint32_t came_by : 8; // The step that led here, see STEPS.
    };
    static_assert(sizeof(Node) == 8);

    struct Free {
        void operator()(Node *block) const;
    };

    /// The merit of a cell that has been expanded: no other way to it is worth taking. It is that
    /// of the cost 0, the start's.
    static constexpr std::uint32_t CLOSED = ~0U;

    bool isOnGrid(Cell cell) const { return cell.x < size.x && cell.y < size.y; }
    std::uint32_t indexOf(Cell cell) const { return cell.y * size.x + cell.x; }
    Cell takeMostPromising();
    unsigned worthwhileSteps(Cell from, float g) const;
    void openNeighbours(Cell current, const CellTest &is_blocked);
    void open(Cell cell, float g, unsigned came_by);

    Cell size;
    Cell start;
    Cell goal;
    bool is_found = false;
    std::unique_ptr<Node[], Free> nodes;
    // A cell that became cheaper is in it twice; when taken again, it is closed.
    CandidateQueue candidates;
    std::uint32_t opened_count = 0; // Cells that were ever open.
    std::uint32_t open_count = 0;   // Cells that are open now.
};

} // namespace sv
