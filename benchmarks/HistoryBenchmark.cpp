#include "conversation/History.h"
#include "conversation/Prompt.h"
#include "figures/Measure.h"
#include "figures/SampleReply.h"

#include <benchmark/benchmark.h>

// What a turn does with a long chat before every request.

namespace {

constexpr int messagesInChat = 2000;

QList<Message> longChat() {
    const QString text = sampleTokens(600).join(QString());
    QList<Message> messages;
    for (int index = 0; index < messagesInChat; ++index) {
        Message message;
        message.id = QUuid::createUuid();
        message.role = index % 2 == 0 ? Role::user : Role::assistant;
        message.content = text.first(100 + index % 500);
        messages.append(message);
    }
    // The turn's question stands last.
    messages.append(messages.first());
    return messages;
}

void fit(benchmark::State &state) {
    const QList<Message> messages = longChat();
    for (auto round : state)
        benchmark::DoNotOptimize(fitHistory(messages, defaultContextLength));
}
BENCHMARK(fit)->Unit(benchmark::kMillisecond);

void fitAndWire(benchmark::State &state) {
    const QList<Message> messages = longChat();
    // A context that takes the whole chat.
    constexpr qint64 context = 1'000'000;
    for (auto round : state)
        benchmark::DoNotOptimize(wireMessages(fitHistory(messages, context).messages, QString()));
}
BENCHMARK(fitAndWire)->Unit(benchmark::kMillisecond);

const Declared fitted{{.name = "history of 2,000 messages fitted", .function = "fit"}};
const Declared wired{{.name = "the same, all kept, as wire messages", .function = "fitAndWire"}};

} // namespace
