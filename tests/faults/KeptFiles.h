#pragma once

#include "records/Conversation.h"

#include <QByteArray>
#include <QHash>
#include <QSet>

#include <functional>

/// What lies in the application folder, and what has to be true of it at every moment: each file is whole,
/// no chat and no question is ever lost, and a deleted chat never comes back.
class KeptFiles {
public:
    /// Looks at every file. Throws Finding for the first that isn't what it should be.
    void check();

    /// The file has just been damaged on purpose: as long as it stays like that, it may.
    void excuse(const QString &path);

    /// This chat has been deleted, and mustn't come back.
    void letGo(const QUuid &chat);

    /// A question is being asked again, in the place of the same one: the next look may miss it.
    void letQuestionsGo();

    /// Damage may have put folders where files should stand, and nothing is written there.
    bool hasFolders() const { return !m_folders.isEmpty(); }
    void removeFolders();

    /// Does that without a look: the files aren't in their place meanwhile.
    void lookAway(const std::function<void()> &act);

    /// True if a chat on disk has this question.
    static bool hasQuestion(const QString &text);

private:
    bool isExcused(const QString &path, const QByteArray &bytes);
    void checkJson(const QString &path);
    void checkOthers();
    void checkQuestions();

    QHash<QString, QByteArray> m_excused; ///< the damaged content
    QSet<QString> m_folders;              ///< damage of that kind
    QHash<QUuid, QSet<QUuid>> m_questions;
    QSet<QUuid> m_deleted;
    bool m_mayLoseQuestions = false;
    bool m_looksAway = false;
};
