#pragma once

#include <QDateTime>
#include <QJsonValue>
#include <QString>
#include <QUuid>

/// A page that a person keeps, or may keep. It shares no identity with a message that it came from.
struct PageDocument {
    QUuid id; ///< names its file
    QString title;
    QString markdown;
    QDateTime createdAt;
    QDateTime updatedAt; ///< when it was saved: the date on the page, and its place in the list

    bool operator==(const PageDocument &) const = default;
};

/// One row of the list of saved pages.
struct PageSummary {
    QUuid id;
    QString title;
    QDateTime updatedAt;

    bool operator==(const PageSummary &) const = default;
};

/// The JSON form of a page. decode() is strict: a key that is missing, or a value of another type, throws
/// DecodingError; unknown keys don't matter.
QJsonValue encode(const PageDocument &value);
void decode(const QJsonValue &json, PageDocument &value);
