#include "pages/MarkdownBlock.h"

QString joinedLines(const Texts &lines) {
    QString joined;
    for (const QStringView line : lines) {
        joined += line;
        joined += u'\n';
    }
    joined.chop(1);
    return joined;
}
