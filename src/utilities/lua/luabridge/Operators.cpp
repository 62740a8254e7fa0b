#include "utilities/lua/luabridge/Operators.h"

#include <unordered_map>

namespace luabridge
{
const std::string& LuaNameOf(const std::string& name)
{
    // Built once, on first use; looked up by exact spelling.
    static const auto* table = new std::unordered_map<std::string, std::string>{
        {"operator+", "__add"}, {"operator-", "__sub"}, {"operator-()", "__unm"}, {"operator*", "__mul"},
        {"operator/", "__div"}, {"operator%", "__mod"}, {"operator==", "__eq"},  {"operator<", "__lt"},
        {"operator=", "assign"}, {"operator<=", "__le"},
    };
    auto found = table->find(name);
    return found == table->end() ? name : found->second;
}
}
