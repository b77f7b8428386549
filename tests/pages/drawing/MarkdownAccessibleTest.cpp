#include "pages/drawing/MarkdownAccessible.h"

#include "pages/drawing/MarkdownWidget.h"

#include <QAccessible>
#include <QClipboard>
#include <QGuiApplication>
#include <QSignalSpy>
#include <QTest>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

class MarkdownAccessibleTest : public testing::Test {
protected:
    MarkdownAccessibleTest() {
        show(
            u"# One\nsee [two](https://example.org)\n\n1. three\n2. four\n\n| A | B |\n| c | d |\n```c\nint x;\n```"_s);
        widget.show();
        widget.activateWindow();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&widget));
    }

    void show(const QString &text) {
        widget.setText(text);
        widget.resize(400, widget.layIn(400));
    }

    QAccessibleInterface &root() { return *QAccessible::queryAccessibleInterface(&widget); }
    QAccessibleInterface &block(int index) { return *root().child(index); }
    static QString nameOf(QAccessibleInterface &part) { return part.text(QAccessible::Name); }

    MarkdownWidget widget{paperTheme()};
};

} // namespace

TEST_F(MarkdownAccessibleTest, theWholeCanBeHeardInOneGo) {
    EXPECT_EQ(root().role(), QAccessible::StaticText);
    EXPECT_EQ(nameOf(root()), u"One\nsee two\n1. three\n2. four\nA\nB\nc\nd\nCode, C\nint x;"_s);
}

TEST_F(MarkdownAccessibleTest, theBlocksAreATree) {
    ASSERT_EQ(root().childCount(), 5);
    EXPECT_EQ(block(0).role(), QAccessible::Heading);
    EXPECT_EQ(block(1).role(), QAccessible::Paragraph);
    EXPECT_EQ(block(2).role(), QAccessible::List);
    ASSERT_EQ(block(2).childCount(), 2);
    EXPECT_EQ(block(2).child(1)->role(), QAccessible::ListItem);
    EXPECT_EQ(nameOf(*block(2).child(1)), u"2. four"_s);
    EXPECT_EQ(block(3).role(), QAccessible::Table);
    EXPECT_EQ(nameOf(*block(3).child(1)->child(0)), u"c"_s);
    EXPECT_EQ(block(3).child(1)->parent(), &block(3));
    EXPECT_EQ(block(3).parent(), &root());
    EXPECT_EQ(root().indexOfChild(&block(3)), 3);
    EXPECT_EQ(block(3).indexOfChild(block(3).child(1)), 1);
    EXPECT_EQ(root().child(5), nullptr);
    EXPECT_EQ(block(0).child(0), nullptr);
}

TEST_F(MarkdownAccessibleTest, everyPartTellsWhereItStands) {
    const QRect heading = block(0).rect();
    EXPECT_EQ(heading.topLeft(), widget.mapToGlobal(QPoint(widget.margin(), widget.margin())));
    QAccessibleInterface *cell = block(3).child(1)->child(1);
    EXPECT_TRUE(block(3).rect().contains(cell->rect().center()));
    EXPECT_EQ(root().childAt(heading.center().x(), heading.center().y()), &block(0));
    const QPoint place = cell->rect().center();
    EXPECT_EQ(block(3).childAt(place.x(), place.y())->childAt(place.x(), place.y()), cell);
}

TEST_F(MarkdownAccessibleTest, linksAndButtonsCanBePressed) {
    QSignalSpy followed(&widget, &MarkdownWidget::linkActivated);
    QAccessibleInterface *link = block(1).child(0);
    EXPECT_EQ(link->role(), QAccessible::Link);
    EXPECT_EQ(nameOf(*link), u"two"_s);
    EXPECT_EQ(link->text(QAccessible::Description), u"https://example.org"_s);
    const QString press = QAccessibleActionInterface::pressAction();
    EXPECT_EQ(link->actionInterface()->actionNames(), QStringList(press));
    link->actionInterface()->doAction(press);
    EXPECT_EQ(followed.count(), 1);
    QAccessibleInterface *copy = block(4).child(0);
    EXPECT_EQ(copy->role(), QAccessible::Button);
    EXPECT_EQ(copy->text(QAccessible::Description), QString());
    copy->actionInterface()->doAction(press);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"int x;"_s);
    EXPECT_EQ(block(0).actionInterface(), nullptr);
}

TEST_F(MarkdownAccessibleTest, theFocusIsOnWhatTheKeyboardIsOn) {
    widget.setFocus(Qt::TabFocusReason);
    EXPECT_EQ(root().focusChild(), nullptr);
    QTest::keyClick(&widget, Qt::Key_Tab);
    EXPECT_EQ(root().focusChild(), block(1).child(0));
    EXPECT_TRUE(block(1).child(0)->state().focused);
    QTest::keyClick(&widget, Qt::Key_Tab);
    EXPECT_EQ(root().focusChild(), block(4).child(0));
    EXPECT_FALSE(block(1).child(0)->state().focused);
}

TEST_F(MarkdownAccessibleTest, whatStaysIsTheSameAfterAChange) {
    QAccessibleInterface *heading = &block(0);
    EXPECT_EQ(nameOf(block(4)), u"Code, C"_s);
    show(u"# One\n- other"_s);
    EXPECT_EQ(&block(0), heading);
    ASSERT_EQ(root().childCount(), 2);
    EXPECT_EQ(nameOf(*block(1).child(0)), u"other"_s);
    show(QString());
    EXPECT_EQ(root().childCount(), 0);
    EXPECT_EQ(root().child(0), nullptr);
}
