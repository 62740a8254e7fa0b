#include "engine/EventManager.h"

#include "engine/Component.h"
#include "engine/GameObject.h"

#include <algorithm>

namespace Engine
{
namespace
{
bool ByListener(const std::pair<void*, EventManager::EventBind*>& a,
                const std::pair<void*, EventManager::EventBind*>& b)
{
    return std::less<void*>()(a.first, b.first);
}
}

EventManager::~EventManager()
{
    Clear();
}

void EventManager::Clear()
{
    for (EventEntry& entry : m_Events)
        for (Entry& bind : entry.binds)
            delete bind.second;
    for (Pending& pending : m_PendingAdds)
        delete pending.bind;
    m_Events.clear();
    m_Listeners.clear();
    m_PendingAdds.clear();
    m_PendingRemoves.clear();
}

EventManager::EventEntry* EventManager::FindEvent(unsigned hash)
{
    for (EventEntry& entry : m_Events)
        if (entry.hash == hash)
            return &entry;
    return nullptr;
}

const EventManager::EventEntry* EventManager::FindEvent(unsigned hash) const
{
    return const_cast<EventManager*>(this)->FindEvent(hash);
}

void EventManager::AddBind(unsigned hash, void* listener, EventBind* bind)
{
    if (m_DispatchDepth != 0)
        m_PendingAdds.push_back({hash, listener, bind});
    else
        Insert(hash, listener, bind);
}

void EventManager::Insert(unsigned hash, void* listener, EventBind* bind)
{
    auto record = std::find_if(m_Listeners.begin(), m_Listeners.end(),
                               [listener](const ListenerEntry& entry) { return entry.listener == listener; });
    if (record == m_Listeners.end())
        m_Listeners.push_back({listener, {hash}});
    else
        record->hashes.push_back(hash);

    EventEntry* event = FindEvent(hash);
    if (!event)
    {
        m_Events.push_back({hash, {}});
        event = &m_Events.back();
    }
    // Keep the list sorted by listener; a listener's later binds go behind its earlier ones.
    const Entry entry(listener, bind);
    event->binds.insert(std::upper_bound(event->binds.begin(), event->binds.end(), entry, ByListener), entry);
}

void EventManager::RemoveBind(unsigned hash, void* listener, bool deferred)
{
    EventEntry* event = FindEvent(hash);
    if (!event)
        return;
    auto entry = std::find_if(event->binds.begin(), event->binds.end(), [listener](const Entry& bind) {
        return bind.first == listener && bind.second != nullptr;
    });
    if (entry == event->binds.end())
        return;
    if (!deferred)
    {
        delete entry->second;
        event->binds.erase(entry);
        return;
    }
    // The bind goes at once; the running dispatch skips the null entry and the flush erases it.
    m_PendingRemoves.push_back({hash, listener, nullptr});
    delete entry->second;
    entry->second = nullptr;
}

void EventManager::EraseRemovedEntry(unsigned hash, void* listener)
{
    EventEntry* event = FindEvent(hash);
    if (!event)
        return;
    auto entry = std::find_if(event->binds.begin(), event->binds.end(), [listener](const Entry& bind) {
        return bind.first == listener && bind.second == nullptr;
    });
    if (entry != event->binds.end())
        event->binds.erase(entry);
}

void EventManager::Unregister(void* listener, std::string_view name)
{
    const unsigned hash = HashName(name);
    RemoveBind(hash, listener, m_DispatchDepth != 0);
    auto record = std::find_if(m_Listeners.begin(), m_Listeners.end(),
                               [listener](const ListenerEntry& entry) { return entry.listener == listener; });
    if (record == m_Listeners.end())
        return;
    auto used = std::find(record->hashes.begin(), record->hashes.end(), hash);
    if (used != record->hashes.end())
        record->hashes.erase(used);
    if (record->hashes.empty())
        m_Listeners.erase(record);
}

void EventManager::UnregisterAll(void* listener)
{
    auto record = std::find_if(m_Listeners.begin(), m_Listeners.end(),
                               [listener](const ListenerEntry& entry) { return entry.listener == listener; });
    if (record != m_Listeners.end())
    {
        for (unsigned hash : record->hashes)
            RemoveBind(hash, listener, m_DispatchDepth != 0);
        m_Listeners.erase(record);
    }
    if (m_DispatchDepth != 0)
    {
        // A bind added during this dispatch must not come to life after its listener has gone.
        std::erase_if(m_PendingAdds, [listener](Pending& pending) {
            if (pending.listener != listener)
                return false;
            delete pending.bind;
            return true;
        });
    }
}

void EventManager::Dispatch(std::string_view name, Event* event)
{
    BeginDispatch();
    if (EventEntry* entry = FindEvent(HashName(name)))
    {
        // Adds are deferred during dispatch, so the vector neither grows nor moves here.
        const std::size_t count = entry->binds.size();
        for (std::size_t i = 0; i < count; ++i)
            if (EventBind* bind = entry->binds[i].second)
                bind->Invoke(event);
    }
    EndDispatch();
}

void EventManager::DispatchToObject(GameObject* object, std::string_view name, Event* event)
{
    BeginDispatch();
    EventEntry* entry = FindEvent(HashName(name));
    if (entry && object)
    {
        const std::vector<Entry>& binds = entry->binds;
        // Components may be added during the calls; index by the live size.
        for (std::size_t c = 0; c < object->m_Components.size(); ++c)
        {
            void* target = object->m_Components[c];
            std::size_t lo = 0;
            std::size_t hi = binds.size();
            while (lo < hi)
            {
                const std::size_t mid = (lo + hi) / 2;
                if (std::less<void*>()(binds[mid].first, target))
                    lo = mid + 1;
                else
                    hi = mid;
            }
            if (lo < binds.size() && binds[lo].first == target && binds[lo].second)
                binds[lo].second->Invoke(event);
        }
    }
    EndDispatch();
}

void EventManager::EndDispatch()
{
    if (--m_DispatchDepth != 0)
        return;
    for (const Pending& pending : m_PendingAdds)
        Insert(pending.hash, pending.listener, pending.bind);
    m_PendingAdds.clear();
    for (const Pending& pending : m_PendingRemoves)
        EraseRemovedEntry(pending.hash, pending.listener);
    m_PendingRemoves.clear();
}

int EventManager::CountBinds(void* listener, std::string_view name) const
{
    const EventEntry* entry = FindEvent(HashName(name));
    if (!entry)
        return 0;
    return static_cast<int>(std::count_if(entry->binds.begin(), entry->binds.end(), [listener](const Entry& bind) {
        return bind.first == listener && bind.second != nullptr;
    }));
}
}
