#pragma once

#include "screens/AboutFormModel.h"
#include "screens/SettingsForm.h"

class AppState;
class Look;
class TextView;
class WordButton;

/// The pane of the settings about the program: its version, its model and engine, and whether there is a
/// newer release.
class AboutForm : public SettingsForm {
    Q_OBJECT

public:
    /// Both must outlive this object.
    AboutForm(AppState &app, const Look &look, QWidget *parent = nullptr);

private:
    FormSection *makeSection(const Look &look);
    QWidget *makeUpdates();
    AboutFormModel currentModel() const;
    void follow();

    AppState &m_app;
    const QString m_engineBuild;
    AboutFormModel m_model;
    TextView *m_poweredBy;
    TextView *m_engine;
    TextView *m_licences;
    QWidget *m_offline = nullptr; ///< the row that is there while nothing is asked
    QWidget *m_online = nullptr;  ///< the row that is there otherwise
    TextView *m_updates;
    WordButton *m_check;
    WordButton *m_download;
};
