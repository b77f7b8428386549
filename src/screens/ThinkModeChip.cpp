#include "screens/ThinkModeChip.h"

using namespace Qt::StringLiterals;

namespace {

const QString label = u"Think longer"_s;

ThinkMode after(ThinkMode mode) {
    switch (mode) {
    case ThinkMode::off:
        return ThinkMode::nextReply;
    case ThinkMode::nextReply:
        return ThinkMode::always;
    case ThinkMode::always:
        return ThinkMode::off;
    }
    Q_UNREACHABLE();
}

} // namespace

ChipModel thinkModeChipModel(ThinkMode mode) {
    switch (mode) {
    case ThinkMode::off:
        return {label, u"Think longer before answering"_s, 0, u"Off"_s};
    case ThinkMode::nextReply:
        return {label, u"Thinking longer before this reply — press again to always think"_s, 0.5,
                u"Next reply"_s};
    case ThinkMode::always:
        return {label, u"Always thinking longer — press to turn off"_s, 1, u"Always"_s};
    }
    Q_UNREACHABLE();
}

ThinkModeChip::ThinkModeChip(const Look &look, QWidget *parent) : Chip(look, label, {label}, parent) {
    setMode(m_mode);
    connect(this, &QAbstractButton::clicked, this, [this] { Q_EMIT modeChosen(after(m_mode)); });
}

void ThinkModeChip::setMode(ThinkMode mode) {
    m_mode = mode;
    setModel(thinkModeChipModel(mode));
}
