// The binders a registration leaves for the binding, each with one operation:
//
//   Class<T>                 binds a class with no base
//   DerivedClass<T, Base>    binds a class whose tables have Base's as parent
//                            (its flag m_NeedsBase is 1: it waits for its base)
//   Constructor<T, Args...>  adds one constructor of T to the class being bound;
//                            T(...) in a script tries them in order of
//                            registration, and arguments that fit none make
//                            no object and raise no error
//   EnumLua                  binds an enumeration as a table of read-only
//                            integers, e.g. ScreenMode.Toggle
//
// Binding a class fills its tables from its registry record: properties,
// members, single methods, overload sets (one entry per name that tries each
// form in order), then the constructors and the __towatch entry.
#pragma once

#include "utilities/lua/luabridge/MethodBinding.h"
#include "utilities/lua/luabridge/Stack.h"
#include "utilities/lua/luabridge/detail/Namespace.h"

#include <memory>
#include <vector>

namespace Meta
{
class Data;
class Property;
}

namespace luabridge
{
// Constructor candidates of one class, tried in order.
using Candidates = std::vector<lua_CFunction>;

class ConstructorBinder
{
public:
    virtual ~ConstructorBinder() = default;
    // Adds the constructor to the class whose static table's metatable is on top of the stack.
    virtual void Bind(lua_State* L) const = 0;
};

class ClassBinder
{
public:
    virtual ~ClassBinder() = default;
    // Binds `data` in the namespace `scope`, with `constructors`.
    virtual void Bind(detail::Namespace& scope, Meta::Data& data,
                      const std::vector<std::shared_ptr<ConstructorBinder>>& constructors) const = 0;
    // 1 when the class must wait for its base to be bound first.
    unsigned char m_NeedsBase = 0;
};

namespace detail
{
// The constructor candidates of T.
template <class T>
Candidates& ConstructorsOf()
{
    static Candidates candidates;
    return candidates;
}

// Tries the candidates of upvalue 1 in order; -1 when none fits, else the number of results.
int Dispatch(lua_State* L, const Candidates& candidates);
// __call of a static table: constructs through the candidate list of upvalue 1; nothing when none fits.
int CallConstructors(lua_State* L);
// Sets __call of the metatable on top to the dispatcher over `candidates`.
void SetCallDispatcher(lua_State* L, Candidates* candidates);
// Binds `data`: opens its tables (with those under `parentKey` as parents, when not null), fills them, adds
// the constructors, and leaves const, class, static metatable and static table counted in `scope`.
void BindClass(Namespace& scope, Meta::Data& data, const void* classKey, const void* parentKey,
               const std::vector<std::shared_ptr<ConstructorBinder>>& constructors, Candidates& candidates);
}

// Adds `property`, registered after `data` was bound, to `data`'s class in L; false (nothing done)
// when the class is not bound in L: a later bind of the class takes the property with the rest.
bool BindLateProperty(lua_State* L, Meta::Data& data, const Meta::Property& property);

template <class T>
class Class : public ClassBinder
{
public:
    void Bind(detail::Namespace& scope, Meta::Data& data,
              const std::vector<std::shared_ptr<ConstructorBinder>>& constructors) const override
    {
        detail::BindClass(scope, data, detail::ClassKey<T>(), nullptr, constructors, detail::ConstructorsOf<T>());
    }
};

template <class T, class Base>
class DerivedClass : public ClassBinder
{
public:
    DerivedClass() { m_NeedsBase = 1; }
    void Bind(detail::Namespace& scope, Meta::Data& data,
              const std::vector<std::shared_ptr<ConstructorBinder>>& constructors) const override
    {
        detail::BindClass(scope, data, detail::ClassKey<T>(), detail::ClassKey<Base>(), constructors,
                          detail::ConstructorsOf<T>());
    }
};

template <class T, class... Args>
class Constructor : public ConstructorBinder
{
public:
    void Bind(lua_State* L) const override
    {
        detail::ConstructorsOf<T>().push_back(&Candidate);
        detail::SetCallDispatcher(L, &detail::ConstructorsOf<T>());
    }

    // Builds a T from the arguments after the static table, or answers -1 when they don't fit.
    static int Candidate(lua_State* L)
    {
        using Indices = std::index_sequence_for<Args...>;
        if (!detail::ArgumentsFit<Args...>(L, 2, Indices()))
            return -1;
        return Make(L, Indices());
    }

private:
    template <std::size_t... I>
    static int Make(lua_State* L, std::index_sequence<I...>)
    {
        if constexpr (std::is_constructible_v<T, Args...> && !std::is_abstract_v<T>)
            UserdataValue<T>::Push(L, detail::ClassKey<T>(), Stack<Args>::Get(L, 2 + static_cast<int>(I))...);
        else
            lua_pushnil(L);
        return 1;
    }
};

class EnumLua : public ClassBinder
{
public:
    void Bind(detail::Namespace& scope, Meta::Data& data,
              const std::vector<std::shared_ptr<ConstructorBinder>>& constructors) const override;
};
}
