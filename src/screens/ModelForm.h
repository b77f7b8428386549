#pragma once

#include "screens/ModelFormModel.h"
#include "screens/SettingsForm.h"

class AppState;
class FormSection;
class Look;

/// The pane of the settings that tells which model is there, where it lies, and which others there are.
class ModelForm : public SettingsForm {
    Q_OBJECT

public:
    /// Both must outlive this object.
    ModelForm(AppState &app, const Look &look, QWidget *parent = nullptr);

private:
    void follow();
    FormSection *makeStorage();
    FormSection *makeModel();
    QList<QWidget *> makeButtons(const QList<ModelTier> &tiers);

    AppState &m_app;
    const Look &m_look;
    std::optional<ModelFormModel> m_model;
};
