#pragma once

#include "screens/SettingsForm.h"

class AppState;
class Look;
class SegmentedPicker;

/// The pane of the settings that tells when the web may be searched.
class SearchForm : public SettingsForm {
    Q_OBJECT

public:
    /// Both must outlive this object.
    SearchForm(AppState &app, const Look &look, QWidget *parent = nullptr);

private:
    void follow();

    AppState &m_app;
    SegmentedPicker *m_mode;
    QList<QWidget *> m_rows; ///< those that are there for a model that can search
    QWidget *m_refusal;      ///< the one that is there for another
};
