#include "screens/EmptyState.h"

#include "screens/Label.h"
#include "screens/Screen.h"
#include "screens/SuggestionButton.h"

using namespace Qt::StringLiterals;

namespace {

const QString hint = u"Great for writing, brainstorming and quick questions."_s;

class EmptyStateTest : public testing::Test {
protected:
    EmptyStateTest() {
        state.resize(700, 600);
        present(state);
    }

    Label *label(const QString &text) const {
        const auto labels = state.findChildren<Label *>();
        const auto found = std::find_if(labels.begin(), labels.end(), [&](const Label *each) {
            return each->text() == text && each->isVisible();
        });
        return found == labels.end() ? nullptr : *found;
    }
    Label *heading() const { return label(u"What can I help you with?"_s); }

    /// The room between the heading and the suggestions.
    int room() const {
        QCoreApplication::processEvents();
        const auto *card = state.findChild<SuggestionButton *>();
        return card->mapTo(&state, QPoint()).y() - heading()->mapTo(&state, QPoint()).y() -
               heading()->height();
    }

    StillLook look;
    EmptyState state{look};
};

} // namespace

TEST_F(EmptyStateTest, aHintStandsBelowTheHeadingWithItsSpace) {
    const int without = room();
    EXPECT_EQ(without, 24);
    state.setHint(hint);
    ASSERT_TRUE(label(hint));
    const int text = QFontMetrics(look.font(TextStyle::body)).height();
    EXPECT_NEAR(room(), without + 8 + text, 1);
    EXPECT_EQ(label(hint)->contentsMargins().top(), 8);
    state.setHint({});
    EXPECT_FALSE(label(hint));
    EXPECT_EQ(room(), without) << "the space goes with the hint";
}
