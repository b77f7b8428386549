#pragma once

#include "screens/SettingsForm.h"

class Look;

/// The pane of the settings from which everything can be deleted.
class DataForm : public SettingsForm {
    Q_OBJECT

public:
    /// `look` must outlive this object.
    explicit DataForm(const Look &look, QWidget *parent = nullptr);

Q_SIGNALS:
    /// The person wants everything deleted, and is to be asked once more.
    void eraseRequested();
};
