// LuaBinding: the bookkeeping that turns the registrations of the type registry
// into Lua classes. Each registration, run from a static initialiser, states in
// order: the binder of its class (BeginClass: a Class<T>, or after DERIVE a
// DerivedClass<T, Base>), its constructors (AddConstructor), and last
// RegisterClass(data, order). Registrations arrive before any Lua state
// exists, so they are kept in m_Pending by order; BindAll(L) binds them into a
// state: "System" first, then each order ascending, each in order of arrival.
// A derived class whose base is not bound yet waits in m_ClassesByParent and is
// bound right after its base; one whose base never comes is never bound.
// BindAll may run on any number of states; each gets every class.
//
//   luabridge::LuaBinding::Get().BindAll(L);   // from LuaSystem::Initialize
#pragma once

#include "utilities/lua/luabridge/Binders.h"

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <unordered_set>
#include <vector>

namespace Meta
{
class Data;
}

namespace luabridge
{
class LuaBinding
{
public:
    // One registration kept for later: the class, its namespace path, its binder and constructors.
    struct Record
    {
        Meta::Data* data = nullptr;
        std::deque<std::string> nameSpace;
        std::shared_ptr<ClassBinder> binder;
        std::vector<std::shared_ptr<ConstructorBinder>> constructors;
    };
    // Whether a class is bound in the state being filled, and the derived classes waiting for it.
    struct ParentEntry
    {
        bool bound = false;
        std::vector<Record> waiting;
    };

    // The one binding bookkeeper.
    static LuaBinding& Get();

    // Starts a registration: clears the constructors and sets the binder.
    void BeginClass(std::shared_ptr<ClassBinder> binder);
    // Replaces the binder of the registration under way (DERIVE).
    void SetBinder(std::shared_ptr<ClassBinder> binder) { m_Binder = std::move(binder); }
    // Adds a constructor to the registration under way.
    void AddConstructor(std::shared_ptr<ConstructorBinder> constructor);
    // Ends a registration: binds now when a state is being filled and the order has come, else keeps it.
    void RegisterClass(Meta::Data* data, unsigned order);
    // Makes the global table `name` callable: T(...) runs `candidate` (-1 when the arguments don't fit).
    void AddScriptConstructed(const std::string& name, lua_CFunction candidate);
    // Binds every registration into `L`: "System" first, then m_Pending by order, then the callable tables.
    void BindAll(lua_State* L);

    // The namespace path in which the next class is bound (empty: the global table).
    std::deque<std::string> m_Namespace;
    // The binder of the class being registered.
    std::shared_ptr<ClassBinder> m_Binder;
    // The constructors of the class being registered.
    std::vector<std::shared_ptr<ConstructorBinder>> m_Constructors;
    // Bound state of each base class and the classes waiting for it, for the state being filled.
    std::map<const Meta::Data*, ParentEntry> m_ClassesByParent;
    // Registrations kept for binding, by order.
    std::map<unsigned, std::vector<Record>> m_Pending;
    // The order now being bound.
    unsigned m_CurrentOrder = 0;
    // Names of the global tables made callable by BindAll.
    std::unordered_set<std::string> m_ScriptConstructed;

private:
    LuaBinding() = default;
    // The registration under way as a record.
    Record Current(Meta::Data* data) const;
    // Makes `record` the registration under way.
    void Restore(const Record& record);
    // Binds the registration under way now, then whatever waited for it.
    void BindNow(Meta::Data* data);
    // Makes each table of m_ScriptConstructed callable.
    void MakeCallableTables();

    // The state being filled; null outside BindAll.
    lua_State* m_State = nullptr;
    // Candidates of the callable tables.
    Candidates m_ScriptCandidates;
};

// Starts the registration of T with a Class<T> binder.
template <class T>
void BeginClass()
{
    LuaBinding::Get().BeginClass(std::make_shared<Class<T>>());
}
// The class being registered, T, derives from Base.
template <class T, class Base>
void Derive()
{
    LuaBinding::Get().SetBinder(std::make_shared<DerivedClass<T, Base>>());
}
// A script constructor of T from Args.
template <class T, class... Args>
void AddConstructor()
{
    LuaBinding::Get().AddConstructor(std::make_shared<Constructor<T, Args...>>());
}
// Registers an enumeration for binding.
void RegisterEnum(Meta::Data* data);
}
