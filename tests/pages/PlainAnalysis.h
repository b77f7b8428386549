#pragma once

#include <QString>

/// A finished reply split as plainly as can be, without a thought of speed: what analyzePageReply() is
/// compared with. Gives what was found as one text, as describedAnalysis() does.
QString plainlyAnalyzed(const QString &text);

/// What analyzePageReply() gives for the text, as one text.
QString describedAnalysis(const QString &text);

/// The plain reading of the rule that hides a page while it streams.
QString plainlyHiddenPage(const QString &text);
