#pragma once

#include <QFlags>
#include <QList>
#include <QString>

/// A text and how its parts look.

enum class InlineStyle {
    emphasis = 1,
    strong = 2,
    code = 4,
    strikethrough = 8,
};
Q_DECLARE_FLAGS(InlineStyles, InlineStyle)
Q_DECLARE_OPERATORS_FOR_FLAGS(InlineStyles)

/// A part of a text that doesn't look like plain text.
struct InlineRun {
    qsizetype start = 0; ///< in UTF-16 units, as the length is
    qsizetype length = 0;
    InlineStyles styles;
    QString link; ///< where it leads; empty if it is no link. Nobody has looked at what it says

    bool operator==(const InlineRun &) const = default;
};

struct AttributedText {
    QString text;
    QList<InlineRun> runs; ///< in the order of the text, none of them empty, none over another

    bool operator==(const AttributedText &) const = default;
};
