#include "session/Language.h"

#include <algorithm>
#include <array>
#include <filesystem>

#include <zetcore/config/Localizer.h>
#include <zetcore/filesupport/paths/CommonDirs.h>
#include <zetcore/filesupport/paths/File.h>
#include <zetcore/filesupport/paths/NativePath.h>
#include <zetcore/string/Utf.h>

namespace zetaudiopluginmanager {

namespace {

using zetcore::filesupport::Dir;
using zetcore::filesupport::File;

constexpr const wchar_t* folders[] = {L"lang", L"../share/zetaudiopluginhostui/lang"};
constexpr std::string_view traditionalChinese[] = {"TW", "HK", "MO"};

bool IsLetter(char character)
{
    return (character >= 'a' && character <= 'z') || (character >= 'A' && character <= 'Z');
}

bool IsLetterOrDigit(char character)
{
    return IsLetter(character) || (character >= '0' && character <= '9');
}

char Upper(char character)
{
    return character >= 'a' && character <= 'z' ? static_cast<char>(character - 'a' + 'A') : character;
}

char Lower(char character)
{
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a') : character;
}

/// Writes a subtag as usual: a language in small letters, a script with a capital, a region in capitals.
std::string WrittenSubtag(std::string_view subtag, bool isFirst)
{
    std::string written(subtag);
    std::transform(written.begin(), written.end(), written.begin(), Lower);
    if (isFirst)
        return written;
    if (written.size() == 2)
        std::transform(written.begin(), written.end(), written.begin(), Upper);
    else if (written.size() == 4)
        written[0] = Upper(written[0]);
    return written;
}

/// The subtags of a language tag. Empty for any other text.
std::vector<std::string> SubtagsOf(std::string_view language)
{
    std::vector<std::string> subtags;
    // A POSIX name may end with an encoding and a variant, as in "de_DE.UTF-8@euro".
    language = language.substr(0, language.find_first_of(".@"));
    while (true) {
        const std::size_t end = language.find_first_of("-_");
        const std::string_view subtag = language.substr(0, end);
        if (subtag.empty() || subtag.size() > 8 ||
            !std::all_of(subtag.begin(), subtag.end(), IsLetterOrDigit))
            return {};
        subtags.push_back(WrittenSubtag(subtag, subtags.empty()));
        if (end == std::string_view::npos)
            break;
        language.remove_prefix(end + 1);
    }
    const std::string& first = subtags.front();
    const bool isLanguage =
        (first.size() == 2 || first.size() == 3) && std::all_of(first.begin(), first.end(), IsLetter);
    return isLanguage ? subtags : std::vector<std::string>();
}

/// These regions tell the script in which Chinese is written.
std::string ScriptOfChinese(const std::vector<std::string>& subtags)
{
    if (subtags.size() < 2 || subtags[0] != "zh" || subtags[1].size() != 2)
        return {};
    const bool isTraditional = std::find(std::begin(traditionalChinese), std::end(traditionalChinese),
                                         subtags[1]) != std::end(traditionalChinese);
    return isTraditional ? "zh-Hant" : "zh-Hans";
}

std::string Joined(const std::vector<std::string>& subtags, std::size_t count)
{
    std::string tag = subtags.front();
    for (std::size_t index = 1; index < count; ++index)
        tag += "-" + subtags[index];
    return tag;
}

} // namespace

std::vector<std::string> TablesForLanguage(std::string_view language)
{
    const std::vector<std::string> subtags = SubtagsOf(language);
    std::vector<std::string> tables;
    for (std::size_t count = subtags.size(); count > 0; --count) {
        if (count == 1)
            if (std::string script = ScriptOfChinese(subtags); !script.empty())
                tables.push_back(std::move(script));
        tables.push_back(Joined(subtags, count));
    }
    return tables;
}

bool LoadLanguage(std::string_view language)
{
    const std::vector<std::string> tables = TablesForLanguage(language);
    const std::wstring programs = zetcore::filesupport::commondirs::ExecutableDir().FullPath();
    for (const std::string& table : tables) {
        for (const wchar_t* const folder : folders) {
            const File file(Dir(programs + L"/" + folder), zetcore::string::AsciiToUTF16(table) + L".txt");
            if (file.Exists()) {
                zetcore::config::Localizer::Get().LoadTable(file);
                return true;
            }
        }
    }
    zetcore::config::Localizer::Get().Reset();
    return !tables.empty() && tables.back() == "en";
}

std::vector<std::string> AvailableLanguages()
{
    const std::wstring programs = zetcore::filesupport::commondirs::ExecutableDir().FullPath();
    std::vector<std::string> languages;
    for (const wchar_t* const folder : folders) {
        std::error_code ignored;
        for (const auto& entry : std::filesystem::directory_iterator(
                 zetcore::filesupport::ToNativePath(programs + L"/" + folder), ignored))
            if (entry.path().extension() == ".txt")
                languages.push_back(entry.path().stem().string());
    }
    languages.emplace_back("en");
    std::sort(languages.begin(), languages.end());
    languages.erase(std::unique(languages.begin(), languages.end()), languages.end());
    return languages;
}

} // namespace zetaudiopluginmanager
