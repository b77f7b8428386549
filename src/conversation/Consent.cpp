#include "conversation/Consent.h"

template<typename Record, typename Answer>
Task<Answer> Consent::open(Card<Record, Answer> &card, Record record, Answer refusal, std::stop_token stop) {
    const auto waiting = std::make_shared<Waiting<Answer>>();
    card.waiting = waiting;
    card.pending = std::move(record);
    Q_EMIT(this->*card.changed)();
    const std::stop_callback wakeOnStop(stop, [&] { waiting->end.wake(); });
    co_await waiting->end.wait();
    co_return stop.stop_requested() ? refusal : waiting->answer.value_or(refusal);
}

template<typename Record, typename Answer>
void Consent::resolve(Card<Record, Answer> &card, Answer answer) {
    if (!card.pending)
        return;
    const auto waiting = std::exchange(card.waiting, nullptr);
    waiting->answer = answer;
    waiting->end.wake();
    card.pending.reset();
    Q_EMIT(this->*card.changed)();
}

Task<PermissionChoice> Consent::ask(QString query, QUuid messageID, std::stop_token stop) {
    return open(m_search, PendingSearch{QUuid::createUuid(), messageID, query}, PermissionChoice::deny, stop);
}

Task<bool> Consent::askForPage(QUuid messageID, std::stop_token stop) {
    return open(m_page, PendingPageOffer{QUuid::createUuid(), messageID}, false, stop);
}

Task<bool> Consent::askForMemory(QString fact, QUuid messageID, std::stop_token stop) {
    return open(m_memory, PendingMemory{QUuid::createUuid(), messageID, fact}, false, stop);
}

void Consent::resolveSearch(PermissionChoice choice) {
    resolve(m_search, choice);
}

void Consent::resolvePage(bool isAccepted) {
    resolve(m_page, isAccepted);
}

void Consent::resolveMemory(bool isAccepted) {
    resolve(m_memory, isAccepted);
}

void Consent::refuseAll() {
    resolveSearch(PermissionChoice::deny);
    resolvePage(false);
    resolveMemory(false);
}
