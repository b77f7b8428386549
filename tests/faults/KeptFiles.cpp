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

#include <algorithm>

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

/// What was said in it: the questions, and the replies as far as they have a text.
QList<Message> saidIn(const Conversation &chat) {
    QList<Message> said = chat.messages;
    said.removeIf([](const Message &message) {
        return message.role != Role::user && (message.role != Role::assistant || message.content.isEmpty());
    });
    return said;
}

bool hasSame(const QList<Message> &messages, const Message &message) {
    // A question that is asked again has another id.
    return std::any_of(messages.begin(), messages.end(), [&](const Message &each) {
        return each.role == message.role && each.content == message.content;
    });
}

bool isQuestion(const Message &message) {
    return message.role == Role::user;
}

/// Where the last question of a chat stands in it.
qsizetype lastQuestion(const QList<Message> &messages) {
    return std::distance(std::find_if(messages.rbegin(), messages.rend(), isQuestion), messages.rend()) - 1;
}

/// The chat on disk whose last question that is.
std::optional<Conversation> chatThatAsks(const QString &text) {
    for (const Conversation &chat : chatsOnDisk()) {
        const qsizetype place = lastQuestion(chat.messages);
        if (place >= 0 && chat.messages.at(place).content == text)
            return chat;
    }
    return std::nullopt;
}

/// The ids of the rows of the index; nothing if it can't be read.
std::optional<QSet<QUuid>> rowsOnDisk() {
    const auto summaries = readRecord<QList<ConversationSummary>>(chatIndexFile());
    if (!summaries)
        return std::nullopt;
    QSet<QUuid> rows;
    for (const ConversationSummary &summary : *summaries)
        rows.insert(summary.id);
    return rows;
}

} // namespace

void KeptFiles::check() {
    if (m_looksAway)
        return;
    for (const QString &path : jsonFiles())
        checkJson(path);
    checkOthers();
    checkChats();
    checkRows();
}

void KeptFiles::checkAfterEnd() {
    check();
    if (!m_looksAway)
        m_tailsToGo = 0;
}

void KeptFiles::excuse(const QString &path) {
    const QUuid chat(QFileInfo(path).baseName());
    m_chats.remove(chat);
    m_rows.remove(chat);
    if (QFileInfo(path).isDir())
        m_folders.insert(path);
    m_excused.remove(path);
    if (const auto bytes = readFile(path))
        m_excused.insert(path, *bytes);
}

void KeptFiles::letGo(const QUuid &chat) {
    m_chats.remove(chat);
    m_deleted.insert(chat);
}

void KeptFiles::lookAway(const std::function<void()> &act) {
    m_looksAway = true;
    act();
    m_looksAway = false;
}

void KeptFiles::removeFolders() {
    for (const QString &path : std::exchange(m_folders, {}))
        QDir().rmdir(path);
}

QStringList KeptFiles::questions() const {
    QStringList questions;
    for (const Messages &chat : m_chats) {
        for (const Message &message : chat) {
            if (isQuestion(message))
                questions.append(message.content);
        }
    }
    return questions;
}

bool KeptFiles::hasQuestion(const QString &text) {
    const QHash<QUuid, Conversation> chats = chatsOnDisk();
    return std::any_of(chats.begin(), chats.end(), [&](const Conversation &chat) {
        return std::any_of(chat.messages.begin(), chat.messages.end(), [&](const Message &message) {
            return isQuestion(message) && message.content == text;
        });
    });
}

bool KeptFiles::listsQuestion(const QString &text) {
    const auto chat = chatThatAsks(text);
    const auto rows = rowsOnDisk();
    return chat && rows && rows->contains(chat->id);
}

bool KeptFiles::hasReplyTo(const QString &text) {
    const auto chat = chatThatAsks(text);
    return chat && !isQuestion(saidIn(*chat).last());
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
    const auto model = readFile(m_modelFile);
    require(!model || isExcused(m_modelFile, *model) || model == m_model,
            u"a file has the name of the model and isn't the model"_s);
}

/// What was said in the readable chats. One that was damaged tells nothing, nor does one of which another
/// file has a copy now: who opens the copy goes on with it.
QHash<QUuid, KeptFiles::Messages> KeptFiles::soundChats() const {
    const QHash<QUuid, Conversation> all = chatsOnDisk();
    QHash<QUuid, Messages> sound;
    for (auto chat = all.cbegin(); chat != all.cend(); ++chat)
        sound.insert(chat.key(), saidIn(*chat));
    for (auto chat = all.cbegin(); chat != all.cend(); ++chat) {
        if (m_excused.contains(chatFile(chat.key()))) {
            sound.remove(chat.key());
            sound.remove(chat->id);
        }
    }
    return sound;
}

void KeptFiles::checkChats() {
    const QHash<QUuid, Conversation> all = chatsOnDisk();
    const QHash<QUuid, Messages> chats = soundChats();
    for (auto known = m_chats.cbegin(); known != m_chats.cend(); ++known) {
        require(all.contains(known.key()),
                u"the chat %1 is lost"_s.arg(known.key().toString(QUuid::WithoutBraces)));
        if (chats.contains(known.key()))
            checkMessages(known.key(), *known, chats.value(known.key()));
    }
    for (const QUuid &chat : all.keys())
        require(!m_deleted.contains(chat), u"a deleted chat is back: "_s + chat.toString());
    m_chats = chats;
}

void KeptFiles::checkMessages(const QUuid &chat, const Messages &before, const Messages &now) {
    const auto first = std::find_if(before.begin(), before.end(),
                                    [&](const Message &message) { return !hasSame(now, message); });
    if (first == before.end())
        return;
    const bool mayGo = m_tailsToGo > 0 && std::distance(before.begin(), first) >= lastQuestion(before);
    require(mayGo, u"%1 of the chat %2 is lost: \"%3\""_s.arg(
                       isQuestion(*first) ? u"a question"_s : u"a reply"_s,
                       chat.toString(QUuid::WithoutBraces), first->content.left(80)));
    --m_tailsToGo;
}

/// A chat that was listed is listed for as long as it is there.
void KeptFiles::checkRows() {
    const auto rows = rowsOnDisk();
    if (!rows || m_excused.contains(chatIndexFile()))
        return;
    for (const QUuid &row : m_rows)
        require(rows->contains(row) || !m_chats.contains(row),
                u"the chat %1 isn't listed any more"_s.arg(row.toString(QUuid::WithoutBraces)));
    m_rows = *rows;
}
