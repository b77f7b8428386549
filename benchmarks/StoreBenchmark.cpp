#include "records/ChatStore.h"
#include "records/Folders.h"
#include "support/TemporaryApplicationFolder.h"

#include <benchmark/benchmark.h>

// Budget of a store of 10,000 chats: 150 ms for the list, 60 ms for a save.

namespace {

constexpr int chatsInStore = 10000;

Conversation chatOf(int index) {
    static const QDateTime start = QDateTime::fromSecsSinceEpoch(1794748738, Qt::UTC);
    // Dates out of order, so that sorting has work to do.
    Conversation chat = newConversation(start.addSecs(index * 7919LL % 1000003),
                                        QStringLiteral("A chat about something, number %1").arg(index));
    for (int turn = 0; turn < 20; ++turn) {
        Message message;
        message.id = QUuid::createUuid();
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

} // namespace
