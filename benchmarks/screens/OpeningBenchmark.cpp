#include "figures/Measure.h"
#include "figures/SampleReply.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "screens/ChatOnScreen.h"
#include "support/TemporaryApplicationFolder.h"

#include <benchmark/benchmark.h>

// A long chat from its file to its painted rows.

namespace {

Conversation longChat() {
    Conversation chat = newConversation(QDateTime::currentDateTimeUtc());
    const QString text = sampleTokens(1200).join(QString());
    for (int index = 0; index < 2000; ++index) {
        Message message;
        message.id = QUuid::createUuid();
        message.role = index % 2 == 0 ? Role::user : Role::assistant;
        message.content = text.first(100 + (index * 37) % 1000);
        chat.messages.append(message);
    }
    return chat;
}

void openLongChat(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    const ChatStore store{};
    const Conversation chat = longChat();
    store.save(chat);
    ChatOnScreen screen;
    for (auto round : state) {
        ChatScreenState shown;
        shown.conversation = store.load(chat.id);
        if (!screen.show(shown))
            state.SkipWithError("nothing was painted");
        state.PauseTiming();
        screen.show({});
        state.ResumeTiming();
    }
}
BENCHMARK(openLongChat)->Unit(benchmark::kMillisecond)->UseRealTime();

const Declared opening{
    {.name = "chat of 2,000 messages read and painted", .function = "openLongChat", .budget = {.most = 100}}};

} // namespace
