// Namespace: a scope guard over the Lua stack while classes are bound. It
// pushes the global table, enters nested tables by name (made when missing),
// and counts every value pushed in its name; destroying it pops that count. A
// count larger than the stack holds means somebody popped what was not theirs:
// the destructor then throws std::runtime_error("invalid stack").
#pragma once

#include <lua.hpp>

#include <string>

namespace luabridge::detail
{
class Namespace
{
public:
    // Pushes the global table.
    explicit Namespace(lua_State* state);
    // Pops what was pushed; throws "invalid stack" when the stack holds less.
    ~Namespace() noexcept(false);
    Namespace(const Namespace&) = delete;
    Namespace& operator=(const Namespace&) = delete;

    // Pushes the table `name` of the current table, making it when missing.
    void Enter(const std::string& name);
    // Counts `count` more values pushed by the caller in this scope.
    void Pushed(int count) { m_Count += count; }
    // Absolute index of the innermost table entered.
    int Table() const { return m_Table; }
    // The number of values this scope will pop.
    int Count() const { return m_Count; }

    // The state.
    lua_State* const L;

private:
    int m_Count = 0;
    int m_Table = 0;
};
}
