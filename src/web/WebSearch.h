#pragma once

#include "platform/Task.h"
#include "records/Conversation.h"

/// What a search comes to: the text for the model, and what it has found.
struct SearchOutcome {
    QString text;
    QList<SearchSource> sources;

    bool operator==(const SearchOutcome &) const = default;
};

/// Where the search page is served: the override `searchURL` if there is one, else what this build was made
/// for.
QUrl searchURL();

#ifndef Q_MOC_RUN
/// Posts the query to the search page at that address, as its form would, and reads the results: the text
/// has the number and title, the address and the snippet of each. "Search is temporarily unavailable.", with
/// no sources, if the page doesn't come, asks whether it talks to a robot, or has no results. The server may
/// be silent for 15 seconds. Throws Cancelled once `stop` is requested. Main thread.
Task<SearchOutcome> webSearch(QString query, QUrl address, std::stop_token stop);
#endif
