#pragma once

#include <QList>
#include <QString>
#include <QStringView>

#include <optional>

/// Finds elements in the text of a page, well formed or not. Both functions take time that grows with the
/// page alone, however its tags are nested. Any thread; the views hold as long as the page does.

/// The whole text, tags included, of each element of the page that has a class of that name, which stands
/// there as a word of its own in any case of letters; in the order of their beginnings. Elements within one
/// another each count. An element that isn't closed is left out.
QList<QStringView> elementsWithClass(QStringView className, QStringView page);

/// The text from `start`, where an element begins, up to the end of that element: where as many "</tag>"
/// have come as "<tag", of any case of letters. What has a longer name that begins so opens one, too.
/// Nothing if the element has no end.
std::optional<QStringView> outerElement(QStringView tag, qsizetype start, QStringView page);
