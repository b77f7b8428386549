#pragma once

#include "platform/Task.h"
#include "web/URLSafety.h"

#include <QSet>
#include <QString>

/// What the model gets of a page with that body: the beginning of its text, or the sentence that tells that
/// there is none. Takes time that grows with the body alone, whatever is in it. Any thread.
QString textOfPage(const QByteArray &body);

#ifndef Q_MOC_RUN
/// Opens a page for the model and gives the beginning of its text, 6,000 characters as a reader counts them
/// and 24,000 code units at most; or else the sentence that tells the model why there is none. `allowed` are
/// the addresses that may be opened, in the form of normalizeFetchURL(). Of the page 2,000,000 bytes are
/// read; they are text in UTF-8, or else in Latin 1, which every byte is. The server may be silent for 10
/// seconds.
///
/// Throws Cancelled once `stop` is requested. Main thread.
Task<QString> fetchPage(QString url, QSet<QString> allowed, std::stop_token stop);

/// The same with another way to find the addresses of names, for the check before the request.
Task<QString> fetchPage(QString url, QSet<QString> allowed, urlSafety::Resolver resolver,
                        std::stop_token stop);
#endif
