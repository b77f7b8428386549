#pragma once

#include "records/GraphemeClass.h"

/// Tells, code point after code point, where a character ends and the next begins: the extended
/// grapheme clusters of Unicode UAX #29, rules GB1 to GB999 without GB9c. A breaker serves one text.
class GraphemeBreaker {
public:
    /// Takes the class of the next code point; whether a character begins with it.
    bool breaksBefore(GraphemeClass next) {
        const bool breaks = ruleFor(next);
        remember(next);
        return breaks;
    }

private:
    enum class Picture { none, open, joined };
    enum class FlagHalves { even, odd };

    static bool isControl(GraphemeClass each) {
        return each == GraphemeClass::carriageReturn || each == GraphemeClass::lineFeed ||
               each == GraphemeClass::control;
    }

    bool ruleFor(GraphemeClass next) const;
    bool hangulJoins(GraphemeClass next) const;
    void remember(GraphemeClass next);

    // The start of the text breaks before everything, as a control does.
    GraphemeClass m_previous = GraphemeClass::control;
    Picture m_picture = Picture::none;
    FlagHalves m_flagHalves = FlagHalves::even;
};

inline bool GraphemeBreaker::ruleFor(GraphemeClass next) const {
    using enum GraphemeClass;
    if (m_previous == other && next == other)
        return true;
    if (m_previous == carriageReturn && next == lineFeed) // GB3
        return false;
    if (isControl(m_previous) || isControl(next)) // GB4, GB5
        return true;
    if (next == extend || next == zeroWidthJoiner || next == spacingMark) // GB9, GB9a
        return false;
    if (m_previous == prepend) // GB9b
        return false;
    if (next == pictographic && m_picture == Picture::joined) // GB11
        return false;
    if (next == regionalIndicator && m_flagHalves == FlagHalves::odd) // GB12, GB13
        return false;
    return !hangulJoins(next); // GB6 to GB8
}

inline bool GraphemeBreaker::hangulJoins(GraphemeClass next) const {
    using enum GraphemeClass;
    switch (m_previous) {
    case hangulLeading:
        return next == hangulLeading || next == hangulVowel || next == hangulOpenSyllable ||
               next == hangulClosedSyllable;
    case hangulOpenSyllable:
    case hangulVowel:
        return next == hangulVowel || next == hangulTrailing;
    case hangulClosedSyllable:
    case hangulTrailing:
        return next == hangulTrailing;
    default:
        return false;
    }
}

inline void GraphemeBreaker::remember(GraphemeClass next) {
    using enum GraphemeClass;
    if (next == pictographic)
        m_picture = Picture::open;
    else if (next == zeroWidthJoiner && m_picture == Picture::open)
        m_picture = Picture::joined;
    else if (next != extend || m_picture == Picture::joined)
        m_picture = Picture::none;
    const bool completesHalf = next == regionalIndicator && m_flagHalves == FlagHalves::even;
    m_flagHalves = completesHalf ? FlagHalves::odd : FlagHalves::even;
    m_previous = next;
}
