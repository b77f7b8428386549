#include "pages/Described.h"

#include <ostream>

using namespace Qt::StringLiterals;

namespace {

QString quoted(const QString &text) {
    return u'"' + QString(text).replace(u'\n', u"\\n"_s) + u'"';
}

QString listed(const QStringList &items) {
    QStringList each;
    for (const QString &item : items)
        each.append(quoted(item));
    return u'[' + each.join(u", "_s) + u']';
}

QString listed(const QList<TextPair> &pairs) {
    QStringList each;
    for (const TextPair &pair : pairs)
        each.append(quoted(pair.left) + u" = "_s + quoted(pair.right));
    return u'[' + each.join(u", "_s) + u']';
}

QString listed(const QList<LabelledNumber> &numbers) {
    QStringList each;
    for (const LabelledNumber &number : numbers)
        each.append(quoted(number.label) + u" = "_s + QString::number(number.value, 'g', 17));
    return u'[' + each.join(u", "_s) + u']';
}

struct Describer {
    QString operator()(const block::Paragraph &block) const { return u"paragraph "_s + listed(block.lines); }
    QString operator()(const block::Heading &block) const {
        return u"heading %1 "_s.arg(block.level) + quoted(block.text);
    }
    QString operator()(const block::Subtitle &block) const { return u"subtitle "_s + quoted(block.text); }
    QString operator()(const block::Bullet &block) const { return u"bullet "_s + listed(block.items); }
    QString operator()(const block::Numbered &block) const { return u"numbered "_s + listed(block.items); }
    QString operator()(const block::Quote &block) const { return u"quote "_s + listed(block.lines); }
    QString operator()(const block::Code &block) const {
        return u"code "_s + quoted(block.language) + u' ' + quoted(block.code);
    }
    QString operator()(const block::Divider &block) const { return u"divider "_s + block.color; }
    QString operator()(const block::Table &block) const {
        QString text = u"table "_s + listed(block.header);
        for (const QStringList &row : block.rows)
            text += u" / "_s + listed(row);
        return text;
    }
    QString operator()(const block::Metric &block) const { return colored(u"metric "_s, block); }
    QString operator()(const block::Chart &block) const { return colored(u"chart "_s, block); }
    QString operator()(const block::Line &block) const { return colored(u"line "_s, block); }
    QString operator()(const block::Donut &block) const { return colored(u"donut "_s, block); }
    QString operator()(const block::Progress &block) const { return colored(u"progress "_s, block); }
    QString operator()(const block::Callout &block) const {
        return u"callout "_s + quoted(block.text) + u' ' + block.color;
    }
    QString operator()(const block::Timeline &block) const { return colored(u"timeline "_s, block); }
    QString operator()(const block::Sources &block) const { return u"sources "_s + listed(block.items); }
    QString operator()(const block::Flow &block) const {
        return u"flow "_s + listed(block.steps) + u' ' + block.color;
    }
    QString operator()(const block::Compare &block) const {
        return u"compare "_s + listed(block.rows) + u' ' + block.color;
    }
    QString operator()(const block::Cards &block) const { return colored(u"cards "_s, block); }
    QString operator()(const block::Spec &block) const { return u"spec "_s + listed(block.items); }
    QString operator()(const block::Rule &) const { return u"rule"_s; }

private:
    template<typename Block>
    static QString colored(const QString &name, const Block &block) {
        return name + listed(block.items) + u' ' + block.color;
    }
};

} // namespace

QString described(const QList<MarkdownBlock> &blocks) {
    QStringList lines;
    for (const MarkdownBlock &block : blocks)
        lines.append(std::visit(Describer(), block));
    return lines.join(u'\n');
}

void PrintTo(const MarkdownBlock &block, std::ostream *stream) {
    *stream << std::visit(Describer(), block).toStdString();
}
