#pragma once

#include "records/Conversation.h"

#include <QString>

#include <optional>
#include <variant>

/// Why a finished reply gives no page.
namespace issue {

/// A fence inside the page names neither a directive nor a language of code.
struct UnknownDirective {
    QString name; ///< trimmed, in lower case

    bool operator==(const UnknownDirective &) const = default;
};

/// The reply has no opening line of a page.
struct Missing {
    bool operator==(const Missing &) const = default;
};

/// The reply ends before the page does.
struct UnclosedFence {
    bool operator==(const UnclosedFence &) const = default;
};

/// Nothing stands in the page but white space.
struct Empty {
    bool operator==(const Empty &) const = default;
};

} // namespace issue

using PageIssue = std::variant<issue::UnknownDirective, issue::Missing, issue::UnclosedFence, issue::Empty>;

/// A finished reply, split. It has either a page or an issue.
struct PageAnalysis {
    QString visible; ///< what the chat shows
    std::optional<PageSnapshot> page;
    std::optional<PageIssue> issue;

    bool operator==(const PageAnalysis &) const = default;
};

/// Splits the text of a finished reply: a page stands between the first line "```page" and the bare fence
/// that closes it, with whole fences in between. Only the page's text is taken as it stands; what is left
/// of the reply is trimmed. A text without an opening line stays as it is. Never fails. Linear in the
/// text. Any thread.
PageAnalysis analyzePageReply(const QString &text);

/// The name of the first fence line that names neither a directive nor a language of code, trimmed and in
/// lower case; nothing if there is none. What stands behind a colon isn't looked at. Any thread.
std::optional<QString> firstUnknownDirective(QStringView markdown);

/// The title of a page: its first line that says something, without the marks of a heading and of strong
/// text, and at most 60 characters of it; `fallback` if no line says anything. Any thread.
QString derivePageTitle(QStringView markdown, const QString &fallback);

/// What the chat shows of a reply that is still coming: the lines before the first one that, without the
/// blanks around it, begins with "```page" in exactly these letters; all of it if there is none. This is
/// deliberately coarser than what a finished reply is split by: the page may not be closed yet. A view
/// into `text`, in one pass. Any thread.
QStringView hidePageWhileStreaming(QStringView text);
