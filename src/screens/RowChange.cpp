#include "screens/RowChange.h"

#include <algorithm>
#include <iterator>

RowChange rowChange(const QList<MessageRowModel> &before, const QList<MessageRowModel> &after) {
    const auto sameMessage = [](const MessageRowModel &one, const MessageRowModel &other) {
        return one.id == other.id;
    };
    const auto fromStart =
        std::mismatch(before.cbegin(), before.cend(), after.cbegin(), after.cend(), sameMessage);
    const auto fromEnd =
        std::mismatch(before.crbegin(), std::make_reverse_iterator(fromStart.first), after.crbegin(),
                      std::make_reverse_iterator(fromStart.second), sameMessage);
    const int first = int(std::distance(before.cbegin(), fromStart.first));
    const int kept = first + int(std::distance(before.crbegin(), fromEnd.first));
    return {first, int(before.size()) - kept, int(after.size()) - kept};
}
