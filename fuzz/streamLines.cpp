// Feeds a stream to the line reader in two ways, which must agree, and its lines to the chunk parser.

#include "client/LineReader.h"
#include "client/StreamChunk.h"

#include <QByteArrayList>

#include <cstdlib>

namespace {

QByteArrayList linesOf(const QByteArray &text, qsizetype pieceSize) {
    LineReader reader;
    QByteArrayList lines;
    for (qsizetype start = 0; start < text.size(); start += pieceSize) {
        reader.feed(text.mid(start, pieceSize));
        while (const auto line = reader.next())
            lines.append(line->toByteArray());
    }
    if (const auto rest = reader.rest())
        lines.append(rest->toByteArray());
    return lines;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    const QByteArrayList lines = linesOf(text, text.size());
    if (lines != linesOf(text, 3))
        std::abort();
    ToolCallAssembler assembler;
    for (const QByteArray &line : lines) {
        if (const auto chunk = parseStreamLine(line)) {
            for (const ToolCallDelta &delta : chunk->toolDeltas)
                assembler.ingest(delta);
        }
    }
    assembler.finished();
    return 0;
}
