#include "screens/Palette.h"

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace {

constexpr double secondaryShare = 0.73;
constexpr double cardOpacity = 0.035;
constexpr double chipOpacity = 0.34;
constexpr double frameOpacity = 0.05;
constexpr double askingOpacity = 0.04;
constexpr double bannerOpacity = 0.12;
constexpr double accentEdgeOpacity = 0.55;
constexpr double quietOpacity = 0.07;
constexpr double markerOpacity = 0.1;
constexpr double switchOffOpacity = 0.52;
constexpr double livelyOpacity = 0.11;
constexpr double pressedOpacity = 0.16;
constexpr double selectionShare = 0.32;
constexpr double readableContrast = 4.5; // WCAG 2.1, level AA
constexpr double linkStep = 0.1;
constexpr double livelyAccentShare = 0.1;
constexpr double pressedAccentShare = 0.2;
constexpr double destructiveShareOnDark = 0.5;
constexpr double destructiveShareOnLight = 0.2;
constexpr double destructiveOpacity = 0.08;
constexpr double livelyDestructiveOpacity = 0.12;
constexpr double pressedDestructiveOpacity = 0.16;
constexpr double grooveOpacity = 0.12;
constexpr double edgeOpacity = 0.08;
constexpr double livelyEdgeOpacity = 0.18;

QColor rgb(double red, double green, double blue, double opacity = 1) {
    return QColor::fromRgbF(float(red), float(green), float(blue), float(opacity));
}

const std::array<Palette, 6> palettes = {{
    {.appearance = Appearance::light,
     .sidebar = rgb(0.902, 0.941, 0.984),
     .background = rgb(0.973, 0.984, 0.996),
     .hairline = rgb(0.24, 0.36, 0.55, 0.2),
     .swatch = rgb(0.902, 0.941, 0.984),
     .surface = rgb(1, 1, 1),
     .ink = rgb(0.11, 0.165, 0.227),
     .strongInk = rgb(0.122, 0.173, 0.239),
     .accent = rgb(0.72, 0.36, 0.06)},
    {.appearance = Appearance::light,
     .sidebar = rgb(0.984, 0.918, 0.941),
     .background = rgb(0.992, 0.969, 0.976),
     .hairline = rgb(0.45, 0.13, 0.21, 0.2),
     .swatch = rgb(0.984, 0.918, 0.941),
     .surface = rgb(1, 1, 1),
     .ink = rgb(0.2, 0.125, 0.169),
     .strongInk = rgb(0.235, 0.129, 0.188),
     .accent = rgb(0.72, 0.16, 0.4)},
    {.appearance = Appearance::light,
     .sidebar = rgb(0.949, 0.937, 0.91),
     .background = rgb(1, 1, 1),
     .hairline = rgb(0.44, 0.39, 0.3, 0.18),
     .swatch = rgb(0.949, 0.937, 0.91),
     .surface = rgb(0.969, 0.961, 0.941),
     .ink = rgb(0.129, 0.125, 0.11),
     .strongInk = rgb(0.129, 0.125, 0.11),
     .accent = rgb(0.427, 0.157, 0.851)},
    {.appearance = Appearance::dark,
     .sidebar = rgb(0.173, 0.18, 0.2),
     .background = rgb(0.216, 0.224, 0.247),
     .hairline = rgb(0, 0, 0, 0.4),
     .swatch = rgb(0.173, 0.18, 0.2),
     .surface = rgb(0.267, 0.275, 0.298),
     .ink = rgb(0.925, 0.925, 0.937),
     .strongInk = rgb(0.906, 0.914, 0.929),
     .accent = rgb(0.51, 0.706, 1)},
    {.appearance = Appearance::dark,
     .sidebar = rgb(0.071, 0.071, 0.078),
     .background = rgb(0.098, 0.094, 0.133),
     .hairline = rgb(0, 0, 0, 0.5),
     .swatch = rgb(0.071, 0.071, 0.078),
     .surface = rgb(0.125, 0.122, 0.157),
     .ink = rgb(0.937, 0.914, 0.863),
     .strongInk = rgb(0.937, 0.906, 0.827),
     .accent = rgb(0.965, 0.651, 0.227)},
    {.appearance = Appearance::light,
     .sidebar = rgb(0.906, 0.949, 0.914),
     .background = rgb(0.969, 0.984, 0.973),
     .hairline = rgb(0.11, 0.24, 0.2, 0.2),
     .swatch = rgb(0.906, 0.949, 0.914),
     .surface = rgb(1, 1, 1),
     .ink = rgb(0.118, 0.169, 0.141),
     .strongInk = rgb(0.118, 0.227, 0.184),
     .accent = rgb(0.122, 0.227, 0.373)},
}};

const std::array<QColor, 3> bubbleInks = {rgb(0.133, 0.141, 0.165), rgb(0.937, 0.953, 0.969),
                                          rgb(0.122, 0.106, 0.176)};

/// Relative luminance, 0 to 1 (WCAG 2.1).
double luminance(const QColor &color) {
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) + 0.0722 * linear(color.blueF());
}

} // namespace

QColor Palette::secondaryInk() const {
    return mixed(background, ink, secondaryShare);
}

QColor Palette::quietFill() const {
    return withOpacity(ink, quietOpacity);
}

QColor Palette::livelyFill() const {
    return withOpacity(ink, livelyOpacity);
}

QColor Palette::pressedFill() const {
    return withOpacity(ink, pressedOpacity);
}

QColor Palette::marker() const {
    return withOpacity(ink, markerOpacity);
}

QColor Palette::switchOn() const {
    return accent;
}

QColor Palette::switchOff() const {
    return withOpacity(ink, switchOffOpacity);
}

QColor Palette::thumb() const {
    return appearance == Appearance::dark ? background : surface;
}

QColor Palette::onThumb() const {
    return ink;
}

QColor Palette::cardFill() const {
    return withOpacity(ink, cardOpacity);
}

QColor Palette::chipFill() const {
    return withOpacity(accent, chipOpacity);
}

QColor Palette::frameFill() const {
    return withOpacity(ink, frameOpacity);
}

QColor Palette::askingFill() const {
    return withOpacity(ink, askingOpacity);
}

QColor Palette::bannerFill() const {
    return withOpacity(accent, bannerOpacity);
}

QColor Palette::problemFill() const {
    return withOpacity(bad(), bannerOpacity);
}

QColor Palette::accentEdge() const {
    return withOpacity(accent, accentEdgeOpacity);
}

QColor Palette::raisedFill() const {
    return appearance == Appearance::dark ? pressedFill() : background;
}

QColor Palette::onAccent() const {
    return *std::max_element(bubbleInks.begin(), bubbleInks.end(),
                             [this](const QColor &one, const QColor &other) {
                                 return contrast(one, accent) < contrast(other, accent);
                             });
}

QColor Palette::linkInk() const {
    double share = 0;
    while (share < 1 && contrast(mixed(accent, ink, share), background) < readableContrast)
        share += linkStep;
    return mixed(accent, ink, std::min(share, 1.0));
}

QColor Palette::selection() const {
    return mixed(background, accent, selectionShare);
}

QColor Palette::awayFromText(double share) const {
    const QColor away = luminance(onAccent()) > luminance(accent) ? QColor(Qt::black) : QColor(Qt::white);
    return mixed(accent, away, share);
}

QColor Palette::selectionOnAccent() const {
    return awayFromText(selectionShare);
}

QColor Palette::livelyAccent() const {
    return awayFromText(livelyAccentShare);
}

QColor Palette::pressedAccent() const {
    return awayFromText(pressedAccentShare);
}

QColor Palette::destructiveInk() const {
    return mixed(bad(), ink,
                 appearance == Appearance::dark ? destructiveShareOnDark : destructiveShareOnLight);
}

QColor Palette::destructiveFill() const {
    return withOpacity(bad(), destructiveOpacity);
}

QColor Palette::livelyDestructiveFill() const {
    return withOpacity(bad(), livelyDestructiveOpacity);
}

QColor Palette::pressedDestructiveFill() const {
    return withOpacity(bad(), pressedDestructiveOpacity);
}

QColor Palette::veil() const {
    return withOpacity(Qt::black, appearance == Appearance::dark ? 0.5 : 0.28);
}

QColor Palette::done() const {
    return waking();
}

QColor Palette::groove() const {
    return withOpacity(ink, grooveOpacity);
}

QColor Palette::good() const {
    return appearance == Appearance::dark ? rgb(0.25, 0.73, 0.44) : rgb(0.15, 0.58, 0.33);
}

QColor Palette::waking() const {
    return appearance == Appearance::dark ? amber() : rgb(0.82, 0.48, 0.06);
}

QColor Palette::bad() const {
    return appearance == Appearance::dark ? rgb(0.94, 0.42, 0.4) : rgb(0.78, 0.18, 0.18);
}

QColor Palette::edge() const {
    return withOpacity(ink, edgeOpacity);
}

QColor Palette::livelyEdge() const {
    return withOpacity(ink, livelyEdgeOpacity);
}

QColor Palette::shadow() const {
    return withOpacity(Qt::black, appearance == Appearance::dark ? 0.008 : 0.005);
}

const Palette &paletteOf(Theme theme) {
    return palettes[static_cast<size_t>(theme)];
}

QString displayName(Theme theme) {
    static constexpr std::array<QStringView, 6> names = {u"Light blue", u"Pink",       u"Crisp white",
                                                         u"Gray",       u"Near black", u"Soft green"};
    return names[static_cast<size_t>(theme)].toString();
}

QColor amber() {
    return rgb(0.965, 0.651, 0.227);
}

std::array<QColor, 3> sunColors() {
    return {rgb(1, 0.914, 0.651), amber(), rgb(0.91, 0.51, 0.227)};
}

double contrast(const QColor &one, const QColor &other) {
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

QColor mixed(const QColor &from, const QColor &to, double share) {
    const auto step = [share](double start, double end) { return start + (end - start) * share; };
    return rgb(step(from.redF(), to.redF()), step(from.greenF(), to.greenF()), step(from.blueF(), to.blueF()),
               step(from.alphaF(), to.alphaF()));
}

QColor withOpacity(QColor color, double opacity) {
    color.setAlphaF(float(opacity));
    return color;
}

QPalette toolkitPalette(const Palette &palette) {
    const QColor quiet = mixed(palette.background, palette.ink, quietOpacity);
    QPalette result(quiet, palette.background);
    result.setColor(QPalette::WindowText, palette.ink);
    result.setColor(QPalette::Base, palette.surface);
    result.setColor(QPalette::AlternateBase, palette.sidebar);
    result.setColor(QPalette::Text, palette.ink);
    result.setColor(QPalette::ButtonText, palette.ink);
    result.setColor(QPalette::BrightText, palette.destructiveInk());
    result.setColor(QPalette::PlaceholderText, palette.secondaryInk());
    result.setColor(QPalette::Highlight, palette.accent);
    result.setColor(QPalette::HighlightedText, palette.onAccent());
    result.setColor(QPalette::Link, palette.accent);
    result.setColor(QPalette::LinkVisited, palette.accent);
    result.setColor(QPalette::ToolTipBase, palette.sidebar);
    result.setColor(QPalette::ToolTipText, palette.ink);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText})
        result.setColor(QPalette::Disabled, role, palette.secondaryInk());
    return result;
}
