/// \file
/// What the example programs share around their work: the command line, exit statuses, and the figures they print.
#pragma once

#include "svg_reader.h"

#include <string>
#include <utility>
#include <vector>

namespace svg
{

enum EExitStatus
{
    eDone = 0,
    eFailed = 1,   ///< the operation or the writing failed
    eNotTaken = 2, ///< the input or the command line isn't taken
    eStopped = 130 ///< ended by Ctrl-C, as a shell reports it
};

/// The arguments that aren't options, and the options with their values; the last one of a name counts.
struct CArguments
{
    std::vector<std::string> inputs;
    std::vector<std::pair<std::string, std::string>> options;

    /// The value of an option, empty if it isn't given.
    std::string Get(std::string const & name) const;
};

/// Reads the command line, on which each of `names` takes a value. Throws CSvgError at an option without its value.
CArguments ReadArguments(int count, char** values, std::vector<std::string> const & names);

/// Runs the body of a program; an exception becomes a line on the error output and an exit status.
int Guarded(char const* program, EExitStatus (*body)(int count, char** values), int count, char** values);

} // namespace svg
