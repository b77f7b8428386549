#pragma once

#include "platform/Http.h"

/// The requests of this room, such as a browser would make: redirects are followed, and the body may come
/// compressed.

/// Posts a query to the search page at that address, as its form would. The page is read whatever its status,
/// up to 2,000,000 bytes; the server may be silent for 15 seconds.
HttpRequest searchRequest(const QString &query, const QUrl &address);

/// Asks for a page, of which the first 2,000,000 bytes are read; the server may be silent for 10 seconds.
HttpRequest pageRequest(const QUrl &url);
