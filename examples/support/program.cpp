// The frame of an example program: options with values in any place, and errors as one line and an exit status.

#include "program.h"

#include <algorithm>
#include <cstdio>

namespace svg
{

std::string CArguments::Get(std::string const & name) const
{
    auto const isIt = [&](auto const & option) { return option.first == name; };
    auto const found = std::find_if(options.rbegin(), options.rend(), isIt);
    return found != options.rend() ? found->second : "";
}

CArguments ReadArguments(int count, char** values, std::vector<std::string> const & names)
{
    CArguments arguments;
    for (int index = 1; index < count; ++index)
    {
        std::string const value = values[index];
        if (std::find(names.begin(), names.end(), value) == names.end())
        {
            arguments.inputs.push_back(value);
            continue;
        }
        if (index + 1 == count) throw CSvgError(value + ": the value is missing");
        arguments.options.emplace_back(value, values[++index]);
    }
    return arguments;
}

int Guarded(char const* program, EExitStatus (*body)(int count, char** values), int count, char** values)
{
    try
    {
        return body(count, values);
    }
    catch (CSvgError const & error)
    {
        std::fprintf(stderr, "%s\n", error.what());
        return eNotTaken;
    }
    catch (std::exception const & error)
    {
        std::fprintf(stderr, "%s: %s\n", program, error.what());
        return eFailed;
    }
}

} // namespace svg
