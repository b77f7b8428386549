#pragma once

#include <QString>

#include <variant>

/// What the main window shows.
namespace phase {

/// The start is under way.
struct Checking {
    bool operator==(const Checking &) const = default;
};

/// The engine is starting.
struct Starting {
    bool operator==(const Starting &) const = default;
};

/// The chat is there.
struct Ready {
    bool operator==(const Ready &) const = default;
};

/// Something failed; the person may try again.
struct Error {
    QString message;
    bool canTryLighter = false;

    bool operator==(const Error &) const = default;
};

} // namespace phase

using AppPhase = std::variant<phase::Checking, phase::Starting, phase::Ready, phase::Error>;
