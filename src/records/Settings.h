#pragma once

#include "records/ModelTier.h"

#include <array>

/// When the model may search the web.
enum class SearchMode { off, ask, always };

constexpr std::array<QStringView, 3> caseNames(SearchMode) {
    return {u"off", u"ask", u"always"};
}

/// How hard the engine works on a reply.
enum class ResponseSpeed { full, calm, slowYourRoll };

constexpr std::array<QStringView, 3> caseNames(ResponseSpeed) {
    return {u"full", u"calm", u"slowYourRoll"};
}

enum class Theme { lightBlue, pink, crispWhite, gray, nearBlack, softGreen };

constexpr std::array<QStringView, 6> caseNames(Theme) {
    return {u"lightBlue", u"pink", u"crispWhite", u"gray", u"nearBlack", u"softGreen"};
}

enum class TextSize { small, medium, large, extraLarge };

constexpr std::array<QStringView, 4> caseNames(TextSize) {
    return {u"small", u"medium", u"large", u"extraLarge"};
}

enum class TypeFace { sans, serif };

constexpr std::array<QStringView, 2> caseNames(TypeFace) {
    return {u"sans", u"serif"};
}

/// The person's preferences; the content of settings.json.
struct Settings {
    SearchMode searchMode = SearchMode::off;
    ResponseSpeed responseSpeed = ResponseSpeed::full;
    bool memoryEnabled = true;
    std::optional<InstalledModel> installed;
    std::optional<QString> dismissedUpgradeTierId;
    std::optional<QString> dismissedUpdateVersion;
    bool didFinishWelcome = false;
    Theme theme = Theme::gray;
    bool schedulesEnabled = false;
    TextSize textSize = TextSize::large;
    TypeFace typeFace = TypeFace::sans;

    bool operator==(const Settings &) const = default;
};

/// Writes every field, the three optional ones only when present.
QJsonValue encode(const Settings &value);

/// A missing key takes its default; a key that is present with an invalid value throws DecodingError.
void decode(const QJsonValue &json, Settings &value);

/// The settings on disk. Any failure at all (no file, unreadable, undecodable) gives the defaults.
Settings loadSettings();

/// Writes settings.json atomically. A failure is swallowed.
void saveSettings(const Settings &settings);
