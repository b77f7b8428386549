#pragma once

#include <QByteArray>
#include <QByteArrayView>

#include <optional>

/// Cuts a stream of bytes into lines, whatever the sizes in which it comes. A line ends with LF, CR or
/// CR LF (WHATWG HTML, "Interpreting an event stream"), so a piece may end inside a line, inside a
/// character, or between CR and LF.
///
/// A line of more than `longestLine` bytes is dropped: no event of a server is so long.
class LineReader {
public:
    static constexpr qsizetype longestLine = 16'000'000;

    void feed(const QByteArray &piece);

    /// The next whole line, without its end; nothing until more has come. The view holds until the
    /// next call of any function.
    std::optional<QByteArrayView> next();

    /// What stands after the last line end; nothing if nothing does.
    std::optional<QByteArrayView> rest() const;

private:
    /// The place of the present line's end, or of the end of all bytes.
    qsizetype endOfLine() const;

    QByteArray m_bytes;
    qsizetype m_start = 0;    ///< of the present line
    qsizetype m_searched = 0; ///< up to here there's no line end
    bool m_skipLineFeed = false;
    bool m_isTooLong = false; ///< the present line; its bytes are dropped until its end
};
