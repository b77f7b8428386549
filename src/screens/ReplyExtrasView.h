#pragma once

#include "screens/ReplyExtras.h"
#include "screens/RowPart.h"

class Look;

/// What belongs to a reply beside its words, one below another: its search, its page, and what it asks. The
/// widget is wider than what it draws by style::rowOutset on both sides.
class ReplyExtrasView : public RowPart {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ReplyExtrasView(const Look &look, QWidget *parent = nullptr);

    /// Shows these; a part that stays the same isn't touched.
    void setExtras(const ReplyExtras &extras);

    int layIn(int width) override;
    QList<QWidget *> stops() const override;

    /// The space that belongs between what stands above and the first part.
    int gapAbove() const;

    /// A guess of what layIn() gives.
    static int estimatedHeight(const Look &look, const ReplyExtras &extras);

Q_SIGNALS:
    void pageOpened(const PageSnapshot &page);
    void pageRetried();
    void searchAnswered(PermissionChoice choice);
    void pageAnswered(bool isAccepted);
    void memoryAnswered(bool isAccepted);

private:
    void showSearch();
    void showPage();
    void showFailedPage();
    void showAsked();
    RowPart *newCard();
    void answer(const PendingSearch &asked, int place);
    void answer(const PendingPageOffer &asked, int place);
    void answer(const PendingMemory &asked, int place);
    void replace(RowPart *&part, RowPart *other);
    QList<RowPart *> parts() const;
    int gapOver(const RowPart *part) const;

    const Look &m_look;
    ReplyExtras m_extras;
    RowPart *m_search = nullptr;
    RowPart *m_page = nullptr;
    RowPart *m_failedPage = nullptr;
    RowPart *m_card = nullptr;
};
