#pragma once

#include "screens/TextEditor.h"

/// The field in which a message is written. Return sends, Shift and Return breaks the line. Page keys are
/// left to what is around while all of the text is in sight. Pasted files are told of, and dropped ones left
/// to what is around.
class ComposerTextView : public TextEditor {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ComposerTextView(const Look &look, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The person wants to send.
    void submitted();
    void filesPasted(const QStringList &paths);

protected:
    void keyPressEvent(QKeyEvent *event) override;
    void dragEnterEvent(QDragEnterEvent *event) override;
    void insertFromMimeData(const QMimeData *source) override;

private:
    bool leavesKey(const QKeyEvent &event) const;
};
