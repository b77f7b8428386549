#pragma once

#include <QWidget>

class Look;
class QVBoxLayout;

/// A section of a form: its heading, and under it a card of rows with hairlines between them.
class FormSection : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    FormSection(const Look &look, const QString &heading, QWidget *parent = nullptr);

    // Each gives the row, which may be hidden.

    /// A row with a name on the left and its control on the right.
    QWidget *addRow(const QString &name, QWidget *control);
    /// A row with a name above its control.
    QWidget *addTallRow(const QString &name, QWidget *control);
    /// A row with a name on the left and a text on the right that can be selected.
    QWidget *addValue(const QString &name, const QString &value);
    /// A row of text.
    QWidget *addText(const QString &text);
    /// A row of buttons, under a heading and a remark where there are such.
    QWidget *addButtons(const QList<QWidget *> &buttons, const QString &heading = {},
                        const QString &remark = {});
    /// A row that is all control.
    QWidget *addControl(QWidget *control);

private:
    QVBoxLayout *addPart();

    const Look &m_look;
    QWidget *m_card;
    QVBoxLayout *m_rows;
};
