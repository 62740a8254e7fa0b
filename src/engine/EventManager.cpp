#include "engine/EventManager.h"

#include "engine/GameObject.h"
#include "engine/Log.h"

#include <algorithm>
#include <functional>

namespace Engine
{
namespace
{
// The order of listeners: any strict order of addresses serves; std::less gives one for unrelated pointers.
bool Before(const void* a, const void* b)
{
    return std::less<const void*>()(a, b);
}

template <class Item>
bool ByListener(const Item& a, const Item& b)
{
    return Before(a.listener, b.listener);
}

template <class Item>
bool ListenerBefore(const Item& item, const void* listener)
{
    return Before(item.listener, listener);
}

// Fewer new items than this are placed one by one; more are sorted and merged in one pass.
constexpr std::ptrdiff_t kMergeBatch = 16;

// Sorts the items behind the first `sorted` into place. Equal listeners keep the order of
// registration: the old items first, then the new ones as they came.
template <class Item>
void MergeTail(std::vector<Item>& items, std::size_t sorted)
{
    const auto begin = items.begin();
    const auto middle = begin + static_cast<std::ptrdiff_t>(sorted);
    if (items.end() - middle < kMergeBatch)
    {
        // Usually a new listener sorts last, and this moves nothing.
        for (auto next = middle; next != items.end(); ++next)
            std::rotate(std::upper_bound(begin, next, *next, ByListener<Item>), next, next + 1);
        return;
    }
    std::stable_sort(middle, items.end(), ByListener<Item>);
    std::inplace_merge(begin, middle, items.end(), ByListener<Item>);
}

// A vector is swept when more than a quarter of it is removed entries, so each sweep pays for itself.
bool WorthSweeping(std::size_t removed, std::size_t size)
{
    return removed != 0 && removed * 4 > size;
}
}

EventManager::~EventManager()
{
    Clear();
}

void EventManager::CallOwned(void* target, Event* event)
{
    static_cast<EventBind*>(target)->Invoke(event);
}

void EventManager::ReportEmptyBind()
{
    LOG("WARNING", "RegisterEvent without a listener or a function is ignored.");
}

void EventManager::Kill(Bind& bind)
{
    EventBind* owned = OwnsTarget(bind) ? static_cast<EventBind*>(bind.target) : nullptr;
    bind.call = nullptr;
    bind.target = nullptr;
    delete owned;
}

void EventManager::Clear()
{
    for (EventList& list : m_Events)
        for (Bind& bind : list.binds)
            Kill(bind);
    for (Pending& pending : m_PendingAdds)
        Kill(pending.bind);
    m_PendingAdds.clear();
    if (m_DispatchDepth == 0)
    {
        m_Hashes.clear();
        m_Events.clear();
        m_Listeners.clear();
        m_ListenersRemoved = 0;
        m_HasRemovals = false;
        return;
    }
    // A running dispatch may be walking these vectors: everything stays in place, marked removed,
    // until the outermost end sweeps it out.
    for (EventList& list : m_Events)
        list.removed = list.binds.size();
    for (ListenerEvent& line : m_Listeners)
        line.removed = true;
    m_ListenersRemoved = m_Listeners.size();
    m_HasRemovals = true;
}

EventManager::EventList& EventManager::FindOrAddEvent(unsigned hash)
{
    if (EventList* list = FindEvent(hash))
        return *list;
    m_Hashes.push_back(hash);
    return m_Events.emplace_back();
}

void EventManager::Add(unsigned hash, const Bind& bind)
{
    // Merged when the table is next read, or, during a dispatch, at its outermost end.
    m_PendingAdds.push_back({hash, bind});
}

void EventManager::AddOwned(unsigned hash, const void* listener, EventBind* bind)
{
    if (bind)
        Add(hash, Bind{listener, &CallOwned, bind});
}

void EventManager::ApplyPendingAdds()
{
    if (m_PendingAdds.empty())
        return;
    // Each vector is sorted up to its size: append every add behind, then merge each grown vector once.
    const std::size_t listenersSorted = m_Listeners.size();
    for (const Pending& add : m_PendingAdds)
    {
        FindOrAddEvent(add.hash).binds.push_back(add.bind);
        m_Listeners.push_back({add.bind.listener, add.hash, false});
    }
    m_PendingAdds.clear();
    for (EventList& list : m_Events)
    {
        if (list.sorted == list.binds.size())
            continue;
        MergeTail(list.binds, list.sorted);
        list.sorted = list.binds.size();
    }
    MergeTail(m_Listeners, listenersSorted);
}

bool EventManager::RemoveFirst(EventList& list, const void* listener)
{
    auto bind = std::lower_bound(list.binds.begin(), list.binds.end(), listener, ListenerBefore<Bind>);
    for (; bind != list.binds.end() && bind->listener == listener; ++bind)
    {
        if (!bind->call)
            continue;
        // The bind goes at once; a running dispatch skips its entry, and a later sweep erases it.
        Kill(*bind);
        ++list.removed;
        m_HasRemovals = true;
        return true;
    }
    return false;
}

void EventManager::SweepRemoved(EventList& list)
{
    if (m_DispatchDepth != 0 || !WorthSweeping(list.removed, list.binds.size()))
        return;
    std::erase_if(list.binds, [](const Bind& bind) { return bind.call == nullptr; });
    list.removed = 0;
    list.sorted = list.binds.size();
}

void EventManager::SweepRemovedListeners()
{
    if (!WorthSweeping(m_ListenersRemoved, m_Listeners.size()))
        return;
    std::erase_if(m_Listeners, [](const ListenerEvent& line) { return line.removed; });
    m_ListenersRemoved = 0;
}

void EventManager::UnregisterKey(const void* listener)
{
    if (m_DispatchDepth == 0)
    {
        ApplyPendingAdds();
    }
    else
    {
        // A bind added during this dispatch must not come to life after its listener has gone.
        std::erase_if(m_PendingAdds, [listener](Pending& pending) {
            if (pending.bind.listener != listener)
                return false;
            Kill(pending.bind);
            return true;
        });
    }
    const auto lines = std::equal_range(m_Listeners.begin(), m_Listeners.end(),
                                        ListenerEvent{listener, 0, false}, ByListener<ListenerEvent>);
    for (auto line = lines.first; line != lines.second; ++line)
    {
        if (line->removed)
            continue;
        line->removed = true;
        ++m_ListenersRemoved;
        if (EventList* list = FindEvent(line->hash))
        {
            RemoveFirst(*list, listener);
            SweepRemoved(*list);
        }
    }
    SweepRemovedListeners();
}

void EventManager::UnregisterKey(const void* listener, unsigned hash)
{
    if (m_DispatchDepth == 0)
        ApplyPendingAdds();
    EventList* list = FindEvent(hash);
    if (list && RemoveFirst(*list, listener))
    {
        const auto lines = std::equal_range(m_Listeners.begin(), m_Listeners.end(),
                                            ListenerEvent{listener, 0, false}, ByListener<ListenerEvent>);
        for (auto line = lines.first; line != lines.second; ++line)
        {
            if (!line->removed && line->hash == hash)
            {
                line->removed = true;
                ++m_ListenersRemoved;
                break;
            }
        }
        SweepRemoved(*list);
        SweepRemovedListeners();
        return;
    }
    // The listener's first bind on the event may be one added during this dispatch.
    const auto pending = std::find_if(m_PendingAdds.begin(), m_PendingAdds.end(), [&](const Pending& add) {
        return add.hash == hash && add.bind.listener == listener;
    });
    if (pending != m_PendingAdds.end())
    {
        Kill(pending->bind);
        m_PendingAdds.erase(pending);
    }
}

void EventManager::DispatchHash(unsigned hash, Event* event)
{
    DispatchScope scope(*this);
    EventList* list = FindEvent(hash);
    if (!list)
        return;
    // Adds wait for the end and removals only mark entries, so the vector neither grows nor moves here.
    const Bind* bind = list->binds.data();
    const Bind* const end = bind + list->binds.size();
    for (; bind != end; ++bind)
        if (bind->call)
            bind->call(bind->target, event);
}

void EventManager::DispatchToObject(GameObject* object, std::string_view name, Event* event)
{
    DispatchScope scope(*this);
    EventList* list = object ? FindEvent(HashName(name)) : nullptr;
    if (!list)
        return;
    const Bind* const begin = list->binds.data();
    const Bind* const end = begin + list->binds.size();
    // Components may be added during the calls; index by the live size.
    for (std::size_t c = 0; c < object->m_Components.size(); ++c)
    {
        const void* key = static_cast<const Component*>(object->m_Components[c]);
        // The component's first bind that is still live; nothing of it is touched after the call.
        for (const Bind* bind = std::lower_bound(begin, end, key, ListenerBefore<Bind>);
             bind != end && bind->listener == key; ++bind)
        {
            if (bind->call)
            {
                bind->call(bind->target, event);
                break;
            }
        }
    }
}

void EventManager::ApplyDeferredWork()
{
    ApplyPendingAdds();
    if (!m_HasRemovals)
        return;
    m_HasRemovals = false;
    for (EventList& list : m_Events)
        SweepRemoved(list);
    SweepRemovedListeners();
}

void EventManager::ReportUnmatchedEnd()
{
    LOG("WARNING", "EndDispatch without a matching BeginDispatch is ignored.");
}

int EventManager::CountKey(const void* listener, unsigned hash) const
{
    int count = 0;
    if (const EventList* list = FindEvent(hash))
    {
        for (auto bind = std::lower_bound(list->binds.begin(), list->binds.end(), listener, ListenerBefore<Bind>);
             bind != list->binds.end() && bind->listener == listener; ++bind)
            count += bind->call ? 1 : 0;
    }
    // Outside a dispatch, adds still waiting to be merged are as good as made.
    if (m_DispatchDepth == 0)
        count += static_cast<int>(std::count_if(m_PendingAdds.begin(), m_PendingAdds.end(), [&](const Pending& add) {
            return add.hash == hash && add.bind.listener == listener;
        }));
    return count;
}
}
