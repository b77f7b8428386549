#pragma once

#include "pages/PageDocument.h"
#include "records/Conversation.h"

#include <optional>

/// What becomes of a reply that is to be a page. Any thread.

/// What the model is told before it tries once more.
QString pageCorrection();

/// The same if no page can be made of a finished reply; nothing if one can.
std::optional<QString> correctionOf(const QString &content);

/// Splits the chat's last reply into its text and its page. If a page was agreed on and can't be made, the
/// message says so. Gives the draft of a page that was agreed on, dated `now`; nothing where there is none.
std::optional<PageDocument> finishPage(Conversation &conversation, bool isAccepted, const QDateTime &now);

/// The page of a message as a new document, dated `now`.
PageDocument draftOf(const PageSnapshot &page, const QDateTime &now);
