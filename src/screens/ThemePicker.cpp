#include "screens/ThemePicker.h"

#include "screens/Palette.h"
#include "screens/ThemeSwatch.h"

#include <QHBoxLayout>

using namespace Qt::StringLiterals;

ThemePicker::ThemePicker(const Look &look, QWidget *parent) : QWidget(parent) {
    Spoken::install();
    auto *row = new QHBoxLayout(this);
    row->setContentsMargins(0, 0, 0, 0);
    row->setSpacing(0);
    for (const Theme theme : themes) {
        auto *swatch = new ThemeSwatch(look, theme, this);
        row->addWidget(swatch, 1);
        m_swatches.append(swatch);
        connect(swatch, &ThemeSwatch::chosen, this, [this, theme] { Q_EMIT picked(theme); });
    }
}

void ThemePicker::setTheme(Theme theme) {
    swatch(theme)->setChosen();
}

QString ThemePicker::spokenName() const {
    return u"Theme"_s;
}
