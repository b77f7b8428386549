#include "web/Attribute.h"

#include "web/MarkupScan.h"

std::optional<Attribute> findAttribute(QStringView page, QStringView name, qsizetype from) {
    for (qsizetype sign = page.indexOf(u'=', from); sign >= 0; sign = page.indexOf(u'=', sign + 1)) {
        qsizetype nameEnd = sign;
        while (nameEnd > from && page[nameEnd - 1].isSpace())
            --nameEnd;
        if (!page.sliced(from, nameEnd - from).endsWith(name))
            continue;
        qsizetype value = sign + 1;
        while (value < page.size() && page[value].isSpace())
            ++value;
        return Attribute{nameEnd - name.size(), value};
    }
    return std::nullopt;
}
