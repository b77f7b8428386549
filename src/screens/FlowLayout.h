#pragma once

#include <QLayout>

#include <memory>
#include <vector>

/// Lays widgets of their own size beside each other, and on a further line where a line is full.
class FlowLayout : public QLayout {
    Q_OBJECT

public:
    /// `spacing` stands between widgets and between lines.
    explicit FlowLayout(int spacing);
    ~FlowLayout() override;

    void addItem(QLayoutItem *item) override;
    int count() const override { return int(m_items.size()); }
    QLayoutItem *itemAt(int index) const override;
    QLayoutItem *takeAt(int index) override;

    QSize sizeHint() const override;
    QSize minimumSize() const override;
    Qt::Orientations expandingDirections() const override { return {}; }
    bool hasHeightForWidth() const override { return true; }
    int heightForWidth(int width) const override;
    void setGeometry(const QRect &area) override;

private:
    enum class Move { tellHeight, place };
    int lay(const QRect &area, Move move) const;

    std::vector<std::unique_ptr<QLayoutItem>> m_items;
};
