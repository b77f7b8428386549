#pragma once

#include <QString>
#include <QUuid>

/// Where everything lives on disk. Every other place obtains a path here and never builds one itself.
///
/// All state lies in one folder, "Ostrelin" in the person's application data folder.

QString applicationFolder();
QString modelsFolder();
QString chatsFolder();
QString pagesFolder();
QString schedulesFile();
QString memoryFile();
QString enginePidFile();
QString settingsFile();

/// The index of the chat store, and the file of one chat: its upper-case UUID and ".json".
QString chatIndexFile();
QString chatFile(const QUuid &id);

/// The file of one saved page, named likewise.
QString pageFile(const QUuid &id);

/// Creates a folder, and those above it that are missing; a new one is for its owner's eyes only. One
/// that stands is left as it is. Throws FileError.
void ensureFolder(const QString &path);

/// Creates the application folder, then models/, then chats/, and marks models/ as excluded from
/// backup. Stops at the first failure and throws FileError. Also tidies up in them, and in pages/, after
/// writers that were killed.
void ensureFolders();

/// Creates pages/ if it is missing. No failure: whoever saves a page finds out if it can't be.
void ensurePagesFolder();
