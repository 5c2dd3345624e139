#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace zetaudiopluginmanager {

/// The arguments ask for something that does not exist. The text names the wrong word and the right ones.
class usage_error : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// "a, b and c".
std::string JoinWords(const std::vector<std::string>& words, std::string_view lastJoint = "and");

/// Describes the mistake in the arguments in two lines: the first names the wrong word and the right ones,
/// the second says where to read more. `app` is the parser that threw the error.
std::string DescribeUsageError(const CLI::App& app, const CLI::ParseError& error);

} // namespace zetaudiopluginmanager
