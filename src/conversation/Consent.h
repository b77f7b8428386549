#pragma once

#include "platform/Task.h"
#include "platform/WaitPoint.h"

#include <QObject>
#include <QString>
#include <QUuid>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

/// What a person may answer to a search.
enum class PermissionChoice { allow, always, deny };

/// The cards that ask. Each hangs on the message whose call it is about.
struct PendingSearch {
    QUuid id;
    QUuid messageID;
    QString query;

    bool operator==(const PendingSearch &) const = default;
};

struct PendingPageOffer {
    QUuid id;
    QUuid messageID;

    bool operator==(const PendingPageOffer &) const = default;
};

struct PendingMemory {
    QUuid id;
    QUuid messageID;
    QString fact;

    bool operator==(const PendingMemory &) const = default;
};

/// What the model wants and only the person can grant: it is asked on a card, without a limit in time, and
/// the turn waits for the answer. Only one card of a kind is open at a time. Main thread only.
class Consent : public QObject {
    Q_OBJECT

public:
    using QObject::QObject;

    /// The open cards.
    const std::optional<PendingSearch> &pendingPermission() const { return m_search.pending; }
    const std::optional<PendingPageOffer> &pendingPageOffer() const { return m_page.pending; }
    const std::optional<PendingMemory> &pendingMemory() const { return m_memory.pending; }

#ifndef Q_MOC_RUN
    /// Opens a card and gives the answer. Once `stop` is requested that is a refusal, whatever was answered;
    /// this object may then be gone.
    Task<PermissionChoice> ask(QString query, QUuid messageID, std::stop_token stop);
    Task<bool> askForPage(QUuid messageID, std::stop_token stop);
    Task<bool> askForMemory(QString fact, QUuid messageID, std::stop_token stop);
#endif

    /// Answers the open card of that kind and closes it. Nothing happens where none is open.
    void resolveSearch(PermissionChoice choice);
    void resolvePage(bool isAccepted);
    void resolveMemory(bool isAccepted);

    /// Refuses everything that is asked.
    void refuseAll();

Q_SIGNALS:
    void pendingPermissionChanged();
    void pendingPageOfferChanged();
    void pendingMemoryChanged();

private:
    template<typename Answer>
    struct Waiting {
        WaitPoint end;
        std::optional<Answer> answer;
    };

    template<typename Record, typename Answer>
    struct Card {
        std::optional<Record> pending;
        std::shared_ptr<Waiting<Answer>> waiting;
        void (Consent::*changed)();
    };

#ifndef Q_MOC_RUN
    template<typename Record, typename Answer>
    Task<Answer> open(Card<Record, Answer> &card, Record record, Answer refusal, std::stop_token stop);
#endif
    template<typename Record, typename Answer>
    void resolve(Card<Record, Answer> &card, Answer answer);

    Card<PendingSearch, PermissionChoice> m_search{.changed = &Consent::pendingPermissionChanged};
    Card<PendingPageOffer, bool> m_page{.changed = &Consent::pendingPageOfferChanged};
    Card<PendingMemory, bool> m_memory{.changed = &Consent::pendingMemoryChanged};
};
