#pragma once

#include "pages/PageDocument.h"

#include <QWidget>

#include <optional>

class Look;
class PageSheet;
class QStackedLayout;

/// A page, and below it the buttons that save it as a file of another program's; a sentence while there is no
/// page.
class PageView : public QWidget {
    Q_OBJECT

public:
    /// How wide the paper is, in device-independent pixels.
    struct Widths {
        int shown = 0;
        int exported = 0; ///< in a file, where a pixel is a point
    };

    /// `look` must outlive this object.
    PageView(const Look &look, const Widths &widths, const QString &emptySentence, QWidget *parent = nullptr);

    void setDocument(const std::optional<PageDocument> &document);
    const std::optional<PageDocument> &document() const { return m_document; }

    PageSheet *sheet() const { return m_sheet; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QWidget *makeFooter();

    const Look &m_look;
    const Widths m_widths;
    std::optional<PageDocument> m_document;
    PageSheet *m_sheet;
    QWidget *m_footer;
    QStackedLayout *m_stack;
};
