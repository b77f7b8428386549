#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/Icon.h"
#include "screens/RowPart.h"

class CardButton;
class Look;
class TextView;

/// Asks the person for something that the model wants: what it is, and what can be answered.
class ConsentCard : public RowPart, public Spoken {
    Q_OBJECT

public:
    struct Content {
        Icon symbol = Icon::information;
        QString question; ///< to be heard before the texts, where they don't ask themselves
        QString text;     ///< may be empty
        QString detail;   ///< below the text; empty for none
        QStringList answers;
    };

    /// `look` must outlive this object.
    ConsentCard(const Look &look, const Content &content, QWidget *parent = nullptr);

    int layIn(int width) override;
    QList<QWidget *> stops() const override;

    QAccessible::Role spokenRole() const override { return QAccessible::Notification; }
    QString spokenName() const override;

    /// A guess of what layIn() gives.
    static int estimatedHeight(const Look &look);

Q_SIGNALS:
    /// The answer at that place was chosen.
    void answered(int answer);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    TextView *addText(const QString &text);
    int layButtons(int left, int top, int width);

    const Look &m_look;
    const Icon m_symbol;
    const QString m_question;
    QList<TextView *> m_texts;
    QList<CardButton *> m_buttons;
};
