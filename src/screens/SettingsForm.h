#pragma once

#include <QScrollArea>

class FormSection;

/// The page of a pane: sections one below the other, which scroll where there are too many.
class SettingsForm : public QScrollArea {
    Q_OBJECT

public:
    explicit SettingsForm(QWidget *parent = nullptr);

protected:
    /// Puts these sections in the place of all that is there.
    void setSections(const QList<FormSection *> &sections);
};
