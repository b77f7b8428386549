#include "conversation/Tools.h"

#include "conversation/Consent.h"
#include "conversation/MessagePlaces.h"
#include "web/PageFetch.h"
#include "web/WebURL.h"

#include <QJsonDocument>
#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

const QString searchDeclined =
    u"The user declined the search. Answer from your own knowledge and say you couldn't check the web."_s;
const QString memoryDeclined = u"The user did not want that saved to memory."_s;

/// The message that a card hangs on.
QUuid messageID(const ToolCall &call, const Conversation &conversation) {
    const qsizetype place = lastWithCall(conversation.messages, call.id);
    return place < 0 ? QUuid::createUuid() : conversation.messages.at(place).id;
}

void setSearchEvent(const SearchEvent &event, const ToolCall &call, const TurnPoints::ToolContext &context) {
    const qsizetype place = lastWithCall(context.conversation.messages, call.id);
    if (place < 0)
        return;
    context.conversation.messages[place].searchEvent = event;
    context.publish();
}

Task<QString> search(WebAccess web, ToolCall call, TurnPoints::ToolContext context, std::stop_token stop) {
    const QString query = stringArgument(call.arguments, u"query"_s).value_or(QString());
    if (!context.host)
        co_return searchDeclined;
    if (context.host->settings().searchMode == SearchMode::ask) {
        const PermissionChoice choice =
            co_await context.consent.ask(query, messageID(call, context.conversation), stop);
        if (choice == PermissionChoice::deny || !context.host) {
            setSearchEvent({.query = query, .status = SearchStatus::denied, .sources = {}}, call, context);
            co_return searchDeclined;
        }
        if (choice == PermissionChoice::always) {
            Settings settings = context.host->settings();
            settings.searchMode = SearchMode::always;
            context.host->saveSettings(settings);
        }
    }
    SearchOutcome found{.text = u"Search is temporarily unavailable."_s, .sources = {}};
    try {
        found = co_await web.search(query, stop);
    } catch (const Cancelled &) {
        // The call has an answer all the same, so that the chat can be read on.
    }
    for (const SearchSource &source : found.sources)
        context.foundURLs.insert(source.url);
    setSearchEvent({.query = query, .status = SearchStatus::allowed, .sources = found.sources}, call,
                   context);
    co_return found.text;
}

Task<QString> fetch(WebAccess web, ToolCall call, TurnPoints::ToolContext context, std::stop_token stop) {
    QSet<QString> allowed;
    for (const QString &url : std::as_const(context.foundURLs))
        allowed.insert(normalizeFetchURL(url));
    const QString url = stringArgument(call.arguments, u"url"_s).value_or(QString());
    try {
        co_return co_await web.fetchPage(url, allowed, stop);
    } catch (const Cancelled &) {
        co_return u"That page could not be opened."_s;
    }
}

Task<QString> offerPage(ToolCall call, TurnPoints::ToolContext context, std::stop_token stop) {
    const bool isAccepted = co_await context.consent.askForPage(messageID(call, context.conversation), stop);
    if (!isAccepted)
        co_return u"The user declined the page. Answer in the chat instead."_s;
    context.pageOfferAccepted = true;
    co_return u"The user agreed to the page. Reply now with the page as a single ```page fenced block "
              "containing Markdown, then stop."_s;
}

Task<QString> remember(ToolCall call, TurnPoints::ToolContext context, std::stop_token stop) {
    const QString fact = stringArgument(call.arguments, u"fact"_s).value_or(QString()).trimmed();
    const bool isOff = context.host && !context.host->settings().memoryEnabled;
    if (isOff || fact.isEmpty())
        co_return memoryDeclined;
    const bool isAccepted =
        co_await context.consent.askForMemory(fact, messageID(call, context.conversation), stop);
    if (!isAccepted)
        co_return memoryDeclined;
    if (context.host)
        context.host->rememberFact(fact);
    co_return u"Saved to the user's memory file."_s;
}

} // namespace

WebAccess webAccess() {
    return {.search = [](const QString &query,
                         std::stop_token stop) { return webSearch(query, searchURL(), stop); },
            .fetchPage = [](const QString &url, const QSet<QString> &allowed,
                            std::stop_token stop) { return fetchPage(url, allowed, stop); }};
}

Task<QString> runTool(WebAccess web, ToolCall call, TurnPoints::ToolContext context, std::stop_token stop) {
    if (call.name == u"web_search"_s)
        co_return co_await search(web, call, context, stop);
    if (call.name == u"fetch_page"_s)
        co_return co_await fetch(web, call, context, stop);
    if (call.name == u"offer_page"_s)
        co_return co_await offerPage(call, context, stop);
    if (call.name == u"remember"_s)
        co_return co_await remember(call, context, stop);
    co_return u"Unknown tool."_s;
}

std::optional<QString> stringArgument(const QString &argumentsText, const QString &key) {
    const QJsonValue value = QJsonDocument::fromJson(argumentsText.toUtf8()).object().value(key);
    return value.isString() ? std::optional(value.toString()) : std::nullopt;
}
