#include <zetcore/config/Localizer.h>

#include <zetcore/filesupport/content/FileUtils.h>
#include <zetcore/string/Utf.h>

#include "config/StringTable.h"
#include "utility/Immortal.h"

namespace zetcore::config {

Localizer& Localizer::Get()
{
    return utility::Immortal<Localizer>();
}

std::string Localizer::Localize(std::string_view key) const
{
    if (!key.starts_with("$$$/"))
        return std::string(key);
    const std::size_t equals = key.find('=');
    {
        const std::lock_guard lock(mutex);
        if (const auto found = table.find(key.substr(0, equals)); found != table.end())
            return found->second;
    }
    return std::string(equals == std::string_view::npos ? key : key.substr(equals + 1));
}

std::wstring Localizer::LocalizeWide(std::string_view key) const
{
    return string::UTF8to16(Localize(key));
}

std::string Localizer::Localize(std::string_view key, const std::vector<std::string>& arguments) const
{
    return InsertArguments(Localize(key), arguments);
}

std::wstring Localizer::LocalizeWide(std::string_view key, const std::vector<std::wstring>& arguments) const
{
    std::vector<std::string> narrow;
    narrow.reserve(arguments.size());
    for (const std::wstring& argument : arguments)
        narrow.push_back(string::UTF16to8(argument));
    return string::UTF8to16(Localize(key, narrow));
}

void Localizer::LoadTable(const filesupport::File& file)
{
    // This is a hundred times the table of a large application.
    constexpr std::uint64_t largestTable = std::uint64_t{64} << 20;
    LoadTableFromText(filesupport::FileUtils::ReadFile(file, largestTable),
                      string::UTF16to8(string::ForDisplay(file.FullPath())));
}

void Localizer::LoadTableFromText(std::string_view text, const std::string& nameForErrors)
{
    StringTable parsed = ParseStringTable(text, nameForErrors);
    const std::lock_guard lock(mutex);
    table.swap(parsed);
}

void Localizer::Reset()
{
    const std::lock_guard lock(mutex);
    table.clear();
}

} // namespace zetcore::config
