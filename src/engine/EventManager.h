// Engine::EventManager: a table of listeners by event name.
//
// There is one global table in Engine::Manager and one per Engine::Space.
// Names are hashed to 32 bits (FNV-1a) at the edge and never compared as
// strings. Adds and removes made while a dispatch runs are held back until the
// outermost dispatch ends, so a table can be changed from its own callbacks.
// DispatchToObject reaches only the components of one object, by a binary
// search of each event's listener list, which is kept sorted by address.
//
//   space.m_Events.RegisterEvent(this, "LogicUpdate", &Mover::OnLogicUpdate);
//   space.m_Events.Dispatch("LogicUpdate", &update);
//   space.m_Events.UnregisterAll(this);
#pragma once

#include <string_view>
#include <utility>
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
    // The receiving end of one registration; owned by its table entry.
    class EventBind
    {
    public:
        virtual ~EventBind() = default;
        // Delivers the event. The bind may be deleted during the call.
        virtual void Invoke(Event* event) = 0;
        // Posts the event for later delivery; only script binds do anything.
        virtual void Queue(Event* event) {}
    };

    // A bind to a member function of a native object.
    template <class T>
    class EventBindObject final : public EventBind
    {
    public:
        EventBindObject(T* object, void (T::*function)(Event*)) : m_Object(object), m_Function(function) {}
        // Touches nothing of the bind after the call: the callback may delete it.
        void Invoke(Event* event) override { (m_Object->*m_Function)(event); }

    private:
        T* m_Object;
        void (T::*m_Function)(Event*);
    };

    EventManager() = default;
    ~EventManager();
    EventManager(const EventManager&) = delete;
    EventManager& operator=(const EventManager&) = delete;

    // Binds a member function of `listener` to the event `name`.
    template <class T>
    void RegisterEvent(T* listener, std::string_view name, void (T::*function)(Event*))
    {
        AddBind(HashName(name), listener, new EventBindObject<T>(listener, function));
    }
    // Files a ready-made bind for `listener` under a hashed name; the table owns it.
    void AddBind(unsigned hash, void* listener, EventBind* bind);
    // Deletes every bind, pending ones included.
    void Clear();
    // Removes every bind of `listener` from this table.
    void UnregisterAll(void* listener);
    // Removes the first bind of `listener` on one event.
    void Unregister(void* listener, std::string_view name);

    // Calls every listener of `name`, in ascending listener order.
    void Dispatch(std::string_view name, Event* event);
    // Calls, for each component of `object` in order, its first bind on `name`.
    void DispatchToObject(GameObject* object, std::string_view name, Event* event);
    // Enters a dispatch: adds and removes are held back until the outermost end.
    void BeginDispatch() { ++m_DispatchDepth; }
    // Leaves a dispatch; the outermost end applies what was held back.
    void EndDispatch();

    // True while a dispatch runs.
    bool IsDispatching() const { return m_DispatchDepth > 0; }
    // Number of live binds of `listener` on `name` (for tools and tests).
    int CountBinds(void* listener, std::string_view name) const;

private:
    using Entry = std::pair<void*, EventBind*>;
    struct EventEntry
    {
        unsigned hash;
        std::vector<Entry> binds;
    };
    struct ListenerEntry
    {
        void* listener;
        std::vector<unsigned> hashes;
    };
    struct Pending
    {
        unsigned hash;
        void* listener;
        EventBind* bind;
    };

    EventEntry* FindEvent(unsigned hash);
    const EventEntry* FindEvent(unsigned hash) const;
    void Insert(unsigned hash, void* listener, EventBind* bind);
    void RemoveBind(unsigned hash, void* listener, bool deferred);
    void EraseRemovedEntry(unsigned hash, void* listener);

    std::vector<EventEntry> m_Events;
    std::vector<ListenerEntry> m_Listeners;
    int m_DispatchDepth = 0;
    std::vector<Pending> m_PendingAdds;
    std::vector<Pending> m_PendingRemoves;
};
}
