#include "screens/ChatList.h"

#include "pages/PageDate.h"
#include "screens/HouseStyle.h"
#include "screens/Screen.h"
#include "screens/Style.h"
#include "support/Await.h"

#include <QContextMenuEvent>
#include <QHelpEvent>
#include <QMenu>
#include <QScrollBar>
#include <QSignalSpy>
#include <QTextDocumentFragment>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 224;

class ChatListTest : public testing::Test {
protected:
    ChatListTest() {
        window.resize(width, 300);
        list.resize(width, 300);
        present(window);
        other.setFocus();
    }

    static ConversationSummary chat(const QString &title) {
        return {QUuid::createUuid(), title, QDateTime::currentDateTimeUtc(), 0};
    }

    static QList<ConversationSummary> many(int count) {
        QList<ConversationSummary> chats;
        for (int index = 0; index < count; ++index)
            chats.append(chat(u"Chat %1"_s.arg(index)));
        return chats;
    }

    void show(int open) { list.setChats(chats, open < 0 ? QUuid() : chats.at(open).id); }

    QRect frame(int index) const { return list.frameOf(chats.at(index).id); }

    void clickOn(int index) { QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, frame(index).center()); }

    /// The tool tip of a row as it is read; empty if there is none.
    QString tipOf(int index) {
        show(-1);
        const QPoint place = frame(index).center();
        QHelpEvent event(QEvent::ToolTip, place, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list.viewport(), &event);
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    }

    /// The menu that is open, and what it offers.
    QMenu *menu() const { return list.findChild<QMenu *>(); }
    QAction *entry(const QString &text) const {
        const auto actions = menu()->actions();
        const auto found = std::find_if(actions.begin(), actions.end(),
                                        [&](const QAction *action) { return action->text() == text; });
        return found == actions.end() ? nullptr : *found;
    }
    void askForMenu(QContextMenuEvent::Reason reason, const QPoint &place) {
        QContextMenuEvent event(reason, place, list.viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(
            reason == QContextMenuEvent::Keyboard ? static_cast<QWidget *>(&list) : list.viewport(), &event);
    }

    /// What is drawn over the plain ground.
    QImage drawn() {
        QImage image(list.viewport()->size(), QImage::Format_ARGB32_Premultiplied);
        image.fill(Qt::transparent);
        list.viewport()->render(&image, {}, {}, QWidget::DrawChildren);
        return image;
    }

    /// Whether something is drawn in that part of the list.
    bool isDrawnIn(const QRect &area) {
        const QImage image = drawn();
        for (int y = area.top(); y <= area.bottom(); ++y) {
            for (int x = area.left(); x <= area.right(); ++x) {
                if (qAlpha(image.pixel(x, y)) > 0)
                    return true;
            }
        }
        return false;
    }

    QAccessibleInterface *spokenRow(int row) {
        return QAccessible::queryAccessibleInterface(&list)->child(row);
    }

    StillLook look;
    QWidget window;
    QPushButton other{&window};
    ChatList list{look, &window};
    QList<ConversationSummary> chats = many(5);
    QSignalSpy chosen{&list, &ChatList::chosen};
    QSignalSpy renames{&list, &ChatList::renameRequested};
    QSignalSpy deletions{&list, &ChatList::deleteRequested};
};

} // namespace

TEST_F(ChatListTest, theMarkerStandsBehindTheOpenChat) {
    show(2);
    EXPECT_EQ(list.marker(), QRectF(frame(2)));
    EXPECT_EQ(frame(2).size(), QSize(width, 32));
    EXPECT_EQ(frame(0).topLeft(), QPoint(0, 0));
    show(0);
    EXPECT_EQ(list.marker(), QRectF(frame(0)));
}

TEST_F(ChatListTest, withoutAnOpenChatInTheListThereIsNoMarker) {
    show(-1);
    EXPECT_TRUE(list.marker().isEmpty());
    list.setChats(chats, QUuid::createUuid());
    EXPECT_TRUE(list.marker().isEmpty());
    show(1);
    EXPECT_FALSE(list.marker().isEmpty());
    const QUuid open = chats.takeAt(1).id;
    list.setChats(chats, open);
    EXPECT_TRUE(list.marker().isEmpty());
    list.setChats({}, open);
    EXPECT_TRUE(list.marker().isEmpty());
}

TEST_F(ChatListTest, theMarkerIsARoundedRectangleOfATenthOfTheInk) {
    for (const Theme theme : themes) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        show(2);
        const QImage image = drawn();
        const QRect area = frame(2);
        QColor tenth = look.palette().ink;
        tenth.setAlphaF(0.1F);
        const auto at = [&](int x, int y) { return image.pixelColor(area.topLeft() + QPoint(x, y)); };
        EXPECT_NEAR(at(width - 20, 16).alpha(), tenth.alpha(), 1);
        EXPECT_NEAR(at(width - 20, 16).red(), tenth.red(), 12);
        EXPECT_EQ(at(width - 20, -2).alpha(), 0);
        EXPECT_EQ(at(0, 0).alpha(), 0);
        EXPECT_EQ(at(1, 1).alpha(), 0) << "the corners are round";
        EXPECT_NEAR(at(3, 3).alpha(), tenth.alpha(), 2) << "by seven pixels";
        EXPECT_NEAR(at(7, 0).alpha(), tenth.alpha(), 2);
    }
}

TEST_F(ChatListTest, aChatThatAnswersHasADotAtItsEnd) {
    chats[1].title = u"word "_s.repeated(50);
    show(-1);
    const QRect dot(width - style::chatRowPadding - 7, frame(1).center().y() - 3, 7, 7);
    list.setAnswering(chats.at(1).id);
    EXPECT_EQ(drawn().pixel(dot.center()), look.palette().accent.rgb());
    EXPECT_FALSE(isDrawnIn(dot.translated(-9, 0).adjusted(2, 0, 0, 0))) << "the title keeps off";
    const QString date = shownDateAndTime(chats.at(1).updatedAt);
    EXPECT_EQ(spokenRow(1)->text(QAccessible::Description), u"Answering, "_s + date);
    list.setAnswering({});
    EXPECT_NE(drawn().pixel(dot.center()), look.palette().accent.rgb());
    EXPECT_EQ(spokenRow(1)->text(QAccessible::Description), date);
}

TEST_F(ChatListTest, chatsOfOneTitleSoundDifferent) {
    chats[0].title = chats.at(1).title;
    chats[0].updatedAt = chats.at(1).updatedAt.addDays(-1);
    show(-1);
    EXPECT_EQ(spokenRow(0)->text(QAccessible::Name), spokenRow(1)->text(QAccessible::Name));
    EXPECT_NE(spokenRow(0)->text(QAccessible::Description), spokenRow(1)->text(QAccessible::Description));
}

TEST_F(ChatListTest, theMarkerGlidesToAnotherChat) {
    look.setMotion(Motion::full);
    show(0);
    EXPECT_EQ(list.marker(), QRectF(frame(0))) << "it appears at its place";
    show(4);
    EXPECT_LT(list.marker().top(), frame(1).top()) << "it only sets out";
    EXPECT_TRUE(eventually([&] { return list.marker() == QRectF(frame(4)); }));
}

TEST_F(ChatListTest, theMarkerGoesOnFromWhereItIs) {
    look.setMotion(Motion::full);
    show(0);
    show(4);
    ASSERT_TRUE(eventually([&] { return list.marker().top() > frame(1).top(); }));
    const double place = list.marker().top();
    show(0);
    EXPECT_NEAR(list.marker().top(), place, 1);
    EXPECT_TRUE(eventually([&] { return list.marker() == QRectF(frame(0)); }));
}

TEST_F(ChatListTest, theMarkerFollowsItsChatThroughTheOrder) {
    show(3);
    chats.move(3, 0);
    show(0);
    EXPECT_EQ(list.marker(), QRectF(frame(0)));
    chats.prepend(chat(u"Newer"_s));
    show(1);
    EXPECT_EQ(list.marker(), QRectF(frame(1)));
}

TEST_F(ChatListTest, theMarkerScrollsWithTheRows) {
    chats = many(100);
    show(3);
    list.verticalScrollBar()->setValue(50);
    EXPECT_EQ(list.marker(), QRectF(frame(3)));
}

TEST_F(ChatListTest, theMarkerKeepsItsRowAtAnySizeOfText) {
    show(3);
    Settings settings;
    settings.textSize = TextSize::extraLarge;
    settings.typeFace = TypeFace::serif;
    look.follow(settings);
    QCoreApplication::processEvents();
    EXPECT_EQ(list.marker(), QRectF(frame(3)));
    const int text = QFontMetrics(look.font(TextStyle::callout)).height();
    EXPECT_GE(frame(3).height(), text + style::spaceTiny);
}

TEST_F(ChatListTest, aClickChoosesAndAPressElsewhereDoesNot) {
    show(0);
    clickOn(2);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.last().first().toUuid(), chats.at(2).id);
    QTest::mouseClick(list.viewport(), Qt::LeftButton, {}, QPoint(20, 290));
    QTest::mouseClick(list.viewport(), Qt::RightButton, {}, frame(3).center());
    QTest::mousePress(list.viewport(), Qt::LeftButton, {}, frame(3).center());
    QTest::mouseRelease(list.viewport(), Qt::LeftButton, {}, frame(4).center());
    EXPECT_EQ(chosen.count(), 1);
}

TEST_F(ChatListTest, theMarkerWaitsForTheChatToBeOpen) {
    show(0);
    clickOn(2);
    EXPECT_EQ(list.marker(), QRectF(frame(0))) << "its file may be gone";
}

TEST_F(ChatListTest, theArrowKeysMoveAndReturnOpens) {
    show(1);
    list.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(list.showsFocus());
    EXPECT_EQ(list.currentIndex().row(), 1) << "it begins at the open chat";
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_EQ(chosen.count(), 0) << "moving opens nothing";
    EXPECT_EQ(list.marker(), QRectF(frame(1)));
    QTest::keyClick(&list, Qt::Key_Return);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.last().first().toUuid(), chats.at(3).id);
    QTest::keyClick(&list, Qt::Key_Home);
    QTest::keyClick(&list, Qt::Key_Space);
    EXPECT_EQ(chosen.last().first().toUuid(), chats.at(0).id);
    QTest::keyClick(&list, Qt::Key_End);
    QTest::keyClick(&list, Qt::Key_Enter);
    EXPECT_EQ(chosen.last().first().toUuid(), chats.at(4).id);
}

TEST_F(ChatListTest, theDeleteKeyDeletesNothing) {
    show(0);
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_Delete);
    QTest::keyClick(&list, Qt::Key_Backspace);
    EXPECT_EQ(deletions.count(), 0);
}

TEST_F(ChatListTest, aRingShowsWhereTheKeyboardIs) {
    show(-1);
    const auto hasRing = [&](int row) {
        return list.viewport()->grab().toImage().pixel(frame(row).left() + 1, frame(row).center().y()) ==
               look.palette().accent.rgb();
    };
    list.setFocus(Qt::MouseFocusReason);
    EXPECT_FALSE(hasRing(0));
    QTest::keyClick(&list, Qt::Key_Home);
    EXPECT_TRUE(hasRing(0));
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_FALSE(hasRing(0));
    EXPECT_TRUE(hasRing(1));
    list.clearFocus();
    EXPECT_FALSE(hasRing(1));
}

TEST_F(ChatListTest, theMenuRenamesAndDeletesTheRowUnderThePointer) {
    show(0);
    askForMenu(QContextMenuEvent::Mouse, frame(3).center());
    ASSERT_TRUE(menu());
    QStringList texts;
    for (const QAction *action : menu()->actions())
        texts.append(action->text());
    EXPECT_EQ(texts, (QStringList{u"Rename"_s, u"Delete"_s}));
    entry(u"Rename"_s)->trigger();
    ASSERT_EQ(renames.count(), 1);
    EXPECT_EQ(renames.last().first().value<ConversationSummary>(), chats.at(3));
    entry(u"Delete"_s)->trigger();
    ASSERT_EQ(deletions.count(), 1);
    EXPECT_EQ(deletions.last().first().toUuid(), chats.at(3).id);
    EXPECT_EQ(chosen.count(), 0);
}

TEST_F(ChatListTest, theMenuWarnsOfWhatCannotBeUndone) {
    show(0);
    askForMenu(QContextMenuEvent::Mouse, frame(3).center());
    HouseStyle style;
    menu()->setStyle(&style);
    menu()->setPalette(toolkitPalette(look.palette()));
    const auto warnings = [this](const QString &name) {
        return pixelsOf(menu()->grab(menu()->actionGeometry(entry(name))).toImage(),
                        look.palette().destructiveInk());
    };
    EXPECT_EQ(warnings(u"Rename"_s), 0);
    EXPECT_GT(warnings(u"Delete"_s), 0);
    delete menu();
}

TEST_F(ChatListTest, besideTheRowsThereIsNoMenu) {
    show(0);
    askForMenu(QContextMenuEvent::Mouse, QPoint(20, 290));
    EXPECT_FALSE(menu());
}

TEST_F(ChatListTest, theMenuComesByKeysToo) {
    show(0);
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_Down);
    askForMenu(QContextMenuEvent::Keyboard, QPoint());
    ASSERT_TRUE(menu());
    EXPECT_TRUE(
        QRect(list.viewport()->mapToGlobal(frame(1).topLeft()), frame(1).size()).contains(menu()->pos()));
    entry(u"Delete"_s)->trigger();
    EXPECT_EQ(deletions.last().first().toUuid(), chats.at(1).id);
    menu()->close();
    ASSERT_TRUE(eventually([&] { return !menu(); }));
    present(window);
    EXPECT_TRUE(list.showsFocus()) << "the keyboard is where it was";
    QTest::keyClick(&list, Qt::Key_F10, Qt::ShiftModifier);
    ASSERT_TRUE(menu());
    QTest::keyClick(menu(), Qt::Key_Down);
    QTest::keyClick(menu(), Qt::Key_Return);
    EXPECT_EQ(renames.last().first().value<ConversationSummary>().id, chats.at(1).id);
}

TEST_F(ChatListTest, theMenuIsAboutItsChatWhateverTheListDoes) {
    show(0);
    askForMenu(QContextMenuEvent::Mouse, frame(3).center());
    const QUuid meant = chats.at(3).id;
    chats = many(2);
    show(0);
    entry(u"Delete"_s)->trigger();
    EXPECT_EQ(deletions.last().first().toUuid(), meant);
}

TEST_F(ChatListTest, onlyATitleThatIsCutHasATip) {
    EXPECT_EQ(tipOf(1), QString());
    chats[0].title = u"<img src='http://example.org/'> &amp; "_s.repeated(3);
    EXPECT_EQ(tipOf(0), chats.at(0).title.simplified());
    chats[0].title = u"word "_s.repeated(200);
    EXPECT_LT(tipOf(0).size(), 400);
    EXPECT_TRUE(tipOf(0).endsWith(u'…'));
}

TEST_F(ChatListTest, tabLeadsToARowThatIsInSight) {
    chats = many(100);
    show(3);
    list.verticalScrollBar()->setValue(1000);
    list.setFocus(Qt::MouseFocusReason);
    EXPECT_EQ(list.verticalScrollBar()->value(), 1000) << "a click leaves what it is on";
    other.setFocus();
    list.setFocus(Qt::TabFocusReason);
    EXPECT_TRUE(list.viewport()->rect().contains(frame(3)));
}

TEST_F(ChatListTest, f2Renames) {
    show(0);
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_F2);
    EXPECT_EQ(renames.last().first().value<ConversationSummary>().id, chats.at(0).id);
}

TEST_F(ChatListTest, itIsReadAloud) {
    show(2);
    EXPECT_EQ(spokenName(&list), u"Chats"_s);
    EXPECT_EQ(spokenRole(&list), QAccessible::List);
    EXPECT_EQ(spokenRow(2)->role(), QAccessible::ListItem);
    EXPECT_EQ(spokenRow(2)->text(QAccessible::Name), u"Chat 2"_s);
    for (int row = 0; row < 5; ++row)
        EXPECT_EQ(spokenRow(row)->state().selected, row == 2) << "the open chat is the selected one";
}

TEST_F(ChatListTest, theOpenChatStaysSelectedWhereverTheKeyboardIs) {
    show(2);
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_Down);
    EXPECT_TRUE(spokenRow(2)->state().selected);
    EXPECT_FALSE(spokenRow(3)->state().selected);
    EXPECT_TRUE(spokenRow(3)->state().focused);
}

TEST_F(ChatListTest, aScreenReaderOpensAChatToo) {
    show(2);
    const auto toggle = [this](int row) {
        spokenRow(row)->actionInterface()->doAction(QAccessibleActionInterface::toggleAction());
    };
    toggle(4);
    ASSERT_EQ(chosen.count(), 1);
    EXPECT_EQ(chosen.last().first().toUuid(), chats.at(4).id);
    EXPECT_TRUE(spokenRow(2)->state().selected) << "until the other one is open";
    toggle(2);
    EXPECT_TRUE(spokenRow(2)->state().selected) << "an open chat can't be closed";
    EXPECT_EQ(chosen.count(), 1);
}

TEST_F(ChatListTest, aLongTitleIsCutOffOnItsLine) {
    chats[0].title = u"word "_s.repeated(200);
    show(-1);
    EXPECT_EQ(frame(0).size(), frame(1).size());
    EXPECT_TRUE(isDrawnIn(frame(0)));
    EXPECT_FALSE(isDrawnIn(QRect(width - style::chatRowPadding, 0, style::chatRowPadding, 32)));
    chats[0].title = QString(500, u'm');
    show(-1);
    EXPECT_TRUE(isDrawnIn(frame(0)));
    EXPECT_FALSE(isDrawnIn(QRect(width - style::chatRowPadding, 0, style::chatRowPadding, 32)));
}

TEST_F(ChatListTest, aTitleOfNothingIsStillToBeSeen) {
    for (const QString &title : {QString(), u"  \n"_s, u"\u200b"_s}) {
        chats = {chat(title)};
        show(-1);
        EXPECT_TRUE(isDrawnIn(frame(0)));
        EXPECT_EQ(list.model()->index(0, 0).data(), u"New chat"_s);
    }
}

TEST_F(ChatListTest, whereOneReadsFromTheRightTitlesStandThere) {
    chats = {chat(u"a"_s)};
    list.setLayoutDirection(Qt::RightToLeft);
    show(-1);
    EXPECT_FALSE(isDrawnIn(QRect(0, 0, width / 2, 32)));
    EXPECT_TRUE(isDrawnIn(QRect(width / 2, 0, width / 2, 32)));
}

TEST_F(ChatListTest, anotherTitleFadesIn) {
    look.setMotion(Motion::full);
    chats[1].title = u"iiii"_s;
    show(-1);
    const QRect end(100, frame(1).top(), 100, 32);
    EXPECT_FALSE(isDrawnIn(end));
    chats[1].title = u"a much longer title than before"_s;
    show(-1);
    const QImage before = list.viewport()->grab().toImage();
    EXPECT_TRUE(eventually([&] { return list.viewport()->grab().toImage() != before; }));
    EXPECT_TRUE(isDrawnIn(end));
}

TEST_F(ChatListTest, withReducedMotionAnotherTitleIsThereAtOnce) {
    show(-1);
    chats[1].title = u"a much longer title than before"_s;
    show(-1);
    const QImage once = list.viewport()->grab().toImage();
    letPass(300);
    EXPECT_EQ(list.viewport()->grab().toImage(), once);
}

TEST_F(ChatListTest, aListThatChangesByItselfDoesNotScroll) {
    chats = many(100);
    show(0);
    list.verticalScrollBar()->setValue(1000);
    chats.move(50, 0);
    show(1);
    EXPECT_EQ(list.verticalScrollBar()->value(), 1000);
}

TEST_F(ChatListTest, aChatThatIsOpenedComesIntoSight) {
    chats = many(100);
    show(0);
    list.verticalScrollBar()->setValue(1000);
    chats.prepend(chat(u"New chat"_s));
    show(0);
    EXPECT_EQ(list.verticalScrollBar()->value(), 0);
    show(99);
    EXPECT_TRUE(list.viewport()->rect().contains(frame(99)));
}

TEST_F(ChatListTest, theKeyboardStaysWithItsChat) {
    show(0);
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_Down);
    QTest::keyClick(&list, Qt::Key_Down);
    chats.move(2, 0);
    show(1);
    EXPECT_EQ(list.currentIndex().row(), 0);
}

TEST_F(ChatListTest, whereAChatIsGoneTheKeyboardIsAtTheNextOne) {
    show(0);
    list.setFocus(Qt::TabFocusReason);
    QTest::keyClick(&list, Qt::Key_Down);
    chats.removeAt(1);
    show(0);
    EXPECT_EQ(list.currentIndex().row(), 1);
    QTest::keyClick(&list, Qt::Key_End);
    chats.removeLast();
    show(0);
    EXPECT_EQ(list.currentIndex().row(), 2) << "or at the last";
}
