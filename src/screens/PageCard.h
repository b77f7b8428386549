#pragma once

#include "records/Conversation.h"
#include "screens/RowPart.h"

class Look;
class PageCardButton;

/// The page of a reply in small, with its title: a press opens it.
class PageCard : public RowPart {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    PageCard(const Look &look, const PageSnapshot &page, QWidget *parent = nullptr);

    int layIn(int width) override;
    QList<QWidget *> stops() const override;

    /// What layIn() gives.
    static int estimatedHeight(const Look &look);

Q_SIGNALS:
    void opened(const PageSnapshot &page);

private:
    const Look &m_look;
    PageCardButton *m_button;
};
