#include "figures/Measure.h"
#include "records/Characters.h"

#include <QTextBoundaryFinder>

#include <benchmark/benchmark.h>

// Each count of our own stands before that of Qt's boundary finder on the same text.

namespace {

constexpr qsizetype megabyte = 1000000;

QString repeatedToAMegabyte(const QString &unit) {
    return unit.repeated(megabyte / unit.toUtf8().size() + 1);
}

QString ascii() {
    return repeatedToAMegabyte(QStringLiteral("The quick brown fox jumps over the lazy dog.\r\n"));
}

QString mixedScripts() {
    return repeatedToAMegabyte(
        QStringLiteral(u"The quick brown fox. Zwölf Boxkämpfer. Съешь же ещё. 敏捷的棕色狐狸。 다람쥐 헌. "
                       u"مرحبا بالعالم. नमस्ते दुनिया. e\u0301 \U0001F468\u200D\U0001F469\u200D\U0001F467 "
                       u"\U0001F1E9\U0001F1EA\r\n"));
}

qsizetype countByQt(const QString &text) {
    QTextBoundaryFinder finder(QTextBoundaryFinder::Grapheme, text);
    qsizetype count = 0;
    while (finder.toNextBoundary() >= 0)
        ++count;
    return count;
}

template<typename Count>
void run(benchmark::State &state, const QString &text, Count count) {
    for (auto round : state)
        benchmark::DoNotOptimize(count(text));
    state.SetBytesProcessed(state.iterations() * text.toUtf8().size());
}

void charactersOfAscii(benchmark::State &state) {
    run(state, ascii(), [](const QString &text) { return characterCount(text); });
}
BENCHMARK(charactersOfAscii)->Unit(benchmark::kMicrosecond);

void charactersOfAsciiByQt(benchmark::State &state) {
    run(state, ascii(), countByQt);
}
BENCHMARK(charactersOfAsciiByQt)->Unit(benchmark::kMicrosecond);

void charactersOfMixedScripts(benchmark::State &state) {
    run(state, mixedScripts(), [](const QString &text) { return characterCount(text); });
}
BENCHMARK(charactersOfMixedScripts)->Unit(benchmark::kMicrosecond);

void charactersOfMixedScriptsByQt(benchmark::State &state) {
    run(state, mixedScripts(), countByQt);
}
BENCHMARK(charactersOfMixedScriptsByQt)->Unit(benchmark::kMicrosecond);

const Declared plain{{.name = "characters of 1 MB ASCII (peer: boundary finder)",
                      .function = "charactersOfAscii",
                      .peer = "charactersOfAsciiByQt"}};
const Declared mixed{{.name = "characters of 1 MB mixed (peer: boundary finder)",
                      .function = "charactersOfMixedScripts",
                      .peer = "charactersOfMixedScriptsByQt"}};

} // namespace
