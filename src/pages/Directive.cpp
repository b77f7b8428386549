#include "pages/Directive.h"

#include "pages/ChartNumber.h"
#include "pages/Lines.h"

#include <array>

namespace {

/// Calls `take` with each line of the body that isn't empty, trimmed.
template<typename Take>
void forEachPlainLine(QStringView body, const Take &take) {
    for (LineWalk lines(body); !lines.isAtEnd(); lines.advance()) {
        if (!lines.trimmed().isEmpty())
            take(lines.trimmed());
    }
}

QStringList plainLines(QStringView body) {
    QStringList lines;
    forEachPlainLine(body, [&](QStringView line) { lines.append(line.toString()); });
    return lines;
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
            take(label.toString(), trimmedLine(line.sliced(colon + 1)));
    });
}

QList<TextPair> labelledValues(QStringView body) {
    QList<TextPair> rows;
    forEachLabel(body, [&](const QString &label, QStringView value) {
        rows.append({label, value.toString()});
    });
    return rows;
}

QList<LabelledNumber> labelledNumbers(QStringView body) {
    QList<LabelledNumber> rows;
    forEachLabel(body, [&](const QString &label, QStringView value) {
        rows.append({label, parseChartNumber(value)});
    });
    return rows;
}

QStringList flowSteps(QStringView body) {
    QStringList steps;
    const auto add = [&](QStringView piece) {
        const QStringView step = trimmedLine(piece);
        if (!step.isEmpty() && (steps.isEmpty() || steps.constLast() != step))
            steps.append(step.toString());
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
    return steps;
}

/// Cut at the first pipe. Of the two in "a || b" the second stays with the right field.
QList<TextPair> pairs(QStringView body) {
    QList<TextPair> rows;
    forEachPlainLine(body, [&](QStringView line) {
        const qsizetype pipe = line.indexOf(u'|');
        const QStringView left = trimmedLine(pipe < 0 ? line : line.first(pipe));
        const QStringView right = pipe < 0 ? QStringView() : trimmedLine(line.sliced(pipe + 1));
        if (!left.isEmpty())
            rows.append({left.toString(), right.toString()});
    });
    return rows;
}

struct Directive {
    QStringView name;
    MarkdownBlock (*make)(QStringView body, const QString &color);
};

template<typename Numbers>
MarkdownBlock numbersBlock(QStringView body, const QString &color) {
    return Numbers{labelledNumbers(body), color};
}

template<typename Pairs>
MarkdownBlock pairsBlock(QStringView body, const QString &color) {
    return Pairs{pairs(body), color};
}

MarkdownBlock metricBlock(QStringView body, const QString &color) {
    return block::Metric{labelledValues(body), color};
}

MarkdownBlock calloutBlock(QStringView body, const QString &color) {
    return block::Callout{body.trimmed().toString(), color};
}

MarkdownBlock timelineBlock(QStringView body, const QString &color) {
    return block::Timeline{plainLines(body), color};
}

MarkdownBlock sourcesBlock(QStringView body, const QString &) {
    return block::Sources{plainLines(body)};
}

MarkdownBlock flowBlock(QStringView body, const QString &color) {
    return block::Flow{flowSteps(body), color};
}

MarkdownBlock specBlock(QStringView body, const QString &) {
    return block::Spec{pairs(body)};
}

MarkdownBlock subtitleBlock(QStringView body, const QString &) {
    return block::Subtitle{body.trimmed().toString()};
}

MarkdownBlock dividerBlock(QStringView, const QString &color) {
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

QString nameOf(QStringView text) {
    return trimmedLine(text).toString().toLower();
}

} // namespace

MarkdownBlock directiveBlock(QStringView info, QStringView body) {
    const qsizetype colon = info.indexOf(u':');
    const QString name = nameOf(colon < 0 ? info : info.first(colon));
    for (const Directive &directive : directives) {
        if (directive.name == name)
            return directive.make(body, colon < 0 ? QString() : nameOf(info.sliced(colon + 1)));
    }
    return block::Code{info.toString(), body.toString()};
}
