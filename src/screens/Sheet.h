#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/Glide.h"
#include "screens/WordButton.h"

#include <QPointer>
#include <QWidget>

class QHBoxLayout;
class QVBoxLayout;

/// A small page over a window: a heading, paragraphs, fields, and buttons. What lies behind is dimmed, and
/// neither mouse nor Tab gets there. While it stands, the first field or else the first button has the
/// focus; afterwards, whoever had it before.
class Sheet : public QWidget, public Spoken {
    Q_OBJECT

public:
    /// Covers all of `parent`. `name` is what the sheet is called aloud. `look` must outlive this object.
    Sheet(const Look &look, const QString &name, QWidget *parent);

    void addHeading(const QString &text);
    void addParagraph(const QString &text);

    /// Adds a field under its name, and takes it.
    void addField(const QString &name, QWidget *field);

    /// Adds fields that scroll where the window is too low for them, and takes them. `first` is the one of
    /// them that has the focus first.
    void addBody(QWidget *fields, QWidget *first);

    /// How wide the page is.
    void setPageWidth(int width);

    /// Adds a button after those that are there; the sheet closes by the owner's word alone.
    WordButton *addButton(const QString &word, WordButton::Tone tone = WordButton::Tone::quiet);

    /// Adds one at the other end of the row.
    WordButton *addLeadingButton(const QString &word, WordButton::Tone tone);

    /// Shows the sheet, or takes it away.
    void setShown(bool isShown);
    bool isShown() const { return m_isShown; }

    /// The page itself, in this widget's coordinates.
    QRect page() const;

    QAccessible::Role spokenRole() const override { return QAccessible::Dialog; }
    QString spokenName() const override { return m_name; }
    bool isSpokenModal() const override { return true; }

Q_SIGNALS:
    /// The person wants the sheet to go, and pressed Escape.
    void escaped();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void wheelEvent(QWheelEvent *event) override;
    bool focusNextPrevChild(bool next) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void takeFirst(QWidget *control);
    void appear();
    void disappear();
    void cover();

    const Look &m_look;
    const QString m_name;
    QWidget *m_page;
    QVBoxLayout *m_texts;
    QHBoxLayout *m_buttons;
    QPointer<QWidget> m_first; ///< who gets the focus
    QPointer<QWidget> m_focusBefore;
    Glide m_veil;
    bool m_isShown = false;
};
