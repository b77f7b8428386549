#pragma once

#include "screens/SettingsForm.h"

class AppState;
class CheckToggle;
class Look;
class TextEditor;

/// The pane of the settings for what is remembered: a switch, and while it is on the text of the memory file,
/// which follows every keystroke.
class MemoryForm : public SettingsForm {
    Q_OBJECT

public:
    /// Both must outlive this object.
    MemoryForm(AppState &app, const Look &look, QWidget *parent = nullptr);

    /// From here on nothing that was written before can be brought back.
    void forgetChanges();

private:
    FormSection *makeSection(const Look &look);
    QWidget *makeContent(const Look &look);
    void follow();
    void followMemory();
    void keep();

    AppState &m_app;
    CheckToggle *m_toggle = nullptr;
    TextEditor *m_editor;
    QWidget *m_content = nullptr; ///< what is there while things are remembered
    bool m_isFollowing = false;
};
