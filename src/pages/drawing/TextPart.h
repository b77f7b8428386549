#pragma once

#include "pages/AttributedText.h"
#include "pages/drawing/DrawingTheme.h"
#include "pages/drawing/TextFlow.h"

#include <QUrl>

class QPainter;

/// A text of a figure: how it is set, what it says, and where it stands in the figure. Lengths are in
/// device-independent pixels. Needs a QGuiApplication.
class TextPart {
public:
    enum class Reading { inlineMarkdown, plain };
    enum class Letters { asWritten, capitals };
    enum class Digits { asDesigned, tabular }; ///< tabular in plain text only
    enum class Use { selectable, shown };

    struct Setting {
        TextStep step = TextStep::body;
        QColor color; ///< the theme's primary one if this is none
        double tracking = 0;
        Qt::Alignment alignment = Qt::AlignLeft;
        Reading reading = Reading::inlineMarkdown;
        Letters letters = Letters::asWritten;
        Digits digits = Digits::asDesigned;
        Use use = Use::shown;
    };

    /// A stretch of the text, in UTF-16 units, that leads to an address (see LinkAddress.h).
    struct Link {
        int start = 0;
        int length = 0;
        QUrl address;
    };

    /// `theme` must outlive this object.
    TextPart(const DrawingTheme &theme, const Setting &setting);

    /// Reads the text, and gives the distance from its top at which the drawing changes: its height if
    /// nothing does. A text that grows at its end costs what its last lines cost.
    double setText(QStringView source);
    bool shows(QStringView source) const { return source == m_source; }

    /// Lays the text in that width, and gives its height there, a whole number. Without a change of text
    /// or width it costs nothing.
    double layIn(double width);
    void moveTo(const QPointF &origin) { m_origin = origin; }
    void setColor(const QColor &color) { m_setting.color = color; }

    /// The place in the figure: as wide as the text was laid, as high as it is.
    QRectF area() const { return {m_origin, QSizeF(m_flow.width(), height())}; }
    double height() const;
    /// The width of the widest line, rounded up.
    double usedWidth() const;
    /// The distance from the top to the baseline of the first line.
    double firstBaseline() const { return m_flow.firstBaseline(); }

    /// What is shown, without the marks of the inline Markdown.
    const QString &text() const { return m_flow.text(); }
    bool isRightToLeft() const { return text().isRightToLeft(); }
    bool isSelectable() const { return m_setting.use == Use::selectable; }
    const TextFlow &flow() const { return m_flow; }

    const QList<Link> &links() const { return m_links; }
    /// What a link covers in the figure, line by line.
    QList<QRectF> areasOf(const Link &link) const;
    /// The link at a point of the figure; null if there is none.
    const Link *linkAt(const QPointF &point) const;

    /// Draws what meets `clip`, in the figure's coordinates.
    void draw(QPainter &painter, const QRectF &clip, const TextSelection &selection = {}) const;

private:
    void appendLink(const Link &link);
    TextFlow::Formats formatsOf(const AttributedText &text) const;
    QTextCharFormat formatOf(InlineStyles styles) const;
    void drawCodeGrounds(QPainter &painter, const QRectF &clip) const;

    const DrawingTheme &m_theme;
    Setting m_setting;
    const QFont m_font;
    QString m_source;
    TextFlow m_flow;
    QList<Link> m_links;
    QList<TextSelection> m_codes; ///< the code spans
    QPointF m_origin;
};

/// The small capitals of the figures.
TextPart::Setting captionSetting(const DrawingTheme &theme, double tracking);
