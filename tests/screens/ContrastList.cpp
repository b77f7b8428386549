#include "screens/ContrastList.h"

#include "pages/PageColor.h"
#include "pages/drawing/ColorOf.h"
#include "pages/drawing/DrawingTheme.h"
#include "screens/DrawingThemeOf.h"
#include "screens/Look.h"

#include <algorithm>
#include <cmath>
#include <functional>

using namespace Qt::StringLiterals;

namespace {

using Kind = ContrastPair::Kind;
using Origin = ContrastPair::Origin;
using Pick = std::function<QColor(const Palette &)>;

/// The opaque colour that is seen where a fill lies over a ground.
QColor over(const QColor &ground, const QColor &fill) {
    return mixed(ground, withOpacity(fill, 1), fill.alphaF());
}

struct Named {
    QString name;
    Pick color;
};

QColor background(const Palette &palette) {
    return palette.background;
}
QColor card(const Palette &palette) {
    return over(palette.background, palette.cardFill());
}
QColor segments(const Palette &palette) {
    return over(card(palette), palette.quietFill());
}
QColor switchOff(const Palette &palette) {
    return over(card(palette), palette.switchOff());
}

const Named ink{u"text"_s, [](const Palette &palette) { return palette.ink; }};
const Named secondary{u"text that stands back"_s,
                      [](const Palette &palette) { return palette.secondaryInk(); }};
const Named accent{u"the accent"_s, [](const Palette &palette) { return palette.accent; }};
const Named warning{u"words that warn"_s, [](const Palette &palette) { return palette.destructiveInk(); }};
const Named onAccent{u"text on the accent"_s, [](const Palette &palette) { return palette.onAccent(); }};

/// A ground of the windows, or a fill over one.
Named ground(const QString &name, Pick color) {
    return {name, std::move(color)};
}
Named fillOver(const QString &name, Pick below, QColor (Palette::*fill)() const) {
    return {name, [below = std::move(below), fill](const Palette &palette) {
                return over(below(palette), (palette.*fill)());
            }};
}

const Named chat = ground(u"the chat, a sheet"_s, background);
const Named sidebar =
    ground(u"the sidebar, a menu, a tip"_s, [](const Palette &palette) { return palette.sidebar; });
const Named surface =
    ground(u"the composer, a field"_s, [](const Palette &palette) { return palette.surface; });
const Named section = ground(u"a section, a suggestion"_s, card);
const Named asking = fillOver(u"a card that asks"_s, background, &Palette::askingFill);
const Named button = fillOver(u"a button"_s, background, &Palette::quietFill);
const Named selected = ground(u"a selection"_s, [](const Palette &palette) { return palette.selection(); });
const Named offer = fillOver(u"a banner"_s, background, &Palette::bannerFill);
const Named problem = fillOver(u"a banner about a problem"_s, background, &Palette::problemFill);

class Pairs {
public:
    void add(const Named &front, const Named &back, Kind kind = Kind::text, Origin origin = Origin::ours) {
        ContrastPair pair{front.name, back.name, kind, origin, {}};
        for (const Theme theme : themes) {
            const Palette &palette = paletteOf(theme);
            pair.ratios.append(
                contrast(over(back.color(palette), front.color(palette)), back.color(palette)));
        }
        pairs.append(pair);
    }

    QList<ContrastPair> pairs;
};

void addInk(Pairs &pairs) {
    pairs.add(ink, chat, Kind::text, Origin::given);
    pairs.add(ink, sidebar, Kind::text, Origin::given);
    pairs.add(ink, surface, Kind::text, Origin::given);
    pairs.add(ink, section);
    pairs.add(ink, asking);
    pairs.add(ink, offer);
    pairs.add(ink, problem);
    pairs.add(ink, button);
    pairs.add(ink, fillOver(u"a button under the pointer"_s, background, &Palette::livelyFill));
    pairs.add(ink, fillOver(u"a button that is pressed"_s, background, &Palette::pressedFill));
    pairs.add(ink, fillOver(u"a pressed button in a section"_s, card, &Palette::pressedFill));
    const auto ofSidebar = [](const Palette &palette) { return palette.sidebar; };
    pairs.add(ink, fillOver(u"the row of the open chat, a chosen menu entry"_s, ofSidebar, &Palette::marker));
    pairs.add(ink, fillOver(u"the chosen pane"_s, ofSidebar, &Palette::livelyFill));
    pairs.add(ink, fillOver(u"\"New Chat\", pressed"_s, ofSidebar, &Palette::pressedFill));
    pairs.add(ink, fillOver(u"the chosen one of several"_s, segments, &Palette::raisedFill));
    const auto ofSurface = [](const Palette &palette) { return palette.surface; };
    pairs.add(ink, fillOver(u"a filled chip"_s, ofSurface, &Palette::chipFill));
    pairs.add(ink, fillOver(u"an attached file"_s, ofSurface, &Palette::quietFill));
    pairs.add(ink, selected);
    pairs.add({u"code among words"_s, ink.color}, ground(u"its own ground"_s, [](const Palette &palette) {
                  const DrawingTheme theme{.primary = palette.ink};
                  return over(palette.background, theme.codeGround());
              }));
    pairs.add({u"a toast's text"_s, background}, ground(u"a toast"_s, ink.color), Kind::text, Origin::given);
}

void addSecondary(Pairs &pairs) {
    for (const Named &back : {chat, sidebar, surface, section})
        pairs.add(secondary, back);
    pairs.add({u"what the model thought"_s, secondary.color},
              fillOver(u"its frame"_s, background, &Palette::frameFill));
    pairs.add({u"a button that can't be pressed"_s, secondary.color}, button);
    pairs.add({u"what could be chosen"_s, secondary.color}, ground(u"beside the chosen one"_s, segments));
}

void addAccents(Pairs &pairs) {
    const Named link{u"a link"_s, [](const Palette &palette) { return palette.linkInk(); }};
    pairs.add(link, chat);
    pairs.add(onAccent, ground(u"a bubble, a loud button"_s, accent.color), Kind::text, Origin::given);
    pairs.add(onAccent, ground(u"a loud button under the pointer"_s,
                               [](const Palette &palette) { return palette.livelyAccent(); }));
    pairs.add(onAccent, ground(u"a loud button that is pressed"_s,
                               [](const Palette &palette) { return palette.pressedAccent(); }));
    pairs.add(onAccent, ground(u"a selection in a bubble"_s,
                               [](const Palette &palette) { return palette.selectionOnAccent(); }));
    pairs.add(warning, sidebar);
    pairs.add(warning, fillOver(u"a chosen menu entry"_s, sidebar.color, &Palette::marker));
    for (const auto &[name, below] :
         {std::pair(u"a button"_s, Pick(background)), std::pair(u"a button in a section"_s, Pick(card))}) {
        pairs.add(warning, fillOver(name, below, &Palette::destructiveFill));
        pairs.add(warning, fillOver(name + u", under the pointer"_s, below, &Palette::livelyDestructiveFill));
        pairs.add(warning, fillOver(name + u", pressed"_s, below, &Palette::pressedDestructiveFill));
    }
}

void addSymbols(Pairs &pairs) {
    const auto symbol = [&](const QString &name, const Pick &color, const Named &back,
                            Origin origin = Origin::ours) {
        pairs.add({name, color}, back, Kind::symbol, origin);
    };
    for (const Named &back : {chat, sidebar, surface, section})
        symbol(u"the ring of the keyboard"_s, accent.color, back,
               back.name == section.name ? Origin::ours : Origin::given);
    symbol(u"the sign of a banner"_s, accent.color, offer);
    symbol(
        u"the sign of a banner about a problem"_s, [](const Palette &palette) { return palette.bad(); },
        problem);
    symbol(u"the sign of a card that asks"_s, accent.color, asking);
    symbol(u"the dot of a chat that answers"_s, accent.color, sidebar, Origin::given);
    symbol(
        u"the lamp: ready"_s, [](const Palette &palette) { return palette.good(); }, chat);
    symbol(
        u"the lamp: waking up, the part of a bar that is done"_s,
        [](const Palette &palette) { return palette.waking(); }, chat);
    symbol(
        u"the lamp: failed"_s, [](const Palette &palette) { return palette.bad(); }, chat);
    symbol(u"the lamp: stopped, the dots of a reply"_s, secondary.color, chat);
    symbol(
        u"a switch that is on"_s, [](const Palette &palette) { return palette.switchOn(); }, section);
    symbol(
        u"a switch that is off"_s, [](const Palette &palette) { return palette.switchOff(); }, section);
    symbol(
        u"the thumb of a switch that is on"_s, [](const Palette &palette) { return palette.thumb(); },
        ground(u"the switch"_s, accent.color));
    symbol(
        u"the thumb of a switch that is off"_s, [](const Palette &palette) { return palette.thumb(); },
        ground(u"the switch"_s, switchOff));
    symbol(
        u"the sign on the thumb"_s, [](const Palette &palette) { return palette.onThumb(); },
        ground(u"the thumb"_s, [](const Palette &palette) { return palette.thumb(); }));
    symbol(
        u"the spinner"_s, [](const Palette &) { return amber(); }, chat, Origin::given);
}

// Cut, not rounded: what lies under a limit is shown under it.
QString shown(double ratio) {
    return QString::number(std::floor(ratio * 100) / 100, 'f', 2);
}

QString cell(double ratio, double least) {
    return ratio < least ? u"**"_s + shown(ratio) + u"**"_s : shown(ratio);
}

QString heading(const QStringList &columns) {
    QString rule;
    for (qsizetype column = 0; column < columns.size(); ++column)
        rule += u"|---"_s;
    return u"| "_s + columns.join(u" | "_s) + u" |\n"_s + rule + u"|\n"_s;
}

QStringList themeNames() {
    QStringList names;
    for (const Theme theme : themes)
        names.append(displayName(theme));
    return names;
}

QString pairsTable() {
    QString table = heading(QStringList{u"What"_s, u"on"_s, u"at least"_s} + themeNames());
    for (const ContrastPair &pair : contrastPairs()) {
        QStringList cells{pair.front, pair.back, QString::number(pair.least())};
        for (const double ratio : pair.ratios)
            cells.append(cell(ratio, pair.least()));
        table += u"| "_s + cells.join(u" | "_s) + u" |\n"_s;
    }
    return table;
}

/// The colours that a page names, on the ground of each theme and on paper.
QString pageColorsTable() {
    QString table = heading(QStringList{u"Colour"_s} + themeNames() + QStringList{u"paper"_s});
    for (const QString &name :
         {u"blue"_s, u"green"_s, u"amber"_s, u"red"_s, u"purple"_s, u"pink"_s, u"teal"_s, u"gray"_s}) {
        const QColor color = colorOf(*pageColor(name));
        QStringList cells{name};
        for (const Theme theme : themes)
            cells.append(cell(contrast(color, paletteOf(theme).background), 3));
        cells.append(cell(contrast(color, Qt::white), 3));
        table += u"| "_s + cells.join(u" | "_s) + u" |\n"_s;
    }
    return table;
}

QString paperTable() {
    const DrawingTheme paper = paperTheme();
    QString table = heading({u"On paper"_s, u"at least"_s, u"ratio"_s});
    for (const auto &[name, front, back] :
         {std::tuple(u"text"_s, paper.primary, QColor(Qt::white)),
          std::tuple(u"text that stands back"_s, paper.secondary, QColor(Qt::white)),
          std::tuple(u"a link"_s, paper.link, QColor(Qt::white)),
          std::tuple(u"text, selected"_s, paper.primary, paper.selection)})
        table += u"| %1 | 4.5 | %2 |\n"_s.arg(name, cell(contrast(front, back), 4.5));
    return table;
}

} // namespace

double ContrastPair::worst() const {
    return *std::min_element(ratios.begin(), ratios.end());
}

QList<ContrastPair> contrastPairs() {
    Pairs pairs;
    addInk(pairs);
    addSecondary(pairs);
    addAccents(pairs);
    addSymbols(pairs);
    return pairs.pairs;
}

QString contrastDocument() {
    return u"# Contrast\n\n"
           "The contrast ratio (WCAG 2.1) of everything that is to be read or made out, on what lies behind "
           "it, in\n"
           "every theme. Text is to have 4.5 at least, and 3 is enough for large text, for icons, and for "
           "what shows\n"
           "a state. `ContrastTest` computes this list from the colours that the program draws with, and "
           "fails when\n"
           "it isn't true. **Bold** is what lies below its limit.\n\n"_s +
           pairsTable() +
           u"\nBelow the limit is only what the design of the program names itself, the colour as well as "
           u"the one\n"
           "behind it. Among the three colours that it has for text on an accent the best is taken. What is\n"
           "selected has the colour of text, whatever its own is.\n\n"
           "The border of a field and the hairlines between columns aren't in the list: what they part is "
           "told\n"
           "apart by its words and by the place where it stands.\n\n"
           "## Pages\n\n"_s +
           paperTable() +
           u"\nThe colours that a page can name are given too. Bars, lines and the large numbers of a figure "
           u"are to\n"
           "have 3 on the ground of the chat or on paper; **bold** is what lies below. The small caption of "
           "a\n"
           "callout has its colour too, and would want 4.5. The names beside a bar, its value and the text "
           "of a\n"
           "callout are in the colours of text, so that nothing is told by colour alone.\n\n"_s +
           pageColorsTable();
}
