#include "pages/PageStore.h"

#include "records/Folders.h"
#include "records/StoredRecords.h"

#include <QFile>

QList<PageSummary> listPages() {
    QList<PageSummary> summaries;
    for (const QString &path : jsonFilesIn(pagesFolder())) {
        if (const auto document = readRecord<PageDocument>(path, longestPageFile))
            summaries.append({document->id, document->title, document->updatedAt});
    }
    return newestFirst(std::move(summaries));
}

std::optional<PageDocument> loadPage(const QUuid &id) {
    return readRecord<PageDocument>(pageFile(id), longestPageFile);
}

void savePage(const PageDocument &document) {
    ensurePagesFolder();
    try {
        writeAtomically(pageFile(document.id), encodeRecord(document));
    } catch (const EncodingError &) {
    } catch (const FileError &) {
    }
}

void deletePage(const QUuid &id) {
    QFile::remove(pageFile(id));
}
