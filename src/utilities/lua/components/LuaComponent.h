// LuaComponent: a component written in Lua. Every ".lua" file under
// "LuaScripts/Components/" is a component type of its own, named after the file
// and backed by this one native class; GetName and GetType give the script's
// name and its own type id, so objects find, add and remove script components
// as they do native ones:
//
//   GameObject* ship = ...;
//   ship->AddComponent("Spinner");                // clones the Spinner prototype
//   auto* spinner = static_cast<LuaComponent*>(ship->GetComponent("Spinner"));
//   spinner->GetAny("Speed");                      // the variable, as a Meta::Any
//
// and from Lua, `ship.Spinner.Speed = 2`.
//
// The script runs in a private environment per instance, holding "owner" (the
// GameObject), "this" (the component) and "RegisterFunction" (caches a further
// entry for CallFunction). Its entry points are called with no arguments:
// "Initialize" when the component initializes and after each reload,
// "PostInitialize" at the late start (and after a reload of a live object),
// "Destroy" when it uninitializes. Variables declared in the script's comment
// block (see ScriptComponentType) live in the component, so they survive
// reloads and are saved as the differences from the type's prototype.
#pragma once

#include "engine/Component.h"
#include "utilities/Meta/Any.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

class LuaScript;
class LuaSystem;
class LuaProperty;
struct ScriptComponentType;
struct ScriptVariable;
struct lua_State;

class LuaComponent : public Component
{
public:
    LuaComponent() = default;
    ~LuaComponent() override;
    LuaComponent(const LuaComponent&) = delete;
    LuaComponent& operator=(const LuaComponent&) = delete;

    // Runs the script in a fresh environment (when it has a file) and calls its "Initialize".
    void Initialize() override;
    // Calls the script's "PostInitialize".
    void LateInitialize() override;
    // A new component of the same type with copies of the variables; not initialized.
    Component* Clone() const override;
    // The script's name.
    const std::string& GetName() const override { return m_ScriptName; }
    // The script type's own id.
    unsigned GetType() const override { return m_TypeId; }
    // Writes the variables that differ from `other` (the prototype when null) as a block under `name`.
    void Write(Util::Serializer& serializer, const std::string& name, const Component* other, bool force,
               bool forceEmpty) const override;
    // True if `other` is of the same script type and every variable compares equal through the
    // global script's CompareProperties.
    bool Compare(const Component* other) const override;
    // Calls the script's "Destroy".
    void Uninitialize() override;
    Meta::Data* GetMeta() const override;

    // The variable `name`; a fatal dialog and a placeholder when the script declares none.
    Meta::Any& GetAny(const std::string& name);
    // The variable `name`, or null.
    Meta::Any* FindVariable(std::string_view name);
    const Meta::Any* FindVariable(std::string_view name) const;
    // The LuaProperty of variable `name`, or null.
    const LuaProperty* FindVariableProperty(std::string_view name) const;
    // Calls the cached script function `name` with the arguments 2..top of L; the number of results.
    int CallFunction(lua_State* L, const std::string& name);
    // Dynamic-property reading hook: pushes variable `name` (nil when undeclared); returns 1. From
    // another Lua universe (a lane) it takes the Lua system's lock; the main thread holds it already.
    int GetProperty(lua_State* L, const std::string& name);
    // Dynamic-property writing hook: sets variable `name` to the value on top of L, which may be a
    // lane's state; pushes false and returns 1 for an undeclared name, else returns 0.
    int SetProperty(lua_State* L, const std::string& name);
    // Runs the script (unless `alreadyRun`), caches its entry points, calls "Initialize", and
    // "PostInitialize" too when the owner is already initialized (a reload of a live object).
    void OnScriptLoaded(bool alreadyRun = false);
    // The script of this instance; null before Initialize or for a prototype.
    LuaScript* GetScript() const { return m_Script.get(); }

    // The global script's CompareProperties(a, b) on two values of one property; true if equal.
    bool CompareValues(const LuaProperty& property, Meta::Any& a, Meta::Any& b) const;
    // True if the variable of hash `hash` compares equal in both components (or neither has it).
    bool VariableEquals(const LuaComponent& other, unsigned hash) const;
    // The Lua system that runs this component's script.
    LuaSystem& System() const;

    // Full path of the script.
    std::string m_FilePath;
    // File name without extension: the type's name.
    std::string m_ScriptName;
    // The script type's own id, taken from the registry's counter of type ids.
    unsigned m_TypeId = 0;
    // One value per declared variable, in block order.
    std::vector<Meta::Any> m_Values;
    // The shared record of the script type.
    ScriptComponentType* m_VariableInfo = nullptr;
    // The Lua system whose prototype this component came from; null for the program's one.
    LuaSystem* m_System = nullptr;

private:
    // The declared variable `name` that this component holds a value for, or null.
    const ScriptVariable* FindScriptVariable(std::string_view name) const;
    // Fills a new environment: "owner", "this", "RegisterFunction".
    void SetupEnvironment(lua_State* L);
    // Calls the cached entry point `name` if the script defines it.
    void CallEntryPoint(std::string_view name);

    std::unique_ptr<LuaScript> m_Script;
};
