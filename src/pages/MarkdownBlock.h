#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <variant>

/// What a text of the page dialect is made of. Every view shows a part of the text, which the block
/// keeps alive: it holds as long as a copy of the block does. It is ready to be shown but for its inline
/// Markdown. A `color` is the name that the fence gave, trimmed and in lower case: it is empty if there
/// was none, and may well be no colour at all (see PageColor.h).

using Texts = QList<QStringView>;

/// A label or left field, and what stands beside it.
struct TextPair {
    QStringView left;
    QStringView right;

    bool operator==(const TextPair &) const = default;
};
Q_DECLARE_TYPEINFO(TextPair, Q_PRIMITIVE_TYPE);

/// A label and its number, which may be any double: negative, infinite, not a number.
struct LabelledNumber {
    QStringView label;
    double value = 0;

    bool operator==(const LabelledNumber &) const = default;
};
Q_DECLARE_TYPEINFO(LabelledNumber, Q_PRIMITIVE_TYPE);

namespace block {

struct Paragraph {
    Texts lines; ///< never empty, and none of them is

    bool operator==(const Paragraph &) const = default;
};

struct Heading {
    int level = 1; ///< 1 to 6
    QStringView text;

    bool operator==(const Heading &) const = default;
};

struct Subtitle {
    QStringView text;

    bool operator==(const Subtitle &) const = default;
};

struct Bullet {
    Texts items;

    bool operator==(const Bullet &) const = default;
};

/// Its items are counted from 1, whatever numbers were written.
struct Numbered {
    Texts items;

    bool operator==(const Numbered &) const = default;
};

struct Quote {
    Texts lines;

    bool operator==(const Quote &) const = default;
};

/// A fence that is no directive. Both strings are as they were written.
struct Code {
    QStringView language;
    QStringView code;

    bool operator==(const Code &) const = default;
};

struct Divider {
    QString color;

    bool operator==(const Divider &) const = default;
};

/// Rows may be shorter or longer than the header, which has one cell at least.
struct Table {
    Texts header;
    QList<Texts> rows;

    bool operator==(const Table &) const = default;
};

struct Metric {
    QList<TextPair> items;
    QString color;

    bool operator==(const Metric &) const = default;
};

struct Chart {
    QList<LabelledNumber> items;
    QString color;

    bool operator==(const Chart &) const = default;
};

struct Line {
    QList<LabelledNumber> items;
    QString color;

    bool operator==(const Line &) const = default;
};

struct Donut {
    QList<LabelledNumber> items;
    QString color;

    bool operator==(const Donut &) const = default;
};

struct Progress {
    QList<LabelledNumber> items;
    QString color;

    bool operator==(const Progress &) const = default;
};

struct Callout {
    QStringView text;
    QString color;

    bool operator==(const Callout &) const = default;
};

struct Timeline {
    Texts items;
    QString color;

    bool operator==(const Timeline &) const = default;
};

struct Sources {
    Texts items;

    bool operator==(const Sources &) const = default;
};

struct Flow {
    Texts steps; ///< no two equal ones stand side by side
    QString color;

    bool operator==(const Flow &) const = default;
};

struct Compare {
    QList<TextPair> rows;
    QString color;

    bool operator==(const Compare &) const = default;
};

struct Cards {
    QList<TextPair> items;
    QString color;

    bool operator==(const Cards &) const = default;
};

struct Spec {
    QList<TextPair> items;

    bool operator==(const Spec &) const = default;
};

struct Rule {
    bool operator==(const Rule &) const = default;
};

} // namespace block

using BlockContent =
    std::variant<block::Paragraph, block::Heading, block::Subtitle, block::Bullet, block::Numbered,
                 block::Quote, block::Code, block::Divider, block::Table, block::Metric, block::Chart,
                 block::Line, block::Donut, block::Progress, block::Callout, block::Timeline, block::Sources,
                 block::Flow, block::Compare, block::Cards, block::Spec, block::Rule>;

struct MarkdownBlock {
    QString source; ///< the whole text that was read
    BlockContent content;

    /// Whether both show the same, wherever it was read.
    bool operator==(const MarkdownBlock &other) const { return content == other.content; }
};
Q_DECLARE_TYPEINFO(MarkdownBlock, Q_RELOCATABLE_TYPE);

/// The lines with a line feed between each two.
QString joinedLines(const Texts &lines);
