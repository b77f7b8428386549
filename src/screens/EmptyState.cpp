#include "screens/EmptyState.h"

#include "screens/ChatScreenModel.h"
#include "screens/Label.h"
#include "screens/Look.h"
#include "screens/Style.h"
#include "screens/SuggestionButton.h"

#include <QGridLayout>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {
constexpr int columns = 2;
}

EmptyState::EmptyState(const Look &look, QWidget *parent)
    : QScrollArea(parent),
      m_hint(new Label(look, TextStyle::body, Label::Ink::secondary, Label::Fit::wrapped)) {
    setFrameShape(QFrame::NoFrame);
    setFocusPolicy(Qt::NoFocus);
    setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    setWidgetResizable(true);
    auto *heading = new Label(look, TextStyle::heading, Label::Ink::main, Label::Fit::wrapped);
    heading->setText(u"What can I help you with?"_s);
    heading->setAlignment(Qt::AlignCenter);
    m_hint->setAlignment(Qt::AlignCenter);
    m_hint->setContentsMargins(0, style::spaceSmall, 0, 0);

    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins(style::columnMargin, style::spaceLarge, style::columnMargin,
                               style::spaceLarge);
    column->setSpacing(0);
    column->addStretch();
    column->addWidget(heading);
    column->addWidget(m_hint);
    column->addSpacing(style::spaceLarge);
    column->addWidget(makeSuggestions(look), 0, Qt::AlignHCenter);
    column->addStretch();
    setWidget(content);
    viewport()->setAutoFillBackground(false);
    content->setAutoFillBackground(false);
    setHint({});
}

void EmptyState::setHint(const QString &hint) {
    m_hint->setText(hint);
    m_hint->setVisible(!hint.isEmpty());
}

QWidget *EmptyState::makeSuggestions(const Look &look) {
    auto *cards = new QWidget;
    auto *grid = new QGridLayout(cards);
    grid->setContentsMargins(0, 0, 0, 0);
    grid->setSpacing(style::suggestionGap);
    int place = 0;
    for (const QString &text : suggestions()) {
        auto *card = new SuggestionButton(look, text);
        grid->addWidget(card, place / columns, place % columns);
        connect(card, &SuggestionButton::clicked, this, [this, text] { Q_EMIT suggested(text); });
        ++place;
    }
    return cards;
}
