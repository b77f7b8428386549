#pragma once

#include <QString>
#include <QStringView>

/// The text that a person reads in a page. The functions take time that grows with the page alone, whatever
/// is in it. Any thread.

/// `text` with &amp; &lt; &gt; &quot; &#39; and &nbsp;, in this very case, as the characters that they stand
/// for, the last one as a space. What comes of &amp; isn't read again: "&amp;lt;" gives "&lt;".
QString replaceEntities(QStringView text);

/// `html` without its tags, with those entities replaced, in one line: each tag and each run of white space
/// is one space, and there is none at the ends. A "<" that no ">" follows, or at once, stays.
QString cleanText(QStringView html);

/// The same of what a page shows: of its body, if that is closed, else of all of it, and of no script, style,
/// nav, footer or noscript, of which each ends at the first tag that closes one of its kind.
QString plainText(const QString &html);
