#include "screens/ActionLine.h"
#include "screens/MessageListFixture.h"
#include "screens/Spring.h"
#include "screens/Style.h"
#include "screens/TypingIndicator.h"

#include <QLineEdit>
#include <QSignalSpy>
#include <QVBoxLayout>

#include <limits>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

using MessageListTest = MessageListFixture;

TEST_F(MessageListTest, aChatIsShownFromItsEnd) {
    fill(60);
    EXPECT_GT(bar().maximum(), 0);
    EXPECT_TRUE(isAtEnd());
    ASSERT_TRUE(row(59));
    EXPECT_LE(row(59)->geometry().bottom(), list.viewport()->height());
    rows.clear();
    chat = QUuid::createUuid();
    fill(40);
    EXPECT_TRUE(isAtEnd());
}

TEST_F(MessageListTest, aShortChatStandsAtTheTop) {
    fill(2, 1);
    EXPECT_EQ(bar().maximum(), 0);
    EXPECT_EQ(topOf(0), style::listPadding - style::rowOutset);
}

TEST_F(MessageListTest, theColumnIsAtMost720AndInTheMiddle) {
    fill(2);
    list.resize(1600, 600);
    EXPECT_EQ(row(1)->width() - 2 * style::rowOutset, 720);
    EXPECT_EQ(row(1)->geometry().center().x(), 1600 / 2 - 1);
    list.resize(700, 600);
    EXPECT_EQ(row(1)->width() - 2 * style::rowOutset, 700 - 2 * style::columnMargin);
}

TEST_F(MessageListTest, rowsStandTenApart) {
    fill(3);
    const auto content = [this](int index) {
        return row(index)->geometry().adjusted(0, style::rowOutset, 0, -style::rowOutset);
    };
    EXPECT_EQ(content(1).top() - content(0).bottom() - 1, 10);
}

TEST_F(MessageListTest, aBubbleIsAtMost520WideAndAtTheRight) {
    list.resize(1000, 600);
    append(Kind::user, u"Hi"_s);
    append(Kind::user, paragraphs(1).repeated(5));
    update();
    const auto bubble = [this](int index) {
        return row(index)->textView()->geometry().adjusted(-style::bubblePaddingX, 0, style::bubblePaddingX,
                                                           0);
    };
    EXPECT_LT(bubble(0).width(), 60);
    EXPECT_LE(bubble(1).width(), 520);
    EXPECT_GT(bubble(1).width(), 440);
    EXPECT_EQ(bubble(0).right(), bubble(1).right());
    EXPECT_EQ(bubble(0).right() + 1, row(0)->width() - style::rowOutset);
}

TEST_F(MessageListTest, theListFollowsWhileTheReaderIsAtTheEnd) {
    fill(30);
    append(Kind::assistant, u"A"_s);
    update();
    EXPECT_TRUE(isAtEnd());
    for (int piece = 1; piece < 30; ++piece) {
        rows.last().text = paragraphs(piece);
        update();
        ASSERT_TRUE(isAtEnd());
    }
}

TEST_F(MessageListTest, whoReadsFurtherUpStaysThere) {
    fill(30);
    bar().setValue(bar().maximum() / 2);
    EXPECT_FALSE(list.followsEnd());
    const int value = bar().value();
    append(Kind::assistant, u"A"_s);
    update();
    for (int piece = 1; piece < 20; ++piece) {
        rows.last().text = paragraphs(piece);
        update();
    }
    EXPECT_EQ(bar().value(), value);
    bar().setValue(bar().maximum());
    EXPECT_TRUE(list.followsEnd());
}

TEST_F(MessageListTest, whatThePersonSendsComesIntoSight) {
    fill(30);
    bar().setValue(0);
    append(Kind::user, u"And then?"_s);
    update();
    EXPECT_TRUE(isAtEnd());
}

TEST_F(MessageListTest, aStreamedPieceTouchesOnlyItsRow) {
    fill(10);
    append(Kind::assistant, u"A"_s);
    update();
    QList<MessageRow *> widgets;
    for (int index = 0; index < rows.size(); ++index)
        widgets.append(row(index));
    SelectableWidget *text = row(10)->textView();
    text->selectAll();
    rows.last().text = u"A word"_s;
    update();
    for (int index = 0; index < rows.size(); ++index)
        EXPECT_EQ(row(index), widgets.at(index));
    EXPECT_EQ(row(10)->textView(), text);
    EXPECT_EQ(text->text(), u"A word"_s);
    EXPECT_EQ(text->selectedText(), u"A"_s);
}

TEST_F(MessageListTest, theFirstWordPushesTheDotsDown) {
    append(Kind::assistant, {});
    rows[0].isStreaming = true;
    update();
    EXPECT_FALSE(row(0)->textView());
    const auto *dots = row(0)->findChild<TypingIndicator *>();
    ASSERT_TRUE(dots);
    EXPECT_EQ(dots->geometry().bottom() + 1, row(0)->height() - style::rowOutset);
    rows[0].text = u"Hello"_s;
    update();
    ASSERT_TRUE(row(0)->textView());
    EXPECT_EQ(row(0)->textView()->text(), u"Hello"_s);
    EXPECT_EQ(row(0)->textView()->textArea().y(), style::rowOutset);
    EXPECT_EQ(row(0)->findChild<TypingIndicator *>(), dots);
    EXPECT_EQ(dots->y(), row(0)->textView()->textArea().bottom() + 1 + style::footGap);
    rows[0].isStreaming = false;
    update();
    EXPECT_FALSE(row(0)->findChild<TypingIndicator *>());
}

TEST_F(MessageListTest, aNoteOnTopMovesNothingForTheReader) {
    fill(40);
    bar().setValue(bar().maximum() / 2);
    const auto inSight = std::find_if(rows.begin(), rows.end(), [this](const auto &model) {
        const MessageRow *widget = list.rowWidget(model.id);
        return widget && widget->y() >= 0;
    });
    const int index = int(std::distance(rows.begin(), inSight));
    const int top = topOf(index);
    rows.prepend({QUuid(), Kind::note, u"A note"_s});
    update();
    EXPECT_EQ(topOf(index + 1), top);
}

TEST_F(MessageListTest, onlyRowsNearTheSightAreWidgets) {
    fill(2000);
    EXPECT_LT(list.widgetCount(), 60);
    EXPECT_FALSE(row(0));
    bar().setValue(0);
    ASSERT_TRUE(row(0));
    EXPECT_EQ(topOf(0), style::listPadding - style::rowOutset);
    EXPECT_FALSE(row(1999));
    EXPECT_LT(list.widgetCount(), 60);
}

TEST_F(MessageListTest, scrollingUpNeverJumps) {
    // Long rows, so that the guesses are far off.
    for (int index = 0; index < 200; ++index)
        append(Kind::assistant, index % 3 == 0 ? QString(400, u'i') : paragraphs(index % 7));
    update();
    while (bar().value() > 0) {
        const auto seen = std::find_if(rows.begin(), rows.end(), [this](const auto &model) {
            const MessageRow *widget = list.rowWidget(model.id);
            return widget && widget->geometry().bottom() > 0;
        });
        MessageRow *anchor = list.rowWidget(seen->id);
        const int before = anchor->y();
        const int step = std::min(40, bar().value());
        bar().setValue(bar().value() - step);
        ASSERT_EQ(anchor->y(), before + step);
    }
}

TEST_F(MessageListTest, anotherWidthKeepsTheReadersPlace) {
    fill(100, 6);
    bar().setValue(bar().maximum() / 2);
    const auto topRow = [this] {
        return std::find_if(rows.begin(), rows.end(), [this](const auto &model) {
            const MessageRow *widget = list.rowWidget(model.id);
            return widget && widget->geometry().bottom() > 0;
        });
    };
    const QUuid before = topRow()->id;
    list.resize(500, 600);
    EXPECT_EQ(topRow()->id, before);
    list.resize(900, 500);
    EXPECT_EQ(topRow()->id, before);
}

TEST_F(MessageListTest, atTheEndAnotherSizeStaysAtTheEnd) {
    fill(50, 6);
    list.resize(500, 400);
    EXPECT_TRUE(isAtEnd());
    list.resize(1200, 700);
    EXPECT_TRUE(isAtEnd());
}

TEST_F(MessageListTest, goneRowsGoAndTheOthersStay) {
    fill(6);
    MessageRow *first = row(0);
    rows.removeAt(3);
    update();
    EXPECT_EQ(list.widgetCount(), 5);
    EXPECT_EQ(row(0), first);
    EXPECT_GT(topOf(3), topOf(2));
}

TEST_F(MessageListTest, anotherLookLaysEverythingAnew) {
    fill(20);
    const int before = bar().maximum();
    setLook(look.theme(), TextSize::extraLarge);
    EXPECT_GT(bar().maximum(), before);
    EXPECT_TRUE(isAtEnd());
}

TEST_F(MessageListTest, anotherLookGivesEveryRowTheHeightThatItTakesThere) {
    fillWithThinking(4);
    setLook(Theme::nearBlack, TextSize::extraLarge);
    for (const MessageRow *seen : list.findChildren<MessageRow *>()) {
        MessageRow fresh(look, clock, seen->model());
        EXPECT_EQ(seen->height(), fresh.layIn(seen->width()));
        EXPECT_EQ(seen->textView()->geometry(), fresh.textView()->geometry());
    }
}

TEST_F(MessageListTest, theListIsOneStopOnTheKeyboardsWay) {
    QWidget window;
    QVBoxLayout column(&window);
    auto *before = new QLineEdit;
    auto *inside = new MessageList(look, clock);
    auto *after = new QLineEdit;
    for (QWidget *widget : std::initializer_list<QWidget *>{before, inside, after})
        column.addWidget(widget);
    fill(6, 1);
    inside->setRows(chat, rows);
    window.resize(800, 600);
    present(window);
    before->setFocus();
    const auto press = [&](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window.focusWidget(), key, modifiers);
        return window.focusWidget();
    };
    const auto text = [&](int index) { return inside->rowWidget(rows.at(index).id)->textView(); };
    EXPECT_EQ(press(Qt::Key_Tab), text(5));
    EXPECT_EQ(press(Qt::Key_Up), text(4));
    EXPECT_EQ(press(Qt::Key_Down), text(5));
    EXPECT_EQ(press(Qt::Key_Down), text(5));
    EXPECT_EQ(press(Qt::Key_Tab), buttonNamed(*inside->rowWidget(rows.at(5).id), u"Copy"_s));
    EXPECT_EQ(press(Qt::Key_Tab), after);
    EXPECT_EQ(press(Qt::Key_Backtab, Qt::ShiftModifier), text(5));
    EXPECT_EQ(press(Qt::Key_Backtab, Qt::ShiftModifier), before);
}

TEST_F(MessageListTest, theRowWithTheFocusStaysWhenItIsFarAway) {
    fill(300);
    row(299)->textView()->setFocus(Qt::TabFocusReason);
    bar().setValue(0);
    EXPECT_TRUE(row(299));
    EXPECT_EQ(list.window()->focusWidget(), row(299)->textView());
}

TEST_F(MessageListTest, aScreenReaderGoesThroughAListFromTopToBottom) {
    fill(100);
    for (const int place : {bar().maximum() / 2, bar().maximum() / 2 - 500, 0, 700}) {
        bar().setValue(place);
        QAccessibleInterface *spoken = QAccessible::queryAccessibleInterface(list.viewport());
        EXPECT_EQ(spoken->role(), QAccessible::List);
        EXPECT_EQ(spoken->text(QAccessible::Name), u"Messages"_s);
        ASSERT_GT(spoken->childCount(), 5);
        int above = std::numeric_limits<int>::min();
        for (int child = 0; child < spoken->childCount(); ++child) {
            EXPECT_EQ(spoken->child(child)->role(), QAccessible::ListItem);
            EXPECT_GT(spoken->child(child)->rect().y(), above);
            above = spoken->child(child)->rect().y();
        }
    }
}

TEST_F(MessageListTest, theWayBackToTheEndIsOpen) {
    fill(60);
    QSignalSpy changes(&list, &MessageList::followsEndChanged);
    bar().setValue(bar().maximum() / 2);
    EXPECT_EQ(changes.count(), 1);
    list.goToEnd();
    EXPECT_EQ(changes.count(), 2);
    EXPECT_TRUE(list.followsEnd());
    EXPECT_TRUE(isAtEnd());
}

TEST_F(MessageListTest, aScreenReaderHearsWhoSpeaks) {
    fill(2);
    EXPECT_EQ(spokenRole(row(0)), QAccessible::ListItem);
    EXPECT_EQ(spokenName(row(0)), u"You"_s);
    EXPECT_EQ(spokenName(row(1)), u"Ostrelin"_s);
    EXPECT_EQ(spokenName(row(0)->textView()), rows.at(0).text);
}

TEST_F(MessageListTest, tabLeadsThroughTheRowAndOut) {
    fillWithThinking(1);
    const auto press = [this](Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(list.window()->focusWidget(), key, modifiers);
        return list.window()->focusWidget();
    };
    row(1)->textView()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(press(Qt::Key_Backtab, Qt::ShiftModifier), box(1));
    EXPECT_TRUE(row(1)->actionLine()->areActionsVisible());
    EXPECT_EQ(press(Qt::Key_Backtab, Qt::ShiftModifier), head(1));
    EXPECT_EQ(press(Qt::Key_Tab), box(1));
    EXPECT_EQ(press(Qt::Key_Tab), row(1)->textView());
    head(1)->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(press(Qt::Key_Up), row(0)->textView());
}

TEST_F(MessageListTest, aRowOfThinkingAloneIsReachedByKeys) {
    append(Kind::user, u"Hi"_s);
    append(Kind::assistant, {});
    rows[1].reasoning = u"hm"_s;
    update();
    row(0)->textView()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(row(0)->textView(), Qt::Key_Down);
    EXPECT_EQ(list.window()->focusWidget(), head(1));
}

TEST_F(MessageListTest, withMotionTheListGlidesToItsEnd) {
    fill(30);
    look.setMotion(Motion::full);
    append(Kind::user, paragraphs(3));
    update();
    EXPECT_FALSE(isAtEnd());
    EXPECT_TRUE(QTest::qWaitFor([this] { return isAtEnd(); }));
}

TEST_F(MessageListTest, aChatThatIsOpenedRisesToItsPlace) {
    look.setMotion(Motion::full);
    AnimationClock time;
    rows.clear();
    chat = QUuid::createUuid();
    fill(30);
    const auto below = [this] {
        return row(29)->geometry().bottom() + 1 -
               (list.viewport()->height() - style::listPadding + style::rowOutset);
    };
    EXPECT_EQ(below(), 14);
    time.advance(0ms);
    time.advance(100ms);
    EXPECT_NEAR(below(), 14 * (1 - springAt(100ms, 350ms, 0.85)), 1);
    time.advance(400ms);
    EXPECT_EQ(below(), 0);
    look.setMotion(Motion::reduced);
    rows.clear();
    chat = QUuid::createUuid();
    fill(30);
    EXPECT_EQ(below(), 0);
}

TEST_F(MessageListTest, aGrowingReplyIsFollowedAtOnce) {
    fill(30);
    look.setMotion(Motion::full);
    for (int piece = 4; piece < 10; ++piece) {
        rows.last().text = paragraphs(piece);
        const int before = bar().maximum();
        update();
        EXPECT_GT(bar().maximum(), before);
        ASSERT_TRUE(isAtEnd());
    }
}

TEST_F(MessageListTest, aReplyThatGrowsDuringTheGlideIsFollowedAfterIt) {
    fill(30);
    look.setMotion(Motion::full);
    append(Kind::assistant, paragraphs(3));
    update();
    rows.last().text = paragraphs(8);
    update();
    EXPECT_FALSE(isAtEnd());
    EXPECT_TRUE(list.followsEnd());
    EXPECT_TRUE(QTest::qWaitFor([this] { return isAtEnd(); }));
}
