/// The search for the shortest way over a grid of cells, A* with eight neighbours, one expansion a
/// call. It knows no world: it asks which cells are blocked, and asks anew in every expansion, so
/// that they may change while it runs.
///
/// Owns its node graph, eight bytes a cell, of which the system provides only what is reached. Any
/// thread, one at a time.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <vector>

namespace sv {

/// A place on a grid, or its size; x counts to the right, y downwards, both from 0.
struct Cell {
    std::uint32_t x = 0;
    std::uint32_t y = 0;

    friend constexpr bool operator==(Cell, Cell) = default;
};

using CellTest = std::function<bool(Cell)>;

class GridSearch {
  public:
    /// The largest grid, for instance 4096 by 4096: a node counts cells in 24 bits, and the graph
    /// takes 128 MiB.
    static constexpr std::uint32_t MAX_CELLS = 1U << 24U;

    /// REQUIRES: start and goal lie on the grid, unless that is empty or too large.
    GridSearch(Cell size, Cell new_start, Cell new_goal);

    /// Whether it can search: false if the grid is empty or too large, or if there is no memory for
    /// it.
    bool isAllocated() const { return nodes != nullptr; }

    /// Expands the most promising cell: the one with the least sum of its cost so far and the
    /// straight line to the goal, and among equals the one that was seen last. True if the search
    /// goes on; false if it has found the goal, or if there is nothing left to expand.
    ///
    /// A diagonal step passes one blocked corner, not two. `is_end` is asked about the cell that is
    /// expanded: where it says so, the search ends as if that were the goal.
    ///
    /// REQUIRES: isAllocated().
    bool expand(const CellTest &is_blocked, const CellTest &is_end);

    bool isFound() const { return is_found; }
    Cell getGoal() const { return goal; }

    /// From the start to the goal, both included; empty unless it is found.
    std::vector<Cell> path() const;

  private:
    struct Node {
        float g;                     // What the way from the start costs.
        std::uint32_t rank : 24;     // When it was first opened, from 1; 0: never.
        std::uint32_t came_by : 7;   // The step that led here, see stepCode().
        std::uint32_t is_closed : 1; // It has been expanded.
    };
    static_assert(sizeof(Node) == 8);

    struct Candidate {
        float f; // The cost so far and the straight line to the goal.
        std::uint32_t rank;
        std::uint32_t index;
    };

    struct Free {
        void operator()(Node *p_nodes) const;
    };

    static bool isLessPromising(const Candidate &a, const Candidate &b);
    bool isOnGrid(Cell cell) const { return cell.x < size.x && cell.y < size.y; }
    std::uint32_t indexOf(Cell cell) const { return cell.y * size.x + cell.x; }
    Cell takeMostPromising();
    void openNeighbours(Cell current, const CellTest &is_blocked);
    void open(Cell from, int dx, int dy);

    Cell size;
    Cell start;
    Cell goal;
    bool is_found = false;
    std::unique_ptr<Node[], Free> nodes;
    // A heap. A cell that became cheaper is in it twice; the second time it is taken it is closed.
    std::vector<Candidate> candidates;
    std::uint32_t opened = 0;     // Cells that were ever open.
    std::uint32_t open_count = 0; // Cells that are.
};

} // namespace sv
