#pragma once

class MarkdownWidget;

/// What assistive technology finds in a MarkdownWidget: a text, and in it a tree of the blocks with their
/// items, rows, cells, links and buttons. It is made as far as somebody looks at it. Main thread.
namespace markdownAccessible {

/// Makes the widgets known to the toolkit. Further calls do nothing.
void install();

/// The keyboard came to another link or button of the widget.
void tellFocus(MarkdownWidget *widget);

} // namespace markdownAccessible
