#include "screens/ModelForm.h"

#include "core/AppState.h"
#include "records/Folders.h"
#include "screens/FormSection.h"
#include "screens/WordButton.h"

using namespace Qt::StringLiterals;

ModelForm::ModelForm(AppState &app, const Look &look, QWidget *parent)
    : SettingsForm(parent),
      m_app(app),
      m_look(look) {
    connect(&app, &AppState::settingsChanged, this, &ModelForm::follow);
    connect(&app, &AppState::catalogChanged, this, &ModelForm::follow);
    follow();
}

void ModelForm::follow() {
    const ModelFormModel model = modelFormModel(m_app.settings(), m_app.catalog(), modelsFolder());
    if (m_model == model)
        return;
    m_model = model;
    QList<FormSection *> sections{makeStorage()};
    if (model.installed)
        sections.append(makeModel());
    setSections(sections);
}

FormSection *ModelForm::makeStorage() {
    auto *storage = new FormSection(m_look, u"Storage"_s);
    const auto &installed = m_model->installed;
    if (!installed) {
        storage->addText(u"No model downloaded yet."_s);
        return storage;
    }
    storage->addValue(u"Model"_s, installed->name);
    storage->addValue(u"Size"_s, installed->size);
    storage->addValue(u"Location"_s, installed->location);
    auto *reveal = new WordButton(m_look, u"Reveal in Finder"_s);
    auto *remove = new WordButton(m_look, u"Delete model"_s, WordButton::Tone::destructive);
    connect(reveal, &WordButton::clicked, &m_app, &AppState::revealModel);
    connect(remove, &WordButton::clicked, &m_app, &AppState::deleteModel);
    storage->addButtons({reveal, remove});
    return storage;
}

FormSection *ModelForm::makeModel() {
    auto *section = new FormSection(m_look, u"Model"_s);
    section->addText(m_model->installed->current);
    if (!m_model->smaller.isEmpty())
        section->addButtons(makeButtons(m_model->smaller), u"Use a smaller model"_s);
    if (!m_model->larger.isEmpty())
        section->addButtons(makeButtons(m_model->larger), u"Try a larger model"_s,
                            u"May be slow or unstable on this Mac"_s);
    return section;
}

QList<QWidget *> ModelForm::makeButtons(const QList<ModelTier> &tiers) {
    QList<QWidget *> buttons;
    for (const ModelTier &tier : tiers) {
        auto *button = new WordButton(m_look, tier.displayName);
        connect(button, &WordButton::clicked, this, [this, tier] { m_app.switchModel(tier); });
        buttons.append(button);
    }
    return buttons;
}
