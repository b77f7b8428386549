#pragma once

#include "screens/SettingsForm.h"

class AppState;
class Look;
class SegmentedPicker;
class ThemePicker;

/// The pane of the settings that tells how the windows look: theme, text size, typeface.
class AppearanceForm : public SettingsForm {
    Q_OBJECT

public:
    /// Both must outlive this object.
    AppearanceForm(AppState &app, const Look &look, QWidget *parent = nullptr);

private:
    void follow();

    AppState &m_app;
    ThemePicker *m_theme;
    SegmentedPicker *m_textSize;
    SegmentedPicker *m_typeFace;
};
