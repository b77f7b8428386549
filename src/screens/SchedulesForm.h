#pragma once

#include "screens/SettingsForm.h"

class Look;

/// The pane of the settings from which the window of scheduled runs is opened.
class SchedulesForm : public SettingsForm {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit SchedulesForm(const Look &look, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The person wants to see that window.
    void schedulesRequested();
};
