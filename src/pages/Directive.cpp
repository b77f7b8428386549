#include "pages/Directive.h"

#include "pages/ChartNumber.h"
#include "pages/Lines.h"

#include <QVarLengthArray>

#include <algorithm>
#include <array>

namespace {

/// What is being gathered; most lists need no more room.
template<typename Item>
using Gathered = QVarLengthArray<Item, 16>;

template<typename Item>
QList<Item> listOf(const Gathered<Item> &items) {
    return QList<Item>(items.begin(), items.end());
}

/// Calls `take` with each line of the body that isn't empty, trimmed.
template<typename Take>
void forEachPlainLine(QStringView body, const Take &take) {
    for (LineWalk lines(body); !lines.isAtEnd(); lines.advance()) {
        if (!lines.trimmed().isEmpty())
            take(lines.trimmed());
    }
}

Texts plainLines(QStringView body) {
    Gathered<QStringView> lines;
    forEachPlainLine(body, [&](QStringView line) { lines.append(line); });
    return listOf(lines);
}

/// Calls `take` with each label and its value.
template<typename Take>
void forEachLabel(QStringView body, const Take &take) {
    forEachPlainLine(body, [&](QStringView line) {
        const qsizetype colon = line.indexOf(u':');
        if (colon < 0)
            return;
        const QStringView label = trimmedLine(line.first(colon));
        if (!label.isEmpty())
            take(label, trimmedLine(line.sliced(colon + 1)));
    });
}

QList<TextPair> labelledValues(QStringView body) {
    Gathered<TextPair> rows;
    forEachLabel(body, [&](QStringView label, QStringView value) { rows.append({label, value}); });
    return listOf(rows);
}

QList<LabelledNumber> labelledNumbers(QStringView body) {
    Gathered<LabelledNumber> rows;
    forEachLabel(body, [&](QStringView label, QStringView value) {
        rows.append({label, parseChartNumber(value)});
    });
    return listOf(rows);
}

Texts flowSteps(QStringView body) {
    Gathered<QStringView> steps;
    const auto add = [&](QStringView piece) {
        const QStringView step = trimmedLine(piece);
        if (!step.isEmpty() && (steps.isEmpty() || steps.last() != step))
            steps.append(step);
    };
    constexpr QStringView arrow = u"->";
    forEachPlainLine(body, [&](QStringView line) {
        qsizetype start = 0;
        for (qsizetype end = line.indexOf(arrow); end >= 0; end = line.indexOf(arrow, start)) {
            add(line.sliced(start, end - start));
            start = end + arrow.size();
        }
        add(line.sliced(start));
    });
    return listOf(steps);
}

/// Cut at the first pipe. Of the two in "a || b" the second stays with the right field.
QList<TextPair> pairs(QStringView body) {
    Gathered<TextPair> rows;
    forEachPlainLine(body, [&](QStringView line) {
        const qsizetype pipe = line.indexOf(u'|');
        const QStringView left = trimmedLine(pipe < 0 ? line : line.first(pipe));
        const QStringView right = pipe < 0 ? QStringView() : trimmedLine(line.sliced(pipe + 1));
        if (!left.isEmpty())
            rows.append({left, right});
    });
    return listOf(rows);
}

struct Directive {
    QStringView name;
    BlockContent (*make)(QStringView body, const QString &color);
};

template<typename Numbers>
BlockContent numbersBlock(QStringView body, const QString &color) {
    return Numbers{labelledNumbers(body), color};
}

template<typename Pairs>
BlockContent pairsBlock(QStringView body, const QString &color) {
    return Pairs{pairs(body), color};
}

BlockContent metricBlock(QStringView body, const QString &color) {
    return block::Metric{labelledValues(body), color};
}

BlockContent calloutBlock(QStringView body, const QString &color) {
    return block::Callout{body.trimmed(), color};
}

BlockContent timelineBlock(QStringView body, const QString &color) {
    return block::Timeline{plainLines(body), color};
}

BlockContent sourcesBlock(QStringView body, const QString &) {
    return block::Sources{plainLines(body)};
}

BlockContent flowBlock(QStringView body, const QString &color) {
    return block::Flow{flowSteps(body), color};
}

BlockContent specBlock(QStringView body, const QString &) {
    return block::Spec{pairs(body)};
}

BlockContent subtitleBlock(QStringView body, const QString &) {
    return block::Subtitle{body.trimmed()};
}

BlockContent dividerBlock(QStringView, const QString &color) {
    return block::Divider{color};
}

constexpr std::array<Directive, 14> directives{{
    {u"metric", metricBlock},
    {u"chart", numbersBlock<block::Chart>},
    {u"line", numbersBlock<block::Line>},
    {u"donut", numbersBlock<block::Donut>},
    {u"progress", numbersBlock<block::Progress>},
    {u"callout", calloutBlock},
    {u"timeline", timelineBlock},
    {u"sources", sourcesBlock},
    {u"flow", flowBlock},
    {u"compare", pairsBlock<block::Compare>},
    {u"cards", pairsBlock<block::Cards>},
    {u"spec", specBlock},
    {u"subtitle", subtitleBlock},
    {u"divider", dividerBlock},
}};

/// Whether `text` is the name, in whatever case: there's no letter beyond ASCII whose lower case is one of
/// the names' letters.
bool isNamed(QStringView text, QStringView name) {
    return text.size() == name.size() &&
           std::equal(text.begin(), text.end(), name.begin(), [](QChar letter, QChar lower) {
               const char16_t unit = letter.unicode();
               return (unit >= u'A' && unit <= u'Z' ? unit + (u'a' - u'A') : unit) == lower.unicode();
           });
}

} // namespace

BlockContent directiveBlock(QStringView info, QStringView body) {
    const qsizetype colon = info.indexOf(u':');
    const QStringView name = trimmedLine(colon < 0 ? info : info.first(colon));
    const QStringView color = colon < 0 ? QStringView() : trimmedLine(info.sliced(colon + 1));
    for (const Directive &directive : directives) {
        if (isNamed(name, directive.name))
            return directive.make(body, color.toString().toLower());
    }
    return block::Code{info, body};
}
