#pragma once

#include "records/Conversation.h"

#include <QStringList>

#include <optional>
#include <random>

/// The reading of pages by regular expressions and searches from the start, as plainly as can be: what the
/// quick one is compared with.

QStringList plainlyFoundElements(const QString &className, const QString &page);
std::optional<QString> plainlyOuterElement(const QString &tag, qsizetype start, const QString &page);
QString plainlyCleanText(QString html);
QString plainlyReadText(QString html);
QList<SearchSource> plainlyReadResults(const QString &html);

/// Pages put together by chance: of results, whole and broken, and of elements that a reader doesn't see.
QString pageOfResults(std::mt19937 &random);
QString pageOfElements(std::mt19937 &random);
