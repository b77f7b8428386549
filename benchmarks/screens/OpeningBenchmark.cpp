#include "figures/Measure.h"
#include "figures/SampleReply.h"
#include "records/ChatStore.h"
#include "records/Folders.h"
#include "screens/ChatOnScreen.h"
#include "support/TemporaryApplicationFolder.h"

#include <array>

#include <benchmark/benchmark.h>

// A long chat from its file to its painted rows, and through them.

namespace {

Conversation chatOf(int messages) {
    Conversation chat = newConversation(QDateTime::currentDateTimeUtc());
    const QString text = sampleTokens(1200).join(QString());
    for (int index = 0; index < messages; ++index) {
        Message message;
        message.id = QUuid::createUuid();
        message.role = index % 2 == 0 ? Role::user : Role::assistant;
        message.content = text.first(100 + (index * 37) % 1000);
        chat.messages.append(message);
    }
    return chat;
}

void open(benchmark::State &state, int messages) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    const ChatStore store{};
    const Conversation chat = chatOf(messages);
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

void openChat(benchmark::State &state) {
    open(state, 200);
}
BENCHMARK(openChat)->Unit(benchmark::kMillisecond)->UseRealTime();

void openLongChat(benchmark::State &state) {
    open(state, 2000);
}
BENCHMARK(openLongChat)->Unit(benchmark::kMillisecond)->UseRealTime();

/// From one chat on screen to another, both read from their files.
void switchChats(benchmark::State &state) {
    const TemporaryApplicationFolder folder;
    ensureFolders();
    const ChatStore store{};
    const std::array chats{chatOf(200), chatOf(200)};
    for (const Conversation &chat : chats)
        store.save(chat);
    ChatOnScreen screen;
    size_t shown = 0;
    for (auto round : state) {
        shown = 1 - shown;
        if (!screen.show({.conversation = store.load(chats.at(shown).id)}))
            state.SkipWithError("nothing was painted");
    }
}
BENCHMARK(switchChats)->Unit(benchmark::kMillisecond)->UseRealTime();

/// A page up, and back down at the beginning, with rows that are made and thrown away on the way.
void scroll(benchmark::State &state, int messages) {
    ChatOnScreen screen;
    screen.show({.conversation = chatOf(messages)});
    int step = -1;
    for (auto round : state) {
        if (!screen.scroll(step))
            step = -step;
    }
}

void scrollChat(benchmark::State &state) {
    scroll(state, 200);
}
BENCHMARK(scrollChat)->Unit(benchmark::kMillisecond);

void scrollLongChat(benchmark::State &state) {
    scroll(state, 2000);
}
BENCHMARK(scrollLongChat)->Unit(benchmark::kMillisecond);

const Declared opening{{.name = "chat of 2,000 messages read and painted (peer: of 200)",
                        .function = "openLongChat",
                        .peer = "openChat",
                        .budget = {.most = 100}}};
const Declared switching{{.name = "switch to another chat of 200 messages (peer: opening one)",
                          .function = "switchChats",
                          .peer = "openChat",
                          .budget = {.most = 100}}};
const Declared scrolling{{.name = "page of a chat of 2,000 messages scrolled (peer: of 200)",
                          .function = "scrollLongChat",
                          .peer = "scrollChat",
                          .budget = {.most = 16, .mostRatio = 2}}};

} // namespace
