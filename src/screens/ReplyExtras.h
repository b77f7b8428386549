#pragma once

#include "conversation/Consent.h"
#include "records/Conversation.h"

#include <variant>

/// What a reply waits for the person to decide on.
using Asked = std::variant<std::monostate, PendingSearch, PendingPageOffer, PendingMemory>;

/// What belongs to a reply beside its words. A plain value.
struct ReplyExtras {
    std::optional<SearchEvent> search;
    std::optional<PageSnapshot> page;
    bool hasFailedPage = false; ///< a page was agreed on, and couldn't be made
    Asked asked;

    bool isEmpty() const { return *this == ReplyExtras(); }
    bool asks() const { return !std::holds_alternative<std::monostate>(asked); }
    bool operator==(const ReplyExtras &) const = default;
};

/// True if both draw the same. Pages that share their characters aren't compared.
inline bool drawsTheSame(const ReplyExtras &one, const ReplyExtras &other) {
    const bool isSamePage = one.page && other.page && one.page->title == other.page->title &&
                            one.page->markdown.isSharedWith(other.page->markdown);
    return one.search == other.search && (isSamePage || one.page == other.page) &&
           one.hasFailedPage == other.hasFailedPage && one.asked == other.asked;
}
