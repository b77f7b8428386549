#include "screens/MemoryForm.h"

#include "core/AppState.h"
#include "screens/CheckToggle.h"
#include "screens/EditorBox.h"
#include "screens/FlowLayout.h"
#include "screens/FormSection.h"
#include "screens/Style.h"
#include "screens/SwitchRow.h"
#include "screens/TextEditor.h"
#include "screens/TextView.h"
#include "screens/WordButton.h"

#include <QScopedValueRollback>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

MemoryForm::MemoryForm(AppState &app, const Look &look, QWidget *parent)
    : SettingsForm(parent),
      m_app(app),
      m_editor(new TextEditor(look, TextStyle::callout, u"Memory"_s)) {
    setSections({makeSection(look)});
    connect(m_editor, &QTextEdit::textChanged, this, &MemoryForm::keep);
    connect(m_editor, &TextEditor::left, &app, &AppState::flushMemory);
    connect(&app, &AppState::memoryChanged, this, &MemoryForm::followMemory);
    connect(&app, &AppState::settingsChanged, this, &MemoryForm::follow);
    followMemory();
    follow();
    // What the file held already is nothing to be undone.
    forgetChanges();
}

void MemoryForm::forgetChanges() {
    m_editor->document()->clearUndoRedoStacks();
}

FormSection *MemoryForm::makeSection(const Look &look) {
    auto *section = new FormSection(look, u"Memory"_s);
    auto *remembers = new SwitchRow(look, u"Remember things"_s);
    m_toggle = remembers->toggle();
    connect(m_toggle, &CheckToggle::turned, this,
            [this](bool isOn) { m_app.changeSetting(&Settings::memoryEnabled, isOn); });
    section->addControl(remembers);

    m_content = section->addControl(makeContent(look));
    return section;
}

QWidget *MemoryForm::makeContent(const Look &look) {
    auto *text = new TextView(look, {.text = TextStyle::callout});
    text->setText(u"Ostrelin adds this to every chat. Edit it here or ask Ostrelin to update it."_s);
    auto *box = new EditorBox(look, m_editor);
    box->setFixedHeight(style::memoryEditorHeight);
    auto *reveal = new WordButton(look, u"Reveal in Finder"_s);
    auto *clear = new WordButton(look, u"Clear"_s, WordButton::Tone::destructive);
    connect(reveal, &WordButton::clicked, &m_app, &AppState::revealMemory);
    connect(clear, &WordButton::clicked, this, [this] { m_app.saveMemory({}); });
    auto *buttons = new FlowLayout(style::rowSpacing);
    buttons->addWidget(reveal);
    buttons->addWidget(clear);

    auto *content = new QWidget;
    auto *column = new QVBoxLayout(content);
    column->setContentsMargins({});
    column->setSpacing(style::space);
    column->addWidget(text);
    column->addWidget(box);
    column->addLayout(buttons);
    return content;
}

void MemoryForm::follow() {
    const bool isOn = m_app.settings().memoryEnabled;
    m_toggle->setOn(isOn);
    m_content->setVisible(isOn);
}

void MemoryForm::followMemory() {
    const QScopedValueRollback following(m_isFollowing, true);
    m_editor->changeWrittenText(m_app.memory());
}

void MemoryForm::keep() {
    if (!m_isFollowing)
        m_app.typeMemory(m_editor->writtenText());
}
