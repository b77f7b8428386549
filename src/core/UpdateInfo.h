#pragma once

#include "core/ProgramVersion.h"
#include "platform/Task.h"

#include <QJsonValue>
#include <QList>
#include <QUrl>

#include <optional>

/// What the version endpoint tells of the newest release.
struct UpdateInfo {
    QString version; ///< dotted numbers
    std::optional<qint64> build;
    std::optional<QUrl> downloadURL;
    std::optional<QUrl> notesURL;
    std::optional<QString> minimumSystemVersion; ///< dotted numbers

    bool operator==(const UpdateInfo &) const = default;
};

/// Only the version is required; a value of another type, and a version that no window has room for, throw
/// DecodingError. An address that isn't of the web counts as absent.
void decode(const QJsonValue &json, UpdateInfo &value);

/// Where that is told: the override `versionURL` if there is one, else what this build was made for.
QUrl versionURL();

/// What the endpoint at that address tells, with ten seconds of patience for each byte and twenty for all of
/// them. Nothing unless it comes with status 200 and is such a record. Throws Cancelled once `stop` is
/// requested. Main thread.
Task<std::optional<UpdateInfo>> fetchUpdateInfo(QUrl url, std::stop_token stop);

/// The numbers between the dots; what isn't a decimal integer is left out, so that those after it move up.
QList<qint64> parseVersion(const QString &text);

/// True if `info` tells of a later release than the running one: the first number that differs decides, and
/// between equal ones the build, if there is one. A missing number is 0.
bool isNewer(const UpdateInfo &info, const ProgramVersion &running);

/// True if a system of that version may run the release.
bool systemAllows(const UpdateInfo &info, const QList<qint64> &systemVersion);
