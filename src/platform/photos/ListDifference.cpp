#include "platform/photos/ListDifference.h"

#include <algorithm>
#include <cstdint>
#include <unordered_map>
#include <unordered_set>

namespace exifcard {
namespace {

using Numbers = std::vector<std::int64_t>;

/// Each move walks the list; more steps than these take longer than a screen that is made anew.
constexpr std::size_t kMostSteps = 20'000'000;

/// The part of a list that lies between what both have in common at their ends.
Numbers middle(const NumberList& list, std::size_t head, std::size_t tail) {
    Numbers numbers;
    numbers.reserve(list.count() - head - tail);
    for (std::size_t index = head; index < list.count() - tail; ++index) {
        numbers.push_back(list[index]);
    }
    return numbers;
}

/// Positions of `list` whose numbers are not in `other`; takes those numbers off the list.
std::vector<std::size_t> takeMissing(Numbers& list, const Numbers& other, std::size_t head) {
    const std::unordered_set<std::int64_t> known(other.begin(), other.end());
    std::vector<std::size_t> positions;
    Numbers kept;
    for (std::size_t index = 0; index < list.size(); ++index) {
        if (known.contains(list[index])) {
            kept.push_back(list[index]);
        } else {
            positions.push_back(head + index);
        }
    }
    list = std::move(kept);
    return positions;
}

/// Which elements of a list can stay where they are: those of one of its longest ascending parts.
std::vector<bool> longestAscending(const std::vector<std::size_t>& ranks) {
    std::vector<std::size_t> tails; // The position of the smallest last element of a part of each length.
    std::vector<std::size_t> before(ranks.size());
    for (std::size_t index = 0; index < ranks.size(); ++index) {
        const auto place = std::ranges::lower_bound(
            tails, ranks[index], {}, [&ranks](std::size_t position) { return ranks[position]; });
        before[index] = place == tails.begin() ? index : *(place - 1);
        if (place == tails.end()) {
            tails.push_back(index);
        } else {
            *place = index;
        }
    }
    std::vector<bool> stays(ranks.size(), false);
    std::size_t index = tails.empty() ? 0 : tails.back();
    for (std::size_t length = tails.size(); length > 0; --length) {
        stays[index] = true;
        index = before[index];
    }
    return stays;
}

/// The old list as it stands before the moves: what was inserted is at its place, the rest in the old order.
Numbers withInsertions(
    const Numbers& kept, const Numbers& after, const std::unordered_set<std::int64_t>& inserted) {
    Numbers list;
    auto next = kept.begin();
    for (const std::int64_t number : after) {
        list.push_back(inserted.contains(number) ? number : *next++);
    }
    return list;
}

/// Moves one element behind the one that it is to follow, or to the front.
std::pair<std::size_t, std::size_t> move(
    Numbers& list, std::int64_t number, std::optional<std::int64_t> predecessor) {
    const auto from = std::ranges::find(list, number);
    const auto start = static_cast<std::size_t>(from - list.begin());
    list.erase(from);
    const auto to = predecessor ? std::ranges::find(list, *predecessor) + 1 : list.begin();
    const auto end = static_cast<std::size_t>(to - list.begin());
    list.insert(to, number);
    return {start, end};
}

/// Turns `list` into `after`, of which it is another order.
std::optional<std::vector<std::pair<std::size_t, std::size_t>>> movesBetween(
    Numbers list, const Numbers& after) {
    std::unordered_map<std::int64_t, std::size_t> rankOf;
    for (std::size_t rank = 0; rank < after.size(); ++rank) {
        rankOf.emplace(after[rank], rank);
    }
    std::vector<std::size_t> ranks;
    for (const std::int64_t number : list) {
        ranks.push_back(rankOf.at(number));
    }
    const std::vector<bool> stays = longestAscending(ranks);
    std::vector<std::size_t> moving;
    for (std::size_t index = 0; index < list.size(); ++index) {
        if (!stays[index]) {
            moving.push_back(ranks[index]);
        }
    }
    if (moving.size() * list.size() > kMostSteps) {
        return std::nullopt;
    }
    std::ranges::sort(moving); // Then what each is to follow is in place already.
    std::vector<std::pair<std::size_t, std::size_t>> moves;
    for (const std::size_t rank : moving) {
        const auto predecessor = rank == 0 ? std::nullopt : std::optional(after[rank - 1]);
        moves.push_back(move(list, after[rank], predecessor));
    }
    return moves;
}

} // namespace

std::optional<ListDifference> differenceOfLists(const NumberList& before, const NumberList& after) {
    const std::size_t shorter = std::min(before.count(), after.count());
    std::size_t head = 0;
    while (head < shorter && before[head] == after[head]) {
        ++head;
    }
    std::size_t tail = 0;
    while (tail < shorter - head && before[before.count() - 1 - tail] == after[after.count() - 1 - tail]) {
        ++tail;
    }
    Numbers kept = middle(before, head, tail);
    const Numbers wanted = middle(after, head, tail);
    ListDifference difference;
    Numbers staying = wanted;
    difference.inserted = takeMissing(staying, kept, head);
    difference.removed = takeMissing(kept, wanted, head);
    if (kept == staying) {
        return difference;
    }
    std::unordered_set<std::int64_t> inserted;
    for (const std::size_t position : difference.inserted) {
        inserted.insert(after[position]);
    }
    auto moves = movesBetween(withInsertions(kept, wanted, inserted), wanted);
    if (!moves) {
        return std::nullopt;
    }
    for (auto& [from, to] : *moves) {
        from += head;
        to += head;
    }
    difference.moves = std::move(*moves);
    return difference;
}

} // namespace exifcard
