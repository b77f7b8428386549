#pragma once

#include "records/Conversation.h"
#include "screens/Glide.h"
#include "screens/RowPart.h"

class LineButton;
class Look;
class SearchHead;

/// A search that a reply made, with what it found below it after a press. A search that was turned down says
/// so.
class SearchChip : public RowPart {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    SearchChip(const Look &look, const SearchEvent &event, QWidget *parent = nullptr);

    int layIn(int width) override;
    QList<QWidget *> stops() const override;

    bool isExpanded() const { return m_isExpanded; }

    /// A guess of what layIn() gives before anybody has pressed anything.
    static int estimatedHeight(const Look &look);

private:
    void addSource(const SearchSource &source, qsizetype place);
    void setExpanded(bool isExpanded);

    const Look &m_look;
    SearchHead *m_head;
    QWidget *m_body; ///< cuts the sources off while they fold
    QList<LineButton *> m_sources;
    Glide m_fold;
    bool m_isExpanded = false;
};
