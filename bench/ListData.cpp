#include "ListData.h"

#include <algorithm>
#include <random>

#include <zetaudiofilterhost/PluginFormat.h>

namespace bench {

namespace {

constexpr std::array makers{L"Aurora", L"Brass Works", L"Cedar",   L"Delta",
                            L"Ember",  L"Fjord",       L"Granite", L"Harbour"};
constexpr std::array kinds{L"Compressor", L"Reverb", L"Delay",   L"Equaliser", L"Limiter",
                           L"Chorus",     L"Gate",   L"Flanger", L"Phaser",    L"Synth"};

wchar_t LowerCase(wchar_t character)
{
    return character >= L'A' && character <= L'Z' ? static_cast<wchar_t>(character - L'A' + L'a') : character;
}

} // namespace

std::vector<ListEntry> MakeListEntries(std::size_t count)
{
    std::mt19937 random(7);
    const auto pick = [&](const auto& texts) { return std::wstring(texts[random() % texts.size()]); };
    const auto formats = zetaudiofilterhost::PluginFormats();
    std::vector<ListEntry> entries(count);
    for (std::size_t i = 0; i < count; ++i) {
        ListEntry& entry = entries[i];
        const std::wstring maker = pick(makers);
        const std::wstring technology(formats[random() % formats.size()].name);
        std::wstring name = maker + L" " + pick(kinds) + L" " + std::to_wstring(random() % count);
        if (i % 100 == 0)
            name += L" \u00c9tude";
        const std::wstring version = std::to_wstring(random() % 12) + L"." + std::to_wstring(random() % 30) +
                                     L"." + std::to_wstring(random() % 100);
        // The number gives every module a file name of its own.
        const std::wstring path =
            L"/usr/lib/" + technology + L"/" + maker + L"/" + std::to_wstring(i) + L"/" + name + L".so";
        entry.enabled = random() % 10 != 0;
        entry.texts = {entry.enabled ? L"2" : L"1",
                       name,
                       technology,
                       random() % 50 ? L"Working" : L"Not Working",
                       version,
                       path};
    }
    return entries;
}

bool Holds(const ListEntry& entry, const std::wstring& lowerCaseText)
{
    for (const std::size_t column : {1, 5, 4}) {
        const std::wstring& text = entry.texts[column];
        const auto found = std::search(text.begin(), text.end(), lowerCaseText.begin(), lowerCaseText.end(),
                                       [](wchar_t left, wchar_t right) { return LowerCase(left) == right; });
        if (found != text.end() || lowerCaseText.empty())
            return true;
    }
    return false;
}

} // namespace bench
