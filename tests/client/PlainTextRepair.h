#pragma once

#include "client/TextRepair.h"
#include "client/WrittenToolCalls.h"

#include <random>

/// The repair of a reply's text by regular expressions, as plainly as can be: what the quick one is
/// compared with.

ExtractedThinking plainlyExtractedThinking(const QString &text);
ExtractedToolCalls plainlyExtractedToolCalls(const QString &text);
QString plainlyHiddenTags(QString text);

/// A text put together by chance from tags, whole ones and broken ones.
QString taggedText(std::mt19937 &random);
