#include "screens/SpeedChip.h"

using namespace Qt::StringLiterals;

namespace {

ResponseSpeed after(ResponseSpeed speed) {
    switch (speed) {
    case ResponseSpeed::full:
        return ResponseSpeed::calm;
    case ResponseSpeed::calm:
        return ResponseSpeed::slowYourRoll;
    case ResponseSpeed::slowYourRoll:
        return ResponseSpeed::full;
    }
    Q_UNREACHABLE();
}

QStringList labels() {
    QStringList all;
    for (const auto speed : {ResponseSpeed::full, ResponseSpeed::calm, ResponseSpeed::slowYourRoll})
        all.append(speedChipModel(speed).label);
    return all;
}

} // namespace

ChipModel speedChipModel(ResponseSpeed speed) {
    switch (speed) {
    case ResponseSpeed::full:
        return {u"Full speed"_s, u"Full speed — the engine runs flat out"_s, 0, u"Full speed"_s};
    case ResponseSpeed::calm:
        return {u"Calm"_s, u"Calm — a second of rest between bursts"_s, 0.5, u"Calm"_s};
    case ResponseSpeed::slowYourRoll:
        return {u"Slow your roll"_s, u"Slow your roll — long rests between bursts, about a token a second"_s,
                1, u"Slow your roll"_s};
    }
    Q_UNREACHABLE();
}

SpeedChip::SpeedChip(const Look &look, QWidget *parent) : Chip(look, u"Response speed"_s, labels(), parent) {
    setSpeed(m_speed);
    connect(this, &QAbstractButton::clicked, this, [this] { Q_EMIT speedChosen(after(m_speed)); });
}

void SpeedChip::setSpeed(ResponseSpeed speed) {
    m_speed = speed;
    setModel(speedChipModel(speed));
}
