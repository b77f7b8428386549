#include "pages/Described.h"

#include <ostream>

using namespace Qt::StringLiterals;

namespace {

QString all(const Texts &items) {
    QStringList each;
    for (const QStringView item : items)
        each.append(quoted(item));
    return listed(each);
}

QString all(const QList<TextPair> &pairs) {
    QStringList each;
    for (const TextPair &pair : pairs)
        each.append(paired(pair.left, pair.right));
    return listed(each);
}

QString all(const QList<LabelledNumber> &numbers) {
    QStringList each;
    for (const LabelledNumber &number : numbers)
        each.append(numbered(number.label, number.value));
    return listed(each);
}

struct Describer {
    QString operator()(const block::Paragraph &block) const { return u"paragraph "_s + all(block.lines); }
    QString operator()(const block::Heading &block) const {
        return u"heading %1 "_s.arg(block.level) + quoted(block.text);
    }
    QString operator()(const block::Subtitle &block) const { return u"subtitle "_s + quoted(block.text); }
    QString operator()(const block::Bullet &block) const { return u"bullet "_s + all(block.items); }
    QString operator()(const block::Numbered &block) const { return u"numbered "_s + all(block.items); }
    QString operator()(const block::Quote &block) const { return u"quote "_s + all(block.lines); }
    QString operator()(const block::Code &block) const {
        return u"code "_s + quoted(block.language) + u' ' + quoted(block.code);
    }
    QString operator()(const block::Divider &block) const { return u"divider "_s + block.color; }
    QString operator()(const block::Table &block) const {
        QString text = u"table "_s + all(block.header);
        for (const Texts &row : block.rows)
            text += u" / "_s + all(row);
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
    QString operator()(const block::Sources &block) const { return u"sources "_s + all(block.items); }
    QString operator()(const block::Flow &block) const {
        return u"flow "_s + all(block.steps) + u' ' + block.color;
    }
    QString operator()(const block::Compare &block) const {
        return u"compare "_s + all(block.rows) + u' ' + block.color;
    }
    QString operator()(const block::Cards &block) const { return colored(u"cards "_s, block); }
    QString operator()(const block::Spec &block) const { return u"spec "_s + all(block.items); }
    QString operator()(const block::Rule &) const { return u"rule"_s; }

private:
    template<typename Block>
    static QString colored(const QString &name, const Block &block) {
        return name + all(block.items) + u' ' + block.color;
    }
};

} // namespace

QString quoted(QStringView text) {
    return u'"' + text.toString().replace(u'\n', u"\\n"_s) + u'"';
}

QString listed(const QStringList &items) {
    return u'[' + items.join(u", "_s) + u']';
}

QString paired(QStringView left, QStringView right) {
    return quoted(left) + u" = "_s + quoted(right);
}

QString numbered(QStringView label, double value) {
    return quoted(label) + u" = "_s + QString::number(value, 'g', 17);
}

QString described(const QList<MarkdownBlock> &blocks) {
    QStringList lines;
    for (const MarkdownBlock &block : blocks)
        lines.append(std::visit(Describer(), block.content));
    return lines.join(u'\n');
}

void PrintTo(const MarkdownBlock &block, std::ostream *stream) {
    *stream << described({block}).toStdString();
}
