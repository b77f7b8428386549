#pragma once

#include "records/Settings.h"

#include <QColor>
#include <QPalette>

#include <array>

/// The appearance that a theme forces on the application.
enum class Appearance { light, dark };

/// The colours of one theme: the eight that are given, and those that follow from them.
struct Palette {
    Appearance appearance = Appearance::dark;
    QColor sidebar;
    QColor background; ///< of the chat
    QColor hairline;
    QColor swatch;
    QColor surface; ///< of the composer
    QColor ink;
    QColor strongInk;
    QColor accent;

    /// Text that stands back: captions, placeholders.
    QColor secondaryInk() const;

    /// The ink at seven hundredths, behind quiet controls; `lively` under the pointer, `pressed` below it.
    QColor quietFill() const;
    QColor livelyFill() const;
    QColor pressedFill() const;

    /// Behind the one of several quiet things that is chosen.
    QColor raisedFill() const;

    /// Behind the row of the open chat.
    QColor marker() const;

    /// A switch that is on or off: its box, its thumb, and the sign on the thumb.
    QColor switchOn() const;
    QColor switchOff() const;
    QColor thumb() const;
    QColor onThumb() const;

    /// Behind cards that are buttons, at rest.
    QColor cardFill() const;

    /// The part of a chip that is filled.
    QColor chipFill() const;

    /// Behind text that stands in a frame, and the frame's edge.
    QColor frameFill() const;
    QColor accentEdge() const;

    /// Behind a card that asks something.
    QColor askingFill() const;

    /// Behind a banner: one that offers or remarks something, and one about a problem.
    QColor bannerFill() const;
    QColor problemFill() const;

    /// Text and symbols on the accent: the one of the three bubble colours with the best contrast.
    QColor onAccent() const;

    /// Links on the background: the accent, or as much of it as can be read there.
    QColor linkInk() const;

    /// Behind selected text on the background, and inside a bubble.
    QColor selection() const;
    QColor selectionOnAccent() const;

    /// The accent under the pointer and pressed.
    QColor livelyAccent() const;
    QColor pressedAccent() const;

    /// Words that warn of what can't be undone, and behind them: at rest, under the pointer, pressed.
    QColor destructiveInk() const;
    QColor destructiveFill() const;
    QColor livelyDestructiveFill() const;
    QColor pressedDestructiveFill() const;

    /// What lies over a window behind a sheet.
    QColor veil() const;

    /// The part of a bar that is done, and the groove that it fills.
    QColor done() const;
    QColor groove() const;

    /// The lamp's colours for an engine that is ready, waking up, failed.
    QColor good() const;
    QColor waking() const;
    QColor bad() const;

    /// The edge of cards and of the composer, the same where the keyboard is; and one step of the soft
    /// shadow below them.
    QColor edge() const;
    QColor livelyEdge() const;
    QColor shadow() const;

private:
    /// The accent a step away from the text on it, so that the text reads no worse there.
    QColor awayFromText(double share) const;
};

/// All themes, in the order in which the settings show them.
inline constexpr std::array themes = {Theme::lightBlue, Theme::pink,      Theme::crispWhite,
                                      Theme::gray,      Theme::nearBlack, Theme::softGreen};

/// The colours of a theme.
const Palette &paletteOf(Theme theme);

/// The theme's name as the settings show it.
QString displayName(Theme theme);

/// The amber of the program's own mark, the same in every theme.
QColor amber();

/// The three colours of the program's sun, from top to bottom, the same in every theme.
std::array<QColor, 3> sunColors();

/// The contrast of two opaque colours, 1 to 21 (WCAG 2.1, "contrast ratio").
double contrast(const QColor &one, const QColor &other);

/// A step of `share`, 0 to 1, from one colour to another.
QColor mixed(const QColor &from, const QColor &to, double share);

/// The same colour at that opacity.
QColor withOpacity(QColor color, double opacity);

/// The application-wide palette of the toolkit, so that menus, tool tips and selections follow.
QPalette toolkitPalette(const Palette &palette);
