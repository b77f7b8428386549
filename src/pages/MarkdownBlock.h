#pragma once

#include <QList>
#include <QString>
#include <QStringList>

#include <variant>

/// What a text of the page dialect is made of. Every string is ready to be shown but for its inline
/// Markdown. A `color` is the name that the fence gave, trimmed and in lower case: it is empty if there
/// was none, and may well be no colour at all (see PageColor.h).

/// A label or left field, and what stands beside it.
struct TextPair {
    QString left;
    QString right;

    bool operator==(const TextPair &) const = default;
};

/// A label and its number, which may be any double: negative, infinite, not a number.
struct LabelledNumber {
    QString label;
    double value = 0;

    bool operator==(const LabelledNumber &) const = default;
};

namespace block {

struct Paragraph {
    QStringList lines; ///< never empty, and none of them is

    bool operator==(const Paragraph &) const = default;
};

struct Heading {
    int level = 1; ///< 1 to 6
    QString text;

    bool operator==(const Heading &) const = default;
};

struct Subtitle {
    QString text;

    bool operator==(const Subtitle &) const = default;
};

struct Bullet {
    QStringList items;

    bool operator==(const Bullet &) const = default;
};

/// Its items are counted from 1, whatever numbers were written.
struct Numbered {
    QStringList items;

    bool operator==(const Numbered &) const = default;
};

struct Quote {
    QStringList lines;

    bool operator==(const Quote &) const = default;
};

/// A fence that is no directive. Both strings are as they were written.
struct Code {
    QString language;
    QString code;

    bool operator==(const Code &) const = default;
};

struct Divider {
    QString color;

    bool operator==(const Divider &) const = default;
};

/// Rows may be shorter or longer than the header, which has one cell at least.
struct Table {
    QStringList header;
    QList<QStringList> rows;

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
    QString text;
    QString color;

    bool operator==(const Callout &) const = default;
};

struct Timeline {
    QStringList items;
    QString color;

    bool operator==(const Timeline &) const = default;
};

struct Sources {
    QStringList items;

    bool operator==(const Sources &) const = default;
};

struct Flow {
    QStringList steps; ///< no two equal ones stand side by side
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

using MarkdownBlock =
    std::variant<block::Paragraph, block::Heading, block::Subtitle, block::Bullet, block::Numbered,
                 block::Quote, block::Code, block::Divider, block::Table, block::Metric, block::Chart,
                 block::Line, block::Donut, block::Progress, block::Callout, block::Timeline, block::Sources,
                 block::Flow, block::Compare, block::Cards, block::Spec, block::Rule>;
