#include "records/Memory.h"

#include "platform/AtomicFile.h"
#include "records/Folders.h"

using namespace Qt::StringLiterals;

QString readMemory() {
    const QByteArray bytes = readFile(memoryFile()).value_or(QByteArray());
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString();
}

bool writeMemory(const QString &text) {
    try {
        ensureFolder(applicationFolder());
    } catch (const FileError &) {
        // The write that follows is what counts.
    }
    try {
        writeAtomically(memoryFile(), text.toUtf8());
        return true;
    } catch (const FileError &) {
        return false;
    }
}

QString appendingMemoryFact(const QString &existing, const QString &fact) {
    const QString before = existing.trimmed();
    const QString line = u"- "_s + fact.trimmed();
    return before.isEmpty() ? line : before + u'\n' + line;
}
