#pragma once

#include "screens/Glide.h"
#include "screens/LineButton.h"

/// The line of a search, with a chevron where there is something to unfold below it.
class SearchHead : public LineButton {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    SearchHead(const Look &look, const QString &line, bool canUnfold, QWidget *parent = nullptr);

    void setExpanded(bool isExpanded);

    Fold spokenFold() const override;

protected:
    int textLeft() const override;
    int textRight() const override;
    void paintEvent(QPaintEvent *event) override;

private:
    const bool m_canUnfold;
    bool m_isExpanded = false;
    Glide m_fold; ///< 0 folded, 1 unfolded
};
