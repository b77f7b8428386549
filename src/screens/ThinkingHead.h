#pragma once

#include "screens/BorderlessButton.h"
#include "screens/Glide.h"
#include "screens/ThinkingStage.h"

/// The word over what a model thought, with a chevron: to the right while that is hidden, down to the five
/// lines of it, and up to them again when all of it is shown.
class ThinkingHead : public BorderlessButton {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit ThinkingHead(const Look &look, QWidget *parent = nullptr);

    void setStage(ThinkingStage stage);

    QSize sizeHint() const override;
    Fold spokenFold() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    ThinkingStage m_stage = ThinkingStage::box;
    Glide m_angle;
};
