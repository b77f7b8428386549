#pragma once

#include "pages/drawing/MarkdownView.h"

#include <QDateTime>

#include <optional>

/// A page as paper: its title at the head, its text, and at the foot its date. It is white with dark text
/// whatever the windows look like. Main thread; needs a QGuiApplication.
class PageCanvas : public MarkdownView {
public:
    /// Where the paper lies: in a file nothing can be pressed.
    enum class Medium { file, screen };

    /// `width` is that of the paper, in device-independent pixels; without a date there is no foot.
    PageCanvas(const QString &title, const QString &markdown, int width,
               const std::optional<QDateTime> &date = {}, Medium medium = Medium::file);

    const QString &title() const { return m_title.text(); }
    QSizeF size() const { return {width(), height()}; }

    void draw(QPainter &painter, const QRectF &clip, const TextSelection &selection = {}) const override;

private:
    int layHead(int width);
    int layFoot(int width, const QDateTime &date);

    TextPart m_title;
    std::optional<TextPart> m_date;
};
