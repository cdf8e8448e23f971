// Reads nested lists with a stack of the lists that are open, word by word.

#include "s_expression.h"

#include <algorithm>

namespace copper_pour
{
namespace
{

constexpr std::size_t MaxDepth = 100; // boards need about ten

class CParser
{
public:
    explicit CParser(std::string_view text) : m_Text(text) {}

    CNode Parse()
    {
        while (SkipSpace())
        {
            char const c = m_Text[m_At];
            if (c == '(')
            {
                Open();
            }
            else if (c == ')')
            {
                Close();
            }
            else
            {
                AddWord(c == '"' ? QuotedWord() : PlainWord());
            }
        }
        if (m_Open.size() > 1) Fail(m_Open.back().line, "this list is never closed");
        if (m_Open.front().items.empty()) Fail(m_Line, "there is no list in it");
        return std::move(m_Open.front().items.front());
    }

private:
    [[noreturn]] static void Fail(std::size_t line, std::string const & reason)
    {
        throw CBoardError("line " + std::to_string(line) + ": " + reason);
    }

    /// Goes to the next character that isn't space; false at the end.
    bool SkipSpace()
    {
        while (m_At < m_Text.size() && IsSpace(m_Text[m_At]))
        {
            if (m_Text[m_At++] == '\n') ++m_Line;
        }
        return m_At < m_Text.size();
    }

    static bool IsSpace(char c) { return c == ' ' || c == '\n' || c == '\r' || c == '\t'; }

    void Open()
    {
        if (m_Open.size() > MaxDepth) Fail(m_Line, "lists are nested too deep");
        if (m_Open.size() == 1 && !m_Open.front().items.empty()) Fail(m_Line, "text behind the end of the board");
        CNode node;
        node.isList = true;
        node.line = m_Line;
        m_Open.push_back(std::move(node));
        ++m_At;
    }

    void Close()
    {
        if (m_Open.size() == 1) Fail(m_Line, "')' without a list that it closes");
        CNode node = std::move(m_Open.back());
        m_Open.pop_back();
        m_Open.back().items.push_back(std::move(node));
        ++m_At;
    }

    void AddWord(std::string word)
    {
        if (m_Open.size() == 1) Fail(m_Line, "text outside of the board: this is no board file");
        CNode node;
        node.text = std::move(word);
        node.line = m_Line;
        m_Open.back().items.push_back(std::move(node));
    }

    std::string PlainWord()
    {
        std::size_t const begin = m_At;
        while (m_At < m_Text.size() && !IsSpace(m_Text[m_At]) && m_Text[m_At] != '(' && m_Text[m_At] != ')')
        {
            ++m_At;
        }
        return std::string(m_Text.substr(begin, m_At - begin));
    }

    std::string QuotedWord()
    {
        std::size_t const line = m_Line;
        std::string word;
        for (++m_At; m_At < m_Text.size() && m_Text[m_At] != '"'; ++m_At)
        {
            if (m_Text[m_At] == '\\' && m_At + 1 < m_Text.size()) ++m_At;
            if (m_Text[m_At] == '\n') ++m_Line;
            word += m_Text[m_At];
        }
        if (m_At == m_Text.size()) Fail(line, "this string is never closed");
        ++m_At;
        return word;
    }

    std::string_view m_Text;
    std::size_t m_At = 0;
    std::size_t m_Line = 1;
    std::vector<CNode> m_Open{1}; ///< the file itself, and in it the lists that are open
};

} // namespace

std::string_view CNode::Word(std::size_t index) const
{
    return index < items.size() && !items[index].isList ? std::string_view(items[index].text) : std::string_view();
}

CNode const* CNode::Find(std::string_view name) const
{
    auto const found = std::find_if(items.begin(), items.end(),
                                    [&](CNode const & item) { return item.isList && item.Name() == name; });
    return found != items.end() ? &*found : nullptr;
}

CNode ParseList(std::string_view text)
{
    return CParser(text).Parse();
}

} // namespace copper_pour
