#include "screens/PagePanel.h"

#include "pages/drawing/MarkdownWidget.h"
#include "screens/Label.h"
#include "screens/PageSheet.h"
#include "screens/PageView.h"
#include "screens/SavedFile.h"
#include "screens/Screen.h"

#include <QFileDialog>
#include <QLineEdit>
#include <QSignalSpy>

using namespace Qt::StringLiterals;

namespace {

const PageDocument page{QUuid::createUuid(), u"Tea"_s, u"Green tea."_s, QDateTime::currentDateTimeUtc(),
                        QDateTime::currentDateTimeUtc()};

class PagePanelTest : public ::testing::Test {
protected:
    PagePanelTest() {
        panel.resize(500, 600);
        present(panel);
    }

    /// The labels that are seen.
    QStringList texts() const {
        QStringList texts;
        for (const Label *label : panel.findChildren<Label *>()) {
            if (label->isVisible())
                texts.append(label->text());
        }
        return texts;
    }

    StillLook look;
    PagePanel panel{look};
    QSignalSpy closed{&panel, &PagePanel::closeRequested};
    QSignalSpy saved{&panel, &PagePanel::saveRequested};
};

} // namespace

TEST_F(PagePanelTest, withoutAPageItSaysSo) {
    EXPECT_EQ(texts(), (QStringList{u"Page"_s, u"No page open."_s}));
    EXPECT_TRUE(buttonNamed(panel, u"Close"_s));
    EXPECT_TRUE(buttonNamed(panel, u"Save"_s));
    EXPECT_FALSE(buttonNamed(panel, u"Save as PDF"_s));
}

TEST_F(PagePanelTest, aPageIsShownWithItsButtons) {
    panel.setDocument(page);
    EXPECT_EQ(texts(), QStringList{u"Page"_s});
    EXPECT_TRUE(buttonNamed(panel, u"Save as PDF"_s));
    EXPECT_TRUE(buttonNamed(panel, u"Save as image"_s));
    EXPECT_EQ(panel.findChild<PageSheet *>()->paper()->view().width(), 720);
    panel.setDocument(std::nullopt);
    EXPECT_EQ(texts(), (QStringList{u"Page"_s, u"No page open."_s}));
}

TEST_F(PagePanelTest, closeAndSaveAreTold) {
    panel.setDocument(page);
    click(buttonNamed(panel, u"Close"_s));
    EXPECT_EQ(closed.size(), 1);
    EXPECT_EQ(saved.size(), 0);
    click(buttonNamed(panel, u"Save"_s));
    EXPECT_EQ(closed.size(), 1);
    EXPECT_EQ(saved.size(), 1);
}

TEST_F(PagePanelTest, returnInThePanelSaves) {
    panel.setDocument(page);
    QWidget *paper = panel.findChild<PageSheet *>()->paper();
    paper->setFocus();
    QTest::keyClick(paper, Qt::Key_Return);
    EXPECT_EQ(saved.size(), 1);
}

TEST_F(PagePanelTest, returnOnAButtonPressesIt) {
    panel.setDocument(page);
    QPushButton *close = buttonNamed(panel, u"Close"_s);
    close->setFocus();
    QTest::keyClick(close, Qt::Key_Return);
    EXPECT_EQ(closed.size(), 1);
    EXPECT_EQ(saved.size(), 0);
}

TEST_F(PagePanelTest, theKeysForSavingWorkBesideThePanel) {
    QWidget window;
    auto *beside = new QLineEdit(&window);
    panel.setParent(&window);
    panel.show();
    present(window);
    beside->setFocus();
    QTest::keyClick(beside, Qt::Key_Return);
    EXPECT_EQ(saved.size(), 0);
    QTest::keyClick(beside, Qt::Key_S, Qt::ControlModifier);
    EXPECT_EQ(saved.size(), 1);
    panel.setParent(nullptr);
}

TEST_F(PagePanelTest, everythingIsReachedByTab) {
    panel.setDocument(page);
    buttonNamed(panel, u"Close"_s)->setFocus();
    QStringList names;
    for (int step = 0; step < 5; ++step) {
        names.append(spokenName(QApplication::focusWidget()).section(u',', 0, 0));
        QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
    }
    EXPECT_EQ(names, (QStringList{u"Close"_s, u"Save"_s, u"Tea"_s, u"Save as PDF"_s, u"Save as image"_s}));
}

TEST_F(PagePanelTest, savingAsAFileAsksForAPlaceAndLeavesThePanel) {
    panel.setDocument(page);
    click(buttonNamed(panel, u"Save as PDF"_s));
    auto *dialog = panel.findChild<QFileDialog *>();
    ASSERT_TRUE(dialog);
    EXPECT_TRUE(dialog->selectedFiles().value(0).endsWith(u"/Tea.pdf"_s));
    EXPECT_EQ(closed.size() + saved.size(), 0);
    EXPECT_TRUE(buttonNamed(panel, u"Save as PDF"_s));
}

TEST_F(PagePanelTest, aFileIsAsWideAsItIsToBe) {
    const QTemporaryDir files;
    panel.setDocument(page);
    EXPECT_EQ(savedByPressing(panel, u"Save as PDF"_s, files).mediaBoxWidth(), 640);
    EXPECT_EQ(savedByPressing(panel, u"Save as image"_s, files).pictureWidth(), 1280);
}

TEST_F(PagePanelTest, headerAndFooterHaveTheirInnerSpace) {
    panel.setDocument(page);
    QCoreApplication::processEvents();
    const auto frameOf = [this](const QString &name) {
        const QPushButton *button = buttonNamed(panel, name);
        return QRect(button->mapTo(&panel, QPoint()), button->size());
    };
    const auto *paper = panel.findChild<PageSheet *>();
    const QRect sheet(paper->mapTo(&panel, QPoint()), paper->size());
    const auto *head = panel.findChild<Label *>();
    EXPECT_EQ(head->mapTo(&panel, QPoint()).x(), 10);
    const QRect save = frameOf(u"Save"_s);
    EXPECT_EQ(save.top(), 10);
    EXPECT_EQ(panel.width() - 1 - save.right(), 10);
    EXPECT_EQ(sheet.top() - 1 - save.bottom(), 10 + 1) << "with the divider";
    const QRect pdf = frameOf(u"Save as PDF"_s);
    EXPECT_EQ(pdf.left(), 10);
    EXPECT_EQ(pdf.top() - 1 - sheet.bottom(), 10 + 1) << "with the divider";
    EXPECT_EQ(panel.height() - 1 - pdf.bottom(), 10);
}

TEST_F(PagePanelTest, aPageThatIsGoneIsNotKept) {
    panel.setDocument(page);
    panel.setDocument(std::nullopt);
    EXPECT_FALSE(panel.findChild<PageSheet *>()->paper());
    panel.setDocument(page);
    EXPECT_TRUE(panel.findChild<PageSheet *>()->paper());
}

TEST_F(PagePanelTest, itIsNeverNarrowerThanItsButtons) {
    panel.setDocument(page);
    EXPECT_EQ(panel.minimumWidth(), 240);
    panel.resize(panel.minimumSizeHint().expandedTo(panel.minimumSize()));
    EXPECT_LE(panel.width(), 240);
    for (const QString &name : {u"Close"_s, u"Save"_s, u"Save as PDF"_s, u"Save as image"_s}) {
        const QPushButton *button = buttonNamed(panel, name);
        const QPoint right(button->width() - 1, 0);
        EXPECT_LT(button->mapTo(&panel, right).x(), panel.width()) << name.toStdString();
    }
}
