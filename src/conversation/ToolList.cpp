#include "conversation/ToolList.h"

#include <QJsonObject>

using namespace Qt::StringLiterals;

namespace {

/// A function with at most one parameter, a text that has to be given.
QJsonObject tool(const QString &name, const QString &description, const QString &parameter = {}) {
    QJsonObject properties;
    QJsonArray required;
    if (!parameter.isEmpty()) {
        properties[parameter] = QJsonObject{{u"type"_s, u"string"_s}};
        required.append(parameter);
    }
    const QJsonObject parameters{
        {u"type"_s, u"object"_s}, {u"properties"_s, properties}, {u"required"_s, required}};
    const QJsonObject function{
        {u"name"_s, name}, {u"description"_s, description}, {u"parameters"_s, parameters}};
    return {{u"type"_s, u"function"_s}, {u"function"_s, function}};
}

} // namespace

QJsonArray toolList(bool allowTools, const Settings &settings, const std::optional<ModelTier> &activeTier) {
    static const QJsonObject offerPage =
        tool(u"offer_page"_s,
             u"Ask the user whether you may build a formatted page from what you are about to say."_s);
    static const QJsonObject remember =
        tool(u"remember"_s,
             u"Suggest a durable fact about the user to save to their memory file. The user approves it "
             "before anything is saved."_s,
             u"fact"_s);
    static const QJsonObject webSearch =
        tool(u"web_search"_s, u"Search the web for current or factual information."_s, u"query"_s);
    static const QJsonObject fetchPage =
        tool(u"fetch_page"_s, u"Read the text of a page returned by web_search."_s, u"url"_s);

    if (!allowTools || !activeTier || !activeTier->supportsTools)
        return {};
    QJsonArray tools{offerPage};
    if (settings.memoryEnabled)
        tools.append(remember);
    if (settings.searchMode != SearchMode::off) {
        tools.append(webSearch);
        tools.append(fetchPage);
    }
    return tools;
}
