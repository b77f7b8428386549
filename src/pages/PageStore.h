#pragma once

#include "pages/PageDocument.h"

#include <QList>

#include <optional>

/// Saved pages on disk: a JSON file each in a folder of their own, and no index; the folder is the truth.
/// No call reports a failure. Each file is replaced atomically, so that a reader always sees a whole one.
/// Main thread only.

/// The most that a page's file may hold, in bytes. Anything longer was put there by something else.
inline constexpr qint64 longestPageFile = 64'000'000;

/// All saved pages, newest first; of equal dates in the order of the folder. What is in the folder and is
/// no page is passed over and stays.
QList<PageSummary> listPages();

/// The page of that id; nothing if its file is missing or damaged.
std::optional<PageDocument> loadPage(const QUuid &id);

/// Writes the page's file, in the place of one that has its id. `updatedAt` is the caller's.
void savePage(const PageDocument &document);

/// Removes the file of the page of that id.
void deletePage(const QUuid &id);
