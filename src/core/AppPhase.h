#pragma once

#include <QString>

#include <optional>
#include <variant>

/// What the main window shows.
namespace phase {

/// This machine can't run the program; nothing follows.
struct Unsupported {
    QString reason;

    bool operator==(const Unsupported &) const = default;
};

/// A model awaits its download. Nothing leads here today: a chosen model is downloaded at once.
struct NeedsDownload {
    QString tierId;
    std::optional<QString> diskNote;

    bool operator==(const NeedsDownload &) const = default;
};

/// Something failed; the person may try again.
struct Error {
    QString message;
    bool canTryLighter = false; ///< there is a lighter model to try instead

    bool operator==(const Error &) const = default;
};

/// The start is under way.
struct Checking {
    bool operator==(const Checking &) const = default;
};

/// The first start: the welcome screen.
struct Welcome {
    bool operator==(const Welcome &) const = default;
};

/// Everything was deleted: the start screen.
struct NeedsInitialization {
    bool operator==(const NeedsInitialization &) const = default;
};

/// A model is being downloaded, or its download is paused.
struct Downloading {
    bool operator==(const Downloading &) const = default;
};

/// The engine is starting.
struct Starting {
    bool operator==(const Starting &) const = default;
};

/// The chat is there.
struct Ready {
    bool operator==(const Ready &) const = default;
};

} // namespace phase

using AppPhase =
    std::variant<phase::Unsupported, phase::NeedsDownload, phase::Error, phase::Checking, phase::Welcome,
                 phase::NeedsInitialization, phase::Downloading, phase::Starting, phase::Ready>;

/// True if the phase is of that kind, as in isIn<phase::Ready>(app.phase()).
template<typename Kind>
bool isIn(const AppPhase &phase) {
    return std::holds_alternative<Kind>(phase);
}
