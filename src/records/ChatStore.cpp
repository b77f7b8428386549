#include "records/ChatStore.h"

#include "records/ConversationCoding.h"
#include "records/Folders.h"
#include "records/JsonFields.h"
#include "records/StoredRecords.h"

#include <QFile>

namespace {

QList<ConversationSummary> without(QList<ConversationSummary> summaries, const QUuid &id) {
    summaries.removeIf([&id](const ConversationSummary &each) { return each.id == id; });
    return summaries;
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
    for (const QString &path : jsonFilesIn(chatsFolder())) {
        if (path == chatIndexFile())
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
