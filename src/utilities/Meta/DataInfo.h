// Meta::DataInfo: what members, properties and methods have in common: a name
// (as files, the editor and scripts say it), a type, help text, and whether
// scripts see it and the text format saves it.
//
// Help text is given just before the thing it speaks of: registration code puts
// it in a pending buffer (AddPendingDescription), and the next DataInfo made
// takes it. A name holding "m_" loses everything up to and including the first
// "m_", as long as one is left: m_Position is named "Position", Team_m_Index "Index".
#pragma once

#include <string>

namespace Meta
{
class Data;

// Appends help text for the next member, property or method (behind a line end if some waits).
void AddPendingDescription(const std::string& text);
// Cuts a registered name: everything up to and including the first "m_" goes, while one is left.
std::string CutMemberName(const std::string& name);
// Reports every saved member and property whose type has no text form and stops saving it,
// so that no file gets a name without a value. Run once every registration has run.
void CheckTextForms();

class DataInfo
{
public:
    // Takes the pending help text and the cut name.
    DataInfo(const std::string& name, Data* type);
    virtual ~DataInfo() = default;

    // True if the value's type has a text form now (every class it is made of is registered).
    virtual bool HasTextForm() const { return true; }

    // Visible to scripts.
    bool m_Script = false;
    // Saved by the text format; also what the editor shows and comparison looks at.
    bool m_Serialize = false;
    // Type of the value.
    Data* m_Type = nullptr;
    // Help text.
    std::string m_Description;
    // Name as files, the editor and scripts say it.
    std::string m_Name;
    // Kind of record, free for its users.
    int m_Kind = 0;
    // Extra flag, free for its users.
    bool m_Flag = false;
};
}
