#pragma once

#include <QString>
#include <QStringView>

/// Repairs a reply into whose text the model wrote its thinking, between <think> or <thinking> tags.
/// Each function goes through the text once, however many tags there are and whether or not they are
/// closed. Any thread.

struct ExtractedThinking {
    QString text;     ///< what the tags left
    QString thinking; ///< what stood between them, one after the other; empty if there were none

    bool operator==(const ExtractedThinking &) const = default;
};

/// Takes the thinking out of a finished reply. Both parts come without white space at their ends; a
/// reply in which no "<think" stands, in this exact case, comes back as it is. A tag without its end
/// stays in the text.
ExtractedThinking extractThinking(const QString &text);

/// What of a reply a person may see while it comes: no thinking and no tool call, in tags of any case,
/// and nothing behind such a tag that has no end yet. A tag that has come only in part is still shown.
QString hideTags(const QString &text);
