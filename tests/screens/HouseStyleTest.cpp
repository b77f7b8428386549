#include "screens/HouseStyle.h"

#include "screens/Screen.h"

#include <QActionGroup>
#include <QMenu>

using namespace Qt::StringLiterals;

namespace {

class HouseStyleTest : public testing::Test {
protected:
    HouseStyleTest() {
        menu.setStyle(&style);
        menu.setPalette(toolkitPalette(paletteOf(Theme::crispWhite)));
    }

    /// How many pixels of an entry have that colour.
    int pixels(QAction *entry, const QColor &color) {
        menu.resize(menu.sizeHint());
        const QImage image = menu.grab(menu.actionGeometry(entry)).toImage();
        int count = 0;
        for (int y = 0; y < image.height(); ++y) {
            for (int x = 0; x < image.width(); ++x)
                count += image.pixel(x, y) == color.rgb();
        }
        return count;
    }

    HouseStyle style;
    QMenu menu;
};

} // namespace

TEST_F(HouseStyleTest, anEntryThatCantBeUndoneIsWrittenInTheInkThatWarns) {
    QAction *rename = menu.addAction(u"Rename"_s);
    QAction *erase = menu.addAction(u"Delete"_s);
    HouseStyle::setDestructive(*erase);
    const QColor warning = paletteOf(Theme::crispWhite).destructiveInk();
    EXPECT_EQ(pixels(rename, warning), 0);
    EXPECT_GT(pixels(erase, warning), 0);
}

TEST_F(HouseStyleTest, theChosenEntryHasAMark) {
    QActionGroup group(&menu);
    for (int index = 0; index < 2; ++index) {
        // Of an entry without a word, only the mark is to be seen.
        QAction *entry = menu.addAction(u" "_s);
        entry->setCheckable(true);
        group.addAction(entry);
    }
    const QList<QAction *> entries = menu.actions();
    const QColor ink = paletteOf(Theme::crispWhite).ink;
    for (QAction *chosen : entries) {
        chosen->setChecked(true);
        for (QAction *entry : entries)
            EXPECT_EQ(pixels(entry, ink) > 0, entry == chosen);
    }
}
