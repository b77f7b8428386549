#include "records/Memory.h"

#include "records/Folders.h"

using namespace Qt::StringLiterals;

QString readMemory() {
    const QByteArray bytes = readFile(memoryFile()).value_or(QByteArray());
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString();
}

bool writeMemory(const QString &text, Durability durability) {
    try {
        ensureFolder(applicationFolder());
    } catch (const FileError &) {
        // The write that follows is what counts.
    }
    try {
        writeAtomically(memoryFile(), text.toUtf8(), durability);
        return true;
    } catch (const FileError &) {
        return false;
    }
}

void flushMemory() {
    try {
        flushToDisk(memoryFile());
    } catch (const FileError &) {
        // It will get there when the system brings it there.
    }
}

QString appendingMemoryFact(const QString &existing, const QString &fact) {
    const QString before = existing.trimmed();
    const QString line = u"- "_s + fact.trimmed();
    return before.isEmpty() ? line : before + u'\n' + line;
}
