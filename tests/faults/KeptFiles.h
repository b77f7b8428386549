#pragma once

#include "records/Conversation.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

#include <functional>

/// What lies in the application folder, and what has to be true of it at every moment: each file is whole,
/// no chat, question or reply is ever lost, no chat leaves the list, and a deleted chat never comes back.
class KeptFiles {
public:
    /// The path of the model's file, and what is in it where it is whole.
    KeptFiles(const QString &modelFile, const QByteArray &model) : m_modelFile(modelFile), m_model(model) {}

    /// Looks at every file. Throws Finding for the first that isn't what it should be.
    void check();

    /// The same once the program has ended: what letTailGo() allowed is over.
    void checkAfterEnd();

    /// The file has just been damaged on purpose: as long as it stays like that, it may.
    void excuse(const QString &path);

    /// This chat has been deleted, and mustn't come back.
    void letGo(const QUuid &chat);

    /// A question is being asked again, in the place of the same one: until the program ends, one chat may
    /// once miss its last question and what came after it.
    void letTailGo() { ++m_tailsToGo; }

    /// Damage may have put folders where files should stand, and nothing is written there.
    bool hasFolders() const { return !m_folders.isEmpty(); }
    void removeFolders();

    /// Does that without a look: the files aren't in their place meanwhile.
    void lookAway(const std::function<void()> &act);

    /// The questions of all chats at the last look.
    QStringList questions() const;

    /// True if a chat on disk has this question.
    static bool hasQuestion(const QString &text);

    /// Whether the chat whose last question this is stands in the index, and has a reply to it.
    static bool listsQuestion(const QString &text);
    static bool hasReplyTo(const QString &text);

private:
    using Messages = QList<Message>;

    bool isExcused(const QString &path, const QByteArray &bytes);
    void checkJson(const QString &path);
    void checkOthers();
    void checkChats();
    void checkMessages(const QUuid &chat, const Messages &before, const Messages &now);
    void checkRows();
    QHash<QUuid, Messages> soundChats() const;

    const QString m_modelFile;
    const QByteArray m_model;
    QHash<QString, QByteArray> m_excused; ///< the damaged content
    QSet<QString> m_folders;              ///< damage of that kind
    QHash<QUuid, Messages> m_chats;       ///< what was said in each, at the last look
    QSet<QUuid> m_rows;                   ///< of the index, at the last look
    QSet<QUuid> m_deleted;
    int m_tailsToGo = 0;
    bool m_looksAway = false;
};
