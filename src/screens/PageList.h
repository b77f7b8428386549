#pragma once

#include "pages/PageDocument.h"
#include "pages/drawing/Focus.h"

#include <QListWidget>

class Look;

/// The list of saved pages, one of which may be chosen. The arrow keys choose, and the Delete key deletes the
/// chosen one; a row's menu comes by mouse, by the menu key and by Shift+F10.
class PageList : public QListWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit PageList(const Look &look, QWidget *parent = nullptr);

    /// Shows these pages in that order. The chosen one stays chosen if it is among them, and otherwise none
    /// is; that isn't told.
    void setPages(const QList<PageSummary> &pages);

    /// True while the focus is here because of a key.
    bool showsFocus() const { return m_keyFocus.isByKey() && hasFocus(); }

Q_SIGNALS:
    /// The person wants to see that page, or to delete it.
    void chosen(const QUuid &id);
    void deleteRequested(const QUuid &id);

protected:
    QItemSelectionModel::SelectionFlags selectionCommand(const QModelIndex &index,
                                                         const QEvent *event) const override;
    void focusInEvent(QFocusEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    class Delegate;

    QListWidgetItem *chosenItem() const;
    void openMenu(const QListWidgetItem *item, const QPoint &place);

    const Look &m_look;
    KeyFocus m_keyFocus;
};
