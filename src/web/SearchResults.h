#pragma once

#include "records/Conversation.h"

#include <optional>

/// Reads a search page. The functions take time that grows with the page alone. Any thread.

/// The first five results of the page, numbered from 1: links of the class "result__a" that lead to a page,
/// each with the text of the class "result__snippet" that has its number, if there is one. A link that leads
/// nowhere takes no number.
QList<SearchSource> parseSearchResults(const QString &html);

/// Where a result's link leads to: the value of its query item "uddg", which the search's own redirector
/// has, else the link itself if it is one of http or https; nothing if it is neither.
std::optional<QString> resolveResultURL(const QString &href);
