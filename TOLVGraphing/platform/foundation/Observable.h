#pragma once

#include "IndexSet.h"
#include <TOLVMath/Export.h>

#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace TOLVGraphing {

/// What happened to a property. Setting replaces the whole value; the other kinds belong to lists and come with the positions concerned.
enum class ChangeKind : std::uint8_t {
    Setting,     ///< the property has another value
    Insertion,   ///< the list has more elements
    Removal,     ///< the list has fewer elements
    Replacement, ///< elements of the list are others
};

/// One announcement.
struct PropertyChange {
    /// The property's name.
    std::string key;
    /// What happened to it.
    ChangeKind kind = ChangeKind::Setting;
    /// Positions inserted (after the change), removed (before it) or replaced; empty for a setting.
    IndexSet indexes;
    /// True for the first delivery that an observer asked for when it subscribed.
    bool isInitial = false;
};

/// Identifies one subscription; zero is none.
using ObserverToken = std::uint64_t;

/// Whether an observer is told once right away, before `addObserver` returns.
enum class InitialDelivery : std::uint8_t {
    No,  ///< only of changes
    Yes, ///< right away, marked `isInitial`, and then of changes
};

/// An object that announces changes of its properties by name.
///
/// Every setter announces, also when the value set equals the old one. A change that is begun and not finished announces nothing, and neither does one that was begun while nobody observed. The order among observers is
/// not defined; an observer may subscribe or unsubscribe others, and may end this object, while it is told. What an observer throws leaves the setter, whose value is set by then; the observers after it are not told. Used from one thread at a time.
class TOLV_EXPORT Observable {
public:
    /// What is called after a change.
    using Observer = std::function<void(const PropertyChange&)>;

    /// Without observers.
    Observable();
    virtual ~Observable();
    /// Observers are not copied: they watch one object.
    Observable(const Observable&);
    Observable& operator=(const Observable&);

    /// Calls the observer (copied, not empty) after each change of the property until it is removed or this object ends. Any name will do; one that no property has is never announced. The token is never 0.
    ObserverToken addObserver(std::string_view key, Observer observer, InitialDelivery initial = InitialDelivery::No);
    /// Nobody is told by that subscription any more, also of a change that is being announced. Throws Exception "UnknownObserver" when the token is not (or no longer) subscribed.
    void removeObserver(ObserverToken token);

    /// The properties whose changes also change `key`; none unless a subclass says so.
    [[nodiscard]] virtual std::vector<std::string> keysAffectingValueOfKey(std::string_view key) const;

    /// Begins, or ends, a change of a property; setters call them, and so do owners that change a derived property.
    /// Pairs may nest, and each announces. An end without a beginning announces nothing, a beginning without an end leaves later pairs as they are. Observers are given the kind and the positions that the end has.
    void willChangeValueForKey(std::string_view key);
    void didChangeValueForKey(std::string_view key);
    void willChange(ChangeKind kind, const IndexSet& indexes, std::string_view key);
    void didChange(ChangeKind kind, const IndexSet& indexes, std::string_view key);

protected:
    /// Stores a property's new value between the beginning and the end of its change.
    template <typename Value>
    void setProperty(Value& field, Value value, std::string_view key)
    {
        willChangeValueForKey(key);
        field = std::move(value);
        didChangeValueForKey(key);
    }

private:
    struct State;
    void announce(const PropertyChange& change);
    // Shared with announcements under way, because an observer may bring this object to its end.
    std::shared_ptr<State> m_observing;
};

/// Begins a change of a property and ends it with the scope. What observers throw leaves the scope, unless another exception is doing so already: that one goes on.
class TOLV_EXPORT PropertyChangeScope {
public:
    /// The object is not owned and has to outlive the scope; the key is copied.
    PropertyChangeScope(Observable& object, std::string key) : m_object(object), m_key(std::move(key)), m_exceptions(std::uncaught_exceptions())
    {
        m_object.willChangeValueForKey(m_key);
    }
    ~PropertyChangeScope() noexcept(false);
    PropertyChangeScope(const PropertyChangeScope&) = delete;
    PropertyChangeScope& operator=(const PropertyChangeScope&) = delete;

private:
    Observable& m_object;
    std::string m_key;
    /// Those under way when the scope began.
    int m_exceptions;
};

} // namespace TOLVGraphing
