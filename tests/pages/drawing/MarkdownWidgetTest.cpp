#include "pages/drawing/MarkdownWidget.h"

#include "support/Await.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QSignalSpy>
#include <QTest>
#include <QToolTip>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class MarkdownWidgetTest : public testing::Test {
protected:
    MarkdownWidgetTest() {
        show(
            u"one [two](https://example.org/ä) three\n\n```\n\ncode\n```\n\n- four\n- [five](mailto:a@example.org)"_s);
        window.show();
        window.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&window));
        widget.setFocus(Qt::TabFocusReason);
    }

    void show(const QString &text) {
        widget.setText(text);
        widget.resize(400, widget.layIn(400));
        window.resize(400, 400);
    }

    QPoint centerOf(int target) const {
        return widget.view().targets().at(target).areas.first().center().toPoint();
    }
    QPoint placeOf(int position) const { return widget.view().caretAt(position).center().toPoint(); }

    void keys(const QList<std::pair<Qt::Key, Qt::KeyboardModifiers>> &presses) {
        for (const auto &[key, modifiers] : presses)
            QTest::keyClick(&widget, key, modifiers);
    }

    QWidget window;
    MarkdownWidget widget{paperTheme(), &window};
    QSignalSpy followed{&widget, &MarkdownWidget::linkActivated};
};

} // namespace

TEST_F(MarkdownWidgetTest, aSelectionGoesThroughAllBlocksInTheOrderOfReading) {
    widget.selectAll();
    EXPECT_EQ(widget.selectedText(), u"one two three\nfour\nfive"_s);
    QTest::mousePress(&widget, Qt::LeftButton, {}, placeOf(8));
    QTest::mouseMove(&widget, placeOf(16));
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, placeOf(16));
    EXPECT_EQ(widget.selectedText(), u"three\nfo"_s);
    keys({{Qt::Key_C, Qt::ControlModifier}});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"three\nfo"_s);
}

TEST_F(MarkdownWidgetTest, keysGoFromBlockToBlock) {
    QSignalSpy left(&widget, &MarkdownWidget::left);
    QSignalSpy moved(&widget, &MarkdownWidget::caretMoved);
    keys({{Qt::Key_Down, {}}, {Qt::Key_Down, Qt::ShiftModifier}});
    EXPECT_EQ(widget.selectedText(), u"four\n"_s);
    EXPECT_EQ(moved.last().first().toRect(), widget.view().caretAt(19).toAlignedRect());
    EXPECT_EQ(left.count(), 0);
    keys({{Qt::Key_Down, {}}});
    ASSERT_EQ(left.count(), 1);
    EXPECT_EQ(left.first().first().value<SelectableWidget::Edge>(), SelectableWidget::Edge::bottom);
}

TEST_F(MarkdownWidgetTest, twoClicksTakeTheWordAndThreeTheItem) {
    QTest::mouseDClick(&widget, Qt::LeftButton, {}, placeOf(10));
    EXPECT_EQ(widget.selectedText(), u"three"_s);
    QTest::mousePress(&widget, Qt::LeftButton, {}, placeOf(16));
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, placeOf(16));
    EXPECT_EQ(widget.selectedText(), u"four"_s);
}

TEST_F(MarkdownWidgetTest, twoClicksOnALinkOrAButtonSelectNothing) {
    for (const int target : {0, 1}) {
        QTest::mouseClick(&widget, Qt::LeftButton, {}, centerOf(target));
        QTest::mouseDClick(&widget, Qt::LeftButton, {}, centerOf(target));
        QTest::mouseRelease(&widget, Qt::LeftButton, {}, centerOf(target));
        EXPECT_EQ(widget.selectedText(), QString());
    }
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"\ncode"_s);
    EXPECT_EQ(followed.count(), 1);
}

TEST_F(MarkdownWidgetTest, aClickFollowsALink) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, centerOf(0));
    ASSERT_EQ(followed.count(), 1);
    EXPECT_EQ(followed.first().first().toUrl(), QUrl(u"https://example.org/ä"_s));
    QTest::mouseClick(&widget, Qt::RightButton, {}, centerOf(0));
    EXPECT_EQ(followed.count(), 1);
}

TEST_F(MarkdownWidgetTest, draggingOverALinkSelectsIt) {
    QTest::mousePress(&widget, Qt::LeftButton, {}, placeOf(4));
    QTest::mouseMove(&widget, placeOf(7));
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, centerOf(0));
    EXPECT_EQ(followed.count(), 0);
    EXPECT_FALSE(widget.selectedText().isEmpty());
}

TEST_F(MarkdownWidgetTest, theButtonCopiesTheCodeAsItWasWritten) {
    QTest::mouseClick(&widget, Qt::LeftButton, {}, centerOf(1));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"\ncode"_s);
    EXPECT_EQ(followed.count(), 0);
    QGuiApplication::clipboard()->setText(u"before"_s);
    QTest::mousePress(&widget, Qt::LeftButton, {}, centerOf(1));
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, placeOf(0));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_s);
}

TEST_F(MarkdownWidgetTest, textThatComesDuringAPressDoesNotUndoIt) {
    show(u"one [two](https://example.org) three\n\n```\ncode"_s);
    QTest::mousePress(&widget, Qt::LeftButton, {}, centerOf(1));
    show(widget.text() + u"\nand more"_s);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, centerOf(1));
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"code\nand more"_s);
    QTest::mousePress(&widget, Qt::LeftButton, {}, centerOf(0));
    show(u"on [two](https://example.org)"_s);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, centerOf(0));
    EXPECT_EQ(followed.count(), 1);
}

TEST_F(MarkdownWidgetTest, aPressOnOneLinkNeverFollowsAnother) {
    QTest::mousePress(&widget, Qt::LeftButton, {}, centerOf(0));
    show(u"one [two](https://example.com) three"_s);
    QTest::mouseRelease(&widget, Qt::LeftButton, {}, centerOf(0));
    EXPECT_EQ(followed.count(), 0);
}

TEST_F(MarkdownWidgetTest, thePointerTellsWhatIsUnderIt) {
    const auto shapeAt = [&](const QPoint &point) {
        QTest::mouseMove(&widget, point);
        return widget.cursor().shape();
    };
    EXPECT_EQ(shapeAt(placeOf(1)), Qt::IBeamCursor);
    EXPECT_EQ(shapeAt(centerOf(0)), Qt::PointingHandCursor);
    EXPECT_EQ(shapeAt(centerOf(1)), Qt::ArrowCursor);
    EXPECT_EQ(shapeAt(centerOf(1) + QPoint(-100, 30)), Qt::ArrowCursor);
}

TEST_F(MarkdownWidgetTest, theButtonUnderThePointerStandsOut) {
    const QPoint corner = widget.view().targets().at(1).areas.first().topLeft().toPoint() + QPoint(4, 4);
    const QRgb before = widget.grab().toImage().pixel(corner);
    QTest::mouseMove(&widget, centerOf(1));
    const QRgb under = widget.grab().toImage().pixel(corner);
    EXPECT_NE(under, before);
    QTest::mouseMove(&widget, placeOf(0));
    EXPECT_EQ(widget.grab().toImage().pixel(corner), before);
}

TEST_F(MarkdownWidgetTest, tabGoesThroughLinksAndButtonsAndReturnPressesThem) {
    QSignalSpy moved(&widget, &MarkdownWidget::caretMoved);
    keys({{Qt::Key_Tab, {}}});
    EXPECT_EQ(widget.focusedTarget()->name, u"two"_s);
    EXPECT_TRUE(moved.last().first().toRect().contains(centerOf(0)));
    keys({{Qt::Key_Return, {}}});
    EXPECT_EQ(followed.count(), 1);
    keys({{Qt::Key_Tab, {}}, {Qt::Key_Space, {}}});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"\ncode"_s);
    keys({{Qt::Key_Tab, {}}});
    EXPECT_EQ(widget.focusedTarget()->name, u"five"_s);
    keys({{Qt::Key_Tab, Qt::ShiftModifier},
          {Qt::Key_Tab, Qt::ShiftModifier},
          {Qt::Key_Tab, Qt::ShiftModifier}});
    EXPECT_EQ(widget.focusedTarget(), std::nullopt);
    EXPECT_TRUE(widget.hasFocus());
}

TEST_F(MarkdownWidgetTest, aKeyHeldDownPressesOnce) {
    keys({{Qt::Key_Tab, {}}});
    for (const bool isRepeated : {false, true, true}) {
        QKeyEvent press(QEvent::KeyPress, Qt::Key_Return, {}, QString(), isRepeated);
        QCoreApplication::sendEvent(&widget, &press);
    }
    EXPECT_EQ(followed.count(), 1);
    EXPECT_EQ(widget.focusedTarget()->name, u"two"_s);
}

TEST_F(MarkdownWidgetTest, afterTheLastTargetTheFocusGoesOn) {
    QWidget next(&window);
    next.setFocusPolicy(Qt::TabFocus);
    next.show();
    keys({{Qt::Key_Tab, {}}, {Qt::Key_Tab, {}}, {Qt::Key_Tab, {}}});
    EXPECT_TRUE(widget.hasFocus());
    keys({{Qt::Key_Tab, {}}});
    EXPECT_TRUE(next.hasFocus());
    EXPECT_EQ(widget.focusedTarget(), std::nullopt);
}

TEST_F(MarkdownWidgetTest, theFocusedTargetHasARing) {
    const QImage before = widget.grab().toImage();
    for (const Target &target : widget.view().targets()) {
        keys({{Qt::Key_Tab, {}}});
        const QRect area = target.areas.first().toAlignedRect();
        const QPoint above(area.center().x(), std::max(area.top() - 2, 0));
        EXPECT_EQ(widget.grab().toImage().pixel(above), widget.view().theme().link.rgb());
        EXPECT_NE(before.pixel(above), widget.view().theme().link.rgb());
    }
    keys({{Qt::Key_Right, {}}});
    EXPECT_EQ(widget.focusedTarget(), std::nullopt);
    EXPECT_EQ(widget.selectedText(), QString());
}

TEST_F(MarkdownWidgetTest, whatReachesBeyondTheTextIsNotCut) {
    show(u"```line\na: 1\nb: 1\n```"_s);
    const QImage dots = widget.grab().toImage();
    const QRgb ground = dots.pixel(dots.width() / 2, dots.height() - 1);
    for (const int x : {0, 1, dots.width() - 2, dots.width() - 1})
        EXPECT_NE(dots.pixel(x, figure::reach), ground) << x;
    EXPECT_NE(dots.pixel(figure::reach, 0), ground);
    show(u"[one](https://example.org)"_s);
    keys({{Qt::Key_Tab, {}}});
    EXPECT_EQ(widget.grab().toImage().pixel(centerOf(0).x(), 0), widget.view().theme().link.rgb());
}

TEST_F(MarkdownWidgetTest, aLinkTellsWhereItLeads) {
    QHelpEvent help(QEvent::ToolTip, centerOf(0), widget.mapToGlobal(centerOf(0)));
    QCoreApplication::sendEvent(&widget, &help);
    EXPECT_EQ(QToolTip::text(), u"https://example.org/%C3%A4"_s);
    QHelpEvent elsewhere(QEvent::ToolTip, placeOf(1), widget.mapToGlobal(placeOf(1)));
    QCoreApplication::sendEvent(&widget, &elsewhere);
    EXPECT_TRUE(eventually([] { return QToolTip::text().isEmpty(); }));
}

TEST_F(MarkdownWidgetTest, theTipOfALongAddressFitsOnAScreen) {
    show(u"one [two](https://example.org/%1) three"_s.arg(QString(3000, u'w')));
    QHelpEvent help(QEvent::ToolTip, centerOf(0), widget.mapToGlobal(centerOf(0)));
    QCoreApplication::sendEvent(&widget, &help);
    const QSize size = QFontMetrics(QToolTip::font()).size(0, QToolTip::text());
    EXPECT_LT(size.width(), 1000);
    EXPECT_LT(size.height(), 200);
    EXPECT_TRUE(QToolTip::text().startsWith(u"https://example.org/"_s));
}

TEST_F(MarkdownWidgetTest, aTipGoesWhenAnotherLinkComesUnderThePointer) {
    QTest::mouseMove(&widget, centerOf(0));
    QHelpEvent help(QEvent::ToolTip, centerOf(0), widget.mapToGlobal(centerOf(0)));
    QCoreApplication::sendEvent(&widget, &help);
    ASSERT_TRUE(QToolTip::isVisible());
    show(u"one [two](https://example.com) three"_s);
    EXPECT_TRUE(eventually([] { return !QToolTip::isVisible(); }));
}

TEST_F(MarkdownWidgetTest, theMenuOffersALinkOnlyWhereThereIsOne) {
    const auto actionsAt = [&](const QPoint &point) {
        QContextMenuEvent event(QContextMenuEvent::Mouse, point, widget.mapToGlobal(point));
        QCoreApplication::sendEvent(&widget, &event);
        const QList<QMenu *> menus = widget.findChildren<QMenu *>();
        return menus.last()->actions();
    };
    EXPECT_EQ(actionsAt(placeOf(1)).size(), 2);
    const QList<QAction *> actions = actionsAt(centerOf(0));
    ASSERT_EQ(actions.size(), 3);
    EXPECT_EQ(actions[2]->text(), u"Copy Link"_s);
    actions[2]->trigger();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"https://example.org/%C3%A4"_s);
}

TEST_F(MarkdownWidgetTest, aGrowingTextKeepsSelectionAndFocus) {
    QTest::mouseDClick(&widget, Qt::LeftButton, {}, placeOf(10));
    keys({{Qt::Key_Tab, {}}, {Qt::Key_Tab, {}}});
    show(widget.text() + u"\n\nand more"_s);
    EXPECT_EQ(widget.selectedText(), u"three"_s);
    EXPECT_EQ(widget.focusedTarget()->name, u"Copy"_s);
    show(u"one"_s);
    EXPECT_EQ(widget.focusedTarget(), std::nullopt);
    EXPECT_EQ(widget.selectedText(), QString());
}

TEST_F(MarkdownWidgetTest, anEmptyTextTakesEveryEvent) {
    show(QString());
    widget.resize(400, 50);
    QTest::mouseDClick(&widget, Qt::LeftButton, {}, {10, 10});
    QTest::mouseClick(&widget, Qt::LeftButton, {}, {10, 10});
    keys({{Qt::Key_Down, {}}, {Qt::Key_Return, {}}, {Qt::Key_End, Qt::ShiftModifier}});
    widget.selectAll();
    EXPECT_EQ(widget.selectedText(), QString());
    widget.grab();
}
