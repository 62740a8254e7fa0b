#include "utilities/Serialization/TextSamples.h"

#include "utilities/Meta/Registration.h"
#include "utilities/Serialization/Serializer.h"

META_REGISTER_ENUM(SampleMode, {{"Opaque", 0}, {"Additive", 1}, {"Multiply", 2}});

META_REGISTER(SampleInner)
{
    MEMBER(m_Count, "How many.");
    MEMBER(m_Label, "What it is called.");
    MEMBER(m_Offset, "Where it sits.");
}

META_REGISTER(AllForms)
{
    DERIVE(Component);
    MEMBER(m_Int, "");
    MEMBER(m_Unsigned, "");
    MEMBER(m_Short, "");
    MEMBER(m_UShort, "");
    MEMBER(m_Float, "");
    MEMBER(m_Double, "");
    MEMBER(m_Bool, "");
    MEMBER(m_Char, "");
    MEMBER(m_UChar, "");
    MEMBER(m_Text, "");
    MEMBER(m_Mode, "");
    MEMBER(m_Vector2, "");
    MEMBER(m_Vector3, "");
    MEMBER(m_Vector4, "");
    MEMBER(m_Point2, "");
    MEMBER(m_Point3, "");
    MEMBER(m_Point4, "");
    MEMBER(m_Rotation, "");
    MEMBER(m_Tint, "");
    MEMBER(m_PairTest, "");
    MEMBER(m_Sizes, "");
    MEMBER(m_Names, "");
    MEMBER(m_Weights, "");
    MEMBER(m_Modes, "");
    MEMBER(m_Grid, "");
    MEMBER(m_Ids, "");
    MEMBER(m_Words, "");
    MEMBER(m_Flags, "");
    MEMBER(m_Scores, "");
    MEMBER(m_Samples, "");
    MEMBER(m_Places, "");
    MEMBER(m_Inner, "");
    MEMBER(m_Inners, "");
    MEMBER_FLAGS(m_Secret, false, true, "Not saved.");
    PROPERTY(Radius, GetRadius, SetRadius, "Set through a setter that counts its calls.");
    PROPERTY_GET(Area, GetArea, "Read-only.");
}

META_REGISTER(MoreForms)
{
    DERIVE(AllForms);
    MEMBER(m_Extra, "");
    PROPERTY(Extra, GetExtra, SetExtra, "The same name as the member, which wins.");
}

META_REGISTER(Unparented)
{
    MEMBER(m_Value, "");
}

Meta::Data* AllForms::GetMeta() const
{
    return Meta::Get<AllForms>();
}

Meta::Data* MoreForms::GetMeta() const
{
    return Meta::Get<MoreForms>();
}

Meta::Data* Unparented::GetMeta() const
{
    return Meta::Get<Unparented>();
}

void ReadAndWriteBack(const std::string& input)
{
    if (input.empty())
        return;
    Util::SetTolerantRead((input[0] & 1) != 0);
    Util::Serializer reader;
    reader.OpenText(input.substr(1), "fuzz.txt");
    MoreForms forms;
    reader.ReadObject(forms.GetMeta(), &forms);

    Util::Serializer writer;
    writer.OpenText("");
    const MoreForms reference;
    forms.Write(writer, forms.GetName(), &reference, true, false);
    Util::SetTolerantRead(false);
}
