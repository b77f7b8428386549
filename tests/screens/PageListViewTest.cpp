#include "screens/PageListView.h"

#include "pages/PageStore.h"
#include "pages/drawing/MarkdownWidget.h"
#include "screens/PageList.h"
#include "screens/PageSheet.h"
#include "screens/PageView.h"
#include "screens/SavedFile.h"
#include "screens/Screen.h"
#include "support/TemporaryApplicationFolder.h"

#include <QContextMenuEvent>
#include <QDir>
#include <QHelpEvent>
#include <QMenu>
#include <QTextDocumentFragment>
#include <QToolTip>

using namespace Qt::StringLiterals;

namespace {

class PageListViewTest : public ::testing::Test {
protected:
    static PageDocument saved(const QString &title, int minutes) {
        const QDateTime date = QDateTime(QDate(2026, 11, 15), QTime(13, 18)).addSecs(60 * minutes);
        PageDocument page{QUuid::createUuid(), title, u"text of "_s + title, date, date};
        savePage(page);
        return page;
    }

    void open() {
        view = std::make_unique<PageListView>(look);
        view->resize(900, 640);
        present(*view);
    }

    PageList *list() const { return view->findChild<PageList *>(); }
    const std::optional<PageDocument> &shown() const { return view->findChild<PageView *>()->document(); }

    QStringList titles() const {
        QStringList titles;
        for (int row = 0; row < list()->count(); ++row)
            titles.append(list()->item(row)->text());
        return titles;
    }

    QMenu *menuOf(int row) const {
        const QPoint place = middleOf(row);
        QContextMenuEvent event(QContextMenuEvent::Mouse, place, list()->viewport()->mapToGlobal(place));
        QCoreApplication::sendEvent(list()->viewport(), &event);
        return list()->findChild<QMenu *>();
    }

    QPoint middleOf(int row) const { return list()->visualItemRect(list()->item(row)).center(); }

    void clickRow(int row, Qt::MouseButton button = Qt::LeftButton) const {
        QTest::mouseClick(list()->viewport(), button, {}, middleOf(row));
    }

    /// The tool tip of a row as it is read; empty if there is none.
    QString tipOf(int row) const {
        QHelpEvent event(QEvent::ToolTip, middleOf(row), list()->viewport()->mapToGlobal(middleOf(row)));
        QCoreApplication::sendEvent(list()->viewport(), &event);
        return QTextDocumentFragment::fromHtml(QToolTip::text()).toPlainText();
    }

    const TemporaryApplicationFolder folder;
    StillLook look;
    std::unique_ptr<PageListView> view;
};

} // namespace

TEST_F(PageListViewTest, itMakesTheFolderAndSaysThatNothingIsChosen) {
    open();
    EXPECT_TRUE(QDir(folder.dataHome() + u"/Ostrelin/pages"_s).exists());
    EXPECT_EQ(titles(), QStringList());
    EXPECT_EQ(shown(), std::nullopt);
    EXPECT_FALSE(buttonNamed(*view, u"Save as PDF"_s));
}

TEST_F(PageListViewTest, savedPagesAreListedNewestFirst) {
    saved(u"old"_s, 0);
    saved(u"new"_s, 10);
    open();
    EXPECT_EQ(titles(), (QStringList{u"new"_s, u"old"_s}));
    EXPECT_EQ(list()->item(1)->data(Qt::AccessibleTextRole).toString(), u"old, Nov 15, 2026 at 1:18 PM"_s);
    EXPECT_EQ(shown(), std::nullopt);
}

TEST_F(PageListViewTest, aClickShowsThePage) {
    const PageDocument old = saved(u"old"_s, 0);
    saved(u"new"_s, 10);
    open();
    clickRow(1);
    EXPECT_EQ(shown(), old);
    EXPECT_TRUE(buttonNamed(*view, u"Save as PDF"_s));
    EXPECT_TRUE(buttonNamed(*view, u"Save as image"_s));
    EXPECT_EQ(view->findChild<PageSheet *>()->paper()->view().width(), 760);
}

TEST_F(PageListViewTest, arrowKeysShowPages) {
    const PageDocument old = saved(u"old"_s, 0);
    const PageDocument recent = saved(u"new"_s, 10);
    open();
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Down);
    QTest::keyClick(list(), Qt::Key_Down);
    EXPECT_EQ(shown(), old);
    QTest::keyClick(list(), Qt::Key_Up);
    EXPECT_EQ(shown(), recent);
}

TEST_F(PageListViewTest, aPageThatIsGoneShowsNothing) {
    const PageDocument old = saved(u"old"_s, 0);
    saved(u"new"_s, 10);
    open();
    clickRow(0);
    deletePage(old.id);
    clickRow(1);
    EXPECT_EQ(shown(), std::nullopt);
}

TEST_F(PageListViewTest, theMenuDeletesAtOnceAndWhatIsShownStays) {
    const PageDocument old = saved(u"old"_s, 0);
    const PageDocument recent = saved(u"new"_s, 10);
    open();
    clickRow(0);
    QMenu *menu = menuOf(0);
    ASSERT_TRUE(menu);
    ASSERT_EQ(menu->actions().size(), 1);
    EXPECT_EQ(menu->actions().first()->text(), u"Delete"_s);
    menu->actions().first()->trigger();
    menu->close();
    EXPECT_EQ(loadPage(recent.id), std::nullopt);
    EXPECT_EQ(titles(), QStringList{u"old"_s});
    EXPECT_EQ(list()->selectedItems().size(), 0);
    EXPECT_EQ(shown(), recent);
    clickRow(0);
    EXPECT_EQ(shown(), old);
}

TEST_F(PageListViewTest, deletingAnotherPageKeepsTheChosenOne) {
    saved(u"old"_s, 0);
    const PageDocument recent = saved(u"new"_s, 10);
    open();
    clickRow(0);
    menuOf(1)->actions().first()->trigger();
    EXPECT_EQ(titles(), QStringList{u"new"_s});
    ASSERT_EQ(list()->selectedItems().size(), 1);
    EXPECT_EQ(shown(), recent);
}

TEST_F(PageListViewTest, keysOpenTheMenu) {
    saved(u"old"_s, 0);
    open();
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_F10, Qt::ShiftModifier);
    EXPECT_TRUE(list()->findChild<QMenu *>());
}

TEST_F(PageListViewTest, aRightPressOpensNoPage) {
    saved(u"old"_s, 0);
    const PageDocument recent = saved(u"new"_s, 10);
    open();
    clickRow(1, Qt::RightButton);
    EXPECT_EQ(shown(), std::nullopt);
    clickRow(0);
    clickRow(1, Qt::RightButton);
    EXPECT_EQ(shown(), recent);
    EXPECT_TRUE(list()->item(0)->isSelected());
}

TEST_F(PageListViewTest, theDeleteKeyDeletesTheChosenPage) {
    saved(u"old"_s, 0);
    const PageDocument recent = saved(u"new"_s, 10);
    open();
    list()->setFocus();
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(list()->count(), 2) << "none was chosen";
    clickRow(0);
    QTest::keyClick(list(), Qt::Key_Delete);
    QTest::keyClick(list(), Qt::Key_Delete);
    EXPECT_EQ(titles(), QStringList{u"old"_s});
    EXPECT_EQ(loadPage(recent.id), std::nullopt);
}

TEST_F(PageListViewTest, onlyATitleThatIsCutHasATip) {
    saved(u"short"_s, 20);
    const QString markup = u"<img src='http://example.org/'> &amp; "_s.repeated(3);
    saved(markup, 10);
    saved(u"word "_s.repeated(200), 0);
    open();
    EXPECT_EQ(tipOf(0), QString());
    EXPECT_EQ(tipOf(1), markup.simplified());
    EXPECT_TRUE(tipOf(2).endsWith(u'…'));
    EXPECT_LT(tipOf(2).size(), 400);
}

TEST_F(PageListViewTest, aTitleOfNothingIsStillToBeSeen) {
    saved(u"\u200b\u2060"_s, 0);
    open();
    EXPECT_EQ(titles(), QStringList{u"Page"_s});
}

TEST_F(PageListViewTest, aFileIsAsWideAsItIsToBe) {
    const QTemporaryDir files;
    saved(u"Tea"_s, 0);
    open();
    clickRow(0);
    EXPECT_EQ(savedByPressing(*view, u"Save as PDF"_s, files).mediaBoxWidth(), 680);
    EXPECT_EQ(savedByPressing(*view, u"Save as image"_s, files).pictureWidth(), 1360);
}

TEST_F(PageListViewTest, whatIsSavedMeanwhileShowsWhenTheWindowComesUpAgain) {
    saved(u"old"_s, 0);
    open();
    saved(u"new"_s, 10);
    EXPECT_EQ(titles(), QStringList{u"old"_s});
    view->hide();
    view->show();
    EXPECT_EQ(titles(), (QStringList{u"new"_s, u"old"_s}));
}

TEST_F(PageListViewTest, theSmallestWindowHoldsBoth) {
    saved(u"old"_s, 0);
    open();
    clickRow(0);
    view->resize(view->minimumSize());
    EXPECT_EQ(view->size(), QSize(360, 420));
    EXPECT_GE(list()->parentWidget()->width(), 200);
    for (const QString &name : {u"Save as PDF"_s, u"Save as image"_s}) {
        const QPushButton *button = buttonNamed(*view, name);
        EXPECT_TRUE(view->rect().contains(QRect(button->mapTo(view.get(), QPoint()), button->size())))
            << name.toStdString();
    }
}
