#include "client/LineReader.h"
#include "client/StreamChunk.h"
#include "figures/Measure.h"
#include "figures/SampleReply.h"

#include <QJsonDocument>

#include <random>

#include <benchmark/benchmark.h>

// From bytes to chunks, in pieces as a socket gives them, before the mere parse of the same JSON.

namespace {

struct Sample {
    QList<QByteArray> payloads;
    QList<QByteArray> pieces;
};

Sample sample() {
    Sample sample;
    QByteArray bytes;
    for (const QString &token : sampleTokens(20'000)) {
        sample.payloads.append(tokenPayload(token));
        bytes += eventOf(sample.payloads.last());
    }
    // Small ones that end inside an event, and ones in which several events have piled up.
    std::minstd_rand random(1);
    for (qsizetype start = 0; start < bytes.size(); start += sample.pieces.last().size())
        sample.pieces.append(bytes.mid(start, 1 + static_cast<qsizetype>(random() % 1500)));
    return sample;
}

void streamLines(benchmark::State &state) {
    const Sample given = sample();
    for (auto round : state) {
        LineReader reader;
        qsizetype chunks = 0;
        for (const QByteArray &piece : given.pieces) {
            reader.feed(piece);
            while (const auto line = reader.next())
                chunks += parseStreamLine(*line).has_value() ? 1 : 0;
        }
        if (chunks != given.payloads.size())
            state.SkipWithError("not every event was decoded");
    }
}
BENCHMARK(streamLines)->Unit(benchmark::kMillisecond);

void payloads(benchmark::State &state) {
    const Sample given = sample();
    for (auto round : state) {
        for (const QByteArray &payload : given.payloads)
            benchmark::DoNotOptimize(QJsonDocument::fromJson(payload));
    }
}
BENCHMARK(payloads)->Unit(benchmark::kMillisecond);

const Declared lines{{.name = "stream lines decoded (peer: JSON parse)",
                      .function = "streamLines",
                      .peer = "payloads",
                      .budget = {.mostRatio = 1.5}}};

} // namespace
