#pragma once

#include "records/Conversation.h"

#include <QString>
#include <QStringList>

#include <optional>

/// What is read of a file, in bytes; the rest is never read.
inline constexpr qint64 maxAttachmentBytes = 2'000'000;

/// What is kept of its text, in characters as a reader counts them.
inline constexpr qsizetype maxAttachmentCharacters = 60'000;

/// The names of the files that a dialog offers, as patterns like "*.txt", for any case of letters: plain
/// text, RTF, data and markup, source code. Any thread.
const QStringList &attachmentNamePatterns();

/// True for a file of a name like that; where the name has no suffix, for one that begins as a text does.
/// Any thread.
bool isAttachable(const QString &path);

/// Reads the file at `path` as text; nothing if it can't be read, isn't a regular file or has no text.
///
/// A file named *.rtf gives its plain text. Any other, and one that isn't RTF after all, is in the encoding
/// that a byte order mark tells, else in UTF-8, else in Latin 1, which every file is: so is a long one in
/// UTF-8 of which only half a character is read at the end. White space at the ends goes; a text that is too
/// long is cut, and ends with a remark that it was.
///
/// Any thread; the main one too, since so little is read.
std::optional<Attachment> importAttachment(const QString &path);
