#pragma once

#include <QWidget>

class Look;
class TextEditor;

/// The box around a field of several lines, with a ring while one writes in it.
class EditorBox : public QWidget {
    Q_OBJECT

public:
    /// Takes `editor`. `look` must outlive this object.
    EditorBox(const Look &look, TextEditor *editor, QWidget *parent = nullptr);

protected:
    void paintEvent(QPaintEvent *event) override;
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    const Look &m_look;
    TextEditor *m_editor;
};
