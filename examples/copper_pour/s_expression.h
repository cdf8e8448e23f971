/// \file
/// A file of nested lists, `(name value (name value ...) ...)`, as a tree.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace copper_pour
{

/// Something in a file that isn't taken; the text says where and why.
struct CBoardError : std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// A list with its items, or a word.
struct CNode
{
    std::string text;         ///< of a word; quotes and escapes are resolved
    std::vector<CNode> items; ///< of a list
    bool isList = false;
    std::size_t line = 0; ///< where it begins, from 1

    /// The word at `index`, empty if there is none.
    std::string_view Word(std::size_t index) const;
    /// The word that a list begins with.
    std::string_view Name() const { return Word(0); }
    /// The first list among the items that begins with `name`; null if there is none.
    CNode const* Find(std::string_view name) const;
};

/// The one list that a text consists of. Throws CBoardError with the line: parentheses that don't match, a string that
/// isn't closed, lists nested more than 100 deep, text around the list.
CNode ParseList(std::string_view text);

} // namespace copper_pour
