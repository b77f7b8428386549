#include "conversation/Attachments.h"

#include "conversation/RichText.h"
#include "platform/AtomicFile.h"
#include "records/Characters.h"

#include <QFileInfo>
#include <QStringConverter>

using namespace Qt::StringLiterals;

namespace {

/// By a byte order mark, whatever follows it; else UTF-8 if it can be that; else Latin 1.
QString decoded(const QByteArray &bytes) {
    if (const auto marked = QStringConverter::encodingForData(bytes))
        return QStringDecoder(*marked)(bytes);
    return bytes.isValidUtf8() ? QString::fromUtf8(bytes) : QString::fromLatin1(bytes);
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
        const QString suffixes =
            u"txt text log ini conf cfg toml tex diff patch rtf json xml html htm csv tsv tab "
            "c h cc cpp cxx hh hpp hxx m mm cs swift java kt scala go rs js mjs cjs jsx ts tsx py rb pl pm "
            "php "
            "lua r jl hs ml el lisp sh bash zsh fish ps1 bat sql css scss s asm f90 pas cmake mk gradle "
            "md markdown mdx yaml yml"_s;
        QStringList list;
        for (const QString &suffix : suffixes.split(u' '))
            list.append(u"*."_s + suffix);
        return list;
    }();
    return patterns;
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
