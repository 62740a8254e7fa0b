// The Lua binding beside a plain hand-written Lua C API binding of the same
// classes, in one run: float member get and set, a method call with three
// float arguments, Vector3D construction, Vector3D addition and the read of a
// member of a math type. Each iteration runs a Lua loop of kLoop operations;
// the loop is the same on both sides, so the ratio printed at the end compares
// the bindings. Float member get and set also count their allocations, native
// (operator new) and Lua (bytes of the Lua heap, the collector stopped).
#include "engine/Math/Vector3D.h"
#include "utilities/Meta/Registration.h"
#include "utilities/lua/luabridge/LuaBinding.h"

#include <benchmark/benchmark.h>
#include <lua.hpp>

#include <cstdint>
#include <cstring>
#include <string>

std::uint64_t BenchAllocationCount();

namespace
{
constexpr int kLoop = 1000;

// A class with a float field and a method taking three floats.
class BenchBody
{
public:
    float m_Speed = 1.0f;
    Math::Vector3D m_Position;
    void Move(float x, float y, float z)
    {
        m_Position.x += x;
        m_Position.y += y;
        m_Position.z += z;
    }
};
}

META_REGISTER(BenchBody)
{
    CONSTRUCTOR();
    MEMBER_FLAGS(m_Speed, false, true, "");
    MEMBER_FLAGS(m_Position, false, true, "");
    METHOD(Move);
}

namespace
{
// ---- The hand-written binding: one metatable per class, fields by name in __index and __newindex.
const char* const kHandVector = "HandVector";
const char* const kHandBody = "HandBody";

Math::Vector3D* CheckVector(lua_State* L, int index)
{
    return static_cast<Math::Vector3D*>(luaL_checkudata(L, index, kHandVector));
}

void PushHandVector(lua_State* L, const Math::Vector3D& value)
{
    new (lua_newuserdata(L, sizeof(Math::Vector3D))) Math::Vector3D(value);
    luaL_getmetatable(L, kHandVector);
    lua_setmetatable(L, -2);
}

int HandVectorNew(lua_State* L)
{
    PushHandVector(L, Math::Vector3D(static_cast<float>(luaL_optnumber(L, 1, 0)),
                                     static_cast<float>(luaL_optnumber(L, 2, 0)),
                                     static_cast<float>(luaL_optnumber(L, 3, 0))));
    return 1;
}

float* VectorField(Math::Vector3D* v, const char* key)
{
    if (key[0] != '\0' && key[1] == '\0')
        switch (key[0])
        {
        case 'x': return &v->x;
        case 'y': return &v->y;
        case 'z': return &v->z;
        }
    return nullptr;
}

int HandVectorIndex(lua_State* L)
{
    Math::Vector3D* v = CheckVector(L, 1);
    if (float* field = VectorField(v, luaL_checkstring(L, 2)))
    {
        lua_pushnumber(L, *field);
        return 1;
    }
    lua_pushvalue(L, 2);
    lua_rawget(L, lua_upvalueindex(1));
    return 1;
}

int HandVectorNewIndex(lua_State* L)
{
    Math::Vector3D* v = CheckVector(L, 1);
    float* field = VectorField(v, luaL_checkstring(L, 2));
    if (!field)
        return luaL_error(L, "no field %s", lua_tostring(L, 2));
    *field = static_cast<float>(luaL_checknumber(L, 3));
    return 0;
}

int HandVectorAdd(lua_State* L)
{
    PushHandVector(L, *CheckVector(L, 1) + *CheckVector(L, 2));
    return 1;
}

int HandVectorGc(lua_State* L)
{
    CheckVector(L, 1)->~Vector3D();
    return 0;
}

BenchBody* CheckBody(lua_State* L, int index)
{
    return *static_cast<BenchBody**>(luaL_checkudata(L, index, kHandBody));
}

int HandBodyMove(lua_State* L)
{
    CheckBody(L, 1)->Move(static_cast<float>(luaL_checknumber(L, 2)), static_cast<float>(luaL_checknumber(L, 3)),
                          static_cast<float>(luaL_checknumber(L, 4)));
    return 0;
}

int HandBodyIndex(lua_State* L)
{
    BenchBody* body = CheckBody(L, 1);
    const char* key = luaL_checkstring(L, 2);
    if (std::strcmp(key, "Speed") == 0)
    {
        lua_pushnumber(L, body->m_Speed);
        return 1;
    }
    if (std::strcmp(key, "Position") == 0)
    {
        PushHandVector(L, body->m_Position);
        return 1;
    }
    lua_pushvalue(L, 2);
    lua_rawget(L, lua_upvalueindex(1));
    return 1;
}

int HandBodyNewIndex(lua_State* L)
{
    BenchBody* body = CheckBody(L, 1);
    const char* key = luaL_checkstring(L, 2);
    if (std::strcmp(key, "Speed") != 0)
        return luaL_error(L, "no field %s", key);
    body->m_Speed = static_cast<float>(luaL_checknumber(L, 3));
    return 0;
}

void OpenHandBinding(lua_State* L)
{
    luaL_newmetatable(L, kHandVector);
    lua_newtable(L);
    lua_pushcclosure(L, &HandVectorIndex, 1);
    lua_setfield(L, -2, "__index");
    lua_pushcfunction(L, &HandVectorNewIndex);
    lua_setfield(L, -2, "__newindex");
    lua_pushcfunction(L, &HandVectorAdd);
    lua_setfield(L, -2, "__add");
    lua_pushcfunction(L, &HandVectorGc);
    lua_setfield(L, -2, "__gc");
    lua_pop(L, 1);
    lua_register(L, kHandVector, &HandVectorNew);

    luaL_newmetatable(L, kHandBody);
    lua_newtable(L);
    lua_pushcfunction(L, &HandBodyMove);
    lua_setfield(L, -2, "Move");
    lua_pushcclosure(L, &HandBodyIndex, 1);
    lua_setfield(L, -2, "__index");
    lua_pushcfunction(L, &HandBodyNewIndex);
    lua_setfield(L, -2, "__newindex");
    lua_pop(L, 1);
}

void PushHandBody(lua_State* L, BenchBody* body)
{
    *static_cast<BenchBody**>(lua_newuserdata(L, sizeof(BenchBody*))) = body;
    luaL_getmetatable(L, kHandBody);
    lua_setmetatable(L, -2);
}

// ---- The measurement: one state with both bindings, a body and a vector as globals.
class Fixture
{
public:
    Fixture()
    {
        L = luaL_newstate();
        luaL_openlibs(L);
        luabridge::LuaBinding::Get().BindAll(L);
        OpenHandBinding(L);
        luabridge::Stack<BenchBody*>::Push(L, &m_Body);
        lua_setglobal(L, "body");
        PushHandBody(L, &m_Body);
        lua_setglobal(L, "handBody");
        luaL_dostring(L, "vector = Vector3D(1, 2, 3) handVector = HandVector(1, 2, 3)");
    }
    ~Fixture() { lua_close(L); }

    // Compiles `body` inside a loop of kLoop turns with the loop variable i, as a function kept in the registry.
    int Compile(const std::string& body)
    {
        const std::string code = "return function() local sink = 0 for i = 1, " + std::to_string(kLoop) +
                                 " do " + body + " end return sink end";
        if (luaL_dostring(L, code.c_str()) != 0)
        {
            m_Error = lua_tostring(L, -1);
            lua_pop(L, 1);
            return LUA_NOREF;
        }
        return luaL_ref(L, LUA_REGISTRYINDEX);
    }

    // Runs a compiled loop once; false on a Lua error.
    bool Call(int function)
    {
        lua_rawgeti(L, LUA_REGISTRYINDEX, function);
        if (lua_pcall(L, 0, 1, 0) != 0)
        {
            m_Error = lua_tostring(L, -1);
            lua_pop(L, 1);
            return false;
        }
        lua_pop(L, 1);
        return true;
    }

    lua_State* L = nullptr;
    BenchBody m_Body;
    std::string m_Error;
};

// Runs `body` in a loop per iteration; with `countAllocations`, reports allocations per operation.
void RunLoop(benchmark::State& state, const std::string& body, bool countAllocations = false)
{
    Fixture fixture;
    const int function = fixture.Compile(body);
    if (function == LUA_NOREF || !fixture.Call(function))
    {
        state.SkipWithError(fixture.m_Error.c_str());
        return;
    }
    lua_gc(fixture.L, LUA_GCCOLLECT, 0);
    if (countAllocations)
        lua_gc(fixture.L, LUA_GCSTOP, 0);
    std::uint64_t allocations = 0;
    long long luaBytes = 0;
    for (auto _ : state)
    {
        const std::uint64_t before = BenchAllocationCount();
        const long long luaBefore = lua_gc(fixture.L, LUA_GCCOUNT, 0) * 1024LL + lua_gc(fixture.L, LUA_GCCOUNTB, 0);
        if (!fixture.Call(function))
        {
            state.SkipWithError(fixture.m_Error.c_str());
            return;
        }
        luaBytes += lua_gc(fixture.L, LUA_GCCOUNT, 0) * 1024LL + lua_gc(fixture.L, LUA_GCCOUNTB, 0) - luaBefore;
        allocations += BenchAllocationCount() - before;
        if (!countAllocations)
            lua_gc(fixture.L, LUA_GCSTEP, 0);
    }
    state.SetItemsProcessed(state.iterations() * kLoop);
    if (countAllocations)
    {
        const double operations = static_cast<double>(state.iterations()) * kLoop;
        state.counters["native_allocs_per_op"] = static_cast<double>(allocations) / operations;
        state.counters["lua_bytes_per_op"] = static_cast<double>(luaBytes) / operations;
    }
}

void FloatMemberGet(benchmark::State& state)
{
    RunLoop(state, "sink = sink + body.Speed", true);
}
void FloatMemberGet_Reference(benchmark::State& state)
{
    RunLoop(state, "sink = sink + handBody.Speed", true);
}
void FloatMemberSet(benchmark::State& state)
{
    RunLoop(state, "body.Speed = i", true);
}
void FloatMemberSet_Reference(benchmark::State& state)
{
    RunLoop(state, "handBody.Speed = i", true);
}
void MethodThreeFloats(benchmark::State& state)
{
    RunLoop(state, "body:Move(1, 2, 3)");
}
void MethodThreeFloats_Reference(benchmark::State& state)
{
    RunLoop(state, "handBody:Move(1, 2, 3)");
}
void VectorConstruction(benchmark::State& state)
{
    RunLoop(state, "local v = Vector3D(i, 2, 3)");
}
void VectorConstruction_Reference(benchmark::State& state)
{
    RunLoop(state, "local v = HandVector(i, 2, 3)");
}
void VectorAddition(benchmark::State& state)
{
    RunLoop(state, "local v = vector + vector");
}
void VectorAddition_Reference(benchmark::State& state)
{
    RunLoop(state, "local v = handVector + handVector");
}
void MathMemberRead(benchmark::State& state)
{
    RunLoop(state, "local p = body.Position");
}
void MathMemberRead_Reference(benchmark::State& state)
{
    RunLoop(state, "local p = handBody.Position");
}
}

BENCHMARK(FloatMemberGet);
BENCHMARK(FloatMemberGet_Reference);
BENCHMARK(FloatMemberSet);
BENCHMARK(FloatMemberSet_Reference);
BENCHMARK(MethodThreeFloats);
BENCHMARK(MethodThreeFloats_Reference);
BENCHMARK(VectorConstruction);
BENCHMARK(VectorConstruction_Reference);
BENCHMARK(VectorAddition);
BENCHMARK(VectorAddition_Reference);
BENCHMARK(MathMemberRead);
BENCHMARK(MathMemberRead_Reference);
