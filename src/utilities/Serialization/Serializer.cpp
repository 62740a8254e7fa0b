#include "utilities/Serialization/Serializer.h"

#include "engine/FileWatcher.h"
#include "engine/Files.h"
#include "engine/Log.h"

#include <limits>
#include <locale>

namespace Util
{
namespace
{
bool g_TolerantRead = false;
}

void SetTolerantRead(bool tolerant)
{
    g_TolerantRead = tolerant;
}

bool IsTolerantRead()
{
    return g_TolerantRead;
}

Serializer::Serializer() : m_Stream(nullptr)
{
}

Serializer::~Serializer()
{
    Close();
}

void Serializer::Reset(std::streambuf* buffer, const std::string& name)
{
    m_Stream.rdbuf(buffer);
    m_Stream.clear();
    m_Stream.imbue(std::locale::classic());
    m_Stream.flags(std::ios::dec | std::ios::skipws | std::ios::boolalpha);
    m_Stream.precision(6);
    m_Depth = 0;
    m_Nesting = 0;
    m_FileName = name;
}

bool Serializer::OpenFile(const std::string& path, std::ios::openmode mode)
{
    Close();
    // One spelling per file, so the watcher knows the write as its own.
    const std::string normal = NormalizePath(path);
    if (!m_File.open(normal, mode))
        return false;
    Reset(&m_File, normal);
    m_Writing = (mode & std::ios::out) != 0;
    return true;
}

bool Serializer::OpenRead(const std::string& path)
{
    return OpenFile(path, std::ios::in);
}

bool Serializer::OpenWrite(const std::string& path)
{
    return OpenFile(path, std::ios::out | std::ios::trunc);
}

bool Serializer::OpenAppend(const std::string& path)
{
    return OpenFile(path, std::ios::out | std::ios::app);
}

void Serializer::OpenText(const std::string& text, const std::string& name)
{
    Close();
    m_Text.str(text);
    Reset(&m_Text, name);
}

std::string Serializer::GetText() const
{
    return m_Text.str();
}

void Serializer::Close()
{
    if (m_Writing)
    {
        // The file's last bytes land under the watcher's lock, and the write is
        // noted before the watcher can see it: the engine's own save never reloads.
        FileWatcher& watcher = FileWatcher::Get();
        std::lock_guard<std::recursive_mutex> lock(watcher.GetMutex());
        m_Stream.flush();
        m_File.close();
        watcher.NoteOwnWrite(m_FileName);
        m_Writing = false;
    }
    else if (m_File.is_open())
        m_File.close();
    m_Stream.rdbuf(nullptr);
    m_Depth = 0;
    m_FileName.clear();
}

bool Serializer::IsOpen() const
{
    return m_Stream.rdbuf() != nullptr;
}

bool Serializer::ReadUntil(char c)
{
    bool slash = false;
    for (int got = m_Stream.get(); got != std::char_traits<char>::eof(); got = m_Stream.get())
    {
        if (got == '/')
        {
            if (slash)
                m_Stream.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
            slash = !slash;
            continue;
        }
        slash = false;
        if (got == c)
            return true;
    }
    return false;
}

bool Serializer::FindLine(const std::string& text)
{
    // An empty text would be found at the start of every token, without end.
    if (text.empty())
        return false;
    std::string token;
    while (m_Stream >> token)
    {
        const std::size_t at = token.find(text);
        if (at != std::string::npos)
        {
            PutBack(token.size() - at - text.size());
            return true;
        }
    }
    return false;
}

void Serializer::SkipValue()
{
    constexpr int kEnd = std::char_traits<char>::eof();
    while (IsBlank(m_Stream.peek()))
        m_Stream.get();
    const int first = m_Stream.peek();
    if (first == '{')
    {
        int nesting = 0;
        for (int c = m_Stream.get(); c != kEnd; c = m_Stream.get())
        {
            nesting += (c == '{') - (c == '}');
            if (nesting == 0)
                return;
        }
    }
    else if (first == '"')
    {
        m_Stream.get();
        m_Stream.ignore(std::numeric_limits<std::streamsize>::max(), '"');
    }
    else
    {
        while (m_Stream.peek() != kEnd && !IsBlank(m_Stream.peek()))
            m_Stream.get();
    }
}

void Serializer::ReadStringHelper(std::string& text)
{
    constexpr int kEnd = std::char_traits<char>::eof();
    text.clear();
    for (int c = m_Stream.get();; c = m_Stream.get())
    {
        if (c == kEnd)
            return;
        if (c == '"')
            break;
        if (!IsBlank(c))
            FATAL_ERROR("Missed \" (quotation) at beginning of string.\nFile:  " + m_FileName);
    }
    // One pass: a backslash followed by n becomes a line end as it is read.
    bool backslash = false;
    for (int c = m_Stream.get(); c != kEnd && c != '"'; c = m_Stream.get())
    {
        if (backslash && c == 'n')
        {
            text.back() = '\n';
            backslash = false;
            continue;
        }
        backslash = c == '\\';
        text += static_cast<char>(c);
    }
}

bool Serializer::EnterNesting()
{
    if (m_Nesting >= kMaxNesting)
    {
        FATAL_ERROR("Objects are nested deeper than " + std::to_string(kMaxNesting) +
                    " levels; the deeper block is skipped.\nFile:  " + m_FileName);
        SkipValue();
        return false;
    }
    ++m_Nesting;
    return true;
}

void Serializer::WriteIndent()
{
    for (unsigned level = 0; level < m_Depth; ++level)
        m_Stream << "  ";
}

void Serializer::WriteName(const std::string& name)
{
    WriteIndent();
    m_Stream << name << ' ';
}

void Serializer::PutBack(std::size_t count)
{
    if (count == 0)
        return;
    m_Stream.clear(m_Stream.rdstate() & ~std::ios::eofbit);
    m_Stream.seekg(-static_cast<std::streamoff>(count), std::ios::cur);
}
}
