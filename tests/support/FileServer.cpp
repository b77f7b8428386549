#include "support/FileServer.h"

#include <algorithm>

namespace {

/// The first byte that a request asks for; 0 with no Range.
qsizetype firstByte(const ScriptedEngine::Request &request) {
    QByteArray range = request.headers.value("range");
    range.chop(range.endsWith('-') ? 1 : 0);
    return range.mid(qstrlen("bytes=")).toLongLong();
}

void addBody(Script &script, const QByteArray &file, qsizetype from, const FileServer::Manner &manner) {
    for (qsizetype place = from; place <= file.size();) {
        if (place == manner.dropAt)
            script.drop();
        if (place == manner.resetAt)
            script.reset();
        if (place == manner.holdAt)
            script.hold();
        if (place == file.size())
            return;
        qsizetype end = std::min(place + manner.pieceSize, file.size());
        for (const auto &halt : {manner.dropAt, manner.resetAt, manner.holdAt}) {
            if (halt && *halt > place)
                end = std::min(end, *halt);
        }
        script.raw(file.sliced(place, end - place));
        if (manner.millisecondsBetweenPieces > 0)
            script.pause(manner.millisecondsBetweenPieces);
        place = end;
    }
}

Script answerTo(const ScriptedEngine::Request &request, const QByteArray &file,
                const FileServer::Manner &manner) {
    using Range = FileServer::Manner::Range;
    if (manner.status)
        return Script::plain(*manner.status).header("Content-Length", "4").raw("oops");
    if (!manner.redirect.isEmpty())
        return Script::plain(302)
            .header("Location", manner.redirect)
            .header("Content-Length", "5")
            .raw("there");
    const bool isPart = manner.range != Range::ignored && request.headers.contains("range");
    const qsizetype asked = isPart ? firstByte(request) : 0;
    if (isPart && (asked >= file.size() || manner.range == Range::refused))
        return Script::plain(416).header("Content-Length", "0");
    const qsizetype from = manner.partFrom.value_or(asked);
    Script script = Script::plain(isPart ? 206 : 200);
    const QByteArray length = manner.contentLength.value_or(QByteArray::number(file.size() - from));
    if (!length.isEmpty())
        script.header("Content-Length", length);
    const QByteArray size = QByteArray::number(file.size());
    const QByteArray range =
        "bytes " + QByteArray::number(from) + '-' + QByteArray::number(file.size() - 1) + '/' + size;
    if (isPart)
        script.header("Content-Range", manner.contentRange.isEmpty() ? range : manner.contentRange);
    addBody(script, file, from, manner);
    return script;
}

} // namespace

FileServer::FileServer(const QByteArray &file, const Manner &manner) : m_file(file) {
    setManner(manner);
}

void FileServer::setManner(const Manner &manner) {
    m_server.answerEach([file = m_file, manner](const ScriptedEngine::Request &request) {
        return answerTo(request, file, manner);
    });
}

QUrl FileServer::url() const {
    return m_server.url().resolved(QUrl(QStringLiteral("/model.gguf")));
}

QByteArrayList FileServer::ranges() const {
    QByteArrayList ranges;
    for (const ScriptedEngine::Request &request : requests())
        ranges.append(request.headers.value("range"));
    return ranges;
}
