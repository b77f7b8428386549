#pragma once

#include <QByteArray>
#include <QString>

#include <exception>

/// Why a model couldn't be downloaded, with the sentence that a person reads.
class DownloadError : public std::exception {
public:
    enum class Kind {
        http,         ///< the server answered with a status that gives no file
        message,      ///< a sentence of its own
        paused,       ///< as the person wished
        offline,      ///< the network or the connection was lost
        diskFull,     ///< the disk has no room for the next bytes
        hashMismatch, ///< the file was whole and wrong; it is gone
    };

    explicit DownloadError(Kind kind);

    /// An `http` with the status of the answer.
    static DownloadError http(int status);

    /// A `message` with its sentence.
    static DownloadError message(const QString &text);

    Kind kind() const { return m_kind; }

    /// The status of the answer, with `http`; else 0.
    int httpStatus() const { return m_httpStatus; }

    QString description() const { return m_description; }
    const char *what() const noexcept override { return m_utf8.constData(); }

private:
    DownloadError(Kind kind, int httpStatus, const QString &description);

    Kind m_kind;
    int m_httpStatus;
    QString m_description;
    QByteArray m_utf8;
};
