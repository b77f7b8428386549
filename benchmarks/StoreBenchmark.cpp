#include "figures/Measure.h"
#include "platform/AtomicFile.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "support/TemporaryApplicationFolder.h"

#include <QJsonDocument>

#include <benchmark/benchmark.h>

// The peers read and write the same files without knowing what is in them.

namespace {

constexpr int chatsInStore = 10000;

Conversation chatOf(int index) {
    static const QDateTime start = QDateTime::fromSecsSinceEpoch(1794748738, Qt::UTC);
    // Dates out of order, so that sorting has work to do.
    Conversation chat = newConversation(start.addSecs(index * 7919LL % 1000003),
                                        QStringLiteral("A chat about something, number %1").arg(index));
    for (int turn = 0; turn < 20; ++turn) {
        Message message;
        // Not a random one: two hundred thousand of those would take longer than what is measured.
        message.id = QUuid(uint(index), ushort(turn), 0x4000, 0x80, 0, 0, 0, 0, 0, 0, 0);
        message.role = turn % 2 == 0 ? Role::user : Role::assistant;
        message.content = QStringLiteral("What a reader sees of one turn of a chat. ").repeated(10);
        chat.messages.append(message);
    }
    return chat;
}

/// A store of rows alone: neither a list nor a save reads the other chats' files.
void fill(const ChatStore &store) {
    ensureFolders();
    QList<ConversationSummary> rows;
    for (int index = 0; index < chatsInStore; ++index)
        rows.append(summaryOf(chatOf(index)));
    store.writeIndex(rows);
}

void listOfTenThousandChats(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    const ChatStore store{};
    fill(store);
    for (auto round : state)
        benchmark::DoNotOptimize(store.list());
}
BENCHMARK(listOfTenThousandChats)->Unit(benchmark::kMillisecond)->UseRealTime();

void saveIntoTenThousandChats(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    const ChatStore store{};
    fill(store);
    Conversation chat = chatOf(chatsInStore);
    for (auto round : state) {
        chat.updatedAt = chat.updatedAt.addSecs(1);
        store.save(chat);
    }
}
BENCHMARK(saveIntoTenThousandChats)->Unit(benchmark::kMillisecond)->UseRealTime();

void indexOfTenThousandChats(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    fill(ChatStore());
    for (auto round : state)
        benchmark::DoNotOptimize(QJsonDocument::fromJson(readFile(chatIndexFile()).value()));
}
BENCHMARK(indexOfTenThousandChats)->Unit(benchmark::kMillisecond)->UseRealTime();

void filesOfASave(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    const ChatStore store{};
    fill(store);
    const Conversation chat = chatOf(chatsInStore);
    store.save(chat);
    const QString path = chatFile(chat.id);
    const QByteArray written = readFile(path).value();
    const QByteArray index = readFile(chatIndexFile()).value();
    for (auto round : state) {
        writeAtomically(path, written);
        writeAtomically(chatIndexFile(), index);
    }
}
BENCHMARK(filesOfASave)->Unit(benchmark::kMillisecond)->UseRealTime();

const Declared lists{{.name = "list of 10,000 chats (peer: parse of the index)",
                      .function = "listOfTenThousandChats",
                      .peer = "indexOfTenThousandChats",
                      .budget = {.most = 150}}};
const Declared saves{{.name = "save into 10,000 chats (peer: the same bytes written)",
                      .function = "saveIntoTenThousandChats",
                      .peer = "filesOfASave",
                      .budget = {.most = 60}}};

} // namespace
