#pragma once

#include "pages/drawing/Spoken.h"
#include "screens/Glide.h"
#include "screens/LookButton.h"

/// What a chip shows. A plain value.
struct ChipModel {
    QString label;
    QString help;        ///< what it means, and what a press does
    double fraction = 0; ///< how much of the chip is filled, 0 to 1
    QString value;       ///< the choice, as a screen reader says it

    bool operator==(const ChipModel &) const = default;
};

/// A pill that leads on through a few choices, from one press to the next. The fill behind its label tells
/// how far it has come.
class Chip : public LookButton, public Spoken {
    Q_OBJECT

public:
    /// `name` is what the chip chooses. It is wide enough for each of `labels`, so that it stays below the
    /// pointer from press to press.
    Chip(const Look &look, const QString &name, const QStringList &labels, QWidget *parent = nullptr);

    void setModel(const ChipModel &model);

    QSize sizeHint() const override;
    /// In a narrow window the label keeps its width, and little around it.
    QSize minimumSizeHint() const override;
    QAccessible::Role spokenRole() const override { return QAccessible::Button; }
    QString spokenName() const override { return accessibleName(); }
    QString spokenValue() const override { return m_value; }

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const QStringList m_labels;
    QString m_value;
    Glide m_fill;
};
