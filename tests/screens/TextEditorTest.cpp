#include "screens/TextEditor.h"

#include "screens/Screen.h"

#include <QRandomGenerator>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

class TextEditorTest : public testing::Test {
protected:
    void place(int position) {
        QTextCursor cursor = editor.textCursor();
        cursor.setPosition(position);
        editor.setTextCursor(cursor);
    }

    StillLook look;
    TextEditor editor{look, TextStyle::callout, u"Memory"_s};
};

} // namespace

TEST_F(TextEditorTest, aChangeTouchesOnlyWhatDiffers) {
    editor.setPlainText(u"one two three"_s);
    place(3);
    editor.changeWrittenText(u"one 2 three"_s);
    EXPECT_EQ(editor.writtenText(), u"one 2 three"_s);
    EXPECT_EQ(editor.textCursor().position(), 3);
    place(11);
    editor.changeWrittenText(u"none 2 three"_s);
    EXPECT_EQ(editor.textCursor().position(), 12) << "it stays at the end";
}

TEST_F(TextEditorTest, theSameTextIsNoChange) {
    editor.setPlainText(u"one"_s);
    const QSignalSpy changes(&editor, &QTextEdit::textChanged);
    editor.changeWrittenText(u"one"_s);
    EXPECT_TRUE(changes.isEmpty());
}

TEST_F(TextEditorTest, anyTextBecomesAnyOther) {
    QRandomGenerator random(7);
    const auto text = [&random] {
        QString made;
        for (int length = random.bounded(9); length > 0; --length)
            made += u"aab\n\r"_s.at(random.bounded(5));
        return made;
    };
    for (int round = 0; round < 3000; ++round) {
        const QString before = editor.writtenText();
        const QString after = text();
        editor.changeWrittenText(after);
        ASSERT_EQ(editor.writtenText(), QString(after).replace(u"\r\n"_s, u"\n"_s).replace(u'\r', u'\n'))
            << before.toStdString();
    }
}

TEST_F(TextEditorTest, linesMayEndInOtherWays) {
    for (int round = 0; round < 2; ++round) {
        editor.changeWrittenText(u"one\r\ntwo\rthree\u2028four\u2029five\r\n"_s);
        EXPECT_EQ(editor.writtenText(), u"one\ntwo\nthree\nfour\nfive\n"_s);
    }
}

TEST_F(TextEditorTest, aChangeCanBeUndone) {
    editor.setPlainText(u"one\ntwo"_s);
    editor.changeWrittenText(QString());
    editor.undo();
    EXPECT_EQ(editor.writtenText(), u"one\ntwo"_s);
}
