#pragma once

#include "screens/TextView.h"

#include <QScrollArea>

/// Text that takes the height it needs up to a limit, and scrolls beyond that.
class TextBox : public QScrollArea {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    TextBox(const Look &look, const TextView::Style &style, int maximumHeight, QWidget *parent = nullptr);

    void setText(const QString &text);
    TextView *textView() const { return m_text; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override { return {0, 0}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;

private:
    const int m_maximumHeight;
    TextView *m_text;
};
