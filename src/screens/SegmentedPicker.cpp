#include "screens/SegmentedPicker.h"

#include "screens/Look.h"
#include "screens/SegmentButton.h"
#include "screens/Style.h"

#include <QHBoxLayout>
#include <QPainter>

#include <algorithm>

SegmentedPicker::SegmentedPicker(const Look &look, const QString &name, const QStringList &words,
                                 QWidget *parent)
    : QWidget(parent),
      m_look(look),
      m_name(name) {
    Spoken::install();
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    auto *row = new QHBoxLayout(this);
    constexpr int inset = style::segmentInset;
    row->setContentsMargins(inset, inset, inset, inset);
    row->setSpacing(inset);
    for (const QString &word : words) {
        auto *segment = new SegmentButton(look, word, this);
        const int index = int(m_segments.size());
        row->addWidget(segment);
        m_segments.append(segment);
        connect(segment, &SegmentButton::chosen, this, [this, index] { Q_EMIT picked(index); });
    }
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

int SegmentedPicker::current() const {
    const auto chosen = std::find_if(m_segments.begin(), m_segments.end(),
                                     [](const SegmentButton *segment) { return segment->isChecked(); });
    return chosen == m_segments.end() ? -1 : int(chosen - m_segments.begin());
}

void SegmentedPicker::setCurrent(int index) {
    m_segments.at(index)->setChosen();
}

void SegmentedPicker::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_look.palette().quietFill());
    painter.drawRoundedRect(rect(), style::radiusButton, style::radiusButton);
}
