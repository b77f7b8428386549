#include "screens/SettingsView.h"

#include "core/AppState.h"
#include "screens/AboutForm.h"
#include "screens/AppearanceForm.h"
#include "screens/DataForm.h"
#include "screens/Look.h"
#include "screens/MemoryForm.h"
#include "screens/ModelForm.h"
#include "screens/PaneList.h"
#include "screens/SchedulesForm.h"
#include "screens/SearchForm.h"
#include "screens/Sheet.h"
#include "screens/Style.h"

#include <QHBoxLayout>
#include <QPainter>
#include <QStackedLayout>

using namespace Qt::StringLiterals;

SettingsView::SettingsView(AppState &app, const Look &look, QWidget *parent)
    : QWidget(parent),
      m_app(app),
      m_look(look),
      m_list(new PaneList(look, this)),
      m_panes(new QStackedLayout),
      m_memoryForm(new MemoryForm(app, look, this)),
      m_confirmErase(makeConfirmation()) {
    setFixedSize(style::settingsWidth, style::settingsHeight);
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    auto *left = new QVBoxLayout;
    constexpr int margin = style::spaceSmall;
    left->setContentsMargins(margin, style::space, margin + style::hairline, style::space);
    left->addWidget(m_list);
    m_list->setFixedWidth(style::paneListWidth - 2 * margin - style::hairline);
    row->addLayout(left);
    row->addLayout(m_panes, 1);
    addPanes();
    connect(m_list, &PaneList::paneChanged, this,
            [this](SettingsPane pane) { m_panes->setCurrentIndex(int(pane)); });
    m_list->setPane(SettingsPane::appearance);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void SettingsView::addPanes() {
    auto *dataForm = new DataForm(m_look, this);
    connect(dataForm, &DataForm::eraseRequested, this, [this] { m_confirmErase->setShown(true); });
    auto *schedulesForm = new SchedulesForm(m_look, this);
    connect(schedulesForm, &SchedulesForm::schedulesRequested, this, &SettingsView::schedulesRequested);
    // In the order of SettingsPane.
    m_panes->addWidget(new AppearanceForm(m_app, m_look, this));
    m_panes->addWidget(m_memoryForm);
    m_panes->addWidget(new SearchForm(m_app, m_look, this));
    m_panes->addWidget(schedulesForm);
    m_panes->addWidget(new ModelForm(m_app, m_look, this));
    m_panes->addWidget(dataForm);
    m_panes->addWidget(new AboutForm(m_app, m_look, this));
}

Sheet *SettingsView::makeConfirmation() {
    const QString question = u"Delete everything?"_s;
    auto *sheet = new Sheet(m_look, question, this);
    sheet->addHeading(question);
    sheet->addParagraph(u"Your chats, pages, memory, scheduled runs, settings and downloaded models will be "
                        "removed from this Mac. This can't be undone."_s);
    const auto close = [sheet] { sheet->setShown(false); };
    connect(sheet->addButton(u"Cancel"_s), &WordButton::clicked, sheet, close);
    connect(sheet, &Sheet::escaped, sheet, close);
    WordButton *erase = sheet->addButton(u"Delete everything"_s, WordButton::Tone::destructive);
    connect(erase, &WordButton::clicked, sheet, [this, close] {
        close();
        m_app.deleteEverything();
        m_memoryForm->forgetChanges();
    });
    return sheet;
}

void SettingsView::paintEvent(QPaintEvent *) {
    QPainter painter(this);
    const Palette &palette = m_look.palette();
    painter.fillRect(0, 0, style::paneListWidth, height(), palette.sidebar);
    painter.fillRect(style::paneListWidth - style::hairline, 0, style::hairline, height(), palette.hairline);
}
