#pragma once

#include "platform/AtomicFile.h"

#include <QString>

/// The text of memory.md, the person's memory file; any failure gives an empty string.
QString readMemory();

/// Writes memory.md atomically as UTF-8, creating the application folder first. False if that fails.
bool writeMemory(const QString &text, Durability durability = Durability::flushed);

/// Waits until the disk has memory.md as it is now; a failure is ignored.
void flushMemory();

/// `existing` with one more line, "- " and the fact, both trimmed. No line feed ends the result.
QString appendingMemoryFact(const QString &existing, const QString &fact);
