#pragma once

#include "pages/drawing/Spoken.h"

#include <QWidget>

class Look;
class LookButton;

/// The name of an attached file, in one line that is cut in the middle where it is too long.
class AttachmentChip : public QWidget, public Spoken {
    Q_OBJECT

public:
    enum class Use {
        shown,     ///< it goes with a message
        removable, ///< it waits to be sent, and has a button that takes it away
    };

    /// `look` must outlive this object.
    AttachmentChip(const Look &look, const QString &name, Use use, QWidget *parent = nullptr);

    const QString &name() const { return m_name; }

    /// The button that takes the file away; nothing where there is none.
    LookButton *removeButton() const { return m_remove; }

    /// The room that the name takes, as much of it as the maximum width allows.
    QSize sizeHint() const override;

    /// The height of every chip.
    static int lineHeight(const Look &look);

    QAccessible::Role spokenRole() const override { return QAccessible::StaticText; }
    QString spokenName() const override { return m_name; }

Q_SIGNALS:
    void removed();

protected:
    void paintEvent(QPaintEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;
    bool event(QEvent *event) override;

private:
    int textRight() const;
    QString shownName() const;

    const Look &m_look;
    const QString m_name;
    LookButton *m_remove = nullptr;
};
