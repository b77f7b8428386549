#include "screens/AllScreens.h"
#include "screens/HouseStyle.h"
#include "screens/SideWindow.h"

#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QPainter>

#include <cstdio>

using namespace Qt::StringLiterals;

/// Draws every screen in all six themes: one picture a screen, for looking at. No display is needed.
/// docs/screenshots holds what "docs/screenshots --width 380" has drawn.
///
///   ostrelin_pictures <folder> [--size 760x520] [--text extraLarge] [--face serif] [--scale 2]
///                              [--only <name>] [--width <pixels of one theme>]

namespace {

constexpr int columns = 3;
constexpr int gap = 8;

class Pictures : public AllScreens {
public:
    explicit Pictures(const QCommandLineParser &options) : m_options(options) {}

    void TestBody() override {}

    void drawAll() {
        const QString only = m_options.value(u"only"_s);
        for (const Screen &screen : screens()) {
            if (only.isEmpty() || screen.name == only)
                draw(screen);
        }
    }

private:
    QImage drawn(const Screen &screen, Theme theme) {
        Settings wanted = app.settings();
        wanted.theme = theme;
        wanted.textSize = decoded(m_options.value(u"text"_s), TextSize::large);
        wanted.typeFace = decoded(m_options.value(u"face"_s), TypeFace::sans);
        app.saveSettings(wanted);
        look.follow(wanted);
        look.applyToApplication();
        const QStringList sides = m_options.value(u"size"_s).split(u'x');
        SideWindow window(look, screen.name, screen.make());
        window.resize(screen.size.isEmpty() ? QSize(sides.value(0).toInt(), sides.value(1).toInt())
                                            : screen.size);
        window.show();
        QCoreApplication::processEvents();
        // What came up only now has a place only now.
        QCoreApplication::processEvents();
        const double scale = m_options.value(u"scale"_s).toDouble();
        QImage image(window.size() * scale, QImage::Format_RGB32);
        image.setDevicePixelRatio(scale);
        window.render(&image);
        return image;
    }

    template<typename Enum>
    static Enum decoded(const QString &name, Enum otherwise) {
        const auto names = caseNames(otherwise);
        const auto found = std::find(names.begin(), names.end(), name);
        return found == names.end() ? otherwise : Enum(found - names.begin());
    }

    void draw(const Screen &screen) {
        QImage sheet;
        QPainter painter;
        int place = 0;
        for (const Theme theme : themes) {
            QImage picture = drawn(screen, theme);
            picture.setDevicePixelRatio(1);
            if (const int width = m_options.value(u"width"_s).toInt())
                picture = picture.scaledToWidth(width, Qt::SmoothTransformation);
            const QSize cell = picture.size() + QSize(gap, gap);
            if (sheet.isNull()) {
                sheet = QImage(cell.width() * columns - gap,
                               cell.height() * int(themes.size()) / columns - gap, QImage::Format_RGB32);
                sheet.fill(QColor(0x80, 0x80, 0x80));
                painter.begin(&sheet);
            }
            painter.drawImage(cell.width() * (place % columns), cell.height() * (place / columns), picture);
            ++place;
        }
        painter.end();
        const QString path = QDir(m_options.positionalArguments().value(0)).filePath(screen.name + u".png"_s);
        if (!sheet.save(path, "PNG", 0))
            qFatal("can't write %s", qPrintable(path));
        std::puts(qPrintable(path));
    }

    const QCommandLineParser &m_options;
};

} // namespace

int main(int argc, char **argv) {
    if (!qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication::setStyle(new HouseStyle);
    const QApplication application(argc, argv);
    QCommandLineParser options;
    options.addOptions({{u"size"_s, {}, u"size"_s, u"1040x760"_s},
                        {u"text"_s, {}, u"size"_s},
                        {u"face"_s, {}, u"face"_s},
                        {u"scale"_s, {}, u"factor"_s, u"1"_s},
                        {u"only"_s, {}, u"name"_s},
                        {u"width"_s, {}, u"pixels"_s}});
    options.process(application);
    Pictures(options).drawAll();
    return 0;
}
