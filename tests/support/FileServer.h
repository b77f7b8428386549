#pragma once

#include "support/ScriptedEngine.h"

#include <optional>

/// A server of one file, as good or as bad as a test wants it: real HTTP on a real socket. Any thread.
class FileServer {
public:
    /// How it treats a request. Places are bytes of the file.
    struct Manner {
        enum class Range { honoured, ignored, refused };

        Range range = Range::honoured;
        std::optional<int> status;               ///< answers this, with no file
        QByteArray redirect;                     ///< answers 302 to this address
        std::optional<qsizetype> dropAt;         ///< closes the connection there
        std::optional<qsizetype> resetAt;        ///< breaks the connection there
        std::optional<qsizetype> holdAt;         ///< says no more there, until goOn()
        std::optional<QByteArray> contentLength; ///< says this of the body; empty for nothing
        QByteArray contentRange;                 ///< says this of a part
        std::optional<qsizetype> partFrom;       ///< sends a part from there, whatever was asked for
        qsizetype pieceSize = 64'000;
        int millisecondsBetweenPieces = 0;
    };

    explicit FileServer(const QByteArray &file) : FileServer(file, {}) {}
    FileServer(const QByteArray &file, const Manner &manner);

    /// For the requests to come.
    void setManner(const Manner &manner);

    QUrl url() const;

    void goOn() { m_server.goOn(); }
    QList<ScriptedEngine::Request> requests() const { return m_server.requests(); }
    int openConnections() const { return m_server.openConnections(); }

    /// The Range headers of all requests so far, an empty one for each that had none.
    QByteArrayList ranges() const;

private:
    ScriptedEngine m_server;
    const QByteArray m_file;
};
