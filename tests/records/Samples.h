#pragma once

#include "records/Conversation.h"

#include <QByteArray>
#include <QFile>

/// Records and files for the tests of this folder.
namespace Samples {

inline const QUuid firstId(QStringLiteral("{5f0c1b9e-6f0a-4a53-9d3e-0c6a8f1f2b11}"));
inline const QUuid secondId(QStringLiteral("{0a1b2c3d-4e5f-4061-8273-8495a6b7c8d9}"));

/// A moment of whole seconds, `seconds` after a fixed one.
inline QDateTime moment(qint64 seconds = 0) {
    return QDateTime::fromSecsSinceEpoch(1794748738 + seconds, Qt::UTC); // 2026-11-15T13:18:58Z
}

inline Message message(const QString &content, Role role = Role::user) {
    Message message;
    message.id = QUuid::createUuid();
    message.role = role;
    message.content = content;
    return message;
}

inline Conversation conversation(const QUuid &id, const QDateTime &updatedAt, const QString &title,
                                 const QStringList &contents = {}) {
    Conversation conversation;
    conversation.id = id;
    conversation.title = title;
    conversation.createdAt = moment();
    conversation.updatedAt = updatedAt;
    for (const QString &content : contents)
        conversation.messages.append(message(content));
    return conversation;
}

/// A chat in which every field of every record has a value.
inline Conversation fullConversation() {
    Message full = message(QStringLiteral("Grüße, 世界"), Role::assistant);
    full.reasoning = QStringLiteral("thinking\n\"aloud\"");
    full.toolCalls = {{QStringLiteral("call-1"), QStringLiteral("search"), QStringLiteral("{\"q\":1}")}};
    full.toolCallId = QStringLiteral("call-0");
    full.searchEvent = {QStringLiteral("tea"),
                        SearchStatus::allowed,
                        {{7, QStringLiteral("T"), QStringLiteral("https://example.org"), QString()}}};
    full.attachments = {{secondId, QStringLiteral("notes.txt"), QStringLiteral("text")}};
    full.page = {QStringLiteral("Title"), QStringLiteral("# Heading")};
    full.pageFailed = false;
    Conversation conversation = Samples::conversation(firstId, moment(60), QStringLiteral("Everything"));
    conversation.messages = {message(QStringLiteral("hello")), full};
    conversation.droppedCount = 3;
    return conversation;
}

inline QByteArray contentOf(const QString &path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void putFile(const QString &path, const QByteArray &bytes) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        qFatal("The test can't write %s", qPrintable(path));
}

} // namespace Samples
