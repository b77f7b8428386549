#pragma once

#include "platform/Descriptor.h"

#include <QString>

/// A folder kept for this process alone, for as long as this object lives: the system gives it free when the
/// process dies, however it dies. Programs that don't ask for the lock aren't hindered.
///
/// One program in a session isn't enough where a person has two sessions on the same files.
class FolderLock {
public:
    /// Takes the folder unless it is taken. Doesn't wait.
    explicit FolderLock(const QString &folder);

    /// False if another one has the folder. True also where the file system can't tell, and for a folder
    /// that isn't there.
    bool isHeld() const { return m_isHeld; }

private:
    Descriptor m_folder;
    bool m_isHeld = true;
};
