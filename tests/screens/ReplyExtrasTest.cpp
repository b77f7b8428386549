#include "screens/ConsentCard.h"
#include "screens/MessageRow.h"
#include "screens/PageCard.h"
#include "screens/PageFailedLine.h"
#include "screens/ReplyExtrasView.h"
#include "screens/RowEstimate.h"
#include "screens/Screen.h"
#include "screens/SearchChip.h"
#include "screens/SearchHead.h"
#include "screens/Style.h"
#include "screens/TextView.h"
#include "support/ManualClock.h"

#include <QDesktopServices>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

constexpr int width = 700;

/// Takes the addresses that would go to the browser.
class Browser : public QObject {
    Q_OBJECT

public:
    Browser() {
        QDesktopServices::setUrlHandler(u"https"_s, this, "open");
        QDesktopServices::setUrlHandler(u"file"_s, this, "open");
    }
    ~Browser() override {
        QDesktopServices::unsetUrlHandler(u"https"_s);
        QDesktopServices::unsetUrlHandler(u"file"_s);
    }

    QStringList opened;

public Q_SLOTS:
    void open(const QUrl &url) { opened.append(url.toString()); }
};

/// A reply with what belongs to it beside its words.
class ReplyExtrasTest : public testing::Test {
protected:
    ReplyExtrasTest() : row(look, clock, {.kind = MessageRowModel::Kind::assistant, .text = u"So."_s}) {}

    void show(const ReplyExtras &extras) {
        MessageRowModel model = row.model();
        model.extras = extras;
        row.setModel(model);
        lay();
        row.show();
    }
    void lay() { row.resize(width, row.layIn(width)); }

    /// The row stands on the ground of that theme.
    void wear(Theme theme) {
        Settings settings;
        settings.theme = theme;
        look.follow(settings);
        QPalette ground = row.palette();
        ground.setColor(QPalette::Window, look.palette().background);
        row.setPalette(ground);
        row.setAutoFillBackground(true);
    }

    /// How far two colours are from each other, in steps of their channels.
    static int distance(const QColor &one, const QColor &other) {
        return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
               std::abs(one.blue() - other.blue());
    }

    void show(const Asked &asked) {
        ReplyExtras extras;
        extras.asked = asked;
        show(extras);
    }

    template<typename Part>
    Part *part() const {
        return row.findChild<Part *>();
    }
    QPushButton *button(const QString &name) const { return buttonNamed(row, name); }
    QStringList buttonNames() const {
        QStringList names;
        for (QPushButton *button : part<ConsentCard>()->findChildren<QPushButton *>())
            names.append(spokenName(button));
        return names;
    }
    QStringList texts() const {
        QStringList texts;
        for (const TextView *view : part<ConsentCard>()->findChildren<TextView *>())
            texts.append(view->text());
        return texts;
    }

    static SearchEvent searched(const QList<SearchSource> &sources,
                                SearchStatus status = SearchStatus::allowed) {
        return {.query = u"green tea"_s, .status = status, .sources = sources};
    }

    const QList<SearchSource> sources{{1, u"Tea & <b>more</b>"_s, u"https://tea.example/a"_s, u"s"_s},
                                      {2, QString(), u"https://tea.example/b"_s, u"s"_s},
                                      {3, u"A file"_s, u"file:///etc/passwd"_s, u"s"_s}};
    StillLook look;
    ManualClock clock;
    MessageRow row;
    Browser browser;
};

} // namespace

TEST_F(ReplyExtrasTest, aReplyWithoutAnyHasNone) {
    EXPECT_FALSE(row.extrasView());
    show({.search = searched({})});
    EXPECT_TRUE(row.extrasView());
    show(ReplyExtras());
    EXPECT_FALSE(row.extrasView());
}

TEST_F(ReplyExtrasTest, aSearchIsAskedForByItsQuery) {
    show(PendingSearch{QUuid::createUuid(), QUuid(), u"green tea"_s});
    EXPECT_EQ(texts(), QStringList(u"green tea"_s));
    EXPECT_EQ(buttonNames(), (QStringList{u"Search"_s, u"Always allow"_s, u"Don't search"_s}));
    QSignalSpy answers(&row, &MessageRow::searchAnswered);
    for (const QString &name : buttonNames())
        click(button(name));
    ASSERT_EQ(answers.count(), 3);
    EXPECT_EQ(answers.at(0).at(0).value<PermissionChoice>(), PermissionChoice::allow);
    EXPECT_EQ(answers.at(1).at(0).value<PermissionChoice>(), PermissionChoice::always);
    EXPECT_EQ(answers.at(2).at(0).value<PermissionChoice>(), PermissionChoice::deny);
}

TEST_F(ReplyExtrasTest, aPageIsOffered) {
    show(PendingPageOffer{QUuid::createUuid(), QUuid()});
    EXPECT_EQ(texts(), QStringList(u"Can I build a page for you? It will appear on the side and then you "
                                   "will be able to save it as an image or PDF."_s));
    QSignalSpy answers(&row, &MessageRow::pageAnswered);
    click(button(u"Yes"_s));
    click(button(u"No"_s));
    ASSERT_EQ(answers.count(), 2);
    EXPECT_TRUE(answers.at(0).at(0).toBool());
    EXPECT_FALSE(answers.at(1).at(0).toBool());
}

TEST_F(ReplyExtrasTest, aFactIsOfferedToTheMemory) {
    show(PendingMemory{QUuid::createUuid(), QUuid(), u"Has a dog"_s});
    EXPECT_EQ(texts(), (QStringList{u"Want me to remember this?"_s, u"Has a dog"_s}));
    const auto views = part<ConsentCard>()->findChildren<TextView *>();
    EXPECT_GT(views.at(1)->y(), views.at(0)->y());
    QSignalSpy answers(&row, &MessageRow::memoryAnswered);
    click(button(u"Remember"_s));
    click(button(u"Not now"_s));
    ASSERT_EQ(answers.count(), 2);
    EXPECT_TRUE(answers.at(0).at(0).toBool());
    EXPECT_FALSE(answers.at(1).at(0).toBool());
}

TEST_F(ReplyExtrasTest, aCardHasItsSpaces) {
    show(PendingMemory{QUuid::createUuid(), QUuid(), u"Has a dog"_s});
    const auto views = part<ConsentCard>()->findChildren<TextView *>();
    EXPECT_EQ(views.at(0)->y(), 12);
    EXPECT_EQ(views.at(1)->y(), views.at(0)->geometry().bottom() + 1 + 10);
    const QPushButton *yes = button(u"Remember"_s);
    const QPushButton *no = button(u"Not now"_s);
    EXPECT_EQ(yes->y(), views.at(1)->geometry().bottom() + 1 + 10);
    EXPECT_EQ(no->x(), yes->geometry().right() + 1 + 8);
    EXPECT_EQ(part<ConsentCard>()->height(), yes->geometry().bottom() + 1 + 12);
}

TEST_F(ReplyExtrasTest, aCardLooksLikeOne) {
    show(PendingPageOffer{QUuid::createUuid(), QUuid()});
    for (const Theme theme : themes) {
        wear(theme);
        const QColor ground = look.palette().background;
        const QColor inside = mixed(ground, look.palette().ink, 0.04);
        const int middle = part<ConsentCard>()->height() / 2;
        const auto at = [this, picture = row.grab().toImage()](int x, int y) {
            return picture.pixelColor(part<ConsentCard>()->mapTo(&row, QPoint(x, y)));
        };
        EXPECT_LE(distance(at(6, middle), inside), 3);
        // The fill begins in the middle of the edge.
        const QColor edge = mixed(mixed(ground, inside, 0.5), look.palette().accent, 0.55);
        EXPECT_LE(distance(at(0, middle), edge), 6);
        EXPECT_LE(distance(at(2, 2), ground), 3) << "its corner is round";
        EXPECT_LE(distance(at(5, 5), inside), 3) << "by twelve";
    }
}

TEST_F(ReplyExtrasTest, theAnswersOfANarrowCardGoOnAnotherLine) {
    show(PendingSearch{QUuid::createUuid(), QUuid(), u"green tea"_s});
    const int before = part<ConsentCard>()->height();
    row.resize(240, row.layIn(240));
    EXPECT_GT(part<ConsentCard>()->height(), before);
    for (const QString &name : buttonNames())
        EXPECT_LE(button(name)->geometry().right(), part<ConsentCard>()->width());
}

TEST_F(ReplyExtrasTest, aCardIsHeardAsSuch) {
    show(PendingMemory{QUuid::createUuid(), QUuid(), u"Has a dog"_s});
    EXPECT_EQ(spokenRole(part<ConsentCard>()), QAccessible::Notification);
    EXPECT_EQ(spokenName(part<ConsentCard>()), u"Want me to remember this?\nHas a dog"_s);
    show(PendingSearch{QUuid::createUuid(), QUuid(), u"green tea"_s});
    EXPECT_EQ(spokenName(part<ConsentCard>()), u"Search the web?\ngreen tea"_s);
}

TEST_F(ReplyExtrasTest, aSearchForNothingIsAskedForToo) {
    show(PendingSearch{QUuid::createUuid(), QUuid(), QString()});
    EXPECT_TRUE(texts().isEmpty());
    EXPECT_EQ(spokenName(part<ConsentCard>()), u"Search the web?"_s);
    EXPECT_TRUE(button(u"Search"_s));
}

TEST_F(ReplyExtrasTest, nothingIsHiddenInWhatIsAgreedTo) {
    // A turn of direction, a letter of no width, a tag; a joiner may be part of a word.
    const QString fact = u"a\u202Eb\u200Bc\U000E0041d\u200De"_s;
    show(PendingMemory{QUuid::createUuid(), QUuid(), fact});
    EXPECT_EQ(texts().last(), u"a\uFFFDb\uFFFDc\uFFFDd\u200De"_s);
    show(PendingSearch{QUuid::createUuid(), QUuid(), fact});
    EXPECT_EQ(texts().last(), u"a\uFFFDb\uFFFDc\uFFFDd\u200De"_s);
}

TEST_F(ReplyExtrasTest, halfACharacterHidesNothingBehindIt) {
    const QString fact =
        u"a"_s + QChar(0xD83D) + u"\u202Eb"_s + QChar(0xDE00) + u"\u202Ec\u202E"_s + QChar(0xD83D);
    show(PendingMemory{QUuid::createUuid(), QUuid(), fact});
    EXPECT_FALSE(texts().last().contains(QChar(0x202E)));
    EXPECT_EQ(texts().last().count(QChar::ReplacementCharacter), 3);
}

TEST_F(ReplyExtrasTest, aDoubleClickIsOneAnswer) {
    show(PendingMemory{QUuid::createUuid(), QUuid(), u"Has a dog"_s});
    QSignalSpy answers(&row, &MessageRow::memoryAnswered);
    QPushButton *remember = button(u"Remember"_s);
    QTest::mouseClick(remember, Qt::LeftButton);
    QTest::mouseDClick(remember, Qt::LeftButton);
    QTest::mouseRelease(remember, Qt::LeftButton);
    EXPECT_EQ(answers.count(), 1) << "the second press may be on the card that comes next";
}

TEST_F(ReplyExtrasTest, anotherCardTakesThePlaceOfOneThatIsAnswered) {
    show(PendingSearch{QUuid::createUuid(), QUuid(), u"one"_s});
    show(PendingSearch{QUuid::createUuid(), QUuid(), u"two"_s});
    EXPECT_EQ(row.findChildren<ConsentCard *>().size(), 1);
    EXPECT_EQ(texts(), QStringList(u"two"_s));
    show(Asked());
    EXPECT_FALSE(part<ConsentCard>());
}

TEST_F(ReplyExtrasTest, aSearchUnfoldsWhatItFound) {
    show({.search = searched(sources)});
    auto *head = part<SearchHead>();
    EXPECT_EQ(spokenName(head), u"Searched: green tea"_s);
    EXPECT_FALSE(button(u"[1] Tea & <b>more</b>"_s));
    const int folded = part<SearchChip>()->height();
    EXPECT_EQ(head->spokenFold(), Spoken::Fold::folded);
    click(head);
    lay();
    EXPECT_EQ(head->spokenFold(), Spoken::Fold::unfolded);
    EXPECT_GT(part<SearchChip>()->height(), folded);
    EXPECT_TRUE(button(u"[1] Tea & <b>more</b>"_s));
    EXPECT_TRUE(button(u"[2] https://tea.example/b"_s)) << "without a title, its address";
    click(head);
    lay();
    EXPECT_EQ(part<SearchChip>()->height(), folded);
    EXPECT_FALSE(button(u"[1] Tea & <b>more</b>"_s));
}

TEST_F(ReplyExtrasTest, aSourceOpensInTheBrowserIfItIsAPage) {
    show({.search = searched(sources)});
    click(part<SearchHead>());
    lay();
    click(button(u"[1] Tea & <b>more</b>"_s));
    click(button(u"[3] A file"_s));
    EXPECT_EQ(browser.opened, QStringList(u"https://tea.example/a"_s));
    EXPECT_EQ(button(u"[1] Tea & <b>more</b>"_s)->toolTip(), u"<p>https://tea.example/a</p>"_s);
}

TEST_F(ReplyExtrasTest, aSearchThatWasTurnedDownOrFoundNothingHasNothingToUnfold) {
    show({.search = searched({}, SearchStatus::denied)});
    EXPECT_EQ(spokenName(part<SearchHead>()), u"Not searched: green tea"_s);
    EXPECT_EQ(part<SearchHead>()->spokenFold(), Spoken::Fold::none);
    show({.search = searched({})});
    EXPECT_EQ(spokenName(part<SearchHead>()), u"Searched: green tea"_s);
    click(part<SearchHead>());
    EXPECT_FALSE(part<SearchChip>()->isExpanded());
}

TEST_F(ReplyExtrasTest, aLongQueryIsCut) {
    SearchEvent event = searched(sources);
    event.query = u"tea "_s.repeated(500);
    show({.search = event});
    EXPECT_LE(part<SearchHead>()->width(), width);
}

TEST_F(ReplyExtrasTest, aPageIsOpenedByItsCard) {
    const PageSnapshot page{u"Tea & water"_s, u"# Tea"_s};
    show({.page = page});
    QSignalSpy opened(&row, &MessageRow::pageOpened);
    QPushButton *card = button(u"Tea & water"_s);
    ASSERT_TRUE(card);
    EXPECT_EQ(card->toolTip(), u"Open page"_s);
    click(card);
    ASSERT_EQ(opened.count(), 1);
    EXPECT_EQ(opened.at(0).at(0).value<PageSnapshot>(), page);
}

TEST_F(ReplyExtrasTest, aPageInSmallIsWhitePaperInEveryTheme) {
    show({.page = PageSnapshot{u"Tea"_s, u"# Tea"_s}});
    for (const Theme theme : themes) {
        wear(theme);
        const auto at = [this, picture = row.grab().toImage()](int x, int y) {
            const QPoint corner(style::rowOutset, style::rowOutset);
            return picture.pixelColor(part<PageCard>()->mapTo(&row, corner + QPoint(x, y)));
        };
        EXPECT_EQ(at(7, 60), QColor(Qt::white));
        EXPECT_EQ(at(170, 60), QColor(Qt::white));
        // The head is 90 wide, 8 high and 14 inside.
        EXPECT_NEAR(at(14 + 45, 14 + 4).red(), 209, 2);
        EXPECT_EQ(at(14 + 95, 14 + 4), QColor(Qt::white));
        // And the first row 6 below it and 5 high.
        EXPECT_NEAR(at(14 + 45, 14 + 8 + 6 + 2).red(), 235, 2);

        const QColor ground = look.palette().background;
        const QColor edge = mixed(mixed(ground, Qt::white, 0.5), look.palette().ink, 0.15);
        for (const QPoint &place : {QPoint(0, 62), QPoint(175, 62), QPoint(88, 0), QPoint(88, 123)})
            EXPECT_LE(distance(at(place.x(), place.y()), edge), 6);
        for (const QPoint &place : {QPoint(-1, 62), QPoint(176, 62), QPoint(88, -1), QPoint(88, 124)})
            EXPECT_LE(distance(at(place.x(), place.y()), ground), 3);
        EXPECT_LE(distance(at(1, 1), ground), 3) << "its corner is round";
        EXPECT_LE(distance(at(3, 3), Qt::white), 20) << "by eight";
    }
}

TEST_F(ReplyExtrasTest, aPageThatFailedIsTriedAgain) {
    show({.hasFailedPage = true});
    QSignalSpy retried(&row, &MessageRow::pageRetried);
    click(button(u"Try again"_s));
    EXPECT_EQ(retried.count(), 1);
}

TEST_F(ReplyExtrasTest, thePageThatFailedStandsCloseToItsReply) {
    const auto gap = [this](const QWidget *part) {
        return part->mapTo(&row, QPoint()).y() - row.textView()->textArea().bottom() - 1;
    };
    show({.hasFailedPage = true});
    EXPECT_EQ(gap(part<PageFailedLine>()), 4);
    show({.search = searched({})});
    EXPECT_EQ(gap(part<SearchChip>()), style::partGap);
}

TEST_F(ReplyExtrasTest, theKeyboardComesToEveryPart) {
    present(row);
    show({.search = searched(sources),
          .page = PageSnapshot{u"Tea"_s, u"# Tea"_s},
          .hasFailedPage = true,
          .asked = PendingMemory{QUuid::createUuid(), QUuid(), u"Has a dog"_s}});
    row.entry()->setFocus(Qt::TabFocusReason);
    QStringList visited;
    for (int step = 0; step < 9; ++step) {
        QTest::keyClick(row.focusWidget(), Qt::Key_Tab);
        visited.append(spokenName(row.focusWidget()));
        EXPECT_TRUE(row.showsFocus());
    }
    EXPECT_EQ(visited.mid(0, 7),
              (QStringList{u"Searched: green tea"_s, u"Tea"_s, u"Try again"_s, u"Want me to remember this?"_s,
                           u"Has a dog"_s, u"Remember"_s, u"Not now"_s}));
}

TEST_F(ReplyExtrasTest, theGuessOfTheHeightCountsThem) {
    const QList<ReplyExtras> all{{.search = searched(sources)},
                                 {.page = PageSnapshot{u"Tea"_s, u"# Tea"_s}},
                                 {.hasFailedPage = true},
                                 {.asked = PendingSearch{QUuid::createUuid(), QUuid(), u"tea"_s}}};
    for (const ReplyExtras &extras : all) {
        show(extras);
        EXPECT_NEAR(estimatedRowHeight(look, row.model(), width), row.height(), 8);
    }
}

TEST_F(ReplyExtrasTest, aPartThatStaysTheSameIsNotTouched) {
    show({.search = searched(sources)});
    click(part<SearchHead>());
    const SearchChip *chip = part<SearchChip>();
    show({.search = searched(sources), .page = PageSnapshot{u"Tea"_s, u"# Tea"_s}});
    EXPECT_EQ(part<SearchChip>(), chip);
    EXPECT_TRUE(chip->isExpanded());
}

#include "ReplyExtrasTest.moc"
