/// The cells that a search may expand next: the one with the lowest cost first, and among equals
/// the one with the highest rank.
///
/// What a search finds costs little more than the cell that it took last. So costs are cut into
/// slices: each later slice is a list without any order. The current one was sorted when it was
/// entered, and what was found for it since is a heap, which stays small.
#pragma once

#include <algorithm>
#include <array>
#include <bit>
#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

namespace sv {

/// A cost as a number that is higher for a lower cost, and never 0. The bits of floats that are not
/// negative are in the order of the floats.
inline std::uint32_t meritOf(float cost) {
    return ~std::bit_cast<std::uint32_t>(cost);
}

inline float costOf(std::uint32_t merit) {
    return std::bit_cast<float>(~merit);
}

class CandidateQueue {
  public:
    /// Costs below the least one are in order as well, but slow.
    explicit CandidateQueue(float least_cost) : slice(sliceOf(least_cost)) { lists.fill(NONE); }

    /// REQUIRES: the cost is not negative.
    void push(float cost, std::uint32_t rank, std::uint32_t index) {
        const Candidate candidate{std::uint64_t{meritOf(cost)} << 32U | rank, index, NONE};
        if (candidate.slice() > slice)
            return putOff(candidate);
        found.push_back(candidate);
        std::push_heap(found.begin(), found.end());
    }

    /// Takes the best candidate that is not outdated; returns its index. It may drop others that
    /// are outdated, so these have to stay so.
    ///
    /// REQUIRES: there is one that is not outdated.
    template<typename IsOutdated>
    std::uint32_t take(const IsOutdated &is_outdated) {
        std::uint32_t index = 0;
        do {
            while (sorted.empty() && found.empty())
                enterNextSlice(is_outdated);
            index = takeBest();
        } while (is_outdated(index));
        return index;
    }

  private:
    struct Candidate {
        std::uint64_t promise; // The cost's merit, and then the rank.
        std::uint32_t index;
        std::uint32_t next; // In its list.

        bool operator<(const Candidate &other) const { return promise < other.promise; }
        std::int64_t slice() const {
            return sliceOf(costOf(static_cast<std::uint32_t>(promise >> 32U)));
        }
    };

    /// A word has a bit for each list. They cover four of cost: a step along the grid adds less
    /// than three.
    static constexpr float SLICES_PER_COST = 16;
    static constexpr std::size_t LISTS = 64;
    static constexpr std::uint32_t NONE = ~0U;

    static std::int64_t sliceOf(float cost) {
        return static_cast<std::int64_t>(cost * SLICES_PER_COST);
    }

    static std::size_t listOf(std::int64_t slice) {
        return static_cast<std::size_t>(slice) % LISTS;
    }

    /// Drops what is outdated, which saves sorting it.
    template<typename IsOutdated>
    void enterNextSlice(const IsOutdated &is_outdated) {
        std::uint32_t place = beginNextSlice();
        while (place != NONE) {
            const Candidate candidate = later[place];
            later[place].next = std::exchange(unused, place);
            place = candidate.next;
            if (is_outdated(candidate.index))
                continue;
            if (candidate.slice() > slice)
                putOff(candidate);
            else
                sorted.push_back(candidate);
        }
        std::sort(sorted.begin(), sorted.end());
    }

    /// Moves on to the next slice with a list; returns the first place in it, and empties it.
    std::uint32_t beginNextSlice() {
        ++slice;
        slice += std::countr_zero(std::rotr(filled_lists, static_cast<int>(listOf(slice))));
        const std::size_t list = listOf(slice);
        filled_lists &= ~(std::uint64_t{1} << list);
        return std::exchange(lists[list], NONE);
    }

    /// A list may hold candidates of a slice that comes a round later: they are put off again.
    void putOff(const Candidate &candidate) {
        const std::size_t list = listOf(candidate.slice());
        if (unused == NONE) {
            unused = static_cast<std::uint32_t>(later.size());
            later.push_back({0, 0, NONE});
        }
        const std::uint32_t place = std::exchange(unused, later[unused].next);
        later[place] = {candidate.promise, candidate.index, std::exchange(lists[list], place)};
        filled_lists |= std::uint64_t{1} << list;
    }

    std::uint32_t takeBest() {
        std::vector<Candidate> *from = &sorted;
        if (sorted.empty() || (!found.empty() && sorted.back() < found.front())) {
            std::pop_heap(found.begin(), found.end());
            from = &found;
        }
        const std::uint32_t index = from->back().index;
        from->pop_back();
        return index;
    }

    std::int64_t slice;            // The current one.
    std::vector<Candidate> sorted; // The best one comes last.
    std::vector<Candidate> found;  // A heap, also of what belongs into an earlier slice.
    std::vector<Candidate> later;  // In lists. The unused places are a list, too.
    std::uint32_t unused = NONE;
    std::array<std::uint32_t, LISTS> lists{}; // Their first places.
    std::uint64_t filled_lists = 0;           // A bit for each.
};

} // namespace sv
