#include "core/UpdateInfo.h"

#include "platform/Http.h"
#include "records/DecimalInteger.h"
#include "records/JsonFields.h"
#include "records/Options.h"

#include <algorithm>
#include <compare>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

constexpr auto updateInfoFields = [](auto &record, auto &value) {
    record.required("version"_L1, value.version);
    record.optional("build"_L1, value.build);
    record.optional("downloadURL"_L1, value.downloadURL);
    record.optional("notesURL"_L1, value.notesURL);
    record.optional("minimumSystemVersion"_L1, value.minimumSystemVersion);
};

/// No window has room for more.
constexpr qsizetype longestVersion = 64;

/// The desktop opens addresses of any kind, and not all of them are harmless.
void keepWebAddress(std::optional<QUrl> &address) {
    if (address && address->scheme() != "https"_L1 && address->scheme() != "http"_L1)
        address.reset();
}

std::strong_ordering compare(const QList<qint64> &one, const QList<qint64> &other) {
    for (qsizetype place = 0; place < std::max(one.size(), other.size()); ++place) {
        if (one.value(place) != other.value(place))
            return one.value(place) <=> other.value(place);
    }
    return std::strong_ordering::equal;
}

} // namespace

void decode(const QJsonValue &json, UpdateInfo &value) {
    decodeFields(json, value, updateInfoFields);
    if (value.version.size() > longestVersion)
        throw DecodingError("no version is as long");
    keepWebAddress(value.downloadURL);
    keepWebAddress(value.notesURL);
}

QUrl versionURL() {
    return QUrl(optionValue(u"versionURL"_s).value_or(QStringLiteral(OSTRELIN_VERSION_URL)));
}

Task<std::optional<UpdateInfo>> fetchUpdateInfo(QUrl url, std::stop_token stop) {
    HttpRequest request;
    request.url = url;
    request.headers = {{"Accept", "application/json"}};
    request.idleTimeout = 10s;
    request.wholeTimeout = 20s;
    request.longestBody = 100'000;
    request.redirects = HttpRequest::Redirects::areFollowed;
    try {
        const HttpResponse response = co_await fetch(request, stop);
        if (response.status != 200)
            co_return std::nullopt;
        co_return decodeRecord<UpdateInfo>(response.body);
    } catch (const HttpError &) {
        co_return std::nullopt;
    } catch (const DecodingError &) {
        co_return std::nullopt;
    }
}

QList<qint64> parseVersion(const QString &text) {
    QList<qint64> numbers;
    for (const QString &piece : text.split(u'.', Qt::SkipEmptyParts)) {
        if (const std::optional<qint64> number = decimalInteger(piece))
            numbers.append(*number);
    }
    return numbers;
}

bool isNewer(const UpdateInfo &info, const ProgramVersion &running) {
    const auto order = compare(parseVersion(info.version), parseVersion(running.version));
    if (order != 0)
        return order > 0;
    return info.build && running.build < *info.build;
}

bool systemAllows(const UpdateInfo &info, const QList<qint64> &systemVersion) {
    return !info.minimumSystemVersion ||
           compare(systemVersion, parseVersion(*info.minimumSystemVersion)) >= 0;
}
