#include "ViewModels/ListChanges.h"

#include <QHash>

#include <algorithm>
#include <optional>

namespace wrapio {

namespace {

/// An entry: its id, and which of the entries of that id it is.
using Key = std::pair<QUuid, int>;
using Places = QHash<Key, int>;

std::vector<Key> keysOf(const std::vector<QUuid>& ids) {
    QHash<QUuid, int> seen;
    std::vector<Key> keys;
    keys.reserve(ids.size());
    for (const QUuid& id : ids)
        keys.emplace_back(id, seen[id]++);
    return keys;
}

Places placesOf(const std::vector<Key>& keys) {
    Places places;
    places.reserve(static_cast<qsizetype>(keys.size()));
    for (std::size_t i = 0; i < keys.size(); ++i)
        places.insert(keys[i], static_cast<int>(i));
    return places;
}

/// The runs of positions, in rising order, at which `holds` is true.
template <typename Predicate>
std::vector<std::pair<int, int>> runsWhere(const std::vector<Key>& keys, Predicate holds) {
    std::vector<std::pair<int, int>> runs;
    for (int i = 0; i < static_cast<int>(keys.size()); ++i) {
        if (!holds(keys[static_cast<std::size_t>(i)]))
            continue;
        if (!runs.empty() && runs.back().second == i - 1)
            runs.back().second = i;
        else
            runs.emplace_back(i, i);
    }
    return runs;
}

/// Marks the members of a longest rising subsequence of `values`, which are all different.
std::vector<bool> longestRisingSubsequence(const std::vector<int>& values) {
    constexpr std::size_t none = static_cast<std::size_t>(-1);
    std::vector<std::size_t> tails;  // tails[k]: where the best subsequence of k + 1 members ends
    std::vector<std::size_t> previous(values.size(), none);
    for (std::size_t i = 0; i < values.size(); ++i) {
        const auto tail = std::lower_bound(tails.begin(), tails.end(), values[i],
                                           [&values](std::size_t at, int value) { return values[at] < value; });
        if (tail != tails.begin())
            previous[i] = *std::prev(tail);
        if (tail == tails.end())
            tails.push_back(i);
        else
            *tail = i;
    }
    std::vector<bool> member(values.size(), false);
    for (std::size_t i = tails.empty() ? none : tails.back(); i != none; i = previous[i])
        member[i] = true;
    return member;
}

/// Sorts `order` by moving as few entries as possible and tells each move.
void appendMoves(std::vector<int> order, std::vector<ListChange>& changes) {
    if (std::is_sorted(order.begin(), order.end()))
        return;
    const std::vector<bool> stays = longestRisingSubsequence(order);
    std::vector<bool> settled(static_cast<std::size_t>(*std::max_element(order.begin(), order.end())) + 1, false);
    std::vector<int> movers;
    for (std::size_t i = 0; i < order.size(); ++i) {
        settled[static_cast<std::size_t>(order[i])] = stays[i];
        if (!stays[i])
            movers.push_back(order[i]);
    }
    std::sort(movers.begin(), movers.end());
    for (const int mover : movers) {
        const auto from = std::find(order.begin(), order.end(), mover) - order.begin();
        order.erase(order.begin() + from);
        // Behind the last of those that are in place and belong before it.
        auto to = static_cast<std::ptrdiff_t>(order.size());
        while (to > 0) {
            const int before = order[static_cast<std::size_t>(to - 1)];
            if (before < mover && settled[static_cast<std::size_t>(before)])
                break;
            --to;
        }
        order.insert(order.begin() + to, mover);
        settled[static_cast<std::size_t>(mover)] = true;
        if (to != from)
            changes.push_back(
                {ListChange::Kind::move, static_cast<int>(from), static_cast<int>(from), static_cast<int>(to)});
    }
}

}  // namespace

std::vector<ListChange> listChanges(const std::vector<QUuid>& before, const std::vector<QUuid>& after) {
    if (before == after)
        return {};
    const std::vector<Key> oldKeys = keysOf(before);
    const std::vector<Key> newKeys = keysOf(after);
    const Places oldPlaces = placesOf(oldKeys);
    const Places newPlaces = placesOf(newKeys);
    std::vector<ListChange> changes;

    auto removed = runsWhere(oldKeys, [&newPlaces](const Key& key) { return !newPlaces.contains(key); });
    std::reverse(removed.begin(), removed.end());
    for (const auto& [first, last] : removed)
        changes.push_back({ListChange::Kind::remove, first, last, 0});

    std::vector<int> order;  // of each entry that remains, its place in the new list
    for (const Key& key : oldKeys) {
        if (const auto place = newPlaces.constFind(key); place != newPlaces.constEnd())
            order.push_back(*place);
    }
    appendMoves(std::move(order), changes);

    for (const auto& [first, last] : runsWhere(newKeys, [&](const Key& key) { return !oldPlaces.contains(key); }))
        changes.push_back({ListChange::Kind::insert, first, last, 0});
    return changes;
}

}  // namespace wrapio
