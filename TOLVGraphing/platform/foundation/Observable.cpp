#include "Observable.h"

#include "Exception.h"

#include <algorithm>
#include <map>

namespace TOLVGraphing {

struct Observable::State {
    struct Subscription {
        ObserverToken token;
        std::string key;
        // Shared, so that an observer which unsubscribes itself lives until its call returns.
        std::shared_ptr<Observer> observer;
    };
    std::vector<Subscription> subscriptions;
    std::map<std::string, int, std::less<>> begun;
    ObserverToken lastToken = 0;
};

Observable::Observable() : m_observing(std::make_shared<State>()) {}

Observable::~Observable()
{
    // Nobody is left to be told by an announcement that is still under way.
    m_observing->subscriptions.clear();
}

Observable::Observable(const Observable&) : Observable() {}

// Nothing is assigned: those who observe an object go on observing that one.
// NOLINTNEXTLINE(bugprone-unhandled-self-assignment)
Observable& Observable::operator=(const Observable&)
{
    return *this;
}

ObserverToken Observable::addObserver(std::string_view key, Observer observer, InitialDelivery initial)
{
    const ObserverToken token = ++m_observing->lastToken;
    auto shared = std::make_shared<Observer>(std::move(observer));
    m_observing->subscriptions.push_back({token, std::string(key), shared});
    if (initial == InitialDelivery::Yes)
        (*shared)({std::string(key), ChangeKind::Setting, {}, true});
    return token;
}

void Observable::removeObserver(ObserverToken token)
{
    auto& subscriptions = m_observing->subscriptions;
    const auto found = std::find_if(subscriptions.begin(), subscriptions.end(), [&](const auto& one) { return one.token == token; });
    if (found == subscriptions.end())
        throw Exception("UnknownObserver", "Cannot remove an observer that is not registered");
    subscriptions.erase(found);
}

std::vector<std::string> Observable::keysAffectingValueOfKey(std::string_view) const
{
    return {};
}

void Observable::willChangeValueForKey(std::string_view key)
{
    willChange(ChangeKind::Setting, {}, key);
}

void Observable::didChangeValueForKey(std::string_view key)
{
    didChange(ChangeKind::Setting, {}, key);
}

void Observable::willChange(ChangeKind, const IndexSet&, std::string_view key)
{
    if (!m_observing->subscriptions.empty())
        ++m_observing->begun[std::string(key)];
}

void Observable::didChange(ChangeKind kind, const IndexSet& indexes, std::string_view key)
{
    const auto begun = m_observing->begun.find(key);
    if (begun == m_observing->begun.end())
        return;
    // Announced for every pair, not only for the outermost one: a change that was begun and never finished must not silence the later ones.
    if (--begun->second == 0)
        m_observing->begun.erase(begun);
    announce({std::string(key), kind, indexes, false});
}

void Observable::announce(const PropertyChange& change)
{
    // Copies, because observers may subscribe, unsubscribe and end this object while they are told. Once it has ended no subscription is left and it is not touched again.
    const std::shared_ptr<const State> state = m_observing;
    const auto subscriptions = state->subscriptions;
    for (const auto& subscription : subscriptions) {
        const auto& current = state->subscriptions;
        const bool stillThere = std::any_of(current.begin(), current.end(), [&](const auto& one) { return one.token == subscription.token; });
        if (!stillThere)
            continue;
        if (subscription.key == change.key) {
            (*subscription.observer)(change);
            continue;
        }
        const auto affecting = keysAffectingValueOfKey(subscription.key);
        if (std::find(affecting.begin(), affecting.end(), change.key) != affecting.end())
            (*subscription.observer)({subscription.key, ChangeKind::Setting, {}, false});
    }
}

PropertyChangeScope::~PropertyChangeScope() noexcept(false)
{
    try {
        m_object.didChangeValueForKey(m_key);
    } catch (...) {
        if (std::uncaught_exceptions() <= m_exceptions)
            throw;
    }
}

} // namespace TOLVGraphing
