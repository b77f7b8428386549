#include "engine/DownloadError.h"

using namespace Qt::StringLiterals;

namespace {

QString sentence(DownloadError::Kind kind) {
    switch (kind) {
    case DownloadError::Kind::paused:
        return u"Download paused."_s;
    case DownloadError::Kind::offline:
        return u"The download paused because the connection dropped. It will resume from where it stopped."_s;
    case DownloadError::Kind::diskFull:
        return u"This Mac ran out of space during the download."_s;
    case DownloadError::Kind::hashMismatch:
        return u"The download didn't match its checksum. Ostrelin will start it again."_s;
    case DownloadError::Kind::http:
    case DownloadError::Kind::message:
        break;
    }
    return {};
}

} // namespace

DownloadError::DownloadError(Kind kind) : DownloadError(kind, 0, sentence(kind)) {}

DownloadError::DownloadError(Kind kind, int httpStatus, const QString &description)
    : m_kind(kind),
      m_httpStatus(httpStatus),
      m_description(description),
      m_utf8(description.toUtf8()) {}

DownloadError DownloadError::http(int status) {
    return {Kind::http, status, u"The download failed (HTTP %1)."_s.arg(status)};
}

DownloadError DownloadError::message(const QString &text) {
    return {Kind::message, 0, text};
}
