#include "conversation/Attachments.h"

#include "conversation/RichText.h"
#include "platform/AtomicFile.h"
#include "records/Characters.h"

#include <QDir>
#include <QFileInfo>
#include <QStringConverter>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Of the files that hold text, a line each kind.
const QStringList suffixes = {
    u"txt text log ini conf cfg toml tex diff patch"_s,
    u"rtf"_s,
    u"json jsonl ipynb"_s,
    u"xml xhtml xsl xsd svg plist"_s,
    u"html htm css scss"_s,
    u"csv tsv tab"_s,
    u"md markdown mdx yaml yml"_s,
    u"c h cc cpp cxx hh hpp hxx m mm cs swift java kt scala go rs dart vb s asm f90 pas"_s,
    u"js mjs cjs jsx ts tsx py rb pl pm php lua r jl hs ml el lisp sql"_s,
    u"sh bash zsh fish csh ksh ps1 bat cmake mk gradle"_s,
};

/// What is looked at to tell a text from other data, in bytes.
constexpr qint64 sampleBytes = 4096;

/// By a byte order mark, whatever follows it; else UTF-8 if it can be that; else Latin 1.
QString decoded(const QByteArray &bytes) {
    if (const auto marked = QStringConverter::encodingForData(bytes))
        return QStringDecoder(*marked)(bytes);
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
}

bool beginsAsText(const QString &path) {
    const QString sample = decoded(readFile(path, sampleBytes).value_or(QByteArray()));
    const auto isStrange = [](QChar unit) { return unit < u' ' && !unit.isSpace() && unit != u'\x1b'; };
    return !sample.isEmpty() && std::none_of(sample.begin(), sample.end(), isStrange);
}

QString textOf(const QByteArray &bytes, const QString &suffix) {
    if (suffix.toLower() == u"rtf") {
        if (const std::optional<QString> text = plainTextOfRichText(bytes))
            return *text;
    }
    return decoded(bytes);
}

QString shortened(const QString &text) {
    const QStringView kept = firstCharacters(text, maxAttachmentCharacters);
    return kept.size() == text.size() ? text : kept.toString() + u"\n\n…(truncated)"_s;
}

} // namespace

const QStringList &attachmentNamePatterns() {
    static const QStringList patterns = [] {
        QStringList list;
        for (const QString &kind : suffixes) {
            for (const QString &suffix : kind.split(u' '))
                list.append(u"*."_s + suffix);
        }
        return list;
    }();
    return patterns;
}

bool isAttachable(const QString &path) {
    const QFileInfo file(path);
    // A hidden file has its name where others have a suffix.
    if (file.completeBaseName().isEmpty() || file.suffix().isEmpty())
        return beginsAsText(path);
    return QDir::match(attachmentNamePatterns(), file.fileName());
}

std::optional<Attachment> importAttachment(const QString &path) {
    const std::optional<QByteArray> bytes = readFile(path, maxAttachmentBytes);
    if (!bytes)
        return std::nullopt;
    const QFileInfo file(path);
    const QString text = textOf(*bytes, file.suffix()).trimmed();
    if (text.isEmpty())
        return std::nullopt;
    return Attachment{QUuid::createUuid(), file.fileName(), shortened(text)};
}
