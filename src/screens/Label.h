#pragma once

#include "screens/TextPreferences.h"

#include <QLabel>

class Look;

/// A line or a paragraph of the window's own text, in a step of the type scale.
class Label : public QLabel {
    Q_OBJECT

public:
    enum class Ink { main, secondary };
    enum class Fit {
        natural, ///< as wide as the text
        wrapped, ///< over several lines where it must
        elided,  ///< one line, shortened at its end where it must; a tool tip shows all of it then
    };

    /// `look` must outlive this object.
    Label(const Look &look, TextStyle style, Ink ink = Ink::main, Fit fit = Fit::natural,
          QWidget *parent = nullptr);

    QSize minimumSizeHint() const override;
    int heightForWidth(int width) const override;

protected:
    void paintEvent(QPaintEvent *event) override;
    bool event(QEvent *event) override;

private:
    void takeLook();
    /// What there is room for.
    QString shownText() const;

    const Look &m_look;
    const TextStyle m_style;
    const Ink m_ink;
    const Fit m_fit;
};
