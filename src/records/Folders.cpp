#include "records/Folders.h"

#include "platform/AtomicFile.h"
#include "platform/BackupExclusion.h"
#include "records/Coder.h"

#include <QFile>
#include <QStandardPaths>

#include <filesystem>

using namespace Qt::StringLiterals;

QString applicationFolder() {
    const QString dataFolder = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
    if (dataFolder.isEmpty())
        qFatal("The system has no folder for application data");
    return dataFolder + u"/Ostrelin"_s;
}

QString modelsFolder() {
    return applicationFolder() + u"/models"_s;
}

QString chatsFolder() {
    return applicationFolder() + u"/chats"_s;
}

QString pagesFolder() {
    return applicationFolder() + u"/pages"_s;
}

QString schedulesFile() {
    return applicationFolder() + u"/schedules.json"_s;
}

QString memoryFile() {
    return applicationFolder() + u"/memory.md"_s;
}

QString enginePidFile() {
    return applicationFolder() + u"/engine.pid"_s;
}

QString settingsFile() {
    return applicationFolder() + u"/settings.json"_s;
}

QString chatIndexFile() {
    return chatsFolder() + u"/index.json"_s;
}

QString chatFile(const QUuid &id) {
    return chatsFolder() + u'/' + encodeUuid(id) + u".json"_s;
}

QString pageFile(const QUuid &id) {
    return pagesFolder() + u'/' + encodeUuid(id) + u".json"_s;
}

void ensureFolder(const QString &path) {
    const std::filesystem::path folder(QFile::encodeName(path).toStdString());
    std::error_code error;
    const bool created = std::filesystem::create_directories(folder, error);
    if (created && !error)
        std::filesystem::permissions(folder, std::filesystem::perms::owner_all, error);
    if (error)
        throw FileError(folder.string() + ": " + error.message());
}

void ensureFolders() {
    ensureFolder(applicationFolder());
    ensureFolder(modelsFolder());
    ensureFolder(chatsFolder());
    excludeFromBackup(modelsFolder());
    for (const QString &folder : {applicationFolder(), modelsFolder(), chatsFolder(), pagesFolder()})
        removeAbandonedFiles(folder);
}

void ensurePagesFolder() {
    try {
        ensureFolder(pagesFolder());
    } catch (const FileError &) {
    }
}
