#pragma once

#include "pages/PageDocument.h"

#include <QWidget>

#include <optional>

class Look;
class PageView;

/// The panel beside a chat with the page that the model has just made. Return saves it while the keyboard is
/// in the panel, and Ctrl+S while it is anywhere in the window.
class PagePanel : public QWidget {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit PagePanel(const Look &look, QWidget *parent = nullptr);

    /// Shows that page; without one, a sentence that says so.
    void setDocument(const std::optional<PageDocument> &document);

Q_SIGNALS:
    /// The person wants the page to go, or to be kept.
    void closeRequested();
    void saveRequested();

protected:
    void paintEvent(QPaintEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QWidget *makeHeader();

    const Look &m_look;
    QWidget *m_header;
    PageView *m_page;
};
