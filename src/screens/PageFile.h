#pragma once

#include "pages/PageDocument.h"

class QWidget;

/// The kinds of files that a page can be saved as.
enum class PageFileKind { pdf, png };

/// What such a file is called unless the person calls it something else: by the title, in which "/" and ":"
/// become "-", and the quotation marks in which a dialog takes names become "'"; it ends where a file system
/// takes no longer name.
QString pageFileName(const QString &title, PageFileKind kind);

/// Draws the page on paper of that width, and asks the person where to put it, in a dialog over the window
/// `parent`; returns at once. The file is written straight to its place. A failure isn't reported.
void savePageAs(QWidget *parent, const PageDocument &document, PageFileKind kind, int width);
