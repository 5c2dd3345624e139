#include <zettesting/Environment.h>

#include <cstdlib>

namespace zettesting {

namespace {

void Set(const std::string& name, const std::optional<std::string>& value)
{
    ::_putenv_s(name.c_str(), value ? value->c_str() : "");
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
    : variable("TMP", folder.string())
{}

} // namespace zettesting
