#include "screens/Label.h"

#include "screens/Screen.h"
#include "support/Await.h"

#include <QHelpEvent>
#include <QTextDocumentFragment>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

class LabelTest : public testing::Test {
protected:
    LabelTest() {
        label.resize(120, 30);
        present(label);
    }

    void askForTip() {
        QHelpEvent event(QEvent::ToolTip, {5, 5}, label.mapToGlobal(QPoint(5, 5)));
        QCoreApplication::sendEvent(&label, &event);
    }
    /// The tool tip as it is read.
    QString tip() {
        askForTip();
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    }
    bool hasNoTip() {
        askForTip();
        return eventually([] { return !QToolTip::isVisible(); });
    }

    StillLook look;
    Label label{look, TextStyle::title, Label::Ink::main, Label::Fit::elided};
};

} // namespace

TEST_F(LabelTest, aTitleThatIsCutHasATip) {
    label.setText(u"Short"_s);
    EXPECT_TRUE(hasNoTip());
    label.setText(u"A title that is far too long"_s);
    EXPECT_EQ(tip(), label.text());
    label.resize(2000, 30);
    EXPECT_TRUE(hasNoTip());
}

TEST_F(LabelTest, aTipShowsMarkupAsItStands) {
    label.setText(u"<b>not bold</b> <img src='a.png'>"_s);
    EXPECT_EQ(tip(), label.text());
}

TEST_F(LabelTest, aTipIsCutToo) {
    label.setText(QString(100'000, u'm'));
    EXPECT_EQ(tip(), QString(300, u'm') + u'…');
}
