#pragma once

#include <QByteArray>
#include <QList>
#include <QString>

/// A reply as llama-server streams it: the events' fields, their order and their length are those of a
/// real one.

/// The words of a reply of at least `characters` characters, cut as a tokenizer cuts them.
QList<QString> sampleTokens(qsizetype characters);

/// The same for a reply with headings, lists, tables, code and figures.
QList<QString> sampleMarkdownTokens(qsizetype characters);

/// The JSON of the event that carries one token.
QByteArray tokenPayload(const QString &token);

/// The JSON of the last event, which carries the reason of the end.
QByteArray finalPayload();

/// An event on the wire: "data: ", the JSON, and a blank line.
QByteArray eventOf(const QByteArray &payload);
