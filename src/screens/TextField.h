#pragma once

#include <QLineEdit>

class Look;

/// A line of text to be written.
class TextField : public QLineEdit {
    Q_OBJECT

public:
    /// `name` is what the field is called aloud. `look` must outlive this object.
    TextField(const Look &look, const QString &name, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    void takeLook();

    const Look &m_look;
};
