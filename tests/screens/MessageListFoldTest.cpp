#include "screens/MessageListFixture.h"
#include "screens/RowEstimate.h"
#include "screens/Style.h"
#include "screens/TypingIndicator.h"

#include <QSignalSpy>

using namespace Qt::StringLiterals;

// What is folded and unfolded in the rows, and what stays where it is meanwhile.

using MessageListFoldTest = MessageListFixture;

TEST_F(MessageListFoldTest, anotherLookLeavesTheRowsAsThePersonHasThem) {
    fillWithThinking(4);
    const int index = int(rows.size()) - 1;
    click(box(index));
    SelectableWidget *text = row(index)->textView();
    text->setFocus(Qt::TabFocusReason);
    text->selectAll();
    for (const Theme theme : themes) {
        for (const TextSize size : {TextSize::extraLarge, TextSize::small}) {
            setLook(theme, size);
            ASSERT_EQ(row(index)->textView(), text);
            EXPECT_EQ(thinking(index)->stage(), ThinkingStage::expanded);
            EXPECT_EQ(list.window()->focusWidget(), text);
            EXPECT_TRUE(text->showsFocus());
            EXPECT_EQ(text->selectedText(), rows.at(index).text);
        }
    }
}

TEST_F(MessageListFoldTest, thinkingStandsAboveTheReplyAndNoEmptyText) {
    append(Kind::assistant, {});
    rows[0].isStreaming = true;
    rows[0].reasoning = u"hm"_s;
    update();
    ASSERT_TRUE(thinking(0));
    EXPECT_FALSE(row(0)->textView());
    const auto *dots = row(0)->findChild<TypingIndicator *>();
    EXPECT_EQ(dots->y(), thinking(0)->geometry().bottom() + 1 + style::footGap);
    rows[0].text = u"Hello"_s;
    update();
    EXPECT_EQ(row(0)->textView()->textArea().y(), thinking(0)->geometry().bottom() + 1 + style::partGap);
    EXPECT_NEAR(row(0)->height(), estimatedRowHeight(look, rows.at(0), row(0)->width()), 2);
}

TEST_F(MessageListFoldTest, theHeadOfTheThinkingStaysUnderThePointer) {
    fillWithThinking(10);
    bar().setValue(bar().maximum() / 2);
    const int index = firstInSight();
    const auto headAt = [&] { return thinking(index)->mapTo(list.viewport(), QPoint()).y(); };
    const int before = headAt();
    for (QPushButton *button : {box(index), head(index), head(index), head(index)}) {
        click(button);
        EXPECT_EQ(headAt(), before);
        EXPECT_FALSE(list.followsEnd());
    }
}

TEST_F(MessageListFoldTest, atTheEndTheHeadStaysWhereItCan) {
    fillWithThinking(10);
    const int index = int(rows.size()) - 1;
    const auto headAt = [&] { return thinking(index)->mapTo(list.viewport(), QPoint()).y(); };
    const int before = headAt();
    click(box(index));
    EXPECT_EQ(headAt(), before);
    EXPECT_FALSE(list.followsEnd()) << "the end is out of sight";
    click(head(index));
    EXPECT_EQ(headAt(), before);
    EXPECT_TRUE(list.followsEnd());
    click(head(index));
    EXPECT_TRUE(isAtEnd()) << "there is nothing below it that could come up";
}

TEST_F(MessageListFoldTest, thinkingThatGrowsAboveTheSightMovesNothing) {
    append(Kind::assistant, paragraphs(60));
    rows[0].isStreaming = true;
    rows[0].reasoning = paragraphs(40);
    update();
    click(box(0));
    bar().setValue(row(0)->textView()->y() + 200);
    const auto textAt = [this] { return row(0)->textView()->mapTo(list.viewport(), QPoint()).y(); };
    const int before = textAt();
    rows[0].reasoning = paragraphs(55);
    update();
    EXPECT_EQ(textAt(), before);
    // Without the pointer, as a screen reader presses.
    head(0)->click();
    EXPECT_EQ(textAt(), before);
    rows[0].reasoning = QString();
    update();
    EXPECT_EQ(textAt(), before);
}

TEST_F(MessageListFoldTest, whatIsLeftOfTheThinkingStaysInSight) {
    append(Kind::assistant, paragraphs(60));
    rows[0].reasoning = paragraphs(100);
    update();
    bar().setValue(0);
    click(box(0));
    bar().setValue(thinking(0)->height() / 2);
    click(box(0));
    EXPECT_EQ(thinking(0)->mapTo(list.viewport(), QPoint()).y(), 0);
    EXPECT_EQ(thinking(0)->height(), ThinkingDisclosure::initialHeight(look));
}

TEST_F(MessageListFoldTest, aRowThatWasScrolledAwayStartsAnew) {
    fillWithThinking(60);
    const int index = int(rows.size()) - 1;
    click(box(index));
    bar().setValue(0);
    ASSERT_FALSE(row(index));
    bar().setValue(bar().maximum());
    ASSERT_TRUE(thinking(index));
    EXPECT_EQ(thinking(index)->stage(), ThinkingStage::box);
}

TEST_F(MessageListFoldTest, aRowThatHasJustLeftTheSightStartsAnewToo) {
    fillWithThinking(20);
    bar().setValue(bar().maximum() / 2);
    const int index = firstInSight();
    click(box(index));
    const auto next = index + 1;
    const auto scrollBy = [this](int way) { bar().setValue(bar().value() + way); };
    // Beyond the upper edge, then back; then beyond the lower one.
    for (const int sign : {1, -1}) {
        while (row(index)->geometry().intersects(list.viewport()->rect())) {
            MessageRow *anchor = sign > 0 ? row(next) : row(index - 1);
            const int before = anchor->y();
            scrollBy(sign * 40);
            ASSERT_EQ(anchor->y(), before - sign * 40) << "nothing in sight jumps";
        }
        ASSERT_TRUE(row(index)) << "it is still near";
        EXPECT_EQ(thinking(index)->stage(), ThinkingStage::box);
        EXPECT_EQ(row(index)->height(), row(index)->layIn(row(index)->width()));
        while (!list.viewport()->rect().contains(row(index)->geometry()))
            scrollBy(-sign * 40);
        EXPECT_EQ(thinking(index)->stage(), ThinkingStage::box);
        click(box(index));
        EXPECT_EQ(thinking(index)->stage(), ThinkingStage::expanded);
    }
}

TEST_F(MessageListFoldTest, aRowOfWhichSomethingIsInSightStaysAsItIs) {
    fillWithThinking(20);
    bar().setValue(bar().maximum() / 2);
    const int index = firstInSight();
    click(box(index));
    bar().setValue(bar().value() + row(index)->geometry().bottom() - 5);
    bar().setValue(bar().value() - 100);
    EXPECT_EQ(thinking(index)->stage(), ThinkingStage::expanded);
}

TEST_F(MessageListFoldTest, whatAScreenReaderUnfoldsOutOfSightStaysSo) {
    fillWithThinking(20);
    const auto outOfSight = [this](int index) {
        return row(index) && thinking(index) && row(index)->geometry().bottom() < 0;
    };
    int index = int(rows.size()) - 1;
    while (!outOfSight(index))
        --index;
    box(index)->click();
    EXPECT_EQ(thinking(index)->stage(), ThinkingStage::expanded);
}
