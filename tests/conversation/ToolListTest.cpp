#include "conversation/ToolList.h"

#include "support/DemoModel.h"

#include <QJsonDocument>
#include <QJsonObject>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

QStringList namesOf(const QJsonArray &tools) {
    QStringList names;
    for (const auto tool : tools)
        names.append(tool.toObject()["function"_L1].toObject()["name"_L1].toString());
    return names;
}

std::optional<ModelTier> tierWithTools(bool supportsTools = true) {
    ModelTier tier = demoTier();
    tier.supportsTools = supportsTools;
    return tier;
}

Settings settingsOf(SearchMode mode, bool memoryEnabled = true) {
    Settings settings;
    settings.searchMode = mode;
    settings.memoryEnabled = memoryEnabled;
    return settings;
}

} // namespace

TEST(ToolList, theDefinitionsAreTheseToTheLetter) {
    const QByteArray expected = R"([
        {"type": "function", "function": {"name": "offer_page",
         "description": "Ask the user whether you may build a formatted page from what you are about to say.",
         "parameters": {"type": "object", "properties": {}, "required": []}}},
        {"type": "function", "function": {"name": "remember",
         "description": "Suggest a durable fact about the user to save to their memory file. The user approves it before anything is saved.",
         "parameters": {"type": "object", "properties": {"fact": {"type": "string"}}, "required": ["fact"]}}},
        {"type": "function", "function": {"name": "web_search",
         "description": "Search the web for current or factual information.",
         "parameters": {"type": "object", "properties": {"query": {"type": "string"}}, "required": ["query"]}}},
        {"type": "function", "function": {"name": "fetch_page",
         "description": "Read the text of a page returned by web_search.",
         "parameters": {"type": "object", "properties": {"url": {"type": "string"}}, "required": ["url"]}}}
    ])";
    EXPECT_EQ(toolList(true, settingsOf(SearchMode::ask), tierWithTools()),
              QJsonDocument::fromJson(expected).array());
}

TEST(ToolList, thePersonsSettingsChoose) {
    const auto offered = [](SearchMode mode, bool memoryEnabled) {
        return namesOf(toolList(true, settingsOf(mode, memoryEnabled), tierWithTools()));
    };
    EXPECT_EQ(offered(SearchMode::off, false), QStringList(u"offer_page"_s));
    EXPECT_EQ(offered(SearchMode::off, true), (QStringList{u"offer_page"_s, u"remember"_s}));
    EXPECT_EQ(offered(SearchMode::always, false),
              (QStringList{u"offer_page"_s, u"web_search"_s, u"fetch_page"_s}));
}

TEST(ToolList, withoutAModelThatCanOrATurnThatMayThereAreNone) {
    const Settings settings = settingsOf(SearchMode::always);
    EXPECT_TRUE(toolList(false, settings, tierWithTools()).isEmpty());
    EXPECT_TRUE(toolList(true, settings, tierWithTools(false)).isEmpty());
    EXPECT_TRUE(toolList(true, settings, std::nullopt).isEmpty());
}
