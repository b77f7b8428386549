#include "web/ReadableText.h"

#include "web/Elements.h"
#include "web/MarkupScan.h"

#include <array>

using namespace Qt::StringLiterals;

namespace {

struct Entity {
    QStringView name;
    QChar character;
};

constexpr std::array<Entity, 6> entities{{{u"&amp;", u'&'},
                                          {u"&lt;", u'<'},
                                          {u"&gt;", u'>'},
                                          {u"&quot;", u'"'},
                                          {u"&#39;", u'\''},
                                          {u"&nbsp;", u' '}}};

/// The entity at the beginning of `text`; null if there is none.
const Entity *entityAt(QStringView text) {
    for (const Entity &entity : entities) {
        if (text.startsWith(entity.name))
            return &entity;
    }
    return nullptr;
}

/// A text in which white space is collapsed as it grows.
class Line {
public:
    explicit Line(qsizetype most) { m_text.reserve(most); }

    void append(QChar character) {
        if (character.isSpace()) {
            m_isApart = true;
            return;
        }
        if (m_isApart && !m_text.isEmpty())
            m_text += u' ';
        m_isApart = false;
        m_text += character;
    }

    QString text() && { return std::move(m_text); }

private:
    QString m_text;
    bool m_isApart = false;
};

/// Where the first tag of that name begins from `from` on; -1 if there is none. `page` is in lower case.
qsizetype tagNamed(const QString &name, const QString &page, qsizetype from) {
    const QString opening = u'<' + name;
    qsizetype start = page.indexOf(opening, from);
    while (start >= 0 && !isWordBorder(page, start + opening.size()))
        start = page.indexOf(opening, start + 1);
    return start;
}

QString withoutElements(const QString &name, const QString &html) {
    const QString page = foldedCase(html);
    const QString closing = u"</"_s + name + u'>';
    QString kept;
    qsizetype done = 0;
    for (qsizetype start = tagNamed(name, page, 0); start >= 0; start = tagNamed(name, page, done)) {
        const qsizetype tagEnd = page.indexOf(u'>', start);
        const qsizetype end = tagEnd < 0 ? -1 : page.indexOf(closing, tagEnd);
        if (end < 0)
            break;
        kept += QStringView(html).sliced(done, start - done);
        kept += u' ';
        done = end + closing.size();
    }
    return done == 0 ? html : kept += QStringView(html).sliced(done);
}

QStringView bodyOf(QStringView html) {
    const QString page = foldedCase(html);
    const qsizetype start = tagNamed(u"body"_s, page, 0);
    if (start < 0 || page.indexOf(u'>', start) < 0)
        return html;
    return outerElement(u"body", start, html).value_or(html);
}

} // namespace

QString replaceEntities(QStringView text) {
    QString result;
    result.reserve(text.size());
    for (qsizetype done = 0; done < text.size();) {
        const qsizetype next = text.indexOf(u'&', done);
        const qsizetype end = next < 0 ? text.size() : next;
        result += text.sliced(done, end - done);
        done = end;
        if (const Entity *entity = entityAt(text.sliced(done))) {
            result += entity->character;
            done += entity->name.size();
        } else if (done < text.size()) {
            result += text[done++];
        }
    }
    return result;
}

QString cleanText(QStringView html) {
    Line line(html.size());
    NextPlace tagEnds(html, u'>');
    for (qsizetype place = 0; place < html.size();) {
        QChar shown = html[place];
        qsizetype length = 1;
        if (shown == u'<') {
            const qsizetype tagEnd = tagEnds.from(place + 1);
            if (tagEnd > place + 1 && tagEnd < html.size()) {
                shown = u' ';
                length = tagEnd + 1 - place;
            }
        } else if (shown == u'&') {
            if (const Entity *entity = entityAt(html.sliced(place))) {
                shown = entity->character;
                length = entity->name.size();
            }
        }
        line.append(shown);
        place += length;
    }
    return std::move(line).text();
}

QString plainText(const QString &html) {
    QString shown = html;
    for (const QString &name : {u"script"_s, u"style"_s, u"nav"_s, u"footer"_s, u"noscript"_s})
        shown = withoutElements(name, shown);
    return cleanText(bodyOf(shown));
}
