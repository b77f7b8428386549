#pragma once

#include <QtGlobal>

/// What a code point is to the rules by which text falls into characters: the property
/// Grapheme_Cluster_Break (Unicode UAX #29), joined with Extended_Pictographic, which never overlap.
enum class GraphemeClass : quint8 {
    other,
    carriageReturn,
    lineFeed,
    control,
    extend,
    zeroWidthJoiner,
    regionalIndicator,
    prepend,
    spacingMark,
    hangulLeading,
    hangulVowel,
    hangulTrailing,
    hangulOpenSyllable,   ///< precomposed, without a trailing consonant
    hangulClosedSyllable, ///< precomposed, with one
    pictographic,
};

/// The class of a code point; a lone surrogate is a control.
GraphemeClass graphemeClassOf(char32_t point);
