#include "pages/drawing/MarkdownWidget.h"
#include "screens/ActionLine.h"
#include "screens/Browser.h"
#include "screens/MessageRow.h"
#include "screens/RowEstimate.h"
#include "screens/Screen.h"
#include "screens/Style.h"
#include "support/ManualClock.h"

using namespace Qt::StringLiterals;

// The assistant's text in its row.

namespace {

constexpr int width = style::columnWidth + 2 * style::rowOutset;

class MessageReplyTest : public testing::Test {
protected:
    void show(const QString &text) {
        MessageRowModel model{QUuid::createUuid(), MessageRowModel::Kind::assistant, text};
        row = std::make_unique<MessageRow>(look, clock, model);
        row->resize(width, row->layIn(width));
    }

    MarkdownWidget &reply() const { return *qobject_cast<MarkdownWidget *>(row->textView()); }

    StillLook look;
    ManualClock clock;
    std::unique_ptr<MessageRow> row;
};

} // namespace

TEST_F(MessageReplyTest, aReplyIsDrawnInBlocks) {
    show(u"# One\n- two\n- three"_s);
    EXPECT_EQ(reply().view().blockCount(), 2U);
    EXPECT_EQ(reply().textArea().width(), style::columnWidth);
    EXPECT_EQ(reply().height(), int(reply().view().height()));
}

TEST_F(MessageReplyTest, thePersonsWordsAreShownAsTheyWereWritten) {
    row = std::make_unique<MessageRow>(
        look, clock, MessageRowModel{QUuid::createUuid(), MessageRowModel::Kind::user, u"# **One**"_s});
    EXPECT_EQ(spokenName(row->textView()), u"# **One**"_s);
}

TEST_F(MessageReplyTest, aLinkGoesToTheBrowser) {
    Browser browser;
    show(u"[one](https://example.org)"_s);
    QTest::mouseClick(&reply(), Qt::LeftButton, {},
                      reply().view().targets().first().areas.first().center().toPoint());
    EXPECT_EQ(browser.opened, QList<QUrl>{QUrl(u"https://example.org"_s)});
}

TEST_F(MessageReplyTest, tabGoesThroughTheLinksBeforeTheActions) {
    show(u"[one](https://example.org)"_s);
    present(*row);
    reply().setFocus(Qt::TabFocusReason);
    QTest::keyClick(&reply(), Qt::Key_Tab);
    EXPECT_EQ(reply().focusedTarget()->name, u"one"_s);
    QTest::keyClick(&reply(), Qt::Key_Tab);
    EXPECT_TRUE(row->actionLine()->isAncestorOf(row->focusWidget()));
}

TEST_F(MessageReplyTest, theReplyFollowsTheLook) {
    show(u"one"_s);
    for (const Theme theme : themes) {
        Settings settings;
        settings.theme = theme;
        settings.textSize = TextSize::small;
        look.follow(settings);
        EXPECT_EQ(reply().view().theme().primary, paletteOf(theme).ink);
        EXPECT_EQ(reply().view().theme().bodySize, bodySize(TextSize::small));
    }
}

TEST_F(MessageReplyTest, theGuessOfAHeightIsNear) {
    const QString words = u"The garden was quiet, and the bird kept singing. "_s;
    for (const QString &text :
         {words, words.repeated(40), (words + u"\n\n"_s).repeated(20),
          (u"- "_s + words + u"\n"_s).repeated(20), u"```\n"_s + u"int x;\n"_s.repeated(30),
          u"# One\n"_s + words.repeated(3) + u"\n\n| A | B |\n|---|---|\n"_s +
              u"| one | two |\n"_s.repeated(10)}) {
        show(text);
        const int guess = estimatedRowHeight(look, row->model(), width);
        EXPECT_LT(guess, 2 * row->height()) << text.left(60).toStdString();
        EXPECT_GT(2 * guess, row->height()) << text.left(60).toStdString();
    }
}
