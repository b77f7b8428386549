#include "records/ChatStore.h"

#include "platform/AtomicFile.h"
#include "records/ConversationCoding.h"
#include "records/Folders.h"
#include "records/JsonFields.h"

#include <QDirIterator>
#include <QFile>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

QList<ConversationSummary> newestFirst(QList<ConversationSummary> summaries) {
    std::stable_sort(summaries.begin(), summaries.end(),
                     [](const ConversationSummary &one, const ConversationSummary &other) {
                         return one.updatedAt > other.updatedAt;
                     });
    return summaries;
}

QList<ConversationSummary> without(QList<ConversationSummary> summaries, const QUuid &id) {
    summaries.removeIf([&id](const ConversationSummary &each) { return each.id == id; });
    return summaries;
}

/// The record in a file; nothing if the file can't be read or holds something else.
template<typename T>
std::optional<T> readRecord(const QString &path) {
    const std::optional<QByteArray> text = readFile(path);
    if (!text)
        return std::nullopt;
    try {
        return decodeRecord<T>(*text);
    } catch (const DecodingError &) {
        return std::nullopt;
    }
}

/// The index is none of the chats, and a name that is all extension has none.
bool isChatFileName(const QString &name) {
    static const QString extension = u".json"_s;
    return name.endsWith(extension) && name != extension && name != u"index.json"_s;
}

} // namespace

QList<ConversationSummary> ChatStore::list() const {
    if (auto summaries = readRecord<QList<ConversationSummary>>(chatIndexFile()))
        return newestFirst(*std::move(summaries));
    return rebuildIndex();
}

std::optional<Conversation> ChatStore::load(const QUuid &id) const {
    return readRecord<Conversation>(chatFile(id));
}

void ChatStore::save(const Conversation &conversation) const {
    try {
        const QByteArray text = encodeRecord(conversation);
        writeAtomically(chatFile(conversation.id), text);
    } catch (const EncodingError &) {
        return;
    } catch (const FileError &) {
        // The row is written all the same: the chat may well be saved again later.
    }
    QList<ConversationSummary> summaries = without(list(), conversation.id);
    summaries.append(summaryOf(conversation));
    writeIndex(summaries);
}

void ChatStore::remove(const QUuid &id) const {
    QFile::remove(chatFile(id));
    writeIndex(without(list(), id));
}

QList<ConversationSummary> ChatStore::rebuildIndex() const {
    QList<ConversationSummary> summaries;
    // In the order of the folder itself: of chats with the same date this order is what remains.
    QDirIterator entries(chatsFolder(),
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        const QString path = entries.next();
        if (!isChatFileName(entries.fileName()))
            continue;
        if (const std::optional<Conversation> conversation = readRecord<Conversation>(path))
            summaries.append(summaryOf(*conversation));
    }
    writeIndex(summaries);
    return newestFirst(summaries);
}

void ChatStore::writeIndex(const QList<ConversationSummary> &summaries) const {
    try {
        writeAtomically(chatIndexFile(), encodeRecord(summaries));
    } catch (const EncodingError &) {
    } catch (const FileError &) {
    }
}
