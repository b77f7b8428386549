// Feeds a file to the decoders of everything persisted. What decodes must survive being saved and read.

#include "records/Coder.h"
#include "records/ConversationCoding.h"
#include "records/ModelTier.h"

#include <cstdlib>

namespace {

template<typename Record>
void roundTrip(const QByteArray &text) {
    try {
        const auto record = decodeRecord<Record>(text);
        const QByteArray saved = encodeRecord(record);
        if (encodeRecord(decodeRecord<Record>(saved)) != saved)
            std::abort();
    } catch (const DecodingError &) {
        // A text that is no record.
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size) {
    const QByteArray text(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    roundTrip<Conversation>(text);
    roundTrip<Catalog>(text);
    roundTrip<InstalledModel>(text);
    return 0;
}
