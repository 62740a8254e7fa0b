// Engine::EventManager: a table of listeners by event name.
//
// There is one global table in Engine::Manager and one per Engine::Space.
// Names are hashed to 32 bits (FNV-1a) at the edge and never compared as
// strings. Each event keeps its binds by value in one flat vector sorted by
// listener; a bind is a plain function and the object it is called with. Where
// the compiler can turn a member function into a plain function (GCC can, for
// exactly this use), a native bind is the object and that function, so a
// dispatch walks contiguous memory with one indirect call per listener. Other
// binds (scripts, and native ones elsewhere) are EventBind objects that the
// table owns and calls through the same walk.
//
// Adds and removes made while a dispatch runs are held back until the
// outermost dispatch ends, so a table can be changed from its own callbacks.
// A removed bind is only marked; its entry is swept out later, in one pass, once
// enough entries are dead, so removing many listeners costs a binary search
// each and not a shift of the whole vector. Adds are likewise gathered and
// merged in one pass before the table is next read.
//
// A component is known by the address of its Component part, whichever pointer
// it was registered or removed through; any other listener by the address given.
//
//   space.m_Events.RegisterEvent(this, "LogicUpdate", &Mover::OnLogicUpdate);
//   space.m_Events.Dispatch("LogicUpdate", &update);
//   space.m_Events.UnregisterAll(this);
#pragma once

#include "engine/Component.h"

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string_view>
#include <type_traits>
#include <vector>

class Event;
class GameObject;

namespace Engine
{
// 32-bit FNV-1a of a name: offset basis 0x811C9DC5, prime 16777619.
constexpr unsigned HashName(std::string_view name)
{
    unsigned hash = 0x811C9DC5u;
    for (char c : name)
    {
        hash ^= static_cast<unsigned char>(c);
        hash *= 16777619u;
    }
    return hash;
}

class EventManager
{
public:
    // A receiver called through a virtual function (a script's, for one); owned by the table.
    class EventBind
    {
    public:
        virtual ~EventBind() = default;
        // Delivers the event. The bind may be deleted during the call.
        virtual void Invoke(Event* event) = 0;
        // Posts the event for later delivery; only script binds do anything.
        virtual void Queue(Event* event) {}
    };

    // A member function of a native object, where it can't be called directly.
    template <class C>
    class EventBindObject final : public EventBind
    {
    public:
        EventBindObject(C* object, void (C::*function)(Event*)) : m_Object(object), m_Function(function) {}
        // Touches nothing of the bind after the call: the callback may delete it.
        void Invoke(Event* event) override { (m_Object->*m_Function)(event); }

    private:
        C* m_Object;
        void (C::*m_Function)(Event*);
    };

    // Holds a table in dispatch for its lifetime: adds and removes wait for the outermost end,
    // which comes even when a listener throws.
    class DispatchScope
    {
    public:
        explicit DispatchScope(EventManager& table) : m_Table(table) { m_Table.BeginDispatch(); }
        ~DispatchScope() { m_Table.EndDispatch(); }
        DispatchScope(const DispatchScope&) = delete;
        DispatchScope& operator=(const DispatchScope&) = delete;

    private:
        EventManager& m_Table;
    };

    EventManager() = default;
    ~EventManager();
    EventManager(const EventManager&) = delete;
    EventManager& operator=(const EventManager&) = delete;

    // Binds a member function of `listener` (of its class or a base) to the event `name`.
    // A virtual function is resolved when it is bound: register after construction.
    template <class T, class C>
    void RegisterEvent(T* listener, std::string_view name, void (C::*function)(Event*))
    {
        static_assert(std::is_base_of_v<C, T>, "the function must be a member of the listener's class or a base");
        if (!listener || !function)
        {
            ReportEmptyBind();
            return;
        }
        C* object = listener;
        if (const Call direct = DirectCall(object, function))
            Add(HashName(name), Bind{ListenerKey(listener), direct, object});
        else
            AddOwned(HashName(name), ListenerKey(listener), new EventBindObject<C>(object, function));
    }
    // Files a bind made elsewhere (a script's) for `listener` under a hashed name; the table owns it.
    template <class T>
    void AddBind(unsigned hash, T* listener, EventBind* bind)
    {
        AddOwned(hash, ListenerKey(listener), bind);
    }
    // Deletes every bind, pending ones included.
    void Clear();
    // Removes every bind of `listener` from this table.
    template <class T>
    void UnregisterAll(T* listener)
    {
        UnregisterKey(ListenerKey(listener));
    }
    // Removes the first bind of `listener` on one event.
    template <class T>
    void Unregister(T* listener, std::string_view name)
    {
        UnregisterKey(ListenerKey(listener), HashName(name));
    }

    // Calls every listener of `name`, in ascending listener order.
    void Dispatch(std::string_view name, Event* event) { DispatchHash(HashName(name), event); }
    // Calls every listener of the event with this hashed name, in ascending listener order.
    void DispatchHash(unsigned hash, Event* event);
    // Calls, for each component of `object` in order, its first bind on `name`.
    void DispatchToObject(GameObject* object, std::string_view name, Event* event);
    // Enters a dispatch: adds and removes are held back until the outermost end.
    // Prefer a DispatchScope, which cannot miss its end.
    void BeginDispatch()
    {
        if (m_DispatchDepth == 0 && !m_PendingAdds.empty())
            ApplyPendingAdds();
        ++m_DispatchDepth;
    }
    // Leaves a dispatch; the outermost end applies what was held back. An end
    // without a matching begin is reported and changes nothing.
    void EndDispatch()
    {
        if (m_DispatchDepth <= 0)
        {
            ReportUnmatchedEnd();
            return;
        }
        if (--m_DispatchDepth == 0 && (!m_PendingAdds.empty() || m_HasRemovals))
            ApplyDeferredWork();
    }

    // True while a dispatch runs.
    bool IsDispatching() const { return m_DispatchDepth > 0; }
    // Number of binds of `listener` on `name` that a dispatch started now would reach (for tools and tests).
    template <class T>
    int CountBinds(T* listener, std::string_view name) const
    {
        return CountKey(ListenerKey(listener), HashName(name));
    }

    // The address a listener is filed under: a component's Component part, else the pointer itself.
    template <class T>
    static const void* ListenerKey(T* listener)
    {
        if constexpr (std::is_base_of_v<Component, std::remove_cv_t<T>>)
            return static_cast<const Component*>(listener);
        else
            return listener;
    }

private:
    // A plain function called with a bind's target and the event.
    using Call = void (*)(void* target, Event* event);

    // One registration, held by value in its event's vector.
    struct Bind
    {
        // The listener's key; each vector is sorted by it.
        const void* listener;
        // Called with `target`; null once the bind was removed.
        Call call;
        // The object of a direct member call, or the owned EventBind.
        void* target;
    };
    // The binds of one event name.
    struct EventList
    {
        std::vector<Bind> binds;
        // Entries marked removed and not yet swept out.
        std::size_t removed = 0;
        // Length of the sorted front of `binds`; all of it, except while adds are merged in.
        std::size_t sorted = 0;
    };
    // One line of the index from listeners to the events they are on: one per bind.
    struct ListenerEvent
    {
        const void* listener;
        unsigned hash;
        bool removed;
    };
    // An add not yet merged into the sorted vectors.
    struct Pending
    {
        unsigned hash;
        Bind bind;
    };

    // The member function as a plain function taking the object, or null where that can't be had.
    // GCC offers the conversion (its documented extension for calls from inner loops); it is used
    // only when the call needs no adjustment of the object pointer, which the object then is.
    template <class C>
    static Call DirectCall(C* object, void (C::*function)(Event*))
    {
#if defined(__GNUC__) && !defined(__clang__)
        struct Parts
        {
            std::uintptr_t function;
            std::ptrdiff_t adjustment;
        };
        static_assert(sizeof(function) == sizeof(Parts));
        Parts parts;
        std::memcpy(&parts, &function, sizeof(parts));
        if (parts.adjustment != 0)
            return nullptr;
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpmf-conversions"
        return (Call)(object->*function);
#pragma GCC diagnostic pop
#else
        return nullptr;
#endif
    }
    // Calls an owned EventBind.
    static void CallOwned(void* target, Event* event);
    // True if the table owns the EventBind in `bind.target`.
    static bool OwnsTarget(const Bind& bind) { return bind.call == &CallOwned; }
    // Reports a registration without listener or function.
    static void ReportEmptyBind();

    void Add(unsigned hash, const Bind& bind);
    void AddOwned(unsigned hash, const void* listener, EventBind* bind);
    void UnregisterKey(const void* listener);
    void UnregisterKey(const void* listener, unsigned hash);
    int CountKey(const void* listener, unsigned hash) const;

    // The binds of a hashed name, or null: a linear scan of the hashes.
    EventList* FindEvent(unsigned hash)
    {
        for (std::size_t i = 0; i < m_Hashes.size(); ++i)
            if (m_Hashes[i] == hash)
                return &m_Events[i];
        return nullptr;
    }
    const EventList* FindEvent(unsigned hash) const { return const_cast<EventManager*>(this)->FindEvent(hash); }
    EventList& FindOrAddEvent(unsigned hash);
    // Marks the first live bind of `listener` in `list` removed; false if it has none.
    bool RemoveFirst(EventList& list, const void* listener);
    // Deletes what the table owns of a bind and marks it removed.
    static void Kill(Bind& bind);
    // Merges every pending add into the sorted vectors, in the order they were made.
    void ApplyPendingAdds();
    // Sweeps out removed entries where enough have gathered; only outside dispatch.
    void SweepRemoved(EventList& list);
    void SweepRemovedListeners();
    // The outermost end of a dispatch: applies held adds and sweeps removed entries.
    void ApplyDeferredWork();
    void ReportUnmatchedEnd();

    // Hashed names, in the order of m_Events; scanned linearly.
    std::vector<unsigned> m_Hashes;
    std::vector<EventList> m_Events;
    // Sorted by listener; the events each listener is on.
    std::vector<ListenerEvent> m_Listeners;
    std::size_t m_ListenersRemoved = 0;
    int m_DispatchDepth = 0;
    // Adds made during a dispatch, or outside one and not yet merged.
    std::vector<Pending> m_PendingAdds;
    // Some entry was marked removed since the last sweep.
    bool m_HasRemovals = false;
};
}
