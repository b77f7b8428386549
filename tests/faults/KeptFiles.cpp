#include "faults/KeptFiles.h"

#include "faults/Finding.h"
#include "pages/PageDocument.h"
#include "platform/AtomicFile.h"
#include "records/ConversationCoding.h"
#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/Settings.h"
#include "records/StoredRecords.h"
#include "schedules/Schedule.h"

#include <QDir>
#include <QDirIterator>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

QStringList jsonFiles() {
    QStringList paths;
    QDirIterator files(applicationFolder(), {u"*.json"_s}, QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    while (files.hasNext())
        paths.append(files.next());
    return paths;
}

/// Reads the text as the record that belongs there; throws DecodingError.
void decodeAt(const QString &path, const QByteArray &text) {
    if (path == settingsFile())
        decodeRecord<Settings>(text);
    else if (path == schedulesFile())
        decodeRecord<QList<Schedule>>(text);
    else if (path == chatIndexFile())
        decodeRecord<QList<ConversationSummary>>(text);
    else if (path.startsWith(chatsFolder()))
        decodeRecord<Conversation>(text);
    else if (path.startsWith(pagesFolder()))
        decodeRecord<PageDocument>(text);
    else
        throw Finding(path + u" belongs to nothing"_s);
}

/// The readable chats by the ids in the names of their files.
QHash<QUuid, Conversation> chatsOnDisk() {
    QHash<QUuid, Conversation> chats;
    for (const QString &path : jsonFilesIn(chatsFolder())) {
        const QUuid id(QFileInfo(path).baseName());
        const auto chat = readRecord<Conversation>(path);
        if (chat && chatFile(id) == path)
            chats.insert(id, *chat);
    }
    return chats;
}

QSet<QUuid> questionsOf(const Conversation &chat) {
    QSet<QUuid> questions;
    for (const Message &message : chat.messages) {
        if (message.role == Role::user)
            questions.insert(message.id);
    }
    return questions;
}

} // namespace

void KeptFiles::check() {
    if (m_looksAway)
        return;
    for (const QString &path : jsonFiles())
        checkJson(path);
    checkOthers();
    checkQuestions();
}

void KeptFiles::excuse(const QString &path) {
    m_questions.remove(QUuid(QFileInfo(path).baseName()));
    if (QFileInfo(path).isDir())
        m_folders.insert(path);
    m_excused.insert(path, readFile(path).value_or(QByteArray()));
}

void KeptFiles::letGo(const QUuid &chat) {
    m_questions.remove(chat);
    m_deleted.insert(chat);
}

void KeptFiles::lookAway(const std::function<void()> &act) {
    m_looksAway = true;
    act();
    m_looksAway = false;
}

void KeptFiles::letQuestionsGo() {
    m_mayLoseQuestions = true;
}

void KeptFiles::removeFolders() {
    for (const QString &path : std::exchange(m_folders, {}))
        QDir().rmdir(path);
}

bool KeptFiles::hasQuestion(const QString &text) {
    for (const Conversation &chat : chatsOnDisk()) {
        for (const Message &message : chat.messages) {
            if (message.role == Role::user && message.content == text)
                return true;
        }
    }
    return false;
}

bool KeptFiles::isExcused(const QString &path, const QByteArray &bytes) {
    const auto excused = m_excused.constFind(path);
    if (excused == m_excused.cend())
        return false;
    if (*excused == bytes)
        return true;
    // The program has written it since.
    m_excused.erase(excused);
    return false;
}

void KeptFiles::checkJson(const QString &path) {
    const std::optional<QByteArray> text = readFile(path);
    // It may have been deleted since it was listed.
    if (!text || isExcused(path, *text))
        return;
    try {
        decodeAt(path, *text);
    } catch (const DecodingError &error) {
        throw Finding(
            u"%1 is torn: %2, in %3 bytes"_s.arg(path, QString::fromUtf8(error.what())).arg(text->size()));
    }
}

void KeptFiles::checkOthers() {
    const QByteArray memory = readFile(memoryFile()).value_or(QByteArray());
    require(memory.isValidUtf8() || isExcused(memoryFile(), memory), u"the memory file is torn"_s);
    const QByteArray pid = readFile(enginePidFile()).value_or("0");
    require(pid.toLongLong() > 0 || pid == "0" || isExcused(enginePidFile(), pid),
            u"the engine's file is torn: "_s + QString::fromLatin1(pid));
}

void KeptFiles::checkQuestions() {
    const QHash<QUuid, Conversation> chats = chatsOnDisk();
    for (auto known = m_questions.cbegin(); known != m_questions.cend(); ++known) {
        const auto chat = chats.constFind(known.key());
        const QString name = known.key().toString(QUuid::WithoutBraces);
        require(chat != chats.cend(), u"the chat %1 is lost"_s.arg(name));
        require(m_mayLoseQuestions || questionsOf(*chat).contains(known.value()),
                u"a question of the chat %1 is lost"_s.arg(name));
    }
    m_mayLoseQuestions = false;
    m_questions.clear();
    for (auto chat = chats.cbegin(); chat != chats.cend(); ++chat) {
        require(!m_deleted.contains(chat.key()), u"a deleted chat is back: "_s + chat.key().toString());
        m_questions.insert(chat.key(), questionsOf(*chat));
    }
}
