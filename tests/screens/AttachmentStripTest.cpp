#include "screens/AttachmentStrip.h"

#include "screens/AttachmentChip.h"
#include "screens/LookButton.h"
#include "screens/Screen.h"
#include "screens/Style.h"
#include "screens/SymbolButton.h"

#include <QScrollBar>
#include <QSignalSpy>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

class AttachmentStripTest : public testing::Test {
protected:
    AttachmentStripTest() {
        auto *column = new QVBoxLayout(&window);
        column->addWidget(strip = new AttachmentStrip(look));
        column->addWidget(field = new QPushButton);
        column->addStretch();
        window.resize(600, 400);
        present(window);
        QObject::connect(strip, &AttachmentStrip::removed, strip, [this](const QUuid &id) {
            files.removeIf([&id](const Attachment &file) { return file.id == id; });
            strip->setAttachments(files);
        });
    }

    void show(const QStringList &names) {
        for (const QString &name : names)
            files.append({QUuid::createUuid(), name, u"text"_s});
        strip->setAttachments(files);
        QCoreApplication::processEvents();
    }

    /// The chips from left to right, line by line.
    QList<AttachmentChip *> chips() const {
        QList<AttachmentChip *> found;
        for (auto *chip : strip->findChildren<AttachmentChip *>()) {
            if (chip->isVisible())
                found.append(chip);
        }
        std::sort(found.begin(), found.end(), [](const QWidget *one, const QWidget *other) {
            return std::pair(one->y(), one->x()) < std::pair(other->y(), other->x());
        });
        return found;
    }
    QStringList names() const {
        QStringList all;
        for (const AttachmentChip *chip : chips())
            all.append(chip->name());
        return all;
    }

    StillLook look;
    QWidget window;
    AttachmentStrip *strip = nullptr;
    QPushButton *field = nullptr;
    QList<Attachment> files;
};

} // namespace

TEST_F(AttachmentStripTest, withoutFilesItIsNotThere) {
    EXPECT_FALSE(strip->isVisible());
    show({u"a.txt"_s});
    EXPECT_TRUE(strip->isVisible());
    strip->setAttachments({});
    EXPECT_FALSE(strip->isVisible());
}

TEST_F(AttachmentStripTest, aChipForEachFileInOrder) {
    show({u"b.txt"_s, u"a.txt"_s});
    show({u"b.txt"_s});
    EXPECT_EQ(names(), (QStringList{u"b.txt"_s, u"a.txt"_s, u"b.txt"_s}));
}

TEST_F(AttachmentStripTest, itsButtonRemovesThatFileAlone) {
    show({u"a.txt"_s, u"a.txt"_s, u"c.txt"_s});
    const QUuid last = files.last().id;
    LookButton *button = chips().at(1)->removeButton();
    EXPECT_EQ(spokenName(button), u"Remove"_s);
    EXPECT_EQ(static_cast<SymbolButton *>(button)->symbol(), Icon::close);
    click(button);
    QCoreApplication::processEvents();
    EXPECT_EQ(names(), (QStringList{u"a.txt"_s, u"c.txt"_s}));
    EXPECT_EQ(files.last().id, last);
}

TEST_F(AttachmentStripTest, tabLeadsFromButtonToButton) {
    show({u"a.txt"_s, u"b.txt"_s});
    show({u"c.txt"_s});
    chips().at(0)->removeButton()->setFocus(Qt::TabFocusReason);
    for (const int place : {1, 2}) {
        QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
        EXPECT_EQ(window.focusWidget(), chips().at(place)->removeButton());
    }
    QTest::keyClick(window.focusWidget(), Qt::Key_Tab);
    EXPECT_EQ(window.focusWidget(), field);
}

TEST_F(AttachmentStripTest, theFocusGoesOnToTheNextFileAndThenElsewhere) {
    QSignalSpy lost(strip, &AttachmentStrip::focusLost);
    show({u"a.txt"_s, u"b.txt"_s, u"c.txt"_s});
    chips().at(1)->removeButton()->setFocus(Qt::TabFocusReason);
    QTest::keyClick(window.focusWidget(), Qt::Key_Space);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.focusWidget(), chips().at(1)->removeButton());
    EXPECT_EQ(names(), (QStringList{u"a.txt"_s, u"c.txt"_s}));
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    QCoreApplication::processEvents();
    EXPECT_EQ(window.focusWidget(), chips().at(0)->removeButton());
    EXPECT_EQ(lost.count(), 0);
    QTest::keyClick(window.focusWidget(), Qt::Key_Return);
    EXPECT_EQ(lost.count(), 1);
}

TEST_F(AttachmentStripTest, manyFilesScroll) {
    QStringList many;
    for (int file = 0; file < 40; ++file)
        many.append(u"a rather long name of a file %1.txt"_s.arg(file));
    show(many);
    QCoreApplication::processEvents();
    EXPECT_EQ(strip->height(), style::attachmentsMaximumHeight);
    chips().last()->removeButton()->setFocus(Qt::TabFocusReason);
    EXPECT_EQ(strip->verticalScrollBar()->value(), strip->verticalScrollBar()->maximum());
    EXPECT_GT(strip->verticalScrollBar()->value(), 0);
}

TEST_F(AttachmentStripTest, aLongNameIsOneLineInItsMaximumWidth) {
    show({u"a name that goes on and on "_s.repeated(10) + u".txt"_s, u"two\nlines.txt"_s});
    EXPECT_LE(chips().at(0)->width(), style::attachmentWidest);
    EXPECT_GT(chips().at(0)->width(), style::attachmentWidest - 40);
    EXPECT_EQ(chips().at(0)->height(), chips().at(1)->height());
}

TEST_F(AttachmentStripTest, aScreenReaderHearsTheFileAndWhatIsRemoved) {
    show({u"notes.txt"_s});
    EXPECT_EQ(spokenName(chips().at(0)), u"notes.txt"_s);
    EXPECT_EQ(chips().at(0)->removeButton()->accessibleDescription(), u"notes.txt"_s);
}
