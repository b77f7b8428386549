#include "screens/AttachmentChip.h"
#include "screens/Icon.h"
#include "screens/MessageRow.h"
#include "screens/RowEstimate.h"
#include "screens/Screen.h"
#include "screens/Style.h"
#include "support/ManualClock.h"

#include <QPainter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 700;

/// A person's message with the files that went with it.
class MessageAttachmentsTest : public testing::Test {
protected:
    MessageAttachmentsTest() : row(look, clock, model({}, {})) {}

    static MessageRowModel model(const QString &text, const QStringList &files) {
        return {.id = QUuid::createUuid(), .text = text, .attachments = files};
    }

    void show(const QString &text, const QStringList &files) {
        row.setModel(model(text, files));
        row.resize(width, row.layIn(width));
    }

    AttachmentChip *chip(int place) const { return row.findChildren<AttachmentChip *>().value(place); }
    qsizetype chipCount() const { return row.findChildren<AttachmentChip *>().size(); }

    StillLook look;
    ManualClock clock;
    MessageRow row;
};

} // namespace

TEST_F(MessageAttachmentsTest, theyStandOverTheBubbleSixApartAndAtTheRight) {
    show(u"What do I need?"_s, {u"a.txt"_s, u"a longer name.md"_s});
    ASSERT_EQ(chipCount(), 2);
    EXPECT_EQ(chip(0)->y(), style::rowOutset);
    EXPECT_EQ(chip(1)->y(), chip(0)->geometry().bottom() + 1 + 6);
    const int bubbleTop = row.textView()->y() - style::bubblePaddingY;
    EXPECT_EQ(bubbleTop, chip(1)->geometry().bottom() + 1 + 6);
    for (const int place : {0, 1})
        EXPECT_EQ(chip(place)->geometry().right() + 1, width - style::rowOutset);
    EXPECT_LT(chip(0)->width(), chip(1)->width());
}

TEST_F(MessageAttachmentsTest, withoutAWordThereIsNoBubble) {
    show({}, {u"a.txt"_s});
    EXPECT_FALSE(row.textView());
    EXPECT_EQ(row.height(), chip(0)->height() + 2 * style::rowOutset);
    EXPECT_FALSE(row.entry());
}

TEST_F(MessageAttachmentsTest, aLongNameIsCutToTheBubblesWidth) {
    show(u"Hi"_s, {u"a name that goes on and on "_s.repeated(10) + u".txt"_s});
    EXPECT_LE(chip(0)->width(), style::bubbleMaximumWidth);
    EXPECT_GT(chip(0)->width(), style::bubbleMaximumWidth - 40);
    row.layIn(300);
    EXPECT_LE(chip(0)->width(), 300 - 2 * style::rowOutset);
}

TEST_F(MessageAttachmentsTest, aNameThatIsTooLongIsCutInItsMiddle) {
    const QString middle = u" and on and on"_s.repeated(20);
    const auto drawn = [&](const QString &start, const QString &end) {
        show(u"Hi"_s, {start + middle + end});
        return chip(0)->grab().toImage();
    };
    const QImage picture = drawn(u"one"_s, u"cat.txt"_s);
    EXPECT_NE(drawn(u"two"_s, u"cat.txt"_s), picture) << "its start is to be seen";
    EXPECT_NE(drawn(u"one"_s, u"dog.txt"_s), picture) << "and its end";
    EXPECT_EQ(drawn(u"one"_s, u"cat.txt"_s), picture);
}

TEST_F(MessageAttachmentsTest, theNameStandsBesideTheSymbolOfAFile) {
    show(u"Hi"_s, {u"a.txt"_s});
    const QFontMetrics metrics(look.font(TextStyle::callout));
    EXPECT_EQ(chip(0)->width(), 8 + 16 + 6 + metrics.horizontalAdvance(u"a.txt"_s) + 8);
    EXPECT_EQ(chip(0)->height(), 4 + std::max(metrics.height(), 16) + 4);
    const QImage drawn = chip(0)->grab().toImage();
    QImage expected(drawn.size(), drawn.format());
    expected.fill(drawn.pixelColor(8, 6));
    QPainter painter(&expected);
    drawIcon(painter, Icon::page, QRectF(8, (drawn.height() - 16) / 2.0, 16, 16),
             look.palette().secondaryInk());
    painter.end();
    const QRect symbol(8, 4, 16, drawn.height() - 8);
    EXPECT_EQ(drawn.copy(symbol), expected.copy(symbol));
}

TEST_F(MessageAttachmentsTest, theGuessOfTheHeightCountsThem) {
    for (const QString &text : {QString(), u"What do I need?"_s}) {
        show(text, {u"a.txt"_s, u"b.txt"_s});
        EXPECT_NEAR(estimatedRowHeight(look, row.model(), width), row.height(), style::attachmentGap + 2);
    }
}

TEST_F(MessageAttachmentsTest, aScreenReaderHearsTheFilesAndNothingRemovesThem) {
    show(u"Hi"_s, {u"a.txt"_s});
    EXPECT_EQ(spokenName(chip(0)), u"a.txt"_s);
    EXPECT_FALSE(chip(0)->removeButton());
}

TEST_F(MessageAttachmentsTest, otherFilesAreOtherChips) {
    show(u"Hi"_s, {u"a.txt"_s});
    show(u"Hi"_s, {u"b.txt"_s, u"c.txt"_s});
    EXPECT_EQ(chipCount(), 2);
    EXPECT_EQ(chip(1)->name(), u"c.txt"_s);
    show(u"Hi"_s, {});
    EXPECT_EQ(chipCount(), 0);
}
