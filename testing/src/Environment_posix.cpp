#include <zettesting/Environment.h>

#include <cstdlib>

namespace zettesting {

namespace {

void Set(const std::string& name, const std::optional<std::string>& value)
{
    if (value)
        ::setenv(name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(name.c_str());
}

} // namespace

ScopedEnvironment::ScopedEnvironment(std::string variable, std::optional<std::string> value)
    : name(std::move(variable))
{
    if (const char* current = std::getenv(name.c_str()))
        before = current;
    Set(name, value);
}

ScopedEnvironment::~ScopedEnvironment()
{
    Set(name, before);
}

ScopedTemporaryFolder::ScopedTemporaryFolder(const std::filesystem::path& folder)
    : variable("TMPDIR", folder.string())
{}

} // namespace zettesting
