#pragma once

#include <QByteArrayView>
#include <QString>

#include <optional>

/// The legacy encodings of Windows, DOS and the Macintosh, by the numbers that documents name them by.
/// Any thread.

/// The code page of Western European Windows, which stands for every one that isn't known.
inline constexpr int westernCodePage = 1252;

/// The text that `bytes` are in the code page of that number. Those that are no character of it give
/// U+FFFD, but half a character at the end gives nothing.
QString textInCodePage(QByteArrayView bytes, int codePage);

/// The code page of a font's character set ("Rich Text Format 1.9.1", "Font Table"); nothing if the set is
/// unknown, or is the document's own.
std::optional<int> codePageOfCharacterSet(int characterSet);
