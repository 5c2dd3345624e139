#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <CLI/CLI.hpp>

namespace zetaudiopluginmanager {

/// The arguments ask for what there is not. The text names the wrong word, and says what there is.
class usage_error : public std::runtime_error
{
  public:
    using std::runtime_error::runtime_error;
};

/// "a, b and c".
std::string JoinWords(const std::vector<std::string>& words, std::string_view lastJoint = "and");

/// The mistake in the arguments, in this program's words: one line that names the wrong word and says
/// what there is, and one with where to read more. `app` is the parser that threw the error.
std::string DescribeUsageError(const CLI::App& app, const CLI::ParseError& error);

} // namespace zetaudiopluginmanager
