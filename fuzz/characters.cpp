// Counts the characters of a text and cuts it: the parts must count what the whole does.

#include "records/Characters.h"

#include <cstdlib>

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QString text(reinterpret_cast<const QChar *>(data), static_cast<qsizetype>(size / sizeof(QChar)));
    const qsizetype count = characterCount(text);
    if (firstCharacters(text, count) != text || firstCharacters(text, count + 1) != text)
        std::abort();
    const QStringView half = firstCharacters(text, count / 2);
    if (characterCount(half) != count / 2 || !text.startsWith(half))
        std::abort();
    return 0;
}
