#include "screens/TextView.h"

#include "screens/Screen.h"

#include <QClipboard>
#include <QGuiApplication>
#include <QMenu>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class TextViewTest : public testing::Test {
protected:
    TextViewTest() : view(look, {}) {
        view.setText(u"one two\nthree four"_s);
        view.resize(300, view.layIn(300));
        present(view);
        view.clearFocus();
        view.setFocus(Qt::TabFocusReason);
    }

    void keys(const QList<std::pair<Qt::Key, Qt::KeyboardModifiers>> &presses) {
        for (const auto &[key, modifiers] : presses)
            QTest::keyClick(&view, key, modifiers);
    }

    StillLook look;
    TextView view;
};

} // namespace

TEST_F(TextViewTest, aScreenReaderHearsTheText) {
    EXPECT_EQ(spokenRole(&view), QAccessible::StaticText);
    EXPECT_EQ(spokenName(&view), u"one two\nthree four"_s);
    view.setText(u"new"_s);
    EXPECT_EQ(spokenName(&view), u"new"_s);
}

TEST_F(TextViewTest, keysSelectAndCopy) {
    keys({{Qt::Key_Right, {}}, {Qt::Key_Right, Qt::ShiftModifier}, {Qt::Key_Right, Qt::ShiftModifier}});
    EXPECT_EQ(view.selectedText(), u"ne"_s);
    keys({{Qt::Key_End, Qt::ShiftModifier}});
    EXPECT_EQ(view.selectedText(), u"ne two"_s);
    keys({{Qt::Key_C, Qt::ControlModifier}});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"ne two"_s);
    keys({{Qt::Key_A, Qt::ControlModifier}});
    EXPECT_EQ(view.selectedText(), view.text());
    keys({{Qt::Key_Left, {}}});
    EXPECT_EQ(view.selectedText(), QString());
}

TEST_F(TextViewTest, aVeryLongParagraphIsCopiedAsItIs) {
    const QString text = QString(u"many words "_s).repeated(2000);
    view.setText(text);
    view.selectAll();
    view.copy();
    EXPECT_EQ(QGuiApplication::clipboard()->text(), text);
}

TEST_F(TextViewTest, copyingNothingLeavesTheClipboard) {
    QGuiApplication::clipboard()->setText(u"before"_s);
    keys({{Qt::Key_C, Qt::ControlModifier}});
    EXPECT_EQ(QGuiApplication::clipboard()->text(), u"before"_s);
}

TEST_F(TextViewTest, draggingSelects) {
    QTest::mousePress(&view, Qt::LeftButton, {}, {0, 5});
    QTest::mouseMove(&view, {299, 5});
    QTest::mouseRelease(&view, Qt::LeftButton, {}, {299, 5});
    EXPECT_EQ(view.selectedText(), u"one two"_s);
    QTest::mouseClick(&view, Qt::LeftButton, Qt::ShiftModifier, {299, view.height() - 2});
    EXPECT_EQ(view.selectedText(), view.text());
}

TEST_F(TextViewTest, twoClicksTakeTheWordAndThreeTheParagraph) {
    const QPoint place(3, view.height() - 4);
    QTest::mouseDClick(&view, Qt::LeftButton, {}, place);
    EXPECT_EQ(view.selectedText(), u"three"_s);
    QTest::mousePress(&view, Qt::LeftButton, {}, place);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, place);
    EXPECT_EQ(view.selectedText(), u"three four"_s);
}

TEST_F(TextViewTest, aGrowingTextKeepsItsSelection) {
    keys({{Qt::Key_Right, Qt::ShiftModifier | Qt::ControlModifier}});
    EXPECT_EQ(view.selectedText(), u"one "_s);
    view.setText(view.text() + u" five"_s);
    EXPECT_EQ(view.selectedText(), u"one "_s);
    view.setText(u"on"_s);
    EXPECT_EQ(view.selectedText(), u"on"_s);
}

TEST_F(TextViewTest, theCaretLeavesOverTheEdges) {
    QSignalSpy left(&view, &TextView::left);
    keys({{Qt::Key_Down, {}}});
    EXPECT_EQ(left.count(), 0);
    keys({{Qt::Key_Down, {}}});
    ASSERT_EQ(left.count(), 1);
    EXPECT_EQ(left.at(0).at(0).value<TextView::Edge>(), TextView::Edge::bottom);
    keys({{Qt::Key_Up, {}}, {Qt::Key_Up, {}}});
    ASSERT_EQ(left.count(), 2);
    EXPECT_EQ(left.at(1).at(0).value<TextView::Edge>(), TextView::Edge::top);
}

TEST_F(TextViewTest, onlyAFocusByKeysIsShown) {
    EXPECT_TRUE(view.showsFocus());
    view.clearFocus();
    click(&view);
    EXPECT_TRUE(view.hasFocus());
    EXPECT_FALSE(view.showsFocus());
    keys({{Qt::Key_Right, {}}});
    EXPECT_TRUE(view.showsFocus());
}

TEST_F(TextViewTest, withTheFocusTheSelectionGoes) {
    view.selectAll();
    view.clearFocus();
    EXPECT_EQ(view.selectedText(), QString());
}

TEST_F(TextViewTest, aNarrowerPlaceTakesMoreHeight) {
    const int wide = view.heightForWidth(300);
    EXPECT_GT(view.heightForWidth(60), wide);
    EXPECT_EQ(view.layIn(300), wide);
}

TEST_F(TextViewTest, whatIsSelectedIsReadAsWellAsTheRest) {
    TextView quiet(look, {.ink = TextView::Ink::secondary});
    quiet.setText(u"one two\nthree four"_s);
    quiet.resize(300, quiet.layIn(300));
    EXPECT_EQ(pixelsOf(quiet.grab().toImage(), look.palette().ink), 0);
    quiet.selectAll();
    EXPECT_GT(pixelsOf(quiet.grab().toImage(), look.palette().ink), 0);
}

TEST_F(TextViewTest, aKeyOpensTheMenu) {
    keys({{Qt::Key_A, Qt::ControlModifier}, {Qt::Key_F10, Qt::ShiftModifier}});
    auto *menu = view.findChild<QMenu *>();
    ASSERT_TRUE(menu && menu->isVisible());
    EXPECT_TRUE(view.rect().contains(view.mapFromGlobal(menu->pos()) - QPoint(0, 1)));
    EXPECT_EQ(menu->actions().first()->text(), u"Copy"_s);
}
