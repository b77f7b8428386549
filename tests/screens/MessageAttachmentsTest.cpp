#include "screens/AttachmentChip.h"
#include "screens/MessageRow.h"
#include "screens/Screen.h"
#include "screens/Style.h"
#include "support/ManualClock.h"

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

TEST_F(MessageAttachmentsTest, theGuessOfTheHeightCountsThem) {
    for (const QString &text : {QString(), u"What do I need?"_s}) {
        show(text, {u"a.txt"_s, u"b.txt"_s});
        EXPECT_NEAR(MessageRow::estimatedHeight(look, row.model(), width), row.height(),
                    style::attachmentGap + 2);
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
