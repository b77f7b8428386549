#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

/// Cuts a stream of bytes into lines, whatever the sizes in which it comes. A line ends with LF, CR or
/// CR LF (WHATWG HTML, "Interpreting an event stream"), so a piece may end inside a line, inside a
/// character, or between CR and LF.
class LineReader {
public:
    void feed(const QByteArray &piece);

    /// The next whole line, without its end; nothing until more has come. The view holds until the
    /// next call of any function.
    std::optional<QByteArrayView> next();

    /// What stands after the last line end; nothing if nothing does.
    std::optional<QByteArrayView> rest() const;

private:
    QByteArray m_bytes;
    qsizetype m_start = 0;    ///< of the present line
    qsizetype m_searched = 0; ///< up to here there's no line end
    bool m_skipLineFeed = false;
};
