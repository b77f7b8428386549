#include "pages/PageAnalysis.h"

#include "pages/Lines.h"

QStringView hidePageWhileStreaming(QStringView text) {
    constexpr QStringView opening = u"```page";
    for (qsizetype found = text.indexOf(opening); found >= 0; found = text.indexOf(opening, found + 1)) {
        qsizetype start = found;
        while (start > 0 && isBlank(text[start - 1]))
            --start;
        if (start == 0)
            return text.first(0);
        if (text[start - 1] == u'\n')
            return text.first(start - 1);
    }
    return text;
}
