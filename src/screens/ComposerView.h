#pragma once

#include <QWidget>

class ComposerTextView;
class Look;
class RoundButton;

/// The box at the bottom of the chat: the field, and the button that sends or stops. It grows with what
/// is written, up to a share of the window, and then scrolls. What a send means, the screen decides.
class ComposerView : public QWidget {
    Q_OBJECT

public:
    enum class Action { send, stop };

    /// `look` must outlive this object.
    explicit ComposerView(const Look &look, QWidget *parent = nullptr);

    /// Shows this text; the cursor doesn't move if it is there already.
    void setText(const QString &text);

    /// Which of its two actions the button offers.
    void setAction(Action action);

    /// The most height that the field may take.
    void setMaximumTextHeight(int height);

    void focusText();

Q_SIGNALS:
    void textChanged(const QString &text);
    void sendRequested();
    void stopRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void fitText();

    const Look &m_look;
    ComposerTextView *m_text;
    RoundButton *m_send;
    RoundButton *m_stop;
    int m_maximumTextHeight = 0;
};
