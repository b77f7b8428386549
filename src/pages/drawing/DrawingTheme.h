#pragma once

#include <QColor>
#include <QFont>
#include <QString>

/// The steps of type that the figures are set in.
enum class TextStep {
    title2,            ///< the large headings
    title3,            ///< a subtitle
    headline,          ///< the small headings, the titles of cards
    body,              ///< paragraphs
    quote,             ///< italic and with serifs
    callout,           ///< labels and cells
    monospacedCallout, ///< the numbers beside them
    caption,           ///< small capitals of figures: monospaced, of one size everywhere
    caption2,          ///< below a plot
    value,             ///< of a metric
    code,
    button,
    arrow,
    pageTitle, ///< at the head of a page, with serifs
};

/// What a drawing takes from its surroundings: the chat gives its theme, a page on paper is always light.
/// A plain value.
struct DrawingTheme {
    QColor primary;
    QColor secondary;
    QColor link;
    QColor selection; ///< behind selected text

    QString family;      ///< of everything that has no other; that of sansFamily() if it is empty
    int bodySize = 15;   ///< in device-independent pixels
    int lineSpacing = 5; ///< between two lines of running text, added to their height
    /// Whether letters may give way to the pixels of a screen.
    QFont::HintingPreference hinting = QFont::PreferDefaultHinting;
    bool showsButtons = true; ///< they can be pressed where this is drawn

    /// `tracking` comes between two letters, in pixels. Needs a QGuiApplication.
    QFont font(TextStep step, double tracking = 0) const;

    /// The primary colour at that opacity.
    QColor shade(double opacity) const;
    /// Behind code that stands among words.
    QColor codeGround() const;
    /// The colour that a block names, or `otherwise` if that is none.
    QColor tint(QStringView name, const QColor &otherwise) const;

    bool operator==(const DrawingTheme &) const = default;

private:
    const QString &familyOf(TextStep step) const;
};

/// Dark text on white, whatever the windows look like, and laid alike in every size.
DrawingTheme paperTheme();
