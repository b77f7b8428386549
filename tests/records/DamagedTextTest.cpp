#include "records/ConversationCoding.h"
#include "records/JsonFields.h"
#include "records/Samples.h"
#include "records/Settings.h"

#include <random>

#include <gtest/gtest.h>

namespace {

/// The text with a few bytes changed, lost, doubled or moved.
QByteArray damaged(QByteArray text, std::mt19937 &random) {
    static const QByteArray telling = "{}[]\",:\\u0123456789.-+eEtfnTZ\xff\xc3 ";
    const auto below = [&random](qsizetype end) { return static_cast<qsizetype>(random() % end); };
    for (qsizetype changes = 1 + below(4); changes > 0 && !text.isEmpty(); --changes) {
        const qsizetype place = below(text.size());
        switch (below(5)) {
        case 0:
            text[place] = telling[below(telling.size())];
            break;
        case 1:
            text[place] = static_cast<char>(random());
            break;
        case 2:
            text.remove(place, 1 + below(20));
            break;
        case 3:
            text.insert(place, text.mid(below(text.size()), below(60)));
            break;
        default:
            text.truncate(place);
        }
    }
    return text;
}

/// Decodes damaged forms of `text`. Each is refused, or is a record that has a text again.
template<typename T>
void expectDamageDoesNoHarm(const QByteArray &text, unsigned seed) {
    std::mt19937 random(seed);
    int refused = 0;
    for (int round = 0; round < 5000; ++round) {
        try {
            const T record = decodeRecord<T>(damaged(text, random));
            ASSERT_EQ(decodeRecord<T>(encodeRecord(record)), record);
        } catch (const DecodingError &) {
            ++refused;
        }
    }
    EXPECT_GT(refused, 1000);
}

Settings fullSettings() {
    Settings settings;
    settings.installed.emplace();
    settings.dismissedUpdateVersion = QStringLiteral("1.2");
    return settings;
}

} // namespace

TEST(DamagedText, aChatFileIsDecodedOrRefused) {
    expectDamageDoesNoHarm<Conversation>(encodeRecord(Samples::fullConversation()), 1);
}

TEST(DamagedText, anIndexIsDecodedOrRefused) {
    const QList<ConversationSummary> rows(3, summaryOf(Samples::fullConversation()));
    expectDamageDoesNoHarm<QList<ConversationSummary>>(encodeRecord(rows), 2);
}

TEST(DamagedText, settingsAreDecodedOrRefused) {
    expectDamageDoesNoHarm<Settings>(encodeRecord(fullSettings()), 3);
}

TEST(DamagedText, bytesWithoutAnySenseAreRefused) {
    std::mt19937 random(4);
    for (int round = 0; round < 5000; ++round) {
        QByteArray bytes(static_cast<qsizetype>(random() % 200), Qt::Uninitialized);
        for (char &byte : bytes)
            byte = static_cast<char>(random());
        EXPECT_THROW(decodeText(bytes), DecodingError);
    }
}

TEST(DamagedText, nestingWithoutEndIsRefused) {
    EXPECT_THROW(decodeText(QByteArray(1000000, '[')), DecodingError);
    EXPECT_THROW(decodeText(QByteArray("{\"a\":").repeated(1000000)), DecodingError);
}
