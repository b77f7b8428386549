#include "records/Settings.h"

#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/Samples.h"
#include "support/TemporaryApplicationFolder.h"

#include <limits>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

Settings changedSettings() {
    Settings settings;
    settings.searchMode = SearchMode::always;
    settings.responseSpeed = ResponseSpeed::slowYourRoll;
    settings.memoryEnabled = false;
    settings.installed = InstalledModel{};
    settings.installed->tierId = u"sprout"_s;
    settings.dismissedUpgradeTierId = u"oak"_s;
    settings.dismissedUpdateVersion = u"1.2"_s;
    settings.didFinishWelcome = true;
    settings.theme = Theme::nearBlack;
    settings.schedulesEnabled = true;
    settings.textSize = TextSize::extraLarge;
    settings.typeFace = TypeFace::serif;
    return settings;
}

} // namespace

TEST(Settings, anEmptyObjectGivesTheDefaults) {
    const auto settings = decodeRecord<Settings>("{}");
    EXPECT_EQ(settings, Settings());
    EXPECT_EQ(settings.searchMode, SearchMode::off);
    EXPECT_EQ(settings.responseSpeed, ResponseSpeed::full);
    EXPECT_TRUE(settings.memoryEnabled);
    EXPECT_EQ(settings.installed, std::nullopt);
    EXPECT_EQ(settings.dismissedUpgradeTierId, std::nullopt);
    EXPECT_EQ(settings.dismissedUpdateVersion, std::nullopt);
    EXPECT_FALSE(settings.didFinishWelcome);
    EXPECT_EQ(settings.theme, Theme::gray);
    EXPECT_FALSE(settings.schedulesEnabled);
    EXPECT_EQ(settings.textSize, TextSize::large);
    EXPECT_EQ(settings.typeFace, TypeFace::sans);
}

TEST(Settings, everyFieldComesBackAsItWas) {
    EXPECT_EQ(decodeRecord<Settings>(encodeRecord(changedSettings())), changedSettings());
}

TEST(Settings, eachMissingKeyTakesItsDefaultAndLeavesTheOthers) {
    const QJsonObject object = encode(changedSettings()).toObject();
    EXPECT_EQ(object.size(), 11);
    for (const QString &key : object.keys()) {
        QJsonObject without = object;
        without.remove(key);
        QJsonObject expected = without;
        const QJsonObject defaults = encode(Settings()).toObject();
        if (defaults.contains(key))
            expected.insert(key, defaults.value(key));
        EXPECT_EQ(encode(decodeRecord<Settings>(encodeText(without))), QJsonValue(expected));
    }
}

TEST(Settings, whatAValueHeldBeforeItWasDecodedIntoDoesNotMatter) {
    Settings settings = changedSettings();
    decode(QJsonObject(), settings);
    EXPECT_EQ(settings, Settings());
}

TEST(Settings, theEightPlainFieldsAreAlwaysWritten) {
    EXPECT_EQ(
        encode(Settings()).toObject().keys(),
        (QStringList{u"didFinishWelcome"_s, u"memoryEnabled"_s, u"responseSpeed"_s, u"schedulesEnabled"_s,
                     u"searchMode"_s, u"textSize"_s, u"theme"_s, u"typeFace"_s}));
}

TEST(Settings, aPresentKeyWithAnInvalidValueFailsTheWholeDecode) {
    for (const char *text :
         {R"({"theme": "purple"})", R"({"searchMode": "On"})", R"({"responseSpeed": 1})",
          R"({"memoryEnabled": 1})", R"({"memoryEnabled": "true"})", R"({"didFinishWelcome": null})",
          R"({"theme": null})", R"({"schedulesEnabled": 0})", R"({"textSize": "huge"})",
          R"({"typeFace": []})", R"({"installed": {}})", R"({"installed": "sprout"})",
          R"({"dismissedUpgradeTierId": 1})", R"({"dismissedUpdateVersion": false})", "[]"})
        EXPECT_THROW(decodeRecord<Settings>(text), DecodingError) << text;
}

TEST(Settings, aNullStandsForAnAbsentOptionalField) {
    EXPECT_EQ(decodeRecord<Settings>(R"({"installed": null, "dismissedUpgradeTierId": null,
                                         "dismissedUpdateVersion": null})"),
              Settings());
}

TEST(Settings, whatWasSavedIsLoaded) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    saveSettings(changedSettings());
    EXPECT_EQ(loadSettings(), changedSettings());
    EXPECT_EQ(Samples::contentOf(settingsFile()), encodeRecord(changedSettings()));
}

TEST(Settings, noFileGivesTheDefaults) {
    const TemporaryApplicationFolder folder;
    EXPECT_EQ(loadSettings(), Settings());
}

TEST(Settings, anUnknownThemeGivesAllDefaultsWithTheInstalledModelForgotten) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    QJsonObject object = encode(changedSettings()).toObject();
    object.insert(u"theme"_s, u"purple"_s);
    Samples::putFile(settingsFile(), encodeText(object));
    EXPECT_EQ(loadSettings(), Settings());
    Samples::putFile(settingsFile(), "oops");
    EXPECT_EQ(loadSettings(), Settings());
}

TEST(Settings, aSaveThatCannotBeWrittenIsSwallowed) {
    const TemporaryApplicationFolder folder;
    saveSettings(changedSettings());
    EXPECT_EQ(loadSettings(), Settings());
}

TEST(Settings, aSaveThatCannotBeEncodedLeavesTheOldFile) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    saveSettings(changedSettings());
    Settings endless = changedSettings();
    endless.installed->sampling.temperature = std::numeric_limits<double>::infinity();
    saveSettings(endless);
    EXPECT_EQ(loadSettings(), changedSettings());
}
