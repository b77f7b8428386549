#pragma once

#include "pages/drawing/Spoken.h"

#include <QWidget>

/// What the rows of a list stand on, which a screen reader takes for the list.
class RowArea : public QWidget, public Spoken {
public:
    explicit RowArea(const QString &name) : m_name(name) { Spoken::install(); }

    QAccessible::Role spokenRole() const override { return QAccessible::List; }
    QString spokenName() const override { return m_name; }

private:
    const QString m_name;
};
