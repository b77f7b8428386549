#pragma once

#include <QString>

#include <stdexcept>

/// What the program should never do, in one sentence.
class Finding : public std::runtime_error {
public:
    explicit Finding(const QString &sentence) : std::runtime_error(sentence.toStdString()) {}
};

inline void require(bool condition, const QString &sentence) {
    if (!condition)
        throw Finding(sentence);
}
