#pragma once

#include "pages/drawing/BlockView.h"

/// A paragraph, a heading or a subtitle: one text as wide as the view.
class ProseView : public BlockView {
public:
    /// For blocks of the kind of this one; for headings of its level.
    ProseView(const DrawingTheme &theme, const BlockContent &like);

    SpokenPart spoken() const override;

protected:
    double take(const BlockContent &content) override;
    double arrange(double width) override { return m_text.layIn(width); }
    void listTexts(TextParts &texts) const override { texts.push_back(&m_text); }

private:
    const QAccessible::Role m_role;
    TextPart m_text;
};
