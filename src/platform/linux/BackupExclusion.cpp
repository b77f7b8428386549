#include "platform/BackupExclusion.h"

#include "platform/AtomicFile.h"

void excludeFromBackup(const QString &folder) {
    static constexpr char tag[] = "Signature: 8a477f597d28d172789f06886806bc55\n"
                                  "# This folder holds files that can be downloaded again.\n"
                                  "# What the signature means: https://bford.info/cachedir/\n";
    const QString path = folder + QStringLiteral("/CACHEDIR.TAG");
    // Written at every start otherwise, for nothing.
    if (readFile(path) != QByteArray(tag))
        writeAtomically(path, tag);
}
