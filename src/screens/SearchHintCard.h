#pragma once

#include <QWidget>

class Look;

/// Offers to let the model search the web.
class SearchHintCard : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit SearchHintCard(const Look &look, QWidget *parent = nullptr);

Q_SIGNALS:
    void enabled();

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    const Look &m_look;
};
