// Util::Serializer: the reader and writer of the engine's one data format, the
// line-oriented text of archetypes, rooms and settings.
//
// A file is member lines ("Radius 2.5"), blocks (a name line, "{", deeper lines,
// "}") and "//" comments. Names are the registry's names; values are written and
// read by the type's text form (TextValue.h). The reader goes token by token with
// the stream's own extraction and tolerates junk where it can; the writer saves
// a component only where it differs from a reference object.
//
//   Util::Serializer file;
//   if (file.OpenRead(path))
//       file.ReadObject(Meta::Get<Settings>(), &settings);
//
// A serializer is made on the stack for one file and used by one thread. It can
// also work on text in memory (OpenText), which tests and tools use.
#pragma once

#include <fstream>
#include <iostream>
#include <sstream>
#include <string>

namespace Meta
{
class Data;
}
class Component;

namespace Util
{
// True for the characters that separate tokens: space, tab, line feed and carriage return.
inline bool IsBlank(int c)
{
    return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Sets the process-wide tolerant-read flag: unknown names are skipped without a report.
void SetTolerantRead(bool tolerant);
// True while the tolerant-read flag is set.
bool IsTolerantRead();

class Serializer
{
public:
    Serializer();
    // Closes the file.
    ~Serializer();
    Serializer(const Serializer&) = delete;
    Serializer& operator=(const Serializer&) = delete;

    // Opens a file for input at depth 0; true if it opened.
    bool OpenRead(const std::string& path);
    // Opens a file for output, emptying it; true if it opened.
    bool OpenWrite(const std::string& path);
    // Opens a file for output at its end; true if it opened.
    bool OpenAppend(const std::string& path);
    // Works on `text` in memory, for reading and writing; `name` stands for the path in messages.
    void OpenText(const std::string& text, const std::string& name = "(text)");
    // The text in memory after OpenText, with what was written to it.
    std::string GetText() const;
    // Closes the file and clears the state.
    void Close();
    // True while a file or text is open.
    bool IsOpen() const;

    // Reads characters until `c` (true) or the end of the input (false), dropping
    // everything else, "//" comments included.
    bool ReadUntil(char c);
    // Reads tokens until one holds `text`, then puts back what follows it; false at the end.
    bool FindLine(const std::string& text);
    // Skips one value: a braced block, a quoted string or a plain token.
    void SkipValue();
    // Reads one "{ ... }" block of member lines into `object` of type `type`.
    bool ReadObject(const Meta::Data* type, void* object);
    // Writes one component block: what differs from `other` (everything when `other` is
    // null), or nothing at all when nothing differs unless `force` or `isNew`.
    void Write(const std::string& name, const Component* component, const Component* other, bool force,
               bool isNew);
    // Writes every member and property of `object` and its bases as a block value, without comparison.
    void WriteObjectBlock(const Meta::Data* type, const void* object);
    // Reads one quoted string; "\n" written as backslash and n becomes a line end.
    void ReadStringHelper(std::string& text);
    // Writes the indent of the current depth: two spaces a level.
    void WriteIndent();
    // Starts a member line: the indent, the name and a space.
    void WriteName(const std::string& name);
    // Puts the last `count` characters read back on the stream.
    void PutBack(std::size_t count);
    // True once a read failed: further reads of the block give nothing.
    bool Failed() const { return m_Stream.fail(); }
    // Counts one more level of nested object blocks being read; past kMaxNesting it reports,
    // skips the block and gives false. Each true is matched by a LeaveNesting.
    bool EnterNesting();
    // Ends a level counted by EnterNesting.
    void LeaveNesting() { --m_Nesting; }

    // Deepest nesting of object blocks that a read follows: a file can't run the reader out of stack.
    static constexpr unsigned kMaxNesting = 64;

    // Current indentation level.
    unsigned m_Depth = 0;
    // The stream over the file or the text.
    std::iostream m_Stream;
    // Path of the file, for messages.
    std::string m_FileName;

private:
    void Reset(std::streambuf* buffer, const std::string& name);
    // ReadObject's block, once the nesting is counted.
    bool ReadBlock(const Meta::Data* type, void* object);
    bool OpenFile(const std::string& path, std::ios::openmode mode);

    std::filebuf m_File;
    std::stringbuf m_Text;
    bool m_Writing = false;
    // Object blocks being read, one inside the other.
    unsigned m_Nesting = 0;
};
}
