#include "figures/Measure.h"
#include "figures/SampleReply.h"
#include "screens/ChatOnScreen.h"

#include <benchmark/benchmark.h>

// One update of a reply while it streams: from the state that the chat publishes to the painted window.

using namespace Qt::StringLiterals;

namespace {

/// What comes between two updates, at 200 tokens a second and 20 updates.
constexpr int tokensInUpdate = 10;

enum class Shape { allBlocks, oneParagraph };

QList<QString> tokensFor(Shape shape, qsizetype size) {
    if (shape == Shape::allBlocks)
        return sampleMarkdownTokens(size);
    return sampleTokens(size).replaceInStrings(u"\n\n"_s, u" "_s);
}

ChatScreenState streamingState(const QString &reply) {
    ChatScreenState state;
    state.conversation = newConversation(QDateTime::currentDateTimeUtc());
    Message question;
    question.id = QUuid::createUuid();
    question.content = u"Tell me about your garden."_s;
    Message answer;
    answer.id = QUuid::createUuid();
    answer.role = Role::assistant;
    answer.content = reply;
    state.conversation->messages = {question, answer};
    state.streamingID = answer.id;
    state.isGenerating = true;
    return state;
}

void update(benchmark::State &state, qsizetype size, Shape shape) {
    const QList<QString> tokens = tokensFor(shape, 2 * size);
    const QString start = tokens.join(QString()).first(size);
    ChatOnScreen screen;
    ChatScreenState shown = streamingState(start);
    screen.show(shown);
    QString &reply = shown.conversation->messages.last().content;
    qsizetype next = 0;
    for (auto round : state) {
        for (int count = 0; count < tokensInUpdate; ++count)
            reply += tokens.at(next++ % tokens.size());
        if (!screen.show(shown))
            state.SkipWithError("nothing was painted");
        // The reply is to have about the same length all the time.
        if (reply.size() > size + size / 10) {
            state.PauseTiming();
            reply = start;
            screen.show(shown);
            state.ResumeTiming();
        }
    }
}

void updateAt1KB(benchmark::State &state) {
    update(state, 1'000, Shape::allBlocks);
}
BENCHMARK(updateAt1KB)->Unit(benchmark::kMillisecond);

void updateAt10KB(benchmark::State &state) {
    update(state, 10'000, Shape::allBlocks);
}
BENCHMARK(updateAt10KB)->Unit(benchmark::kMillisecond);

void updateAt100KB(benchmark::State &state) {
    update(state, 100'000, Shape::allBlocks);
}
BENCHMARK(updateAt100KB)->Unit(benchmark::kMillisecond);

void updateOfOneParagraphAt10KB(benchmark::State &state) {
    update(state, 10'000, Shape::oneParagraph);
}
BENCHMARK(updateOfOneParagraphAt10KB)->Unit(benchmark::kMillisecond);

void updateOfOneParagraphAt100KB(benchmark::State &state) {
    update(state, 100'000, Shape::oneParagraph);
}
BENCHMARK(updateOfOneParagraphAt100KB)->Unit(benchmark::kMillisecond);

const Declared small{{.name = "streaming update at 10 KB (peer: at 1 KB)",
                      .function = "updateAt10KB",
                      .peer = "updateAt1KB",
                      .budget = {.most = 8}}};
const Declared usual{{.name = "streaming update at 100 KB (peer: at 10 KB)",
                      .function = "updateAt100KB",
                      .peer = "updateAt10KB",
                      .budget = {.most = 8, .mostRatio = 2}}};
const Declared worst{{.name = "the same in one paragraph (peer: at 10 KB)",
                      .function = "updateOfOneParagraphAt100KB",
                      .peer = "updateOfOneParagraphAt10KB",
                      .budget = {.most = 8, .mostRatio = 2}}};

} // namespace
