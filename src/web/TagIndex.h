#pragma once

#include <QList>
#include <QStringView>

/// A tag by the first letters and digits of its name.
struct Tag {
    enum class Kind { opening, closing };

    qsizetype start;
    QStringView name;
    Kind kind;
};

/// The letters and digits of `page`, which is in lower case, from `from` on.
QStringView tagName(QStringView page, qsizetype from);

/// All tags of a page, so ordered that those of one name are found without going through the page again:
/// whoever asks once for each name that a page has, gets no more tags than the page has characters. The
/// page, which is in lower case, has to stay. Any thread.
class TagIndex {
public:
    explicit TagIndex(QStringView page);

    /// In the page's order: every "<name", also where the name goes on, and every "</name>".
    QList<Tag> tagsOf(QStringView name) const;

private:
    QList<Tag> m_openings; ///< in the order of their names
    QList<Tag> m_closings; ///< the same
};
