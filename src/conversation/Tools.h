#pragma once

#include "conversation/TurnPoints.h"
#include "web/WebSearch.h"

#include <QSet>

#include <functional>
#include <optional>

/// The way of the tools into the web.
struct WebAccess {
#ifndef Q_MOC_RUN
    std::function<Task<SearchOutcome>(QString query, std::stop_token stop)> search;
    std::function<Task<QString>(QString url, QSet<QString> allowed, std::stop_token stop)> fetchPage;
#endif
};

/// The way that the program takes: the search page that it was set up with, and the pages found there.
WebAccess webAccess();

#ifndef Q_MOC_RUN
/// Runs a call of the model, which may wait for the person, and gives the text for the model; a refusal and
/// a failure are sentences too. Once `stop` is requested it returns soon. Main thread.
Task<QString> runTool(WebAccess web, ToolCall call, TurnPoints::ToolContext context, std::stop_token stop);
#endif

/// The value of a key of a JSON object that is a text; nothing in every other case.
std::optional<QString> stringArgument(const QString &argumentsText, const QString &key);
