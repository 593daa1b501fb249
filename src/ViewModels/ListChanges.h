// The steps that turn one list into another.
#pragma once

#include <QUuid>

#include <vector>

namespace wrapio {

/// One step; positions are those of the list as the steps before have left it.
struct ListChange {
    enum class Kind {
        remove,  ///< the entries from `first` to `last` go
        move,    ///< the entry at `first` gets to be at `to`, counted without it
        insert,  ///< entries come in that are at `first` to `last` from now on
    };
    Kind kind = Kind::remove;
    int first = 0;
    int last = 0;
    int to = 0;

    bool operator==(const ListChange&) const = default;
};

/// The steps from `before` to `after`: removals, then the fewest moves, then insertions. Insertions bring in the
/// entries of `after` at their final positions. An id may occur more than once.
[[nodiscard]] std::vector<ListChange> listChanges(const std::vector<QUuid>& before, const std::vector<QUuid>& after);

}  // namespace wrapio
