#pragma once

#include <QByteArray>
#include <QString>

class QJsonDocument;

/// JSON as the engine reads it, which is to the letter of RFC 8259. Qt reads more than that, and writes more:
/// half of a surrogate pair, which a text may hold, goes out as an escape of its own.

/// The document in its shortest form; half a pair is U+FFFD.
QByteArray strictJson(const QJsonDocument &document);

/// An object or array that somebody else wrote: as it is if the engine can read it, anew if only Qt can, and
/// empty if nobody can.
QString strictJson(const QString &written);
