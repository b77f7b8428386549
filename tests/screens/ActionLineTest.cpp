#include "screens/ActionLine.h"

#include "screens/MessageList.h"
#include "screens/MessageRow.h"
#include "screens/Screen.h"
#include "screens/Style.h"
#include "support/Await.h"
#include "support/ManualClock.h"

#include <QApplication>
#include <QCursor>
#include <QLineEdit>
#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Kind = MessageRowModel::Kind;

/// A chat of a question and a reply between two fields that take the focus.
class ActionLineTest : public testing::Test {
protected:
    ActionLineTest() {
        movePointer(away);
        QVBoxLayout *column = new QVBoxLayout(&window);
        for (QWidget *widget : std::initializer_list<QWidget *>{before, list, after})
            column->addWidget(widget);
        window.resize(800, 600);
        present(window);
        before->setFocus();
        update();
    }
    ~ActionLineTest() override { movePointer(away); }

    void update() { list->setRows(chat, rows); }

    MessageRow *row() { return list->rowWidget(rows.at(1).id); }
    ActionLine *line() { return row()->actionLine(); }
    QPushButton *copy() { return buttonNamed(*row(), u"Copy"_s); }
    QPushButton *regenerate() { return buttonNamed(*row(), u"Regenerate"_s); }

    /// Outside every window.
    static constexpr QPoint away{-10, -10};

    static void movePointer(const QPoint &place) {
        QCursor::setPos(place);
        QCoreApplication::processEvents();
    }
    void enter() { movePointer(row()->mapToGlobal(row()->rect().center())); }
    void leave() { movePointer(away); }
    void pass(std::chrono::milliseconds time) {
        clock.advance(time);
        QCoreApplication::processEvents();
    }
    void setStreaming(bool isStreaming) {
        rows[1].isStreaming = isStreaming;
        update();
    }
    void showReplies(int count) {
        for (int reply = 0; reply < count; ++reply)
            rows.append({QUuid::createUuid(), Kind::assistant, u"Hello"_s});
        update();
    }

    /// The row below the pointer; null if there is none.
    MessageRow *rowBelowPointer() {
        QWidget *below = QApplication::widgetAt(QCursor::pos());
        while (below && !qobject_cast<MessageRow *>(below))
            below = below->parentWidget();
        return qobject_cast<MessageRow *>(below);
    }
    /// The rows whose actions show.
    QList<MessageRow *> attended() {
        QList<MessageRow *> found = list->findChildren<MessageRow *>();
        found.removeIf([](const MessageRow *seen) {
            return !seen->actionLine() || !seen->actionLine()->areActionsVisible();
        });
        return found;
    }
    QWidget *press(Qt::Key key, Qt::KeyboardModifiers modifiers = {}) {
        QTest::keyClick(window.focusWidget(), key, modifiers);
        return window.focusWidget();
    }

    /// How far the button's word stands out, 0 to 255.
    int strength() {
        const QImage drawn = copy()->grab().toImage();
        int most = 0;
        for (int y = 0; y < drawn.height(); ++y) {
            for (int x = 0; x < drawn.width(); ++x)
                most = std::max(most, std::abs(qGray(drawn.pixel(x, y)) - qGray(drawn.pixel(0, 0))));
        }
        return most;
    }

    StillLook look;
    ManualClock clock;
    QWidget window;
    QLineEdit *before = new QLineEdit;
    MessageList *list = new MessageList(look, clock);
    QLineEdit *after = new QLineEdit;
    QUuid chat = QUuid::createUuid();
    QList<MessageRowModel> rows{{QUuid::createUuid(), Kind::user, u"Hi"_s},
                                {QUuid::createUuid(), Kind::assistant, u"Hello"_s, {}, false, true}};
};

} // namespace

TEST_F(ActionLineTest, thePointerShowsTheActionsAndTheyStayForASecond) {
    EXPECT_FALSE(line()->areActionsVisible());
    EXPECT_EQ(strength(), 0);
    enter();
    EXPECT_TRUE(line()->areActionsVisible());
    EXPECT_GT(strength(), 50);
    leave();
    pass(999ms);
    EXPECT_TRUE(line()->areActionsVisible());
    pass(1ms);
    EXPECT_FALSE(line()->areActionsVisible());
    EXPECT_EQ(strength(), 0);
}

TEST_F(ActionLineTest, whoComesBackWithinASecondSeesNoFlicker) {
    look.setMotion(Motion::full);
    enter();
    EXPECT_TRUE(eventually([this] { return strength() > 50; }));
    leave();
    pass(900ms);
    enter();
    pass(5s);
    EXPECT_TRUE(line()->areActionsVisible());
    EXPECT_GT(strength(), 50);
    leave();
    pass(999ms);
    EXPECT_TRUE(line()->areActionsVisible()) << "the second is a new one";
    pass(1ms);
    EXPECT_FALSE(line()->areActionsVisible());
}

TEST_F(ActionLineTest, comingAndGoingMovesNothing) {
    const QRect area = row()->geometry();
    EXPECT_EQ(line()->height(), 22);
    EXPECT_EQ(line()->y(), row()->textView()->textArea().bottom() + 1 + 4);
    enter();
    EXPECT_EQ(row()->geometry(), area);
    EXPECT_EQ(line()->height(), 22);
}

TEST_F(ActionLineTest, theWordsStandTwelveApartAndInLineWithTheText) {
    const int ring = style::rowOutset;
    EXPECT_EQ(copy()->mapTo(row(), QPoint(ring, 0)).x(), row()->textView()->textArea().x());
    EXPECT_EQ(regenerate()->x() + ring - (copy()->geometry().right() + 1 - ring), 12);
}

TEST_F(ActionLineTest, whatCannotBeSeenCannotBeClicked) {
    const QPoint place = copy()->mapTo(row(), copy()->rect().center());
    EXPECT_EQ(row()->childAt(place), nullptr);
    enter();
    EXPECT_EQ(row()->childAt(place), copy());
}

TEST_F(ActionLineTest, aReplyThatIsWrittenHasNoActionsUntilItsEnd) {
    setStreaming(true);
    enter();
    EXPECT_FALSE(line()->areActionsVisible());
    EXPECT_FALSE(copy());
    const int height = row()->height();
    setStreaming(false);
    EXPECT_TRUE(line()->areActionsVisible()) << "the pointer has stayed";
    EXPECT_EQ(row()->height(), height) << "the end of a reply moves nothing";
}

TEST_F(ActionLineTest, aReplyThatGrewBelowThePointerHasThemAtItsEnd) {
    setStreaming(true);
    const QPoint below(row()->rect().center().x(), row()->height() + 100);
    movePointer(row()->mapToGlobal(below));
    rows[1].text = u"Hello\n\n"_s.repeated(10);
    update();
    EXPECT_FALSE(line()->areActionsVisible());
    setStreaming(false);
    EXPECT_TRUE(line()->areActionsVisible());
}

TEST_F(ActionLineTest, withoutThePointerTheEndShowsNothing) {
    setStreaming(true);
    enter();
    leave();
    setStreaming(false);
    EXPECT_FALSE(line()->areActionsVisible());
    pass(2s);
    EXPECT_FALSE(line()->areActionsVisible());
}

TEST_F(ActionLineTest, aReplyThatIsWrittenAnewHidesThemAtOnce) {
    enter();
    leave();
    setStreaming(true);
    EXPECT_FALSE(line()->areActionsVisible());
    setStreaming(false);
    enter();
    pass(2s);
    EXPECT_TRUE(line()->areActionsVisible()) << "the hiding that was planned is off";
}

TEST_F(ActionLineTest, withMotionTheyFade) {
    enter();
    const double whole = strength();
    leave();
    pass(1s);
    look.setMotion(Motion::full);
    AnimationClock time;
    const auto expectFade = [&](double from, double to, std::chrono::milliseconds duration) {
        const auto quarter = duration / 4;
        time.advance(0ms);
        EXPECT_NEAR(strength() / whole, from, 0.02);
        for (const double way : {0.125, 0.5, 0.875}) {
            time.advance(quarter);
            EXPECT_NEAR(strength() / whole, from + way * (to - from), 0.03) << "towards " << to;
        }
        time.advance(duration - 3 * quarter);
    };
    enter();
    expectFade(0, 1, 150ms);
    leave();
    pass(1s);
    expectFade(1, 0, 350ms);
    enter();
    expectFade(0, 1, 150ms);
    setStreaming(true);
    EXPECT_FALSE(line()->areActionsVisible());
    EXPECT_TRUE(line()->isVisible()) << "until they have faded";
    expectFade(1, 0, 250ms);
    EXPECT_FALSE(line()->isVisible());
}

TEST_F(ActionLineTest, scrollingBringsThemToTheRowThatComesBelowThePointer) {
    showReplies(40);
    movePointer(list->mapToGlobal(list->rect().center()));
    for (int step = 0; step < 5; ++step) {
        list->verticalScrollBar()->setValue(list->verticalScrollBar()->value() - 70);
        pass(1s);
        ASSERT_TRUE(rowBelowPointer());
        EXPECT_EQ(attended(), QList{rowBelowPointer()});
    }
    leave();
    pass(1s);
    EXPECT_TRUE(attended().isEmpty()) << "also where the row had come to the pointer";
}

TEST_F(ActionLineTest, aRowThatIsPushedAwayFromThePointerLosesThem) {
    showReplies(40);
    movePointer(list->mapToGlobal(list->rect().center()));
    const MessageRow *pushed = rowBelowPointer();
    rows.last().text = u"Hello\n\n"_s.repeated(4);
    update();
    pass(1s);
    ASSERT_TRUE(rowBelowPointer());
    EXPECT_NE(rowBelowPointer(), pushed);
    EXPECT_EQ(attended(), QList{rowBelowPointer()});
}

TEST_F(ActionLineTest, thePointerBesideTheRowsShowsNothing) {
    showReplies(40);
    for (const QPoint &place :
         {QPoint(2, list->height() / 2), QPoint(list->width() - 3, list->height() / 2)}) {
        movePointer(list->mapToGlobal(place));
        list->verticalScrollBar()->setValue(list->verticalScrollBar()->value() - 70);
        pass(1s);
        EXPECT_TRUE(attended().isEmpty());
    }
}

TEST_F(ActionLineTest, whatStandsBeforeTheListKeepsThePointerFromIt) {
    showReplies(40);
    QWidget cover(&window);
    cover.setGeometry(window.rect());
    cover.show();
    movePointer(list->mapToGlobal(list->rect().center()));
    list->verticalScrollBar()->setValue(list->verticalScrollBar()->value() - 70);
    EXPECT_TRUE(attended().isEmpty());
}

TEST_F(ActionLineTest, onlyAReplyWithTextHasThem) {
    EXPECT_FALSE(list->rowWidget(rows.at(0).id)->actionLine());
    rows[1].text = QString();
    update();
    enter();
    EXPECT_FALSE(line()->areActionsVisible());
    EXPECT_FALSE(copy());
}

TEST_F(ActionLineTest, whereRegeneratingIsNotAllowedThereIsOnlyCopy) {
    rows[1].canRegenerate = false;
    update();
    EXPECT_TRUE(copy());
    EXPECT_FALSE(regenerate());
}

TEST_F(ActionLineTest, aPressTellsWhatIsWanted) {
    QSignalSpy copied(list, &MessageList::copyRequested);
    const QSignalSpy regenerated(list, &MessageList::regenerateRequested);
    click(copy());
    ASSERT_EQ(copied.count(), 1);
    EXPECT_EQ(copied.at(0).at(0).toString(), u"Hello"_s);
    EXPECT_EQ(regenerated.count(), 0);
    click(regenerate());
    EXPECT_EQ(regenerated.count(), 1);
}

TEST_F(ActionLineTest, keysReachThemFromTheText) {
    QSignalSpy copied(list, &MessageList::copyRequested);
    EXPECT_EQ(press(Qt::Key_Tab), row()->textView());
    EXPECT_TRUE(line()->areActionsVisible()) << "the keyboard is in the row";
    EXPECT_EQ(press(Qt::Key_Tab), copy());
    press(Qt::Key_Return);
    EXPECT_EQ(copied.count(), 1);
    EXPECT_EQ(press(Qt::Key_Tab), regenerate());
    EXPECT_TRUE(line()->areActionsVisible());
    EXPECT_EQ(press(Qt::Key_Tab), after);
    pass(1s);
    EXPECT_FALSE(line()->areActionsVisible());
    EXPECT_EQ(press(Qt::Key_Backtab, Qt::ShiftModifier), row()->textView());
}

TEST_F(ActionLineTest, arrowsLeadFromTheButtonsToOtherRows) {
    copy()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(press(Qt::Key_Up), list->rowWidget(rows.at(0).id)->textView());
}

TEST_F(ActionLineTest, theKeyboardStaysInAReplyThatIsWrittenAnew) {
    for (QPushButton *button : {copy(), regenerate()}) {
        button->setFocus(Qt::TabFocusReason);
        setStreaming(true);
        EXPECT_EQ(window.focusWidget(), row()->textView());
        EXPECT_TRUE(row()->textView()->showsFocus());
        setStreaming(false);
        EXPECT_TRUE(line()->areActionsVisible()) << "the keyboard is in the row";
    }
}

TEST_F(ActionLineTest, aReplyThatBeginsWithoutATextKeepsTheKeyboardInTheList) {
    copy()->setFocus(Qt::TabFocusReason);
    rows[1].text.clear();
    setStreaming(true);
    EXPECT_EQ(window.focusWidget(), list->rowWidget(rows.at(0).id)->textView());
}

TEST_F(ActionLineTest, theKeyboardGoesToCopyWhereRegeneratingEnds) {
    regenerate()->setFocus(Qt::TabFocusReason);
    rows[1].canRegenerate = false;
    update();
    EXPECT_EQ(window.focusWidget(), copy());
    EXPECT_TRUE(line()->areActionsVisible());
}

TEST_F(ActionLineTest, aReplyThatTakesThePlaceOfAnotherTakesTheKeyboardToo) {
    regenerate()->setFocus(Qt::TabFocusReason);
    rows[1] = {QUuid::createUuid(), Kind::assistant, u"Good day"_s, {}, true};
    update();
    EXPECT_EQ(window.focusWidget(), row()->textView());
    after->setFocus(Qt::TabFocusReason);
    rows[1].id = QUuid::createUuid();
    update();
    EXPECT_EQ(window.focusWidget(), after) << "the keyboard was elsewhere";
}

TEST_F(ActionLineTest, aClickInTheTextDoesNotHoldThem) {
    enter();
    click(row()->textView());
    leave();
    pass(1s);
    EXPECT_FALSE(line()->areActionsVisible());
}

TEST_F(ActionLineTest, aRowMayGoWhileItWaits) {
    enter();
    leave();
    rows.removeLast();
    update();
    pass(2s);
    EXPECT_EQ(list->widgetCount(), 1);
}

TEST_F(ActionLineTest, aRowThatComesBackStartsAnew) {
    enter();
    leave();
    const MessageRowModel reply = rows.takeLast();
    update();
    rows.append(reply);
    update();
    EXPECT_FALSE(line()->areActionsVisible());
}
