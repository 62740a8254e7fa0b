#include "utilities/Meta/Data.h"

#include "engine/Log.h"
#include "utilities/Meta/ClassInfo.h"
#include "utilities/Meta/Member.h"
#include "utilities/Meta/Method.h"
#include "utilities/Meta/NameHash.h"
#include "utilities/Meta/Property.h"
#include "utilities/Serialization/TextValue.h"


namespace Meta
{
namespace
{
struct NameTable
{
    NameMap<Data*> byName;
    std::vector<Data*> inOrder;
    unsigned nextId = 0;
};

void RegisterPrimitives();

// Made on first use, with the primitive types first: registrations run during
// static initialisation, in any order.
NameTable& Table()
{
    static NameTable* table = nullptr;
    if (!table)
    {
        table = new NameTable();
        RegisterPrimitives();
    }
    return *table;
}

template <class T>
void Primitive(const char* name)
{
    static DerivedClassInfo<T> info;
    Data* data = Get<T>();
    data->Set(name, sizeof(T), &info, true);
    Util::SetTextForm<T>(*data);
}

void RegisterPrimitives()
{
    Primitive<int>("int");
    Primitive<unsigned>("unsigned");
    Primitive<float>("float");
    Primitive<bool>("bool");
    Primitive<double>("double");
    Primitive<char>("char");
    Primitive<short>("short");
    Primitive<unsigned char>("u_char");
    Primitive<unsigned short>("u_short");
    Primitive<std::string>("string");
}

std::string_view WithoutConst(std::string_view name)
{
    constexpr std::string_view prefix = "const ";
    if (name.substr(0, prefix.size()) == prefix)
        name.remove_prefix(prefix.size());
    return name;
}
}

void Data::Set(const std::string& name, unsigned size, ClassInfo* info, bool isPrimitive, bool isEnum)
{
    NameTable& table = Table();
    m_Name = name;
    m_Size = size;
    m_Info = info;
    m_IsPrimitive = isPrimitive;
    m_IsEnum = isEnum;
    m_Id = table.nextId++;
    table.byName.emplace(name, this);
    table.inOrder.push_back(this);
}

unsigned TakeTypeId()
{
    return Table().nextId++;
}

void Data::AddParent(Data* parent)
{
    if (parent == this)
        FATAL_ERROR("Why are you parenting yourself?");
    m_Parent = parent;
}

void Data::AddMember(Member* member)
{
    m_Members.Add(member->m_Name, std::shared_ptr<Member>(member));
}

void Data::AddProperty(Property* property)
{
    m_Properties.Add(property->m_Name, std::shared_ptr<Property>(property));
}

void Data::AddMethod(Method* method)
{
    m_Methods.Add(method->m_Name, std::shared_ptr<Method>(method));
}

void Data::AddOverload(Method* method)
{
    auto* forms = m_Overloads.Find(method->m_Name);
    if (!forms)
    {
        m_Overloads.Add(method->m_Name, std::make_shared<std::vector<std::shared_ptr<Method>>>());
        forms = m_Overloads.Find(method->m_Name);
    }
    forms->push_back(std::shared_ptr<Method>(method));
}

Member* Data::FindMember(std::string_view name) const
{
    for (const Data* type = this; type; type = type->m_Parent)
        if (Member* member = type->m_Members.Find(name))
            return member;
    return nullptr;
}

Property* Data::FindProperty(std::string_view name) const
{
    for (const Data* type = this; type; type = type->m_Parent)
        if (Property* property = type->m_Properties.Find(name))
            return property;
    return nullptr;
}

Method* Data::FindMethod(std::string_view name) const
{
    for (const Data* type = this; type; type = type->m_Parent)
        if (Method* method = type->m_Methods.Find(name))
            return method;
    return nullptr;
}

const std::vector<std::shared_ptr<Method>>* Data::FindOverloads(std::string_view name) const
{
    for (const Data* type = this; type; type = type->m_Parent)
        if (auto* forms = type->m_Overloads.Find(name))
            return forms;
    return nullptr;
}

bool Data::IsDerivedFrom(const Data* other) const
{
    for (const Data* type = m_Parent; type; type = type->m_Parent)
        if (type == other)
            return true;
    return false;
}

void* Data::New() const
{
    return m_Info ? m_Info->New() : nullptr;
}

void Data::WriteValue(Util::Serializer& serializer, const void* value) const
{
    if (m_WriteValue)
        m_WriteValue(serializer, value);
}

void Data::ReadValue(Util::Serializer& serializer, void* value) const
{
    if (m_ReadValue)
        m_ReadValue(serializer, value);
    else
        serializer.SkipValue();
}

Data* FindData(std::string_view name)
{
    NameTable& table = Table();
    auto found = table.byName.find(WithoutConst(name));
    return found == table.byName.end() ? nullptr : found->second;
}

const std::vector<Data*>& AllTypes()
{
    return Table().inOrder;
}
}

namespace Meta
{
namespace
{
// Stops saving `info` of `type` when its value's type has no text form, and adds a line for it to `report`.
void RefuseWithoutTextForm(const Data& type, DataInfo& info, const char* kind, std::string& report)
{
    if (!info.m_Serialize || info.HasTextForm())
        return;
    info.m_Serialize = false;
    const std::string valueType = info.m_Type && !info.m_Type->GetName().empty() ? info.m_Type->GetName()
                                                                                 : std::string("an unregistered type");
    report += std::string("\nThe ") + kind + " " + type.GetName() + "." + info.m_Name + " is of " + valueType +
              ", which has no text form.";
}
}

void CheckTextForms()
{
    std::string report;
    for (Data* type : AllTypes())
    {
        for (const auto& [name, member] : type->m_Members.Items())
            RefuseWithoutTextForm(*type, *member, "member", report);
        for (const auto& [name, property] : type->m_Properties.Items())
            RefuseWithoutTextForm(*type, *property, "property", report);
    }
    if (!report.empty())
        FATAL_ERROR("These values are registered to be saved, but are not: register their types, or register "
                    "them as not saved." + report);
}
}
